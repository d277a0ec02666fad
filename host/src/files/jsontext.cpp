// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "jsontext.h"

#include <algorithm>
#include <nlohmann/json.hpp>

QByteArray jsonStringToken(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    const auto needsEscape
        = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\'; };
    if (std::none_of(utf8.begin(), utf8.end(), needsEscape))
        return '"' + utf8 + '"';
    const nlohmann::json value(utf8.toStdString());
    return QByteArray::fromStdString(
        value.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace));
}

QString jsonPlaceText(const char* text, const char* place)
{
    const auto line = std::count(text, place, '\n') + 1;
    const char* lineBegin = place;
    while (lineBegin > text && lineBegin[-1] != '\n')
        --lineBegin;
    const auto column = std::count_if(
        lineBegin, place, [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; });
    return QStringLiteral("line %1, column %2").arg(line).arg(column + 1);
}

QString jsonParserComplaint(const std::string& message)
{
    QString complaint = QString::fromUtf8(message.c_str());
    const QString beforeCause = QStringLiteral(" - ");
    const int cause = complaint.indexOf(beforeCause, complaint.indexOf(QLatin1String("syntax")));
    if (cause >= 0)
        complaint.remove(0, cause + beforeCause.size());
    const int lastRead = complaint.indexOf(QLatin1String("; last read: "));
    return lastRead < 0 ? complaint : complaint.left(lastRead);
}

const char* jsonTextBegin(const QByteArray& text, QString* error)
{
    if (text.startsWith("\xff\xfe") || text.startsWith("\xfe\xff")) {
        *error = QStringLiteral("line 1, column 1: the text is UTF-16, not UTF-8");
        return nullptr;
    }
    const char* begin = text.constData();
    const char* end = begin + text.size();
    if (text.startsWith("\xef\xbb\xbf"))
        begin += 3;
    if (std::all_of(begin, end, isJsonBlank)) {
        *error = QStringLiteral("line 1, column 1: the text is empty");
        return nullptr;
    }
    // The parser takes it for the end of the text.
    const char* zero = std::find(begin, end, '\0');
    if (zero != end) {
        *error = jsonPlaceText(begin, zero)
            + QStringLiteral(": this is not JSON: there is a zero byte in the text");
        return nullptr;
    }
    return begin;
}
