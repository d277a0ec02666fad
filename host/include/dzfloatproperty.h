// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dznumberproperty.h"

/// A single-precision number.
class DzFloatProperty : public DzNumberProperty<float>
{
    Q_OBJECT

public:
    DzFloatProperty(
        const QString& name, bool canAnimate, bool isUserProperty, float defaultValue = 0);

    Q_INVOKABLE float getValue() const { return value(); }
    /// Clamps to the limits when clamping is on. Without animation it sets the default too.
    Q_INVOKABLE void setValue(float value) { changeValue(value); }
    Q_INVOKABLE float getDefaultValue() const { return defaultValue(); }
    Q_INVOKABLE void setDefaultValue(float value) { changeDefault(value); }
    Q_INVOKABLE float getMin() const { return minimum(); }
    Q_INVOKABLE float getMax() const { return maximum(); }
    Q_INVOKABLE void setMin(float min) { setMinMax(min, maximum()); }
    Q_INVOKABLE void setMax(float max) { setMinMax(minimum(), max); }
    Q_INVOKABLE void setMinMax(float min, float max) { changeMinMax(min, max); }
    /// Change of value per step of an editor.
    Q_INVOKABLE float getSensitivity() const { return m_sensitivity; }
    Q_INVOKABLE void setSensitivity(float sensitivity);

    void setDoubleValue(double value) override { setValue(static_cast<float>(value)); }
    QString getValueText() const override;
    bool setValueText(const QString& text, QString* error) override;
    bool isDescribedLike(const DzProperty* other) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

protected:
    DzProperty* createSimilar() const override;
    void assignAll(const DzProperty* model) override;
    void writeStep(SettingsTree* settings) const override;

private:
    float m_sensitivity = 0.01f;
};
