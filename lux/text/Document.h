// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lexer.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace lux {

class Document;

/// Where something stands, counted from 1; a column is a character. The byte counts from 0.
struct Place {
    int line = 1;
    int column = 1;
    std::uint32_t byte = 0;
};

/// What the renderer says of a text that it cannot read as written.
enum class ErrorKind : std::uint8_t {
    UnknownWord,      ///< letters where a statement begins that are no keyword
    Unexpected,       ///< something that cannot stand here
    Unfinished,       ///< the text ends in the middle of a statement or string
    EmptyArray,       ///< brackets without a value
    MixedArray,       ///< strings and numbers in one array
    LooseParameters,  ///< parameters without a statement
    IllegalCharacter, ///< skipped
    LineEndInString,  ///< left out of the string
    StringTooLong,    ///< cut
    Include,          ///< an included file cannot be read
};

/// True if the renderer refuses a scene with this error, false if it reads on.
bool isFatal(ErrorKind kind);

struct TextError {
    ErrorKind kind = ErrorKind::Unexpected;
    Span span;
    QString detail; ///< of an Include: file, cause and what to do
};

/// A string or a number.
class Value
{
public:
    Value(const Document* document, const Token& token)
        : m_document(document)
        , m_span(token.span)
        , m_isString(token.kind == TokenKind::String)
    {
    }

    bool isString() const { return m_isString; }
    Span span() const { return m_span; }
    /// As it stands in the text, quotes included.
    std::string_view source() const;
    /// The content of a string; a number as it stands in the text.
    std::string text() const;
    /// The number; 0 for a string.
    double number() const;

private:
    const Document* m_document;
    Span m_span;
    bool m_isString;
};

/// Values one after the other. They are found anew each time: a text has millions.
class ValueRange
{
public:
    class Iterator
    {
    public:
        Iterator(const Document* document, Span span);
        Value operator*() const { return Value(m_document, m_token); }
        Iterator& operator++();
        bool operator!=(const Iterator& other) const
        {
            return m_token.span.begin != other.m_token.span.begin;
        }

    private:
        void advance();

        const Document* m_document;
        Lexer m_lexer;
        Token m_token;
        std::uint32_t m_end;
    };

    ValueRange(const Document* document, Span span)
        : m_document(document)
        , m_span(span)
    {
    }

    Iterator begin() const { return Iterator(m_document, m_span); }
    Iterator end() const { return Iterator(m_document, { m_span.end, m_span.end }); }

private:
    const Document* m_document;
    Span m_span;
};

/// The words that a parameter's type can be.
enum class ParameterType : std::uint8_t {
    Unknown,
    Float,
    Integer,
    Bool,
    Point,
    Vector,
    Normal,
    String,
    Texture,
    Color,
};

/// The renderer's word for a type; empty for Unknown.
std::string_view typeWord(ParameterType type);

/// A parameter: its quoted type and name, and its values.
class Parameter
{
public:
    Parameter(const Document* document, std::uint32_t index)
        : m_document(document)
        , m_index(index)
    {
    }

    ParameterType type() const;
    /// What stands for the type, also where the renderer does not know it.
    std::string typeText() const;
    std::string name() const;

    /// From the first quote to the last value or bracket.
    Span span() const;
    /// The quoted type and name.
    Span declarationSpan() const;
    /// The name within the quotes; the whole declaration if that holds escapes.
    Span nameSpan() const;
    /// From the bracket or value that follows the declaration.
    Span valueSpan() const;
    bool hasBrackets() const;

    int valueCount() const;
    ValueRange values() const;
    /// The first value's content; empty without one.
    std::string text() const;
    /// All numbers; strings are left out.
    std::vector<double> numbers() const;

private:
    const Document* m_document;
    std::uint32_t m_index;
};

/// A keyword with what follows it.
class Statement
{
public:
    Statement(const Document* document, std::uint32_t index)
        : m_document(document)
        , m_index(index)
    {
    }

    const Document* document() const { return m_document; }
    std::uint32_t index() const { return m_index; }
    Keyword keyword() const;
    /// False if an error cut it short: what was read before that is there.
    bool isWhole() const;

    Span span() const;
    Span keywordSpan() const;

    /// What stands between the keyword and the parameters: names, type words, numbers.
    ValueRange head() const;
    /// The content of the string at this place of the head; empty without one.
    std::string headText(int place) const;
    /// Its span; an empty one behind the keyword without one.
    Span headSpan(int place) const;

    int parameterCount() const;
    Parameter parameter(int place) const;
    /// The last parameter of this name; -1 without one.
    int findParameter(std::string_view name) const;
    /// The word for the kind of thing: of a texture the third string, of a volume the second, of a
    /// named material its parameter "type", else the first string.
    std::string typeText() const;
    Span typeSpan() const;

private:
    const Document* m_document;
    std::uint32_t m_index;
};

struct ReadOptions {
    /// Parameters without a statement are a statement of their own, not an error: the text of a
    /// shape's settings alone is read so.
    bool acceptsLooseParameters = false;
};

/// A text in the renderer's language, read once and then constant: statements, their parameters and
/// values with their places, and what is wrong with it. It keeps the text and, for each statement
/// and parameter, where it stands.
class Document
{
public:
    /// As many errors are kept; the rest is counted.
    static constexpr int maximumErrors = 1000;

    Document() = default;
    explicit Document(const QByteArray& text, const ReadOptions& options = ReadOptions());

    /// Reads a file. On failure false, with file, cause and what to do in `error`.
    static bool readFile(
        const QString& path, const ReadOptions& options, Document* document, QString* error);

    const QByteArray& text() const { return m_text; }
    std::string_view view() const
    {
        return { m_text.constData(), static_cast<std::size_t>(m_text.size()) };
    }
    std::string_view view(Span span) const { return view().substr(span.begin, span.size()); }

    int statementCount() const { return static_cast<int>(m_statements.size()); }
    Statement statement(int place) const
    {
        return Statement(this, static_cast<std::uint32_t>(place));
    }

    const std::vector<TextError>& errors() const { return m_errors; }
    /// How many there were, kept or not.
    int errorCount() const { return m_errorCount; }
    /// One sentence: what is wrong and what to do.
    QString message(const TextError& error) const;

    /// The text, put together from its statements, their parameters and what stands between them.
    QByteArray write() const;

    /// Bytes that it holds, the text included.
    std::size_t memoryUsed() const;

private:
    friend class Parameter;
    friend class PlaceFinder;
    friend class SceneText;
    friend class Statement;
    friend class StatementReader;

    struct StatementRecord {
        Span span;
        std::uint32_t headEnd; // where the head's last value ends
        std::uint32_t firstParameter;
        Keyword keyword;
        bool isWhole;
    };
    struct ParameterRecord {
        Span span;
        std::uint32_t valueCount;
    };

    void addError(const TextError& error);
    Span headRange(const StatementRecord& record) const;
    std::uint32_t parametersEnd(std::uint32_t statement) const;

    QByteArray m_text;
    std::vector<StatementRecord> m_statements;
    std::vector<ParameterRecord> m_parameters;
    std::vector<std::uint32_t> m_lines; // where each begins
    std::vector<TextError> m_errors;
    int m_errorCount = 0;
};

/// Finds lines and columns. Asked for places in the text's order, it walks each line once.
class PlaceFinder
{
public:
    explicit PlaceFinder(const Document& document)
        : m_document(document)
    {
    }

    Place at(std::uint32_t byte);

private:
    const Document& m_document;
    Place m_last;
};

} // namespace lux
