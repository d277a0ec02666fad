// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dznumberproperty.h"

/// A whole number; base of the properties that are stored as one.
class DzIntProperty : public DzNumberProperty<int>
{
    Q_OBJECT

public:
    DzIntProperty(const QString& name, bool canAnimate, bool isUserProperty, int defaultValue = 0);

    Q_INVOKABLE int getValue() const { return value(); }
    /// Clamps to the limits when clamping is on. Without animation it sets the default too.
    Q_INVOKABLE void setValue(int value) { changeValue(value); }
    Q_INVOKABLE int getDefaultValue() const { return defaultValue(); }
    Q_INVOKABLE void setDefaultValue(int value) { changeDefault(value); }
    Q_INVOKABLE int getMin() const { return minimum(); }
    Q_INVOKABLE int getMax() const { return maximum(); }
    Q_INVOKABLE void setMin(int min) { setMinMax(min, maximum()); }
    Q_INVOKABLE void setMax(int max) { setMinMax(minimum(), max); }
    Q_INVOKABLE void setMinMax(int min, int max) { changeMinMax(min, max); }

    /// Takes the nearest whole number; does nothing for one that is out of an int's range.
    void setDoubleValue(double value) override;
    QString getValueText() const override;
    bool setValueText(const QString& text, QString* error) override;

protected:
    DzProperty* createSimilar() const override;
};
