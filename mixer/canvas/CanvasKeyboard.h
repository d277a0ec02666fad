// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickAppearance.h"

#include <QPointer>
#include <QVector>

class BrickItem;
class DzBrickParam;
class DzProperty;
class DzShaderBrick;
class NetworkView;
class QKeyEvent;

/// Use of the canvas without a mouse. Up and Down walk the rows of the current brick and on to
/// the next brick, Left and Right follow the wire of a row or go to the brick on that side.
/// Return on a pin starts a wire, Return on another one ends it; Backspace takes a pin's wires
/// away. Ctrl and an arrow move the selected bricks. Going to a brick selects it instead of the
/// others, but for those that are kept.
class CanvasKeyboard
{
public:
    explicit CanvasKeyboard(NetworkView* view);

    /// True when the key was one of those.
    bool keyPress(QKeyEvent* event);
    /// Stops linking; true when there was something to stop.
    bool cancel();
    /// The mouse took over: no row is current, and no brick is kept.
    void leaveRow();
    /// Keeps the selected bricks selected while the keyboard goes on to others; on a brick that is
    /// kept already, lets that one go.
    void toggleKept();
    /// The pin that is current; null when a title or nothing is.
    DzBrickParam* getPin() const;
    /// The value of the row that is current; null when it has none.
    DzProperty* getProperty() const;
    /// The brick that is current; null for none.
    DzShaderBrick* getBrick() const;

private:
    BrickItem* item() const;
    const BrickAppearance::Row* row() const;
    void nudge(int key);
    void go(DzShaderBrick* brick, int row);
    /// The kept bricks that are still selected, but for this one.
    QVector<DzShaderBrick*> keptBeside(const DzShaderBrick* brick) const;
    void step(int rows);
    void goSideways(bool isLeft);
    void goToNeighbour(qreal x, qreal y);
    void goToFirst();
    void pressReturn();
    void unlink();
    void announce();

    NetworkView* m_view;
    int m_row = -1;
    QPointer<DzShaderBrick> m_brick;
    QPointer<DzBrickParam> m_linkFrom;
    QVector<QPointer<DzShaderBrick>> m_kept;
};
