// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>

class DocumentTabs;
class NetworkSteps;

/// Shows the steps of the undo stack, with the name of the network that each changed where several
/// are open.
class HistoryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// None is owned.
    HistoryDelegate(const NetworkSteps* steps, const DocumentTabs* tabs, QObject* parent = nullptr);

    QString textOf(const QModelIndex& index) const;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const NetworkSteps* m_steps;
    const DocumentTabs* m_tabs;
};
