// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"
#include "VireoExtComplexIn.h"
#include "VireoExtMatrixParam.h"
#include "VireoExtOutParam.h"
#include "VireoExtPropertyParam.h"
#include "VireoExtVec3Param.h"
#include "VireoParam.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzstringproperty.h"

#include <QSignalSpy>

namespace {

DzFloatProperty* number(float value = 0)
{
    return new DzFloatProperty(QStringLiteral("n"), true, false, value);
}

/// A property parameter over a property, which it owns.
struct Carrier {
    explicit Carrier(DzProperty* property)
    {
        param.setProperty(property, QStringLiteral("arg"), QStringLiteral("map"));
    }
    VireoExtPropertyParam param;
};

} // namespace

// Property parameters ----------------------------------------------------------------------------

TEST(PropertyParamTest, startsAsASettingsRowWithoutFlags)
{
    const VireoExtPropertyParam param;
    EXPECT_EQ(param.getDirection(), 1);
    EXPECT_FALSE(param.isInput());
    EXPECT_FALSE(param.isFresnel());
    EXPECT_FALSE(param.isConnectedOnly());
    EXPECT_FALSE(param.shouldWriteTokenInShader());
    EXPECT_FALSE(param.isArray());
    EXPECT_EQ(param.getNumProperties(), 0);
}

TEST(PropertyParamTest, needsNoPreparationForACall)
{
    const Carrier carrier(number());
    EXPECT_FALSE(carrier.param.needsPrepForCall(0));
    EXPECT_FALSE(carrier.param.needsPrepForCall(1));
}

TEST(PropertyParamTest, mapsTheHostsTypes)
{
    const auto name = [] { return QStringLiteral("p"); };
    const struct {
        DzProperty* property;
        int type;
        const char* typeName;
    } expected[] = {
        { number(), 1009, "LFloat" },
        { new DzColorProperty(name(), true, false), 1010, "LColor" },
        { new DzStringProperty(name(), true), 1015, "LString" },
        { new DzImageProperty(name(), true), 1015, "LString" },
        { new DzFileProperty(name(), true), 1015, "LString" },
        // These stand above the types that are mapped.
        { new DzBoolProperty(name(), true, false), 8, "boolean" },
        { new DzIntProperty(name(), true, false), 9, "integer" },
        { new DzEnumProperty(name(), true, false), 9, "integer" },
    };
    for (const auto& row : expected) {
        SCOPED_TRACE(row.property->className().toStdString());
        const Carrier carrier(row.property);
        EXPECT_EQ(carrier.param.getType(), row.type);
        EXPECT_EQ(carrier.param.getArgType(0), row.type);
        EXPECT_EQ(carrier.param.getTypeForToken(0), row.type);
        EXPECT_EQ(carrier.param.getTypeString(), QString::fromLatin1(row.typeName));
    }
}

TEST(PropertyParamTest, theFresnelFlagChangesTheTypeAlone)
{
    Carrier carrier(number());
    carrier.param.setFresnel(true);
    EXPECT_TRUE(carrier.param.isFresnel());
    EXPECT_EQ(carrier.param.getType(), 1016);
    EXPECT_EQ(carrier.param.getTypeString(), QStringLiteral("LuxFresnel"));
    EXPECT_EQ(carrier.param.getArgType(0), 1009);
    EXPECT_EQ(carrier.param.getTypeForToken(0), 1009);
    carrier.param.setFresnel(false);
    EXPECT_EQ(carrier.param.getType(), 1009);
    EXPECT_EQ(carrier.param.getTypeString(), QStringLiteral("LFloat"));
}

TEST(PropertyParamTest, theConnectionOnlyFlagIsKept)
{
    VireoExtPropertyParam param;
    param.setConnectedOnly(true);
    EXPECT_TRUE(param.isConnectedOnly());
    EXPECT_FALSE(param.isFresnel());
    param.setConnectedOnly(false);
    EXPECT_FALSE(param.isConnectedOnly());
}

TEST(PropertyParamTest, anArraysTypeNameEndsInBrackets)
{
    Carrier carrier(number());
    carrier.param.setIsArray(true);
    EXPECT_EQ(carrier.param.getTypeString(), QStringLiteral("LFloat[]"));
    carrier.param.setFresnel(true);
    EXPECT_EQ(carrier.param.getTypeString(), QStringLiteral("LuxFresnel[]"));
}

TEST(PropertyParamTest, argumentNamesAreThoseGivenWithTheProperty)
{
    const Carrier carrier(number());
    EXPECT_EQ(carrier.param.getNumArgs(), 1);
    EXPECT_EQ(carrier.param.getArg(0), QStringLiteral("arg"));
    EXPECT_EQ(carrier.param.getMapArg(), QStringLiteral("map"));
    EXPECT_EQ(carrier.param.getNumTokensNeeded(), 1);
}

// Outputs ----------------------------------------------------------------------------------------

TEST(OutParamTest, takesEveryLinkTypeAndNoOtherNumber)
{
    VireoExtOutParam param;
    EXPECT_TRUE(param.isOutput());
    param.setLinkType(1009);
    for (const int other : { 1006, 1017, 0, 1, 7, -1, 2016 }) {
        param.setLinkType(other);
        EXPECT_EQ(param.getType(), 1009) << other;
    }
    for (int type = 1007; type <= 1016; ++type) {
        param.setLinkType(type);
        EXPECT_EQ(param.getType(), type);
        EXPECT_EQ(param.getArgType(0), type);
        EXPECT_EQ(param.getTypeForToken(0), type);
    }
}

TEST(OutParamTest, mapsTheHostsTypes)
{
    VireoExtOutParam param;
    param.setType(2);
    EXPECT_EQ(param.getType(), 1010);
    EXPECT_EQ(param.getArgType(0), 1010);
    EXPECT_EQ(param.getTypeForToken(0), 1010);
    param.setType(9);
    EXPECT_EQ(param.getType(), 9);
}

TEST(OutParamTest, namesItsType)
{
    const struct {
        int type;
        const char* name;
    } expected[] = { { 1007, "LuxMaterial" }, { 1008, "LuxVolume" }, { 1009, "LFloat" },
        { 1010, "LColor" }, { 1011, "LPoint" }, { 1012, "LVector" }, { 1013, "LNormal" },
        { 1014, "LMatrix" }, { 1015, "LString" }, { 1016, "LuxFresnel" } };
    VireoExtOutParam param;
    for (const auto& row : expected) {
        param.setLinkType(row.type);
        EXPECT_EQ(param.getTypeString(), QString::fromLatin1(row.name));
    }
    param.setIsArray(true);
    EXPECT_EQ(param.getTypeString(), QStringLiteral("LuxFresnel[]"));
    param.setIsArray(false);
    param.setType(9);
    EXPECT_EQ(param.getTypeString(), QStringLiteral("integer"));
}

// Vectors and matrices ---------------------------------------------------------------------------

TEST(VectorParamTest, mapsItsType)
{
    for (const int type : { 3, 4, 5 }) {
        const VireoExtVec3Param param(type, DzVec3(1, 2, 3));
        EXPECT_EQ(param.getType(), type + 1008);
        EXPECT_EQ(param.getArgType(0), type + 1008);
        EXPECT_EQ(param.getTypeForToken(0), type + 1008);
        EXPECT_TRUE(param.isInput());
        EXPECT_EQ(param.getTypeString(), DzBrickParam::typeToString(type));
        EXPECT_EQ(param.getDefaultValue(), DzVec3(1, 2, 3));
        EXPECT_EQ(param.getNumProperties(), 3);
    }
}

TEST(VectorParamTest, aLinkTypePassesThrough)
{
    const VireoExtVec3Param param(1012);
    EXPECT_EQ(param.getType(), 1012);
    EXPECT_EQ(param.getArgType(0), 1012);
}

TEST(MatrixParamTest, mapsItsType)
{
    const VireoExtMatrixParam param;
    EXPECT_EQ(param.getType(), 1014);
    EXPECT_EQ(param.getArgType(0), 1014);
    EXPECT_EQ(param.getTypeForToken(0), 1014);
    EXPECT_TRUE(param.isInput());
}

// Inputs without a property ----------------------------------------------------------------------

TEST(ComplexInTest, startsWithItsDefaults)
{
    const VireoExtComplexIn param;
    EXPECT_TRUE(param.isInput());
    EXPECT_EQ(param.getArg(0), QStringLiteral("val1"));
    EXPECT_EQ(param.getType(), 1);
    EXPECT_EQ(param.getArgType(0), 1);
    EXPECT_EQ(param.getTypeString(), QStringLiteral("float"));
    EXPECT_EQ(param.getNumTokensNeeded(), 1);
    EXPECT_EQ(param.getPropertyMapToken(0), -1);
    EXPECT_EQ(param.getNumProperties(), 0);
    EXPECT_EQ(param.getStringValue(0), QStringLiteral("0"));
}

TEST(ComplexInTest, everyArgumentHasTheSameName)
{
    VireoExtComplexIn param;
    param.setName(QStringLiteral("name"));
    EXPECT_EQ(param.getArg(0), QStringLiteral("val1"));
    param.setArgName(QStringLiteral("other"));
    EXPECT_EQ(param.getArg(0), QStringLiteral("other"));
    EXPECT_EQ(param.getArg(3), QStringLiteral("other"));
}

TEST(ComplexInTest, aNewLinkTypeIsTold)
{
    VireoExtComplexIn param;
    QSignalSpy changed(&param, SIGNAL(typeChanged()));
    param.setLinkType(1007);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(param.getType(), 1007);
    EXPECT_EQ(param.getArgType(0), 1007);
    EXPECT_EQ(param.getTypeString(), QStringLiteral("LuxMaterial"));
    param.setLinkType(1016);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(param.getType(), 1016);
    param.setIsArray(true);
    EXPECT_EQ(param.getTypeString(), QStringLiteral("LuxFresnel[]"));
}

TEST(ComplexInTest, theSameLinkTypeAndOtherNumbersAreIgnoredWithoutNotice)
{
    VireoExtComplexIn param;
    param.setLinkType(1008);
    QSignalSpy changed(&param, SIGNAL(typeChanged()));
    for (const int other : { 1008, 1006, 1017, 0, 1, 7, -1 }) {
        param.setLinkType(other);
        EXPECT_EQ(param.getType(), 1008) << other;
    }
    EXPECT_EQ(changed.count(), 0);
}

TEST(ComplexInTest, itsValueIsZeroForEveryLinkType)
{
    VireoExtComplexIn param;
    for (int type = 1007; type <= 1016; ++type) {
        param.setLinkType(type);
        EXPECT_EQ(param.getStringValue(0), QStringLiteral("0"));
    }
    // As the host writes an empty text, for inputs of that type.
    EXPECT_EQ(DzBrickParam::getEscapedString(QString()), QStringLiteral("\"\""));
}

TEST(ComplexInTest, anotherLinkTypeRemovesLinksThatNoLongerFit)
{
    const BrickPtr root = makeBrick("VireoRootBrick");
    const BrickPtr matte = makeBrick("VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    auto* input = qobject_cast<VireoExtComplexIn*>(param(root, "material"));
    ASSERT_NE(input, nullptr);
    input->setLinkType(1007);
    EXPECT_EQ(input->getNumConnections(), 1);
    input->setLinkType(1008);
    EXPECT_EQ(input->getNumConnections(), 0);
}

// Who writes and who can be linked ---------------------------------------------------------------

TEST(ParameterTest, onlyPropertyAndComplexInputsWriteThemselves)
{
    VireoExtPropertyParam property;
    VireoExtComplexIn complex;
    VireoExtVec3Param vector(4);
    VireoExtMatrixParam matrix;
    VireoExtOutParam output;
    EXPECT_EQ(property.qt_metacast("VireoParam"),
        static_cast<void*>(static_cast<VireoParam*>(&property)));
    EXPECT_EQ(
        complex.qt_metacast("VireoParam"), static_cast<void*>(static_cast<VireoParam*>(&complex)));
    EXPECT_EQ(vector.qt_metacast("VireoParam"), nullptr);
    EXPECT_EQ(matrix.qt_metacast("VireoParam"), nullptr);
    EXPECT_EQ(output.qt_metacast("VireoParam"), nullptr);
}

TEST(ParameterTest, outputsAreLinkedToInputsOfTheirTypeOnly)
{
    const struct {
        const char* source;
        const char* sink;
        const char* input;
        bool allowed;
    } expected[] = {
        { "VireoTexFltConstantBrick", "VireoMatMatteBrick", "sigma", true },
        { "VireoTexFltConstantBrick", "VireoMatMatteBrick", "Kd", false },
        { "VireoTexClrConstantBrick", "VireoMatMatteBrick", "Kd", true },
        { "VireoTexClrConstantBrick", "VireoMatMatteBrick", "sigma", false },
        { "VireoTexFnlCauchyBrick", "VireoMatMetal2Brick", "fresnel", true },
        { "VireoTexFnlCauchyBrick", "VireoMatMetal2Brick", "uroughness", false },
        { "VireoTexFltConstantBrick", "VireoMatMetal2Brick", "fresnel", false },
        { "VireoMatMatteBrick", "VireoRootBrick", "material", true },
        { "VireoMatMatteBrick", "VireoRootBrick", "Interior", false },
        { "VireoVolClearBrick", "VireoRootBrick", "Interior", true },
        { "VireoVolClearBrick", "VireoRootBrick", "material", false },
        { "VireoTexFltConstantBrick", "VireoRootBrick", "displacementmap", true },
        { "VireoTexFltConstantBrick", "VireoRootBrick", "dmscale", false },
        { "VireoTexFltConstantBrick", "VireoRootBrick", "nsubdivlevels", false },
        { "VireoMatMatteBrick", "VireoMatMixBrick", "namedmaterial1", true },
    };
    for (const auto& row : expected) {
        SCOPED_TRACE(std::string(row.source) + " to " + row.sink + "." + row.input);
        const BrickPtr source = makeBrick(row.source);
        const BrickPtr sink = makeBrick(row.sink);
        DzBrickParam* output = param(source, "result");
        DzBrickParam* input = param(sink, row.input);
        EXPECT_EQ(input->canConnect(output), row.allowed);
        // Asked the other way round, the input decides too.
        EXPECT_EQ(output->canConnect(input), row.allowed);
        EXPECT_EQ(output->addConnection(input), row.allowed);
        EXPECT_EQ(input->getNumConnections(), row.allowed ? 1 : 0);
    }
}

TEST(ParameterTest, parametersOfTheHostNeverMatch)
{
    const BrickPtr matte = makeBrick("VireoMatMatteBrick");
    const BrickPtr other = makeBrick("VireoMatNullBrick");
    auto* output = new DzOutParam;
    output->setType(DzBrickParam::FloatType);
    ASSERT_TRUE(other->addParameter(output));
    EXPECT_FALSE(param(matte, "sigma")->canConnect(output));
    output->setType(DzBrickParam::ColorType);
    EXPECT_FALSE(param(matte, "Kd")->canConnect(output));
    // The host links and converts its own types, but none of the family's.
    auto* input = new DzPropertyParam;
    input->setProperty(number(), QStringLiteral("n"), QString());
    input->setDirection(0);
    ASSERT_TRUE(matte->addParameter(input));
    output->setType(DzBrickParam::IntegerType);
    EXPECT_TRUE(input->canConnect(output));
    const BrickPtr texture = makeBrick("VireoTexFltConstantBrick");
    EXPECT_FALSE(input->canConnect(param(texture, "result")));
}

TEST(ParameterTest, vectorsTakeOutputsOfTheirOwnTypeOnly)
{
    const BrickPtr windy = makeBrick("VireoTexFltWindyBrick");
    const BrickPtr source = makeBrick("VireoTexFltConstantBrick");
    auto* output = new VireoExtOutParam;
    ASSERT_TRUE(source->addParameter(output));
    for (int type = 1007; type <= 1016; ++type) {
        output->setLinkType(type);
        EXPECT_EQ(param(windy, "translate")->canConnect(output), type == 1012) << type;
    }
}

TEST(ParameterTest, noBrickIsLinkedToItselfNorInALoop)
{
    const BrickPtr first = makeBrick("VireoTexFltScaleBrick");
    const BrickPtr second = makeBrick("VireoTexFltScaleBrick");
    EXPECT_FALSE(link(first, first, "tex1"));
    EXPECT_TRUE(link(first, second, "tex1"));
    EXPECT_FALSE(link(first, second, "tex1"));
    EXPECT_TRUE(link(first, second, "tex2"));
    EXPECT_FALSE(link(second, first, "tex1"));
}

TEST(ParameterTest, inputsTakeNoInputsAndNothingTakesNothing)
{
    const BrickPtr first = makeBrick("VireoTexFltScaleBrick");
    const BrickPtr second = makeBrick("VireoTexFltScaleBrick");
    EXPECT_FALSE(param(first, "tex1")->canConnect(param(second, "tex1")));
    EXPECT_FALSE(param(first, "result")->canConnect(param(second, "result")));
    EXPECT_FALSE(param(first, "tex1")->canConnect(nullptr));
    EXPECT_FALSE(param(makeBrick("VireoRootBrick"), "material")->canConnect(nullptr));
}
