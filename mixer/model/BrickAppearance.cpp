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

namespace BrickAppearance {

#define VIREO_SETTINGS_KEY(function, text)                                                         \
    const QString& function()                                                                      \
    {                                                                                              \
        static const QString key = QStringLiteral(text);                                           \
        return key;                                                                                \
    }

VIREO_SETTINGS_KEY(titleKey, "BrickTitle")
VIREO_SETTINGS_KEY(frameKey, "Frame")
VIREO_SETTINGS_KEY(frameNumberKey, "Number")
VIREO_SETTINGS_KEY(frameTitleKey, "Title")

#undef VIREO_SETTINGS_KEY

namespace {

/// Longer values are cut: no canvas is wide enough for them, and texts may be megabytes.
const int longestValue = 200;

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

QRectF box(const DzShaderBrick* brick)
{
    return QRectF(position(brick), size(brick));
}

QRectF box(const QVector<DzShaderBrick*>& bricks)
{
    QRectF all;
    for (const DzShaderBrick* brick : bricks)
        all |= box(brick);
    return all;
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
