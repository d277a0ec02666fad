// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzguid.h"

namespace {

const int guidLength = 36;

bool isHexadecimal(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
        || (c >= QLatin1Char('a') && c <= QLatin1Char('f'))
        || (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}

bool hasGuidForm(const QString& text)
{
    if (text.size() != guidLength)
        return false;
    for (int i = 0; i < guidLength; ++i) {
        const bool isDash = i == 8 || i == 13 || i == 18 || i == 23;
        if (isDash ? text.at(i) != QLatin1Char('-') : !isHexadecimal(text.at(i)))
            return false;
    }
    return true;
}

} // namespace

DzGuid DzGuid::fromString(const QString& text)
{
    const bool inBraces = text.size() == guidLength + 2 && text.startsWith(QLatin1Char('{'))
        && text.endsWith(QLatin1Char('}'));
    const QString digits = inBraces ? text.mid(1, guidLength) : text;
    DzGuid guid;
    if (hasGuidForm(digits))
        guid.m_text = digits;
    return guid;
}

bool DzGuid::operator==(const DzGuid& other) const
{
    return m_text.compare(other.m_text, Qt::CaseInsensitive) == 0;
}
