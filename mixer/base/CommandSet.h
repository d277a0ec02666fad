// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Command.h"

#include <QAction>
#include <QObject>
#include <QVector>
#include <memory>
#include <vector>

class QActionGroup;
class QWidget;

/// The registry of commands: every command of the program is one row here. Menus, tool bars, the
/// page of keys and whoever searches for commands take them from it.
class CommandSet : public QObject
{
    Q_OBJECT

public:
    /// Actions are children of `window`, which has the keys of its commands.
    explicit CommandSet(QWidget* window);
    ~CommandSet() override;

    /// Starts a group, under whose title the page of keys shows the commands that follow.
    void beginGroup(const QString& title);
    /// Adds a row. The id is its action's data; a second row of the same id is refused with a
    /// warning and answers the first one's action.
    QAction* add(const Command& command);

    /// Null when there is no such command.
    QAction* find(const QString& id) const;
    /// The actions of these, in this order; ids are separated by blanks, and | is a separator and
    /// null here. An id that no command has is left out with a warning.
    QVector<QAction*> findAll(const char* ids) const;
    /// Adds them to a menu or tool bar, separators too.
    void fill(QWidget* menu, const char* ids) const;
    /// Gives a canvas the keys of the canvas' commands.
    void installOn(QWidget* canvas) const;

    /// Asks the commands again whether they can run, and what they show: all, or those of a scope.
    void refresh();
    void refresh(Command::Scope scope);

    struct Group {
        QString title;
        QVector<QAction*> actions;
    };
    const QVector<Group>& getGroups() const { return m_groups; }

private:
    struct Row {
        Command command;
        QAction* action;
    };

    void run(const Row& row);
    static void refresh(const Row& row);
    QActionGroup* choiceOf(const QString& word);

    QWidget* m_window;
    /// By address: actions point at their rows.
    std::vector<std::unique_ptr<Row>> m_rows;
    QVector<Group> m_groups;
};
