// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FileNames.h"

#include <algorithm>

namespace {

/// Bytes of a name before number and extension; file systems allow 255 in all.
const int longestName = 200;

bool isAllowed(QChar c)
{
    return c.category() != QChar::Other_Control && !QStringLiteral("/\\:*?\"<>|").contains(c);
}

QString cleaned(const QString& text)
{
    QString name = text.left(longestName);
    for (QChar& c : name)
        if (!isAllowed(c))
            c = QLatin1Char('_');
    name = name.trimmed();
    // A leading dot hides the file, a trailing one is lost on some systems.
    while (name.startsWith(QLatin1Char('.')))
        name[0] = QLatin1Char('_');
    while (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    while (name.toUtf8().size() > longestName)
        name.chop(name.at(name.size() - 1).isLowSurrogate() ? 2 : 1);
    return name.isEmpty() ? QStringLiteral("surface") : name;
}

} // namespace

QString FileNames::nameFor(const QString& text)
{
    const QString base = cleaned(text);
    QString name = base;
    int& number = m_lastNumber[base.toCaseFolded()];
    while (m_taken.contains(name.toCaseFolded()))
        name = QStringLiteral("%1 (%2)").arg(base, QString::number(++number + 1));
    m_taken.insert(name.toCaseFolded());
    return name + QLatin1Char('.') + m_extension;
}
