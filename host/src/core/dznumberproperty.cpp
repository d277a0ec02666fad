// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dznumberproperty.h"

#include "settingstree.h"

#include <cmath>
#include <limits>

namespace {

/// Equality as texts and files have it: a not-a-number is itself, and zeros of two signs differ.
bool sameNumber(float a, float b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

bool sameNumber(int a, int b)
{
    return a == b;
}

bool isNotANumber(float number)
{
    return std::isnan(number);
}

bool isNotANumber(int)
{
    return false;
}

void writeNumber(SettingsTree* settings, const QString& key, float number)
{
    settings->setFloatValue(key, static_cast<double>(number));
}

void writeNumber(SettingsTree* settings, const QString& key, int number)
{
    settings->setIntValue(key, number);
}

bool readNumber(const SettingsTree& settings, const QString& key, float* number)
{
    const DzSettings::ValueType type = settings.getValueType(settings.getSettingIndex(key));
    if (type != DzSettings::FloatValue && type != DzSettings::IntValue)
        return false;
    const double exact = settings.getFloatValue(key);
    // Rounded first: the shortest text of the largest number reads as a little more than it is.
    *number = static_cast<float>(exact);
    // A number that single precision cannot hold is left alone rather than bent to infinity.
    return !std::isinf(*number) || std::isinf(exact);
}

bool readNumber(const SettingsTree& settings, const QString& key, int* number)
{
    // A number that is no int reads as either fallback: it differs for the two.
    *number = settings.getIntValue(key, 0);
    return *number == settings.getIntValue(key, 1);
}

} // namespace

template <typename Number>
DzNumberProperty<Number>::DzNumberProperty(
    const QString& name, bool canAnimate, bool isUserProperty, Number defaultValue)
    : DzNumericProperty(name, canAnimate, isUserProperty)
    , m_value(defaultValue)
    , m_default(defaultValue)
{
}

template <typename Number>
DzNumberProperty<Number>::~DzNumberProperty()
{
}

template <typename Number>
Number DzNumberProperty<Number>::admissible(Number value) const
{
    if (!isClamped())
        return value;
    if (isNotANumber(value))
        return m_value;
    // The lower limit counts where a file has the two the wrong way round.
    const Number below = value > m_max ? m_max : value;
    return below < m_min ? m_min : below;
}

template <typename Number>
typename DzNumberProperty<Number>::State DzNumberProperty<Number>::state() const
{
    return State { m_value, m_default, m_min, m_max, isClamped() };
}

template <typename Number>
void DzNumberProperty<Number>::restore(DzProperty* property, const State& state)
{
    auto* number = static_cast<DzNumberProperty<Number>*>(property);
    number->restoreClamped(state.isClamped);
    if (number->m_min != state.min || number->m_max != state.max) {
        number->m_min = state.min;
        number->m_max = state.max;
        emit number->minMaxChanged();
    }
    number->m_default = state.defaultValue;
    if (!sameNumber(number->m_value, state.value))
        number->assignValue(state.value);
}

template <typename Number>
void DzNumberProperty<Number>::changeValue(Number value)
{
    if (isLocked())
        return;
    const State before = state();
    const Number wanted = admissible(value);
    // A value that cannot move in time is the default too.
    if (!canAnimate())
        m_default = wanted;
    if (sameNumber(wanted, m_value))
        return;
    const State after { wanted, m_default, m_min, m_max, before.isClamped };
    recordAround(
        "value", tr("Change %1").arg(getLabel()), [=] { assignValue(wanted); },
        [=](DzProperty* p) { restore(p, before); }, [=](DzProperty* p) { restore(p, after); });
}

template <typename Number>
void DzNumberProperty<Number>::assignValue(Number value)
{
    m_value = value;
    notifyValueChanged();
}

template <typename Number>
void DzNumberProperty<Number>::changeDefault(Number value)
{
    const Number wanted = admissible(value);
    if (!sameNumber(wanted, m_default))
        changeLimits([=] { m_default = wanted; });
}

template <typename Number>
void DzNumberProperty<Number>::changeMinMax(Number min, Number max)
{
    if (min != m_min || max != m_max)
        changeLimits([=] { assignMinMax(min, max); });
}

template <typename Number>
void DzNumberProperty<Number>::assignMinMax(Number min, Number max)
{
    m_min = min;
    m_max = max;
    applyClamping();
    emit minMaxChanged();
}

template <typename Number>
void DzNumberProperty<Number>::changeLimits(const std::function<void()>& change)
{
    const State before = state();
    // A value that follows its limits may have further consequences: see recordAround().
    const auto after = std::make_shared<State>(before);
    recordAround(
        "limits", tr("Change %1").arg(getLabel()),
        [&] {
            change();
            *after = state();
        },
        [=](DzProperty* p) { restore(p, before); }, [=](DzProperty* p) { restore(p, *after); });
}

template <typename Number>
void DzNumberProperty<Number>::applyClamping()
{
    m_default = admissible(m_default);
    const Number wanted = admissible(m_value);
    if (!sameNumber(wanted, m_value))
        assignValue(wanted);
}

template <typename Number>
bool DzNumberProperty<Number>::currentValueIsDefaultValue() const
{
    return sameNumber(m_value, m_default);
}

template <typename Number>
void DzNumberProperty<Number>::assignAll(const DzProperty* model)
{
    DzNumericProperty::assignAll(model);
    auto* source = static_cast<const DzNumberProperty<Number>*>(model);
    m_value = source->m_value;
    m_default = source->m_default;
    m_min = source->m_min;
    m_max = source->m_max;
}

template <typename Number>
void DzNumberProperty<Number>::copyValueFrom(const DzNumericProperty* other)
{
    const Number wanted = admissible(static_cast<const DzNumberProperty<Number>*>(other)->m_value);
    if (!sameNumber(wanted, m_value))
        assignValue(wanted);
}

template <typename Number>
void DzNumberProperty<Number>::writeStep(SettingsTree*) const
{
}

template <typename Number>
void DzNumberProperty<Number>::getValueAttributes(DzPropertySettings* settings) const
{
    writeNumber(settings->tree(), QStringLiteral("Min"), m_min);
    writeNumber(settings->tree(), QStringLiteral("Max"), m_max);
    writeStep(settings->tree());
    writeValue(settings->tree());
    writeNumber(settings->tree(), QStringLiteral("DefaultValue"), m_default);
}

template <typename Number>
void DzNumberProperty<Number>::writeValue(SettingsTree* settings) const
{
    writeNumber(settings, QStringLiteral("Value"), m_value);
}

template <typename Number>
bool DzNumberProperty<Number>::isDescribedLike(const DzProperty* other) const
{
    auto* number = static_cast<const DzNumberProperty<Number>*>(other);
    return sameNumber(m_default, number->m_default) && m_min == number->m_min
        && m_max == number->m_max && DzNumericProperty::isDescribedLike(other);
}

template <typename Number>
bool DzNumberProperty<Number>::readAttribute(const SettingsTree& settings, const QString& key)
{
    Number number;
    if (key == QLatin1String("Value")) {
        if (!readNumber(settings, key, &number))
            return false;
        const Number wanted = admissible(number);
        if (!sameNumber(wanted, m_value))
            assignValue(wanted);
        return true;
    }
    const bool isDefault = key == QLatin1String("DefaultValue");
    const bool isMin = key == QLatin1String("Min");
    if (!isDefault && !isMin && key != QLatin1String("Max"))
        return DzNumericProperty::readAttribute(settings, key);
    if (!readNumber(settings, key, &number))
        return false;
    if (isDefault)
        m_default = admissible(number);
    else if (number != (isMin ? m_min : m_max))
        assignMinMax(isMin ? number : m_min, isMin ? m_max : number);
    return true;
}

template class DzNumberProperty<int>;
template class DzNumberProperty<float>;
