// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>

class NetworkSteps;

/// Shows the steps of the undo stack, each with the name of the network that it changed.
class HistoryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// The steps are not owned.
    explicit HistoryDelegate(const NetworkSteps* steps, QObject* parent = nullptr);

    QString textOf(const QModelIndex& index) const;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const NetworkSteps* m_steps;
};
