// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "jsonindex.h"

#include "jsontext.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using Json = nlohmann::json;

/// Containers that may be open at once. The host's own files have some twenty, a stored network in
/// one has up to 256 more; functions that call themselves once a level have room for far more.
const std::size_t deepestNesting = 512;

bool separatesTokens(char c)
{
    return isJsonBlank(c) || c == ',' || c == ':';
}

double numberAt(const char* begin, const char* end)
{
    double number = 0;
    std::from_chars(begin, end, number);
    return number;
}

} // namespace

/// Receives the parser's events and notes the places. The names are the parser's.
class JsonIndexBuilder
{
public:
    JsonIndexBuilder(JsonIndex* index, const char* text, const char* begin, const char* end)
        : m_entries(index->m_entries)
        , m_text(text)
        , m_end(end)
        , m_seen(begin)
        , m_last(begin)
        , m_begin(begin)
    {
    }

    bool build()
    {
        return Json::sax_parse(
            CountingIterator(m_begin, &m_seen), CountingIterator(m_end, &m_seen), this);
    }
    QString error() const { return m_error; }

    bool null() { return addWord(JsonIndex::Null); }
    bool boolean(bool) { return addWord(JsonIndex::Boolean); }
    bool number_integer(Json::number_integer_t) { return addWord(JsonIndex::Number); }
    bool number_unsigned(Json::number_unsigned_t) { return addWord(JsonIndex::Number); }
    bool number_float(Json::number_float_t, const Json::string_t&)
    {
        return addWord(JsonIndex::Number);
    }
    bool string(const Json::string_t&) { return add(JsonIndex::String, nextToken(), m_seen); }
    bool binary(const Json::binary_t&) { return false; } // never in a text

    bool start_object(std::size_t) { return open(JsonIndex::Object); }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(JsonIndex::Array); }
    bool end_array() { return close(); }
    bool key(const Json::string_t&)
    {
        m_key = offset(nextToken());
        m_last = m_seen;
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& exception)
    {
        const char* place = std::min(m_seen, m_end);
        if (exception.id == jsonNumberOverflow)
            return fail(nextToken(), QStringLiteral("a number is too large"));
        return fail(place > m_begin && place < m_end ? place - 1 : place,
            QStringLiteral("this is not JSON: ") + jsonParserComplaint(exception.what()));
    }

private:
    struct OpenContainer {
        quint32 entry;
        bool onlyNumbers;
    };

    quint32 offset(const char* place) const { return static_cast<quint32>(place - m_text); }
    const char* nextToken() const { return std::find_if_not(m_last, m_end, separatesTokens); }
    bool fail(const char* place, const QString& cause)
    {
        m_error = jsonPlaceText(m_begin, place) + QStringLiteral(": ") + cause;
        return false;
    }
    /// A number or word: the parser may have looked one character further.
    bool addWord(JsonIndex::Kind kind)
    {
        const char* begin = nextToken();
        return add(kind, begin, std::find_if_not(begin, m_end, isJsonWordCharacter));
    }
    bool add(JsonIndex::Kind kind, const char* begin, const char* end)
    {
        if (m_open.empty() && kind != JsonIndex::Object)
            return fail(begin, QStringLiteral("the outermost value is not an object"));
        if (!m_open.empty() && kind != JsonIndex::Number)
            m_open.back().onlyNumbers = false;
        m_entries.push_back({ offset(begin), offset(end), m_key,
            static_cast<quint32>(m_entries.size() + 1), kind });
        m_key = 0;
        m_last = end;
        return true;
    }
    bool open(JsonIndex::Kind kind)
    {
        if (m_open.size() == deepestNesting)
            return fail(
                m_seen - 1, QStringLiteral("more than %1 levels of nesting").arg(deepestNesting));
        const quint32 entry = static_cast<quint32>(m_entries.size());
        if (!add(kind, m_seen - 1, m_seen))
            return false;
        m_open.push_back({ entry, kind == JsonIndex::Array });
        return true;
    }
    bool close()
    {
        const OpenContainer container = m_open.back();
        m_open.pop_back();
        // Meshes are mostly short arrays of numbers: those are kept as text only.
        if (container.onlyNumbers && m_entries.size() > container.entry + 1) {
            m_entries.resize(container.entry + 1);
            m_entries.back().kind = JsonIndex::NumberArray;
        }
        m_entries[container.entry].end = offset(m_seen);
        m_entries[container.entry].next = static_cast<quint32>(m_entries.size());
        m_last = m_seen;
        return true;
    }

    decltype(JsonIndex::m_entries)& m_entries;
    const char* m_text;
    const char* m_end;
    const char* m_seen; ///< end of what the parser has taken
    const char* m_last; ///< end of the last token
    const char* m_begin;
    quint32 m_key = 0;
    std::vector<OpenContainer> m_open;
    QString m_error;
};

bool JsonIndex::build(const QByteArray& text, QString* error)
{
    m_text = text;
    m_entries.clear();
    const char* begin = jsonTextBegin(m_text, error);
    if (!begin)
        return false;
    const char* end = m_text.constData() + m_text.size();
    JsonIndexBuilder builder(this, m_text.constData(), begin, end);
    if (builder.build())
        return true;
    *error = builder.error();
    m_entries.clear();
    return false;
}

int JsonIndex::memberBegin(Value value) const
{
    const Entry& entry = m_entries[value];
    return static_cast<int>(entry.key ? entry.key : entry.begin);
}

JsonIndex::Value JsonIndex::firstChild(Value parent) const
{
    return parent != none && m_entries[parent].next > parent + 1 ? parent + 1 : none;
}

JsonIndex::Value JsonIndex::nextSibling(Value child, Value parent) const
{
    const quint32 next = m_entries[child].next;
    return next < m_entries[parent].next ? next : none;
}

int JsonIndex::countChildren(Value parent) const
{
    int count = 0;
    for (Value child = firstChild(parent); child != none; child = nextSibling(child, parent))
        ++count;
    return count;
}

JsonIndex::Value JsonIndex::find(Value object, const char* key) const
{
    if (!isObject(object))
        return none;
    for (Value child = firstChild(object); child != none; child = nextSibling(child, object))
        if (hasKey(child, key))
            return child;
    return none;
}

bool JsonIndex::hasKey(Value member, const char* key) const
{
    if (member == none || m_entries[member].key == 0)
        return false;
    const char* at = m_text.constData() + m_entries[member].key + 1;
    const std::size_t length = std::strlen(key);
    const char* textEnd = m_text.constData() + m_text.size();
    return static_cast<std::size_t>(textEnd - at) > length && std::memcmp(at, key, length) == 0
        && at[length] == '"';
}

QString JsonIndex::key(Value member) const
{
    if (member == none || m_entries[member].key == 0)
        return QString();
    const quint32 begin = m_entries[member].key;
    const char* at = m_text.constData() + begin + 1;
    while (*at != '"')
        at += *at == '\\' ? 2 : 1;
    return stringAt(begin, static_cast<quint32>(at + 1 - m_text.constData()));
}

QString JsonIndex::string(Value value) const
{
    if (!isString(value))
        return QString();
    return stringAt(m_entries[value].begin, m_entries[value].end);
}

QString JsonIndex::stringAt(quint32 begin, quint32 end) const
{
    const char* first = m_text.constData() + begin + 1;
    const char* last = m_text.constData() + end - 1;
    if (std::find(first, last, '\\') == last)
        return QString::fromUtf8(first, static_cast<int>(last - first));
    const Json decoded = Json::parse(first - 1, last + 1, nullptr, false);
    return decoded.is_string() ? QString::fromStdString(decoded.get<std::string>()) : QString();
}

double JsonIndex::number(Value value) const
{
    if (!isNumber(value))
        return 0;
    return numberAt(m_text.constData() + begin(value), m_text.constData() + end(value));
}

bool JsonIndex::boolean(Value value) const
{
    return kind(value) == Boolean && m_text.at(begin(value)) == 't';
}

int JsonIndex::numbers(Value value, double* numbers, int size) const
{
    if (kind(value) != NumberArray)
        return 0;
    int count = 0;
    const char* last = m_text.constData() + end(value) - 1;
    for (const char* at = m_text.constData() + begin(value) + 1; at < last;) {
        const char* first = std::find_if(at, last, isJsonWordCharacter);
        if (first == last)
            break;
        at = std::find_if_not(first, last, isJsonWordCharacter);
        if (count < size)
            numbers[count] = numberAt(first, at);
        ++count;
    }
    return count;
}

QByteArray JsonIndex::raw(Value value) const
{
    return value == none ? QByteArray() : m_text.mid(begin(value), end(value) - begin(value));
}

QString JsonIndex::place(Value value) const
{
    return jsonPlaceText(
        m_text.constData(), m_text.constData() + (value == none ? 0 : begin(value)));
}
