// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Keywords.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lux {

/// A part of a text, in bytes; the end is the first byte behind it.
struct Span {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    std::uint32_t size() const { return end - begin; }
    bool operator==(const Span& other) const { return begin == other.begin && end == other.end; }
};

enum class TokenKind : std::uint8_t {
    End,
    Keyword,
    Word, ///< letters that are no keyword, "inf" and "nan" among them
    String,
    Number,
    Open,
    Close,
    Comment, ///< without the line's end
    Illegal, ///< bytes that nothing begins with, and which the renderer skips
};

struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::Loose; ///< of a Keyword
    bool isClosed = true;             ///< of a String: it has its second quote
    bool hasLineEnd = false;          ///< of a String: a line ends in it without a backslash
    Span span;
};

/// Cuts a text into tokens by the renderer's rules. Blanks, tabs and line ends part tokens and are
/// none themselves.
class Lexer
{
public:
    /// The text must live as long as the lexer and be at most 2 GB.
    explicit Lexer(std::string_view text, std::uint32_t position = 0)
        : m_text(text)
        , m_position(position)
    {
    }

    Token next();

private:
    void scanString(Token* token);
    void scanIllegal();

    std::string_view m_text;
    std::uint32_t m_position;
};

/// How many bytes of a string the renderer keeps; longer ones it cuts.
constexpr std::size_t maximumStringSize = 1023;

/// What a String token, quotes included, says: escapes are resolved, bytes beyond the maximum cut.
/// `isCut`, if given, tells whether that was so.
std::string stringContent(std::string_view token, bool* isCut = nullptr);

/// What a Number token says. What is too large becomes infinite, what is too small 0.
double numberContent(std::string_view token);

} // namespace lux
