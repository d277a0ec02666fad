// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzproperty.h"

/// A text. It cannot be animated; its default is set only by setDefaultValue().
class DzStringProperty : public DzProperty
{
    Q_OBJECT

public:
    DzStringProperty(const QString& name, bool isUserProperty);

    Q_INVOKABLE QString getValue() const { return m_value; }
    /// False when the property is locked.
    Q_INVOKABLE bool setValue(const QString& value);
    Q_INVOKABLE QString getDefaultValue() const { return m_default; }
    Q_INVOKABLE void setDefaultValue(const QString& value) { m_default = value; }

    bool currentValueIsDefaultValue() const override { return m_value == m_default; }
    void resetToDefault() override { setValue(m_default); }
    QString getValueText() const override { return m_value; }
    bool setValueText(const QString& text, QString* error) override;
    void getAttributes(DzPropertySettings* settings) const override;
    void writeValue(SettingsTree* settings) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

protected:
    void takeFrom(const DzProperty* other) override;
    DzProperty* createSimilar() const override;
    void assignAll(const DzProperty* model) override;

private:
    void assignValue(const QString& value);

    QString m_value;
    QString m_default;
};
