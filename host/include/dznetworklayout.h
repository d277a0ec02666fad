// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointF>
#include <QSizeF>
#include <QString>
#include <QVector>

class DzBrickParam;
class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

/// Where bricks stand on a mixer's canvas and how much room they take. A brick's settings keep its
/// place and width. Lengths are in units of the canvas, which are pixels at a zoom of one.
namespace DzNetworkLayout {

const qreal titleHeight = 26;
const qreal rowHeight = 21;
const qreal bottomMargin = 6;
const qreal defaultWidth = 210;
const qreal minimumWidth = 120;
const qreal maximumWidth = 1200;
/// Places beyond this, which only damaged files have, are taken for this.
const qreal farthestPlace = 1e6;

// Keys of the brick settings.
const QString& xKey();
const QString& yKey();
const QString& widthKey();
const QString& hideParamsKey();
/// True where whoever made the brick left it to the first mixer to place it.
const QString& autoArrangeKey();

/// One row: a parameter, or a property that the brick has beside its parameters.
struct Row {
    enum Kind { Output, Input, Setting };

    Kind kind;
    DzBrickParam* param;  ///< null for a property of the brick itself
    DzProperty* property; ///< null for a parameter
};

/// False for a brick that nobody has placed yet.
bool hasPosition(const DzShaderBrick* brick);
/// The top left corner.
QPointF position(const DzShaderBrick* brick);
/// Stores the place, without undo.
void setPosition(DzShaderBrick* brick, const QPointF& position);
qreal width(const DzShaderBrick* brick);
/// True when inputs and settings without link are not shown.
bool hidesParams(const DzShaderBrick* brick);

/// The rows that are shown, from above: outputs, then inputs and settings in the brick's order.
QVector<Row> rows(const DzShaderBrick* brick);
QSizeF size(const DzShaderBrick* brick, int rowCount);
QSizeF size(const DzShaderBrick* brick);
/// Height of the middle of a row below the brick's top; of the title for -1.
qreal rowCentre(int row);
/// Where a parameter's pin is, seen from the brick's place; the title's side when it is not shown.
QPointF pinOffset(const DzShaderBrick* brick, const DzBrickParam* param);

struct Place {
    DzShaderBrick* brick;
    QPointF position;
};

/// Places for the bricks, in layers from left to right, so that what feeds a brick stands left of
/// it. They start at the origin; nothing is stored.
QVector<Place> arranged(const QVector<DzShaderBrick*>& bricks);

/// Places, without undo, the bricks whose settings ask for it and those that nobody has placed:
/// in layers, below the bricks that have their places. The bricks that were placed.
QVector<DzShaderBrick*> arrangeUnplaced(IDzBrickUser* user);

} // namespace DzNetworkLayout
