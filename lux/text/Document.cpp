// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Document.h"

#include "StatementReader.h"
#include "dzfilewriter.h"

#include <algorithm>
#include <limits>

namespace lux {

namespace {

constexpr qint64 maximumFileSize = 1024LL * 1024 * 1024;

QString plain(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// A piece of text for a message: one short line.
QString shortened(std::string_view text)
{
    QString line = plain(text.substr(0, 80)).simplified();
    if (line.size() > 40)
        line = line.left(40) + QStringLiteral("…");
    return line;
}

} // namespace

bool isFatal(ErrorKind kind)
{
    return kind != ErrorKind::IllegalCharacter && kind != ErrorKind::LineEndInString
        && kind != ErrorKind::StringTooLong;
}

Document::Document(const QByteArray& text, const ReadOptions& options)
    : m_text(text)
{
    const std::string_view bytes = view();
    m_lines.reserve(1 + static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')));
    m_lines.push_back(0);
    for (std::size_t i = bytes.find('\n'); i != bytes.npos; i = bytes.find('\n', i + 1))
        m_lines.push_back(static_cast<std::uint32_t>(i) + 1);
    StatementReader(this, options).read();
}

bool Document::readFile(
    const QString& path, const ReadOptions& options, Document* document, QString* error)
{
    QByteArray text;
    if (!dzReadFile(path, maximumFileSize, &text, error))
        return false;
    *document = Document(text, options);
    return true;
}

void Document::addError(const TextError& error)
{
    if (m_errorCount < std::numeric_limits<int>::max())
        ++m_errorCount;
    if (m_errors.size() < maximumErrors)
        m_errors.push_back(error);
}

QString Document::message(const TextError& error) const
{
    const QString what = shortened(view(error.span));
    switch (error.kind) {
    case ErrorKind::UnknownWord:
        return QStringLiteral("The renderer does not know the word \"%1\"; correct it or put a # "
                              "before the line.")
            .arg(what);
    case ErrorKind::Unexpected:
        return QStringLiteral(
            "%1 cannot stand here; look for a missing bracket or quote before it.")
            .arg(what);
    case ErrorKind::Unfinished:
        return what.isEmpty()
            ? QStringLiteral("The text ends in the middle of a statement; finish it.")
            : QStringLiteral("The text %1 is never closed; add the second quote.").arg(what);
    case ErrorKind::EmptyArray:
        return QStringLiteral("These brackets are empty; write a value between them.");
    case ErrorKind::MixedArray:
        return QStringLiteral("These brackets hold texts and numbers, %1 among them; use one kind.")
            .arg(what);
    case ErrorKind::LooseParameters:
        return QStringLiteral("%1 belongs to no statement; put these lines below the Shape they "
                              "are meant for.")
            .arg(what);
    case ErrorKind::IllegalCharacter:
        return QStringLiteral("The renderer skips \"%1\", which means nothing to it; remove it "
                              "(numbers have a point, not a comma).")
            .arg(what);
    case ErrorKind::LineEndInString:
        return QStringLiteral("The text %1 runs over the end of its line, which is left out; close "
                              "it on its own line.")
            .arg(what);
    case ErrorKind::StringTooLong:
        return QStringLiteral("The text %1 is longer than %2 bytes and is cut there; shorten it.")
            .arg(what, QString::number(maximumStringSize));
    case ErrorKind::Include:
        return error.detail;
    }
    return QString();
}

QByteArray Document::write() const
{
    QByteArray text;
    text.reserve(m_text.size());
    std::uint32_t written = 0;
    const auto writeUpTo = [&](std::uint32_t end) {
        text.append(m_text.constData() + written, static_cast<int>(end - written));
        written = end;
    };
    for (int i = 0; i < statementCount(); ++i) {
        const Statement part = statement(i);
        writeUpTo(part.span().begin);
        writeUpTo(part.keywordSpan().end);
        for (const Value value : part.head())
            writeUpTo(value.span().end);
        for (int k = 0; k < part.parameterCount(); ++k) {
            const Parameter parameter = part.parameter(k);
            writeUpTo(parameter.span().begin);
            writeUpTo(parameter.declarationSpan().end);
            for (const Value value : parameter.values())
                writeUpTo(value.span().end);
            writeUpTo(parameter.span().end);
        }
        writeUpTo(part.span().end);
    }
    writeUpTo(static_cast<std::uint32_t>(m_text.size()));
    return text;
}

std::size_t Document::memoryUsed() const
{
    return sizeof(*this) + static_cast<std::size_t>(m_text.capacity())
        + m_statements.capacity() * sizeof(StatementRecord)
        + m_parameters.capacity() * sizeof(ParameterRecord)
        + m_lines.capacity() * sizeof(m_lines.front()) + m_errors.capacity() * sizeof(TextError);
}

std::uint32_t Document::parametersEnd(std::uint32_t statement) const
{
    return statement + 1 < m_statements.size() ? m_statements[statement + 1].firstParameter
                                               : static_cast<std::uint32_t>(m_parameters.size());
}

Span Document::headRange(const StatementRecord& record) const
{
    return { record.span.begin + static_cast<std::uint32_t>(formOf(record.keyword).word.size()),
        record.headEnd };
}

// Value

std::string_view Value::source() const
{
    return m_document->view(m_span);
}

std::string Value::text() const
{
    return m_isString ? stringContent(source()) : std::string(source());
}

double Value::number() const
{
    return m_isString ? 0 : numberContent(source());
}

// ValueRange

ValueRange::Iterator::Iterator(const Document* document, Span span)
    : m_document(document)
    , m_lexer(document->view().substr(0, span.end), span.begin)
    , m_end(span.end)
{
    advance();
}

ValueRange::Iterator& ValueRange::Iterator::operator++()
{
    advance();
    return *this;
}

void ValueRange::Iterator::advance()
{
    do
        m_token = m_lexer.next();
    while (m_token.kind != TokenKind::End && m_token.kind != TokenKind::Number
        && m_token.kind != TokenKind::String);
    if (m_token.kind == TokenKind::End)
        m_token.span = { m_end, m_end };
}

// Parameter

namespace {

struct TypeWord {
    std::string_view word;
    ParameterType type;
};

constexpr TypeWord typeWords[] = {
    { "float", ParameterType::Float },
    { "integer", ParameterType::Integer },
    { "bool", ParameterType::Bool },
    { "point", ParameterType::Point },
    { "vector", ParameterType::Vector },
    { "normal", ParameterType::Normal },
    { "string", ParameterType::String },
    { "texture", ParameterType::Texture },
    { "color", ParameterType::Color },
};

constexpr std::string_view blanks = " \t\r\n\v\f";

/// Type and name of a declaration's content: words parted by blanks; the name is all of the rest.
struct Declaration {
    std::string_view type;
    std::string_view name;
};

Declaration split(std::string_view content)
{
    Declaration declaration;
    const std::size_t begin = content.find_first_not_of(blanks);
    if (begin == content.npos)
        return declaration;
    const std::size_t end = std::min(content.find_first_of(blanks, begin), content.size());
    declaration.type = content.substr(begin, end - begin);
    const std::size_t name = content.find_first_not_of(blanks, end);
    if (name != content.npos)
        declaration.name = content.substr(name);
    return declaration;
}

} // namespace

std::string_view typeWord(ParameterType type)
{
    for (const TypeWord& known : typeWords)
        if (known.type == type)
            return known.word;
    return {};
}

ParameterType Parameter::type() const
{
    const std::string text = typeText();
    for (const TypeWord& known : typeWords)
        if (known.word == text)
            return known.type;
    return ParameterType::Unknown;
}

std::string Parameter::typeText() const
{
    return std::string(split(stringContent(m_document->view(declarationSpan()))).type);
}

std::string Parameter::name() const
{
    return std::string(split(stringContent(m_document->view(declarationSpan()))).name);
}

Span Parameter::span() const
{
    return m_document->m_parameters[m_index].span;
}

Span Parameter::declarationSpan() const
{
    return Lexer(m_document->view(), span().begin).next().span;
}

Span Parameter::nameSpan() const
{
    const Span declaration = declarationSpan();
    const std::string_view source = m_document->view(declaration);
    if (source.find('\\') != source.npos)
        return declaration;
    const Declaration parts = split(source.substr(1, source.size() - 2));
    if (parts.name.empty())
        return declaration;
    const auto begin
        = declaration.begin + static_cast<std::uint32_t>(parts.name.data() - source.data());
    return { begin, begin + static_cast<std::uint32_t>(parts.name.size()) };
}

Span Parameter::valueSpan() const
{
    const std::uint32_t end = span().end;
    Lexer lexer(m_document->view().substr(0, end), declarationSpan().end);
    Token token = lexer.next();
    while (token.kind == TokenKind::Comment || token.kind == TokenKind::Illegal)
        token = lexer.next();
    return { token.span.begin, end };
}

bool Parameter::hasBrackets() const
{
    const Span value = valueSpan();
    return value.size() > 0 && m_document->view()[value.begin] == '[';
}

int Parameter::valueCount() const
{
    return static_cast<int>(m_document->m_parameters[m_index].valueCount);
}

ValueRange Parameter::values() const
{
    return ValueRange(m_document, { declarationSpan().end, span().end });
}

std::string Parameter::text() const
{
    return valueCount() ? (*values().begin()).text() : std::string();
}

std::vector<double> Parameter::numbers() const
{
    std::vector<double> numbers;
    for (const Value value : values())
        if (!value.isString())
            numbers.push_back(value.number());
    return numbers;
}

// Statement

Keyword Statement::keyword() const
{
    return m_document->m_statements[m_index].keyword;
}

bool Statement::isWhole() const
{
    return m_document->m_statements[m_index].isWhole;
}

Span Statement::span() const
{
    return m_document->m_statements[m_index].span;
}

Span Statement::keywordSpan() const
{
    const std::uint32_t begin = span().begin;
    return { begin, m_document->headRange(m_document->m_statements[m_index]).begin };
}

ValueRange Statement::head() const
{
    return ValueRange(m_document, m_document->headRange(m_document->m_statements[m_index]));
}

std::string Statement::headText(int place) const
{
    for (const Value value : head())
        if (place-- == 0)
            return value.text();
    return std::string();
}

Span Statement::headSpan(int place) const
{
    for (const Value value : head())
        if (place-- == 0)
            return value.span();
    return { keywordSpan().end, keywordSpan().end };
}

int Statement::parameterCount() const
{
    return static_cast<int>(
        m_document->parametersEnd(m_index) - m_document->m_statements[m_index].firstParameter);
}

Parameter Statement::parameter(int place) const
{
    return Parameter(m_document,
        m_document->m_statements[m_index].firstParameter + static_cast<std::uint32_t>(place));
}

int Statement::findParameter(std::string_view name) const
{
    for (int i = parameterCount() - 1; i >= 0; --i)
        if (parameter(i).name() == name)
            return i;
    return -1;
}

namespace {

int typePlace(Keyword keyword)
{
    return keyword == Keyword::Texture ? 2 : keyword == Keyword::MakeNamedVolume ? 1 : 0;
}

} // namespace

std::string Statement::typeText() const
{
    if (keyword() != Keyword::MakeNamedMaterial)
        return headText(typePlace(keyword()));
    const int type = findParameter("type");
    return type < 0 ? std::string() : parameter(type).text();
}

Span Statement::typeSpan() const
{
    if (keyword() != Keyword::MakeNamedMaterial)
        return headSpan(typePlace(keyword()));
    const int type = findParameter("type");
    return type < 0 ? headSpan(0) : parameter(type).valueSpan();
}

// PlaceFinder

Place PlaceFinder::at(std::uint32_t byte)
{
    const std::string_view text = m_document.view();
    byte = std::min(byte, static_cast<std::uint32_t>(text.size()));
    const std::vector<std::uint32_t>& lines = m_document.m_lines;
    Place place;
    if (!lines.empty()) {
        const auto line = std::upper_bound(lines.begin(), lines.end(), byte) - lines.begin();
        place.line = static_cast<int>(line);
        place.byte = lines[static_cast<std::size_t>(line) - 1];
    }
    if (place.line == m_last.line && m_last.byte <= byte)
        place = m_last;
    for (; place.byte < byte; ++place.byte)
        if ((static_cast<unsigned char>(text[place.byte]) & 0xc0) != 0x80)
            ++place.column;
    m_last = place;
    return place;
}

} // namespace lux
