// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzsettings.h"

#include "settingstree.h"

namespace {

/// A nested tree as others see it, or null.
DzSettings* shown(const SettingsTree* tree)
{
    return tree ? tree->facade() : nullptr;
}

} // namespace

DzSettings::DzSettings()
    : m_own(new SettingsTree)
    , m_tree(m_own.get())
{
}

DzSettings::DzSettings(const DzSettings& other)
    : QObject()
    , m_own(new SettingsTree(*other.m_tree))
    , m_tree(m_own.get())
{
}

DzSettings::DzSettings(SettingsTree* tree)
    : m_tree(tree)
{
}

DzSettings& DzSettings::operator=(const DzSettings& other)
{
    *m_tree = *other.m_tree;
    return *this;
}

DzSettings::~DzSettings()
{
}

void DzSettings::setStringValue(const QString& key, const QString& value)
{
    m_tree->setStringValue(key, value);
}

void DzSettings::setIntValue(const QString& key, int value)
{
    m_tree->setIntValue(key, value);
}

void DzSettings::setBoolValue(const QString& key, bool value)
{
    m_tree->setBoolValue(key, value);
}

void DzSettings::setFloatValue(const QString& key, double value)
{
    m_tree->setFloatValue(key, value);
}

DzSettings* DzSettings::setSettingsValue(const QString& key)
{
    return shown(m_tree->setSettingsValue(key));
}

DzSettings* DzSettings::setSettingsValue(const QString& key, const DzSettings& value)
{
    return shown(m_tree->setSettingsValue(key, *value.m_tree));
}

QString DzSettings::getStringValue(const QString& key, const QString& fallback) const
{
    return m_tree->getStringValue(key, fallback);
}

int DzSettings::getIntValue(const QString& key, int fallback) const
{
    return m_tree->getIntValue(key, fallback);
}

bool DzSettings::getBoolValue(const QString& key, bool fallback) const
{
    return m_tree->getBoolValue(key, fallback);
}

double DzSettings::getFloatValue(const QString& key, double fallback) const
{
    return m_tree->getFloatValue(key, fallback);
}

DzSettings* DzSettings::getSettingsValue(const QString& key) const
{
    return shown(m_tree->getSettingsValue(key));
}

int DzSettings::getNumValues() const
{
    return m_tree->getNumValues();
}

QString DzSettings::getKey(int index) const
{
    return m_tree->getKey(index);
}

DzSettings::ValueType DzSettings::getValueType(int index) const
{
    return m_tree->getValueType(index);
}

QString DzSettings::getValue(int index) const
{
    return m_tree->getValue(index);
}

int DzSettings::getSettingIndex(const QString& key) const
{
    return m_tree->getSettingIndex(key);
}

void DzSettings::removeValue(const QString& key)
{
    m_tree->removeValue(key);
}

void DzSettings::clear()
{
    m_tree->clear();
}

bool DzSettings::copySetting(const QString& key, DzSettings* target) const
{
    return m_tree->copySetting(key, target->m_tree);
}

bool DzSettings::copySetting(const QString& key, DzSettings* target, const QString& targetKey) const
{
    return m_tree->copySetting(key, target->m_tree, targetKey);
}

void DzSettings::replaceWithSettings(const DzSettings& other)
{
    *this = other;
}

bool DzSettings::isEqual(const DzSettings& other) const
{
    return m_tree->isEqual(*other.m_tree);
}

bool DzSettings::hasEqualValue(const DzSettings& other, const QString& key) const
{
    return m_tree->hasEqualValue(*other.m_tree, key);
}
