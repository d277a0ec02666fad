// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickItem.h"

#include <QGraphicsItem>
#include <QVector>

/// Paints all wires in one go, behind the bricks.
class WireLayer : public QGraphicsItem
{
public:
    explicit WireLayer(NetworkScene* scene);

    void updateWires(const QVector<CanvasWire>& wires);
    /// The wires into and out of a brick.
    void updateWiresOf(const BrickItem* item);
    /// True when a line of the user crosses the wire.
    bool isCrossed(const CanvasWire& wire, const QVector<QPointF>& path) const;

    // QGraphicsItem
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    void paintNear(QPainter* painter, const QRectF& exposed, qreal pixelsPerUnit) const;
    void paintWire(
        QPainter* painter, const CanvasWire& wire, qreal width, qreal pixelsPerUnit) const;
    void paintFar(QPainter* painter, const QRectF& exposed) const;
    QColor colorOf(const CanvasWire& wire) const;

    NetworkScene* m_scene;
};
