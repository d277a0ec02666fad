// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzboolproperty.h"

#include "settingstree.h"

DzBoolProperty::DzBoolProperty(
    const QString& name, bool canAnimate, bool isUserProperty, bool defaultValue)
    : DzIntProperty(name, canAnimate, isUserProperty, defaultValue ? 1 : 0)
{
}

QString DzBoolProperty::getValueText() const
{
    return getBoolValue() ? QStringLiteral("true") : QStringLiteral("false");
}

bool DzBoolProperty::setValueText(const QString& text, QString* error)
{
    const QString word = text.trimmed().toLower();
    const bool on = word == QLatin1String("true") || word == QLatin1String("1");
    if (!on && word != QLatin1String("false") && word != QLatin1String("0")) {
        *error = tr("\"%1\" is neither true nor false").arg(text);
        return false;
    }
    if (isLocked()) {
        *error = tr("it is locked");
        return false;
    }
    setBoolValue(on);
    return true;
}

DzProperty* DzBoolProperty::createSimilar() const
{
    return new DzBoolProperty(getName(), canAnimate(), isUserProperty());
}

void DzBoolProperty::getValueAttributes(DzPropertySettings* settings) const
{
    writeValue(settings->tree());
    settings->setBoolValue(QStringLiteral("DefaultValue"), getDefaultBoolValue());
}

void DzBoolProperty::writeValue(SettingsTree* settings) const
{
    settings->setBoolValue(QStringLiteral("Value"), getBoolValue());
}

bool DzBoolProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    // Whole numbers have limits, this kind of them has none.
    if (key == QLatin1String("Min") || key == QLatin1String("Max"))
        return false;
    const int index = settings.getSettingIndex(key);
    const bool isValue = key == QLatin1String("Value");
    if (index < 0 || !(isValue || key == QLatin1String("DefaultValue")))
        return DzIntProperty::readAttribute(settings, key);
    if (settings.getValueType(index) != DzSettings::BoolValue)
        return DzIntProperty::readAttribute(settings, key);
    SettingsTree number;
    number.setIntValue(key, settings.getBoolValue(key) ? 1 : 0);
    return DzIntProperty::readAttribute(number, key);
}
