// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dznumericproperty.h"

/// What properties of whole and of single-precision numbers have in common: value, default and
/// limits. For DzIntProperty and DzFloatProperty, which show it to the meta-object system.
template <typename Number>
class DzNumberProperty : public DzNumericProperty
{
public:
    DzNumberProperty(
        const QString& name, bool canAnimate, bool isUserProperty, Number defaultValue);
    ~DzNumberProperty() override;

    double getDoubleValue() const override { return static_cast<double>(m_value); }
    double getDoubleDefaultValue() const override { return static_cast<double>(m_default); }
    bool currentValueIsDefaultValue() const override;
    void resetToDefault() override { changeValue(m_default); }
    void writeValue(SettingsTree* settings) const override;
    bool isDescribedLike(const DzProperty* other) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

protected:
    // DzNumericProperty
    void assignAll(const DzProperty* model) override;
    void changeLimits(const std::function<void()>& change) override;
    void applyClamping() override;
    void getValueAttributes(DzPropertySettings* settings) const override;
    void copyValueFrom(const DzNumericProperty* other) override;

    /// The value that is stored when `value` is asked for.
    virtual Number admissible(Number value) const;
    /// Writes what a derived class has between the limits and the value.
    virtual void writeStep(SettingsTree* settings) const;
    void changeValue(Number value);
    void changeDefault(Number value);
    void changeMinMax(Number min, Number max);

    Number value() const { return m_value; }
    Number defaultValue() const { return m_default; }
    Number minimum() const { return m_min; }
    Number maximum() const { return m_max; }

private:
    /// All that setting one of these numbers may bring along.
    struct State {
        Number value;
        Number defaultValue;
        Number min;
        Number max;
        bool isClamped;
    };

    State state() const;
    static void restore(DzProperty* property, const State& state);
    void assignValue(Number value);
    void assignMinMax(Number min, Number max);

    Number m_value;
    Number m_default;
    Number m_min = -10000;
    Number m_max = 10000;
};

extern template class DzNumberProperty<int>;
extern template class DzNumberProperty<float>;
