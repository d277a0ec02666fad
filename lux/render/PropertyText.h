// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <initializer_list>
#include <vector>

namespace lux {

/// A number as LuxCore reads it; what is not finite becomes 0.
QByteArray propertyNumber(double value);
QByteArray propertyNumbers(std::initializer_list<double> values);
QByteArray propertyNumbers(const std::vector<double>& values);
/// False for what LuxCore's properties cannot hold: they have no escapes, and either kind of quote
/// ends a string.
bool isPropertyString(const QByteArray& text);
/// A string value in quotes, so that blanks in it are its own; an empty one for what cannot be
/// held.
QByteArray propertyString(const QByteArray& text);

/// LuxCore's properties as text, a line each: "scene.<group>.<name>.<key> = <value>".
class PropertyText
{
public:
    /// Writes the lines of one thing; `kind` is its property "type".
    class Thing
    {
    public:
        Thing(PropertyText* text, const char* group, const QByteArray& name);
        Thing& set(const char* key, const QByteArray& value);
        Thing& set(const char* key, double value) { return set(key, propertyNumber(value)); }

    private:
        PropertyText* m_text;
        QByteArray m_prefix;
    };

    Thing thing(const char* group, const QByteArray& name, const char* kind);
    /// A thing without a property "type".
    Thing thing(const char* group, const QByteArray& name) { return Thing(this, group, name); }

    const QByteArray& text() const { return m_text; }

private:
    QByteArray m_text;
};

} // namespace lux
