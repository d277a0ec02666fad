// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FreePlace.h"

#include "BrickAppearance.h"
#include "NetworkEdit.h"

#include <QVector>

#include <algorithm>

namespace {

/// Room that stays free around a brick, for its wires.
const qreal margin = 18;
/// Places that are tried in each direction.
const int mostSteps = 24;
/// How far a brick is taken from where it was put.
const qreal nearby = 400;

QVector<QRectF> takenPlaces(const NetworkEdit& edit, const DzShaderBrick* except)
{
    QVector<QRectF> taken;
    for (const DzShaderBrick* brick : edit.getBricks())
        if (brick != except && BrickAppearance::hasPosition(brick))
            taken.append(BrickAppearance::box(brick).adjusted(-margin, -margin, margin, margin));
    return taken;
}

/// Places in view where the brick fits wholly, the nearest to the middle first.
QVector<QPointF> placesIn(const QRectF& view, const QSizeF& size)
{
    const QPointF middle = view.center() - QPointF(size.width(), size.height()) / 2;
    const qreal stepX = qMax<qreal>(margin, view.width() / (2 * mostSteps));
    const qreal stepY = qMax<qreal>(margin, view.height() / (2 * mostSteps));
    QVector<QPointF> places;
    for (int x = -mostSteps; x <= mostSteps; ++x)
        for (int y = -mostSteps; y <= mostSteps; ++y) {
            const QPointF place(middle.x() + x * stepX, middle.y() + y * stepY);
            if (view.contains(QRectF(place, size)))
                places.append(QPointF(place.toPoint()));
        }
    std::stable_sort(places.begin(), places.end(), [&](const QPointF& a, const QPointF& b) {
        const QPointF toA = a - middle;
        const QPointF toB = b - middle;
        return QPointF::dotProduct(toA, toA) < QPointF::dotProduct(toB, toB);
    });
    return places;
}

/// The nearest place to the middle of `view` that is free and fine; false when there is none.
bool findPlace(const QVector<QRectF>& taken, const QRectF& view, const QSizeF& size,
    const PlaceTest& isFine, QPointF* found)
{
    QVector<QRectF> inView;
    for (const QRectF& box : taken)
        if (box.intersects(view))
            inView.append(box);
    for (const QPointF& place : placesIn(view, size)) {
        const QRectF box(place, size);
        const bool isFree = std::none_of(inView.begin(), inView.end(),
            [&](const QRectF& other) { return other.intersects(box); });
        if (isFree && (!isFine || isFine(place))) {
            *found = place;
            return true;
        }
    }
    return false;
}

} // namespace

QPointF findFreePlace(const NetworkEdit& edit, const QRectF& view, const QSizeF& size)
{
    const QVector<QRectF> taken = takenPlaces(edit, nullptr);
    QPointF place;
    if (findPlace(taken, view, size, nullptr, &place))
        return place;
    QRectF all;
    for (const QRectF& box : taken)
        all |= box;
    return QPointF(QPointF(view.center().x() - size.width() / 2, all.bottom() + margin).toPoint());
}

QPointF findFreePlaceNear(const NetworkEdit& edit, const QPointF& wanted, const QSizeF& size,
    const DzShaderBrick* moved, const PlaceTest& isFine)
{
    const QRectF around = QRectF(wanted, size).adjusted(-nearby, -nearby, nearby, nearby);
    QPointF place = wanted;
    findPlace(takenPlaces(edit, moved), around, size, isFine, &place);
    return place;
}
