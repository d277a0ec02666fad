// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointF>
#include <QSizeF>
#include <QString>
#include <QVector>

class DzBrickParam;
class DzProperty;
class DzSettings;
class DzShaderBrick;

/// How a brick looks on the canvas: what stands in its rows, how large it is and where it is.
/// Title, place and size are kept in the brick's settings under the host's keys. Lengths are
/// in units of the canvas, which are pixels at a zoom of one.
namespace BrickAppearance {

const qreal titleHeight = 26;
const qreal rowHeight = 21;
const qreal bottomMargin = 6;
const qreal defaultWidth = 210;
const qreal minimumWidth = 120;
const qreal maximumWidth = 1200;
/// Places beyond this, which only damaged files have, are taken for this.
const qreal farthestPlace = 1e6;

// Keys of the brick settings.
const QString& titleKey();
const QString& xKey();
const QString& yKey();
const QString& widthKey();
const QString& hideParamsKey();
const QString& autoArrangeKey();
/// The frame that the brick stands in, with the two keys below in it.
const QString& frameKey();
const QString& frameNumberKey();
const QString& frameTitleKey();

/// One row: a parameter, or a property that the brick has beside its parameters.
struct Row {
    enum Kind { Output, Input, Setting };

    Kind kind;
    DzBrickParam* param;  ///< null for a property of the brick itself
    DzProperty* property; ///< null for a parameter
};

/// Title and number, such as "Matte (2)".
QString titleText(const DzShaderBrick* brick);
/// False for a brick that nobody has placed yet.
bool hasPosition(const DzShaderBrick* brick);
QPointF position(const DzShaderBrick* brick);
/// Stores the place, without undo.
void setPosition(DzShaderBrick* brick, const QPointF& position);
qreal width(const DzShaderBrick* brick);
/// True when rows without link are not shown.
bool hidesParams(const DzShaderBrick* brick);
/// Number of the frame that the brick stands in, 0 for none.
int frameNumber(const DzShaderBrick* brick);
QString frameTitle(const DzShaderBrick* brick);

/// The rows that are shown, from above: outputs, then inputs and settings in the brick's order.
QVector<Row> rows(const DzShaderBrick* brick);
QSizeF size(const DzShaderBrick* brick, int rowCount);
QSizeF size(const DzShaderBrick* brick);
/// Height of the middle of a row below the brick's top; of the title for -1.
qreal rowCentre(int row);
/// Where a parameter's pin is, seen from the brick's place; the title's side when it is not shown.
QPointF pinOffset(const DzShaderBrick* brick, const DzBrickParam* param);

QString rowLabel(const Row& row);
/// The value as one line, or the name of the image that stands for it; empty when there is none.
QString rowValue(const Row& row);

} // namespace BrickAppearance
