// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCode.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzbrickstate.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzundostack.h"

#include <QSignalSpy>

namespace {

class MultiInputTest : public testing::Test
{
protected:
    void setCount(VireoBrickBase* brick, int count)
    {
        propertyAs<DzIntProperty>(brick, "count")->setValue(count);
    }
    int count(VireoBrickBase* brick)
    {
        return propertyAs<DzIntProperty>(brick, "count")->getValue();
    }
    void setNumber(VireoBrickBase* brick, const char* name, float value)
    {
        propertyAs<DzFloatProperty>(brick, name)->setValue(value);
    }
    QStringList paramNames(const VireoBrickBase* brick)
    {
        QStringList names;
        for (int i = 0; i < brick->getNumParameters(); ++i)
            names.append(brick->getParameter(i)->getName());
        return names;
    }
    static QStringList words(const char* text)
    {
        return QString::fromLatin1(text).split(QLatin1Char(' '));
    }

    VireoBrickUser user;
    VireoBrickBase* band = addBrick(user, "VireoTexFltBAndBrick");
    VireoBrickBase* mix = addBrick(user, "VireoTexClrMultiMixBrick");
};

} // namespace

TEST_F(MultiInputTest, aFreshBrickHasNoPairs)
{
    EXPECT_EQ(count(band), 0);
    EXPECT_EQ(paramNames(band), words("result amount"));
    EXPECT_EQ(paramNames(mix), words("result"));
}

TEST_F(MultiInputTest, withoutPairsABandWritesOnlyItsAmountAndAMixNothing)
{
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"band\"\n"
                               "\t\"float   amount\" [0]\n"),
        literalText(band));
    EXPECT_TEXT(
        QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"multimix\"\n"), literalText(mix));
}

TEST_F(MultiInputTest, countIsHeldBetweenZeroAndTen)
{
    setCount(band, 11);
    EXPECT_EQ(count(band), 10);
    EXPECT_EQ(band->getNumParameters(), 2 + 2 * 10);
    EXPECT_EQ(param(band, "tex10"), band->getParameter(21));
    setCount(band, -1);
    EXPECT_EQ(count(band), 0);
    EXPECT_EQ(paramNames(band), words("result amount"));
}

TEST_F(MultiInputTest, raisingCountAppendsPairsAndKeepsTheOthers)
{
    setCount(band, 2);
    setNumber(band, "offset1", 0.25f);
    setNumber(band, "tex2", 0.75f);
    DzBrickParam* first = param(band, "offset1");
    setCount(band, 3);
    EXPECT_EQ(paramNames(band), words("result amount offset1 tex1 offset2 tex2 offset3 tex3"));
    EXPECT_EQ(param(band, "offset1"), first);
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "offset1")->getValue(), 0.25f);
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "tex2")->getValue(), 0.75f);
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "offset3")->getValue(), 0.0f);
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "tex3")->getValue(), 0.0f);
}

TEST_F(MultiInputTest, loweringCountRemovesTheHighestPairs)
{
    setCount(mix, 3);
    setNumber(mix, "weight1", 0.5f);
    setCount(mix, 1);
    EXPECT_EQ(paramNames(mix), words("result weight1 tex1"));
    EXPECT_EQ(propertyAs<DzFloatProperty>(mix, "weight1")->getValue(), 0.5f);
}

TEST_F(MultiInputTest, aPairThatComesBackHoldsWhatItHeld)
{
    VireoBrickBase* texture = addBrick(user, "VireoTexFltConstantBrick");
    setCount(band, 3);
    setNumber(band, "offset2", 0.5f);
    setNumber(band, "tex2", 0.75f);
    ASSERT_TRUE(propertyAs<DzFloatProperty>(band, "tex2")->setMap(QStringLiteral("ramp.png")));
    property(band, "offset2")->lock(true);
    param(band, "tex3")->setLabel(QStringLiteral("Third"));
    ASSERT_TRUE(link(texture, band, "tex3"));
    const QString before = literalText(band);
    setCount(band, 1);
    EXPECT_EQ(param(texture, "result")->getNumConnections(), 0);
    setCount(band, 3);
    EXPECT_EQ(paramNames(band), words("result amount offset1 tex1 offset2 tex2 offset3 tex3"));
    EXPECT_TEXT(before, literalText(band));
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "offset2")->getValue(), 0.5f);
    EXPECT_TRUE(property(band, "offset2")->isLocked());
    EXPECT_FALSE(property(band, "tex2")->isLocked());
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "tex2")->getMapValue()->getFilename(),
        QStringLiteral("ramp.png"));
    EXPECT_EQ(param(band, "tex3")->getLabel(), QStringLiteral("Third"));
    EXPECT_TRUE(param(band, "tex3")->isConnectedTo(param(texture, "result")));
}

TEST_F(MultiInputTest, whatAPairHeldLastIsWhatComesBack)
{
    setCount(mix, 2);
    setNumber(mix, "weight2", 0.5f);
    propertyAs<DzColorProperty>(mix, "tex2")->setColorValue(QColor(10, 20, 30));
    setCount(mix, 0);
    setCount(mix, 2);
    setNumber(mix, "weight2", 0.25f);
    setCount(mix, 1);
    setCount(mix, 2);
    EXPECT_EQ(propertyAs<DzFloatProperty>(mix, "weight2")->getValue(), 0.25f);
    EXPECT_EQ(propertyAs<DzColorProperty>(mix, "tex2")->getColorValue(), QColor(10, 20, 30));
}

TEST_F(MultiInputTest, aLinkThatIsNoLongerAllowedDoesNotComeBack)
{
    VireoBrickBase* deleted = addBrick(user, "VireoTexFltConstantBrick");
    VireoBrickBase* looping = addBrick(user, "VireoTexFltMixBrick");
    setCount(band, 3);
    ASSERT_TRUE(link(deleted, band, "tex2"));
    ASSERT_TRUE(link(looping, band, "tex3"));
    setCount(band, 1);
    ASSERT_TRUE(link(band, looping, "tex1"));
    // Undo keeps it alive.
    const BrickPtr alive(deleted);
    ASSERT_TRUE(user.deleteBrick(deleted));
    setCount(band, 3);
    EXPECT_EQ(param(band, "tex2")->getNumConnections(), 0);
    EXPECT_EQ(param(band, "tex3")->getNumConnections(), 0);
}

TEST_F(MultiInputTest, whatRemovedPairsHeldIsInNoFileNoCopyAndNoText)
{
    VireoBrickUser fresh;
    VireoBrickBase* other = addBrick(fresh, "VireoTexFltBAndBrick");
    setCount(other, 1);
    setCount(band, 2);
    setNumber(band, "offset2", 0.5f);
    setCount(band, 1);
    EXPECT_TEXT(literalText(other), literalText(band));
    DzSettings attributes;
    band->getAttributes(&attributes);
    DzSettings expected;
    other->getAttributes(&expected);
    EXPECT_TRUE(attributes.isEqual(expected));

    VireoBrickUser copy;
    copy.copyFrom(&user);
    auto* copied = qobject_cast<VireoBrickBase*>(copy.getBrick(band->getBrickID()));
    ASSERT_NE(copied, nullptr);
    setCount(copied, 2);
    EXPECT_EQ(propertyAs<DzFloatProperty>(copied, "offset2")->getValue(), 0.0f);
}

TEST_F(MultiInputTest, pairsComeBackWithTheirLinksThroughUndoAndRedo)
{
    VireoBrickBase* texture = addBrick(user, "VireoTexFltConstantBrick");
    const auto changeCount = [&](int number) {
        DzBrickStateHold hold(band);
        setCount(band, number);
        hold.accept(QStringLiteral("count"));
    };
    changeCount(2);
    setNumber(band, "offset2", 0.5f);
    ASSERT_TRUE(link(texture, band, "tex2"));
    const QString before = literalText(band);
    changeCount(1);
    const QString lowered = literalText(band);
    dzUndoStack->undo();
    EXPECT_TEXT(before, literalText(band));
    dzUndoStack->redo();
    EXPECT_TEXT(lowered, literalText(band));
    changeCount(2);
    EXPECT_TEXT(before, literalText(band));
    dzUndoStack->undo();
    EXPECT_TEXT(lowered, literalText(band));
    EXPECT_EQ(param(texture, "result")->getNumConnections(), 0);
    dzUndoStack->redo();
    EXPECT_TEXT(before, literalText(band));
    EXPECT_EQ(param(texture, "result")->getNumConnections(), 1);
}

TEST_F(MultiInputTest, countAndPairsAgreeAlsoWithoutClamping)
{
    auto* number = propertyAs<DzIntProperty>(band, "count");
    number->setIsClamped(false);
    setCount(band, 15);
    EXPECT_EQ(count(band), 10);
    EXPECT_EQ(band->getNumParameters(), 2 + 2 * 10);
    setCount(band, -3);
    EXPECT_EQ(count(band), 0);
    EXPECT_EQ(paramNames(band), words("result amount"));
}

TEST_F(MultiInputTest, aCountOutOfRangeInAFileIsBroughtIntoRangeAndNamed)
{
    setCount(band, 2);
    DzBrickUserFile file;
    QByteArray bytes = file.saveText(&user);
    ASSERT_EQ(bytes.count("[\"i\", 2]"), 1) << bytes.toStdString();
    bytes.replace("[\"i\", 2]", "[\"i\", 4000000]");
    VireoBrickUser loaded;
    Warnings warnings;
    ASSERT_TRUE(file.loadText(bytes, QStringLiteral("network.sskn"), &loaded));
    auto* again = qobject_cast<VireoBrickBase*>(loaded.getBrick(band->getBrickID()));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(count(again), 10);
    EXPECT_EQ(again->getNumParameters(), 2 + 2 * 10);
    const QString told = (warnings.messages + file.getWarnings()).join(QLatin1Char('\n'));
    EXPECT_TRUE(told.contains(QStringLiteral("\"count\" is 4000000"))) << told.toStdString();
}

TEST_F(MultiInputTest, linksOfPairsThatStayAreKeptAndOthersGo)
{
    setCount(mix, 2);
    VireoBrickBase* first = addBrick(user, "VireoTexClrConstantBrick");
    VireoBrickBase* second = addBrick(user, "VireoTexClrConstantBrick");
    ASSERT_TRUE(link(first, mix, "tex1"));
    ASSERT_TRUE(link(second, mix, "tex2"));
    setCount(mix, 3);
    EXPECT_TRUE(param(mix, "tex1")->isConnectedTo(param(first, "result")));
    EXPECT_TRUE(param(mix, "tex2")->isConnectedTo(param(second, "result")));
    setCount(mix, 1);
    EXPECT_TRUE(param(mix, "tex1")->isConnectedTo(param(first, "result")));
    EXPECT_EQ(param(second, "result")->getNumConnections(), 0);
}

TEST_F(MultiInputTest, everyPairThatComesOrGoesIsTold)
{
    QSignalSpy added(band, SIGNAL(paramAdded(DzShaderBrick*)));
    QSignalSpy removed(band, SIGNAL(paramRemoved(DzShaderBrick*)));
    setCount(band, 2);
    EXPECT_EQ(added.count(), 4);
    EXPECT_EQ(removed.count(), 0);
    setCount(band, 2);
    EXPECT_EQ(added.count(), 4);
    setCount(band, 1);
    EXPECT_EQ(added.count(), 4);
    EXPECT_EQ(removed.count(), 2);
}

TEST_F(MultiInputTest, aLockedCountStays)
{
    setCount(band, 1);
    property(band, "count")->lock(true);
    setCount(band, 4);
    EXPECT_EQ(count(band), 1);
    EXPECT_EQ(paramNames(band), words("result amount offset1 tex1"));
}

TEST_F(MultiInputTest, makingPairsPushesNoParametersOntoTheUndoStack)
{
    dzUndoStack->clearAll();
    setCount(band, 3);
    // The change of the number is the user's and can be taken back; the pairs follow it.
    EXPECT_LE(dzUndoStack->getNumUndoItems(), 1);
    while (dzUndoStack->canUndo())
        dzUndoStack->undo();
    EXPECT_EQ(paramNames(band), words("result amount"));
}

TEST_F(MultiInputTest, numbersAreOneArrayAfterTheTextures)
{
    setCount(band, 3);
    setNumber(band, "amount", 0.5f);
    setNumber(band, "offset1", 0.1f);
    setNumber(band, "offset2", -2);
    setNumber(band, "offset3", 1000000);
    setNumber(band, "tex2", 0.3f);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"band\"\n"
                               "\t\"float   amount\" [0.5]\n"
                               "\t\"float   tex1\" [0]\n"
                               "\t\"float   tex2\" [0.3]\n"
                               "\t\"float   tex3\" [0]\n"
                               "\t\"float   offsets\" [0.1 -2 1e+06]\n"),
        literalText(band));
}

TEST_F(MultiInputTest, numbersAreValuesAmongPlaceholdersAndArePublishedNowhere)
{
    setCount(mix, 2);
    setNumber(mix, "weight2", 0.5f);
    GenerateOptions options;
    options.literalValues = false;
    const GeneratedCode code = generateCode(mix, options);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"multimix\"\n"
                               "\t\"string  tex1\" [%(LuxRender_Lm_001_tex1)]\n"
                               "\t\"string  tex2\" [%(LuxRender_Lm_002_tex2)]\n"
                               "\t\"float   weights\" [0 0.5]\n"),
        code.materialText);
    EXPECT_EQ(code.placeholderNames, words("LuxRender_Lm_001_tex1 LuxRender_Lm_002_tex2"));
}

TEST_F(MultiInputTest, aLinkIntoANumberIsNotFollowedButOneIntoATextureIs)
{
    setCount(band, 2);
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltBlenderCloudsBrick"), band, "offset1"));
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltBlenderWoodBrick"), band, "tex2"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture2\" \"float\" \"blender_wood\"\n"
                               "\nTexture \"Lm_texture1\" \"float\" \"band\"\n"
                               "\t\"float   amount\" [0]\n"
                               "\t\"float   tex1\" [0]\n"
                               "\t\"texture tex2\" [\"Lm_texture2\"]\n"
                               "\t\"float   offsets\" [0 0]\n"),
        literalText(band));
}

TEST_F(MultiInputTest, aMapOfANumberIsNoticedAsNotWritten)
{
    setCount(band, 1);
    auto* offset = propertyAs<DzFloatProperty>(band, "offset1");
    ASSERT_TRUE(offset->setMap(QStringLiteral("maps/ramp.png")));
    EXPECT_EQ(
        generateCode(band, GenerateOptions()).unwrittenMaps, QList<DzNumericProperty*>({ offset }));
}

TEST_F(MultiInputTest, pairsStandBeforeCustomInputs)
{
    band->addCustomInput(1009, QStringLiteral("mine"), QStringLiteral("mine"), 0);
    setCount(band, 2);
    EXPECT_EQ(paramNames(band), words("result amount offset1 tex1 offset2 tex2 mine"));
}

TEST_F(MultiInputTest, pairsAreAppendedAtTheEndWhenACustomInputWasMovedForward)
{
    DzBrickParam* moved
        = band->addCustomInput(1009, QStringLiteral("mine"), QStringLiteral("mine"), 0);
    setCount(band, 1);
    ASSERT_TRUE(band->changeParamIndex(moved, 1));
    setCount(band, 2);
    EXPECT_EQ(paramNames(band), words("result mine amount offset1 tex1 offset2 tex2"));
    band->addCustomInput(1009, QStringLiteral("last"), QStringLiteral("last"), 0);
    setCount(band, 3);
    EXPECT_EQ(
        paramNames(band), words("result mine amount offset1 tex1 offset2 tex2 offset3 tex3 last"));
}

TEST_F(MultiInputTest, aCustomInputNamedLikeAPairsDoesNotDisturb)
{
    DzBrickParam* custom
        = band->addCustomInput(1009, QStringLiteral("offset1"), QStringLiteral("mine"), 0);
    qobject_cast<DzFloatProperty*>(custom->getProperty(0))->setValue(9);
    setCount(band, 1);
    EXPECT_EQ(paramNames(band), words("result amount offset1 tex1 offset1"));
    EXPECT_EQ(band->getParameter(4), custom);
    setNumber(band, "offset1", 0.5f);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"band\"\n"
                               "\t\"float   amount\" [0]\n"
                               "\t\"float   tex1\" [0]\n"
                               "\t\"float   offsets\" [0.5]\n"),
        literalText(band));
    setCount(band, 0);
    EXPECT_EQ(paramNames(band), words("result amount offset1"));
    EXPECT_EQ(band->getParameter(2), custom);
    EXPECT_EQ(band->getNumCustomParams(), 1);
}

TEST_F(MultiInputTest, customInputsWriteNothing)
{
    mix->addCustomInput(1007, QStringLiteral("material"), QStringLiteral("material"), 0);
    mix->addCustomInput(1015, QStringLiteral("note"), QStringLiteral("note"), 0);
    ASSERT_TRUE(link(addBrick(user, "VireoMatNullBrick"), mix, "material"));
    EXPECT_TEXT(
        QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"multimix\"\n"), literalText(mix));
}

TEST_F(MultiInputTest, everythingComesBackFromAFile)
{
    band->addCustomInput(1009, QStringLiteral("offset1"), QStringLiteral("mine"), 0);
    setCount(band, 3);
    setNumber(band, "offset1", 0.25f);
    setNumber(band, "offset3", 0.75f);
    qobject_cast<DzFloatProperty*>(band->getParameter(8)->getProperty(0))->setValue(9);
    property(band, "count")->lock(true);
    VireoBrickBase* texture = addBrick(user, "VireoTexFltConstantBrick");
    ASSERT_TRUE(link(texture, band, "tex3"));
    ASSERT_TRUE(param(texture, "result")->addConnection(band->getParameter(8)));
    const QStringList names = words("result amount offset1 tex1 offset2 tex2 offset3 tex3 offset1");
    ASSERT_EQ(paramNames(band), names);

    DzBrickUserFile file;
    const QByteArray bytes = file.saveText(&user);
    VireoBrickUser loaded;
    Warnings warnings;
    ASSERT_TRUE(file.loadText(bytes, QStringLiteral("network.sskn"), &loaded))
        << file.getError().toStdString();
    EXPECT_EQ(warnings.messages, QStringList());
    auto* again = qobject_cast<VireoBrickBase*>(loaded.getBrick(band->getBrickID()));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(paramNames(again), names);
    EXPECT_EQ(count(again), 3);
    EXPECT_TRUE(property(again, "count")->isLocked());
    EXPECT_EQ(again->getNumCustomParams(), 1);
    EXPECT_EQ(again->getCustomParam(0), again->getParameter(8));
    EXPECT_EQ(propertyAs<DzFloatProperty>(again, "offset1")->getValue(), 0.25f);
    EXPECT_EQ(
        qobject_cast<DzFloatProperty*>(again->getParameter(8)->getProperty(0))->getValue(), 9.0f);
    EXPECT_EQ(param(again, "tex3")->getNumConnections(), 1);
    EXPECT_EQ(param(again, "offset1")->getNumConnections(), 0);
    EXPECT_EQ(again->getParameter(8)->getNumConnections(), 1);
    EXPECT_TEXT(literalText(band), literalText(again));
    EXPECT_EQ(file.saveText(&loaded), bytes);
    // The pairs of the new brick follow its own count.
    property(again, "count")->lock(false);
    setCount(again, 1);
    EXPECT_EQ(paramNames(again), words("result amount offset1 tex1 offset1"));
}
