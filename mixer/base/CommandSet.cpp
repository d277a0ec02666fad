// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CommandSet.h"

#include <QWidget>

CommandSet::CommandSet(QWidget* window)
    : QObject(window)
    , m_window(window)
{
}

void CommandSet::beginGroup(const QString& title)
{
    m_groups.append(Group { title, {} });
}

QAction* CommandSet::add(const QString& name, const QString& text,
    const QList<QKeySequence>& shortcuts, const QString& tip, const std::function<void()>& run)
{
    auto* action = new QAction(text, m_window);
    action->setShortcuts(shortcuts);
    explain(action, tip);
    connect(action, &QAction::triggered, this, [run] { run(); });
    adopt(name, action);
    return action;
}

void CommandSet::explain(QAction* action, const QString& tip)
{
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    action->setToolTip(keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys));
    action->setStatusTip(tip);
}

void CommandSet::adopt(const QString& name, QAction* action)
{
    action->setObjectName(name);
    m_actions.insert(name, action);
    m_window->addAction(action);
    m_groups.last().actions.append(action);
}

void CommandSet::setGroup(const QString& title, const QVector<QAction*>& actions)
{
    for (Group& group : m_groups) {
        if (group.title != title)
            continue;
        group.actions = actions;
        return;
    }
    m_groups.append(Group { title, actions });
}

QAction* CommandSet::get(const QString& name) const
{
    QAction* action = m_actions.value(name);
    Q_ASSERT(action);
    return action;
}
