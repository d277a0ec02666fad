// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Lexer.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace lux {

namespace {

constexpr bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

std::uint32_t skipDigits(std::string_view text, std::uint32_t position)
{
    while (position < text.size() && isDigit(text[position]))
        ++position;
    return position;
}

/// The end of the number that begins here; its own begin when none does.
std::uint32_t numberEnd(std::string_view text, std::uint32_t begin)
{
    std::uint32_t position = begin;
    if (text[position] == '-' || text[position] == '+')
        ++position;
    const std::uint32_t whole = position;
    position = skipDigits(text, position);
    bool hasDigits = position > whole;
    if (position < text.size() && text[position] == '.') {
        const std::uint32_t end = skipDigits(text, position + 1);
        hasDigits = hasDigits || end > position + 1;
        position = end;
    }
    if (!hasDigits)
        return begin;
    if (position < text.size() && (text[position] == 'e' || text[position] == 'E')) {
        std::uint32_t digits = position + 1;
        if (digits < text.size() && (text[digits] == '-' || text[digits] == '+'))
            ++digits;
        const std::uint32_t end = skipDigits(text, digits);
        if (end > digits)
            position = end;
    }
    return position;
}

/// True when a token or a blank may begin here.
bool beginsSomething(std::string_view text, std::uint32_t position)
{
    const char c = text[position];
    return isBlank(c) || isLetter(c) || c == '"' || c == '[' || c == ']' || c == '#'
        || numberEnd(text, position) != position;
}

} // namespace

Token Lexer::next()
{
    while (m_position < m_text.size() && isBlank(m_text[m_position]))
        ++m_position;
    Token token;
    token.span = { m_position, m_position };
    if (m_position >= m_text.size())
        return token;

    const char first = m_text[m_position];
    if (first == '"') {
        scanString(&token);
    } else if (first == '[' || first == ']') {
        token.kind = first == '[' ? TokenKind::Open : TokenKind::Close;
        ++m_position;
    } else if (first == '#') {
        token.kind = TokenKind::Comment;
        const std::size_t end = m_text.find('\n', m_position);
        m_position = static_cast<std::uint32_t>(end == m_text.npos ? m_text.size() : end);
    } else if (isLetter(first)) {
        while (m_position < m_text.size()
            && (isLetter(m_text[m_position]) || isDigit(m_text[m_position])))
            ++m_position;
        const std::string_view word
            = m_text.substr(token.span.begin, m_position - token.span.begin);
        token.kind = findKeyword(word, &token.keyword) ? TokenKind::Keyword : TokenKind::Word;
    } else {
        m_position = numberEnd(m_text, m_position);
        token.kind = TokenKind::Number;
        if (m_position == token.span.begin) {
            token.kind = TokenKind::Illegal;
            scanIllegal();
        }
    }
    token.span.end = m_position;
    return token;
}

void Lexer::scanString(Token* token)
{
    token->kind = TokenKind::String;
    token->isClosed = false;
    ++m_position;
    while (m_position < m_text.size()) {
        const char c = m_text[m_position++];
        if (c == '"') {
            token->isClosed = true;
            return;
        }
        if (c == '\n')
            token->hasLineEnd = true;
        else if (c == '\\' && m_position < m_text.size())
            ++m_position;
    }
}

void Lexer::scanIllegal()
{
    do
        ++m_position;
    while (m_position < m_text.size() && !beginsSomething(m_text, m_position));
}

namespace {

char unescaped(char c)
{
    switch (c) {
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    default:
        return c;
    }
}

/// Collects what fits.
class Content
{
public:
    void add(char c)
    {
        if (text.size() < maximumStringSize)
            text += c;
        else
            isCut = true;
    }

    std::string text;
    bool isCut = false;
};

} // namespace

std::string stringContent(std::string_view token, bool* isCut)
{
    if (!token.empty() && token.front() == '"')
        token.remove_prefix(1);
    // A quote behind an odd number of backslashes is no end; only unclosed strings have one there.
    bool isClosed = !token.empty() && token.back() == '"';
    if (isClosed) {
        const std::size_t before = token.find_last_not_of('\\', token.size() - 2);
        const std::size_t first = before == token.npos ? 0 : before + 1;
        isClosed = token.size() < 2 || (token.size() - 1 - first) % 2 == 0;
    }
    if (isClosed)
        token.remove_suffix(1);
    if (isCut)
        *isCut = false;
    if (token.size() <= maximumStringSize && !std::memchr(token.data(), '\\', token.size())
        && !std::memchr(token.data(), '\n', token.size()))
        return std::string(token);

    Content content;
    for (std::size_t i = 0; i < token.size(); ++i) {
        if (token[i] == '\n')
            continue;
        if (token[i] != '\\' || i + 1 == token.size()) {
            content.add(token[i]);
            continue;
        }
        ++i;
        if (token[i] == '\n')
            continue;
        if (i + 2 < token.size() && isDigit(token[i]) && isDigit(token[i + 1])
            && isDigit(token[i + 2])) {
            // Three digits are the number of a byte, and decimal: \065 is A.
            const int byte
                = (token[i] - '0') * 100 + (token[i + 1] - '0') * 10 + (token[i + 2] - '0');
            content.add(static_cast<char>(static_cast<unsigned char>(byte % 256)));
            i += 2;
            continue;
        }
        content.add(unescaped(token[i]));
    }
    if (isCut)
        *isCut = content.isCut;
    return content.text;
}

double numberContent(std::string_view token)
{
    if (!token.empty() && token.front() == '+')
        token.remove_prefix(1);
    double number = 0;
    const auto result = std::from_chars(token.data(), token.data() + token.size(), number);
    if (result.ec != std::errc::result_out_of_range)
        return number;
    // Out of range tells not on which side. A number below 1 has a negative exponent, or begins
    // with so many zeros.
    const std::size_t exponent = token.find_first_of("eE");
    const bool isSmall = exponent == token.npos ? token.find_first_of("123456789") > token.find('.')
                                                : token[exponent + 1] == '-';
    const double size = isSmall ? 0.0 : std::numeric_limits<double>::infinity();
    return token.front() == '-' ? -size : size;
}

} // namespace lux
