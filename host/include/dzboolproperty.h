// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzintproperty.h"

/// A switch.
class DzBoolProperty : public DzIntProperty
{
    Q_OBJECT

public:
    DzBoolProperty(
        const QString& name, bool canAnimate, bool isUserProperty, bool defaultValue = false);

    Q_INVOKABLE bool getBoolValue() const { return getValue() != 0; }
    Q_INVOKABLE void setBoolValue(bool value) { setValue(value ? 1 : 0); }
    Q_INVOKABLE bool getDefaultBoolValue() const { return getDefaultValue() != 0; }
    Q_INVOKABLE void setDefaultBoolValue(bool value) { setDefaultValue(value ? 1 : 0); }

    QString getValueText() const override;
    bool setValueText(const QString& text, QString* error) override;
    void writeValue(SettingsTree* settings) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

protected:
    DzProperty* createSimilar() const override;
    void getValueAttributes(DzPropertySettings* settings) const override;
    int admissible(int value) const override { return value != 0 ? 1 : 0; }
};
