// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzpropertysettings.h"
#include "dzsettings.h"
#include "settingsjson.h"
#include "settingstree.h"

#include <QPointer>
#include <QStringList>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

const double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

QStringList keysOf(const DzSettings& settings)
{
    QStringList keys;
    for (int i = 0; i < settings.getNumValues(); ++i)
        keys.append(settings.getKey(i));
    return keys;
}

std::string text(const QString& string)
{
    return string.toStdString();
}

/// Twenty values "key0" to "key19", enough for the index to be in use.
void fillBeyondIndexThreshold(DzSettings* settings)
{
    for (int i = 0; i < 20; ++i)
        settings->setIntValue(QStringLiteral("key%1").arg(i), i);
}

} // namespace

TEST(Settings, keysKeepTheOrderInWhichTheyWereFirstSet)
{
    DzSettings settings;
    settings.setStringValue("zebra", "z");
    settings.setIntValue("ant", 1);
    settings.setBoolValue("mole", true);
    settings.setFloatValue("zebra", 2.5);
    EXPECT_EQ(keysOf(settings), QStringList({ "zebra", "ant", "mole" }));
}

TEST(Settings, settingAnExistingKeyReplacesValueAndType)
{
    DzSettings settings;
    settings.setStringValue("a", "text");
    settings.setIntValue("a", 7);
    EXPECT_EQ(settings.getNumValues(), 1);
    EXPECT_EQ(settings.getValueType(0), DzSettings::IntValue);
    EXPECT_EQ(settings.getIntValue("a"), 7);
    EXPECT_EQ(text(settings.getStringValue("a", "none")), "none");
}

TEST(Settings, eachTypeIsReadBack)
{
    DzSettings settings;
    settings.setStringValue("s", QString::fromUtf8("grün"));
    settings.setIntValue("i", -3);
    settings.setBoolValue("b", true);
    settings.setFloatValue("f", 0.125);
    settings.tree()->setOpaqueValue("o", "[\"u\",[1,2]]");
    EXPECT_EQ(text(settings.getStringValue("s")), "grün");
    EXPECT_EQ(settings.getIntValue("i"), -3);
    EXPECT_TRUE(settings.getBoolValue("b"));
    EXPECT_EQ(settings.getFloatValue("f"), 0.125);
    EXPECT_EQ(settings.tree()->getOpaqueValue("o"), QByteArray("[\"u\",[1,2]]"));
}

TEST(Settings, anAbsentKeyGivesTheFallback)
{
    const DzSettings settings;
    EXPECT_EQ(text(settings.getStringValue("x", "fallback")), "fallback");
    EXPECT_EQ(settings.getIntValue("x", 4), 4);
    EXPECT_TRUE(settings.getBoolValue("x", true));
    EXPECT_EQ(settings.getFloatValue("x", 1.5), 1.5);
    EXPECT_EQ(settings.getSettingsValue("x"), nullptr);
    EXPECT_TRUE(settings.tree()->getOpaqueValue("x").isEmpty());
}

TEST(Settings, aValueOfAnotherTypeGivesTheFallback)
{
    DzSettings settings;
    settings.setStringValue("s", "1");
    settings.setBoolValue("b", true);
    settings.setIntValue("i", 1);
    EXPECT_EQ(settings.getIntValue("s", 9), 9);
    EXPECT_EQ(settings.getFloatValue("b", 9), 9);
    EXPECT_FALSE(settings.getBoolValue("i", false));
    EXPECT_EQ(settings.getSettingsValue("s"), nullptr);
    EXPECT_TRUE(settings.tree()->getOpaqueValue("s").isEmpty());
}

TEST(Settings, anIntIsReadAsAFloat)
{
    DzSettings settings;
    settings.setIntValue("i", 2147483647);
    EXPECT_EQ(settings.getFloatValue("i", -1), 2147483647.0);
}

TEST(Settings, aWholeFloatIsReadAsAnInt)
{
    DzSettings settings;
    settings.setFloatValue("whole", 1009);
    settings.setFloatValue("lowest", -2147483648.0);
    EXPECT_EQ(settings.getIntValue("whole", -1), 1009);
    EXPECT_EQ(settings.getIntValue("lowest", -1), std::numeric_limits<int>::min());
}

TEST(Settings, aFloatThatIsNoIntGivesTheFallback)
{
    DzSettings settings;
    settings.setFloatValue("half", 0.5);
    settings.setFloatValue("large", 2147483648.0);
    settings.setFloatValue("nan", notANumber);
    settings.setFloatValue("inf", -infinity);
    for (const char* key : { "half", "large", "nan", "inf" })
        EXPECT_EQ(settings.getIntValue(key, -1), -1) << key;
}

TEST(Settings, anIndexThatIsNoneGivesAnEmptyKeyAndStringType)
{
    DzSettings settings;
    settings.setIntValue("i", 1);
    for (int index : { -1, 1, 1000 }) {
        EXPECT_TRUE(settings.getKey(index).isEmpty());
        EXPECT_EQ(settings.getValueType(index), DzSettings::StringValue);
        EXPECT_TRUE(settings.getValue(index).isEmpty());
    }
}

TEST(Settings, valuesAreGivenAsText)
{
    DzSettings settings;
    settings.setStringValue("s", "text");
    settings.setIntValue("i", -12);
    settings.setBoolValue("yes", true);
    settings.setBoolValue("no", false);
    settings.setFloatValue("f", static_cast<double>(0.1f));
    settings.setFloatValue("n", notANumber);
    settings.setSettingsValue("nested");
    settings.tree()->setOpaqueValue("o", "null");
    QStringList values;
    for (int i = 0; i < settings.getNumValues(); ++i)
        values.append(settings.getValue(i));
    EXPECT_EQ(values, QStringList({ "text", "-12", "true", "false", "0.1", "nan", "", "null" }));
}

TEST(Settings, aNewNestedValueIsEmptyAndOwned)
{
    QPointer<DzSettings> nested;
    {
        DzSettings settings;
        nested = settings.setSettingsValue("n");
        EXPECT_EQ(nested->getNumValues(), 0);
        EXPECT_EQ(settings.getSettingsValue("n"), nested.data());
    }
    EXPECT_TRUE(nested.isNull());
}

TEST(Settings, replacingANestedValueDeletesIt)
{
    DzSettings settings;
    const QPointer<DzSettings> first = settings.setSettingsValue("n");
    DzSettings* second = settings.setSettingsValue("n");
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(settings.getSettingsValue("n"), second);
    const QPointer<DzSettings> guard = second;
    settings.setStringValue("n", "text");
    EXPECT_TRUE(guard.isNull());
    EXPECT_EQ(text(settings.getStringValue("n")), "text");
}

TEST(Settings, aGivenNestedValueIsStoredAsACopy)
{
    DzSettings given;
    given.setIntValue("x", 1);
    DzSettings settings;
    DzSettings* stored = settings.setSettingsValue("n", given);
    given.setIntValue("x", 2);
    EXPECT_NE(stored, &given);
    EXPECT_EQ(stored->getIntValue("x"), 1);
}

TEST(Settings, aNestedValueCanReplaceItselfAndItsHolder)
{
    DzSettings settings;
    DzSettings* nested = settings.setSettingsValue("n");
    nested->setSettingsValue("inner")->setIntValue("x", 5);
    settings.setSettingsValue("n", *nested->getSettingsValue("inner"));
    EXPECT_EQ(settings.getSettingsValue("n")->getIntValue("x"), 5);
    settings = *settings.getSettingsValue("n");
    EXPECT_EQ(keysOf(settings), QStringList("x"));
    EXPECT_EQ(settings.getIntValue("x"), 5);
}

TEST(Settings, aCopyIsDeep)
{
    DzSettings settings;
    settings.setSettingsValue("n")->setStringValue("s", "before");
    DzSettings copy(settings);
    settings.getSettingsValue("n")->setStringValue("s", "after");
    EXPECT_NE(copy.getSettingsValue("n"), settings.getSettingsValue("n"));
    EXPECT_EQ(text(copy.getSettingsValue("n")->getStringValue("s")), "before");
    copy = settings;
    EXPECT_EQ(text(copy.getSettingsValue("n")->getStringValue("s")), "after");
}

TEST(Settings, assigningItToItselfChangesNothing)
{
    DzSettings settings;
    settings.setSettingsValue("n")->setIntValue("x", 3);
    const DzSettings& same = settings;
    settings = same;
    settings.replaceWithSettings(same);
    EXPECT_EQ(settings.getSettingsValue("n")->getIntValue("x"), 3);
}

TEST(Settings, replacingDropsTheOldValues)
{
    DzSettings settings;
    settings.setIntValue("old", 1);
    DzSettings other;
    other.setIntValue("new", 2);
    settings.replaceWithSettings(other);
    EXPECT_EQ(keysOf(settings), QStringList("new"));
}

TEST(Settings, propertySettingsAreACopyOfTheSettings)
{
    DzSettings settings;
    settings.setSettingsValue("n")->setIntValue("x", 3);
    const DzPropertySettings copy(settings);
    EXPECT_TRUE(copy.isEqual(settings));
}

TEST(Settings, clearingDeletesNestedValues)
{
    DzSettings settings;
    const QPointer<DzSettings> nested = settings.setSettingsValue("n");
    settings.clear();
    EXPECT_TRUE(nested.isNull());
    EXPECT_EQ(settings.getNumValues(), 0);
    EXPECT_FALSE(settings.hasKey("n"));
}

TEST(Settings, removingAValueClosesTheGap)
{
    DzSettings settings;
    settings.setIntValue("a", 1);
    const QPointer<DzSettings> nested = settings.setSettingsValue("b");
    settings.setIntValue("c", 3);
    settings.removeValue("b");
    settings.removeValue("nothing");
    EXPECT_TRUE(nested.isNull());
    EXPECT_EQ(keysOf(settings), QStringList({ "a", "c" }));
    EXPECT_EQ(settings.getSettingIndex("c"), 1);
    EXPECT_EQ(settings.getSettingIndex("b"), -1);
}

TEST(Settings, manyKeysAreFoundAndReplacedInPlace)
{
    DzSettings settings;
    fillBeyondIndexThreshold(&settings);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(settings.getSettingIndex(QStringLiteral("key%1").arg(i)), i);
    EXPECT_EQ(settings.getSettingIndex("key20"), -1);
    settings.setStringValue("key3", "three");
    settings.setIntValue("key20", 20);
    EXPECT_EQ(settings.getNumValues(), 21);
    EXPECT_EQ(settings.getSettingIndex("key3"), 3);
    EXPECT_EQ(settings.getSettingIndex("key20"), 20);
}

TEST(Settings, keysAreFoundAfterRemovalsAmongMany)
{
    DzSettings settings;
    fillBeyondIndexThreshold(&settings);
    EXPECT_EQ(settings.getSettingIndex("key19"), 19);
    settings.removeValue("key0");
    EXPECT_EQ(settings.getSettingIndex("key0"), -1);
    EXPECT_EQ(settings.getSettingIndex("key1"), 0);
    EXPECT_EQ(settings.getSettingIndex("key19"), 18);
    settings.removeValue("key19");
    EXPECT_EQ(settings.getSettingIndex("key19"), -1);
    settings.setIntValue("key0", 0);
    EXPECT_EQ(settings.getSettingIndex("key0"), 18);
    settings.removeValue("key1");
    settings.removeValue("key2");
    settings.removeValue("key3");
    EXPECT_EQ(settings.getNumValues(), 16);
    EXPECT_EQ(settings.getSettingIndex("key0"), 15);
    settings.setIntValue("key1", 1);
    EXPECT_EQ(settings.getSettingIndex("key1"), 16);
    EXPECT_EQ(settings.getSettingIndex("key4"), 0);
}

TEST(Settings, manyKeysAreFoundInACopy)
{
    DzSettings settings;
    fillBeyondIndexThreshold(&settings);
    EXPECT_TRUE(settings.hasKey("key19"));
    DzSettings copy(settings);
    copy.removeValue("key5");
    EXPECT_EQ(copy.getSettingIndex("key19"), 18);
    EXPECT_EQ(settings.getSettingIndex("key19"), 19);
}

TEST(Settings, aValueIsCopiedToTheSameKey)
{
    DzSettings source;
    source.setSettingsValue("n")->setIntValue("x", 1);
    source.setStringValue("s", "text");
    source.tree()->setOpaqueValue("o", "null");
    source.setBoolValue("b", true);
    source.setIntValue("i", 3);
    source.setFloatValue("f", 1.5);
    DzSettings target;
    for (const char* key : { "n", "s", "o", "b", "i", "f" })
        EXPECT_TRUE(source.copySetting(key, &target)) << key;
    EXPECT_TRUE(target.isEqual(source));
    EXPECT_NE(target.getSettingsValue("n"), source.getSettingsValue("n"));
    EXPECT_FALSE(source.copySetting("absent", &target));
    EXPECT_FALSE(target.hasKey("absent"));
    EXPECT_TRUE(source.copySetting("n", &source));
    EXPECT_TRUE(target.isEqual(source));
}

TEST(Settings, aValueCanBeCopiedOverTheTreeThatHoldsIt)
{
    DzSettings settings;
    DzSettings* nested = settings.setSettingsValue("x");
    nested->setStringValue("x", "deep");
    EXPECT_TRUE(nested->copySetting("x", &settings));
    EXPECT_EQ(text(settings.getStringValue("x")), "deep");
}

TEST(Settings, treesWithTheSameValuesInTheSameOrderAreEqual)
{
    DzSettings a;
    a.setIntValue("i", 1);
    a.setSettingsValue("n")->setFloatValue("f", notANumber);
    DzSettings b(a);
    EXPECT_TRUE(a.isEqual(b));
    b.getSettingsValue("n")->setFloatValue("f", 0);
    EXPECT_FALSE(a.isEqual(b));
}

TEST(Settings, orderTypeAndNumberOfValuesCount)
{
    DzSettings a;
    a.setIntValue("x", 1);
    a.setIntValue("y", 1);
    DzSettings otherOrder;
    otherOrder.setIntValue("y", 1);
    otherOrder.setIntValue("x", 1);
    DzSettings otherType;
    otherType.setIntValue("x", 1);
    otherType.setFloatValue("y", 1);
    DzSettings shorter;
    shorter.setIntValue("x", 1);
    EXPECT_FALSE(a.isEqual(otherOrder));
    EXPECT_FALSE(a.isEqual(otherType));
    EXPECT_FALSE(a.isEqual(shorter));
}

TEST(Settings, oneValueIsComparedAloneAndAbsentOnesAreEqual)
{
    DzSettings a;
    a.setFloatValue("same", 1);
    a.setFloatValue("zero", 0.0);
    DzSettings b;
    b.setStringValue("before", "");
    b.setFloatValue("same", 1);
    b.setFloatValue("zero", -0.0);
    EXPECT_TRUE(a.hasEqualValue(b, "same"));
    EXPECT_TRUE(a.hasEqualValue(b, "absent"));
    EXPECT_FALSE(a.hasEqualValue(b, "before"));
    EXPECT_FALSE(a.hasEqualValue(b, "zero")) << "the two are written differently";
}

TEST(Settings, copiesOfOneTreeAreIndependentOfOneAnother)
{
    DzSettings original;
    DzSettings* first = original.setSettingsValue("first");
    first->setSettingsValue("deep")->setIntValue("n", 1);
    original.setSettingsValue("second")->setIntValue("m", 2);
    DzSettings copy(original);
    DzSettings copyOfCopy(copy);
    EXPECT_TRUE(copyOfCopy.isEqual(copy));

    // What was handed out before stays valid, and changes of it reach no copy.
    first->getSettingsValue("deep")->setIntValue("n", 10);
    copy.getSettingsValue("first")->getSettingsValue("deep")->setIntValue("n", 20);
    copy.removeValue("second");

    EXPECT_EQ(first->getSettingsValue("deep")->getIntValue("n"), 10);
    EXPECT_EQ(copy.getSettingsValue("first")->getSettingsValue("deep")->getIntValue("n"), 20);
    EXPECT_EQ(copyOfCopy.getSettingsValue("first")->getSettingsValue("deep")->getIntValue("n"), 1);
    EXPECT_EQ(copyOfCopy.getSettingsValue("second")->getIntValue("m"), 2);
    EXPECT_FALSE(copyOfCopy.isEqual(copy));
}

TEST(Settings, aCopyOutlivesWhatItWasCopiedFrom)
{
    auto original = std::make_unique<DzSettings>();
    original->setSettingsValue("outer")->setSettingsValue("inner")->setStringValue("text", "kept");
    const DzSettings copy(*original);
    original.reset();
    ASSERT_NE(copy.getSettingsValue("outer"), nullptr);
    EXPECT_EQ(
        text(copy.getSettingsValue("outer")->getSettingsValue("inner")->getStringValue("text")),
        "kept");
}

TEST(Settings, aCopyThatWasNotLookedIntoCanBeClearedAndAssigned)
{
    DzSettings original;
    original.setSettingsValue("nested")->setIntValue("n", 1);
    DzSettings copy(original);
    copy.clear();
    EXPECT_EQ(copy.getNumValues(), 0);
    copy = original;
    copy = DzSettings(copy);
    EXPECT_TRUE(copy.isEqual(original));
    const DzSettings empty;
    copy = empty;
    EXPECT_EQ(copy.getNumValues(), 0);
}

TEST(Settings, aNestedTreeIsOneObjectHoweverItIsReached)
{
    DzSettings settings;
    SettingsTree* const node = settings.tree()->setSettingsValue("outer")->setSettingsValue("n");
    node->setIntValue("a", 1);
    const DzSettings* outer = settings.getSettingsValue("outer");
    const QPointer<DzSettings> nested = outer->getSettingsValue("n");
    ASSERT_TRUE(nested);
    EXPECT_EQ(outer->getSettingsValue("n"), nested.data());
    EXPECT_EQ(node->facade(), nested.data());
    EXPECT_EQ(nested->tree(), node);
    EXPECT_EQ(nested->getIntValue("a"), 1);
    nested->setIntValue("a", 2);
    EXPECT_EQ(node->getIntValue("a"), 2);
    // An assigned tree takes over the values; what was nested goes, also as others saw it.
    DzSettings other;
    other.setBoolValue("b", true);
    *settings.tree() = *other.tree();
    EXPECT_FALSE(nested);
    EXPECT_TRUE(settings.getBoolValue("b"));
}

// Depth --------------------------------------------------------------------------------------

namespace {

/// As many settings within each other, with a text in each level so that no form is special.
void nest(DzSettings* outermost, int depth, const QString& innermost)
{
    // Trees as such: a million objects for others would be the slow part.
    SettingsTree* tree = outermost->tree();
    for (int i = 0; i < depth; ++i) {
        tree->setStringValue(QStringLiteral("text"), QStringLiteral("x"));
        tree = tree->setSettingsValue(QStringLiteral("below"));
    }
    tree->setStringValue(QStringLiteral("text"), innermost);
}

#ifdef __SANITIZE_ADDRESS__
const int veryDeep = 100000; // its frames are larger too
#else
const int veryDeep = 1000000;
#endif

} // namespace

TEST(SettingsDepth, aMillionLevelsAreMadeComparedCopiedAndFreed)
{
    DzSettings settings;
    nest(&settings, veryDeep, QStringLiteral("a"));
    DzSettings same;
    nest(&same, veryDeep, QStringLiteral("a"));
    DzSettings other;
    nest(&other, veryDeep, QStringLiteral("b"));
    EXPECT_TRUE(settings.isEqual(same));
    EXPECT_FALSE(settings.isEqual(other));
    EXPECT_FALSE(settings.hasEqualValue(other, QStringLiteral("below")));
    const DzSettings copy(settings);
    EXPECT_TRUE(copy.isEqual(settings));
    settings.clear();
    EXPECT_EQ(settings.getNumValues(), 0);
    EXPECT_TRUE(copy.isEqual(same));
    DzSettings target;
    EXPECT_TRUE(copy.copySetting(QStringLiteral("below"), &target));
    target.removeValue(QStringLiteral("below"));
    other = copy;
    EXPECT_TRUE(other.isEqual(same));
}

TEST(SettingsDepth, whatIsSharedWithACopyOutlivesTheOther)
{
    DzSettings settings;
    nest(&settings, veryDeep, QStringLiteral("a"));
    auto* copy = new DzSettings(settings);
    const DzSettings second(*copy);
    delete copy;
    EXPECT_TRUE(second.isEqual(settings));
}

TEST(SettingsDepth, whatCouldNotBeReadAgainIsNotWritten)
{
    QString error;
    DzSettings settings;
    nest(&settings, 127, QStringLiteral("a"));
    EXPECT_TRUE(settingsFitJson(settings, &error));
    DzSettings back;
    EXPECT_TRUE(settingsFromJson(settingsToJson(settings), &back, &error)) << error.toStdString();
    EXPECT_TRUE(back.isEqual(settings));
    for (const int depth : { 128, veryDeep }) {
        DzSettings deep;
        nest(&deep, depth, QStringLiteral("a"));
        EXPECT_FALSE(settingsFitJson(deep, &error));
        EXPECT_EQ(error, QStringLiteral("more than 127 settings are nested within each other"));
        EXPECT_TRUE(settingsToJson(deep).isEmpty());
    }
}
