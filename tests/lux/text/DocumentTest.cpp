// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Document.h"

#include <QByteArray>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace lux;

namespace {

/// The errors' kinds in order.
std::vector<ErrorKind> errorsOf(const Document& document)
{
    std::vector<ErrorKind> kinds;
    for (const TextError& error : document.errors())
        kinds.push_back(error.kind);
    return kinds;
}

/// The content of the string in a text of one statement, and what was said of it.
std::string contentOf(const QByteArray& quoted, std::vector<ErrorKind> expected = {})
{
    const Document document("NamedMaterial " + quoted);
    EXPECT_EQ(errorsOf(document), expected) << quoted.constData();
    return document.statementCount() ? document.statement(0).headText(0) : std::string();
}

std::vector<double> numbersOf(const QByteArray& values, std::vector<ErrorKind> expected = {})
{
    const Document document("Shape \"mesh\" \"float x\" [" + values + "]");
    EXPECT_EQ(errorsOf(document), expected) << values.constData();
    return document.statementCount() && document.statement(0).parameterCount()
        ? document.statement(0).parameter(0).numbers()
        : std::vector<double>();
}

std::vector<std::string> keywordsOf(const Document& document)
{
    std::vector<std::string> words;
    for (int i = 0; i < document.statementCount(); ++i)
        words.emplace_back(document.view(document.statement(i).keywordSpan()));
    return words;
}

typedef std::vector<std::string> Words;
typedef std::vector<double> Numbers;
typedef std::vector<ErrorKind> Kinds;

TEST(LuxDocument, statementsParametersAndValues)
{
    const Document document("Texture \"a\" \"float\" \"scale\"\n"
                            "\t\"texture tex1\" [\"b\"]\n"
                            "\t\"float   tex2\" [0.5]\n"
                            "\n"
                            "MakeNamedVolume \"v\" \"clear\" \"color absorption\" [1 .5 0]\n"
                            "MakeNamedMaterial \"m\"\n"
                            "\t\"texture Kd\" \"a\" \"float sigma\" 3\n"
                            "\t\"string type\" [\"matte\"]\n"
                            "WorldEnd");
    EXPECT_TRUE(document.errors().empty());
    ASSERT_EQ(document.statementCount(), 4);
    const Statement texture = document.statement(0);
    EXPECT_EQ(texture.keyword(), Keyword::Texture);
    EXPECT_EQ(texture.headText(0), "a");
    EXPECT_EQ(texture.headText(1), "float");
    EXPECT_EQ(texture.headText(2), "scale");
    EXPECT_EQ(texture.headText(3), "");
    EXPECT_EQ(texture.typeText(), "scale");
    ASSERT_EQ(texture.parameterCount(), 2);
    EXPECT_EQ(texture.parameter(0).type(), ParameterType::Texture);
    EXPECT_EQ(texture.parameter(0).name(), "tex1");
    EXPECT_EQ(texture.parameter(0).text(), "b");
    EXPECT_EQ(texture.parameter(1).type(), ParameterType::Float);
    EXPECT_EQ(texture.parameter(1).numbers(), Numbers { 0.5 });

    EXPECT_EQ(document.statement(1).typeText(), "clear");
    EXPECT_EQ(document.statement(1).parameter(0).numbers(), (Numbers { 1, 0.5, 0 }));

    const Statement material = document.statement(2);
    EXPECT_EQ(material.typeText(), "matte");
    EXPECT_FALSE(material.parameter(0).hasBrackets());
    EXPECT_EQ(material.parameter(0).text(), "a");
    EXPECT_EQ(material.parameter(1).numbers(), Numbers { 3 });
    EXPECT_TRUE(material.parameter(2).hasBrackets());
    EXPECT_EQ(material.findParameter("sigma"), 1);
    EXPECT_EQ(material.findParameter("Kr"), -1);
    EXPECT_EQ(document.statement(3).keyword(), Keyword::WorldEnd);
}

TEST(LuxDocument, everyKeywordIsKnownByItsWord)
{
    for (int i = 0; i < static_cast<int>(Keyword::Loose); ++i) {
        const StatementForm& form = formOf(static_cast<Keyword>(i));
        Keyword keyword = Keyword::Loose;
        ASSERT_TRUE(findKeyword(form.word, &keyword)) << form.word;
        EXPECT_EQ(static_cast<int>(keyword), i) << form.word;

        QByteArray text(form.word.data(), static_cast<int>(form.word.size()));
        for (const char kind : form.head)
            text += kind == 's' ? " \"x\"" : kind == 'n' ? " 1" : " [1 2]";
        if (form.takesParameters)
            text += " \"float y\" 2";
        const Document document(text);
        EXPECT_TRUE(document.errors().empty()) << text.constData();
        ASSERT_EQ(document.statementCount(), 1) << text.constData();
        EXPECT_EQ(document.statement(0).keyword(), keyword);
        EXPECT_EQ(document.statement(0).parameterCount(), form.takesParameters ? 1 : 0);
        EXPECT_EQ(document.statement(0).span().end, static_cast<std::uint32_t>(text.size()));
    }
    Keyword keyword = Keyword::Loose;
    EXPECT_FALSE(findKeyword("texture", &keyword));
    EXPECT_FALSE(findKeyword("Text", &keyword));
    EXPECT_FALSE(findKeyword("", &keyword));
    EXPECT_FALSE(findKeyword("Zebra", &keyword));
}

TEST(LuxDocument, escapesInStrings)
{
    EXPECT_EQ(contentOf("\"plain\""), "plain");
    EXPECT_EQ(contentOf("\"\""), "");
    EXPECT_EQ(contentOf(R"("a\nb\tc\rd\be\ff")"), "a\nb\tc\rd\be\ff");
    EXPECT_EQ(contentOf(R"("say \"no\"")"), "say \"no\"");
    EXPECT_EQ(contentOf(R"("C:\\maps\\")"), "C:\\maps\\");
    EXPECT_EQ(contentOf(R"("\q\{")"), "q{");
    // A path as Windows writes it.
    EXPECT_EQ(contentOf(R"("C:\temp\new\rough")"), "C:\temp\new\rough");
    EXPECT_EQ(contentOf("\"D:/maps/Ünicode 木.png\""), "D:/maps/Ünicode 木.png");
}

TEST(LuxDocument, threeDigitsAreADecimalByte)
{
    EXPECT_EQ(contentOf(R"("\065\066")"), "AB");
    EXPECT_EQ(contentOf(R"("\0651")"), "A1");
    EXPECT_EQ(contentOf(R"("\06")"), "06");
    EXPECT_EQ(contentOf(R"("\6x5")"), "6x5");
    EXPECT_EQ(contentOf(R"("\195\164")"), "ä");
}

TEST(LuxDocument, aBackslashContinuesTheLine)
{
    EXPECT_EQ(contentOf("\"one \\\ntwo\""), "one two");
}

TEST(LuxDocument, aLineEndIsLeftOutOfAString)
{
    EXPECT_EQ(contentOf("\"one \ntwo\"", { ErrorKind::LineEndInString }), "one two");
    EXPECT_FALSE(isFatal(ErrorKind::LineEndInString));
}

TEST(LuxDocument, stringsAreCutAfter1023Bytes)
{
    const QByteArray longest(1023, 'x');
    EXPECT_EQ(contentOf('"' + longest + '"'), longest.toStdString());
    EXPECT_EQ(
        contentOf('"' + longest + "y\"", { ErrorKind::StringTooLong }), longest.toStdString());
    // What counts is what it says, not how it is written.
    EXPECT_EQ(contentOf('"' + QByteArray(1023 * 2, '\\') + '"'), std::string(1023, '\\'));
    EXPECT_FALSE(isFatal(ErrorKind::StringTooLong));
    // Two long names that differ behind the cut are the same.
    EXPECT_EQ(contentOf('"' + longest + "y\"", { ErrorKind::StringTooLong }),
        contentOf('"' + longest + "z\"", { ErrorKind::StringTooLong }));
}

TEST(LuxDocument, typeAndNameArePartedByAnyBlanks)
{
    const Document document("Shape \"mesh\" \"float   a\" 1 \"\\tcolor\tb c\" 1 \"matrix d\" 1 "
                            "\"fresnel e\" 1 \"float\" 1 \"\" 1 \"texture\\065\\032 f\" 1");
    const Statement mesh = document.statement(0);
    const auto is = [&mesh](int place, ParameterType type, const char* word, const char* name) {
        EXPECT_EQ(mesh.parameter(place).type(), type) << place;
        EXPECT_EQ(mesh.parameter(place).typeText(), word) << place;
        EXPECT_EQ(mesh.parameter(place).name(), name) << place;
    };
    is(0, ParameterType::Float, "float", "a");
    is(1, ParameterType::Color, "color", "b c");
    is(2, ParameterType::Unknown, "matrix", "d");
    is(3, ParameterType::Unknown, "fresnel", "e");
    is(4, ParameterType::Float, "float", "");
    is(5, ParameterType::Unknown, "", "");
    is(6, ParameterType::Unknown, "textureA", "f");
    EXPECT_TRUE(document.errors().empty());
}

TEST(LuxDocument, allTypeWords)
{
    const struct {
        const char* word;
        ParameterType type;
    } expected[] = { { "float", ParameterType::Float }, { "integer", ParameterType::Integer },
        { "bool", ParameterType::Bool }, { "point", ParameterType::Point },
        { "vector", ParameterType::Vector }, { "normal", ParameterType::Normal },
        { "string", ParameterType::String }, { "texture", ParameterType::Texture },
        { "color", ParameterType::Color } };
    for (const auto& one : expected) {
        const Document document(QByteArray("Film \"f\" \"") + one.word + " x\" 1");
        EXPECT_EQ(document.statement(0).parameter(0).type(), one.type) << one.word;
        EXPECT_EQ(typeWord(one.type), one.word);
    }
    EXPECT_EQ(typeWord(ParameterType::Unknown), "");
}

TEST(LuxDocument, numbers)
{
    EXPECT_EQ(numbersOf("0 -1 +2 .5 5. -.25 1e+06 1e-05 1E3 -1e+38 +1e38"),
        (Numbers { 0, -1, 2, 0.5, 5, -0.25, 1e6, 1e-5, 1e3, -1e38, 1e38 }));
    EXPECT_EQ(numbersOf("1-2+3.4.5"), (Numbers { 1, -2, 3.4, 0.5 }));
    EXPECT_EQ(numbersOf("1e999 -1e999 1e-999"), (Numbers { HUGE_VAL, -HUGE_VAL, 0 }));
    EXPECT_EQ(numbersOf(QByteArray(400, '9')), Numbers { HUGE_VAL });
    EXPECT_EQ(numbersOf("0." + QByteArray(400, '0') + "1"), Numbers { 0 });
}

TEST(LuxDocument, infinityAndNanAreNoNumbers)
{
    for (const char* word : { "inf", "nan", "-inf", "1e", "0x1f" }) {
        const Document document(QByteArray("Film \"f\" \"float x\" [") + word + "]");
        ASSERT_FALSE(document.errors().empty()) << word;
        EXPECT_EQ(document.errors().back().kind, ErrorKind::UnknownWord) << word;
        EXPECT_TRUE(isFatal(document.errors().back().kind));
    }
}

TEST(LuxDocument, aCommaIsSkippedAndPartsTwoNumbers)
{
    EXPECT_EQ(numbersOf("0,5", { ErrorKind::IllegalCharacter }), (Numbers { 0, 5 }));
    EXPECT_FALSE(isFatal(ErrorKind::IllegalCharacter));
}

TEST(LuxDocument, placeholdersAreNoValues)
{
    const Document document(
        "MakeNamedMaterial \"m\"\n\t\"float sigma\" [$(LuxRender_Lm_001_sigma)]\n"
        "NamedMaterial \"m\"");
    EXPECT_EQ(errorsOf(document), (Kinds { ErrorKind::IllegalCharacter, ErrorKind::UnknownWord }));
    EXPECT_EQ(keywordsOf(document), (Words { "MakeNamedMaterial", "NamedMaterial" }));
}

TEST(LuxDocument, commentsBlanksAndLineEnds)
{
    const Document document("# Texture \"no\"\r\n"
                            "  NamedMaterial#x\r\n\t\"a # no comment\" # it's \"quoted\"\r\n"
                            "Translate 1 # 2\n 3 4#end");
    EXPECT_TRUE(document.errors().empty());
    ASSERT_EQ(document.statementCount(), 2);
    EXPECT_EQ(document.statement(0).headText(0), "a # no comment");
    Numbers numbers;
    for (const Value value : document.statement(1).head())
        numbers.push_back(value.number());
    EXPECT_EQ(numbers, (Numbers { 1, 3, 4 }));
}

TEST(LuxDocument, otherControlCharactersAreIllegal)
{
    const char text[] = "\xef\xbb\xbfWorldBegin\v\fWorldEnd\0"; // with its first 0
    const Document document(QByteArray(text, sizeof text - 1));
    EXPECT_EQ(errorsOf(document), Kinds(3, ErrorKind::IllegalCharacter));
    EXPECT_EQ(keywordsOf(document), (Words { "WorldBegin", "WorldEnd" }));
}

TEST(LuxDocument, everythingHasItsPlace)
{
    const QByteArray text = "# ä\nTexture \"né\" \"color\"\n  \"constant\"\n\t\"color  value\" [ 1 "
                            "0.5\n 1 ] # end\n";
    const Document document(text);
    const Statement statement = document.statement(0);
    const auto source = [&](Span span) { return std::string(document.view(span)); };
    EXPECT_EQ(source(statement.keywordSpan()), "Texture");
    EXPECT_EQ(source(statement.headSpan(0)), "\"né\"");
    EXPECT_EQ(source(statement.typeSpan()), "\"constant\"");
    const Parameter parameter = statement.parameter(0);
    EXPECT_EQ(source(parameter.declarationSpan()), "\"color  value\"");
    EXPECT_EQ(source(parameter.nameSpan()), "value");
    EXPECT_EQ(source(parameter.valueSpan()), "[ 1 0.5\n 1 ]");
    EXPECT_EQ(source(parameter.span()), "\"color  value\" [ 1 0.5\n 1 ]");
    EXPECT_EQ(source(statement.span()), text.mid(5, text.size() - 12).toStdString());

    PlaceFinder places(document);
    const auto expectPlace = [&](Span span, int line, int column) {
        const Place place = places.at(span.begin);
        EXPECT_EQ(place.line, line);
        EXPECT_EQ(place.column, column);
        EXPECT_EQ(place.byte, span.begin);
    };
    expectPlace(statement.keywordSpan(), 2, 1);
    expectPlace(statement.headSpan(0), 2, 9);
    expectPlace(statement.headSpan(1), 2, 14); // the letter of two bytes is one column
    expectPlace(statement.typeSpan(), 3, 3);
    std::vector<int> columns;
    for (const Value value : parameter.values())
        columns.push_back(places.at(value.span().begin).column);
    EXPECT_EQ(columns, (std::vector<int> { 19, 21, 2 }));
    expectPlace(statement.keywordSpan(), 2, 1); // back again
    EXPECT_EQ(places.at(1000000).line, 6);
}

TEST(LuxDocument, itGoesOnAfterAnError)
{
    const Document document("Texture \"a\" \"float\"\n"
                            "MakeNamedMaterial \"b\" \"float x\" [1 \"color y\" [1 1 1]\n"
                            "NamedMaterial \"c\" 1 2 3 Identity\n"
                            "Colour \"d\"\n"
                            "Film \"e\" \"float x\"\n"
                            "] WorldBegin\n"
                            "Scale 1 1\n"
                            "WorldEnd");
    EXPECT_EQ(keywordsOf(document),
        (Words { "Texture", "MakeNamedMaterial", "NamedMaterial", "Identity", "Film", "WorldBegin",
            "Scale", "WorldEnd" }));
    EXPECT_EQ(errorsOf(document),
        (Kinds { ErrorKind::Unexpected, ErrorKind::MixedArray, ErrorKind::Unexpected,
            ErrorKind::Unexpected, ErrorKind::UnknownWord, ErrorKind::Unexpected,
            ErrorKind::Unexpected }));
    EXPECT_FALSE(document.statement(0).isWhole());
    EXPECT_FALSE(document.statement(1).isWhole());
    EXPECT_TRUE(document.statement(2).isWhole());
    EXPECT_TRUE(document.statement(7).isWhole());
    PlaceFinder places(document);
    std::vector<int> lines;
    for (const TextError& error : document.errors()) {
        lines.push_back(places.at(error.span.begin).line);
        EXPECT_FALSE(document.message(error).isEmpty());
    }
    EXPECT_EQ(lines, (std::vector<int> { 2, 2, 2, 3, 4, 6, 8 }));
}

TEST(LuxDocument, aMissingQuoteCostsOneStatement)
{
    const Document document(
        "MakeNamedMaterial \"a\"\n\t\"float sigma [0]\n\t\"string type\" "
        "[\"matte\"]\n\nMakeNamedMaterial \"b\"\n\t\"string type\" [\"glass\"]\n");
    ASSERT_EQ(document.statementCount(), 2);
    EXPECT_FALSE(document.statement(0).isWhole());
    EXPECT_TRUE(document.statement(1).isWhole());
    EXPECT_EQ(document.statement(1).typeText(), "glass");
}

TEST(LuxDocument, unfinishedTexts)
{
    for (const char* text : { "Texture", "NamedMaterial \"a", "Film \"f\" \"float x\"", "Rotate 1",
             "Film \"f\" \"float x\" [1", "Transform [1", "Film \"a\\\"" }) {
        const Document document { QByteArray(text) };
        EXPECT_EQ(errorsOf(document), Kinds { ErrorKind::Unfinished }) << text;
        EXPECT_EQ(document.statementCount(), 1) << text;
        EXPECT_EQ(document.write(), text);
    }
}

TEST(LuxDocument, emptyBrackets)
{
    const Document document("Film \"f\" \"float x\" [] \"float y\" [1]");
    EXPECT_EQ(errorsOf(document), Kinds { ErrorKind::EmptyArray });
    EXPECT_EQ(document.statement(0).parameter(0).valueCount(), 0);
    EXPECT_EQ(document.statement(0).parameter(0).text(), "");
    EXPECT_EQ(document.statement(0).parameter(1).valueCount(), 1);
}

TEST(LuxDocument, parametersWithoutAStatement)
{
    const QByteArray text = "\t\"float dmscale\" [0.1]\n\t\"bool dmnormalsmooth\" [\"true\"]\n";
    const Document strict(text);
    EXPECT_EQ(errorsOf(strict), Kinds { ErrorKind::LooseParameters });
    EXPECT_EQ(strict.statementCount(), 1);
    ReadOptions options;
    options.acceptsLooseParameters = true;
    const Document document(text, options);
    EXPECT_TRUE(document.errors().empty());
    ASSERT_EQ(document.statementCount(), 1);
    EXPECT_EQ(document.statement(0).keyword(), Keyword::Loose);
    ASSERT_EQ(document.statement(0).parameterCount(), 2);
    EXPECT_EQ(document.statement(0).parameter(1).text(), "true");
    EXPECT_EQ(document.write(), text);
}

TEST(LuxDocument, errorsBeyondTheMaximumAreCounted)
{
    const Document document(
        QByteArray("1 ").repeated(2000) + QByteArray("Foo Scale ").repeated(2000));
    EXPECT_EQ(static_cast<int>(document.errors().size()), Document::maximumErrors);
    EXPECT_GT(document.errorCount(), 2000);
}

TEST(LuxDocument, emptyTexts)
{
    EXPECT_EQ(Document().statementCount(), 0);
    EXPECT_EQ(Document().write(), QByteArray());
    EXPECT_EQ(Document(QByteArray()).statementCount(), 0);
    EXPECT_EQ(Document(QByteArray("\n")).write(), "\n");
    const Document empty;
    EXPECT_EQ(PlaceFinder(empty).at(5).line, 1);
}

/// Bytes that like to be near each other in scenes.
QByteArray randomText(std::mt19937* random)
{
    static const char* const pieces[] = { "Texture ", "\"a\" ", "\"float x\"", "[", "]", "1 ",
        "-.5e3", "\n", "\\", "\"", "# c", "MakeNamedMaterial", " ", ",", "\xc3\xa4", "Include",
        "\r\n", "\t", "\"string type\" [\"matte\"]\n", "inf" };
    QByteArray text;
    const unsigned count = (*random)() % 60;
    for (unsigned i = 0; i < count; ++i)
        text += pieces[(*random)() % (sizeof pieces / sizeof *pieces)];
    return text;
}

TEST(LuxDocument, anythingIsWrittenBackAsItWasRead)
{
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const QByteArray text = randomText(&random);
        const Document document(text);
        ASSERT_EQ(document.write(), text);
        std::uint32_t end = 0;
        for (int k = 0; k < document.statementCount(); ++k) {
            const Statement statement = document.statement(k);
            ASSERT_LE(end, statement.span().begin) << text.constData();
            end = statement.span().end;
            std::uint32_t inner = statement.keywordSpan().end;
            for (const Value value : statement.head()) {
                ASSERT_LE(inner, value.span().begin);
                inner = value.span().end;
            }
            for (int p = 0; p < statement.parameterCount(); ++p) {
                const Parameter parameter = statement.parameter(p);
                ASSERT_LE(inner, parameter.span().begin) << text.constData();
                inner = parameter.span().end;
                int count = 0;
                for (const Value value : parameter.values()) {
                    ASSERT_LE(value.span().end, inner);
                    ++count;
                }
                ASSERT_EQ(count, parameter.valueCount()) << text.constData();
            }
            ASSERT_LE(inner, end) << text.constData();
        }
        // Nothing but blanks, comments and what an error names stands between statements.
        ASSERT_LE(end, static_cast<std::uint32_t>(text.size()));
    }
}

TEST(LuxDocument, memoryIsAFewTimesTheText)
{
    // The densest values, lines and parameters that scenes have.
    const QByteArray texts[] = {
        "Shape \"mesh\" \"integer triindices\" [" + QByteArray("0 1 2 ").repeated(200000) + "]",
        QByteArray("Texture \"a\" \"float\" \"constant\"\n\t\"float value\" [1]\n").repeated(20000),
        QByteArray("\n").repeated(1000000),
        "MakeNamedMaterial \"a\" " + QByteArray("\"float x\" 1\n").repeated(100000),
        QByteArray("WorldEnd\n").repeated(100000),
    };
    for (const QByteArray& text : texts)
        EXPECT_LE(Document(text).memoryUsed(), 8 * static_cast<std::size_t>(text.size()))
            << text.left(40).constData();
}

} // namespace
