// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAction>
#include <QHash>
#include <QKeySequence>
#include <QObject>
#include <QVector>
#include <functional>

class QWidget;

/// All commands of the window by name, for menus, tool bars and the page of shortcuts.
class CommandSet : public QObject
{
    Q_OBJECT

public:
    /// Commands are children of `window` and have their shortcuts there.
    explicit CommandSet(QWidget* window);

    /// Starts a group on the page of shortcuts.
    void beginGroup(const QString& title);
    /// Adds a command. `tip` says what it does in one line; the shortcut is added to it.
    QAction* add(const QString& name, const QString& text, const QList<QKeySequence>& shortcuts,
        const QString& tip, const std::function<void()>& run);
    /// Gives a command its line for tool tips and the status bar; the shortcut is added to it.
    static void explain(QAction* action, const QString& tip);
    /// Adds a command that somebody else made.
    void adopt(const QString& name, QAction* action);
    /// Shows commands that somebody else has under a heading of their own; replaces those that were
    /// shown under it.
    void setGroup(const QString& title, const QVector<QAction*>& actions);
    /// The command of this name; asking for one that is not there is a programming error.
    QAction* get(const QString& name) const;

    struct Group {
        QString title;
        QVector<QAction*> actions;
    };
    const QVector<Group>& getGroups() const { return m_groups; }

private:
    QWidget* m_window;
    QVector<Group> m_groups;
    QHash<QString, QAction*> m_actions;
};
