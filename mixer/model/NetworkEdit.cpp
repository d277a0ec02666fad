// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkEdit.h"

#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "NetworkUndo.h"
#include "NetworkWalk.h"
#include "StoredNetworks.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzbrickstate.h"
#include "dzbrickuserfile.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "idzbrickuser.h"

#include <QHash>
#include <QRectF>
#include <QSet>
#include <algorithm>
#include <memory>

namespace {

typedef DzTSharedPointer<DzShaderBrick> BrickPtr;
using BrickAppearance::position;

/// Bricks that come without a place stand in columns of this many.
const int placedInColumn = 6;
const qreal placedColumnStep = 260;
const qreal placedRowStep = 300;
/// No text from the clipboard beyond this is looked at, in letters.
const int longestPaste = 64 * 1024 * 1024;

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

bool canLink(DzBrickParam* output, DzBrickParam* input)
{
    return output->isOutput() && input->isInput() && input->canConnect(output);
}

/// Output and input in this order, whichever order they come in.
BrickLink inOrder(DzBrickParam* a, DzBrickParam* b)
{
    if (a && b && !a->isOutput() && b->isOutput())
        std::swap(a, b);
    BrickLink link;
    link.output = a;
    link.input = b;
    return link;
}

QVector<DzShaderBrick*> reachable(const QVector<DzShaderBrick*>& bricks, bool upstream)
{
    QVector<DzShaderBrick*> found;
    QSet<DzShaderBrick*> isFound;
    const auto meet = [&](DzShaderBrick* brick) {
        if (brick && !isFound.contains(brick)) {
            isFound.insert(brick);
            found.append(brick);
        }
    };
    for (DzShaderBrick* brick : bricks)
        meet(brick);
    for (int next = 0; next < found.size(); ++next) {
        const DzShaderBrick* brick = found.at(next);
        for (int i = 0; i < brick->getNumParameters(); ++i) {
            const DzBrickParam* param = brick->getParameter(i);
            if (param->isOutput() == upstream)
                continue;
            for (int k = 0; k < param->getNumConnections(); ++k)
                meet(param->getConnection(k)->getTopBrickOwner());
        }
    }
    return found;
}

QRectF boxOf(const DzShaderBrick* brick)
{
    return QRectF(position(brick), BrickAppearance::size(brick));
}

QRectF boxOf(const QVector<DzShaderBrick*>& bricks)
{
    QRectF box;
    for (const DzShaderBrick* brick : bricks)
        box = box.isNull() ? boxOf(brick) : box.united(boxOf(brick));
    return box;
}

QString nameOf(const DzBrickParam* param)
{
    const QString label = param->getLabel();
    return label.isEmpty() ? param->getName() : label;
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
    for (const DzShaderBrick* brick : bricks) {
        for (int i = 0; i < brick->getNumParameters(); ++i) {
            DzBrickParam* param = brick->getParameter(i);
            if (param->isOutput())
                continue;
            for (int k = 0; k < param->getNumConnections(); ++k)
                links.append(BrickLink { param->getConnection(k), param });
        }
    }
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
        makeLink(link.output, link.input, ReplaceLinks);
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
    insertInto(brick, link);
    hold.accept(tr("Insert %1").arg(brick->getPreferredName()));
    return brick;
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
            reconnectAround(brick);
        user->deleteBrick(brick);
    }
    hold.accept(caption);
}

/// Whatever the brick feeds is fed by the first of the brick's sources that fits.
void NetworkEdit::reconnectAround(DzShaderBrick* brick)
{
    QVector<DzBrickParam*> sources;
    QVector<BrickLink> outgoing;
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        for (int k = 0; k < param->getNumConnections(); ++k) {
            if (param->isOutput())
                outgoing.append(BrickLink { param, param->getConnection(k) });
            else if (!sources.contains(param->getConnection(k)))
                sources.append(param->getConnection(k));
        }
    }
    for (const BrickLink& link : qAsConst(outgoing)) {
        link.input->removeConnection(link.output);
        for (DzBrickParam* source : qAsConst(sources))
            if (canLink(source, link.input)) {
                link.input->addConnection(source);
                break;
            }
    }
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

// Links.

QString NetworkEdit::refusalReason(DzBrickParam* a, DzBrickParam* b)
{
    const BrickLink link = inOrder(a, b);
    if (link.isNull() || !link.output->getTopBrickOwner() || !link.input->getTopBrickOwner())
        return tr("There is nothing to link.");
    const DzShaderBrick* source = link.output->getTopBrickOwner();
    const DzShaderBrick* target = link.input->getTopBrickOwner();
    if (link.output->isOutput() && link.input->isOutput())
        return tr("Both are outputs: a wire leads from an output to an input.");
    if (!link.output->isOutput()) {
        const DzBrickParam* row = link.output->isInput() ? link.input : link.output;
        return row->isInput() ? tr("Both are inputs: a wire leads from an output to an input.")
                              : tr("%1 is a setting: it takes no wire.").arg(nameOf(row));
    }
    if (!link.input->isInput())
        return tr("%1 is a setting: it takes no wire.").arg(nameOf(link.input));
    if (source == target)
        return tr("A brick cannot feed itself.");
    if (link.input->isConnectedTo(link.output))
        return tr("These two are linked already.");
    if (link.input->canConnect(link.output))
        return QString();
    if (source->getBrickUser() && target->getBrickUser()
        && source->getBrickUser() != target->getBrickUser())
        return tr("The bricks stand in different networks.");
    if (qobject_cast<const DzUnknownBrick*>(source) || qobject_cast<const DzUnknownBrick*>(target))
        return tr("A brick of an unknown class takes no new wires.");
    if (!target->canBeFedBy(source))
        return tr("This would close a loop: %1 feeds %2 already.")
            .arg(BrickAppearance::titleText(target), BrickAppearance::titleText(source));
    const QString given = link.output->getTypeString();
    const QString taken = link.input->getTypeString();
    if (given != taken)
        return tr("%1 takes %2, and this is %3.").arg(nameOf(link.input), taken, given);
    return tr("%1 takes no wire from %2.").arg(nameOf(link.input), source->getBrickTitle());
}

bool NetworkEdit::makeLink(DzBrickParam* output, DzBrickParam* input, LinkMode mode)
{
    if (!canLink(output, input) || input->isConnectedTo(output))
        return false;
    if (mode == ReplaceLinks)
        input->removeAllConnections();
    return input->addConnection(output);
}

bool NetworkEdit::connect(DzBrickParam* a, DzBrickParam* b, LinkMode mode)
{
    const BrickLink link = inOrder(a, b);
    if (link.isNull())
        return false;
    DzUndoStackHold hold;
    const bool isMade = makeLink(link.output, link.input, mode);
    hold.accept(tr("Link %1").arg(nameOf(link.input)));
    return isMade;
}

bool NetworkEdit::disconnect(DzBrickParam* a, DzBrickParam* b)
{
    const BrickLink link = inOrder(a, b);
    if (link.isNull())
        return false;
    DzUndoStackHold hold;
    const bool isRemoved = link.input->removeConnection(link.output);
    hold.accept(tr("Unlink %1").arg(nameOf(link.input)));
    return isRemoved;
}

void NetworkEdit::disconnectAll(DzBrickParam* param)
{
    DzUndoStackHold hold;
    param->removeAllConnections();
    hold.accept(tr("Unlink %1").arg(nameOf(param)));
}

bool NetworkEdit::moveLink(const BrickLink& link, DzBrickParam* input, LinkMode mode)
{
    if (link.isNull() || !input || input == link.input || input->isConnectedTo(link.output)
        || !canLink(link.output, input))
        return false;
    DzUndoStackHold hold;
    link.input->removeConnection(link.output);
    const bool isMade = makeLink(link.output, input, mode);
    if (isMade)
        hold.accept(tr("Move Link to %1").arg(nameOf(input)));
    return isMade;
}

void NetworkEdit::cutLinks(const QVector<BrickLink>& links)
{
    DzUndoStackHold hold;
    for (const BrickLink& link : links)
        link.input->removeConnection(link.output);
    hold.accept(links.size() == 1 ? tr("Cut Wire") : tr("Cut %n Wires", nullptr, links.size()));
}

namespace {

/// The brick's first parameters that fit between the ends of a wire; null ends where none does.
BrickLink endsForLink(const DzShaderBrick* brick, const BrickLink& link)
{
    BrickLink ends;
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        if (!ends.input && canLink(link.output, param))
            ends.input = param;
        if (!ends.output && canLink(param, link.input))
            ends.output = param;
    }
    return ends;
}

} // namespace

bool NetworkEdit::canInsertOnLink(const DzShaderBrick* brick, const BrickLink& link)
{
    return !link.isNull() && brick != link.output->getTopBrickOwner()
        && brick != link.input->getTopBrickOwner() && !endsForLink(brick, link).isNull();
}

bool NetworkEdit::insertInto(DzShaderBrick* brick, const BrickLink& link)
{
    const BrickLink ends = endsForLink(brick, link);
    if (ends.isNull())
        return false;
    link.input->removeConnection(link.output);
    return makeLink(link.output, ends.input, ReplaceLinks)
        && makeLink(ends.output, link.input, AddLink);
}

bool NetworkEdit::insertOnLink(DzShaderBrick* brick, const BrickLink& link, const QPointF* place)
{
    if (!canInsertOnLink(brick, link))
        return false;
    DzUndoStackHold hold;
    if (place)
        moveBricks({ Move { brick, *place } });
    const bool isDone = insertInto(brick, link);
    if (isDone)
        hold.accept(tr("Insert %1").arg(brick->getBrickTitle()));
    return isDone;
}

// Copies.

QString NetworkEdit::copy(const QVector<DzShaderBrick*>& bricks) const
{
    const IDzBrickUser* user = getUser();
    if (!user || bricks.isEmpty())
        return QString();
    QList<uint> ids;
    for (const DzShaderBrick* brick : bricks)
        ids.append(brick->getBrickID());
    std::sort(ids.begin(), ids.end());
    return QString::fromUtf8(DzBrickUserFile().saveText(user, ids));
}

bool NetworkEdit::mayPaste(const QString& text)
{
    return text.size() <= longestPaste
        && text.contains(QLatin1Char('"') + networkKey() + QLatin1Char('"'));
}

QVector<DzShaderBrick*> NetworkEdit::paste(
    const QString& text, const QPointF& place, QString* error)
{
    return addCopies(
        text, tr("Paste"), [place](const QPointF& middle) { return place - middle; }, error);
}

QVector<DzShaderBrick*> NetworkEdit::duplicate(
    const QVector<DzShaderBrick*>& bricks, const QPointF& offset, QString* error)
{
    return addCopies(
        copy(bricks), tr("Duplicate"), [offset](const QPointF&) { return offset; }, error);
}

namespace {

/// The bricks of a network that was read, taken out of it, and the links that they had.
struct LooseBricks {
    QVector<BrickPtr> bricks;
    QVector<BrickLink> links;
    int unusableCount = 0;
};

LooseBricks takeApart(IDzBrickUser* network)
{
    LooseBricks loose;
    QList<uint> ids;
    network->getBrickIDs(ids);
    for (const uint id : qAsConst(ids)) {
        DzShaderBrick* brick = network->getBrick(id);
        if (!network->canUseBrick(brick)) {
            ++loose.unusableCount;
            continue;
        }
        loose.bricks.append(brick);
        for (int i = 0; i < brick->getNumParameters(); ++i) {
            DzBrickParam* param = brick->getParameter(i);
            if (param->isOutput())
                continue;
            for (int k = 0; k < param->getNumConnections(); ++k)
                if (network->canUseBrick(param->getConnection(k)->getTopBrickOwner()))
                    loose.links.append(BrickLink { param->getConnection(k), param });
        }
    }
    network->deleteAllBricks();
    return loose;
}

/// Numbers for new frames: the smallest that no brick of a network has. Files may hold any.
class FreeFrameNumbers
{
public:
    explicit FreeFrameNumbers(const QVector<DzShaderBrick*>& bricks)
    {
        for (const DzShaderBrick* brick : bricks)
            m_taken.insert(BrickAppearance::frameNumber(brick));
    }

    int take()
    {
        do
            ++m_last;
        while (m_taken.contains(m_last));
        return m_last;
    }

private:
    QSet<int> m_taken;
    int m_last = 0;
};

/// Frames of copies are frames of their own.
void renumberFrames(const QVector<DzShaderBrick*>& bricks, FreeFrameNumbers* free)
{
    QHash<int, int> numbers;
    for (DzShaderBrick* brick : bricks) {
        const int before = BrickAppearance::frameNumber(brick);
        if (before <= 0)
            continue;
        if (!numbers.contains(before))
            numbers.insert(before, free->take());
        brick->getBrickSettings()
            ->getSettingsValue(BrickAppearance::frameKey())
            ->setIntValue(BrickAppearance::frameNumberKey(), numbers.value(before));
    }
}

} // namespace

QVector<DzShaderBrick*> NetworkEdit::addCopies(const QString& text, const QString& caption,
    const std::function<QPointF(const QPointF& middle)>& offsetFor, QString* error)
{
    QVector<DzShaderBrick*> added;
    setError(error, QString());
    IDzBrickUser* user = getUser();
    const QString trimmed = text.size() > longestPaste ? QString() : text.trimmed();
    if (!user || trimmed.isEmpty()) {
        setError(error, tr("There is no network to paste."));
        return added;
    }
    LooseBricks loose;
    {
        const DzUndoStackLock lock;
        const std::unique_ptr<IDzBrickUser> network(user->createBrickUser());
        DzBrickUserFile file;
        if (!file.loadText(trimmed.toUtf8(), tr("the clipboard"), network.get())) {
            setError(error, tr("The clipboard holds no network: %1").arg(file.getError()));
            return added;
        }
        // While the bricks still have their links, which say how they are arranged.
        DzNetworkLayout::arrangeUnplaced(network.get());
        loose = takeApart(network.get());
    }
    if (loose.unusableCount > 0)
        setError(error,
            loose.unusableCount == 1
                ? tr("A brick of unknown class cannot be copied and was left out.")
                : tr("%n bricks of unknown class cannot be copied and were left out.", nullptr,
                    loose.unusableCount));
    else if (loose.bricks.isEmpty())
        setError(error, tr("The network to paste has no bricks."));
    QVector<DzShaderBrick*> bricks;
    for (const BrickPtr& brick : qAsConst(loose.bricks))
        bricks.append(brick);
    FreeFrameNumbers free(getBricks());
    renumberFrames(bricks, &free);
    const QPointF offset = offsetFor(boxOf(bricks).center());
    DzUndoStackHold hold;
    for (DzShaderBrick* brick : qAsConst(bricks)) {
        BrickAppearance::setPosition(brick, position(brick) + offset);
        if (user->addBrick(brick) != 0)
            added.append(brick);
    }
    for (const BrickLink& link : qAsConst(loose.links))
        link.input->addConnection(link.output);
    hold.accept(caption);
    return added;
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

enum Axis { X, Y };

qreal low(const QRectF& box, Axis axis)
{
    return axis == X ? box.left() : box.top();
}

qreal extent(const QRectF& box, Axis axis)
{
    return axis == X ? box.width() : box.height();
}

/// Places along one axis so that the gaps between neighbours are equal.
QVector<qreal> distributed(const QVector<QRectF>& boxes, Axis axis)
{
    QVector<int> order(boxes.size());
    for (int i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(),
        [&](int a, int b) { return low(boxes.at(a), axis) < low(boxes.at(b), axis); });
    qreal used = 0;
    qreal end = low(boxes.at(order.first()), axis);
    const qreal start = end;
    for (const QRectF& box : boxes) {
        used += extent(box, axis);
        end = qMax(end, low(box, axis) + extent(box, axis));
    }
    const qreal gap = boxes.size() > 1 ? (end - start - used) / (boxes.size() - 1) : 0;
    QVector<qreal> places(boxes.size());
    qreal next = start;
    for (const int index : qAsConst(order)) {
        places[index] = next;
        next += extent(boxes.at(index), axis) + gap;
    }
    return places;
}

QVector<qreal> alignedPlaces(const QVector<QRectF>& boxes, NetworkEdit::Alignment alignment)
{
    QRectF all;
    for (const QRectF& box : boxes)
        all = all.united(box);
    QVector<qreal> places;
    for (const QRectF& box : boxes) {
        switch (alignment) {
        case NetworkEdit::AlignLeft:
            places.append(all.left());
            break;
        case NetworkEdit::AlignRight:
            places.append(all.right() - box.width());
            break;
        case NetworkEdit::AlignTop:
            places.append(all.top());
            break;
        case NetworkEdit::AlignBottom:
            places.append(all.bottom() - box.height());
            break;
        case NetworkEdit::AlignHorizontalCentres:
            places.append(all.center().x() - box.width() / 2);
            break;
        default:
            places.append(all.center().y() - box.height() / 2);
            break;
        }
    }
    return places;
}

} // namespace

void NetworkEdit::align(const QVector<DzShaderBrick*>& bricks, Alignment alignment)
{
    if (bricks.size() < 2)
        return;
    QVector<QRectF> boxes;
    for (const DzShaderBrick* brick : bricks)
        boxes.append(boxOf(brick));
    const bool isAlongX = alignment == AlignLeft || alignment == AlignRight
        || alignment == AlignHorizontalCentres || alignment == DistributeHorizontally;
    const bool isDistributed
        = alignment == DistributeHorizontally || alignment == DistributeVertically;
    const QVector<qreal> places
        = isDistributed ? distributed(boxes, isAlongX ? X : Y) : alignedPlaces(boxes, alignment);
    QVector<Move> moves;
    for (int i = 0; i < bricks.size(); ++i) {
        QPointF place = boxes.at(i).topLeft();
        if (isAlongX)
            place.setX(places.at(i));
        else
            place.setY(places.at(i));
        moves.append(Move { bricks.at(i), place });
    }
    DzUndoStackHold hold;
    moveBricks(moves);
    hold.accept(isDistributed ? tr("Distribute Bricks") : tr("Align Bricks"));
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
    shift(&moves, boxOf(arranged).center() - boxOf(moves).center());
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

// Frames.

QVector<BrickFrame> NetworkEdit::getFrames() const
{
    QVector<BrickFrame> frames;
    QHash<int, int> indexOf;
    const QVector<DzShaderBrick*> bricks = getBricks();
    for (DzShaderBrick* brick : bricks) {
        const int number = BrickAppearance::frameNumber(brick);
        if (number == 0)
            continue;
        if (!indexOf.contains(number)) {
            indexOf.insert(number, frames.size());
            BrickFrame frame;
            frame.number = number;
            frame.title = BrickAppearance::frameTitle(brick);
            frames.append(frame);
        }
        frames[indexOf.value(number)].bricks.append(brick);
    }
    return frames;
}

BrickFrame NetworkEdit::getFrame(int number) const
{
    const QVector<BrickFrame> frames = getFrames();
    for (const BrickFrame& frame : frames)
        if (frame.number == number)
            return frame;
    return BrickFrame();
}

void NetworkEdit::changeFrame(
    const QVector<DzShaderBrick*>& bricks, int frame, const QString& title)
{
    changeSettings(bricks, [&](DzShaderBrick* brick) {
        DzSettings* settings = brick->getBrickSettings();
        if (frame == 0) {
            settings->removeValue(BrickAppearance::frameKey());
            return;
        }
        DzSettings* tree = settings->getSettingsValue(BrickAppearance::frameKey());
        if (!tree)
            tree = settings->setSettingsValue(BrickAppearance::frameKey());
        tree->setIntValue(BrickAppearance::frameNumberKey(), frame);
        tree->setStringValue(BrickAppearance::frameTitleKey(), title);
    });
}

int NetworkEdit::frameBricks(const QVector<DzShaderBrick*>& bricks, const QString& title)
{
    if (bricks.isEmpty())
        return 0;
    const int number = FreeFrameNumbers(getBricks()).take();
    DzUndoStackHold hold;
    changeFrame(bricks, number, title.simplified());
    hold.accept(tr("Frame Bricks"));
    return number;
}

void NetworkEdit::addToFrame(const QVector<DzShaderBrick*>& bricks, int frame)
{
    const BrickFrame known = getFrame(frame);
    if (known.bricks.isEmpty())
        return;
    DzUndoStackHold hold;
    changeFrame(bricks, frame, known.title);
    hold.accept(tr("Add to Frame"));
}

void NetworkEdit::removeFromFrames(const QVector<DzShaderBrick*>& bricks)
{
    DzUndoStackHold hold;
    changeFrame(bricks, 0, QString());
    hold.accept(tr("Remove from Frame"));
}

void NetworkEdit::setFrameTitle(int frame, const QString& title)
{
    DzUndoStackHold hold;
    changeFrame(getFrame(frame).bricks, frame, title.simplified());
    hold.accept(tr("Change Frame Title"));
}

void NetworkEdit::removeFrame(int frame)
{
    DzUndoStackHold hold;
    changeFrame(getFrame(frame).bricks, 0, QString());
    hold.accept(tr("Remove Frame"));
}

// Other edits.

void NetworkEdit::changeBrick(
    DzShaderBrick* brick, const QString& caption, const std::function<void()>& change)
{
    DzBrickStateHold hold(brick);
    change();
    hold.accept(caption);
}

bool NetworkEdit::setPropertyText(DzProperty* property, const QString& text, QString* error)
{
    auto* brick = qobject_cast<DzShaderBrick*>(property->getOwner());
    const QString caption = tr("Change %1").arg(property->getLabel());
    bool isSet = false;
    if (brick && !property->getBrickParam()) {
        // A brick's own property may make and remove inputs.
        changeBrick(brick, caption, [&] { isSet = property->setValueText(text, error); });
        return isSet;
    }
    DzUndoStackHold hold;
    isSet = property->setValueText(text, error);
    hold.accept(caption);
    return isSet;
}

QVector<DzShaderBrick*> NetworkEdit::withUpstream(const QVector<DzShaderBrick*>& bricks)
{
    return reachable(bricks, true);
}

QVector<DzShaderBrick*> NetworkEdit::withDownstream(const QVector<DzShaderBrick*>& bricks)
{
    return reachable(bricks, false);
}
