// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "AutosaveStore.h"

#include <QDialog>

class QTreeWidget;

/// Asks what to do with work that was left when the program ended without warning.
class RestoreDialog : public QDialog
{
    Q_OBJECT

public:
    RestoreDialog(const QVector<RestorableWork>& works, QWidget* parent);

    /// What is done with them: later means that they are offered again.
    enum Choice { Later, Restore, Discard };
    Choice getChoice() const { return m_choice; }
    /// Those with a mark.
    QVector<RestorableWork> getChosen() const;

private:
    void choose(Choice choice);

    QVector<RestorableWork> m_works;
    QTreeWidget* m_list;
    Choice m_choice = Later;
};
