// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasKeyboard.h"

#include "BrickItem.h"
#include "BrickSelection.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QStringList>

using BrickAppearance::Row;

CanvasKeyboard::CanvasKeyboard(NetworkView* view)
    : m_view(view)
{
}

DzShaderBrick* CanvasKeyboard::getBrick() const
{
    return m_view->getNetworkScene()->getSelection()->getCurrent();
}

BrickItem* CanvasKeyboard::item() const
{
    m_view->getNetworkScene()->flush();
    return m_view->getNetworkScene()->getItem(getBrick());
}

/// The row that is current; null when a title or nothing is.
const Row* CanvasKeyboard::row() const
{
    const BrickItem* current = item();
    if (!current || current->getBrick() != m_brick || m_row < 0
        || m_row >= current->getRows().size())
        return nullptr;
    return &current->getRows().at(m_row);
}

DzBrickParam* CanvasKeyboard::getPin() const
{
    const Row* current = row();
    return current && current->kind != Row::Setting ? current->param : nullptr;
}

DzProperty* CanvasKeyboard::getProperty() const
{
    const Row* current = row();
    if (!current || current->kind == Row::Output)
        return nullptr;
    return current->param ? current->param->getProperty(0) : current->property;
}

bool CanvasKeyboard::keyPress(QKeyEvent* event)
{
    const bool isArrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
    if (isArrow && event->modifiers() == Qt::ControlModifier) {
        nudge(event->key());
        return true;
    }
    if (event->modifiers() & ~Qt::KeypadModifier)
        return false;
    switch (event->key()) {
    case Qt::Key_Up:
        step(-1);
        return true;
    case Qt::Key_Down:
        step(1);
        return true;
    case Qt::Key_Left:
        goSideways(true);
        return true;
    case Qt::Key_Right:
        goSideways(false);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        pressReturn();
        return true;
    case Qt::Key_Backspace:
        unlink();
        return true;
    default:
        return false;
    }
}

/// Moves the selection by one step of the grid.
void CanvasKeyboard::nudge(int key)
{
    QPointF step;
    if (key == Qt::Key_Left || key == Qt::Key_Right)
        step.setX(key == Qt::Key_Left ? -NetworkView::gridStep : NetworkView::gridStep);
    else
        step.setY(key == Qt::Key_Up ? -NetworkView::gridStep : NetworkView::gridStep);
    QVector<NetworkEdit::Move> moves;
    for (DzShaderBrick* brick : m_view->getSelection()->getBricks())
        moves.append(NetworkEdit::Move { brick, BrickAppearance::position(brick) + step });
    m_view->getEdit()->moveBricks(moves);
}

bool CanvasKeyboard::cancel()
{
    if (!m_linkFrom)
        return false;
    m_linkFrom = nullptr;
    m_view->getNetworkScene()->endProbe();
    return true;
}

void CanvasKeyboard::leaveRow()
{
    cancel();
    m_row = -1;
    m_brick = nullptr;
    m_kept.clear();
    m_view->getNetworkScene()->setFocusRow(nullptr, -1);
}

void CanvasKeyboard::toggleKept()
{
    DzShaderBrick* brick = getBrick();
    if (!m_kept.removeOne(brick)) {
        m_kept.clear();
        for (DzShaderBrick* selected : m_view->getSelection()->getBricks())
            m_kept.append(selected);
    }
    announce();
}

QVector<DzShaderBrick*> CanvasKeyboard::keptBeside(const DzShaderBrick* brick) const
{
    QVector<DzShaderBrick*> kept;
    for (const QPointer<DzShaderBrick>& each : m_kept)
        if (each && each != brick && m_view->getSelection()->contains(each))
            kept.append(each);
    return kept;
}

void CanvasKeyboard::go(DzShaderBrick* brick, int row)
{
    m_brick = brick;
    m_row = row;
    m_view->getSelection()->set(keptBeside(brick) << brick);
    m_view->getNetworkScene()->setFocusRow(brick, row);
    m_view->showBrick(brick);
    announce();
}

void CanvasKeyboard::step(int rows)
{
    const BrickItem* current = item();
    if (!current) {
        goToFirst();
        return;
    }
    const int from = current->getBrick() == m_brick ? m_row : -1;
    const int to = from + rows;
    if (to >= current->getRows().size())
        goToNeighbour(0, 1);
    else if (to < -1)
        goToNeighbour(0, -1);
    else
        go(current->getBrick(), to);
}

void CanvasKeyboard::goSideways(bool isLeft)
{
    const DzBrickParam* pin = getPin();
    if (!item()) {
        goToFirst();
    } else if (pin && pin->isOutput() != isLeft && pin->getNumConnections() > 0) {
        DzBrickParam* peer = pin->getConnection(0);
        DzShaderBrick* brick = peer->getTopBrickOwner();
        if (const BrickItem* next = m_view->getNetworkScene()->getItem(brick))
            go(brick, next->rowOf(peer));
    } else {
        goToNeighbour(isLeft ? -1 : 1, 0);
    }
}

/// Goes to the nearest brick in a direction; what lies across counts double.
void CanvasKeyboard::goToNeighbour(qreal x, qreal y)
{
    const BrickItem* current = item();
    const auto middle = [](const BrickItem* of) {
        return of->pos() + QPointF(of->getSize().width() / 2, of->getSize().height() / 2);
    };
    const BrickItem* best = nullptr;
    qreal bestCost = 0;
    for (const BrickItem* other : m_view->getNetworkScene()->getItems()) {
        const QPointF way = middle(other) - middle(current);
        const qreal along = way.x() * x + way.y() * y;
        const qreal across = qAbs(way.x() * y) + qAbs(way.y() * x);
        if (other == current || along <= 0)
            continue;
        const qreal cost = along + 2 * across;
        if (!best || cost < bestCost) {
            best = other;
            bestCost = cost;
        }
    }
    if (best)
        go(best->getBrick(), -1);
}

void CanvasKeyboard::goToFirst()
{
    const QVector<BrickItem*>& items = m_view->getNetworkScene()->getItems();
    const QPointF centre = m_view->getVisibleBox().center();
    const BrickItem* best = nullptr;
    const auto distance
        = [&](const BrickItem* of) { return (of->pos() - centre).manhattanLength(); };
    for (const BrickItem* candidate : items)
        if (!best || distance(candidate) < distance(best))
            best = candidate;
    if (best)
        go(best->getBrick(), -1);
}

void CanvasKeyboard::pressReturn()
{
    DzBrickParam* pin = getPin();
    if (!pin) {
        if (DzShaderBrick* brick = getBrick())
            emit m_view->brickActivated(brick);
        return;
    }
    if (!m_linkFrom) {
        m_linkFrom = pin;
        m_view->getNetworkScene()->beginProbe(pin);
        emit m_view->statusMessage(
            NetworkView::tr("A wire from %1: go to another pin and press Return, or Escape")
                .arg(pin->getLabel()));
        return;
    }
    DzBrickParam* from = m_linkFrom;
    if (from == pin) {
        cancel();
        return;
    }
    const QString refusal = linkRefusal(from, pin);
    if (!refusal.isEmpty()) {
        emit m_view->statusMessage(refusal);
        return;
    }
    cancel();
    linkPins(from, pin);
    announce();
}

void CanvasKeyboard::unlink()
{
    DzBrickParam* pin = getPin();
    if (!pin || pin->getNumConnections() == 0)
        return;
    unlinkAll(pin);
    announce();
}

/// Says where the keyboard is, in the status line and to screen readers.
void CanvasKeyboard::announce()
{
    const BrickItem* current = item();
    if (!current)
        return;
    QStringList parts { BrickAppearance::titleText(current->getBrick()) };
    if (m_row >= 0 && m_row < current->getRows().size()) {
        const Row& row = current->getRows().at(m_row);
        parts.append(BrickAppearance::rowLabel(row));
        if (row.kind != Row::Setting)
            parts.append(row.param->getTypeString());
        const QString value = BrickAppearance::rowValue(row);
        if (!value.isEmpty())
            parts.append(value);
        if (row.param && row.param->getNumConnections() > 0)
            parts.append(NetworkView::tr("linked to %1")
                             .arg(BrickAppearance::titleText(
                                 row.param->getConnection(0)->getTopBrickOwner())));
    }
    if (m_kept.contains(current->getBrick()))
        parts.append(NetworkView::tr("kept selected"));
    const QString text = parts.join(QStringLiteral(", "));
    emit m_view->statusMessage(text);
    m_view->setAccessibleDescription(text);
    QAccessibleEvent event(m_view, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}
