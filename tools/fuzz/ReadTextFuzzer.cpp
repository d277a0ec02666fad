// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// Any bytes are a scene text: they are read, every part stands where it says it does, and what is
// written is what was read.

#include "Document.h"

#include <cstdio>
#include <cstdlib>

namespace {

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

void look(lux::ValueRange values, int count, lux::Span within)
{
    for (const lux::Value value : values) {
        require(value.span().begin >= within.begin && value.span().end <= within.end,
            "a value outside of its owner");
        within.begin = value.span().end;
        require(value.text().size() <= lux::maximumStringSize || !value.isString(), "long string");
        value.number();
        --count;
    }
    require(count == 0, "values are counted wrongly");
}

int countOf(lux::ValueRange values)
{
    int count = 0;
    for (auto value = values.begin(); value != values.end(); ++value)
        ++count;
    return count;
}

void lookAtStatement(const lux::Statement& statement, lux::PlaceFinder* places)
{
    const lux::Span span = statement.span();
    look(statement.head(), countOf(statement.head()), span);
    statement.typeText();
    require(statement.typeSpan().end <= span.end, "a type outside of its statement");
    places->at(span.begin);
    for (int i = 0; i < statement.parameterCount(); ++i) {
        const lux::Parameter parameter = statement.parameter(i);
        look(parameter.values(), parameter.valueCount(), parameter.span());
        require(parameter.span().begin >= span.begin && parameter.span().end <= span.end,
            "a parameter outside of its statement");
        require(parameter.nameSpan().end <= parameter.span().end, "a name outside");
        require(parameter.valueSpan().end <= parameter.span().end, "a value outside");
        require(parameter.name().size() <= lux::maximumStringSize, "long name");
        parameter.type();
        parameter.text();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
    lux::ReadOptions options;
    options.acceptsLooseParameters = size % 2 == 0;
    const lux::Document document(text, options);
    require(document.write() == text, "written is not what was read");
    lux::PlaceFinder places(document);
    for (int i = 0; i < document.statementCount(); ++i)
        lookAtStatement(document.statement(i), &places);
    for (const lux::TextError& error : document.errors())
        require(!document.message(error).isEmpty(), "an error without a message");
    return 0;
}
