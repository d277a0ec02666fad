// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickAlignment.h"

#include "BrickAppearance.h"
#include "NetworkEdit.h"
#include "dzundostack.h"

#include <QCoreApplication>
#include <QRectF>
#include <algorithm>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("BrickAlignment", text);
}

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
    // Negative where they overlap: then by the same amount everywhere.
    const qreal gap = boxes.size() > 1 ? (end - start - used) / (boxes.size() - 1) : 0;
    QVector<qreal> places(boxes.size());
    qreal next = start;
    for (const int index : qAsConst(order)) {
        places[index] = next;
        next += extent(boxes.at(index), axis) + gap;
    }
    return places;
}

QVector<qreal> alignedPlaces(const QVector<QRectF>& boxes, Alignment alignment)
{
    QRectF all;
    for (const QRectF& box : boxes)
        all = all.united(box);
    QVector<qreal> places;
    for (const QRectF& box : boxes) {
        switch (alignment) {
        case AlignLeft:
            places.append(all.left());
            break;
        case AlignRight:
            places.append(all.right() - box.width());
            break;
        case AlignTop:
            places.append(all.top());
            break;
        case AlignBottom:
            places.append(all.bottom() - box.height());
            break;
        case AlignHorizontalCentres:
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

void alignBricks(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, Alignment alignment)
{
    if (bricks.size() < 2)
        return;
    QVector<QRectF> boxes;
    for (const DzShaderBrick* brick : bricks)
        boxes.append(BrickAppearance::box(brick));
    const bool isAlongX = alignment == AlignLeft || alignment == AlignRight
        || alignment == AlignHorizontalCentres || alignment == DistributeHorizontally;
    const bool isDistributed
        = alignment == DistributeHorizontally || alignment == DistributeVertically;
    const QVector<qreal> places
        = isDistributed ? distributed(boxes, isAlongX ? X : Y) : alignedPlaces(boxes, alignment);
    QVector<NetworkEdit::Move> moves;
    for (int i = 0; i < bricks.size(); ++i) {
        QPointF place = boxes.at(i).topLeft();
        if (isAlongX)
            place.setX(places.at(i));
        else
            place.setY(places.at(i));
        moves.append(NetworkEdit::Move { bricks.at(i), place });
    }
    DzUndoStackHold hold;
    edit->moveBricks(moves);
    hold.accept(isDistributed ? tr("Distribute Bricks") : tr("Align Bricks"));
}
