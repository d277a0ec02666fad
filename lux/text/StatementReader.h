// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Document.h"

namespace lux {

/// Fills a document with the statements of its text.
class StatementReader
{
public:
    StatementReader(Document* document, const ReadOptions& options);

    void read();

private:
    /// To the next token that means something; tells of what is skipped.
    void advance();
    void checkString();
    void addError(ErrorKind kind, Span span);
    /// An error at the current token, by what it is.
    void failHere();

    void readStatement();
    void readLooseParameters();
    bool readHead(std::string_view form);
    bool readNumberArray();
    bool readParameters();
    bool readParameter();
    bool readArray(Document::ParameterRecord* parameter);
    /// Goes to where the next statement begins.
    void recover();

    void begin(Keyword keyword);
    void accept();
    bool isValue() const;

    Document* m_document;
    ReadOptions m_options;
    std::string_view m_text;
    Lexer m_lexer;
    Token m_token;
};

} // namespace lux
