// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <memory>

class SettingsTree;

/// An ordered list of keys with typed values; a value may be a nested DzSettings.
///
/// Keys keep the order in which they were first set; setting an existing key replaces its value
/// in place, whatever its type was. Nested settings are owned by the one that holds them.
/// Look-up by key is constant in time.
///
/// A copy shares what it was copied from until it is looked into, and then takes over one level
/// after the other, so that many copies of one large tree cost little.
class DzSettings : public QObject
{
    Q_OBJECT

public:
    /// Types of a value. OpaqueValue is something read from a file that no getter understands:
    /// it is kept as text and written back as it was.
    enum ValueType { StringValue, IntValue, BoolValue, FloatValue, SettingsValue, OpaqueValue };
    Q_ENUM(ValueType)

    DzSettings();
    DzSettings(const DzSettings& other);
    DzSettings& operator=(const DzSettings& other);
    ~DzSettings() override;

    // Setting values.
    Q_INVOKABLE void setStringValue(const QString& key, const QString& value);
    Q_INVOKABLE void setIntValue(const QString& key, int value);
    Q_INVOKABLE void setBoolValue(const QString& key, bool value);
    Q_INVOKABLE void setFloatValue(const QString& key, double value);
    /// Stores an empty nested settings and returns it.
    Q_INVOKABLE DzSettings* setSettingsValue(const QString& key);
    /// Stores a copy of `value` and returns the stored one.
    DzSettings* setSettingsValue(const QString& key, const DzSettings& value);

    // Reading values. The fallback is returned when the key is absent or of another type; a
    // number is read as either of the number types where that loses nothing.
    Q_INVOKABLE QString getStringValue(
        const QString& key, const QString& fallback = QString()) const;
    Q_INVOKABLE int getIntValue(const QString& key, int fallback = 0) const;
    Q_INVOKABLE bool getBoolValue(const QString& key, bool fallback = false) const;
    Q_INVOKABLE double getFloatValue(const QString& key, double fallback = 0) const;
    /// The nested settings under `key`, or null when absent or of another type.
    Q_INVOKABLE DzSettings* getSettingsValue(const QString& key) const;

    // Walking.
    Q_INVOKABLE int getNumValues() const;
    /// Key of value `index`, empty when there is none.
    Q_INVOKABLE QString getKey(int index) const;
    /// Type of value `index`, StringValue when there is none.
    Q_INVOKABLE ValueType getValueType(int index) const;
    /// Value `index` as text; empty for nested settings.
    Q_INVOKABLE QString getValue(int index) const;
    /// Index of `key`, -1 when absent.
    Q_INVOKABLE int getSettingIndex(const QString& key) const;
    Q_INVOKABLE bool hasKey(const QString& key) const { return getSettingIndex(key) >= 0; }

    Q_INVOKABLE void removeValue(const QString& key);
    Q_INVOKABLE void clear();
    /// Copies the value under `key` to the same key of `target`; false when the key is absent.
    Q_INVOKABLE bool copySetting(const QString& key, DzSettings* target) const;
    /// The same to another key.
    Q_INVOKABLE bool copySetting(
        const QString& key, DzSettings* target, const QString& targetKey) const;
    void replaceWithSettings(const DzSettings& other);

    /// True when both hold the same keys with the same values in the same order.
    bool isEqual(const DzSettings& other) const;
    /// True when both have the same value, or none, under `key`.
    bool hasEqualValue(const DzSettings& other, const QString& key) const;

    /// The values, for the host's own readers and writers.
    SettingsTree* tree() { return m_tree; }
    const SettingsTree* tree() const { return m_tree; }

    /// For the host's own sources.
    struct Access;

private:
    /// Shows a tree that somebody else owns.
    explicit DzSettings(SettingsTree* tree);

    std::unique_ptr<SettingsTree> m_own; ///< null when another tree holds this one
    SettingsTree* const m_tree;
};
