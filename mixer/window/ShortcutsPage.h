// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class CommandSet;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// All commands with their shortcuts, and what keys and mouse do on the canvas and on values.
/// Return on a command, or on what was searched for, runs it.
class ShortcutsPage : public QDialog
{
    Q_OBJECT

public:
    /// The commands are not owned.
    ShortcutsPage(CommandSet* commands, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fill();
    void search(const QString& text);
    void goBy(int lines);
    void run(QTreeWidgetItem* line);

    CommandSet* m_commands;
    QLineEdit* m_search;
    QTreeWidget* m_list;
    QLabel* m_note;
};
