// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointF>
#include <QSizeF>
#include <QVector>

/// Arranges boxes in layers from left to right, so that what feeds a box stands left of it.
///
/// Boxes that are joined, directly or not, make a group; groups stand one below the other.
/// The work is nearly linear in boxes and edges. Loops are no error: an edge that closes one is
/// left out.
class LayeredLayout
{
public:
    struct Edge {
        int from;         ///< index of the box that feeds
        int to;           ///< index of the box that is fed
        qreal fromOffset; ///< where the wire leaves, below the box's top
        qreal toOffset;   ///< where it arrives, below the box's top
    };

    qreal columnGap = 90;
    qreal rowGap = 24;
    qreal groupGap = 60;

    /// Top left corners of the boxes. The arrangement starts at the origin.
    QVector<QPointF> arrange(const QVector<QSizeF>& sizes, const QVector<Edge>& edges) const;
};
