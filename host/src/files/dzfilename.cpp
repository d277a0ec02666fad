// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfilename.h"

#include <QTextCodec>

namespace {

/// Characters of a name that are shown.
const int longestName = 120;

/// Byte 0x80 as a single surrogate; the others up to 0xff follow.
const ushort firstByte = 0xdc80;
const ushort lastByte = 0xdcff;

bool isByte(QChar c)
{
    return c.unicode() >= firstByte && c.unicode() <= lastByte;
}

/// Length of the UTF-8 sequence at `at`, 0 when there is none.
int sequenceLength(const char* at, const char* end)
{
    const auto byte = [&](int i) { return static_cast<uchar>(at[i]); };
    if (byte(0) < 0x80)
        return 1;
    const int length = byte(0) >= 0xc2 && byte(0) <= 0xdf ? 2
        : (byte(0) & 0xf0) == 0xe0                        ? 3
        : byte(0) >= 0xf0 && byte(0) <= 0xf4              ? 4
                                                          : 0;
    if (length == 0 || end - at < length)
        return 0;
    for (int i = 1; i < length; ++i)
        if ((byte(i) & 0xc0) != 0x80)
            return 0;
    // Longer than needed, surrogates, and beyond the last character.
    const bool isBad = (byte(0) == 0xe0 && byte(1) < 0xa0) || (byte(0) == 0xed && byte(1) > 0x9f)
        || (byte(0) == 0xf0 && byte(1) < 0x90) || (byte(0) == 0xf4 && byte(1) > 0x8f);
    return isBad ? 0 : length;
}

/// UTF-8 that loses no byte.
class ByteNameCodec : public QTextCodec
{
public:
    QByteArray name() const override { return "file-names"; }
    // Numbers from 2000 on belong to nobody's list of encodings; this one is any of them.
    int mibEnum() const override { return 71806; }

protected:
    QString convertToUnicode(const char* chars, int length, ConverterState*) const override
    {
        QString text;
        text.reserve(length);
        const char* const end = chars + length;
        const char* done = chars;
        const auto takeUpTo = [&](const char* at) {
            text += QString::fromUtf8(done, static_cast<int>(at - done));
            done = at;
        };
        for (const char* at = chars; at < end;) {
            const int sequence = sequenceLength(at, end);
            if (sequence > 0) {
                at += sequence;
                continue;
            }
            takeUpTo(at);
            text += QChar(static_cast<ushort>(0xdc00 + static_cast<uchar>(*at)));
            done = ++at;
        }
        takeUpTo(end);
        return text;
    }

    QByteArray convertFromUnicode(
        const QChar* characters, int length, ConverterState*) const override
    {
        QByteArray bytes;
        const QChar* const end = characters + length;
        const QChar* done = characters;
        const auto takeUpTo = [&](const QChar* at) {
            bytes += QString::fromRawData(done, static_cast<int>(at - done)).toUtf8();
            done = at;
        };
        for (const QChar* at = characters; at < end; ++at) {
            const bool isPaired = at > characters && at[-1].isHighSurrogate();
            if (!isByte(*at) || isPaired)
                continue;
            takeUpTo(at);
            bytes += static_cast<char>(at->unicode() - 0xdc00);
            done = at + 1;
        }
        takeUpTo(end);
        return bytes;
    }
};

/// True for characters that move the cursor, turn the writing or stand for nothing.
bool isUnshowable(QChar c)
{
    const ushort code = c.unicode();
    const bool turnsWriting = code == 0x061c || (code >= 0x200e && code <= 0x200f)
        || (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
    return c.category() == QChar::Other_Control || turnsWriting || code == 0x2028 || code == 0x2029;
}

QString escaped(QChar c)
{
    switch (c.unicode()) {
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        break;
    }
    const uint code = isByte(c) ? c.unicode() - 0xdc00u : c.unicode();
    const bool isShort = code < 0x100;
    return QStringLiteral("\\%1%2")
        .arg(QLatin1Char(isShort ? 'x' : 'u'))
        .arg(code, isShort ? 2 : 4, 16, QLatin1Char('0'));
}

} // namespace

void dzUseByteFileNames()
{
    // Qt owns it.
    static QTextCodec* const codec = new ByteNameCodec;
    QTextCodec::setCodecForLocale(codec);
}

QString dzShownText(const QString& text)
{
    QString shown;
    shown.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool isPaired
            = (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            || (c.isLowSurrogate() && i > 0 && text.at(i - 1).isHighSurrogate());
        if (isUnshowable(c) || (c.isSurrogate() && !isPaired))
            shown += escaped(c);
        else
            shown += c;
    }
    return shown;
}

QString dzShownName(const QString& name)
{
    if (name.size() <= longestName)
        return dzShownText(name);
    int length = longestName - 3;
    if (name.at(length - 1).isHighSurrogate())
        --length;
    return dzShownText(name.left(length)) + QStringLiteral("...");
}
