// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickInputs.h"

#include "LinkTypes.h"
#include "PropertyDefaults.h"
#include "VireoBrickBase.h"
#include "dzboolproperty.h"
#include "dzbrickparam.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzvec3param.h"

#include <memory>

namespace {

QString kindOf(const BrickInput& input)
{
    if (qobject_cast<const DzVec3Param*>(input.param))
        return QStringLiteral("vector");
    if (input.properties.isEmpty())
        return input.param->getType() == MaterialLink ? QStringLiteral("material")
                                                      : QStringLiteral("volume");
    const DzProperty* property = input.properties.first();
    // Items, switches and colours are whole numbers too: they come before those.
    if (qobject_cast<const DzFloatProperty*>(property))
        return QStringLiteral("float");
    if (qobject_cast<const DzColorProperty*>(property))
        return QStringLiteral("color");
    if (qobject_cast<const DzEnumProperty*>(property))
        return QStringLiteral("enum");
    if (qobject_cast<const DzBoolProperty*>(property))
        return QStringLiteral("bool");
    if (qobject_cast<const DzIntProperty*>(property))
        return QStringLiteral("int");
    if (qobject_cast<const DzImageProperty*>(property))
        return QStringLiteral("image");
    if (qobject_cast<const DzFileProperty*>(property))
        return QStringLiteral("file");
    return QStringLiteral("string");
}

/// The recorded default as a person would type it, asked of a copy that is reset to it.
QString defaultText(const DzProperty* property)
{
    const std::unique_ptr<DzProperty> copy(property->duplicate());
    copy->lock(false);
    copy->resetToDefault();
    return copy->getValueText();
}

template <typename Text>
QString joined(const BrickInput& input, const Text& text)
{
    QStringList parts;
    for (const DzProperty* property : input.properties)
        parts.append(text(property));
    return parts.join(QLatin1Char(' '));
}

QString limitsOf(const BrickInput& input)
{
    if (input.properties.size() != 1)
        return QString();
    const DzProperty* property = input.properties.first();
    if (auto* items = qobject_cast<const DzEnumProperty*>(property)) {
        QStringList names;
        for (int i = 0; i < items->getNumItems(); ++i)
            names.append(items->getItem(i));
        return names.join(QStringLiteral(", "));
    }
    if (qobject_cast<const DzColorProperty*>(property)
        || qobject_cast<const DzBoolProperty*>(property))
        return QString();
    QString limits;
    if (auto* number = qobject_cast<const DzFloatProperty*>(property)) {
        if (number->getMin() <= -PropertyDefaults::floatLimit
            && number->getMax() >= PropertyDefaults::floatLimit)
            return QString();
        limits = QStringLiteral("%1 to %2")
                     .arg(static_cast<double>(number->getMin()))
                     .arg(static_cast<double>(number->getMax()));
    } else if (auto* whole = qobject_cast<const DzIntProperty*>(property)) {
        limits = QStringLiteral("%1 to %2").arg(whole->getMin()).arg(whole->getMax());
    } else {
        return QString();
    }
    // Limits that do not clamp only say how far a slider goes.
    const bool isClamped = static_cast<const DzNumericProperty*>(property)->isClamped();
    return isClamped ? limits : limits + QStringLiteral(" (slider only)");
}

QString linkOf(const BrickInput& input)
{
    return input.param && input.param->isInput() ? input.param->getTypeString()
                                                 : QStringLiteral("-");
}

} // namespace

QVector<BrickInput> brickInputs(const VireoBrickBase* brick)
{
    QVector<BrickInput> inputs;
    for (DzProperty* property : brick->getPropertyList())
        inputs.append(
            BrickInput { property->getName(), property->getLabel(), nullptr, { property } });
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        if (param->isOutput())
            continue;
        BrickInput input { param->getName(), param->getLabel(), param, {} };
        for (int k = 0; k < param->getNumProperties(); ++k)
            input.properties.append(param->getProperty(k));
        inputs.append(input);
    }
    return inputs;
}

QVector<QStringList> inputTable(const VireoBrickBase* brick)
{
    QVector<QStringList> rows;
    rows.append({ QStringLiteral("name"), QStringLiteral("label"), QStringLiteral("kind"),
        QStringLiteral("value"), QStringLiteral("default"), QStringLiteral("takes"),
        QStringLiteral("limits") });
    for (const BrickInput& input : brickInputs(brick))
        rows.append({ input.name, input.label, kindOf(input),
            joined(input, [](const DzProperty* p) { return p->getValueText(); }),
            joined(input, [](const DzProperty* p) { return defaultText(p); }), linkOf(input),
            limitsOf(input) });
    return rows;
}
