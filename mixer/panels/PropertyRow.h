// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProblemFinder.h"
#include "PropertyGroup.h"

#include <QWidget>

class FileField;
class ProblemActions;
class ProblemNote;
class PropertyEditor;
class QHBoxLayout;
class QLabel;
class QMenu;
class QToolButton;

/// One line of the properties panel: a group's name, its value, its map and what feeds it, with
/// buttons to lock it, to set a map and to go back to the default.
class PropertyRow : public QWidget
{
    Q_OBJECT

public:
    PropertyRow(const PropertyGroup& group, const QString& folder, QWidget* parent = nullptr);

    /// Shows what the properties are now. Relative file names are looked for in `folder`.
    void refresh(const QString& folder);
    /// Width that the name needs, and gets.
    int getNameWidth() const;
    void setNameWidth(int width);
    /// Shows those of the problems that are about its values, below them. The actions are not owned
    /// and outlive it.
    void showProblems(const QVector<Problem>& problems, ProblemActions* actions);
    const PropertyGroup& getGroup() const { return m_group; }

signals:
    /// The brick that feeds the value was asked for.
    void brickActivated(DzShaderBrick* brick);
    void message(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QToolButton* addTool(int icon, const QString& name);
    void fillMenu(QMenu* menu);
    void openMenu(const QPoint& globalPlace);

    PropertyGroup m_group;
    QHBoxLayout* m_line;
    QVector<ProblemNote*> m_notes;
    QLabel* m_name;
    PropertyEditor* m_editor;
    QToolButton* m_source;
    FileField* m_map;
    QToolButton* m_mapButton;
    QToolButton* m_resetButton;
    QToolButton* m_lockButton;
};
