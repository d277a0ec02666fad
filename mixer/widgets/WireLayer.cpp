// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WireLayer.h"

#include "BrickSelection.h"
#include "NetworkScene.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QMap>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace {

/// From this zoom on wires are drawn as curves.
const qreal curveDetail = 0.3;
const int crossingSteps = 24;
const int dimmedAlpha = 60;

bool isLink(const CanvasWire& wire, const BrickLink& link)
{
    return wire.output == link.output && wire.input == link.input;
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
    const QPainterPath curve = wirePath(wire.from, wire.to);
    QPointF last = wire.from;
    for (int step = 1; step <= crossingSteps; ++step) {
        const QPointF next = curve.pointAtPercent(qreal(step) / crossingSteps);
        for (int i = 1; i < path.size(); ++i)
            if (segmentsCross(last, next, path.at(i - 1), path.at(i)))
                return true;
        last = next;
    }
    return false;
}

void WireLayer::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    const qreal detail = option->levelOfDetailFromTransform(painter->worldTransform());
    if (detail < curveDetail)
        paintFar(painter, option->exposedRect);
    else
        paintNear(painter, option->exposedRect);
}

QColor WireLayer::colorOf(const CanvasWire& wire) const
{
    QColor color = wire.color;
    if (m_scene->getFit(wire.input) != NoProbe)
        color.setAlpha(dimmedAlpha);
    return color;
}

void WireLayer::paintNear(QPainter* painter, const QRectF& exposed) const
{
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setBrush(Qt::NoBrush);
    const BrickSelection* selection = m_scene->getSelection();
    const CanvasStyle& style = m_scene->getStyle();
    for (const BrickItem* item : m_scene->getItems()) {
        const bool isSelected = selection->contains(item->getBrick());
        for (const CanvasWire& wire : item->getWires()) {
            if (!wire.bounds.intersects(exposed) || isLink(wire, m_scene->getHiddenWire()))
                continue;
            const QPainterPath path = wirePath(wire.from, wire.to);
            const bool isStrong = isSelected || selection->contains(wire.source->getBrick());
            if (isLink(wire, m_scene->getMarkedWire())) {
                painter->setPen(QPen(style.selection, 7));
                painter->drawPath(path);
            }
            painter->setPen(QPen(colorOf(wire), isStrong ? 3.2 : 2));
            painter->drawPath(path);
        }
    }
}

/// Straight lines, gathered by colour: at this size nobody sees the difference.
void WireLayer::paintFar(QPainter* painter, const QRectF& exposed) const
{
    painter->setRenderHint(QPainter::Antialiasing, false);
    const BrickSelection* selection = m_scene->getSelection();
    QMap<QRgb, QVector<QLineF>> byColor;
    QVector<QLineF> strong;
    for (const BrickItem* item : m_scene->getItems()) {
        const bool isSelected = selection->contains(item->getBrick());
        for (const CanvasWire& wire : item->getWires()) {
            if (!wire.bounds.intersects(exposed) || isLink(wire, m_scene->getHiddenWire()))
                continue;
            const QLineF line(wire.from, wire.to);
            byColor[colorOf(wire).rgba()].append(line);
            if (isSelected || selection->contains(wire.source->getBrick()))
                strong.append(line);
        }
    }
    for (auto lines = byColor.constBegin(); lines != byColor.constEnd(); ++lines) {
        painter->setPen(QPen(QColor::fromRgba(lines.key()), 0));
        painter->drawLines(lines.value());
    }
    painter->setPen(QPen(m_scene->getStyle().selection, 0));
    painter->drawLines(strong);
}
