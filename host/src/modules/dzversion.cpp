// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzversion.h"

#include <QStringList>
#include <algorithm>

namespace {

/// Stricter than QString's conversion, which takes signs and blanks.
bool isPlainNumber(const QString& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

} // namespace

DzVersion::DzVersion(quint16 major, quint16 minor, quint16 revision, quint16 build)
    : m_number(static_cast<quint64>(major) << 48 | static_cast<quint64>(minor) << 32
        | static_cast<quint64>(revision) << 16 | build)
{
}

DzVersion DzVersion::fromString(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() > 4)
        return DzVersion();
    quint16 numbers[4] = { 0, 0, 0, 0 };
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = isPlainNumber(parts.at(i));
        numbers[i] = ok ? parts.at(i).toUShort(&ok) : quint16(0);
        if (!ok)
            return DzVersion();
    }
    return DzVersion(numbers[0], numbers[1], numbers[2], numbers[3]);
}

QString DzVersion::getVersionString() const
{
    return QString::number(getMajorVersion()) + QLatin1Char('.')
        + QString::number(getMinorVersion());
}

QString DzVersion::getLongVersionString() const
{
    return getVersionString() + QLatin1Char('.') + QString::number(getRevisionNumber())
        + QLatin1Char('.') + QString::number(getBuildNumber());
}
