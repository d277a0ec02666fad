// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "settingsjson.h"
#include "dzsettings.h"
#include "settingstree.h"

#include <QStringList>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

const double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

void read(const QByteArray& text, DzSettings* settings)
{
    QString error;
    EXPECT_TRUE(settingsFromJson(text, settings, &error)) << error.toStdString();
}

/// The error that reading gives; a failure of the test when there is none.
std::string errorOf(const QByteArray& text)
{
    DzSettings settings;
    QString error;
    EXPECT_FALSE(settingsFromJson(text, &settings, &error)) << text.left(200).toStdString();
    return error.toStdString();
}

std::string write(const DzSettings& settings)
{
    return settingsToJson(settings).toStdString();
}

/// What reading and writing makes of a text.
std::string rewritten(const QByteArray& text)
{
    DzSettings settings;
    read(text, &settings);
    return write(settings);
}

/// How a value stands in a text.
std::string writtenFloat(double value)
{
    DzSettings settings;
    settings.setFloatValue("v", value);
    const std::string text = write(settings);
    const std::string start = "{\n  \"v\": ";
    const std::string end = "\n}\n";
    return text.substr(start.size(), text.size() - start.size() - end.size());
}

DzSettings::ValueType typeOf(const QByteArray& value)
{
    DzSettings settings;
    read("{\"v\":" + value + "}", &settings);
    return settings.getValueType(0);
}

QByteArray opaque(const QByteArray& value)
{
    DzSettings settings;
    read("{\"v\":" + value + "}", &settings);
    EXPECT_EQ(settings.getValueType(0), DzSettings::OpaqueValue) << value.toStdString();
    return settings.tree()->getOpaqueValue("v");
}

QByteArray nestedArrays(int depth)
{
    return "{\"v\":" + QByteArray(depth, '[') + QByteArray(depth, ']') + '}';
}

} // namespace

// Reading -----------------------------------------------------------------------------------

TEST(SettingsJson, stringsAndBooleansAreReadPlain)
{
    DzSettings settings;
    read("{\"s\": \"gr\xc3\xbcn \\u00e9 \\n\", \"yes\": true, \"no\": false}", &settings);
    EXPECT_EQ(settings.getStringValue("s").toStdString(), "grün é \n");
    EXPECT_EQ(settings.getValueType(1), DzSettings::BoolValue);
    EXPECT_TRUE(settings.getBoolValue("yes"));
    EXPECT_FALSE(settings.getBoolValue("no", true));
}

TEST(SettingsJson, keysKeepTheOrderOfTheFile)
{
    DzSettings settings;
    read("{\"z\":1,\"a\":2,\"m\":3}", &settings);
    EXPECT_EQ(settings.getKey(0), QString("z"));
    EXPECT_EQ(settings.getKey(1), QString("a"));
    EXPECT_EQ(settings.getKey(2), QString("m"));
}

TEST(SettingsJson, aBareNumberIsAFloatEvenWhenItIsWhole)
{
    EXPECT_EQ(typeOf("1009"), DzSettings::FloatValue);
    EXPECT_EQ(typeOf("-3"), DzSettings::FloatValue);
    EXPECT_EQ(typeOf("1.0"), DzSettings::FloatValue);
    DzSettings settings;
    read("{\"a\":1009,\"b\":-2.5e-3,\"c\":12345678901234567890123}", &settings);
    EXPECT_EQ(settings.getFloatValue("a"), 1009.0);
    EXPECT_EQ(settings.getFloatValue("b"), -0.0025);
    EXPECT_EQ(settings.getFloatValue("c"), 12345678901234567890123.0);
}

TEST(SettingsJson, aTaggedWholeNumberIsAnInt)
{
    DzSettings settings;
    read("{\"low\":[\"i\",-2147483648],\"high\":[ \"i\" , 2147483647 ],\"e\":[\"i\",1e3]}",
        &settings);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(settings.getValueType(i), DzSettings::IntValue) << i;
    EXPECT_EQ(settings.getIntValue("low"), std::numeric_limits<int>::min());
    EXPECT_EQ(settings.getIntValue("high"), 2147483647);
    EXPECT_EQ(settings.getIntValue("e"), 1000);
}

TEST(SettingsJson, aTaggedNumberThatIsNoIntIsKept)
{
    EXPECT_EQ(opaque("[\"i\", 2147483648]"), QByteArray("[\"i\",2147483648]"));
    EXPECT_EQ(opaque("[\"i\", -2147483649]"), QByteArray("[\"i\",-2147483649]"));
    EXPECT_EQ(opaque("[\"i\", 0.5]"), QByteArray("[\"i\",0.5]"));
    EXPECT_EQ(opaque("[\"i\", \"1\"]"), QByteArray("[\"i\",\"1\"]"));
}

TEST(SettingsJson, numbersThatJsonLacksAreReadFromTheirTag)
{
    DzSettings settings;
    read("{\"n\":[\"f\",\"nan\"],\"p\":[\"f\",\"inf\"],\"m\":[\"f\",\"-inf\"]}", &settings);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(settings.getValueType(i), DzSettings::FloatValue) << i;
    EXPECT_TRUE(std::isnan(settings.getFloatValue("n")));
    EXPECT_EQ(settings.getFloatValue("p"), infinity);
    EXPECT_EQ(settings.getFloatValue("m"), -infinity);
    EXPECT_EQ(opaque("[\"f\",\"NaN\"]"), QByteArray("[\"f\",\"NaN\"]"));
    EXPECT_EQ(opaque("[\"f\",1]"), QByteArray("[\"f\",1]"));
}

TEST(SettingsJson, aNestedTreeIsReadInEitherOrderOfItsMembers)
{
    DzSettings settings;
    read("{\"a\":{\"type\":\"settings\",\"value\":{\"x\":1}},"
         "\"b\":{\"value\":{\"y\":{\"value\":{},\"type\":\"settings\"}},\"type\":\"settings\"}}",
        &settings);
    ASSERT_NE(settings.getSettingsValue("a"), nullptr);
    EXPECT_EQ(settings.getSettingsValue("a")->getFloatValue("x"), 1);
    ASSERT_NE(settings.getSettingsValue("b"), nullptr);
    ASSERT_NE(settings.getSettingsValue("b")->getSettingsValue("y"), nullptr);
    EXPECT_EQ(settings.getSettingsValue("b")->getSettingsValue("y")->getNumValues(), 0);
}

TEST(SettingsJson, objectsThatAreNoNestedTreeAreKept)
{
    EXPECT_EQ(opaque("{}"), QByteArray("{}"));
    EXPECT_EQ(opaque("{ \"type\": \"settings\" }"), QByteArray("{\"type\":\"settings\"}"));
    EXPECT_EQ(opaque("{\"type\":\"Settings\",\"value\":{}}"),
        QByteArray("{\"type\":\"Settings\",\"value\":{}}"));
    EXPECT_EQ(opaque("{\"type\":\"settings\",\"value\":[]}"),
        QByteArray("{\"type\":\"settings\",\"value\":[]}"));
    EXPECT_EQ(opaque("{\"type\":\"settings\",\"values\":{}}"),
        QByteArray("{\"type\":\"settings\",\"values\":{}}"));
    EXPECT_EQ(opaque("{\"type\":\"settings\",\"value\":{},\"more\":1}"),
        QByteArray("{\"type\":\"settings\",\"value\":{},\"more\":1}"));
}

TEST(SettingsJson, otherValuesAreKept)
{
    EXPECT_EQ(opaque("null"), QByteArray("null"));
    EXPECT_EQ(opaque("[]"), QByteArray("[]"));
    EXPECT_EQ(opaque("[\"i\"]"), QByteArray("[\"i\"]"));
    EXPECT_EQ(opaque("[\"i\",1,2]"), QByteArray("[\"i\",1,2]"));
    EXPECT_EQ(opaque("[1,\"i\"]"), QByteArray("[1,\"i\"]"));
    EXPECT_EQ(opaque("[\"u\",5]"), QByteArray("[\"u\",5]"));
}

TEST(SettingsJson, aKeptValueKeepsItsOrderNumbersAndEscapesWithoutBlanks)
{
    const QByteArray value = "{ \"z\" : [ 1.0 ,\n 1E5, 12345678901234567890123 ],\t"
                             "\"a b\\\"\\\\\" : \" x \\u00e9 \\\\\" , \"n\" : { } }";
    const QByteArray compact = "{\"z\":[1.0,1E5,12345678901234567890123],"
                               "\"a b\\\"\\\\\":\" x \\u00e9 \\\\\",\"n\":{}}";
    EXPECT_EQ(opaque(value), compact);
    EXPECT_EQ(rewritten("{\"v\":" + value + "}"), "{\n  \"v\": " + compact.toStdString() + "\n}\n");
}

TEST(SettingsJson, aByteOrderMarkIsAccepted)
{
    DzSettings settings;
    read("\xef\xbb\xbf{\"a\":1}", &settings);
    EXPECT_EQ(settings.getFloatValue("a"), 1);
}

TEST(SettingsJson, aByteOrderMarkInsideAStringIsPartOfIt)
{
    const QByteArray text = "{\n  \"\xef\xbb\xbfk\": \"\xef\xbb\xbf\xef\xbb\xbfv\"\n}\n";
    EXPECT_EQ(rewritten(text), text.toStdString());
}

TEST(SettingsJson, anEscapedZeroIsPartOfAString)
{
    DzSettings settings;
    read("{\"v\":\"a\\u0000b\"}", &settings);
    EXPECT_EQ(settings.getStringValue("v"), QString::fromUtf8("a\0b", 3));
    EXPECT_EQ(write(settings), "{\n  \"v\": \"a\\u0000b\"\n}\n");
}

TEST(SettingsJson, readingReplacesWhatWasThere)
{
    DzSettings settings;
    settings.setIntValue("old", 1);
    read("{\"new\":1}", &settings);
    EXPECT_FALSE(settings.hasKey("old"));
    EXPECT_TRUE(settings.hasKey("new"));
}

TEST(SettingsJson, aFailureLeavesTheSettingsAsTheyWere)
{
    DzSettings settings;
    settings.setIntValue("old", 1);
    EXPECT_FALSE(settingsFromJson("{\"new\":1,", &settings, nullptr));
    EXPECT_EQ(settings.getNumValues(), 1);
    EXPECT_EQ(settings.getIntValue("old"), 1);
}

// Refusals ----------------------------------------------------------------------------------

TEST(SettingsJson, aKeyThatStandsTwiceIsRefusedWithItsPlace)
{
    EXPECT_EQ(errorOf("{\n  \"Kd\": 1,\n  \"Ks\": 2,\n    \"Kd\": 3\n}"),
        "line 4, column 5: a key appears twice: \"Kd\"");
    EXPECT_EQ(errorOf("{\"a\":{\"type\":\"settings\",\"value\":{\"x\":1,\"x\":1}}}"),
        "line 1, column 40: a key appears twice: \"x\"");
}

TEST(SettingsJson, aKeyThatStandsTwiceIsRefusedInValuesThatAreOnlyKept)
{
    EXPECT_EQ(errorOf("{\"v\":[{\"x\":1,\"\\u0078\":1}]}"),
        "line 1, column 14: a key appears twice: \"x\"");
    EXPECT_EQ(errorOf("{\"v\":{\"type\":1,\"type\":2}}"),
        "line 1, column 16: a key appears twice: \"type\"");
}

TEST(SettingsJson, aKeyThatStandsTwiceAmongManyIsRefused)
{
    QByteArray text = "{";
    for (int i = 0; i < 100; ++i)
        text += "\n\"key" + QByteArray::number(i) + "\": 0,";
    EXPECT_EQ(
        errorOf(text + "\n\"key0\": 0}"), "line 102, column 1: a key appears twice: \"key0\"");
    EXPECT_EQ(
        errorOf(text + "\n\"key99\": 0}"), "line 102, column 1: a key appears twice: \"key99\"");
    EXPECT_EQ(
        errorOf(text + "\n\"x\": 0, \"x\": 0}"), "line 102, column 9: a key appears twice: \"x\"");
}

TEST(SettingsJson, equalKeysOfDifferentObjectsAreAllowed)
{
    DzSettings settings;
    read("{\"a\":[{\"x\":1},{\"x\":1}],\"x\":{\"x\":{\"x\":1}}}", &settings);
    EXPECT_EQ(settings.getNumValues(), 2);
}

TEST(SettingsJson, columnsCountCharactersNotBytes)
{
    EXPECT_EQ(errorOf("{\"\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\": ?}"),
        "line 1, column 9: this is not JSON: invalid literal");
}

TEST(SettingsJson, anErrorQuotesAKeyOnOneLine)
{
    EXPECT_EQ(errorOf("{\"\\n\xc3\xa4\\\"\":1,\"\\n\xc3\xa4\\\"\":1}"),
        "line 1, column 12: a key appears twice: \"\\nä\\\"\"");
    const QByteArray longKey(5000, 'k');
    EXPECT_EQ(errorOf("{\"" + longKey + "\":1,\n\"" + longKey + "\":1}"),
        "line 2, column 1: a key appears twice: \"" + std::string(60, 'k') + "...\"");
}

TEST(SettingsJson, aTextThatEndsTooEarlyIsRefusedAtItsEnd)
{
    EXPECT_EQ(errorOf("{\n \"a\": 1"),
        "line 2, column 8: this is not JSON: unexpected end of input; expected '}'");
    EXPECT_EQ(errorOf("{\"a\": \"tex"),
        "line 1, column 11: this is not JSON: invalid string: missing closing quote");
}

TEST(SettingsJson, anUnexpectedTokenIsRefusedAtItsStart)
{
    EXPECT_EQ(errorOf("{\"a\" \"bcd\"}"),
        "line 1, column 6: this is not JSON: unexpected string literal; expected ':'");
    EXPECT_EQ(errorOf("{\"a\": 1, \"x\\\\\" \"b\\\"c\"}"),
        "line 1, column 16: this is not JSON: unexpected string literal; expected ':'");
    EXPECT_EQ(errorOf("{\"a\": 1 false}"),
        "line 1, column 9: this is not JSON: unexpected false literal; expected '}'");
    EXPECT_EQ(errorOf("{\"a\": 1 -25.5}"),
        "line 1, column 9: this is not JSON: unexpected number literal; expected '}'");
    EXPECT_EQ(errorOf("{\"a\": 1,}"),
        "line 1, column 9: this is not JSON: unexpected '}'; expected string literal");
    EXPECT_EQ(errorOf("{} {}"),
        "line 1, column 4: this is not JSON: unexpected '{'; expected end of input");
}

TEST(SettingsJson, anInvalidWordIsRefusedWhereItGoesWrong)
{
    EXPECT_EQ(errorOf("nope"), "line 1, column 2: this is not JSON: invalid literal");
    EXPECT_EQ(errorOf("{\"a\": 01}"),
        "line 1, column 7: this is not JSON: unexpected number literal; expected '}'");
    EXPECT_EQ(errorOf("{\"a\": NaN}"), "line 1, column 7: this is not JSON: invalid literal");
}

TEST(SettingsJson, aLineEndInsideAStringIsRefused)
{
    EXPECT_EQ(errorOf("{\"a\": \"x\n\"}"),
        "line 1, column 9: this is not JSON: invalid string: control character U+000A (LF) must be "
        "escaped to \\u000A or \\n");
}

TEST(SettingsJson, invalidUtf8IsRefusedWithItsPlace)
{
    EXPECT_EQ(errorOf("{\"a\":\n \"x\xff\"}"),
        "line 2, column 4: this is not JSON: invalid string: ill-formed UTF-8 byte");
    EXPECT_EQ(errorOf("{\"a\": \"\xc3\"}"),
        "line 1, column 9: this is not JSON: invalid string: ill-formed UTF-8 byte");
}

TEST(SettingsJson, aZeroByteDoesNotCutTheText)
{
    EXPECT_EQ(errorOf(QByteArray("{\"a\":1}\0{", 9)),
        "line 1, column 8: this is not JSON: there is a zero byte in the text");
    EXPECT_EQ(errorOf(QByteArray("{}\n\0", 4)),
        "line 2, column 1: this is not JSON: there is a zero byte in the text");
}

TEST(SettingsJson, anEmptyTextIsRefused)
{
    for (const char* text : { "", " \r\n\t", "\xef\xbb\xbf" })
        EXPECT_EQ(errorOf(text), "line 1, column 1: the text is empty");
}

TEST(SettingsJson, aRootThatIsNoObjectIsRefused)
{
    for (const char* text : { "[]", "1", "\"{}\"", "null", "true", "-0", "[{}]" })
        EXPECT_EQ(errorOf(text), "line 1, column 1: the outermost value is not an object") << text;
    EXPECT_EQ(errorOf("\n  \"x\""), "line 2, column 3: the outermost value is not an object");
}

TEST(SettingsJson, aNumberBeyondDoubleIsRefused)
{
    EXPECT_EQ(
        errorOf("{\"a\": 1,\n \"b\": 1e400}"), "line 2, column 7: the number 1e400 is too large");
    EXPECT_EQ(errorOf("{\"a\": -1e400 }"), "line 1, column 7: the number -1e400 is too large");
    EXPECT_EQ(errorOf("{\"a\": " + QByteArray(5000, '1') + "}"),
        "line 1, column 7: the number " + std::string(60, '1') + "... is too large");
    EXPECT_EQ(
        errorOf("{\"a\": [\"f\", 1e400]}"), "line 1, column 13: the number 1e400 is too large");
}

TEST(SettingsJson, nestingOf256LevelsIsRead)
{
    DzSettings settings;
    read(nestedArrays(255), &settings);
    EXPECT_EQ(settings.tree()->getOpaqueValue("v").size(), 510);
}

TEST(SettingsJson, nestingOf257LevelsIsRefused)
{
    EXPECT_EQ(errorOf(nestedArrays(256)), "line 1, column 261: more than 256 levels of nesting");
}

TEST(SettingsJson, aHundredThousandLevelsAreRefusedWithoutRecursion)
{
    EXPECT_EQ(errorOf(nestedArrays(100000)), "line 1, column 261: more than 256 levels of nesting");
    QByteArray text;
    for (int i = 0; i < 100000; ++i)
        text += "{\"v\":";
    EXPECT_EQ(errorOf(text), "line 1, column 1281: more than 256 levels of nesting");
}

TEST(SettingsJson, theDeepestNestedTreeIsReadAndWritten)
{
    QByteArray text = "{}";
    for (int i = 0; i < 127; ++i)
        text = "{\"type\":\"settings\",\"value\":{\"n\":" + text + "}}";
    text = "{\"n\":" + text + "}";
    const std::string written = rewritten(text);
    EXPECT_EQ(rewritten(QByteArray::fromStdString(written)), written);
}

// Writing -----------------------------------------------------------------------------------

TEST(SettingsJson, anEmptyTreeIsWrittenOnOneLine)
{
    EXPECT_EQ(write(DzSettings()), "{}\n");
}

TEST(SettingsJson, valuesAreWrittenOneALine)
{
    DzSettings settings;
    settings.setStringValue("format", "abc");
    settings.setIntValue("count", 5);
    settings.setBoolValue("on", true);
    settings.setBoolValue("off", false);
    settings.setFloatValue("gain", 0.5);
    settings.tree()->setOpaqueValue("kept", "[\"u\",5]");
    EXPECT_EQ(write(settings),
        "{\n"
        "  \"format\": \"abc\",\n"
        "  \"count\": [\"i\", 5],\n"
        "  \"on\": true,\n"
        "  \"off\": false,\n"
        "  \"gain\": 0.5,\n"
        "  \"kept\": [\"u\",5]\n"
        "}\n");
}

TEST(SettingsJson, theTagOfANestedTreeCostsNoLevel)
{
    DzSettings settings;
    DzSettings* brick = settings.setSettingsValue("brick");
    brick->setStringValue("class", "Matte");
    DzSettings* place = brick->setSettingsValue("place");
    place->setFloatValue("x", 1);
    place->setFloatValue("y", 2);
    settings.setStringValue("last", "");
    EXPECT_EQ(write(settings),
        "{\n"
        "  \"brick\": { \"type\": \"settings\", \"value\": {\n"
        "    \"class\": \"Matte\",\n"
        "    \"place\": { \"type\": \"settings\", \"value\": {\n"
        "      \"x\": 1,\n"
        "      \"y\": 2\n"
        "    } }\n"
        "  } },\n"
        "  \"last\": \"\"\n"
        "}\n");
}

TEST(SettingsJson, anEmptyNestedTreeIsWrittenOnItsLine)
{
    DzSettings settings;
    settings.setSettingsValue("n");
    EXPECT_EQ(write(settings), "{\n  \"n\": { \"type\": \"settings\", \"value\": {} }\n}\n");
}

TEST(SettingsJson, aNestedTreeWithOneValueIsWrittenOnItsLine)
{
    DzSettings settings;
    settings.setSettingsValue("n")->setFloatValue("Value", 0.5);
    EXPECT_EQ(write(settings),
        "{\n  \"n\": { \"type\": \"settings\", \"value\": { \"Value\": 0.5 } }\n}\n");
}

TEST(SettingsJson, onlyValuesChainOnOneLine)
{
    DzSettings settings;
    settings.setSettingsValue("bumpmap")->setSettingsValue("Prop_0")->setFloatValue("Value", 0);
    settings.setSettingsValue("empty")->setSettingsValue("Prop_0");
    EXPECT_EQ(write(settings),
        "{\n"
        "  \"bumpmap\": { \"type\": \"settings\", \"value\": { \"Prop_0\": "
        "{ \"type\": \"settings\", \"value\": { \"Value\": 0 } } } },\n"
        "  \"empty\": { \"type\": \"settings\", \"value\": { \"Prop_0\": "
        "{ \"type\": \"settings\", \"value\": {} } } }\n"
        "}\n");
}

TEST(SettingsJson, aChainThatEndsInSeveralValuesOpensLinesAndClosesOnOne)
{
    DzSettings settings;
    DzSettings* value
        = settings.setSettingsValue("Kd")->setSettingsValue("Prop_0")->setSettingsValue("Value");
    value->setIntValue("Red", 1);
    value->setSettingsValue("More")->setIntValue("Only", 2);
    settings.setBoolValue("last", true);
    EXPECT_EQ(write(settings),
        "{\n"
        "  \"Kd\": { \"type\": \"settings\", \"value\": { \"Prop_0\": "
        "{ \"type\": \"settings\", \"value\": { \"Value\": { \"type\": \"settings\", \"value\": {\n"
        "    \"Red\": [\"i\", 1],\n"
        "    \"More\": { \"type\": \"settings\", \"value\": { \"Only\": [\"i\", 2] } }\n"
        "  } } } } } },\n"
        "  \"last\": true\n"
        "}\n");
}

TEST(SettingsJson, floatsAreWrittenAsShortAsTheirPrecisionAllows)
{
    EXPECT_EQ(writtenFloat(0), "0");
    EXPECT_EQ(writtenFloat(-0.0), "-0");
    EXPECT_EQ(writtenFloat(5), "5");
    EXPECT_EQ(writtenFloat(-10000), "-10000");
    EXPECT_EQ(writtenFloat(16777216), "16777216");
    EXPECT_EQ(writtenFloat(0.1), "0.1");
    EXPECT_EQ(writtenFloat(static_cast<double>(0.1f)), "0.1");
    EXPECT_EQ(writtenFloat(static_cast<double>(1.0f / 3)), "0.33333334");
    EXPECT_EQ(writtenFloat(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(writtenFloat(1e300), "1e+300");
    EXPECT_EQ(writtenFloat(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
    EXPECT_EQ(writtenFloat(std::numeric_limits<double>::denorm_min()), "5e-324");
    EXPECT_EQ(
        writtenFloat(static_cast<double>(std::numeric_limits<float>::max())), "3.4028235e+38");
}

TEST(SettingsJson, floatsThatJsonLacksAreWrittenWithTheirTag)
{
    EXPECT_EQ(writtenFloat(notANumber), "[\"f\", \"nan\"]");
    EXPECT_EQ(writtenFloat(-notANumber), "[\"f\", \"nan\"]");
    EXPECT_EQ(writtenFloat(infinity), "[\"f\", \"inf\"]");
    EXPECT_EQ(writtenFloat(-infinity), "[\"f\", \"-inf\"]");
}

TEST(SettingsJson, everyFloatIsReadBackToTheSameBytes)
{
    const double values[] = { 0.0, -0.0, 0.1, static_cast<double>(0.1f), 1.0 / 3,
        static_cast<double>(1.0f / 3), 123456789.0, static_cast<double>(123456789.0f), 100000.0,
        1e22, 9007199254740993.0, 1e-7, 4.9e-324, 1.17549435e-38, -2.2250738585072014e-308,
        1.7976931348623157e308, notANumber, infinity, -infinity };
    DzSettings settings;
    for (double value : values)
        settings.setFloatValue(QStringLiteral("v%1").arg(settings.getNumValues()), value);
    const std::string once = write(settings);
    EXPECT_EQ(rewritten(QByteArray::fromStdString(once)), once);
}

TEST(SettingsJson, doublesAreReadBackToTheSameValue)
{
    const double values[] = { -0.0, 0.1, 1.0 / 3, 9007199254740991.0, 4.9e-324, 1e-310,
        -2.2250738585072014e-308, 1.7976931348623157e308 };
    for (double value : values) {
        DzSettings settings;
        settings.setFloatValue("v", value);
        DzSettings back;
        read(settingsToJson(settings), &back);
        EXPECT_TRUE(back.isEqual(settings)) << value;
    }
}

TEST(SettingsJson, stringsAreEscapedAndStayUtf8)
{
    DzSettings settings;
    settings.setStringValue(QString::fromUtf8("\"ключ\\"), QString::fromUtf8("a\"\\/\n\t\x01ü€😀"));
    const std::string written = write(settings);
    EXPECT_EQ(written, "{\n  \"\\\"ключ\\\\\": \"a\\\"\\\\/\\n\\t\\u0001ü€😀\"\n}\n");
    DzSettings back;
    read(QByteArray::fromStdString(written), &back);
    EXPECT_TRUE(back.isEqual(settings));
}

TEST(SettingsJson, aLoneSurrogateIsReplacedNotRefused)
{
    DzSettings settings;
    settings.setStringValue("v", QString(QChar(0xd800)) + "x");
    settings.setStringValue("w", QString(QChar(0xdc00)) + "\n");
    const std::string written = write(settings);
    EXPECT_EQ(rewritten(QByteArray::fromStdString(written)), written);
}

TEST(SettingsJson, readingAndWritingGivesTheSameBytes)
{
    const std::string text = "{\n"
                             "  \"format\": \"net\",\n"
                             "  \"version\": 1,\n"
                             "  \"Setup\": { \"type\": \"settings\", \"value\": {\n"
                             "    \"empty\": { \"type\": \"settings\", \"value\": {} },\n"
                             "    \"one\": { \"type\": \"settings\", \"value\": { \"x\": 0.5 } },\n"
                             "    \"kept\": {\"any\":[null,{\"thing\":1.50}]},\n"
                             "    \"count\": [\"i\", -7]\n"
                             "  } }\n"
                             "}\n";
    EXPECT_EQ(rewritten(QByteArray::fromStdString(text)), text);
}

TEST(SettingsJson, manyMembersAreReadInLinearTime)
{
    QByteArray text = "{\"last\":{\"x\":0";
    for (int i = 0; i < 200000; ++i)
        text += ",\"k" + QByteArray::number(i) + "\":0";
    text += "}";
    for (int i = 0; i < 200000; ++i)
        text += ",\"k" + QByteArray::number(i) + "\":0";
    DzSettings settings;
    read(text + "}", &settings);
    EXPECT_EQ(settings.getNumValues(), 200001);
    EXPECT_EQ(settings.getSettingIndex("k199999"), 200000);
}
