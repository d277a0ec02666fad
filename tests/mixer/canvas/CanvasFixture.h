// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickAppearance.h"
#include "BrickSelection.h"
#include "CommandSet.h"
#include "NetworkEdit.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "TestSupport.h"

#include <QTest>

/// A network on a canvas that is shown, and the hands of its user.
class CanvasFixture : public testing::Test
{
protected:
    CanvasFixture();
    ~CanvasFixture() override;

    VireoBrickBase* add(const char* className, qreal x, qreal y);
    static DzBrickParam* output(DzShaderBrick* brick);
    bool isLinked(DzShaderBrick* from, DzShaderBrick* to, const char* input) const;
    /// A zoom of one with this place of the scene in the middle.
    void lookAt(qreal x, qreal y);

    // Places in the window.
    QPoint at(const QPointF& scenePlace) const;
    QPoint titleOf(DzShaderBrick* brick) const;
    QPoint pinOf(DzBrickParam* pin) const;
    QPoint pinOf(DzShaderBrick* brick, const char* name) const;
    QPoint middleOfWire(DzShaderBrick* from, DzShaderBrick* to, const char* input) const;
    static QPoint voidPlace() { return QPoint(20, 20); }

    // Events, sent to the window as a window system sends them.
    void press(const QPoint& place, Qt::MouseButton button = Qt::LeftButton,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void moveTo(const QPoint& place);
    void release(const QPoint& place, Qt::MouseButton button = Qt::LeftButton,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton,
        Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void click(const QPoint& place, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void doubleClick(const QPoint& place);
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void wheel(const QPoint& place, int turn, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Types into the open search and takes the first brick.
    void typeInSearch(const QString& text);
    QStringList foundInSearch() const;
    QWidget* search() const;

    QAction* command(const char* id) const;

    QWindow* window() const { return m_view.windowHandle(); }

    VireoBrickUser m_user;
    NetworkEdit m_edit;
    BrickSelection m_selection;
    NetworkView m_view;
    CommandSet m_commands;
    QStringList m_messages;
};
