// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzenumproperty.h"

#include "settingstree.h"

DzEnumProperty::DzEnumProperty(const QString& name, bool canAnimate, bool isUserProperty)
    : DzIntProperty(name, canAnimate, isUserProperty)
{
}

int DzEnumProperty::addItem(const QString& text, int index)
{
    if (m_items.contains(text))
        return -1;
    const int place = index < 0 || index > m_items.size() ? m_items.size() : index;
    m_items.insert(place, text);
    emit itemListChanged();
    return place;
}

int DzEnumProperty::admissible(int value) const
{
    return qBound(0, value, qMax(0, m_items.size() - 1));
}

bool DzEnumProperty::setValueFromString(const QString& text)
{
    const int index = findItemString(text);
    if (index < 0 || isLocked())
        return false;
    setValue(index);
    return true;
}

bool DzEnumProperty::setValueText(const QString& text, QString* error)
{
    int index = findItemString(text);
    if (index < 0) {
        bool ok = false;
        index = text.trimmed().toInt(&ok);
        if (!ok || index < 0 || index >= m_items.size()) {
            *error = tr("\"%1\" is not one of: %2").arg(text, m_items.join(QStringLiteral(", ")));
            return false;
        }
    }
    if (isLocked()) {
        *error = tr("it is locked");
        return false;
    }
    setValue(index);
    return true;
}

DzProperty* DzEnumProperty::createSimilar() const
{
    return new DzEnumProperty(getName(), canAnimate(), isUserProperty());
}

void DzEnumProperty::assignAll(const DzProperty* model)
{
    DzIntProperty::assignAll(model);
    auto* source = static_cast<const DzEnumProperty*>(model);
    m_items = source->m_items;
}

bool DzEnumProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    if (key == QLatin1String("Value") || key == QLatin1String("DefaultValue")) {
        // An index of no item is left alone rather than bent to another item.
        const int index = settings.getIntValue(key, -1);
        if (index < 0 || index >= m_items.size())
            return false;
    }
    return DzIntProperty::readAttribute(settings, key);
}
