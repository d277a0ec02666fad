// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickAppearance.h"

#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzsettings.h"
#include "dzshaderbrick.h"

#include <QFileInfo>
#include <QStringList>
#include <cmath>

namespace BrickAppearance {

#define VIREO_SETTINGS_KEY(function, text)                                                         \
    const QString& function()                                                                      \
    {                                                                                              \
        static const QString key = QStringLiteral(text);                                           \
        return key;                                                                                \
    }

VIREO_SETTINGS_KEY(titleKey, "BrickTitle")
VIREO_SETTINGS_KEY(xKey, "PosX")
VIREO_SETTINGS_KEY(yKey, "PosY")
VIREO_SETTINGS_KEY(widthKey, "Width")
VIREO_SETTINGS_KEY(hideParamsKey, "HideParams")
VIREO_SETTINGS_KEY(autoArrangeKey, "AutoArrange")
VIREO_SETTINGS_KEY(frameKey, "Frame")
VIREO_SETTINGS_KEY(frameNumberKey, "Number")
VIREO_SETTINGS_KEY(frameTitleKey, "Title")

#undef VIREO_SETTINGS_KEY

namespace {

/// Longer values are cut: no canvas is wide enough for them, and texts may be megabytes.
const int longestValue = 200;

qreal nearPlace(double stored)
{
    return std::isfinite(stored) ? qBound(-farthestPlace, qreal(stored), farthestPlace) : 0;
}

const DzSettings* frameOf(const DzShaderBrick* brick)
{
    return brick->getBrickSettings()->getSettingsValue(frameKey());
}

QString oneLine(QString text)
{
    text.truncate(longestValue);
    for (QChar& letter : text)
        if (letter < QLatin1Char(' '))
            letter = QLatin1Char(' ');
    return text;
}

/// The folder of an image would take the room of its name.
QString valueOrImage(const DzProperty* property)
{
    const QString image = QFileInfo(mapFileOf(property)).fileName();
    return image.isEmpty() ? property->getValueText() : image;
}

} // namespace

QString titleText(const DzShaderBrick* brick)
{
    return QStringLiteral("%1 (%2)").arg(
        oneLine(brick->getBrickTitle()), QString::number(brick->getBrickID()));
}

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

int frameNumber(const DzShaderBrick* brick)
{
    const DzSettings* frame = frameOf(brick);
    return frame ? qMax(0, frame->getIntValue(frameNumberKey())) : 0;
}

QString frameTitle(const DzShaderBrick* brick)
{
    const DzSettings* frame = frameOf(brick);
    return frame ? oneLine(frame->getStringValue(frameTitleKey())) : QString();
}

QVector<Row> rows(const DzShaderBrick* brick)
{
    const bool hides = hidesParams(brick);
    const int count = brick->getNumParameters();
    QVector<Row> shown;
    shown.reserve(count + brick->getNumProperties());
    const auto addParam = [&](Row::Kind kind, DzBrickParam* param) {
        if (!hides || param->getNumConnections() > 0)
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

QString rowLabel(const Row& row)
{
    if (!row.param)
        return oneLine(row.property->getLabel());
    const QString label = row.param->getLabel();
    return oneLine(label.isEmpty() ? row.param->getName() : label);
}

QString rowValue(const Row& row)
{
    if (!row.param)
        return oneLine(valueOrImage(row.property));
    if (row.kind == Row::Output)
        return QString();
    QStringList parts;
    for (int i = 0; i < row.param->getNumProperties(); ++i)
        if (const DzProperty* property = row.param->getProperty(i))
            parts.append(valueOrImage(property).left(longestValue));
    return oneLine(parts.join(QLatin1String(", ")));
}

} // namespace BrickAppearance
