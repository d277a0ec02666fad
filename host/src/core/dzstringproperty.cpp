// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzstringproperty.h"

#include "dzundostack.h"
#include "settingstree.h"

DzStringProperty::DzStringProperty(const QString& name, bool isUserProperty)
    : DzProperty(name, false, isUserProperty)
{
}

bool DzStringProperty::setValue(const QString& value)
{
    if (isLocked())
        return false;
    if (value == m_value)
        return true;
    const QString before = m_value;
    assignValue(value);
    if (isRecorded())
        record(
            "value", tr("Change %1").arg(getLabel()),
            [=](DzProperty* p) { static_cast<DzStringProperty*>(p)->assignValue(before); },
            [=](DzProperty* p) { static_cast<DzStringProperty*>(p)->assignValue(value); });
    return true;
}

void DzStringProperty::assignValue(const QString& value)
{
    m_value = value;
    notifyValueChanged();
}

bool DzStringProperty::setValueText(const QString& text, QString* error)
{
    if (setValue(text))
        return true;
    *error = tr("it is locked");
    return false;
}

void DzStringProperty::takeFrom(const DzProperty* other)
{
    auto* source = qobject_cast<const DzStringProperty*>(other);
    if (source && source->m_value != m_value)
        assignValue(source->m_value);
}

DzProperty* DzStringProperty::createSimilar() const
{
    return new DzStringProperty(getName(), isUserProperty());
}

void DzStringProperty::assignAll(const DzProperty* model)
{
    DzProperty::assignAll(model);
    auto* source = static_cast<const DzStringProperty*>(model);
    m_value = source->m_value;
    m_default = source->m_default;
}

void DzStringProperty::getAttributes(DzPropertySettings* settings) const
{
    DzProperty::getAttributes(settings);
    writeValue(settings->tree());
}

void DzStringProperty::writeValue(SettingsTree* settings) const
{
    settings->setStringValue(QStringLiteral("Value"), m_value);
}

bool DzStringProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    if (key != QLatin1String("Value"))
        return DzProperty::readAttribute(settings, key);
    const int index = settings.getSettingIndex(key);
    if (index < 0 || settings.getValueType(index) != DzSettings::StringValue)
        return false;
    const QString value = settings.getStringValue(key);
    if (value != m_value)
        assignValue(value);
    return true;
}
