// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkScene.h"

#include "BrickItem.h"
#include "BrickSelection.h"
#include "FrameLayer.h"
#include "NetworkWalk.h"
#include "WireLayer.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "idzbrickuser.h"

#include <QScopedValueRollback>
#include <QUndoStack>
#include <algorithm>

namespace {

/// A pin is hit within this of its middle, and further out when the canvas is small.
const qreal pinReach = 9;
const qreal gripWidth = 7;

} // namespace

NetworkScene::NetworkScene(NetworkEdit* edit, BrickSelection* selection, QObject* parent)
    : QGraphicsScene(parent)
    , m_edit(edit)
    , m_selection(selection)
    , m_wireLayer(new WireLayer(this))
    , m_frameLayer(new FrameLayer(this))
{
    // Bricks move all the time, and there are not enough of them for an index to pay.
    setItemIndexMethod(NoIndex);
    addItem(m_frameLayer);
    addItem(m_wireLayer);
    if (IDzBrickUser* user = edit->getUser()) {
        const DzElement* element = user->getBrickUserElement();
        // After the edit's own connection, which gives new bricks their places.
        connect(
            element, SIGNAL(brickAdded(DzShaderBrick*)), this, SLOT(addItemFor(DzShaderBrick*)));
        connect(element, SIGNAL(brickRemoved(DzShaderBrick*)), this,
            SLOT(removeItemOf(DzShaderBrick*)));
    }
    connect(edit, &NetworkEdit::bricksMoved, this, [this](const QVector<DzShaderBrick*>& bricks) {
        for (DzShaderBrick* brick : bricks)
            if (BrickItem* item = getItem(brick))
                moveItem(item, BrickAppearance::position(brick));
        noteLayout();
    });
    connect(edit, &NetworkEdit::brickSettingsChanged, this, [this](DzShaderBrick* brick) {
        if (BrickItem* item = getItem(brick)) {
            item->dropRows();
            moveItem(item, BrickAppearance::position(brick));
        }
    });
    connect(selection, &BrickSelection::selectionChanged, this, &NetworkScene::updateSelection);
    connect(dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this, &NetworkScene::followUndo);
    rebuild();
}

NetworkScene::~NetworkScene()
{
}

void NetworkScene::setStyle(const CanvasStyle& style)
{
    m_style = style;
    for (BrickItem* item : getItems())
        item->dropTexts();
    update();
}

void NetworkScene::rebuild()
{
    m_edit->arrangeUnplaced();
    const QVector<BrickItem*> items = getItems();
    for (BrickItem* item : items)
        removeItemOf(item->getBrick());
    const QVector<DzShaderBrick*> bricks = m_edit->getBricks();
    for (DzShaderBrick* brick : bricks)
        addItemFor(brick);
    flush();
    updateSelection();
}

void NetworkScene::addItemFor(DzShaderBrick* brick)
{
    if (m_itemOf.contains(brick))
        return;
    auto* item = new BrickItem(this, brick);
    item->setZValue(1);
    item->m_index = m_items.size();
    m_items.append(item);
    m_itemOf.insert(brick, item);
    addItem(item);
    if (qobject_cast<DzUnknownBrick*>(brick))
        item->setBadge(tr("No module offers this brick's class. Its data and links are kept, and "
                          "it writes no text."));
    if (m_selection->contains(brick)) {
        item->setSelected(true);
        m_shownSelected.insert(brick);
    }
    noteDirty(item);
    dropWiresFrom(brick);
}

/// Has whatever the brick feeds make its wires again.
void NetworkScene::dropWiresFrom(const DzShaderBrick* brick)
{
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        const DzBrickParam* param = brick->getParameter(i);
        for (int k = 0; param->isOutput() && k < param->getNumConnections(); ++k)
            if (BrickItem* fed = getItem(param->getConnection(k)->getTopBrickOwner())) {
                fed->m_wires.clear();
                fed->m_wiresDirty = true;
                noteDirty(fed);
            }
    }
}

void NetworkScene::removeItemOf(DzShaderBrick* brick)
{
    BrickItem* item = m_itemOf.take(brick);
    if (!item)
        return;
    // Links that are still there, such as those of a brick on its way to another user.
    dropWiresFrom(brick);
    m_wireLayer->updateWires(item->m_wires);
    // Many go at once: taking each out of the lists would take the longer the more they are.
    m_items[item->m_index] = nullptr;
    m_hasGaps = true;
    if (item->m_dirtyIndex >= 0)
        m_dirty[item->m_dirtyIndex] = nullptr;
    m_dimmed.remove(item);
    m_shownSelected.remove(brick);
    if (m_selection->contains(brick))
        m_gone.append(brick);
    noteLayout();
    delete item;
}

const QVector<BrickItem*>& NetworkScene::getItems()
{
    if (m_hasGaps) {
        m_hasGaps = false;
        m_items.erase(std::remove(m_items.begin(), m_items.end(), nullptr), m_items.end());
        numberItems();
    }
    return m_items;
}

void NetworkScene::numberItems()
{
    for (int i = 0; i < m_items.size(); ++i)
        m_items.at(i)->m_index = i;
}

void NetworkScene::noteDirty(BrickItem* item)
{
    if (item->m_dirtyIndex < 0) {
        item->m_dirtyIndex = m_dirty.size();
        m_dirty.append(item);
    }
    noteLayout();
}

void NetworkScene::noteLayout()
{
    m_isLayoutDirty = true;
    if (m_isFlushPending)
        return;
    m_isFlushPending = true;
    QMetaObject::invokeMethod(this, "flushLater", Qt::QueuedConnection);
}

void NetworkScene::flushLater()
{
    m_isFlushPending = false;
    flush();
}

void NetworkScene::flush()
{
    bringUpToDate();
    if (!m_isTellingDue || m_isUpdating)
        return;
    m_isTellingDue = false;
    leaveSelection();
    emit layoutChanged();
}

void NetworkScene::bringUpToDate()
{
    if (m_isUpdating || !m_isLayoutDirty)
        return;
    const QScopedValueRollback<bool> updating(m_isUpdating, true);
    QVector<BrickItem*> dirty;
    dirty.swap(m_dirty);
    dirty.erase(std::remove(dirty.begin(), dirty.end(), nullptr), dirty.end());
    QVector<BrickItem*> resized;
    for (BrickItem* item : qAsConst(dirty)) {
        item->m_dirtyIndex = -1;
        if (item->m_rowsDirty) {
            item->makeRows();
            resized.append(item);
        }
    }
    for (BrickItem* item : qAsConst(dirty))
        if (item->m_wiresDirty) {
            item->makeWires();
            m_wireLayer->updateWires(item->m_wires);
        }
    for (BrickItem* item : qAsConst(resized))
        updateWireEnds(item);
    m_frameLayer->rebuild();
    m_isLayoutDirty = false;
    m_isTellingDue = true;
    if (!dirty.isEmpty())
        m_wireLayer->update();
}

/// Takes the bricks that went out of the selection, unless they came back.
void NetworkScene::leaveSelection()
{
    QVector<DzShaderBrick*> gone;
    for (const QPointer<DzShaderBrick>& brick : qAsConst(m_gone))
        if (brick && !getItem(brick))
            gone.append(brick);
    m_gone.clear();
    m_selection->remove(gone);
}

/// A step that brings back a brick of unknown class emits nothing.
void NetworkScene::followUndo()
{
    const IDzBrickUser* user = m_edit->getUser();
    if (user && user->getNumBricks() != m_itemOf.size())
        syncBricks();
}

void NetworkScene::syncBricks()
{
    const QVector<DzShaderBrick*> bricks = m_edit->getBricks();
    const QSet<DzShaderBrick*> present(bricks.begin(), bricks.end());
    const QVector<BrickItem*> items = getItems();
    for (BrickItem* item : items)
        if (!present.contains(item->getBrick()))
            removeItemOf(item->getBrick());
    for (DzShaderBrick* brick : bricks)
        addItemFor(brick);
}

void NetworkScene::updateSelection()
{
    const QVector<DzShaderBrick*>& bricks = m_selection->getBricks();
    const QSet<DzShaderBrick*> selected(bricks.begin(), bricks.end());
    for (DzShaderBrick* brick : qAsConst(m_shownSelected))
        if (!selected.contains(brick))
            if (BrickItem* item = getItem(brick)) {
                item->setSelected(false);
                m_wireLayer->updateWiresOf(item);
            }
    for (DzShaderBrick* brick : bricks)
        if (!m_shownSelected.contains(brick))
            if (BrickItem* item = getItem(brick)) {
                item->setSelected(true);
                m_wireLayer->updateWiresOf(item);
            }
    m_shownSelected = selected;
}

void NetworkScene::moveItem(BrickItem* item, const QPointF& place)
{
    if (item->pos() == place)
        return;
    item->setPos(place);
    updateWireEnds(item);
}

void NetworkScene::updateWireEnds(BrickItem* item)
{
    const auto moveEnds = [this](BrickItem* fed, const BrickItem* moved) {
        for (CanvasWire& wire : fed->m_wires) {
            if (fed != moved && wire.source != moved)
                continue;
            m_wireLayer->update(wire.bounds);
            wire.from = wire.source->pinPlace(wire.output);
            wire.to = fed->inputPlace(wire.inputRow);
            wire.bounds = wireBounds(wire.from, wire.to);
            m_wireLayer->update(wire.bounds);
        }
    };
    moveEnds(item, item);
    const BrickItem* last = nullptr;
    for (const BrickAppearance::Row& row : qAsConst(item->m_rows)) {
        if (row.kind != BrickAppearance::Row::Output)
            continue;
        for (int k = 0; k < row.param->getNumConnections(); ++k) {
            BrickItem* fed = getItem(row.param->getConnection(k)->getTopBrickOwner());
            if (fed && fed != last)
                moveEnds(fed, item);
            last = fed;
        }
    }
}

void NetworkScene::showAt(const QVector<NetworkEdit::Move>& places)
{
    for (const NetworkEdit::Move& move : places)
        if (BrickItem* item = getItem(move.brick))
            moveItem(item, move.position);
    m_frameLayer->rebuild();
    emit layoutChanged();
}

void NetworkScene::bringToFront(const QVector<DzShaderBrick*>& bricks)
{
    ++m_topZ;
    for (const DzShaderBrick* brick : bricks)
        if (BrickItem* item = getItem(brick))
            item->setZValue(m_topZ);
    getItems();
    std::stable_sort(m_items.begin(), m_items.end(),
        [](const BrickItem* a, const BrickItem* b) { return a->zValue() < b->zValue(); });
    numberItems();
}

// Finding.

CanvasHit NetworkScene::hit(const QPointF& place, qreal reach)
{
    bringUpToDate();
    CanvasHit found;
    const qreal pin = qMax(pinReach, reach);
    const QVector<BrickItem*>& items = getItems();
    for (int i = items.size() - 1; i >= 0 && !found.item; --i) {
        BrickItem* item = items.at(i);
        const QPointF inner = place - item->pos();
        const QRectF box(QPointF(), item->getSize());
        if (!box.adjusted(-pin, -pin, pin, pin).contains(inner))
            continue;
        const int row = item->rowAt(inner);
        DzBrickParam* param = row < 0 ? nullptr : item->getRows().at(row).param;
        if (param && item->getRows().at(row).kind != BrickAppearance::Row::Setting) {
            const QPointF offset = item->pinPlace(param) - place;
            if (QPointF::dotProduct(offset, offset) <= pin * pin)
                found.kind = CanvasHit::Pin;
        }
        if (found.kind != CanvasHit::Pin) {
            if (!box.contains(inner))
                continue;
            found.kind = row < 0 ? CanvasHit::Title : CanvasHit::Row;
            if (row < 0 && inner.x() > box.right() - gripWidth)
                found.kind = CanvasHit::Grip;
        }
        found.item = item;
        found.row = row;
        found.param = param;
    }
    if (found.item)
        return found;
    found.link = hitWire(place, reach);
    if (!found.link.isNull())
        found.kind = CanvasHit::Wire;
    else if ((found.frame = m_frameLayer->titleAt(place)) != 0)
        found.kind = CanvasHit::FrameTitle;
    return found;
}

BrickLink NetworkScene::hitWire(const QPointF& place, qreal reach, const DzShaderBrick* except)
{
    bringUpToDate();
    BrickLink found;
    const QRectF near(place.x() - reach, place.y() - reach, 2 * reach, 2 * reach);
    for (const BrickItem* item : getItems()) {
        if (item->getBrick() == except)
            continue;
        for (const CanvasWire& wire : item->getWires()) {
            if (wire.source->getBrick() == except || !wire.bounds.intersects(near))
                continue;
            QPainterPath path = wirePath(wire.from, wire.to);
            path.addPath(path.toReversed());
            if (path.intersects(near))
                found = BrickLink { wire.output, wire.input };
        }
    }
    return found;
}

QVector<DzShaderBrick*> NetworkScene::bricksIn(const QRectF& box)
{
    bringUpToDate();
    QVector<DzShaderBrick*> bricks;
    for (const BrickItem* item : getItems())
        if (box.intersects(QRectF(item->pos(), item->getSize())))
            bricks.append(item->getBrick());
    return bricks;
}

QVector<BrickLink> NetworkScene::wiresAcross(const QVector<QPointF>& path)
{
    bringUpToDate();
    QVector<BrickLink> crossed;
    if (path.size() < 2)
        return crossed;
    const QRectF near = QPolygonF(path).boundingRect().adjusted(-1, -1, 1, 1);
    for (const BrickItem* item : getItems())
        for (const CanvasWire& wire : item->getWires())
            if (wire.bounds.intersects(near) && m_wireLayer->isCrossed(wire, path))
                crossed.append(BrickLink { wire.output, wire.input });
    return crossed;
}

QRectF NetworkScene::boxOf(const QVector<DzShaderBrick*>& bricks)
{
    bringUpToDate();
    QRectF box;
    for (const DzShaderBrick* brick : bricks)
        if (const BrickItem* item = getItem(brick))
            box |= QRectF(item->pos(), item->getSize());
    return box;
}

QRectF NetworkScene::boxOfAll()
{
    bringUpToDate();
    QRectF box = m_frameLayer->box();
    for (const BrickItem* item : getItems())
        box |= QRectF(item->pos(), item->getSize());
    return box;
}

int NetworkScene::frameAt(const QPointF& place)
{
    bringUpToDate();
    return m_frameLayer->frameAt(place);
}

QRectF NetworkScene::frameTitleBox(int frame)
{
    bringUpToDate();
    return m_frameLayer->titleBox(frame);
}

// The wire that is being dragged.

void NetworkScene::beginProbe(DzBrickParam* param)
{
    m_probe = param;
    m_fits.clear();
    m_dimmed.clear();
    m_probeLoop.clear();
    // Known once for all pins, instead of being searched for each.
    const QVector<DzShaderBrick*> start { param->getTopBrickOwner() };
    const QVector<DzShaderBrick*> loop
        = param->isOutput() ? withUpstream(start) : withDownstream(start);
    for (const DzShaderBrick* brick : loop)
        m_probeLoop.insert(brick);
    update();
}

void NetworkScene::endProbe()
{
    m_probe = nullptr;
    m_fits.clear();
    m_dimmed.clear();
    m_hiddenWire = BrickLink();
    m_markedWire = BrickLink();
    update();
}

LinkFit NetworkScene::getFit(DzBrickParam* param) const
{
    if (!m_probe)
        return NoProbe;
    if (param == m_probe || (m_hiddenWire.output == m_probe && param == m_hiddenWire.input))
        return Fits;
    const auto known = m_fits.constFind(param);
    if (known != m_fits.constEnd())
        return *known ? Fits : NoFit;
    const bool isPair = param->isOutput() != m_probe->isOutput();
    const bool fits = isPair && !m_probeLoop.contains(param->getTopBrickOwner())
        && (param->isOutput() ? m_probe->canConnect(param) : param->canConnect(m_probe));
    m_fits.insert(param, fits);
    return fits ? Fits : NoFit;
}

bool NetworkScene::isDimmed(const BrickItem* item) const
{
    if (!m_probe || item->getBrick() == m_probe->getTopBrickOwner())
        return false;
    const auto known = m_dimmed.constFind(item);
    if (known != m_dimmed.constEnd())
        return *known;
    bool isDimmed = true;
    for (const BrickAppearance::Row& row : item->getRows())
        if (row.kind != BrickAppearance::Row::Setting && getFit(row.param) == Fits) {
            isDimmed = false;
            break;
        }
    m_dimmed.insert(item, isDimmed);
    return isDimmed;
}

void NetworkScene::setHiddenWire(const BrickLink& link)
{
    m_hiddenWire = link;
    m_wireLayer->update();
}

void NetworkScene::setMarkedWire(const BrickLink& link)
{
    if (link == m_markedWire)
        return;
    m_markedWire = link;
    m_wireLayer->update();
}

void NetworkScene::setFocusRow(DzShaderBrick* brick, int row)
{
    if (BrickItem* before = getItem(m_focusBrick))
        before->update();
    m_focusBrick = brick;
    m_focusRow = row;
    if (BrickItem* after = getItem(brick))
        after->update();
}

bool NetworkScene::isFocusRow(const BrickItem* item, int row) const
{
    return m_focusBrick && item->getBrick() == m_focusBrick && row == m_focusRow;
}

void NetworkScene::setBadge(DzShaderBrick* brick, const QString& text, ProblemLevel level)
{
    if (BrickItem* item = getItem(brick))
        item->setBadge(text, level);
}

void NetworkScene::clearBadges()
{
    for (BrickItem* item : getItems())
        if (!item->getBadge().isEmpty())
            setBadge(item->getBrick(), QString());
}
