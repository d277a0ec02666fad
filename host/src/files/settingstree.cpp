// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "settingstree.h"

#include "settingsjson.h"

#include <cmath>
#include <limits>
#include <new>
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
struct SettingsTree::SharedTree {
    SharedTree() {}
    ~SharedTree();

    Entries entries; ///< without pointers to nested settings
    std::vector<SharedTreePtr> children;

private:
    Q_DISABLE_COPY(SharedTree)
};

/// Trees may be as deep as memory allows: what nobody else holds is freed level by level, without
/// a call for each.
SettingsTree::SharedTree::~SharedTree()
{
    try {
        while (!children.empty()) {
            const SharedTreePtr child = std::move(children.back());
            children.pop_back();
            if (!child || child.use_count() > 1)
                continue;
            // Only this function sees it any more, and it was made as one that can be changed.
            std::vector<SharedTreePtr>& below = const_cast<SharedTree&>(*child).children;
            for (SharedTreePtr& grandchild : below)
                children.push_back(std::move(grandchild));
            below.clear();
        }
    } catch (const std::bad_alloc&) {
        // The rest goes by itself.
    }
}

struct DzSettings::Access {
    static DzSettings* show(SettingsTree* tree) { return new DzSettings(tree); }
};

SettingsTree::SettingsTree()
{
}

SettingsTree::SettingsTree(const SettingsTree& other)
    : m_shared(other.sharedTree())
{
}

SettingsTree::SettingsTree(const SharedTreePtr& tree)
    : m_shared(tree)
{
}

SettingsTree& SettingsTree::operator=(const SettingsTree& other)
{
    // The copy comes first: `other` may be held by this one.
    SettingsTree copy(other);
    swap(copy);
    return *this;
}

void SettingsTree::swap(SettingsTree& other)
{
    std::swap(m_entries, other.m_entries);
    m_shared.swap(other.m_shared);
    m_index.swap(other.m_index);
}

SettingsTree::~SettingsTree()
{
    clear();
}

DzSettings* SettingsTree::facade() const
{
    if (!m_facade)
        m_facade.reset(DzSettings::Access::show(const_cast<SettingsTree*>(this)));
    return m_facade.get();
}

SettingsTree::SharedTreePtr SettingsTree::sharedTree() const
{
    if (m_shared || m_entries.isEmpty())
        return m_shared;
    struct Copy {
        const SettingsTree* from;
        SharedTree* to;
    };
    const auto tree = std::make_shared<SharedTree>();
    QVarLengthArray<Copy, 16> open { Copy { this, tree.get() } };
    while (!open.isEmpty()) {
        const Copy copy = open.last();
        open.removeLast();
        copy.to->entries = copy.from->m_entries;
        for (Entry& entry : copy.to->entries) {
            if (entry.type != DzSettings::SettingsValue)
                continue;
            const SettingsTree* nested = entry.nested;
            entry.nested = nullptr;
            if (nested->m_shared || nested->m_entries.isEmpty()) {
                copy.to->children.push_back(nested->m_shared);
                continue;
            }
            const auto child = std::make_shared<SharedTree>();
            copy.to->children.push_back(child);
            open.append(Copy { nested, child.get() });
        }
    }
    return tree;
}

/// One level becomes this tree's own; the levels below stay shared until they are looked into.
void SettingsTree::takeOverShared() const
{
    const SharedTreePtr tree = std::move(m_shared);
    m_shared.reset();
    m_entries = tree->entries;
    std::size_t child = 0;
    for (int i = 0; child < tree->children.size(); ++i) {
        if (m_entries.at(i).type == DzSettings::SettingsValue)
            m_entries[i].nested = new SettingsTree(tree->children[child++]);
    }
}

int SettingsTree::getSettingIndex(const QString& key) const
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

const SettingsTree::Entry* SettingsTree::find(const QString& key) const
{
    const int index = getSettingIndex(key);
    return index < 0 ? nullptr : &entries().at(index);
}

SettingsTree::Entry& SettingsTree::entryFor(const QString& key, ValueType type)
{
    const int index = getSettingIndex(key);
    if (index < 0) {
        if (!m_index.isEmpty())
            m_index.insert(key, entries().size());
        entries().append(Entry());
        entries().last().key = key;
    }
    Entry& entry = index < 0 ? entries().last() : entries()[index];
    if (entry.type == DzSettings::SettingsValue)
        delete entry.nested;
    entry.type = type;
    entry.text.clear();
    entry.number = 0;
    return entry;
}

void SettingsTree::assign(const Entry& value)
{
    switch (value.type) {
    case DzSettings::StringValue:
        setStringValue(value.key, value.text);
        break;
    case DzSettings::IntValue:
        setIntValue(value.key, value.integer);
        break;
    case DzSettings::BoolValue:
        setBoolValue(value.key, value.boolean);
        break;
    case DzSettings::FloatValue:
        setFloatValue(value.key, value.number);
        break;
    case DzSettings::SettingsValue:
        setSettingsValue(value.key, *value.nested);
        break;
    case DzSettings::OpaqueValue:
        entryFor(value.key, DzSettings::OpaqueValue).text = value.text;
        break;
    }
}

void SettingsTree::setStringValue(const QString& key, const QString& value)
{
    entryFor(key, DzSettings::StringValue).text = value;
}

void SettingsTree::setIntValue(const QString& key, int value)
{
    entryFor(key, DzSettings::IntValue).integer = value;
}

void SettingsTree::setBoolValue(const QString& key, bool value)
{
    entryFor(key, DzSettings::BoolValue).boolean = value;
}

void SettingsTree::setFloatValue(const QString& key, double value)
{
    entryFor(key, DzSettings::FloatValue).number = value;
}

SettingsTree* SettingsTree::setSettingsValue(const QString& key)
{
    auto* nested = new SettingsTree;
    entryFor(key, DzSettings::SettingsValue).nested = nested;
    return nested;
}

SettingsTree* SettingsTree::setSettingsValue(const QString& key, const SettingsTree& value)
{
    // The copy comes first: `value` may be the one that is replaced, or hold this one.
    auto* nested = new SettingsTree(value);
    entryFor(key, DzSettings::SettingsValue).nested = nested;
    return nested;
}

void SettingsTree::setOpaqueValue(const QString& key, const QByteArray& jsonText)
{
    entryFor(key, DzSettings::OpaqueValue).text = QString::fromUtf8(jsonText);
}

QString SettingsTree::getStringValue(const QString& key, const QString& fallback) const
{
    const Entry* entry = find(key);
    return entry && entry->type == DzSettings::StringValue ? entry->text : fallback;
}

int SettingsTree::getIntValue(const QString& key, int fallback) const
{
    const Entry* entry = find(key);
    if (entry && entry->type == DzSettings::IntValue)
        return entry->integer;
    if (entry && entry->type == DzSettings::FloatValue && isWholeInt(entry->number))
        return static_cast<int>(entry->number);
    return fallback;
}

bool SettingsTree::getBoolValue(const QString& key, bool fallback) const
{
    const Entry* entry = find(key);
    return entry && entry->type == DzSettings::BoolValue ? entry->boolean : fallback;
}

double SettingsTree::getFloatValue(const QString& key, double fallback) const
{
    const Entry* entry = find(key);
    if (entry && entry->type == DzSettings::FloatValue)
        return entry->number;
    return entry && entry->type == DzSettings::IntValue ? entry->integer : fallback;
}

SettingsTree* SettingsTree::getSettingsValue(const QString& key) const
{
    const Entry* entry = find(key);
    return entry && entry->type == DzSettings::SettingsValue ? entry->nested : nullptr;
}

QByteArray SettingsTree::getOpaqueValue(const QString& key) const
{
    const Entry* entry = find(key);
    return entry && entry->type == DzSettings::OpaqueValue ? entry->text.toUtf8() : QByteArray();
}

QString SettingsTree::getKey(int index) const
{
    return index >= 0 && index < entries().size() ? entries().at(index).key : QString();
}

SettingsTree::ValueType SettingsTree::getValueType(int index) const
{
    return index >= 0 && index < entries().size() ? entries().at(index).type
                                                  : DzSettings::StringValue;
}

QString SettingsTree::getValue(int index) const
{
    if (index < 0 || index >= entries().size())
        return QString();
    const Entry& entry = entries().at(index);
    switch (entry.type) {
    case DzSettings::StringValue:
    case DzSettings::OpaqueValue:
        return entry.text;
    case DzSettings::IntValue:
        return QString::number(entry.integer);
    case DzSettings::BoolValue:
        return entry.boolean ? QStringLiteral("true") : QStringLiteral("false");
    case DzSettings::FloatValue:
        return QString::fromLatin1(shortestNumberText(entry.number));
    case DzSettings::SettingsValue:
        break;
    }
    return QString();
}

void SettingsTree::removeValue(const QString& key)
{
    const int index = getSettingIndex(key);
    if (index < 0)
        return;
    if (entries().at(index).type == DzSettings::SettingsValue)
        delete entries().at(index).nested;
    if (index == entries().size() - 1)
        m_index.remove(key);
    else
        m_index.clear();
    entries().remove(index);
}

void SettingsTree::removeValues(const std::function<bool(int index)>& isUnwanted)
{
    const int count = getNumValues();
    int first = 0;
    while (first < count && !isUnwanted(first))
        ++first;
    if (first == count)
        return; // mostly nothing is removed, and nothing need be copied
    Entries wanted;
    for (int i = 0; i < count; ++i) {
        if (i < first || !isUnwanted(i))
            wanted.append(entries().at(i));
        else if (entries().at(i).type == DzSettings::SettingsValue)
            delete entries().at(i).nested;
    }
    entries() = wanted;
    m_index.clear();
}

void SettingsTree::clear()
{
    m_shared.reset();
    m_index.clear();
    // However deep the tree is, this takes no memory and no call a level: the way back up stands
    // where the way down stood.
    SettingsTree* current = this;
    SettingsTree* above = nullptr;
    while (current != this || !m_entries.isEmpty()) {
        if (current->m_entries.isEmpty()) {
            const SettingsTree* done = current;
            current = above;
            above = current->m_entries.last().nested;
            // Taken out first: what is deleted may ask the trees above.
            current->m_entries.removeLast();
            delete done;
            continue;
        }
        Entry& last = current->m_entries.last();
        if (last.type != DzSettings::SettingsValue) {
            current->m_entries.removeLast();
            continue;
        }
        SettingsTree* nested = last.nested;
        last.type = DzSettings::StringValue; // nobody takes the way back for settings
        last.nested = above;
        above = current;
        current = nested;
    }
}

bool SettingsTree::copySetting(
    const QString& key, SettingsTree* target, const QString& targetKey) const
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

QByteArray SettingsTree::getOpaqueValueAt(int index) const
{
    const Entry& entry = entries().at(index);
    return entry.type == DzSettings::OpaqueValue ? entry.text.toUtf8() : QByteArray();
}

SettingsTree* SettingsTree::getSettingsValueAt(int index) const
{
    return getValueType(index) == DzSettings::SettingsValue ? entries().at(index).nested : nullptr;
}

bool SettingsTree::copySetting(const QString& key, SettingsTree* target) const
{
    return copySetting(key, target, key);
}

/// Leaves out what stands in nested settings.
bool SettingsTree::sameEntry(const Entry& a, const Entry& b)
{
    if (a.type != b.type || a.key != b.key)
        return false;
    switch (a.type) {
    case DzSettings::StringValue:
    case DzSettings::OpaqueValue:
        return a.text == b.text;
    case DzSettings::IntValue:
        return a.integer == b.integer;
    case DzSettings::BoolValue:
        return a.boolean == b.boolean;
    case DzSettings::FloatValue:
        return sameNumber(a.number, b.number);
    case DzSettings::SettingsValue:
        return true;
    }
    return false;
}

bool SettingsTree::isEqual(const SettingsTree& other) const
{
    struct Pair {
        const SettingsTree* a;
        const SettingsTree* b;
    };
    QVarLengthArray<Pair, 16> open { Pair { this, &other } };
    while (!open.isEmpty()) {
        const Pair pair = open.last();
        open.removeLast();
        if (pair.a == pair.b || (pair.a->m_shared && pair.a->m_shared == pair.b->m_shared))
            continue;
        const Entries& a = pair.a->entries();
        const Entries& b = pair.b->entries();
        if (a.size() != b.size())
            return false;
        for (int i = 0; i < a.size(); ++i) {
            if (!sameEntry(a.at(i), b.at(i)))
                return false;
            if (a.at(i).type == DzSettings::SettingsValue)
                open.append(Pair { a.at(i).nested, b.at(i).nested });
        }
    }
    return true;
}

bool SettingsTree::hasEqualValue(const SettingsTree& other, const QString& key) const
{
    const Entry* mine = find(key);
    const Entry* theirs = other.find(key);
    if (!mine || !theirs)
        return mine == theirs;
    return sameEntry(*mine, *theirs)
        && (mine->type != DzSettings::SettingsValue || mine->nested->isEqual(*theirs->nested));
}
