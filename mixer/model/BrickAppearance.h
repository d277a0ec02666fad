// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dznetworklayout.h"

#include <QRectF>
#include <QString>

class DzShaderBrick;

/// How a brick looks on the canvas: where it is and how large, as the host's layout has it, and the
/// texts that stand in its rows.
namespace BrickAppearance {

using DzNetworkLayout::bottomMargin;
using DzNetworkLayout::defaultWidth;
using DzNetworkLayout::farthestPlace;
using DzNetworkLayout::maximumWidth;
using DzNetworkLayout::minimumWidth;
using DzNetworkLayout::rowHeight;
using DzNetworkLayout::titleHeight;

using DzNetworkLayout::autoArrangeKey;
using DzNetworkLayout::hideParamsKey;
using DzNetworkLayout::widthKey;
using DzNetworkLayout::xKey;
using DzNetworkLayout::yKey;

using DzNetworkLayout::hasPosition;
using DzNetworkLayout::hidesParams;
using DzNetworkLayout::pinOffset;
using DzNetworkLayout::position;
using DzNetworkLayout::Row;
using DzNetworkLayout::rowCentre;
using DzNetworkLayout::rows;
using DzNetworkLayout::setPosition;
using DzNetworkLayout::size;
using DzNetworkLayout::width;

// More keys of the brick settings.
const QString& titleKey();
/// The frame that the brick stands in, with the two keys below in it.
const QString& frameKey();
const QString& frameNumberKey();
const QString& frameTitleKey();

/// Title and number, such as "Matte (2)".
QString titleText(const DzShaderBrick* brick);
/// Number of the frame that the brick stands in, 0 for none.
int frameNumber(const DzShaderBrick* brick);
QString frameTitle(const DzShaderBrick* brick);

QRectF box(const DzShaderBrick* brick);
/// The box around all of them; null without bricks.
QRectF box(const QVector<DzShaderBrick*>& bricks);

QString rowLabel(const Row& row);
/// The value as one line, or the name of the image that stands for it; empty when there is none.
QString rowValue(const Row& row);

} // namespace BrickAppearance
