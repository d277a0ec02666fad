// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkEdit.h"

#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "NetworkLinks.h"
#include "NetworkUndo.h"
#include "NetworkWalk.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzforeachlink.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QRectF>
#include <memory>

namespace {

typedef DzTSharedPointer<DzShaderBrick> BrickPtr;
using BrickAppearance::position;

/// Bricks that come without a place stand in columns of this many.
const int placedInColumn = 6;
const qreal placedColumnStep = 260;
const qreal placedRowStep = 300;

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

QString noSuchUser()
{
    return NetworkEdit::tr("The network is not there any more.");
}

} // namespace

NetworkEdit::NetworkEdit(IDzBrickUser* user, QObject* parent)
    : QObject(parent)
    , m_user(user)
    , m_element(user->getBrickUserElement())
{
    QObject::connect(
        m_element, SIGNAL(brickAdded(DzShaderBrick*)), this, SLOT(placeNewBrick(DzShaderBrick*)));
}

IDzBrickUser* NetworkEdit::getUser() const
{
    return m_element ? m_user : nullptr;
}

QVector<DzShaderBrick*> NetworkEdit::getBricks() const
{
    const IDzBrickUser* user = getUser();
    return user ? bricksOf(user) : QVector<DzShaderBrick*>();
}

QVector<BrickLink> NetworkEdit::getLinks() const
{
    QVector<BrickLink> links;
    const QVector<DzShaderBrick*> bricks = getBricks();
    for (const DzShaderBrick* brick : bricks)
        forEachInputLink(brick, [&](DzBrickParam* input, DzBrickParam* output) {
            links.append(BrickLink { output, input });
        });
    return links;
}

// Bricks.

DzShaderBrick* NetworkEdit::makeBrick(const QString& className, QString* error) const
{
    const IDzBrickUser* user = getUser();
    if (!user) {
        setError(error, noSuchUser());
        return nullptr;
    }
    QObject* object = nullptr;
    {
        const DzUndoStackLock lock;
        object = dzApp->createInstance(className);
    }
    auto* brick = qobject_cast<DzShaderBrick*>(object);
    if (!brick) {
        delete object;
        setError(error, tr("There is no brick of class \"%1\".").arg(className));
        return nullptr;
    }
    if (!user->canUseBrick(brick)) {
        setError(error, tr("This network does not take the brick %1.").arg(brick->getBrickTitle()));
        delete brick;
        return nullptr;
    }
    return brick;
}

DzShaderBrick* NetworkEdit::addBrick(const QString& className, const QPointF& place, QString* error)
{
    const BrickPtr brick(makeBrick(className, error));
    if (!brick)
        return nullptr;
    BrickAppearance::setPosition(brick, place);
    getUser()->addBrick(brick);
    return brick;
}

DzShaderBrick* NetworkEdit::addBrickLinked(
    const QString& className, const QPointF& place, DzBrickParam* pin, QString* error)
{
    const BrickPtr brick(makeBrick(className, error));
    if (!brick)
        return nullptr;
    DzBrickParam* fitting = BrickCatalogue::findFitting(brick, pin);
    const QPointF offset = fitting ? BrickAppearance::pinOffset(brick, fitting) : QPointF();
    BrickAppearance::setPosition(brick, place - offset);
    DzUndoStackHold hold;
    getUser()->addBrick(brick);
    if (fitting) {
        const BrickLink link = inOrder(pin, fitting);
        joinPins(link.output, link.input, ReplaceLinks);
    }
    hold.accept(tr("Add %1").arg(brick->getPreferredName()));
    return brick;
}

DzShaderBrick* NetworkEdit::addBrickOnLink(
    const QString& className, const QPointF& place, const BrickLink& link, QString* error)
{
    const BrickPtr brick(makeBrick(className, error));
    if (!brick)
        return nullptr;
    if (!canInsertOnLink(brick, link)) {
        setError(error, tr("%1 does not fit into this wire.").arg(brick->getPreferredName()));
        return nullptr;
    }
    BrickAppearance::setPosition(brick, place);
    DzUndoStackHold hold;
    getUser()->addBrick(brick);
    joinInto(brick, link);
    hold.accept(tr("Insert %1").arg(brick->getPreferredName()));
    return brick;
}

bool NetworkEdit::insertOnLink(DzShaderBrick* brick, const BrickLink& link, const QPointF* place)
{
    if (!canInsertOnLink(brick, link))
        return false;
    DzUndoStackHold hold;
    if (place)
        moveBricks({ Move { brick, *place } });
    const bool isDone = joinInto(brick, link);
    if (isDone)
        hold.accept(tr("Insert %1").arg(brick->getBrickTitle()));
    return isDone;
}

void NetworkEdit::deleteBricks(const QVector<DzShaderBrick*>& bricks, bool reconnect)
{
    IDzBrickUser* user = getUser();
    if (!user || bricks.isEmpty())
        return;
    const QString caption = bricks.size() == 1
        ? tr("Delete %1").arg(bricks.first()->getBrickTitle())
        : tr("Delete %n Bricks", nullptr, bricks.size());
    DzUndoStackHold hold;
    for (DzShaderBrick* brick : bricks) {
        if (reconnect)
            joinAround(brick);
        user->deleteBrick(brick);
    }
    hold.accept(caption);
}

void NetworkEdit::setTitle(DzShaderBrick* brick, const QString& title)
{
    const QString wanted = title.simplified();
    if (wanted == brick->getBrickTitle())
        return;
    DzUndoStackHold hold;
    changeSettings({ brick }, [&](DzShaderBrick* changed) {
        if (wanted.isEmpty())
            changed->getBrickSettings()->removeValue(BrickAppearance::titleKey());
        else
            changed->getBrickSettings()->setStringValue(BrickAppearance::titleKey(), wanted);
    });
    hold.accept(tr("Change Title"));
}

void NetworkEdit::setHidesParams(const QVector<DzShaderBrick*>& bricks, bool hides)
{
    DzUndoStackHold hold;
    changeSettings(bricks, [=](DzShaderBrick* brick) {
        if (BrickAppearance::hidesParams(brick) != hides)
            brick->getBrickSettings()->setBoolValue(BrickAppearance::hideParamsKey(), hides);
    });
    hold.accept(hides ? tr("Hide Parameters") : tr("Show Parameters"));
}

void NetworkEdit::setWidth(DzShaderBrick* brick, qreal width)
{
    changeWidth({ brick }, width - BrickAppearance::width(brick));
}

void NetworkEdit::changeWidth(const QVector<DzShaderBrick*>& bricks, qreal by)
{
    DzUndoStackHold hold;
    changeSettings(bricks, [=](DzShaderBrick* brick) {
        const qreal before = BrickAppearance::width(brick);
        const int wanted = qRound(
            qBound(BrickAppearance::minimumWidth, before + by, BrickAppearance::maximumWidth));
        if (qRound(before) != wanted)
            brick->getBrickSettings()->setIntValue(BrickAppearance::widthKey(), wanted);
    });
    hold.accept(tr("Change Width"));
}

void NetworkEdit::changeSettings(const QVector<DzShaderBrick*>& bricks, const BrickChange& change)
{
    for (DzShaderBrick* brick : bricks) {
        const DzSettings before(*brick->getBrickSettings());
        change(brick);
        if (brick->getBrickSettings()->isEqual(before))
            continue;
        if (dzUndoStack->canPushItems())
            dzUndoStack->push(new BrickSettingsItem(this, brick, before), QString());
        BrickSettingsItem::tell(this, brick, before);
    }
}

// Places.

QString NetworkEdit::moveCaption(const QVector<Move>& moves)
{
    return moves.size() == 1 ? tr("Move %1").arg(moves.first().brick->getBrickTitle())
                             : tr("Move %n Bricks", nullptr, moves.size());
}

void NetworkEdit::moveBricks(const QVector<Move>& moves)
{
    QVector<Move> moved;
    for (const Move& move : moves)
        if (!BrickAppearance::hasPosition(move.brick) || position(move.brick) != move.position)
            moved.append(move);
    if (moved.isEmpty())
        return;
    QVector<BrickMoveItem::Entry> entries;
    entries.reserve(moved.size());
    for (const Move& move : qAsConst(moved))
        entries.append(BrickMoveItem::Entry(move.brick, move.position));
    std::unique_ptr<BrickMoveItem> item(new BrickMoveItem(this, entries));
    item->redo();
    dzUndoStack->push(item.release(), moveCaption(moved));
}

namespace {

void shift(QVector<NetworkEdit::Move>* moves, const QPointF& offset)
{
    // Whole numbers: files stay short and wires straight.
    for (NetworkEdit::Move& move : *moves)
        move.position = QPointF((move.position + offset).toPoint());
}

QRectF boxOf(const QVector<NetworkEdit::Move>& moves)
{
    QRectF box;
    for (const NetworkEdit::Move& move : moves) {
        const QRectF next(move.position, BrickAppearance::size(move.brick));
        box = box.isNull() ? next : box.united(next);
    }
    return box;
}

} // namespace

void NetworkEdit::arrange(const QVector<DzShaderBrick*>& bricks)
{
    const QVector<DzShaderBrick*> arranged = bricks.isEmpty() ? getBricks() : bricks;
    if (arranged.isEmpty())
        return;
    QVector<Move> moves = DzNetworkLayout::arranged(arranged);
    shift(&moves, BrickAppearance::box(arranged).center() - boxOf(moves).center());
    DzUndoStackHold hold;
    moveBricks(moves);
    hold.accept(tr("Arrange Bricks"));
}

bool NetworkEdit::arrangeUnplaced()
{
    IDzBrickUser* user = getUser();
    const QVector<DzShaderBrick*> placed
        = user ? DzNetworkLayout::arrangeUnplaced(user) : QVector<DzShaderBrick*>();
    if (!placed.isEmpty())
        emit bricksMoved(placed);
    return !placed.isEmpty();
}

void NetworkEdit::setPlaceHint(const QPointF& place)
{
    m_placeHint = place;
    m_placedCount = 0;
}

/// Bricks that come back with undo have their places.
void NetworkEdit::placeNewBrick(DzShaderBrick* brick)
{
    if (BrickAppearance::hasPosition(brick))
        return;
    const int column = m_placedCount / placedInColumn;
    const int row = m_placedCount % placedInColumn;
    ++m_placedCount;
    BrickAppearance::setPosition(
        brick, m_placeHint + QPointF(column * placedColumnStep, row * placedRowStep));
    emit bricksMoved({ brick });
}
