// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "StatementReader.h"

namespace lux {

StatementReader::StatementReader(Document* document, const ReadOptions& options)
    : m_document(document)
    , m_options(options)
    , m_text(document->view())
    , m_lexer(m_text)
{
}

void StatementReader::read()
{
    advance();
    while (m_token.kind != TokenKind::End) {
        if (m_token.kind == TokenKind::Keyword) {
            readStatement();
        } else if (m_token.kind == TokenKind::String) {
            readLooseParameters();
        } else {
            failHere();
            recover();
        }
    }
}

void StatementReader::advance()
{
    for (;;) {
        m_token = m_lexer.next();
        if (m_token.kind == TokenKind::Illegal)
            addError(ErrorKind::IllegalCharacter, m_token.span);
        else if (m_token.kind != TokenKind::Comment)
            break;
    }
    if (m_token.kind == TokenKind::String)
        checkString();
}

void StatementReader::checkString()
{
    if (!m_token.isClosed) {
        addError(ErrorKind::Unfinished, m_token.span);
        return;
    }
    if (m_token.hasLineEnd)
        addError(ErrorKind::LineEndInString, m_token.span);
    if (m_token.span.size() <= maximumStringSize)
        return;
    bool isCut = false;
    stringContent(m_document->view(m_token.span), &isCut);
    if (isCut)
        addError(ErrorKind::StringTooLong, m_token.span);
}

void StatementReader::addError(ErrorKind kind, Span span)
{
    m_document->addError({ kind, span, QString() });
}

void StatementReader::failHere()
{
    switch (m_token.kind) {
    case TokenKind::End:
        addError(ErrorKind::Unfinished, m_token.span);
        break;
    case TokenKind::String:
        if (m_token.isClosed) // else it was told already
            addError(ErrorKind::Unexpected, m_token.span);
        break;
    case TokenKind::Word:
        addError(ErrorKind::UnknownWord, m_token.span);
        break;
    default:
        addError(ErrorKind::Unexpected, m_token.span);
    }
}

void StatementReader::begin(Keyword keyword)
{
    const auto parameter = static_cast<std::uint32_t>(m_document->m_parameters.size());
    const Span span = { m_token.span.begin, m_token.span.begin };
    m_document->m_statements.push_back({ span, span.end, parameter, keyword, true });
}

/// The current token belongs to the statement.
void StatementReader::accept()
{
    m_document->m_statements.back().span.end = m_token.span.end;
    advance();
}

bool StatementReader::isValue() const
{
    return m_token.kind == TokenKind::Number
        || (m_token.kind == TokenKind::String && m_token.isClosed);
}

void StatementReader::readStatement()
{
    const StatementForm& form = formOf(m_token.keyword);
    begin(m_token.keyword);
    accept();
    const bool hasHead = readHead(form.head);
    auto& statement = m_document->m_statements.back();
    statement.headEnd = statement.span.end;
    if (hasHead && (!form.takesParameters || readParameters()))
        return;
    m_document->m_statements.back().isWhole = false;
    failHere();
    recover();
}

void StatementReader::readLooseParameters()
{
    const Span first = m_token.span;
    begin(Keyword::Loose);
    if (!m_options.acceptsLooseParameters)
        addError(ErrorKind::LooseParameters, first);
    if (readParameters())
        return;
    m_document->m_statements.back().isWhole = false;
    failHere();
    recover();
}

bool StatementReader::readHead(std::string_view form)
{
    for (const char kind : form) {
        if (kind == 'a') {
            if (!readNumberArray())
                return false;
            continue;
        }
        const TokenKind expected = kind == 's' ? TokenKind::String : TokenKind::Number;
        if (m_token.kind != expected || !m_token.isClosed)
            return false;
        accept();
    }
    return true;
}

bool StatementReader::readNumberArray()
{
    if (m_token.kind == TokenKind::Number) {
        accept();
        return true;
    }
    if (m_token.kind != TokenKind::Open)
        return false;
    accept();
    if (m_token.kind != TokenKind::Number)
        return false;
    while (m_token.kind == TokenKind::Number)
        accept();
    if (m_token.kind != TokenKind::Close)
        return false;
    accept();
    return true;
}

bool StatementReader::readParameters()
{
    while (m_token.kind == TokenKind::String && m_token.isClosed)
        if (!readParameter())
            return false;
    return m_token.kind == TokenKind::Keyword || m_token.kind == TokenKind::End;
}

bool StatementReader::readParameter()
{
    Document::ParameterRecord parameter { m_token.span, 0 };
    accept();
    bool isWhole = true;
    if (isValue()) {
        parameter.valueCount = 1;
        parameter.span.end = m_token.span.end;
        accept();
    } else {
        isWhole = m_token.kind == TokenKind::Open && readArray(&parameter);
    }
    m_document->m_parameters.push_back(parameter);
    return isWhole;
}

bool StatementReader::readArray(Document::ParameterRecord* parameter)
{
    const Span open = m_token.span;
    parameter->span.end = open.end;
    accept();
    const TokenKind kind = m_token.kind;
    bool isMixed = false;
    for (; isValue(); accept()) {
        parameter->span.end = m_token.span.end;
        ++parameter->valueCount;
        if (m_token.kind != kind && !isMixed) {
            addError(ErrorKind::MixedArray, m_token.span);
            isMixed = true;
        }
    }
    if (m_token.kind != TokenKind::Close)
        return false;
    if (parameter->valueCount == 0)
        addError(ErrorKind::EmptyArray, { open.begin, m_token.span.end });
    parameter->span.end = m_token.span.end;
    accept();
    return true;
}

/// Where a line within a span begins with a keyword; the span's end when none does.
static std::uint32_t lineOfKeyword(std::string_view text, Span span)
{
    for (;;) {
        const std::size_t lineEnd = text.find('\n', span.begin);
        if (lineEnd >= span.end)
            return span.end;
        const Token token = Lexer(text, static_cast<std::uint32_t>(lineEnd)).next();
        if (token.kind == TokenKind::Keyword && token.span.begin < span.end)
            return token.span.begin;
        span.begin = static_cast<std::uint32_t>(lineEnd) + 1;
    }
}

void StatementReader::recover()
{
    while (m_token.kind != TokenKind::End && m_token.kind != TokenKind::Keyword) {
        std::uint32_t next = m_token.span.end;
        // After a missing quote the text between two strings is taken for a string.
        if (m_token.kind == TokenKind::String && m_token.hasLineEnd)
            next = lineOfKeyword(m_text, m_token.span);
        if (next != m_token.span.end)
            m_lexer = Lexer(m_text, next);
        do
            m_token = m_lexer.next();
        while (m_token.kind == TokenKind::Comment || m_token.kind == TokenKind::Illegal);
    }
}

} // namespace lux
