// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dznumericproperty.h"

/// A single-precision number.
class DzFloatProperty : public DzNumericProperty
{
    Q_OBJECT

public:
    DzFloatProperty(
        const QString& name, bool canAnimate, bool isUserProperty, float defaultValue = 0);

    Q_INVOKABLE float getValue() const { return m_value; }
    /// Clamps to the limits when clamping is on. Without animation it sets the default too.
    Q_INVOKABLE void setValue(float value);
    Q_INVOKABLE float getDefaultValue() const { return m_default; }
    Q_INVOKABLE void setDefaultValue(float value);
    Q_INVOKABLE float getMin() const { return m_min; }
    Q_INVOKABLE float getMax() const { return m_max; }
    Q_INVOKABLE void setMin(float min) { setMinMax(min, m_max); }
    Q_INVOKABLE void setMax(float max) { setMinMax(m_min, max); }
    Q_INVOKABLE void setMinMax(float min, float max);
    /// Change of value per step of an editor.
    Q_INVOKABLE float getSensitivity() const { return m_sensitivity; }
    Q_INVOKABLE void setSensitivity(float sensitivity) { m_sensitivity = sensitivity; }

    double getDoubleValue() const override { return static_cast<double>(m_value); }
    void setDoubleValue(double value) override { setValue(static_cast<float>(value)); }
    double getDoubleDefaultValue() const override { return static_cast<double>(m_default); }

    bool currentValueIsDefaultValue() const override;
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

private:
    float admissible(float value) const;
    void assignValue(float value);

    float m_value;
    float m_default;
    float m_min = -10000;
    float m_max = 10000;
    float m_sensitivity = 0.01f;
};
