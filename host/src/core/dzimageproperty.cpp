// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzimageproperty.h"

#include "dzapp.h"
#include "dzimagemgr.h"
#include "dzundostack.h"
#include "settingstree.h"

DzImageProperty::DzImageProperty(const QString& name, bool isUserProperty)
    : DzProperty(name, false, isUserProperty)
{
}

DzImageProperty::~DzImageProperty()
{
}

QString DzImageProperty::getFilename() const
{
    return m_value ? m_value->getFilename() : QString();
}

bool DzImageProperty::setValue(const QString& filename)
{
    return setValue(dzApp->getImageMgr()->getImage(filename));
}

bool DzImageProperty::setValue(const DzTexture* texture)
{
    const DzTexturePtr value(const_cast<DzTexture*>(texture));
    if (isLocked())
        return false;
    const DzTexturePtr before = m_value;
    if (static_cast<DzTexture*>(before) == texture)
        return true;
    assignValue(value);
    if (isRecorded())
        record(
            "value", tr("Change %1").arg(getLabel()),
            [=](DzProperty* p) { static_cast<DzImageProperty*>(p)->assignValue(before); },
            [=](DzProperty* p) { static_cast<DzImageProperty*>(p)->assignValue(value); });
    return true;
}

void DzImageProperty::assignValue(const DzTexturePtr& value)
{
    m_value = value;
    notifyValueChanged();
}

bool DzImageProperty::setValueText(const QString& text, QString* error)
{
    if (setValue(text))
        return true;
    *error = tr("it is locked");
    return false;
}

void DzImageProperty::takeFrom(const DzProperty* other)
{
    auto* source = qobject_cast<const DzImageProperty*>(other);
    if (source && source->getFilename() != getFilename())
        assignValue(source->m_value);
}

DzProperty* DzImageProperty::createSimilar() const
{
    return new DzImageProperty(getName(), isUserProperty());
}

void DzImageProperty::assignAll(const DzProperty* model)
{
    DzProperty::assignAll(model);
    auto* source = static_cast<const DzImageProperty*>(model);
    m_value = source->m_value;
}

void DzImageProperty::getAttributes(DzPropertySettings* settings) const
{
    DzProperty::getAttributes(settings);
    writeValue(settings->tree());
}

void DzImageProperty::writeValue(SettingsTree* settings) const
{
    settings->setStringValue(QStringLiteral("Value"), getFilename());
}

bool DzImageProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    if (key != QLatin1String("Value"))
        return DzProperty::readAttribute(settings, key);
    const int index = settings.getSettingIndex(key);
    if (index < 0 || settings.getValueType(index) != DzSettings::StringValue)
        return false;
    const QString filename = settings.getStringValue(key);
    if (filename != getFilename())
        assignValue(DzTexturePtr(dzApp->getImageMgr()->getImage(filename)));
    return true;
}
