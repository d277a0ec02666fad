// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneCodeWriter.h"
#include "LinkTypes.h"
#include "TestSupport.h"
#include "dzfloatproperty.h"

#include <cmath>
#include <limits>

namespace {

/// A writer with one buffer open, as inside a statement.
class SceneCodeWriterTest : public testing::Test
{
protected:
    SceneCodeWriterTest() { writer.push(); }

    QString numberOf(double value)
    {
        writer.writeFloat(QStringLiteral("x"), value);
        const QString line = writer.takeAndDrop();
        writer.push();
        return line.mid(14, line.size() - 14 - 2);
    }

    SceneCodeWriter writer;
};

} // namespace

TEST_F(SceneCodeWriterTest, floatLineHasTabPaddedKeywordAndBrackets)
{
    writer.writeFloat(QStringLiteral("Kd"), 0.5);
    EXPECT_TEXT(QStringLiteral("\t\"float   Kd\" [0.5]\n"), writer.text());
}

TEST_F(SceneCodeWriterTest, boolLineQuotesTheWord)
{
    writer.writeBool(QStringLiteral("onesided"), false);
    writer.writeBool(QStringLiteral("onesided"), true);
    EXPECT_TEXT(QStringLiteral("\t\"bool    onesided\" [\"false\"]\n"
                               "\t\"bool    onesided\" [\"true\"]\n"),
        writer.text());
}

TEST_F(SceneCodeWriterTest, everyKeywordTakesEightCharacters)
{
    writer.writeFloat(QStringLiteral("n"), 1);
    writer.writeBool(QStringLiteral("n"), true);
    writer.writeColor3(QStringLiteral("n"), 1, 2, 3);
    writer.writeInteger(QStringLiteral("n"), 1);
    writer.writeString(QStringLiteral("n"), QStringLiteral("v"));
    writer.writeTextureRef(QStringLiteral("n"), QStringLiteral("v"));
    writer.writeVector(QStringLiteral("n"), 1, 2, 3);
    writer.writeFloatArray(QStringLiteral("n"), { 1, 2 });
    const QStringList lines = writer.text().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(), 8);
    for (const QString& line : lines)
        EXPECT_EQ(line.mid(10, 2), QStringLiteral("n\"")) << line.toStdString();
}

TEST_F(SceneCodeWriterTest, colourComponentsAreDividedBy255AndAlphaIsNotWritten)
{
    writer.writeColor(QStringLiteral("Kd"), QColor(255, 0, 128, 7));
    EXPECT_TEXT(QStringLiteral("\t\"color   Kd\" [1 0 0.501961]\n"), writer.text());
}

TEST_F(SceneCodeWriterTest, numbersHaveSixSignificantDigitsInGeneralFormat)
{
    EXPECT_EQ(numberOf(0.5), QStringLiteral("0.5"));
    EXPECT_EQ(numberOf(1), QStringLiteral("1"));
    EXPECT_EQ(numberOf(0.0001), QStringLiteral("0.0001"));
    EXPECT_EQ(numberOf(0.00001), QStringLiteral("1e-05"));
    EXPECT_EQ(numberOf(0.000001), QStringLiteral("1e-06"));
    EXPECT_EQ(numberOf(100000), QStringLiteral("100000"));
    EXPECT_EQ(numberOf(1000000), QStringLiteral("1e+06"));
    EXPECT_EQ(numberOf(1234567), QStringLiteral("1.23457e+06"));
    EXPECT_EQ(numberOf(-1e38), QStringLiteral("-1e+38"));
    EXPECT_EQ(numberOf(static_cast<double>(0.1f)), QStringLiteral("0.1"));
}

TEST_F(SceneCodeWriterTest, valuesThatAreNotFiniteAreWrittenAsWords)
{
    EXPECT_EQ(numberOf(std::numeric_limits<double>::infinity()), QStringLiteral("inf"));
    EXPECT_EQ(numberOf(-std::numeric_limits<double>::infinity()), QStringLiteral("-inf"));
    EXPECT_EQ(numberOf(std::nan("")), QStringLiteral("nan"));
}

TEST_F(SceneCodeWriterTest, integersAreDecimal)
{
    writer.writeInteger(QStringLiteral("octaves"), std::numeric_limits<qint32>::min());
    EXPECT_TEXT(QStringLiteral("\t\"integer octaves\" [-2147483648]\n"), writer.text());
}

TEST_F(SceneCodeWriterTest, stringsAreInsertedAsTheyAre)
{
    writer.writeString(QStringLiteral("type"), QString());
    writer.writeString(QStringLiteral("a\"b"), QString::fromUtf8("c\\ü\"d"));
    EXPECT_TEXT(QString::fromUtf8("\t\"string  type\" [\"\"]\n\t\"string  a\"b\" [\"c\\ü\"d\"]\n"),
        writer.text());
}

TEST_F(SceneCodeWriterTest, statementsNameKeywordAndNames)
{
    writer.writeStatement(QStringLiteral("NamedMaterial"), QStringLiteral("Lm_material1"));
    writer.writeStatement2(
        QStringLiteral("MakeNamedVolume"), QStringLiteral("Lm_volume1"), QStringLiteral("clear"));
    writer.writeTexture(
        QStringLiteral("Lm_texture1"), QStringLiteral("float"), QStringLiteral("constant"));
    writer.writeTextureRef(QStringLiteral("Kd"), QStringLiteral("Lm_texture1"));
    EXPECT_TEXT(QStringLiteral("NamedMaterial \"Lm_material1\"\n"
                               "MakeNamedVolume \"Lm_volume1\" \"clear\"\n"
                               "Texture \"Lm_texture1\" \"float\" \"constant\"\n"
                               "\t\"texture Kd\" [\"Lm_texture1\"]\n"),
        writer.text());
}

TEST_F(SceneCodeWriterTest, arraysAndVectorsAreOneLine)
{
    writer.writeFloatArray(QStringLiteral("offsets"), { 0, 0.5, 1 });
    writer.writeVector(QStringLiteral("v1"), 1, 0, -0.25);
    EXPECT_TEXT(QStringLiteral("\t\"float   offsets\" [0 0.5 1]\n"
                               "\t\"vector  v1\" [1 0 -0.25]\n"),
        writer.text());
}

TEST_F(SceneCodeWriterTest, placeMarkersInArgumentsTakePartInLaterSteps)
{
    // After the first step the template reads: "float   a%1b" [%2]. The lowest marker is filled.
    writer.writeFloat(QStringLiteral("a%1b"), 0.5);
    // Two digits make one marker; a percent sign alone is none.
    writer.writeString(QStringLiteral("50%"), QStringLiteral("100%"));
    writer.writeStatement2(QStringLiteral("%3"), QStringLiteral("x"), QStringLiteral("y"));
    writer.writeString(QStringLiteral("n%L1"), QStringLiteral("v"));
    EXPECT_TEXT(QStringLiteral("\t\"float   a0.5b\" [%2]\n"
                               "\t\"string  50%\" [\"100%\"]\n"
                               "y \"x\" \"y\"\n"
                               "\t\"string  nv\" [\"%2\"]\n"),
        writer.text());
}

/// A number is text before it is an argument: the marker for the locale's form makes no difference.
TEST_F(SceneCodeWriterTest, numbersHaveAPointAlsoWhereANameAsksForTheLocalesForm)
{
    writer.writeFloat(QStringLiteral("n%L2"), 1234.5);
    writer.writeInteger(QStringLiteral("n%L2"), 1234567);
    EXPECT_TEXT(QStringLiteral("\t\"float   n1234.5\" [1234.5]\n"
                               "\t\"integer n1234567\" [1234567]\n"),
        writer.text());
}

TEST(SceneCodeWriterState, aNewWriterCountsFromOneAndHoldsNothing)
{
    const SceneCodeWriter writer;
    EXPECT_EQ(writer.materialCounter, 1u);
    EXPECT_EQ(writer.textureCounter, 1u);
    EXPECT_EQ(writer.volumeCounter, 1u);
    EXPECT_EQ(writer.placeholderCounter, 1u);
    EXPECT_FALSE(writer.literalValues);
    EXPECT_TRUE(writer.outputText().isEmpty());
    EXPECT_TRUE(writer.placeholderKeys.isEmpty());
    EXPECT_TRUE(writer.placeholderNames.isEmpty());
}

TEST(SceneCodeWriterState, buffersAreEmittedInOrderOfCompletion)
{
    SceneCodeWriter writer;
    writer.push();
    writer.text() += QStringLiteral("outer");
    writer.push();
    writer.text() += QStringLiteral("inner");
    writer.popAndEmit();
    EXPECT_EQ(writer.text(), QStringLiteral("outer"));
    EXPECT_EQ(writer.outputText(), QStringLiteral("inner"));
    writer.popAndEmit();
    EXPECT_EQ(writer.outputText(), QStringLiteral("innerouter"));
    writer.popAndEmit();
    EXPECT_EQ(writer.outputText(), QStringLiteral("innerouter"));
}

TEST(SceneCodeWriterState, aBufferThatIsTakenNeverReachesTheOutput)
{
    SceneCodeWriter writer;
    writer.push();
    writer.writeBlankLine();
    EXPECT_EQ(writer.takeAndDrop(), QStringLiteral("\n"));
    EXPECT_TRUE(writer.outputText().isEmpty());
}

TEST(SceneCodeWriterDeathTest, writingWithoutAnOpenStatementEndsTheProgram)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    SceneCodeWriter writer;
    EXPECT_DEATH(writer.writeBlankLine(), "no statement is open");
}

TEST(PlaceholderName, aPropertyGetsOnePlaceholderPerRun)
{
    SceneCodeWriter writer;
    DzFloatProperty first(QStringLiteral("Kd"), true, false);
    DzFloatProperty second(QStringLiteral("Kd"), true, false);
    EXPECT_EQ(placeholderName(&writer, &first, QStringLiteral("Kd")),
        QStringLiteral("LuxRender_Lm_001_Kd"));
    EXPECT_EQ(placeholderName(&writer, &second, QStringLiteral("Kd")),
        QStringLiteral("LuxRender_Lm_002_Kd"));
    EXPECT_EQ(placeholderName(&writer, &first, QStringLiteral("other")),
        QStringLiteral("LuxRender_Lm_001_Kd"));
    EXPECT_EQ(writer.placeholderKeys, (QList<DzProperty*> { &first, &second }));
    EXPECT_EQ(writer.placeholderNames,
        (QStringList {
            QStringLiteral("LuxRender_Lm_001_Kd"), QStringLiteral("LuxRender_Lm_002_Kd") }));
}

TEST(PlaceholderName, numbersGrowBeyondThreeDigits)
{
    SceneCodeWriter writer;
    writer.placeholderCounter = 1000;
    DzFloatProperty property(QStringLiteral("Kd"), true, false);
    EXPECT_EQ(placeholderName(&writer, &property, QStringLiteral("Kd")),
        QStringLiteral("LuxRender_Lm_1000_Kd"));
}

TEST(LinkTypeName, namesEveryLinkType)
{
    const char* const names[] = { "LuxMaterial", "LuxVolume", "LFloat", "LColor", "LPoint",
        "LVector", "LNormal", "LMatrix", "LString", "LuxFresnel" };
    for (int code = 1007; code <= 1016; ++code)
        EXPECT_EQ(linkTypeName(code), QString::fromLatin1(names[code - 1007])) << code;
}

TEST(LinkTypeName, isEmptyForOtherNumbers)
{
    for (const int code : { 1017, 1006, 0, 7, -1 })
        EXPECT_TRUE(linkTypeName(code).isEmpty()) << code;
}

TEST(LinkType, standsForHostTypesOnly)
{
    EXPECT_EQ(linkTypeFor(1), 1009);
    EXPECT_EQ(linkTypeFor(7), 1015);
    EXPECT_EQ(linkTypeFor(8), 8);
    EXPECT_EQ(linkTypeFor(1016), 1016);
}
