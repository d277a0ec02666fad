// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzintproperty.h"

#include <QColor>

/// A colour of four 8-bit components. An unset colour is opaque black.
class DzColorProperty : public DzIntProperty
{
    Q_OBJECT

public:
    DzColorProperty(const QString& name, bool canAnimate, bool isUserProperty,
        const QColor& defaultValue = QColor());

    Q_INVOKABLE QColor getColorValue() const;
    Q_INVOKABLE void setColorValue(const QColor& color);
    Q_INVOKABLE QColor getDefaultColorValue() const;
    Q_INVOKABLE void setDefaultColorValue(const QColor& color);

    /// "r g b" in 0 to 255, with a fourth number for an alpha below 255; "#rrggbb" and colour names
    /// are read too.
    QString getValueText() const override;
    bool setValueText(const QString& text, QString* error) override;
    void writeValue(SettingsTree* settings) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

protected:
    DzProperty* createSimilar() const override;
    void getValueAttributes(DzPropertySettings* settings) const override;
    int admissible(int value) const override { return value; }
};
