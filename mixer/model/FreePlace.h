// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <functional>

class DzShaderBrick;
class NetworkEdit;

/// Where a new brick of this size lies on no other: as near to the middle of `view` as can be, and
/// below everything when there is no room in view.
QPointF findFreePlace(const NetworkEdit& edit, const QRectF& view, const QSizeF& size);

typedef std::function<bool(const QPointF& place)> PlaceTest;
/// The place nearest to `wanted` where a brick of this size lies on none other than `moved`, which
/// may be null, and of which `isFine` holds if it is given; `wanted` itself when there is none
/// close by.
QPointF findFreePlaceNear(const NetworkEdit& edit, const QPointF& wanted, const QSizeF& size,
    const DzShaderBrick* moved = nullptr, const PlaceTest& isFine = nullptr);
