// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dznumericproperty.h"

/// A whole number; base of the properties that are stored as one.
class DzIntProperty : public DzNumericProperty
{
    Q_OBJECT

public:
    DzIntProperty(const QString& name, bool canAnimate, bool isUserProperty, int defaultValue = 0);

    Q_INVOKABLE int getValue() const { return m_value; }
    /// Clamps to the limits when clamping is on. Without animation it sets the default too.
    Q_INVOKABLE void setValue(int value);
    Q_INVOKABLE int getDefaultValue() const { return m_default; }
    Q_INVOKABLE void setDefaultValue(int value);
    Q_INVOKABLE int getMin() const { return m_min; }
    Q_INVOKABLE int getMax() const { return m_max; }
    Q_INVOKABLE void setMin(int min) { setMinMax(min, m_max); }
    Q_INVOKABLE void setMax(int max) { setMinMax(m_min, max); }
    Q_INVOKABLE void setMinMax(int min, int max);

    double getDoubleValue() const override { return m_value; }
    void setDoubleValue(double value) override;
    double getDoubleDefaultValue() const override { return m_default; }

    bool currentValueIsDefaultValue() const override { return m_value == m_default; }
    void resetToDefault() override { setValue(m_default); }
    QString getValueText() const override;
    bool setValueText(const QString& text, QString* error) override;
    void writeValue(SettingsTree* settings) const override;
    bool isDescribedLike(const DzProperty* other) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

protected:
    DzProperty* createSimilar() const override;
    void assignAll(const DzProperty* model) override;
    void applyClamping() override;
    void getValueAttributes(DzPropertySettings* settings) const override;
    void copyValueFrom(const DzNumericProperty* other) override;
    /// The value that is stored when `value` is asked for.
    virtual int admissible(int value) const;

private:
    void assignValue(int value);

    int m_value;
    int m_default;
    int m_min = -10000;
    int m_max = 10000;
};
