// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasGestures.h"

#include "BrickCatalogue.h"
#include "BrickItem.h"
#include "BrickSelection.h"
#include "CanvasSearch.h"
#include "FreePlace.h"
#include "LinkColors.h"
#include "NetworkFrames.h"
#include "NetworkView.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QSet>
#include <algorithm>

namespace {

/// Points of a cut closer than this are not worth keeping.
const qreal cutStep = 4;
const qreal hintMargin = 6;

/// True for a brick without any link.
bool isLoose(const DzShaderBrick* brick)
{
    for (int i = 0; i < brick->getNumParameters(); ++i)
        if (brick->getParameter(i)->getNumConnections() > 0)
            return false;
    return true;
}

} // namespace

CanvasGesture::CanvasGesture(NetworkView* view)
    : m_view(view)
{
}

CanvasGesture::~CanvasGesture()
{
}

NetworkScene* CanvasGesture::scene() const
{
    return m_view->getNetworkScene();
}

NetworkEdit* CanvasGesture::edit() const
{
    return m_view->getEdit();
}

// Wires.

WireGesture::WireGesture(
    NetworkView* view, DzBrickParam* from, const BrickLink& picked, const QPointF& place)
    : CanvasGesture(view)
    , m_from(from)
    , m_pickedInput(picked.input)
    , m_place(place)
{
    scene()->setHiddenWire(picked);
    scene()->beginProbe(from);
}

WireGesture::~WireGesture()
{
    scene()->endProbe();
}

/// The parameter that the wire would join: of the pin or row there, or the first that fits of the
/// brick whose title is there.
DzBrickParam* WireGesture::targetAt(const QPointF& place) const
{
    const CanvasHit hit = scene()->hit(place, m_view->getReach());
    if (!hit.item || hit.item->getBrick() == m_from->getTopBrickOwner())
        return nullptr;
    if (hit.param)
        return hit.param;
    return hit.kind == CanvasHit::Title ? BrickCatalogue::findFitting(hit.item->getBrick(), m_from)
                                        : nullptr;
}

BrickLink WireGesture::picked() const
{
    return m_pickedInput ? BrickLink { m_from, m_pickedInput } : BrickLink();
}

void WireGesture::move(const QPointF& place, Qt::KeyboardModifiers)
{
    m_place = place;
    m_refusal.clear();
    m_target = m_from ? targetAt(place) : nullptr;
    if (m_target && m_target != m_pickedInput)
        m_refusal = linkRefusal(m_from, m_target);
    m_view->viewport()->update();
}

void WireGesture::finish(const QPointF& place, Qt::KeyboardModifiers modifiers)
{
    if (!m_from)
        return;
    move(place, modifiers);
    if (m_target) {
        drop(m_target, modifiers & Qt::ShiftModifier ? AddLink : ReplaceLinks);
        return;
    }
    const CanvasHit hit = scene()->hit(place, m_view->getReach());
    if (m_pickedInput)
        unlinkPins(m_from, m_pickedInput);
    else if (!hit.item)
        m_view->getSearch()->openFor(m_from, place);
}

void WireGesture::drop(DzBrickParam* target, LinkMode mode)
{
    if (target == m_pickedInput)
        return;
    const bool isDone
        = m_pickedInput ? moveLink(picked(), target, mode) : linkPins(m_from, target, mode);
    if (!isDone && !m_refusal.isEmpty())
        emit m_view->statusMessage(m_refusal);
}

void WireGesture::paint(QPainter* painter) const
{
    const BrickItem* item = m_from ? scene()->getItem(m_from->getTopBrickOwner()) : nullptr;
    if (!item)
        return;
    const CanvasStyle& style = scene()->getStyle();
    QPointF end = m_place;
    const BrickItem* over = m_target ? scene()->getItem(m_target->getTopBrickOwner()) : nullptr;
    if (over && m_refusal.isEmpty())
        end = over->pinPlace(m_target);
    const QPointF start = item->pinPlace(m_from);
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setBrush(Qt::NoBrush);
    QPen pen(m_refusal.isEmpty() ? linkColor(m_from->getTypeString()) : style.refusal, 2.5);
    if (!m_refusal.isEmpty())
        pen.setStyle(Qt::DashLine);
    painter->setPen(pen);
    painter->drawPath(m_from->isOutput() ? wirePath(start, end) : wirePath(end, start));
    if (!m_refusal.isEmpty())
        m_view->paintHint(painter, m_place, m_refusal, true);
    else if (over)
        m_view->paintHint(painter, m_place,
            QStringLiteral("%1 · %2").arg(over->getBrick()->getBrickTitle(), m_target->getLabel()),
            false);
}

// Moving.

MoveGesture::MoveGesture(NetworkView* view, const QPointF& place, DzShaderBrick* clicked)
    : CanvasGesture(view)
    , m_start(place)
    , m_clicked(clicked)
{
    const QVector<DzShaderBrick*>& bricks = scene()->getSelection()->getBricks();
    for (DzShaderBrick* brick : bricks)
        if (const BrickItem* item = scene()->getItem(brick))
            m_starts.append(Start { brick, item->pos() });
    m_canInsert = bricks.size() == 1 && isLoose(bricks.first());
}

QVector<NetworkEdit::Move> MoveGesture::movedTo(const QPointF& offset) const
{
    QVector<NetworkEdit::Move> moves;
    for (const Start& start : m_starts)
        if (start.brick && scene()->getItem(start.brick))
            moves.append(NetworkEdit::Move { start.brick, start.place + offset });
    return moves;
}

void MoveGesture::move(const QPointF& place, Qt::KeyboardModifiers modifiers)
{
    QPointF offset = place - m_start;
    const qreal slack = QApplication::startDragDistance() / m_view->getZoom();
    if (!m_isMoving && offset.manhattanLength() < slack)
        return;
    if (!m_isMoving) {
        m_isMoving = true;
        scene()->bringToFront(scene()->getSelection()->getBricks());
    }
    const bool isSnapping = m_view->isSnappingToGrid() != bool(modifiers & Qt::ControlModifier);
    if (!m_starts.isEmpty()) {
        const QPointF first = m_starts.first().place;
        const QPointF wanted = first + offset;
        offset = (isSnapping ? m_view->snapped(wanted) : QPointF(wanted.toPoint())) - first;
    }
    m_offset = offset;
    scene()->showAt(movedTo(offset));
    if (!m_canInsert || !m_starts.first().brick)
        return;
    DzShaderBrick* brick = m_starts.first().brick;
    BrickLink link = scene()->hitWire(place, m_view->getReach(), brick);
    if (!canInsertOnLink(brick, link))
        link = BrickLink();
    scene()->setMarkedWire(link);
}

void MoveGesture::finish(const QPointF& place, Qt::KeyboardModifiers modifiers)
{
    move(place, modifiers);
    if (!m_isMoving) {
        if (m_clicked)
            scene()->getSelection()->set({ m_clicked });
        return;
    }
    drop(movedTo(m_offset), place);
    scene()->setMarkedWire(BrickLink());
}

void MoveGesture::drop(const QVector<NetworkEdit::Move>& moves, const QPointF& place)
{
    const BrickLink link = scene()->getMarkedWire();
    if (!link.isNull() && moves.size() == 1) {
        // Wires are often shorter than the brick that is put into them.
        DzShaderBrick* brick = moves.first().brick;
        const QPointF free = findFreePlaceNear(
            *edit(), moves.first().position, BrickAppearance::size(brick), brick);
        if (edit()->insertOnLink(brick, link, &free))
            return;
    }
    QVector<DzShaderBrick*> unframed;
    for (const NetworkEdit::Move& move : moves)
        if (BrickAppearance::frameNumber(move.brick) == 0)
            unframed.append(move.brick);
    const int frame = unframed.isEmpty() ? 0 : scene()->frameAt(place);
    DzUndoStackHold hold;
    edit()->moveBricks(moves);
    if (frame != 0)
        addToFrame(edit(), unframed, frame);
    hold.accept(NetworkEdit::moveCaption(moves));
}

void MoveGesture::cancel()
{
    scene()->showAt(movedTo(QPointF()));
    scene()->setMarkedWire(BrickLink());
}

// Selecting.

BoxGesture::BoxGesture(NetworkView* view, const QPointF& place, Qt::KeyboardModifiers modifiers)
    : CanvasGesture(view)
    , m_start(place)
    , m_end(place)
    , m_isRemoving(modifiers & Qt::ControlModifier)
{
    scene()->getSelection()->setSelecting(true);
    if (modifiers & (Qt::ShiftModifier | Qt::ControlModifier))
        for (DzShaderBrick* brick : scene()->getSelection()->getBricks())
            m_before.append(brick);
    else
        scene()->getSelection()->clear();
}

BoxGesture::~BoxGesture()
{
    scene()->getSelection()->setSelecting(false);
}

QVector<DzShaderBrick*> BoxGesture::before() const
{
    QVector<DzShaderBrick*> present;
    for (const QPointer<DzShaderBrick>& brick : m_before)
        if (brick && scene()->getItem(brick))
            present.append(brick);
    return present;
}

void BoxGesture::move(const QPointF& place, Qt::KeyboardModifiers)
{
    m_end = place;
    const QVector<DzShaderBrick*> inside = scene()->bricksIn(QRectF(m_start, m_end).normalized());
    QVector<DzShaderBrick*> selected = before();
    if (m_isRemoving) {
        const QSet<DzShaderBrick*> removed(inside.begin(), inside.end());
        const auto isRemoved = [&](DzShaderBrick* brick) { return removed.contains(brick); };
        selected.erase(std::remove_if(selected.begin(), selected.end(), isRemoved), selected.end());
    } else {
        selected += inside;
    }
    scene()->getSelection()->set(selected);
    m_view->viewport()->update();
}

void BoxGesture::finish(const QPointF& place, Qt::KeyboardModifiers modifiers)
{
    if (place != m_start)
        move(place, modifiers);
}

void BoxGesture::cancel()
{
    scene()->getSelection()->set(before());
}

void BoxGesture::paint(QPainter* painter) const
{
    QColor fill = scene()->getStyle().selection;
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(QPen(fill, 0));
    fill.setAlpha(40);
    painter->setBrush(fill);
    painter->drawRect(QRectF(m_start, m_end).normalized());
}

// Cutting.

CutGesture::CutGesture(NetworkView* view, const QPointF& place)
    : CanvasGesture(view)
    , m_path { place }
{
}

void CutGesture::move(const QPointF& place, Qt::KeyboardModifiers)
{
    if ((place - m_path.last()).manhattanLength() < cutStep / m_view->getZoom())
        return;
    m_path.append(place);
    m_view->viewport()->update();
}

void CutGesture::finish(const QPointF& place, Qt::KeyboardModifiers)
{
    m_path.append(place);
    const QVector<BrickLink> links = scene()->wiresAcross(m_path);
    if (!links.isEmpty())
        cutLinks(links);
}

void CutGesture::paint(QPainter* painter) const
{
    QPen pen(scene()->getStyle().refusal, 2, Qt::DashLine);
    pen.setCosmetic(true);
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setPen(pen);
    painter->drawPolyline(m_path.constData(), m_path.size());
}

// Width.

WidthGesture::WidthGesture(NetworkView* view, DzShaderBrick* brick)
    : CanvasGesture(view)
    , m_brick(brick)
    , m_width(BrickAppearance::width(brick))
{
}

void WidthGesture::move(const QPointF& place, Qt::KeyboardModifiers)
{
    const BrickItem* item = m_brick ? scene()->getItem(m_brick) : nullptr;
    if (!item)
        return;
    m_width = qBound(
        BrickAppearance::minimumWidth, place.x() - item->pos().x(), BrickAppearance::maximumWidth);
    m_view->viewport()->update();
}

void WidthGesture::finish(const QPointF& place, Qt::KeyboardModifiers modifiers)
{
    move(place, modifiers);
    if (m_brick)
        edit()->setWidth(m_brick, m_width);
}

void WidthGesture::paint(QPainter* painter) const
{
    const BrickItem* item = m_brick ? scene()->getItem(m_brick) : nullptr;
    if (!item)
        return;
    painter->setPen(QPen(scene()->getStyle().selection, 2));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(item->pos(), QSizeF(m_width, item->getSize().height())));
}

// Beginnings.

namespace {

/// A linked input gives the end of its last wire into the hand.
std::unique_ptr<CanvasGesture> beginWire(NetworkView* view, DzBrickParam* pin, const QPointF& place)
{
    BrickLink picked;
    DzBrickParam* from = pin;
    if (pin->isInput() && pin->getNumConnections() > 0) {
        picked.input = pin;
        picked.output = pin->getConnection(pin->getNumConnections() - 1);
        from = picked.output;
    }
    return std::make_unique<WireGesture>(view, from, picked, place);
}

std::unique_ptr<CanvasGesture> beginMove(
    NetworkView* view, DzShaderBrick* brick, const QPointF& place, Qt::KeyboardModifiers modifiers)
{
    BrickSelection* selection = view->getSelection();
    const bool isAdding = modifiers & Qt::ShiftModifier;
    if (isAdding)
        selection->toggle(brick);
    else if (!selection->contains(brick))
        selection->set({ brick });
    if (!selection->contains(brick))
        return nullptr;
    return std::make_unique<MoveGesture>(view, place, isAdding ? nullptr : brick);
}

} // namespace

std::unique_ptr<CanvasGesture> beginGesture(
    NetworkView* view, const QPointF& place, Qt::KeyboardModifiers modifiers)
{
    const CanvasHit hit = view->getNetworkScene()->hit(place, view->getReach());
    switch (hit.kind) {
    case CanvasHit::Pin:
        return beginWire(view, hit.param, place);
    case CanvasHit::Grip:
        return std::make_unique<WidthGesture>(view, hit.item->getBrick());
    case CanvasHit::Row:
    case CanvasHit::Title:
        return beginMove(view, hit.item->getBrick(), place, modifiers);
    case CanvasHit::FrameTitle:
        view->getSelection()->set(findFrame(*view->getEdit(), hit.frame).bricks);
        return std::make_unique<MoveGesture>(view, place, nullptr);
    case CanvasHit::Wire:
    case CanvasHit::Nothing:
        break;
    }
    return std::make_unique<BoxGesture>(view, place, modifiers);
}
