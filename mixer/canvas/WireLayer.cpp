// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WireLayer.h"

#include "BrickSelection.h"
#include "NetworkScene.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QtMath>

namespace {

/// From this zoom on wires are drawn as curves.
const qreal curveDetail = 0.3;
const int crossingSteps = 24;
const int passingSteps = 12;
const int farPieces = 6;
const qreal plainWidth = 2;
const qreal strongWidth = 3.4;
const qreal markWidth = 7;
const int mostHairlines = 12;
const int dimmedAlpha = 60;

bool isLink(const CanvasWire& wire, const BrickLink& link)
{
    return wire.output == link.output && wire.input == link.input;
}

/// True when the curve itself, and not only its box, comes near the rectangle.
bool passesThrough(const CanvasWire& wire, const QRectF& box)
{
    const qreal slack = 8;
    const QRectF wide = box.adjusted(-slack, -slack, slack, slack);
    if (wide.contains(wire.from) || wide.contains(wire.to))
        return true;
    QPointF last = wire.from;
    for (int step = 1; step <= passingSteps; ++step) {
        const QPointF next = wirePoint(wire.from, wire.to, qreal(step) / passingSteps);
        if (qMin(last.x(), next.x()) <= wide.right() && qMax(last.x(), next.x()) >= wide.left()
            && qMin(last.y(), next.y()) <= wide.bottom() && qMax(last.y(), next.y()) >= wide.top())
            return true;
        last = next;
    }
    return false;
}

/// True when the segments a-b and c-d cross.
bool segmentsCross(const QPointF& a, const QPointF& b, const QPointF& c, const QPointF& d)
{
    return QLineF(a, b).intersects(QLineF(c, d), nullptr) == QLineF::BoundedIntersection;
}

} // namespace

WireLayer::WireLayer(NetworkScene* scene)
    : m_scene(scene)
{
    setFlag(ItemUsesExtendedStyleOption);
    setZValue(0);
}

/// Everything, once and for all: wires come and go too often for a box that is never wrong.
QRectF WireLayer::boundingRect() const
{
    const qreal reach = 2 * BrickAppearance::farthestPlace;
    return QRectF(-reach, -reach, 2 * reach, 2 * reach);
}

void WireLayer::updateWires(const QVector<CanvasWire>& wires)
{
    for (const CanvasWire& wire : wires)
        update(wire.bounds);
}

void WireLayer::updateWiresOf(const BrickItem* item)
{
    updateWires(item->getWires());
    for (const BrickAppearance::Row& row : item->getRows()) {
        if (row.kind != BrickAppearance::Row::Output)
            continue;
        for (int k = 0; k < row.param->getNumConnections(); ++k)
            if (const BrickItem* fed
                = m_scene->getItem(row.param->getConnection(k)->getTopBrickOwner()))
                for (const CanvasWire& wire : fed->getWires())
                    if (wire.source == item)
                        update(wire.bounds);
    }
}

bool WireLayer::isCrossed(const CanvasWire& wire, const QVector<QPointF>& path) const
{
    QPointF last = wire.from;
    for (int step = 1; step <= crossingSteps; ++step) {
        const QPointF next = wirePoint(wire.from, wire.to, qreal(step) / crossingSteps);
        for (int i = 1; i < path.size(); ++i)
            if (segmentsCross(last, next, path.at(i - 1), path.at(i)))
                return true;
        last = next;
    }
    return false;
}

void WireLayer::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    const QRectF exposed = option->exposedRect;
    // Thin lines are painted many times faster with a rectangle to clip to than without any.
    painter->setClipRect(exposed);
    const qreal detail = option->levelOfDetailFromTransform(painter->worldTransform());
    if (detail < curveDetail)
        paintFar(painter, exposed);
    else
        paintNear(painter, exposed, detail * painter->device()->devicePixelRatioF());
    painter->setClipping(false);
}

QColor WireLayer::colorOf(const CanvasWire& wire) const
{
    QColor color = wire.color;
    if (m_scene->getFit(wire.input) != NoProbe)
        color.setAlpha(dimmedAlpha);
    return color;
}

void WireLayer::paintNear(QPainter* painter, const QRectF& exposed, qreal pixelsPerUnit) const
{
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setBrush(Qt::NoBrush);
    const BrickSelection* selection = m_scene->getSelection();
    const CanvasStyle& style = m_scene->getStyle();
    for (const BrickItem* item : m_scene->getItems()) {
        const bool isSelected = selection->contains(item->getBrick());
        for (const CanvasWire& wire : item->getWires()) {
            if (!wire.bounds.intersects(exposed) || isLink(wire, m_scene->getHiddenWire())
                || !passesThrough(wire, exposed))
                continue;
            if (isLink(wire, m_scene->getMarkedWire())) {
                painter->setPen(QPen(style.selection, markWidth));
                painter->drawPath(wirePath(wire.from, wire.to));
            }
            const bool isStrong = isSelected || selection->contains(wire.source->getBrick());
            paintWire(painter, wire, isStrong ? strongWidth : plainWidth, pixelsPerUnit);
        }
    }
}

/// Paints a wire as a bundle of hairlines side by side, which is an order of magnitude faster than
/// a thick pen and looks the same.
void WireLayer::paintWire(
    QPainter* painter, const CanvasWire& wire, qreal width, qreal pixelsPerUnit) const
{
    const qreal pixels = width * pixelsPerUnit;
    const int lines = qBound(1, qCeil(pixels), mostHairlines);
    const qreal step = lines > 1 ? (pixels - 1) / (lines - 1) / pixelsPerUnit : 0;
    const QPointF way = wire.to - wire.from;
    const QPointF side = qAbs(way.x()) >= qAbs(way.y()) ? QPointF(0, step) : QPointF(step, 0);
    const QPointF first = side * (lines - 1) / 2;
    painter->setPen(QPen(colorOf(wire), 0));
    QPainterPath path = wirePath(wire.from - first, wire.to - first);
    for (int i = 0; i < lines; ++i) {
        painter->drawPath(path);
        path.translate(side);
    }
}

/// Few straight pieces each: at this size nobody sees the difference.
void WireLayer::paintFar(QPainter* painter, const QRectF& exposed) const
{
    painter->setRenderHint(QPainter::Antialiasing, true);
    const BrickSelection* selection = m_scene->getSelection();
    const QColor strong = m_scene->getStyle().selection;
    QPointF points[farPieces + 1];
    for (const BrickItem* item : m_scene->getItems()) {
        const bool isSelected = selection->contains(item->getBrick());
        for (const CanvasWire& wire : item->getWires()) {
            if (!wire.bounds.intersects(exposed) || isLink(wire, m_scene->getHiddenWire()))
                continue;
            for (int i = 0; i <= farPieces; ++i)
                points[i] = wirePoint(wire.from, wire.to, qreal(i) / farPieces);
            const bool isStrong = isSelected || selection->contains(wire.source->getBrick());
            painter->setPen(QPen(isStrong ? strong : colorOf(wire), 0));
            painter->drawPolyline(points, farPieces + 1);
        }
    }
}
