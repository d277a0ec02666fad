// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dznetworklayout.h"

#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzsettings.h"
#include "dzshaderbrick.h"
#include "idzbrickuser.h"
#include "layeredlayout.h"

#include <QHash>
#include <QRectF>
#include <cmath>

namespace DzNetworkLayout {

#define DZ_SETTINGS_KEY(function, text)                                                            \
    const QString& function()                                                                      \
    {                                                                                              \
        static const QString key = QStringLiteral(text);                                           \
        return key;                                                                                \
    }

DZ_SETTINGS_KEY(xKey, "PosX")
DZ_SETTINGS_KEY(yKey, "PosY")
DZ_SETTINGS_KEY(widthKey, "Width")
DZ_SETTINGS_KEY(hideParamsKey, "HideParams")
DZ_SETTINGS_KEY(autoArrangeKey, "AutoArrange")

#undef DZ_SETTINGS_KEY

namespace {

/// Room between the bricks that had their places and those that get one.
const qreal gapBelowPlaced = 300;

/// Files may hold any number, and a canvas that reaches too far cannot be drawn.
qreal nearPlace(double stored)
{
    return std::isfinite(stored) ? qBound(-farthestPlace, qreal(stored), farthestPlace) : 0;
}

/// Height of an output's row below the brick's top; in most bricks it is the first.
qreal outputOffset(const QVector<Row>& rows, const DzBrickParam* output)
{
    int row = 0;
    while (row < rows.size() && rows.at(row).param != output)
        ++row;
    return rowCentre(row < rows.size() ? row : -1);
}

} // namespace

bool hasPosition(const DzShaderBrick* brick)
{
    const DzSettings* settings = brick->getBrickSettings();
    return settings->hasKey(xKey()) && settings->hasKey(yKey());
}

QPointF position(const DzShaderBrick* brick)
{
    const DzSettings* settings = brick->getBrickSettings();
    return QPointF(
        nearPlace(settings->getFloatValue(xKey())), nearPlace(settings->getFloatValue(yKey())));
}

void setPosition(DzShaderBrick* brick, const QPointF& position)
{
    DzSettings* settings = brick->getBrickSettings();
    settings->setFloatValue(xKey(), nearPlace(position.x()));
    settings->setFloatValue(yKey(), nearPlace(position.y()));
}

qreal width(const DzShaderBrick* brick)
{
    const double stored = brick->getBrickSettings()->getFloatValue(widthKey(), defaultWidth);
    return stored > 0 && std::isfinite(stored) ? qBound(minimumWidth, qreal(stored), maximumWidth)
                                               : defaultWidth;
}

bool hidesParams(const DzShaderBrick* brick)
{
    return brick->getBrickSettings()->getBoolValue(hideParamsKey());
}

QVector<Row> rows(const DzShaderBrick* brick)
{
    const bool hides = hidesParams(brick);
    const int count = brick->getNumParameters();
    QVector<Row> shown;
    shown.reserve(count + brick->getNumProperties());
    const auto addParam = [&](Row::Kind kind, DzBrickParam* param) {
        // An output stays: a brick that hides its parameters can still be linked.
        if (!hides || kind == Row::Output || param->getNumConnections() > 0)
            shown.append(Row { kind, param, nullptr });
    };
    for (int i = 0; i < count; ++i)
        if (brick->getParameter(i)->isOutput())
            addParam(Row::Output, brick->getParameter(i));
    for (int i = 0; !hides && i < brick->getNumProperties(); ++i)
        if (!brick->getProperty(i)->isHidden())
            shown.append(Row { Row::Setting, nullptr, brick->getProperty(i) });
    for (int i = 0; i < count; ++i) {
        DzBrickParam* param = brick->getParameter(i);
        if (!param->isOutput())
            addParam(param->isInput() ? Row::Input : Row::Setting, param);
    }
    return shown;
}

QSizeF size(const DzShaderBrick* brick, int rowCount)
{
    const qreal margin = rowCount > 0 ? bottomMargin : 0;
    return QSizeF(width(brick), titleHeight + rowCount * rowHeight + margin);
}

QSizeF size(const DzShaderBrick* brick)
{
    return size(brick, rows(brick).size());
}

qreal rowCentre(int row)
{
    return row < 0 ? titleHeight / 2 : titleHeight + (row + 0.5) * rowHeight;
}

QPointF pinOffset(const DzShaderBrick* brick, const DzBrickParam* param)
{
    const QVector<Row> shown = rows(brick);
    int row = shown.size() - 1;
    while (row >= 0 && shown.at(row).param != param)
        --row;
    return QPointF(param->isOutput() ? width(brick) : 0, rowCentre(row));
}

QVector<Place> arranged(const QVector<DzShaderBrick*>& bricks)
{
    QHash<const DzShaderBrick*, int> indexOf;
    QVector<QSizeF> sizes;
    QVector<QVector<Row>> rowsOf;
    for (const DzShaderBrick* brick : bricks) {
        indexOf.insert(brick, sizes.size());
        rowsOf.append(rows(brick));
        sizes.append(size(brick, rowsOf.last().size()));
    }
    QVector<LayeredLayout::Edge> edges;
    for (int to = 0; to < bricks.size(); ++to) {
        const QVector<Row>& shown = rowsOf.at(to);
        for (int row = 0; row < shown.size(); ++row) {
            const DzBrickParam* input = shown.at(row).param;
            if (!input || input->isOutput())
                continue;
            for (int k = 0; k < input->getNumConnections(); ++k) {
                const DzBrickParam* output = input->getConnection(k);
                const int from = indexOf.value(output->getTopBrickOwner(), -1);
                if (from >= 0)
                    edges.append(LayeredLayout::Edge {
                        from, to, outputOffset(rowsOf.at(from), output), rowCentre(row) });
            }
        }
    }
    const QVector<QPointF> corners = LayeredLayout().arrange(sizes, edges);
    QVector<Place> places;
    places.reserve(bricks.size());
    for (int i = 0; i < bricks.size(); ++i)
        places.append(Place { bricks.at(i), corners.at(i) });
    return places;
}

QVector<DzShaderBrick*> arrangeUnplaced(IDzBrickUser* user)
{
    QVector<DzShaderBrick*> unplaced;
    QRectF taken;
    QList<uint> ids;
    user->getBrickIDs(ids);
    for (const uint id : qAsConst(ids)) {
        DzShaderBrick* brick = user->getBrick(id);
        DzSettings* settings = brick->getBrickSettings();
        const bool asks = settings->getBoolValue(autoArrangeKey());
        settings->removeValue(autoArrangeKey());
        if (asks || !hasPosition(brick))
            unplaced.append(brick);
        else
            taken |= QRectF(position(brick), size(brick));
    }
    // Whole numbers: files stay short and wires straight.
    const QPointF start
        = taken.isNull() ? QPointF() : taken.bottomLeft() + QPointF(0, gapBelowPlaced);
    const QVector<Place> places = arranged(unplaced);
    for (const Place& place : places)
        setPosition(place.brick, QPointF((place.position + start).toPoint()));
    return unplaced;
}

} // namespace DzNetworkLayout
