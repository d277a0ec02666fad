// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <iterator>
#include <string>

// What the readers of JSON texts share: where a reader is, and how they tell what is wrong.

/// Walks over the text and lets the reader's owner see how far it is.
class CountingIterator
{
public:
    typedef std::input_iterator_tag iterator_category;
    typedef char value_type;
    typedef std::ptrdiff_t difference_type;
    typedef const char* pointer;
    typedef const char& reference;

    CountingIterator(const char* position, const char** seen)
        : m_position(position)
        , m_seen(seen)
    {
    }

    reference operator*() const { return *m_position; }
    CountingIterator& operator++()
    {
        *m_seen = ++m_position;
        return *this;
    }
    CountingIterator operator++(int)
    {
        const CountingIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountingIterator& other) const { return m_position == other.m_position; }
    bool operator!=(const CountingIterator& other) const { return m_position != other.m_position; }

private:
    const char* m_position;
    const char** m_seen;
};

inline bool isJsonBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// True for what numbers, true, false and null are made of.
inline bool isJsonWordCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '+'
        || c == '-' || c == '.';
}

/// A JSON string with its quotes.
QByteArray jsonStringToken(const QString& text);

/// "line 3, column 7" of a place in the text; columns count characters, not bytes.
QString jsonPlaceText(const char* text, const char* place);

/// What the parser has against the text, without its own numbers and without the text itself,
/// which may be long or not even be UTF-8.
QString jsonParserComplaint(const std::string& message);

/// The parser's number for a number that no double holds.
const int jsonNumberOverflow = 406;

/// Where the text begins behind its byte order mark. Null, with the cause in `error`, when the
/// text holds something that the parser itself would not complain about.
const char* jsonTextBegin(const QByteArray& text, QString* error);
