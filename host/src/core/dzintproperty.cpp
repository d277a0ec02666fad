// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzintproperty.h"

#include "dzundostack.h"
#include "settingstree.h"

#include <cmath>
#include <limits>

DzIntProperty::DzIntProperty(
    const QString& name, bool canAnimate, bool isUserProperty, int defaultValue)
    : DzNumericProperty(name, canAnimate, isUserProperty)
    , m_value(defaultValue)
    , m_default(defaultValue)
{
}

int DzIntProperty::admissible(int value) const
{
    if (!isClamped())
        return value;
    // The lower limit counts where a file has the two the wrong way round.
    const int below = value > m_max ? m_max : value;
    return below < m_min ? m_min : below;
}

void DzIntProperty::setValue(int value)
{
    if (isLocked())
        return;
    const int wanted = admissible(value);
    const int defaultBefore = m_default;
    if (!canAnimate())
        m_default = wanted;
    if (wanted == m_value)
        return;
    const int before = m_value;
    const int defaultAfter = m_default;
    assignValue(wanted);
    const auto set = [](DzProperty* property, int newValue, int newDefault) {
        auto* number = static_cast<DzIntProperty*>(property);
        number->m_default = newDefault;
        number->assignValue(newValue);
    };
    if (isRecorded())
        record(
            "value", tr("Change %1").arg(getLabel()),
            [=](DzProperty* p) { set(p, before, defaultBefore); },
            [=](DzProperty* p) { set(p, wanted, defaultAfter); });
}

void DzIntProperty::assignValue(int value)
{
    m_value = value;
    notifyValueChanged();
}

void DzIntProperty::setDoubleValue(double value)
{
    const double rounded = std::nearbyint(value);
    if (rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max())
        setValue(static_cast<int>(rounded));
}

void DzIntProperty::setDefaultValue(int value)
{
    m_default = admissible(value);
}

void DzIntProperty::setMinMax(int min, int max)
{
    if (min == m_min && max == m_max)
        return;
    m_min = min;
    m_max = max;
    applyClamping();
    emit minMaxChanged();
}

void DzIntProperty::applyClamping()
{
    m_default = admissible(m_default);
    const int value = admissible(m_value);
    if (value != m_value)
        assignValue(value);
}

QString DzIntProperty::getValueText() const
{
    return QString::number(m_value);
}

bool DzIntProperty::setValueText(const QString& text, QString* error)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    if (!ok) {
        *error = tr("\"%1\" is not a whole number").arg(text);
        return false;
    }
    if (isLocked()) {
        *error = tr("it is locked");
        return false;
    }
    setValue(value);
    return true;
}

DzProperty* DzIntProperty::createSimilar() const
{
    return new DzIntProperty(getName(), canAnimate(), isUserProperty());
}

void DzIntProperty::assignAll(const DzProperty* model)
{
    DzNumericProperty::assignAll(model);
    auto* source = static_cast<const DzIntProperty*>(model);
    m_value = source->m_value;
    m_default = source->m_default;
    m_min = source->m_min;
    m_max = source->m_max;
}

void DzIntProperty::copyValueFrom(const DzNumericProperty* other)
{
    auto* source = static_cast<const DzIntProperty*>(other);
    const int value = admissible(source->m_value);
    if (value != m_value)
        assignValue(value);
}

void DzIntProperty::getValueAttributes(DzPropertySettings* settings) const
{
    settings->setIntValue(QStringLiteral("Min"), m_min);
    settings->setIntValue(QStringLiteral("Max"), m_max);
    writeValue(settings->tree());
    settings->setIntValue(QStringLiteral("DefaultValue"), m_default);
}

void DzIntProperty::writeValue(SettingsTree* settings) const
{
    settings->setIntValue(QStringLiteral("Value"), m_value);
}

bool DzIntProperty::isDescribedLike(const DzProperty* other) const
{
    auto* number = static_cast<const DzIntProperty*>(other);
    return m_default == number->m_default && m_min == number->m_min && m_max == number->m_max
        && DzNumericProperty::isDescribedLike(other);
}

bool DzIntProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    // A number that is no int reads as either fallback: it differs for the two.
    const int number = settings.getIntValue(key, 0);
    if (number != settings.getIntValue(key, 1))
        return DzNumericProperty::readAttribute(settings, key);
    if (key == QLatin1String("Value")) {
        const int value = admissible(number);
        if (value != m_value)
            assignValue(value);
    } else if (key == QLatin1String("DefaultValue")) {
        m_default = admissible(number);
    } else if (key == QLatin1String("Min")) {
        setMinMax(number, m_max);
    } else if (key == QLatin1String("Max")) {
        setMinMax(m_min, number);
    } else {
        return false;
    }
    return true;
}
