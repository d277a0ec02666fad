// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PanelSet.h"

#include "CommandSet.h"
#include "FirstFocus.h"

#include <QDockWidget>

PanelSet::PanelSet(QMainWindow* window)
    : QObject(window)
    , m_window(window)
{
}

void PanelSet::add(const QVector<Panel>& panels)
{
    for (const Panel& panel : panels) {
        auto* dock = new QDockWidget(panel.title);
        dock->setObjectName(QString::fromLatin1(panel.id));
        dock->setWidget(panel.widget);
        m_window->addDockWidget(panel.area, dock);
        m_entries.append(Entry { panel, dock });
    }
    arrange();
}

void PanelSet::noteFirstPlaces()
{
    m_firstLayout = m_window->saveState();
}

void PanelSet::arrange()
{
    QList<QDockWidget*> docks[2];
    QList<int> sizes[2];
    QDockWidget* before = nullptr;
    for (const Entry& entry : qAsConst(m_entries)) {
        if (entry.panel.start == Panel::Behind) {
            m_window->tabifyDockWidget(before, entry.dock);
            before->raise();
            continue;
        }
        if (entry.panel.start == Panel::Hidden)
            entry.dock->hide();
        before = entry.dock;
        const int lengths[] = { entry.panel.firstSize.width(), entry.panel.firstSize.height() };
        for (const int i : { 0, 1 })
            if (lengths[i] > 0) {
                docks[i].append(entry.dock);
                sizes[i].append(lengths[i]);
            }
    }
    m_window->resizeDocks(docks[0], sizes[0], Qt::Horizontal);
    m_window->resizeDocks(docks[1], sizes[1], Qt::Vertical);
}

QString PanelSet::commandId(const Entry& entry)
{
    return QStringLiteral("dock") + entry.dock->objectName();
}

QByteArray PanelSet::getCommandIds() const
{
    QStringList ids;
    for (const Entry& entry : m_entries)
        ids.append(commandId(entry));
    return ids.join(QLatin1Char(' ')).toLatin1();
}

void PanelSet::addCommands(CommandSet* commands) const
{
    for (const Entry& entry : m_entries) {
        QDockWidget* dock = entry.dock;
        QAction* action
            = commands->add(Command { commandId(entry), entry.panel.title, entry.panel.keys,
                tr("Show or hide the panel \"%1\"").arg(entry.panel.title), nullptr, [dock] {
                    toggle(dock);
                } }.asSwitch([dock] { return dock->toggleViewAction()->isChecked(); }));
        // By its own cross, or by whoever brings it into view.
        connect(dock->toggleViewAction(), &QAction::toggled, action, &QAction::setChecked);
    }
}

void PanelSet::show(QDockWidget* dock)
{
    dock->show();
    dock->raise();
}

/// A panel behind another one is shown, but nothing of it is seen.
bool PanelSet::isInView(const QDockWidget* dock)
{
    return dock->isVisible() && !dock->visibleRegion().isEmpty();
}

void PanelSet::focusNext(QWidget* canvas, int step) const
{
    QVector<QWidget*> parts { canvas };
    for (const Entry& entry : m_entries)
        if (isInView(entry.dock))
            parts.append(entry.panel.widget);
    const QWidget* focus = m_window->focusWidget();
    int from = 0;
    for (int i = 0; i < parts.size(); ++i)
        if (parts.at(i) == focus || parts.at(i)->isAncestorOf(focus))
            from = i;
    // A part in which nothing takes the keyboard is passed.
    for (int i = 1; i < parts.size(); ++i) {
        const int to = (from + i * step + i * parts.size()) % parts.size();
        if (focusFirstIn(parts.at(to)))
            return;
    }
}

void PanelSet::toggle(QDockWidget* dock)
{
    if (isInView(dock))
        dock->close();
    else
        show(dock);
}

void PanelSet::show(const QWidget* widget) const
{
    for (const Entry& entry : m_entries)
        if (entry.panel.widget == widget)
            show(entry.dock);
}

void PanelSet::reset()
{
    for (const Entry& entry : qAsConst(m_entries))
        entry.dock->setFloating(false);
    m_window->restoreState(m_firstLayout);
}
