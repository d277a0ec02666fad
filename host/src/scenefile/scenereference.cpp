// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenereference.h"

#include <QRegularExpression>

namespace {

/// Value of a hexadecimal digit, -1 for any other character.
int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

QString decodedReference(const QString& reference)
{
    if (!reference.contains(QLatin1Char('%')))
        return reference;
    const QByteArray text = reference.toUtf8();
    QByteArray plain;
    plain.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const bool isEscape = text.at(i) == '%' && i + 2 < text.size()
            && hexDigit(text.at(i + 1)) >= 0 && hexDigit(text.at(i + 2)) >= 0;
        if (isEscape) {
            plain += static_cast<char>(hexDigit(text.at(i + 1)) * 16 + hexDigit(text.at(i + 2)));
            i += 2;
        } else {
            plain += text.at(i);
        }
    }
    return QString::fromUtf8(plain);
}

QString encodedReference(const QString& text)
{
    return QString::fromLatin1(text.toUtf8().toPercentEncoding(QByteArray(), "~"));
}

QString imageReference(const QString& filename)
{
    static const QRegularExpression drive(QStringLiteral("^[A-Za-z]:[/\\\\]"));
    const QString path = drive.match(filename).hasMatch() ? QLatin1Char('/') + filename : filename;
    return QString::fromLatin1(path.toUtf8().toPercentEncoding("/", "~"));
}

QString imageFilename(const QString& reference)
{
    static const QRegularExpression drive(QStringLiteral("^/[A-Za-z]:[/\\\\]"));
    const QString path = decodedReference(reference);
    return drive.match(path).hasMatch() ? path.mid(1) : path;
}

bool isLocalReference(const QString& reference)
{
    return reference.startsWith(QLatin1Char('#'));
}

QString referencedId(const QString& reference)
{
    const int hash = reference.indexOf(QLatin1Char('#'));
    if (hash < 0)
        return QString();
    return decodedReference(reference.mid(hash + 1).section(QLatin1Char('?'), 0, 0));
}
