// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasTips.h"

#include "BrickAppearance.h"
#include "BrickHelp.h"
#include "BrickItem.h"
#include "NetworkScene.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QCoreApplication>

namespace {

struct Tips {
    Q_DECLARE_TR_FUNCTIONS(Tips)
};

QString wireTip(const BrickLink& link)
{
    return Tips::tr("%1 feeds %2 of %3 (%4)")
        .arg(BrickAppearance::titleText(link.output->getTopBrickOwner()), link.input->getLabel(),
            BrickAppearance::titleText(link.input->getTopBrickOwner()),
            link.output->getTypeString());
}

QString brickTip(const DzShaderBrick* brick)
{
    const QString title = BrickAppearance::titleText(brick);
    const QString help = BrickHelp::ofBrick(brick);
    const QString description = help.isEmpty() ? brick->getDescription() : help;
    return description.isEmpty() ? title : title + QLatin1Char('\n') + description;
}

QString rowTip(const BrickAppearance::Row& row)
{
    const QString label = BrickAppearance::rowLabel(row);
    const QString value = BrickAppearance::rowValue(row);
    const bool hasPin = row.param && row.kind != BrickAppearance::Row::Setting;
    QStringList lines { hasPin ? Tips::tr("%1: %2").arg(label, row.param->getTypeString())
                               : label };
    const QString help
        = row.param ? BrickHelp::ofInput(row.param) : BrickHelp::ofValue(row.property);
    for (const QString& line : { value, help })
        if (!line.isEmpty())
            lines.append(line);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

QString canvasTip(const CanvasHit& hit, const QPointF& place)
{
    if (hit.kind == CanvasHit::Wire)
        return wireTip(hit.link);
    if (!hit.item)
        return QString();
    if (!hit.item->getBadge().isEmpty() && hit.item->badgeBox().contains(place - hit.item->pos()))
        return hit.item->getBadge();
    if (hit.row < 0)
        return brickTip(hit.item->getBrick());
    return rowTip(hit.item->getRows().at(hit.row));
}
