// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CodeResult.h"
#include "SceneCodeWriter.h"
#include "TestSupport.h"
#include "VireoExtComplexIn.h"
#include "VireoExtMatrixParam.h"
#include "VireoExtPropertyParam.h"
#include "VireoExtVec3Param.h"
#include "dzboolproperty.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzshaderstring.h"
#include "dzstringproperty.h"
#include "dzundostack.h"

#include <memory>

namespace {

const char* const customKey = "VireoExtCustomParameters";

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/// A brick of the host's own.
class HostBrick : public DzShaderBrick
{
public:
    QString getPreferredName() const override { return QStringLiteral("Host Brick"); }
    QString getDefaultCategory() const override { return QString(); }
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
};

/// A brick of the family that adds nothing to the base.
class BareBrick : public VireoBrickBase
{
public:
    QString getPreferredName() const override { return QStringLiteral("Bare Brick"); }
    QString getDefaultCategory() const override { return QString(); }
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
};

class BrickBaseTest : public testing::Test
{
protected:
    ~BrickBaseTest() override { EXPECT_FALSE(dzUndoStack->isLocked()); }

    DzSettings attributes()
    {
        DzSettings settings;
        brick->getAttributes(&settings);
        return settings;
    }
    QStringList customNames()
    {
        QStringList names;
        for (int i = 0; i < brick->getNumCustomParams(); ++i)
            names.append(brick->getCustomParam(i)->getName());
        return names;
    }
    DzBrickParam* addCustom(int type, const char* name, int direction = 0)
    {
        return brick->addCustomInput(type, text(name), text(name), direction);
    }

    BrickPtr brick { new BareBrick };
};

QStringList keysOf(const DzSettings* settings)
{
    QStringList keys;
    for (int i = 0; settings && i < settings->getNumValues(); ++i)
        keys.append(settings->getKey(i));
    return keys;
}

/// One stored custom input.
DzSettings* addEntry(DzSettings* attributes, const char* key, double type)
{
    DzSettings* all = attributes->getSettingsValue(text(customKey));
    if (!all)
        all = attributes->setSettingsValue(text(customKey));
    DzSettings* entry = all->setSettingsValue(text(key));
    entry->setFloatValue(text("ExtTypeID"), type);
    return entry;
}

} // namespace

// The base itself --------------------------------------------------------------------------------

TEST_F(BrickBaseTest, aBareBrickHasTheLockParameterAndNothingElse)
{
    const QString lock = text("VireoBrickBaseLockParam");
    EXPECT_EQ(brick->getNumParameters(), 0);
    EXPECT_EQ(brick->getNumProperties(), 0);
    EXPECT_EQ(brick->getNumCustomParams(), 0);
    EXPECT_EQ(brick->getCustomParam(0), nullptr);
    ASSERT_EQ(brick->getNumScopedParams(), 1);
    EXPECT_EQ(brick->getScopedParamName(0), lock);
    EXPECT_EQ(brick->getScopedParamType(0), 7);
    ASSERT_EQ(brick->getNumRequiredScopedParams(), 1);
    EXPECT_EQ(brick->getRequiredScopedParam(0), lock);
    EXPECT_EQ(brick->getRequiredScopedParamType(0), 7);
}

TEST_F(BrickBaseTest, theActionListOffersTheCustomInputsAfterASeparator)
{
    EXPECT_EQ(brick->getBrickActionList(),
        QStringList({ QString(), text("VireoAddCustomExtInParamAction"),
            text("VireoRemoveCustomExtInParamAction") }));
}

TEST_F(BrickBaseTest, onlyBricksOfTheFamilyProvideForOneAnother)
{
    const BrickPtr other(new BareBrick);
    EXPECT_TRUE(brick->providesParams(other, nullptr));
    EXPECT_FALSE(brick->providesParams(nullptr, nullptr));
    HostBrick foreign;
    EXPECT_FALSE(brick->providesParams(&foreign, nullptr));
    // The host's own brick provides no lock parameter.
    EXPECT_FALSE(foreign.providesParams(brick, nullptr));
}

TEST_F(BrickBaseTest, theBaseHasNoCodeAndNoWord)
{
    EXPECT_EQ(brick->getLuxType(), QString());
    const std::unique_ptr<DzShaderString> ofClass(brick->getBrickClassShaderCode());
    const std::unique_ptr<DzShaderString> ofCall(brick->getShaderCodeCall(QStringList()));
    EXPECT_EQ(ofClass->getText(), QString());
    EXPECT_EQ(ofCall->getText(), QString());
    brick->setBrickRenderSettings(nullptr, nullptr);
    EXPECT_EQ(brick->getNumParameters(), 0);
}

TEST_F(BrickBaseTest, theBaseWritesItsParametersInOrderAndNoStatement)
{
    addCustom(1009, "one");
    addCustom(1012, "silent");
    addCustom(1009, "scale");
    SceneCodeWriter writer;
    writer.literalValues = true;
    writer.push();
    CodeResult result;
    brick->writeCode(&result, &writer);
    EXPECT_EQ(writer.text(), QString());
    brick->writeParameters(&writer);
    EXPECT_TEXT(text("\t\"float   one\" [0]\n\t\"float   scale\" [0]\n"), writer.text());
}

// Creating inputs --------------------------------------------------------------------------------

TEST_F(BrickBaseTest, aFloatInputIsMadeAsAsked)
{
    VireoExtPropertyParam* param = brick->addFloatParam(false, text("/Group"), text("arg"),
        text("Label"), text("name"), 3, 7, -1, 2, false, text("LFloat"));
    ASSERT_EQ(brick->getNumParameters(), 1);
    EXPECT_EQ(brick->getParameter(0), param);
    EXPECT_EQ(param->getName(), text("name"));
    EXPECT_EQ(param->getLabel(), text("Label"));
    EXPECT_EQ(param->getArg(0), text("arg"));
    EXPECT_EQ(param->getMapArg(), text("LFloat"));
    EXPECT_EQ(param->getPropertyPath(0), text("/Group"));
    EXPECT_EQ(param->getDirection(), 0);
    EXPECT_FALSE(param->isFresnel());
    auto* property = qobject_cast<DzFloatProperty*>(param->getProperty(0));
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(property->getName(), text("name"));
    EXPECT_EQ(property->getLabel(), text("Label"));
    EXPECT_EQ(property->getOwner(), brick);
    EXPECT_TRUE(property->canAnimate());
    EXPECT_FALSE(property->isUserProperty());
    EXPECT_TRUE(property->isMappable());
    EXPECT_FALSE(property->isClamped());
    // Not clamped: the value may lie outside.
    EXPECT_EQ(property->getValue(), 3.0f);
    EXPECT_EQ(property->getDefaultValue(), 7.0f);
    EXPECT_EQ(property->getMin(), -1.0f);
    EXPECT_EQ(property->getMax(), 2.0f);
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_EQ(brick->getNumCustomParams(), 0);
}

TEST_F(BrickBaseTest, aClampedInputHoldsValueAndDefaultWithinItsLimits)
{
    auto* number
        = qobject_cast<DzFloatProperty*>(brick
                                             ->addFloatParam(false, text("/"), text("f"), text("f"),
                                                 text("f"), 3, 7, -1, 2, true, QString())
                                             ->getProperty(0));
    EXPECT_TRUE(number->isClamped());
    EXPECT_EQ(number->getValue(), 2.0f);
    EXPECT_EQ(number->getDefaultValue(), 2.0f);
    auto* whole
        = qobject_cast<DzIntProperty*>(brick
                                           ->addIntParam(false, text("/"), text("i"), text("i"),
                                               text("i"), -30, -70, -1, 2, true, QString())
                                           ->getProperty(0));
    EXPECT_TRUE(whole->isClamped());
    EXPECT_EQ(whole->getValue(), -1);
    EXPECT_EQ(whole->getDefaultValue(), -1);
}

TEST_F(BrickBaseTest, withoutALinkTypeARowIsMadeThatTakesNeitherLinkNorMap)
{
    VireoExtPropertyParam* number = brick->addFloatParam(
        false, text("/"), text("f"), text("f"), text("f"), 0, 0, -1, 1, false, QString());
    EXPECT_EQ(number->getDirection(), 1);
    EXPECT_EQ(number->getMapArg(), QString());
    EXPECT_FALSE(qobject_cast<DzFloatProperty*>(number->getProperty(0))->isMappable());
    VireoExtPropertyParam* color = brick->addColorParam(
        false, text("/"), text("c"), text("c"), text("c"), QColor(), QColor(), QString());
    EXPECT_EQ(color->getDirection(), 1);
    EXPECT_FALSE(qobject_cast<DzColorProperty*>(color->getProperty(0))->isMappable());
    EXPECT_FALSE(param(makeBrick("VireoTexFltConstantBrick"), "result")->canConnect(number));
}

TEST_F(BrickBaseTest, aFlaggedFloatInputTakesFresnelTextures)
{
    VireoExtPropertyParam* param = brick->addFloatParamFlagged(false, text("/"), text("f"),
        text("f"), text("f"), 1.5f, 0, -1, 2, false, text("LuxFresnel"));
    EXPECT_TRUE(param->isFresnel());
    EXPECT_EQ(param->getType(), 1016);
    EXPECT_EQ(qobject_cast<DzFloatProperty*>(param->getProperty(0))->getValue(), 1.5f);
}

TEST_F(BrickBaseTest, theOtherKindsOfPropertyInputsAreMadeAsAsked)
{
    auto* whole
        = qobject_cast<DzIntProperty*>(brick
                                           ->addIntParam(false, text("/"), text("i"), text("I"),
                                               text("i"), 30, 4, -5, 6, false, QString())
                                           ->getProperty(0));
    EXPECT_EQ(whole->className(), text("DzIntProperty"));
    EXPECT_EQ(whole->getValue(), 30);
    EXPECT_EQ(whole->getDefaultValue(), 4);
    EXPECT_EQ(whole->getMin(), -5);
    EXPECT_EQ(whole->getMax(), 6);
    EXPECT_EQ(whole->getLabel(), text("I"));

    VireoExtPropertyParam* choices = brick->addEnumParam(false, text("/"), text("e"), text("E"),
        text("e"), QStringList({ text("a"), text("b c") }), 1, QString());
    auto* choice = qobject_cast<DzEnumProperty*>(choices->getProperty(0));
    EXPECT_EQ(choice->getNumItems(), 2);
    EXPECT_EQ(choice->getItem(1), text("b c"));
    EXPECT_EQ(choice->getValue(), 1);
    EXPECT_EQ(choice->getDefaultValue(), 1);

    auto* color = qobject_cast<DzColorProperty*>(
        brick
            ->addColorParam(false, text("/"), text("c"), text("C"), text("c"), QColor(1, 2, 3, 4),
                QColor(5, 6, 7), text("LColor"))
            ->getProperty(0));
    EXPECT_EQ(color->getColorValue(), QColor(1, 2, 3, 4));
    EXPECT_EQ(color->getDefaultColorValue(), QColor(5, 6, 7, 255));
    EXPECT_TRUE(color->isMappable());

    auto* onOff
        = qobject_cast<DzBoolProperty*>(brick
                                            ->addBoolParam(false, text("/"), text("b"), text("B"),
                                                text("b"), true, false, QString())
                                            ->getProperty(0));
    EXPECT_TRUE(onOff->getBoolValue());
    EXPECT_FALSE(onOff->getDefaultBoolValue());

    EXPECT_EQ(brick->addImageParam(false, text("/"), text("m"), text("M"), text("m"), QString())
                  ->getProperty(0)
                  ->className(),
        text("DzImageProperty"));
    EXPECT_EQ(brick->addStringParam(false, text("/"), text("s"), text("S"), text("s"), QString())
                  ->getProperty(0)
                  ->className(),
        text("DzStringProperty"));
    EXPECT_EQ(brick->addFileParam(false, text("/"), text("d"), text("D"), text("d"), QString())
                  ->getProperty(0)
                  ->className(),
        text("DzFileProperty"));
    EXPECT_EQ(brick->getNumParameters(), 7);
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_F(BrickBaseTest, anUnsetColourIsOpaqueBlack)
{
    auto* color
        = qobject_cast<DzColorProperty*>(brick
                                             ->addColorParam(false, text("/"), text("c"), text("c"),
                                                 text("c"), QColor(), QColor(), QString())
                                             ->getProperty(0));
    EXPECT_TRUE(color->getColorValue().isValid());
    EXPECT_EQ(color->getColorValue(), QColor(0, 0, 0, 255));
    EXPECT_EQ(color->getDefaultColorValue(), QColor(0, 0, 0, 255));
}

TEST_F(BrickBaseTest, vectorsMatricesAndComplexInputsAreMadeAsAsked)
{
    VireoExtVec3Param* vector
        = brick->addVec3Param(false, text("/Group"), text("V"), text("v"), 5, DzVec3(1, 2, 3), 1);
    EXPECT_EQ(vector->getType(), 1013);
    EXPECT_EQ(vector->getDirection(), 1);
    EXPECT_EQ(vector->getName(), text("v"));
    EXPECT_EQ(vector->getArg(0), text("v"));
    EXPECT_EQ(vector->getLabel(), text("V"));
    EXPECT_EQ(vector->getValue(), DzVec3(1, 2, 3));
    EXPECT_EQ(vector->getPropertyPath(2), text("/Group"));
    VireoExtMatrixParam* matrix
        = brick->addMatrixParam(false, text("/Group"), text("M"), text("m"), true, 0);
    EXPECT_EQ(matrix->getType(), 1014);
    EXPECT_TRUE(matrix->shouldWriteTokenInShader());
    EXPECT_EQ(matrix->getLabel(), text("M"));
    EXPECT_EQ(matrix->getPropertyPath(15), text("/Group"));
    VireoExtComplexIn* complex = brick->addComplexInput(false, 1008, text("x"), text("X"));
    EXPECT_EQ(complex->getType(), 1008);
    EXPECT_EQ(complex->getName(), text("x"));
    EXPECT_EQ(complex->getArg(0), text("x"));
    EXPECT_EQ(complex->getLabel(), text("X"));
    EXPECT_EQ(complex->getDirection(), 0);
    EXPECT_EQ(brick->getNumParameters(), 3);
    EXPECT_EQ(brick->getNumCustomParams(), 0);
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST(BrickBaseUndoTest, anInputAddedToABrickInANetworkPushesNothing)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoMatMatteBrick");
    dzUndoStack->clearAll();
    for (int type = 1007; type <= 1016; ++type)
        EXPECT_NE(brick->addCustomInput(type, text("x"), text("x"), 0), nullptr);
    while (brick->getNumCustomParams() > 0)
        brick->removeCustomParam(brick->getCustomParam(0));
    EXPECT_FALSE(dzUndoStack->hasItems());
}

// Custom inputs ----------------------------------------------------------------------------------

TEST_F(BrickBaseTest, everyLinkTypeMakesItsCustomInput)
{
    const struct {
        int type;
        const char* className;
        const char* typeText;
        const char* propertyClass;
        bool mappable;
    } expected[] = {
        { 1007, "VireoExtComplexIn", "LuxMaterial", "", false },
        { 1008, "VireoExtComplexIn", "LuxVolume", "", false },
        { 1009, "VireoExtPropertyParam", "LFloat", "DzFloatProperty", true },
        { 1010, "VireoExtPropertyParam", "LColor", "DzColorProperty", true },
        { 1011, "VireoExtVec3Param", "point", "DzFloatProperty", false },
        { 1012, "VireoExtVec3Param", "vector", "DzFloatProperty", false },
        { 1013, "VireoExtVec3Param", "normal", "DzFloatProperty", false },
        { 1014, "VireoExtMatrixParam", "matrix", "DzFloatProperty", false },
        { 1015, "VireoExtPropertyParam", "LString", "DzStringProperty", false },
        { 1016, "VireoExtPropertyParam", "LuxFresnel", "DzFloatProperty", true },
    };
    for (const auto& row : expected) {
        SCOPED_TRACE(row.type);
        DzBrickParam* param = brick->addCustomInput(row.type, text("name"), text("Label"), 0);
        ASSERT_NE(param, nullptr);
        EXPECT_EQ(param->className(), text(row.className));
        EXPECT_EQ(param->getType(), row.type);
        EXPECT_EQ(param->getTypeString(), text(row.typeText));
        EXPECT_EQ(param->getName(), text("name"));
        EXPECT_EQ(param->getArg(0), text("name"));
        EXPECT_EQ(param->getLabel(), text("Label"));
        EXPECT_EQ(param->getDirection(), 0);
        const DzProperty* property = param->getProperty(0);
        EXPECT_EQ(property ? property->className() : QString(), text(row.propertyClass));
        auto* numeric = qobject_cast<const DzNumericProperty*>(property);
        EXPECT_EQ(numeric && numeric->isMappable(), row.mappable);
        if (property) {
            EXPECT_EQ(property->getPath(), text("/General"));
        }
        EXPECT_EQ(brick->getCustomParam(brick->getNumCustomParams() - 1), param);
    }
    EXPECT_EQ(brick->getNumCustomParams(), 10);
    EXPECT_EQ(brick->getNumParameters(), 10);
}

TEST_F(BrickBaseTest, otherNumbersMakeNoCustomInput)
{
    for (const int type : { 0, 1, 7, 1006, 1017, -1 })
        EXPECT_EQ(addCustom(type, "x"), nullptr) << type;
    EXPECT_EQ(brick->getNumParameters(), 0);
    EXPECT_EQ(brick->getNumCustomParams(), 0);
}

TEST_F(BrickBaseTest, customFloatsAreUnlimitedZeros)
{
    addCustom(1009, "f");
    auto* number = propertyAs<DzFloatProperty>(brick, "f");
    EXPECT_EQ(number->getValue(), 0.0f);
    EXPECT_EQ(number->getDefaultValue(), 0.0f);
    EXPECT_EQ(number->getMin(), -1e38f);
    EXPECT_EQ(number->getMax(), 1e38f);
    EXPECT_FALSE(number->isClamped());
}

TEST_F(BrickBaseTest, onlyCustomInputsAreRemovedAsSuch)
{
    DzBrickParam* fixed = brick->addFloatParam(
        false, text("/"), text("f"), text("f"), text("f"), 0, 0, 0, 1, false, QString());
    addCustom(1009, "one");
    addCustom(1007, "two");
    QPointer<DzBrickParam> gone = brick->getCustomParam(0);
    brick->removeCustomParam(fixed);
    brick->removeCustomParam(nullptr);
    EXPECT_EQ(brick->getNumParameters(), 3);
    brick->removeCustomParam(gone);
    EXPECT_TRUE(gone.isNull());
    EXPECT_EQ(customNames(), QStringList({ text("two") }));
    EXPECT_EQ(brick->getNumParameters(), 2);
    EXPECT_EQ(brick->getParameter(0), fixed);
    const BrickPtr other(new BareBrick);
    other->removeCustomParam(brick->getCustomParam(0));
    EXPECT_EQ(brick->getNumCustomParams(), 1);
}

TEST_F(BrickBaseTest, aCustomInputThatSomebodyElseDeletesIsForgotten)
{
    addCustom(1009, "one");
    addCustom(1009, "two");
    addCustom(1009, "three");
    EXPECT_TRUE(brick->deleteParam(brick->getCustomParam(0)));
    EXPECT_EQ(brick->getNumCustomParams(), 2);
    delete brick->getCustomParam(1);
    EXPECT_EQ(customNames(), QStringList({ text("two") }));
    EXPECT_EQ(brick->getCustomParam(1), nullptr);
    EXPECT_EQ(brick->getCustomParam(-1), nullptr);
    EXPECT_EQ(brick->getNumParameters(), 1);
}

TEST_F(BrickBaseTest, removingACustomInputTakesItsLinks)
{
    addCustom(1009, "one");
    const BrickPtr texture = makeBrick("VireoTexFltConstantBrick");
    ASSERT_TRUE(link(texture, brick, "one"));
    brick->removeCustomParam(brick->getCustomParam(0));
    EXPECT_EQ(param(texture, "result")->getNumConnections(), 0);
}

// Writing attributes -----------------------------------------------------------------------------

TEST_F(BrickBaseTest, aBrickWithoutCustomInputsWritesAnEmptyTreeFirst)
{
    const DzSettings settings = attributes();
    ASSERT_GE(settings.getNumValues(), 1);
    EXPECT_EQ(settings.getKey(0), text(customKey));
    const DzSettings* customs = settings.getSettingsValue(text(customKey));
    ASSERT_NE(customs, nullptr);
    EXPECT_EQ(customs->getNumValues(), 0);
}

TEST_F(BrickBaseTest, customInputsAreWrittenInOrderWithWholeNumbersAsFloats)
{
    brick->addCustomInput(1012, text("v"), text("The Vector"), 1);
    brick->addCustomInput(1016, text("f"), text("The Fresnel"), 0);
    const DzSettings settings = attributes();
    EXPECT_EQ(settings.getKey(settings.getNumValues() - 1), text("BrickSettings"));
    const DzSettings* customs = settings.getSettingsValue(text(customKey));
    EXPECT_EQ(keysOf(customs), QStringList({ text("para0"), text("para1") }));
    const DzSettings* vector = customs->getSettingsValue(text("para0"));
    EXPECT_EQ(keysOf(vector),
        QStringList({ text("Label"), text("Name"), text("ExtTypeID"), text("Direction") }));
    EXPECT_EQ(vector->getStringValue(text("Label")), text("The Vector"));
    EXPECT_EQ(vector->getStringValue(text("Name")), text("v"));
    EXPECT_EQ(vector->getFloatValue(text("ExtTypeID")), 1012);
    EXPECT_EQ(vector->getFloatValue(text("Direction")), 1);
    EXPECT_EQ(vector->getValueType(2), DzSettings::FloatValue);
    EXPECT_EQ(vector->getValueType(3), DzSettings::FloatValue);
    const DzSettings* fresnel = customs->getSettingsValue(text("para1"));
    EXPECT_EQ(fresnel->getFloatValue(text("ExtTypeID")), 1016);
    EXPECT_EQ(fresnel->getFloatValue(text("Direction"), -1), 0);
}

// Reading attributes -----------------------------------------------------------------------------

TEST_F(BrickBaseTest, everyKindOfCustomInputIsReadBack)
{
    for (int type = 1007; type <= 1016; ++type)
        brick->addCustomInput(type, text("n%1").arg(type), text("L%1").arg(type), 0);
    const DzSettings settings = attributes();
    const BrickPtr again(new BareBrick);
    EXPECT_EQ(again->setAttributes(&settings), again);
    ASSERT_EQ(again->getNumCustomParams(), 10);
    for (int i = 0; i < 10; ++i) {
        const DzBrickParam* param = again->getCustomParam(i);
        EXPECT_EQ(param->getType(), 1007 + i);
        EXPECT_EQ(param->getName(), text("n%1").arg(1007 + i));
        EXPECT_EQ(param->getLabel(), text("L%1").arg(1007 + i));
        EXPECT_EQ(param->className(), brick->getCustomParam(i)->className());
        EXPECT_EQ(param->getDirection(), 0);
    }
    DzSettings written;
    again->getAttributes(&written);
    EXPECT_TRUE(written.isEqual(settings));
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST_F(BrickBaseTest, readingTwiceDoesNotDoubleCustomInputs)
{
    addCustom(1009, "one");
    const DzSettings settings = attributes();
    brick->setAttributes(&settings);
    brick->setAttributes(&settings);
    EXPECT_EQ(customNames(), QStringList({ text("one") }));
    EXPECT_EQ(brick->getNumParameters(), 1);
}

TEST_F(BrickBaseTest, aMissingTreeRemovesTheCustomInputs)
{
    const BrickPtr matte = makeBrick("VireoMatMatteBrick");
    const int before = matte->getNumParameters();
    matte->addCustomInput(1009, text("one"), text("one"), 0);
    DzSettings empty;
    EXPECT_EQ(matte->setAttributes(&empty), matte);
    EXPECT_EQ(matte->getNumCustomParams(), 0);
    EXPECT_EQ(matte->getNumParameters(), before);
}

TEST_F(BrickBaseTest, missingMembersHaveDefaultsByPosition)
{
    DzSettings settings;
    addEntry(&settings, "first", 1009);
    addEntry(&settings, "second", 1012);
    Warnings warnings;
    brick->setAttributes(&settings);
    EXPECT_EQ(warnings.messages, QStringList());
    ASSERT_EQ(brick->getNumCustomParams(), 2);
    const DzBrickParam* number = brick->getCustomParam(0);
    EXPECT_EQ(number->getName(), text("arg_0"));
    EXPECT_EQ(number->getLabel(), text("arg_0"));
    EXPECT_EQ(number->getProperty(0)->getName(), text("arg_0"));
    EXPECT_EQ(number->getProperty(0)->getLabel(), text("arg_0"));
    // Made as an input, whatever is stored.
    EXPECT_EQ(number->getDirection(), 0);
    const DzBrickParam* vector = brick->getCustomParam(1);
    EXPECT_EQ(vector->getName(), text("arg_1"));
    EXPECT_EQ(vector->getDirection(), 1);
}

TEST_F(BrickBaseTest, theStoredDirectionOfAVectorIsRestored)
{
    DzSettings settings;
    addEntry(&settings, "para0", 1011)->setFloatValue(text("Direction"), 2);
    addEntry(&settings, "para1", 1014)->setFloatValue(text("Direction"), 0);
    brick->setAttributes(&settings);
    ASSERT_EQ(brick->getNumCustomParams(), 2);
    EXPECT_EQ(brick->getCustomParam(0)->getDirection(), 2);
    EXPECT_EQ(brick->getCustomParam(1)->getDirection(), 0);
}

TEST_F(BrickBaseTest, aTypeThatIsStoredAsAnIntegerIsRead)
{
    DzSettings settings;
    DzSettings* entry = settings.setSettingsValue(text(customKey))->setSettingsValue(text("para0"));
    entry->setIntValue(text("ExtTypeID"), 1010);
    entry->setStringValue(text("Name"), text("tint"));
    entry->setIntValue(text("Direction"), 0);
    brick->setAttributes(&settings);
    ASSERT_EQ(customNames(), QStringList({ text("tint") }));
    EXPECT_EQ(brick->getCustomParam(0)->getType(), 1010);
}

TEST_F(BrickBaseTest, entriesOfUnknownKindAreKeptUnderTheNextNumberWithAWarning)
{
    DzSettings settings;
    DzSettings* unknown = addEntry(&settings, "para0", 1017);
    unknown->setStringValue(text("Name"), text("later"));
    addEntry(&settings, "para1", 1009)->setStringValue(text("Name"), text("known"));
    DzSettings* customs = settings.getSettingsValue(text(customKey));
    customs->setSettingsValue(text("para2"))->setStringValue(text("Name"), text("typeless"));
    Warnings warnings;
    brick->setAttributes(&settings);
    EXPECT_EQ(warnings.messages.size(), 2);
    EXPECT_EQ(customNames(), QStringList({ text("known") }));

    const DzSettings written = attributes();
    const DzSettings* again = written.getSettingsValue(text(customKey));
    ASSERT_EQ(keysOf(again), QStringList({ text("para0"), text("para1"), text("para2") }));
    EXPECT_EQ(again->getSettingsValue(text("para0"))->getStringValue(text("Name")), text("known"));
    EXPECT_TRUE(again->getSettingsValue(text("para1"))->isEqual(*unknown));
    EXPECT_EQ(
        again->getSettingsValue(text("para2"))->getStringValue(text("Name")), text("typeless"));
    // Written once more, the text is the same.
    brick->setAttributes(&written);
    EXPECT_TRUE(attributes().isEqual(written));
}

TEST_F(BrickBaseTest, valuesThatAreNoTreeAreSkippedAndCountedAndKept)
{
    DzSettings settings;
    settings.setSettingsValue(text(customKey))->setStringValue(text("note"), text("by hand"));
    addEntry(&settings, "para0", 1009);
    Warnings warnings;
    brick->setAttributes(&settings);
    EXPECT_EQ(customNames(), QStringList({ text("arg_1") }));
    const DzSettings written = attributes();
    EXPECT_EQ(
        written.getSettingsValue(text(customKey))->getStringValue(text("note")), text("by hand"));
}

TEST_F(BrickBaseTest, unknownMembersOfAnEntryAreKept)
{
    DzSettings settings;
    DzSettings* entry = addEntry(&settings, "para0", 1009);
    entry->setStringValue(text("Name"), text("one"));
    entry->setStringValue(text("Author"), text("somebody"));
    brick->setAttributes(&settings);
    addCustom(1009, "two");
    const DzSettings written = attributes();
    const DzSettings* customs = written.getSettingsValue(text(customKey));
    EXPECT_EQ(
        customs->getSettingsValue(text("para0"))->getStringValue(text("Author")), text("somebody"));
    EXPECT_FALSE(customs->getSettingsValue(text("para1"))->hasKey(text("Author")));
    // They go with their input.
    brick->removeCustomParam(brick->getCustomParam(0));
    const DzSettings later = attributes();
    const DzSettings* left = later.getSettingsValue(text(customKey));
    ASSERT_EQ(keysOf(left), QStringList({ text("para0") }));
    EXPECT_FALSE(left->getSettingsValue(text("para0"))->hasKey(text("Author")));
}

TEST_F(BrickBaseTest, numbersOutOfRangeMakeNoInput)
{
    DzSettings settings;
    addEntry(&settings, "para0", 1e30);
    addEntry(&settings, "para1", -1e30);
    Warnings warnings;
    brick->setAttributes(&settings);
    EXPECT_EQ(brick->getNumCustomParams(), 0);
    EXPECT_EQ(warnings.messages.size(), 2);
}

// A brick in a file ------------------------------------------------------------------------------

TEST(BrickBaseFileTest, lockedPropertiesEqualNamesAndOrderComeBack)
{
    VireoBrickUser user;
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    // Named like the brick's own input, and twice.
    DzBrickParam* second = matte->addCustomInput(1009, text("Kd"), text("Kd"), 0);
    DzBrickParam* third = matte->addCustomInput(1009, text("Kd"), text("Kd"), 0);
    qobject_cast<DzFloatProperty*>(second->getProperty(0))->setValue(2);
    qobject_cast<DzFloatProperty*>(third->getProperty(0))->setValue(3);
    second->getProperty(0)->lock(true);
    propertyAs<DzColorProperty>(matte, "Kd")->setColorValue(QColor(1, 2, 3));
    property(matte, "Kd")->lock(true);
    VireoBrickBase* texture = addBrick(user, "VireoTexFltConstantBrick");
    ASSERT_TRUE(param(texture, "result")->addConnection(third));

    DzSettings stored;
    user.getAttributes(&stored);
    const DzSettings* parameters = stored.getSettingsValue(text("BrickSetup"))
                                       ->getSettingsValue(text("Bricks"))
                                       ->getSettingsValue(text("Brick_1"))
                                       ->getSettingsValue(text("Parameters"));
    EXPECT_EQ(keysOf(parameters),
        QStringList({ text("result"), text("bumpmap"), text("Kd"), text("sigma"), text("Kd#2"),
            text("Kd#3") }));

    DzBrickUserFile file;
    const QByteArray bytes = file.saveText(&user);
    VireoBrickUser loaded;
    Warnings warnings;
    ASSERT_TRUE(file.loadText(bytes, text("network.sskn"), &loaded));
    EXPECT_EQ(warnings.messages, QStringList());
    auto* again = qobject_cast<VireoBrickBase*>(loaded.getBrick(1));
    ASSERT_NE(again, nullptr);
    ASSERT_EQ(again->getNumCustomParams(), 2);
    EXPECT_EQ(propertyAs<DzColorProperty>(again, "Kd")->getColorValue(), QColor(1, 2, 3));
    EXPECT_TRUE(property(again, "Kd")->isLocked());
    EXPECT_FALSE(property(again, "sigma")->isLocked());
    const DzBrickParam* one = again->getCustomParam(0);
    const DzBrickParam* two = again->getCustomParam(1);
    EXPECT_EQ(qobject_cast<DzFloatProperty*>(one->getProperty(0))->getValue(), 2.0f);
    EXPECT_TRUE(one->getProperty(0)->isLocked());
    EXPECT_EQ(qobject_cast<DzFloatProperty*>(two->getProperty(0))->getValue(), 3.0f);
    EXPECT_FALSE(two->getProperty(0)->isLocked());
    EXPECT_EQ(one->getNumConnections(), 0);
    EXPECT_EQ(two->getNumConnections(), 1);
    EXPECT_EQ(file.saveText(&loaded), bytes);
}

TEST(BrickBaseFileTest, lockedPropertiesAreOverwrittenOnReading)
{
    const BrickPtr body = makeBrick("VireoTexClrBlackBodyBrick");
    propertyAs<DzFloatProperty>(body, "temperature")->setValue(3000);
    DzSettings settings;
    body->getAttributes(&settings);
    const BrickPtr again = makeBrick("VireoTexClrBlackBodyBrick");
    property(again, "temperature")->lock(true);
    propertyAs<DzFloatProperty>(again, "temperature")->setValue(1);
    EXPECT_EQ(propertyAs<DzFloatProperty>(again, "temperature")->getValue(), 6500.0f);
    again->setAttributes(&settings);
    EXPECT_EQ(propertyAs<DzFloatProperty>(again, "temperature")->getValue(), 3000.0f);
}

TEST(BrickBaseFileTest, resettingGivesTheRecordedDefault)
{
    const BrickPtr velvet = makeBrick("VireoMatVelvetBrick");
    property(velvet, "p2")->resetToDefault();
    EXPECT_EQ(propertyAs<DzFloatProperty>(velvet, "p2")->getValue(), 0.0f);
    const BrickPtr volume = makeBrick("VireoVolHomogeneousBrick");
    property(volume, "fresnel")->resetToDefault();
    EXPECT_EQ(propertyAs<DzFloatProperty>(volume, "fresnel")->getValue(), 0.0f);
    const BrickPtr marble = makeBrick("VireoTexClrMarbleBrick");
    propertyAs<DzFloatProperty>(marble, "variation")->setValue(5);
    property(marble, "variation")->resetToDefault();
    EXPECT_EQ(propertyAs<DzFloatProperty>(marble, "variation")->getValue(), 0.2f);
}
