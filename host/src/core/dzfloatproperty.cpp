// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfloatproperty.h"

#include "dzundostack.h"
#include "settingsjson.h"
#include "settingstree.h"

#include <cmath>
#include <limits>

namespace {

/// Equality that takes a not-a-number for itself, so that setting it twice is one change.
bool sameValue(float a, float b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isNumber(const SettingsTree& settings, const QString& key)
{
    const DzSettings::ValueType type = settings.getValueType(settings.getSettingIndex(key));
    return type == DzSettings::FloatValue || type == DzSettings::IntValue;
}

} // namespace

DzFloatProperty::DzFloatProperty(
    const QString& name, bool canAnimate, bool isUserProperty, float defaultValue)
    : DzNumericProperty(name, canAnimate, isUserProperty)
    , m_value(defaultValue)
    , m_default(defaultValue)
{
}

float DzFloatProperty::admissible(float value) const
{
    if (!isClamped())
        return value;
    if (std::isnan(value))
        return m_value;
    // The lower limit counts where a file has the two the wrong way round.
    const float below = value > m_max ? m_max : value;
    return below < m_min ? m_min : below;
}

void DzFloatProperty::setValue(float value)
{
    if (isLocked())
        return;
    const float wanted = admissible(value);
    const float defaultBefore = m_default;
    if (!canAnimate())
        m_default = wanted;
    if (sameValue(wanted, m_value))
        return;
    const float before = m_value;
    const float defaultAfter = m_default;
    assignValue(wanted);
    const auto set = [](DzProperty* property, float newValue, float newDefault) {
        auto* number = static_cast<DzFloatProperty*>(property);
        number->m_default = newDefault;
        number->assignValue(newValue);
    };
    if (isRecorded())
        record(
            "value", tr("Change %1").arg(getLabel()),
            [=](DzProperty* p) { set(p, before, defaultBefore); },
            [=](DzProperty* p) { set(p, wanted, defaultAfter); });
}

void DzFloatProperty::assignValue(float value)
{
    m_value = value;
    notifyValueChanged();
}

void DzFloatProperty::setDefaultValue(float value)
{
    m_default = admissible(value);
}

void DzFloatProperty::setMinMax(float min, float max)
{
    if (min == m_min && max == m_max)
        return;
    m_min = min;
    m_max = max;
    applyClamping();
    emit minMaxChanged();
}

void DzFloatProperty::applyClamping()
{
    m_default = admissible(m_default);
    const float value = admissible(m_value);
    if (!sameValue(value, m_value))
        assignValue(value);
}

bool DzFloatProperty::currentValueIsDefaultValue() const
{
    return sameValue(m_value, m_default);
}

QString DzFloatProperty::getValueText() const
{
    return QString::fromLatin1(shortestNumberText(static_cast<double>(m_value)));
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
    DzNumericProperty::assignAll(model);
    auto* source = static_cast<const DzFloatProperty*>(model);
    m_value = source->m_value;
    m_default = source->m_default;
    m_min = source->m_min;
    m_max = source->m_max;
    m_sensitivity = source->m_sensitivity;
}

void DzFloatProperty::copyValueFrom(const DzNumericProperty* other)
{
    auto* source = static_cast<const DzFloatProperty*>(other);
    const float value = admissible(source->m_value);
    if (!sameValue(value, m_value))
        assignValue(value);
}

void DzFloatProperty::getValueAttributes(DzPropertySettings* settings) const
{
    settings->setFloatValue(QStringLiteral("Min"), static_cast<double>(m_min));
    settings->setFloatValue(QStringLiteral("Max"), static_cast<double>(m_max));
    settings->setFloatValue(QStringLiteral("Sensitivity"), static_cast<double>(m_sensitivity));
    writeValue(settings->tree());
    settings->setFloatValue(QStringLiteral("DefaultValue"), static_cast<double>(m_default));
}

void DzFloatProperty::writeValue(SettingsTree* settings) const
{
    settings->setFloatValue(QStringLiteral("Value"), static_cast<double>(m_value));
}

bool DzFloatProperty::isDescribedLike(const DzProperty* other) const
{
    auto* number = static_cast<const DzFloatProperty*>(other);
    return sameValue(m_default, number->m_default) && m_min == number->m_min
        && m_max == number->m_max && m_sensitivity == number->m_sensitivity
        && DzNumericProperty::isDescribedLike(other);
}

bool DzFloatProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    if (!isNumber(settings, key))
        return DzNumericProperty::readAttribute(settings, key);
    const double exact = settings.getFloatValue(key);
    // A number that single precision cannot hold is left alone rather than bent to infinity.
    if (std::isfinite(exact)
        && std::fabs(exact) > static_cast<double>(std::numeric_limits<float>::max()))
        return false;
    const float number = static_cast<float>(exact);
    if (key == QLatin1String("Value")) {
        const float value = admissible(number);
        if (!sameValue(value, m_value))
            assignValue(value);
    } else if (key == QLatin1String("DefaultValue")) {
        m_default = admissible(number);
    } else if (key == QLatin1String("Min")) {
        setMinMax(number, m_max);
    } else if (key == QLatin1String("Max")) {
        setMinMax(m_min, number);
    } else if (key == QLatin1String("Sensitivity")) {
        m_sensitivity = number;
    } else {
        return false;
    }
    return true;
}
