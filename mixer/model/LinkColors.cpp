// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LinkColors.h"

#include <QHash>

namespace {

struct NamedColor {
    const char* word;
    QRgb color;
};

// Far enough apart on a light and on a dark canvas, for readers with red-green weakness too.
const NamedColor namedColors[] = {
    { "float", 0xff8593a1 },
    { "color", 0xffe0b83c },
    { "point", 0xff8f7ee6 },
    { "vector", 0xff6a86ec },
    { "normal", 0xff5fb4ec },
    { "matrix", 0xffb0764f },
    { "string", 0xff6fb0a0 },
    { "boolean", 0xffd08a78 },
    { "integer", 0xff7d9a68 },
    { "material", 0xff4fae5b },
    { "volume", 0xff38a8b8 },
};

const QRgb otherColors[] = { 0xffd7609b, 0xffb06fd0, 0xffe07f3f, 0xff3f97d7, 0xff9bb53a, 0xffd0555a,
    0xff52a08c, 0xff7f6fd8 };

/// The same number for the same text in every run and on every machine (FNV-1a): qHash() is seeded
/// anew each time, and wires would change their colours from one start to the next.
quint32 stableHash(const QString& text)
{
    quint32 hash = 2166136261u;
    for (const QChar letter : text) {
        hash ^= letter.unicode();
        hash *= 16777619u;
    }
    return hash ^ (hash >> 15);
}

QColor findColor(QString typeText)
{
    // A list looks like its elements.
    if (typeText.endsWith(QLatin1String("[]")))
        typeText.chop(2);
    // Modules may put words of their own before the kind.
    for (const NamedColor& named : namedColors)
        if (typeText.endsWith(QLatin1String(named.word), Qt::CaseInsensitive))
            return QColor(named.color);
    const quint32 count = sizeof otherColors / sizeof otherColors[0];
    return QColor(otherColors[stableHash(typeText) % count]);
}

} // namespace

QColor linkColor(const QString& typeText)
{
    static QHash<QString, QColor> known;
    const auto found = known.constFind(typeText);
    return found != known.constEnd() ? *found : *known.insert(typeText, findColor(typeText));
}
