// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PropertyText.h"

#include <cmath>

namespace lux {

namespace {

// A float has nine digits at most.
constexpr int digits = 9;

template <typename Numbers>
QByteArray joined(const Numbers& values)
{
    QByteArray text;
    for (const double value : values) {
        if (!text.isEmpty())
            text += ' ';
        text += propertyNumber(value);
    }
    return text;
}

} // namespace

QByteArray propertyNumber(double value)
{
    return std::isfinite(value) ? QByteArray::number(value, 'g', digits) : QByteArray("0");
}

QByteArray propertyNumbers(std::initializer_list<double> values)
{
    return joined(values);
}

QByteArray propertyNumbers(const std::vector<double>& values)
{
    return joined(values);
}

bool isPropertyString(const QByteArray& text)
{
    return !text.contains('"') && !text.contains('\'') && !text.contains('\n')
        && !text.contains('\r');
}

QByteArray propertyString(const QByteArray& text)
{
    return isPropertyString(text) ? '"' + text + '"' : QByteArray("\"\"");
}

PropertyText::Thing::Thing(PropertyText* text, const char* group, const QByteArray& name)
    : m_text(text)
    , m_prefix(QByteArray("scene.") + group + '.' + name + '.')
{
}

PropertyText::Thing& PropertyText::Thing::set(const char* key, const QByteArray& value)
{
    m_text->m_text += m_prefix + key + " = " + value + '\n';
    return *this;
}

PropertyText::Thing PropertyText::thing(const char* group, const QByteArray& name, const char* kind)
{
    Thing thing(this, group, name);
    thing.set("type", kind);
    return thing;
}

} // namespace lux
