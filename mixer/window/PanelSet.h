// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>
#include <QSize>
#include <QString>
#include <QVector>

class CommandSet;
class QDockWidget;

/// One panel of the window: a row of its table.
struct Panel {
    /// Where it is at first: in view, as a tab behind the one before, or not shown.
    enum Start { Shown, Behind, Hidden };

    /// The name in saved layouts, never translated.
    const char* id;
    QString title;
    QWidget* widget;
    Qt::DockWidgetArea area;
    Start start;
    /// In pixels; zero where the others decide.
    QSize firstSize;
    const char* keys;
};

/// The panels around the canvas. Each has a command that shows it, brings it to the front when it
/// is behind another, and hides it when it is in view.
class PanelSet : public QObject
{
    Q_OBJECT

public:
    explicit PanelSet(QMainWindow* window);

    /// Makes the panels, which the window owns from then on, at their first places.
    void add(const QVector<Panel>& panels);
    /// Takes the places of panels and tool bars as their first ones, when the window has them all.
    void noteFirstPlaces();
    /// Adds a command for each panel.
    void addCommands(CommandSet* commands) const;
    /// Ids of these commands, separated by blanks.
    QByteArray getCommandIds() const;

    /// Brings a panel into view.
    void show(const QWidget* widget) const;
    /// Takes the keyboard from where it is to the next part, or the one before: the canvas, then
    /// the panels in view in their order.
    void focusNext(QWidget* canvas, int step) const;
    /// Puts all panels where they were at first.
    void reset();

private:
    struct Entry {
        Panel panel;
        QDockWidget* dock;
    };

    void arrange();
    static QString commandId(const Entry& entry);
    static void show(QDockWidget* dock);
    static void toggle(QDockWidget* dock);
    static bool isInView(const QDockWidget* dock);

    QMainWindow* m_window;
    QVector<Entry> m_entries;
    QByteArray m_firstLayout;
};
