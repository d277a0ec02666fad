// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzsettings.h"

#include "settingsjson.h"

#include <cmath>
#include <limits>
#include <vector>

namespace {

/// Up to this many entries are searched one by one, which is faster than hashing the key.
const int longestSearchedList = 16;

/// Equal as text: zeros of different sign differ, every not-a-number is the same.
bool sameNumber(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

/// Most keys differ in length or in their first letter, and the text of equal ones is mostly
/// shared: none of these needs a call.
bool isSameKey(const QString& a, const QString& b)
{
    if (a.size() != b.size())
        return false;
    const QChar* first = a.constData();
    const QChar* second = b.constData();
    return first == second || (*first == *second && a == b);
}

bool isWholeInt(double number)
{
    return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max()
        && number == std::floor(number);
}

} // namespace

/// Entries whose nested trees are shared too; nested trees stand in `children` in their order.
struct DzSettings::SharedTree {
    Entries entries; ///< without pointers to nested settings
    std::vector<SharedTreePtr> children;
};

DzSettings::DzSettings()
{
}

DzSettings::DzSettings(const DzSettings& other)
    : QObject()
    , m_shared(other.sharedTree())
{
}

DzSettings::DzSettings(const SharedTreePtr& tree)
    : m_shared(tree)
{
}

DzSettings& DzSettings::operator=(const DzSettings& other)
{
    // The copy comes first: `other` may be held by this one.
    DzSettings copy(other);
    swap(copy);
    return *this;
}

void DzSettings::swap(DzSettings& other)
{
    std::swap(m_entries, other.m_entries);
    m_shared.swap(other.m_shared);
    m_index.swap(other.m_index);
}

DzSettings::~DzSettings()
{
    clear();
}

DzSettings::SharedTreePtr DzSettings::sharedTree() const
{
    if (m_shared || m_entries.isEmpty())
        return m_shared;
    auto tree = std::make_shared<SharedTree>();
    tree->entries = m_entries;
    for (int i = 0; i < m_entries.size(); ++i) {
        if (m_entries.at(i).type != SettingsValue)
            continue;
        tree->children.push_back(m_entries.at(i).nested->sharedTree());
        tree->entries[i].nested = nullptr;
    }
    return tree;
}

void DzSettings::takeOverShared() const
{
    const SharedTreePtr tree = std::move(m_shared);
    m_shared.reset();
    m_entries = tree->entries;
    std::size_t child = 0;
    for (int i = 0; child < tree->children.size(); ++i) {
        if (m_entries.at(i).type == SettingsValue)
            m_entries[i].nested = new DzSettings(tree->children[child++]);
    }
}

int DzSettings::getSettingIndex(const QString& key) const
{
    if (entries().size() <= longestSearchedList) {
        const Entries& list = entries();
        for (int i = 0; i < list.size(); ++i)
            if (isSameKey(list.at(i).key, key))
                return i;
        return -1;
    }
    if (m_index.isEmpty()) {
        m_index.reserve(entries().size());
        for (int i = 0; i < entries().size(); ++i)
            m_index.insert(entries().at(i).key, i);
    }
    return m_index.value(key, -1);
}

const DzSettings::Entry* DzSettings::find(const QString& key) const
{
    const int index = getSettingIndex(key);
    return index < 0 ? nullptr : &entries().at(index);
}

DzSettings::Entry& DzSettings::entryFor(const QString& key, ValueType type)
{
    const int index = getSettingIndex(key);
    if (index < 0) {
        if (!m_index.isEmpty())
            m_index.insert(key, entries().size());
        entries().append(Entry());
        entries().last().key = key;
    }
    Entry& entry = index < 0 ? entries().last() : entries()[index];
    if (entry.type == SettingsValue)
        delete entry.nested;
    entry.type = type;
    entry.text.clear();
    entry.number = 0;
    return entry;
}

void DzSettings::assign(const Entry& value)
{
    switch (value.type) {
    case StringValue:
        setStringValue(value.key, value.text);
        break;
    case IntValue:
        setIntValue(value.key, value.integer);
        break;
    case BoolValue:
        setBoolValue(value.key, value.boolean);
        break;
    case FloatValue:
        setFloatValue(value.key, value.number);
        break;
    case SettingsValue:
        setSettingsValue(value.key, *value.nested);
        break;
    case OpaqueValue:
        entryFor(value.key, OpaqueValue).text = value.text;
        break;
    }
}

void DzSettings::setStringValue(const QString& key, const QString& value)
{
    entryFor(key, StringValue).text = value;
}

void DzSettings::setIntValue(const QString& key, int value)
{
    entryFor(key, IntValue).integer = value;
}

void DzSettings::setBoolValue(const QString& key, bool value)
{
    entryFor(key, BoolValue).boolean = value;
}

void DzSettings::setFloatValue(const QString& key, double value)
{
    entryFor(key, FloatValue).number = value;
}

DzSettings* DzSettings::setSettingsValue(const QString& key)
{
    auto* nested = new DzSettings;
    entryFor(key, SettingsValue).nested = nested;
    return nested;
}

DzSettings* DzSettings::setSettingsValue(const QString& key, const DzSettings& value)
{
    // The copy comes first: `value` may be the one that is replaced, or hold this one.
    auto* nested = new DzSettings(value);
    entryFor(key, SettingsValue).nested = nested;
    return nested;
}

void DzSettings::setOpaqueValue(const QString& key, const QByteArray& jsonText)
{
    entryFor(key, OpaqueValue).text = QString::fromUtf8(jsonText);
}

QString DzSettings::getStringValue(const QString& key, const QString& fallback) const
{
    const Entry* entry = find(key);
    return entry && entry->type == StringValue ? entry->text : fallback;
}

int DzSettings::getIntValue(const QString& key, int fallback) const
{
    const Entry* entry = find(key);
    if (entry && entry->type == IntValue)
        return entry->integer;
    if (entry && entry->type == FloatValue && isWholeInt(entry->number))
        return static_cast<int>(entry->number);
    return fallback;
}

bool DzSettings::getBoolValue(const QString& key, bool fallback) const
{
    const Entry* entry = find(key);
    return entry && entry->type == BoolValue ? entry->boolean : fallback;
}

double DzSettings::getFloatValue(const QString& key, double fallback) const
{
    const Entry* entry = find(key);
    if (entry && entry->type == FloatValue)
        return entry->number;
    return entry && entry->type == IntValue ? entry->integer : fallback;
}

DzSettings* DzSettings::getSettingsValue(const QString& key) const
{
    const Entry* entry = find(key);
    return entry && entry->type == SettingsValue ? entry->nested : nullptr;
}

QByteArray DzSettings::getOpaqueValue(const QString& key) const
{
    const Entry* entry = find(key);
    return entry && entry->type == OpaqueValue ? entry->text.toUtf8() : QByteArray();
}

QString DzSettings::getKey(int index) const
{
    return index >= 0 && index < entries().size() ? entries().at(index).key : QString();
}

DzSettings::ValueType DzSettings::getValueType(int index) const
{
    return index >= 0 && index < entries().size() ? entries().at(index).type : StringValue;
}

QString DzSettings::getValue(int index) const
{
    if (index < 0 || index >= entries().size())
        return QString();
    const Entry& entry = entries().at(index);
    switch (entry.type) {
    case StringValue:
    case OpaqueValue:
        return entry.text;
    case IntValue:
        return QString::number(entry.integer);
    case BoolValue:
        return entry.boolean ? QStringLiteral("true") : QStringLiteral("false");
    case FloatValue:
        return QString::fromLatin1(shortestNumberText(entry.number));
    case SettingsValue:
        break;
    }
    return QString();
}

void DzSettings::removeValue(const QString& key)
{
    const int index = getSettingIndex(key);
    if (index < 0)
        return;
    if (entries().at(index).type == SettingsValue)
        delete entries().at(index).nested;
    if (index == entries().size() - 1)
        m_index.remove(key);
    else
        m_index.clear();
    entries().remove(index);
}

void DzSettings::removeValues(const std::function<bool(int index)>& isUnwanted)
{
    Entries wanted;
    for (int i = 0; i < entries().size(); ++i) {
        if (!isUnwanted(i))
            wanted.append(entries().at(i));
        else if (entries().at(i).type == SettingsValue)
            delete entries().at(i).nested;
    }
    entries() = wanted;
    m_index.clear();
}

void DzSettings::clear()
{
    m_shared.reset();
    m_index.clear();
    // Taken out one by one: what is deleted may ask this tree.
    while (!m_entries.isEmpty()) {
        const Entry& last = m_entries.last();
        const DzSettings* nested = last.type == SettingsValue ? last.nested : nullptr;
        m_entries.removeLast();
        delete nested;
    }
}

bool DzSettings::copySetting(const QString& key, DzSettings* target, const QString& targetKey) const
{
    const Entry* entry = find(key);
    if (!entry)
        return false;
    if (target == this && targetKey == key)
        return true;
    // Held here, for setting the value may delete this tree when it is part of the target.
    Entry copy = *entry;
    copy.key = targetKey;
    target->assign(copy);
    return true;
}

QByteArray DzSettings::getOpaqueValueAt(int index) const
{
    const Entry& entry = entries().at(index);
    return entry.type == OpaqueValue ? entry.text.toUtf8() : QByteArray();
}

DzSettings* DzSettings::getSettingsValueAt(int index) const
{
    return getValueType(index) == SettingsValue ? entries().at(index).nested : nullptr;
}

bool DzSettings::copySetting(const QString& key, DzSettings* target) const
{
    return copySetting(key, target, key);
}

void DzSettings::replaceWithSettings(const DzSettings& other)
{
    *this = other;
}

bool DzSettings::entriesEqual(const Entry& a, const Entry& b)
{
    if (a.key != b.key || a.type != b.type)
        return false;
    switch (a.type) {
    case StringValue:
    case OpaqueValue:
        return a.text == b.text;
    case IntValue:
        return a.integer == b.integer;
    case BoolValue:
        return a.boolean == b.boolean;
    case FloatValue:
        return sameNumber(a.number, b.number);
    case SettingsValue:
        return a.nested->isEqual(*b.nested);
    }
    return false;
}

bool DzSettings::isEqual(const DzSettings& other) const
{
    if (this == &other || (m_shared && m_shared == other.m_shared))
        return true;
    if (entries().size() != other.entries().size())
        return false;
    for (int i = 0; i < entries().size(); ++i) {
        if (!entriesEqual(entries().at(i), other.entries().at(i)))
            return false;
    }
    return true;
}

bool DzSettings::hasEqualValue(const DzSettings& other, const QString& key) const
{
    const Entry* mine = find(key);
    const Entry* theirs = other.find(key);
    return mine && theirs ? entriesEqual(*mine, *theirs) : mine == theirs;
}
