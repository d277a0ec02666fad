// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzsettings.h"

#include <QHash>
#include <QVarLengthArray>
#include <functional>
#include <memory>

/// What a DzSettings holds: an ordered list of keys with typed values, of which some are trees.
///
/// Networks are read and written through trees of tens of thousands of nested settings, most of
/// them with one value. A node here is no QObject; it gets one, which it then owns, only when
/// somebody asks for it. Functions that DzSettings has too are described there.
class SettingsTree
{
public:
    typedef DzSettings::ValueType ValueType;

    SettingsTree();
    SettingsTree(const SettingsTree& other);
    SettingsTree& operator=(const SettingsTree& other);
    ~SettingsTree();

    /// The node as others see it; it lives as long as the node.
    DzSettings* facade() const;

    void setStringValue(const QString& key, const QString& value);
    void setIntValue(const QString& key, int value);
    void setBoolValue(const QString& key, bool value);
    void setFloatValue(const QString& key, double value);
    SettingsTree* setSettingsValue(const QString& key);
    SettingsTree* setSettingsValue(const QString& key, const SettingsTree& value);
    /// Stores `jsonText`, the compact JSON text of a value of unknown meaning.
    void setOpaqueValue(const QString& key, const QByteArray& jsonText);

    QString getStringValue(const QString& key, const QString& fallback = QString()) const;
    int getIntValue(const QString& key, int fallback = 0) const;
    bool getBoolValue(const QString& key, bool fallback = false) const;
    double getFloatValue(const QString& key, double fallback = 0) const;
    SettingsTree* getSettingsValue(const QString& key) const;
    /// The JSON text of an opaque value; empty for other types.
    QByteArray getOpaqueValue(const QString& key) const;
    QByteArray getOpaqueValueAt(int index) const;
    /// The nested settings at `index`; null when there is none or it is of another type.
    SettingsTree* getSettingsValueAt(int index) const;

    int getNumValues() const { return entries().size(); }
    QString getKey(int index) const;
    ValueType getValueType(int index) const;
    QString getValue(int index) const;
    int getSettingIndex(const QString& key) const;
    bool hasKey(const QString& key) const { return getSettingIndex(key) >= 0; }

    void removeValue(const QString& key);
    /// Removes all values whose index `isUnwanted` accepts.
    void removeValues(const std::function<bool(int index)>& isUnwanted);
    void clear();
    bool copySetting(const QString& key, SettingsTree* target) const;
    bool copySetting(const QString& key, SettingsTree* target, const QString& targetKey) const;
    /// Exchanges all values with those of `other`, which is neither in this one nor around it.
    void swap(SettingsTree& other);

    bool isEqual(const SettingsTree& other) const;
    bool hasEqualValue(const SettingsTree& other, const QString& key) const;

private:
    struct Entry {
        QString key;
        ValueType type = DzSettings::StringValue;
        QString text; ///< StringValue; OpaqueValue as UTF-16 of the JSON text
        union {
            int integer;
            bool boolean;
            double number = 0;
            SettingsTree* nested;
        };
    };

    /// A tree that nobody changes any more.
    struct SharedTree;
    typedef std::shared_ptr<const SharedTree> SharedTreePtr;

    explicit SettingsTree(const SharedTreePtr& tree);

    static bool sameEntry(const Entry& a, const Entry& b);
    SharedTreePtr sharedTree() const;
    /// By far the most trees of a network hold one value, which needs no memory of its own.
    typedef QVarLengthArray<Entry, 1> Entries;

    const Entries& entries() const
    {
        if (m_shared)
            takeOverShared();
        return m_entries;
    }
    Entries& entries()
    {
        if (m_shared)
            takeOverShared();
        return m_entries;
    }
    void takeOverShared() const;
    Entry& entryFor(const QString& key, ValueType type);
    const Entry* find(const QString& key) const;
    void assign(const Entry& value);

    mutable Entries m_entries;
    /// Stands for the entries until they are asked for.
    mutable SharedTreePtr m_shared;
    /// Key to index, filled only once the list is long enough for a search to cost more.
    mutable QHash<QString, int> m_index;
    mutable std::unique_ptr<DzSettings> m_facade;
};
