// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfloatproperty.h"

#include "settingsjson.h"
#include "settingstree.h"

#include <cmath>

namespace {

const QString& sensitivityKey()
{
    static const QString key = QStringLiteral("Sensitivity");
    return key;
}

} // namespace

DzFloatProperty::DzFloatProperty(
    const QString& name, bool canAnimate, bool isUserProperty, float defaultValue)
    : DzNumberProperty(name, canAnimate, isUserProperty, defaultValue)
{
}

void DzFloatProperty::setSensitivity(float sensitivity)
{
    changeDescription("sensitivity", [=] { m_sensitivity = sensitivity; });
}

QString DzFloatProperty::getValueText() const
{
    return QString::fromLatin1(shortestNumberText(static_cast<double>(getValue())));
}

bool DzFloatProperty::setValueText(const QString& text, QString* error)
{
    bool ok = false;
    const float value = text.trimmed().toFloat(&ok);
    if (!ok) {
        *error = tr("\"%1\" is not a number").arg(text);
        return false;
    }
    if (isLocked()) {
        *error = tr("it is locked");
        return false;
    }
    setValue(value);
    return true;
}

DzProperty* DzFloatProperty::createSimilar() const
{
    return new DzFloatProperty(getName(), canAnimate(), isUserProperty());
}

void DzFloatProperty::assignAll(const DzProperty* model)
{
    DzNumberProperty::assignAll(model);
    m_sensitivity = static_cast<const DzFloatProperty*>(model)->m_sensitivity;
}

void DzFloatProperty::writeStep(SettingsTree* settings) const
{
    settings->setFloatValue(sensitivityKey(), static_cast<double>(m_sensitivity));
}

bool DzFloatProperty::isDescribedLike(const DzProperty* other) const
{
    return m_sensitivity == static_cast<const DzFloatProperty*>(other)->m_sensitivity
        && DzNumberProperty::isDescribedLike(other);
}

bool DzFloatProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    if (key != sensitivityKey())
        return DzNumberProperty::readAttribute(settings, key);
    const DzSettings::ValueType type = settings.getValueType(settings.getSettingIndex(key));
    if (type != DzSettings::FloatValue && type != DzSettings::IntValue)
        return false;
    const double exact = settings.getFloatValue(key);
    const float number = static_cast<float>(exact);
    if (std::isinf(number) && !std::isinf(exact))
        return false;
    m_sensitivity = number;
    return true;
}
