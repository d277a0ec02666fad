// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CommandSet.h"

#include <QActionGroup>
#include <QWidget>

#include <algorithm>

CommandSet::CommandSet(QWidget* window)
    : QObject(window)
    , m_window(window)
{
}

CommandSet::~CommandSet()
{
}

void CommandSet::beginGroup(const QString& title)
{
    m_groups.append(Group { title, {} });
}

QAction* CommandSet::add(const Command& command)
{
    if (QAction* present = find(command.id)) {
        qWarning("Two commands are called \"%s\".", qPrintable(command.id));
        return present;
    }
    auto* action = new QAction(command.icon, command.text, m_window);
    action->setData(command.id);
    action->setShortcuts(command.keys.toList());
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    action->setToolTip(
        keys.isEmpty() ? command.tip : QStringLiteral("%1 (%2)").arg(command.tip, keys));
    action->setStatusTip(command.tip);
    action->setCheckable(bool(command.isOn));
    if (!command.choice.isEmpty())
        choiceOf(command.choice)->addAction(action);
    if (command.scope == Command::Window)
        m_window->addAction(action);
    else
        // Keys without Ctrl belong to the canvas alone.
        action->setShortcutContext(Qt::WidgetShortcut);
    m_rows.push_back(std::make_unique<Row>(Row { command, action }));
    const Row* row = m_rows.back().get();
    connect(action, &QAction::triggered, this, [this, row] { run(*row); });
    if (m_groups.isEmpty())
        beginGroup(QString());
    m_groups.last().actions.append(action);
    refresh(*row);
    return action;
}

/// What it needs may have gone since somebody looked.
void CommandSet::run(const Row& row)
{
    if (!row.command.canRun || row.command.canRun())
        row.command.run();
    // A switch that was not turned shows so.
    refresh(row);
}

QActionGroup* CommandSet::choiceOf(const QString& word)
{
    auto* group = findChild<QActionGroup*>(word, Qt::FindDirectChildrenOnly);
    if (!group) {
        group = new QActionGroup(this);
        group->setObjectName(word);
    }
    return group;
}

QAction* CommandSet::find(const QString& id) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
        [&id](const std::unique_ptr<Row>& row) { return row->command.id == id; });
    return found == m_rows.end() ? nullptr : (*found)->action;
}

QVector<QAction*> CommandSet::findAll(const char* ids) const
{
    QVector<QAction*> actions;
    const QStringList names = QString::fromLatin1(ids).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& name : names) {
        QAction* action = find(name);
        if (action || name == QLatin1String("|"))
            actions.append(action);
        else
            qWarning("There is no command \"%s\".", qPrintable(name));
    }
    return actions;
}

void CommandSet::fill(QWidget* menu, const char* ids) const
{
    for (QAction* action : findAll(ids)) {
        if (!action) {
            action = new QAction(menu);
            action->setSeparator(true);
        }
        menu->addAction(action);
    }
}

void CommandSet::installOn(QWidget* canvas) const
{
    for (const std::unique_ptr<Row>& row : m_rows)
        if (row->command.scope == Command::Canvas)
            canvas->addAction(row->action);
}

void CommandSet::refresh()
{
    for (const std::unique_ptr<Row>& row : m_rows)
        refresh(*row);
}

void CommandSet::refresh(Command::Scope scope)
{
    for (const std::unique_ptr<Row>& row : m_rows)
        if (row->command.scope == scope)
            refresh(*row);
}

void CommandSet::refresh(const Row& row)
{
    const Command& command = row.command;
    row.action->setEnabled(!command.canRun || command.canRun());
    if (command.isOn)
        row.action->setChecked(command.isOn());
    if (command.textNow)
        row.action->setText(command.textNow());
}
