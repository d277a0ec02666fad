// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickCodeCache.h"
#include "NetworkCode.h"
#include "SceneCodeWriter.h"
#include "TestSupport.h"
#include "VireoExtOutParam.h"
#include "VireoExtPropertyParam.h"
#include "VireoRootBrick.h"
#include "dzboolproperty.h"
#include "dzbrickcodekeys.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzoutparam.h"
#include "dzshaderstring.h"
#include "dzstringproperty.h"
#include "dzvec3param.h"

#include <QFile>
#include <QLocale>
#include <memory>
#include <new>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Statements of fresh bricks.

QString matteStatement(int number)
{
    return QStringLiteral("\nMakeNamedMaterial \"Lm_material%1\"\n"
                          "\t\"float   bumpmap\" [0]\n"
                          "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                          "\t\"float   sigma\" [0]\n"
                          "\t\"string  type\" [\"matte\"]\n")
        .arg(number);
}

QString nullStatement(int number)
{
    return QStringLiteral("\nMakeNamedMaterial \"Lm_material%1\"\n"
                          "\t\"float   bumpmap\" [0]\n"
                          "\t\"string  type\" [\"null\"]\n")
        .arg(number);
}

QString clearStatement(int number)
{
    return QStringLiteral("\nMakeNamedVolume \"Lm_volume%1\" \"clear\"\n"
                          "\t\"float   fresnel\" [1.5]\n"
                          "\t\"color   absorption\" [0 0 0]\n")
        .arg(number);
}

QString constantStatement(int number)
{
    return QStringLiteral("\nTexture \"Lm_texture%1\" \"float\" \"constant\"\n"
                          "\t\"float   value\" [1]\n")
        .arg(number);
}

GeneratedCode codeOf(VireoBrickBase* brick, bool literal = true, bool mapFiles = false)
{
    GenerateOptions options;
    options.literalValues = literal;
    options.mapFiles = mapFiles;
    return generateCode(brick, options);
}

/// Leaves this process so many bytes of addresses beyond those that it has in use.
void limitAddressSpace(size_t bytes)
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        _exit(3);
    const auto pageSize = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t used = file.readAll().split(' ').first().toULong() * pageSize;
    rlimit limit;
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = used + bytes;
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        _exit(3);
}

/// An output of any type on any brick.
VireoExtOutParam* addOutput(DzShaderBrick* brick, int linkType)
{
    auto* output = new VireoExtOutParam;
    output->setName(QStringLiteral("extra"));
    output->setLinkType(linkType);
    EXPECT_TRUE(brick->addParameter(output));
    return output;
}

/// A brick of the host's own.
class HostBrick : public DzShaderBrick
{
public:
    QString getPreferredName() const override { return QStringLiteral("Host Brick"); }
    QString getDefaultCategory() const override { return QString(); }
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
};

/// An output that insists on being linked.
class PushyOutput : public DzOutParam
{
public:
    explicit PushyOutput(int type) { setType(type); }
    bool canConnect(DzBrickParam*) const override { return true; }
};

/// A brick of the family that writes nothing of its own.
class BareBrick : public VireoBrickBase
{
public:
    QString getPreferredName() const override { return QStringLiteral("Bare Brick"); }
    QString getDefaultCategory() const override { return QString(); }
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
};

class NetworkWalkTest : public testing::Test
{
protected:
    VireoBrickBase* add(const char* className) { return addBrick(user, className); }

    VireoBrickUser user;
};

} // namespace

// Statements and names ---------------------------------------------------------------------------

TEST_F(NetworkWalkTest, aTextureForTwoInputsIsWrittenOnceAndReferredToTwice)
{
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    VireoBrickBase* texture = add("VireoTexFltConstantBrick");
    ASSERT_TRUE(link(texture, matte, "bumpmap"));
    ASSERT_TRUE(link(texture, matte, "sigma"));
    EXPECT_TEXT(constantStatement(1)
            + QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                             "\t\"texture bumpmap\" [\"Lm_texture1\"]\n"
                             "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                             "\t\"texture sigma\" [\"Lm_texture1\"]\n"
                             "\t\"string  type\" [\"matte\"]\n"),
        literalText(matte));
}

TEST_F(NetworkWalkTest, aMaterialForTwoBricksIsWrittenAtItsFirstUse)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* outer = add("VireoMatMixBrick");
    VireoBrickBase* inner = add("VireoMatMixBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    VireoBrickBase* null = add("VireoMatNullBrick");
    ASSERT_TRUE(link(outer, root, "material"));
    ASSERT_TRUE(link(inner, outer, "namedmaterial1"));
    ASSERT_TRUE(link(matte, outer, "namedmaterial2"));
    ASSERT_TRUE(link(null, inner, "namedmaterial1"));
    ASSERT_TRUE(link(matte, inner, "namedmaterial2"));
    EXPECT_TEXT(nullStatement(3) + matteStatement(4)
            + QStringLiteral("\nMakeNamedMaterial \"Lm_material2\"\n"
                             "\t\"float   bumpmap\" [0]\n"
                             "\t\"string  namedmaterial1\" [\"Lm_material3\"]\n"
                             "\t\"string  namedmaterial2\" [\"Lm_material4\"]\n"
                             "\t\"float   amount\" [0.5]\n"
                             "\t\"string  type\" [\"mix\"]\n"
                             "\nMakeNamedMaterial \"Lm_material1\"\n"
                             "\t\"float   bumpmap\" [0]\n"
                             "\t\"string  namedmaterial1\" [\"Lm_material2\"]\n"
                             "\t\"string  namedmaterial2\" [\"Lm_material4\"]\n"
                             "\t\"float   amount\" [0.5]\n"
                             "\t\"string  type\" [\"mix\"]\n"
                             "\nNamedMaterial \"Lm_material1\"\n"),
        codeOf(root).materialText);
}

TEST_F(NetworkWalkTest, aMaterialOfAMixAndOfTheRootIsWrittenOnceInARun)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* mix = add("VireoMatMixBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    ASSERT_TRUE(link(matte, mix, "namedmaterial1"));
    BrickCodeCache::instance().clear();
    SceneCodeWriter writer;
    writer.literalValues = true;
    codeFor(root, &writer);
    codeFor(mix, &writer);
    EXPECT_TEXT(matteStatement(1)
            + QStringLiteral("\nNamedMaterial \"Lm_material1\"\n"
                             "\nMakeNamedMaterial \"Lm_material2\"\n"
                             "\t\"float   bumpmap\" [0]\n"
                             "\t\"string  namedmaterial1\" [\"Lm_material1\"]\n"
                             "\t\"float   amount\" [0.5]\n"
                             "\t\"string  type\" [\"mix\"]\n"),
        writer.outputText());
}

TEST_F(NetworkWalkTest, countersOfTexturesMaterialsAndVolumesAreIndependent)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), matte, "bumpmap"));
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), matte, "sigma"));
    ASSERT_TRUE(link(add("VireoVolClearBrick"), root, "Interior"));
    ASSERT_TRUE(link(add("VireoVolClearBrick"), root, "Exterior"));
    EXPECT_TEXT(constantStatement(1) + constantStatement(2)
            + QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                             "\t\"texture bumpmap\" [\"Lm_texture1\"]\n"
                             "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                             "\t\"texture sigma\" [\"Lm_texture2\"]\n"
                             "\t\"string  type\" [\"matte\"]\n")
            + clearStatement(1) + clearStatement(2)
            + QStringLiteral("\nNamedMaterial \"Lm_material1\"\n"
                             "\nInterior \"Lm_volume1\"\n"
                             "\nExterior \"Lm_volume2\"\n"),
        codeOf(root).materialText);
}

TEST_F(NetworkWalkTest, aBricksNumberIsTakenBeforeThoseOfItsInputs)
{
    VireoBrickBase* outer = add("VireoTexFltScaleBrick");
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), outer, "tex2"));
    EXPECT_TEXT(constantStatement(2)
            + QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"scale\"\n"
                             "\t\"float   tex1\" [1]\n"
                             "\t\"texture tex2\" [\"Lm_texture2\"]\n"),
        literalText(outer));
}

TEST_F(NetworkWalkTest, theTypeLineComesAfterCustomInputs)
{
    VireoBrickBase* null = add("VireoMatNullBrick");
    null->addCustomInput(1009, QStringLiteral("strength"), QStringLiteral("Strength"), 0);
    null->addCustomInput(1015, QStringLiteral("note"), QStringLiteral("Note"), 0);
    propertyAs<DzStringProperty>(null, "note")->setValue(QStringLiteral("hello"));
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"float   strength\" [0]\n"
                               "\t\"string  note\" [\"hello\"]\n"
                               "\t\"string  type\" [\"null\"]\n"),
        literalText(null));
}

TEST_F(NetworkWalkTest, aParameterNamedScaleIsWrittenOnOtherBricks)
{
    const QString marble = literalText(add("VireoTexClrMarbleBrick"));
    EXPECT_TRUE(marble.contains(QStringLiteral("\t\"float   scale\" [1]\n")))
        << marble.toStdString();
}

// Inputs that write nothing ----------------------------------------------------------------------

TEST_F(NetworkWalkTest, unconnectedMaterialInputsWriteNothing)
{
    EXPECT_TEXT(QString(), codeOf(add("VireoRootBrick")).materialText);
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"float   amount\" [0.5]\n"
                               "\t\"string  type\" [\"mix\"]\n"),
        literalText(add("VireoMatMixBrick")));
}

TEST_F(NetworkWalkTest, severalLinksIntoAPropertyInputWriteNothing)
{
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), matte, "sigma"));
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), matte, "sigma"));
    const QString expected = QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                                            "\t\"float   bumpmap\" [0]\n"
                                            "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                                            "\t\"string  type\" [\"matte\"]\n");
    EXPECT_TEXT(expected, literalText(matte));
    lockAll(matte);
    EXPECT_TEXT(expected, placeholderText(matte));
}

TEST_F(NetworkWalkTest, severalLinksIntoAMaterialOrVolumeInputWriteNothing)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* mix = add("VireoMatMixBrick");
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(link(add("VireoMatMatteBrick"), root, "material"));
        ASSERT_TRUE(link(add("VireoMatMatteBrick"), mix, "namedmaterial1"));
        ASSERT_TRUE(link(add("VireoVolClearBrick"), root, "Interior"));
    }
    EXPECT_TEXT(QString(), codeOf(root).materialText);
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"float   amount\" [0.5]\n"
                               "\t\"string  type\" [\"mix\"]\n"),
        literalText(mix));
}

TEST_F(NetworkWalkTest, aLinkedBrickOfTheHostWritesNothing)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    HostBrick foreign;
    auto* material = new PushyOutput(1007);
    auto* number = new PushyOutput(1009);
    ASSERT_TRUE(foreign.addParameter(material));
    ASSERT_TRUE(foreign.addParameter(number));
    ASSERT_FALSE(param(matte, "sigma")->canConnect(number));
    ASSERT_TRUE(number->addConnection(param(matte, "sigma")));
    ASSERT_TRUE(material->addConnection(param(root, "material")));
    EXPECT_TEXT(QString(), codeOf(root).materialText);
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                               "\t\"string  type\" [\"matte\"]\n"),
        literalText(matte));
}

TEST_F(NetworkWalkTest, aBrickOfTheBaseClassWritesNothingAndIsNotReferredTo)
{
    BrickPtr bare(new BareBrick);
    ASSERT_NE(user.addBrick(bare), 0u);
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    ASSERT_TRUE(param(matte, "sigma")->addConnection(addOutput(bare, 1009)));
    ASSERT_TRUE(param(root, "material")->addConnection(addOutput(bare, 1007)));
    EXPECT_TEXT(QString(), codeOf(root).materialText);
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                               "\t\"string  type\" [\"matte\"]\n"),
        literalText(matte));

    SceneCodeWriter writer;
    writer.push();
    writer.text() = QStringLiteral("before");
    CodeResult result;
    result.kind = 7;
    result.name = QStringLiteral("name");
    EXPECT_EQ(bare->writeCode(&result, &writer), &result);
    EXPECT_EQ(result.kind, 0);
    EXPECT_EQ(result.name, QString());
    EXPECT_EQ(writer.text(), QStringLiteral("before"));
    EXPECT_EQ(writer.outputText(), QString());
}

TEST_F(NetworkWalkTest, aMaterialOrVolumeBehindAPropertyInputIsNamedAfterAnEmptyLine)
{
    VireoBrickBase* null = add("VireoMatNullBrick");
    VireoBrickBase* clear = add("VireoVolClearBrick");
    VireoBrickBase* outer = add("VireoMatMatteBrick");
    ASSERT_TRUE(param(outer, "bumpmap")->addConnection(addOutput(null, 1009)));
    ASSERT_TRUE(param(outer, "sigma")->addConnection(addOutput(clear, 1009)));
    EXPECT_TEXT(nullStatement(2) + clearStatement(1)
            + QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                             "\n\t\"string  bumpmap\" [\"Lm_material2\"]\n"
                             "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                             "\nsigma \"Lm_volume1\"\n"
                             "\t\"string  type\" [\"matte\"]\n"),
        literalText(outer));
}

TEST_F(NetworkWalkTest, aTextureBehindAMaterialInputIsWrittenButNotNamed)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* mix = add("VireoMatMixBrick");
    VireoBrickBase* texture = add("VireoTexFltConstantBrick");
    VireoExtOutParam* output = addOutput(texture, 1007);
    ASSERT_TRUE(param(root, "material")->addConnection(output));
    ASSERT_TRUE(param(mix, "namedmaterial1")->addConnection(output));
    EXPECT_TEXT(constantStatement(1), codeOf(root).materialText);
    EXPECT_TEXT(constantStatement(1)
            + QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                             "\t\"float   bumpmap\" [0]\n"
                             "\t\"float   amount\" [0.5]\n"
                             "\t\"string  type\" [\"mix\"]\n"),
        literalText(mix));
}

TEST_F(NetworkWalkTest, aCustomVolumeInputOfAMaterialWritesTheStatementAndNoLine)
{
    VireoBrickBase* null = add("VireoMatNullBrick");
    null->addCustomInput(1008, QStringLiteral("inside"), QStringLiteral("Inside"), 0);
    ASSERT_TRUE(link(add("VireoVolClearBrick"), null, "inside"));
    EXPECT_TEXT(clearStatement(1) + nullStatement(1), literalText(null));
}

TEST_F(NetworkWalkTest, aCustomMaterialInputOfATextureNamesTheMaterial)
{
    VireoBrickBase* texture = add("VireoTexFltConstantBrick");
    texture->addCustomInput(1007, QStringLiteral("surface"), QStringLiteral("Surface"), 0);
    ASSERT_TRUE(link(add("VireoMatNullBrick"), texture, "surface"));
    EXPECT_TEXT(nullStatement(1)
            + QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"constant\"\n"
                             "\t\"float   value\" [1]\n"
                             "\t\"string  surface\" [\"Lm_material1\"]\n"),
        literalText(texture));
}

TEST_F(NetworkWalkTest, customInputsOfTheRootWriteNothing)
{
    VireoBrickBase* root = add("VireoRootBrick");
    root->addCustomInput(1009, QStringLiteral("strength"), QStringLiteral("Strength"), 0);
    root->addCustomInput(1007, QStringLiteral("second"), QStringLiteral("Second"), 0);
    ASSERT_TRUE(link(add("VireoMatNullBrick"), root, "second"));
    EXPECT_TEXT(QString(), codeOf(root).materialText);
    EXPECT_TEXT(freshMeshText(), codeOf(root).resultName);
}

TEST_F(NetworkWalkTest, customVectorsAndMatricesWriteNothing)
{
    VireoBrickBase* windy = add("VireoTexFltWindyBrick");
    windy->addCustomInput(1011, QStringLiteral("p"), QStringLiteral("p"), 0);
    // Of the same name as a vector of the block, which alone is written.
    windy->addCustomInput(1012, QStringLiteral("rotate"), QStringLiteral("rotate"), 0);
    windy->addCustomInput(1013, QStringLiteral("n"), QStringLiteral("n"), 0);
    windy->addCustomInput(1014, QStringLiteral("m"), QStringLiteral("m"), 0);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"windy\"\n"
                               "\t\"string  coordinates\" [\"global\"]\n"
                               "\t\"vector  translate\" [1 0 0]\n"
                               "\t\"vector  rotate\" [1 0 0]\n"
                               "\t\"vector  scale\" [1 0 0]\n"),
        literalText(windy));
}

TEST_F(NetworkWalkTest, blockVectorsAreValuesEvenWhenLinked)
{
    VireoBrickBase* windy = add("VireoTexFltWindyBrick");
    auto* translate = qobject_cast<DzVec3Param*>(param(windy, "translate"));
    translate->setValue(DzVec3(0.5f, -2, 1000000));
    ASSERT_TRUE(translate->addConnection(addOutput(add("VireoTexFltConstantBrick"), 1012)));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"windy\"\n"
                               "\t\"string  coordinates\" [$(LuxRender_Lm_001_coordinates)]\n"
                               "\t\"vector  translate\" [0.5 -2 1e+06]\n"
                               "\t\"vector  rotate\" [1 0 0]\n"
                               "\t\"vector  scale\" [1 0 0]\n"),
        placeholderText(windy));
}

// The root ---------------------------------------------------------------------------------------

TEST_F(NetworkWalkTest, aFreshRootHasNoMaterialSectionAndEightMeshLines)
{
    const GeneratedCode code = codeOf(add("VireoRootBrick"));
    EXPECT_TEXT(QString(), code.materialText);
    EXPECT_TEXT(freshMeshText(), code.resultName);
}

TEST_F(NetworkWalkTest, aDisplacementIsNamedAsTextAndItsStatementEndsTheMaterialSection)
{
    VireoBrickBase* root = add("VireoRootBrick");
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), root, "displacementmap"));
    ASSERT_TRUE(link(add("VireoMatNullBrick"), root, "material"));
    ASSERT_TRUE(link(add("VireoVolClearBrick"), root, "Exterior"));
    const GeneratedCode code = codeOf(root);
    EXPECT_TEXT(nullStatement(1) + clearStatement(1)
            + QStringLiteral("\nNamedMaterial \"Lm_material1\"\n"
                             "\nExterior \"Lm_volume1\"\n")
            + constantStatement(1),
        code.materialText);
    QString mesh = freshMeshText();
    mesh.insert(mesh.indexOf(QStringLiteral("\t\"float   dmscale")),
        QStringLiteral("\t\"string  displacementmap\" [\"Lm_texture1\"]\n"));
    EXPECT_TEXT(mesh, code.resultName);
}

TEST_F(NetworkWalkTest, aDisplacementWithSeveralLinksWritesNothing)
{
    VireoBrickBase* root = add("VireoRootBrick");
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), root, "displacementmap"));
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), root, "displacementmap"));
    EXPECT_TEXT(QString(), codeOf(root).materialText);
    EXPECT_TEXT(freshMeshText(), codeOf(root).resultName);
}

TEST_F(NetworkWalkTest, aDisplacementThatAlsoFeedsTheMaterialStandsBeforeIt)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* null = add("VireoMatNullBrick");
    VireoBrickBase* texture = add("VireoTexFltConstantBrick");
    ASSERT_TRUE(link(texture, root, "displacementmap"));
    ASSERT_TRUE(link(texture, null, "bumpmap"));
    ASSERT_TRUE(link(null, root, "material"));
    EXPECT_TEXT(constantStatement(1)
            + QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                             "\t\"texture bumpmap\" [\"Lm_texture1\"]\n"
                             "\t\"string  type\" [\"null\"]\n"
                             "\nNamedMaterial \"Lm_material1\"\n"),
        codeOf(root).materialText);
}

TEST_F(NetworkWalkTest, anInputNamedDisplacementmapIsNamedAsTextOnEveryBrick)
{
    VireoBrickBase* null = add("VireoMatNullBrick");
    null->addCustomInput(
        1009, QStringLiteral("displacementmap"), QStringLiteral("displacementmap"), 0);
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), null, "displacementmap"));
    EXPECT_TEXT(constantStatement(1)
            + QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                             "\t\"float   bumpmap\" [0]\n"
                             "\t\"string  displacementmap\" [\"Lm_texture1\"]\n"
                             "\t\"string  type\" [\"null\"]\n"),
        literalText(null));
}

TEST_F(NetworkWalkTest, aVolumeOnBothSidesIsWrittenOnce)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* clear = add("VireoVolClearBrick");
    ASSERT_TRUE(link(clear, root, "Interior"));
    ASSERT_TRUE(link(clear, root, "Exterior"));
    EXPECT_TEXT(clearStatement(1)
            + QStringLiteral("\nInterior \"Lm_volume1\"\n"
                             "\nExterior \"Lm_volume1\"\n"),
        codeOf(root).materialText);
}

TEST_F(NetworkWalkTest, meshLinesNeverReachTheWritersOutput)
{
    VireoBrickBase* root = add("VireoRootBrick");
    ASSERT_TRUE(link(add("VireoMatNullBrick"), root, "material"));
    BrickCodeCache::instance().clear();
    SceneCodeWriter writer;
    writer.literalValues = true;
    const CodeResult result = codeFor(root, &writer);
    EXPECT_EQ(result.kind, 0);
    EXPECT_TEXT(freshMeshText(), result.name);
    EXPECT_TEXT(nullStatement(1) + QStringLiteral("\nNamedMaterial \"Lm_material1\"\n"),
        writer.outputText());
}

TEST_F(NetworkWalkTest, theRootsPreviewShaderIsFlat)
{
    VireoBrickBase* root = add("VireoRootBrick");
    const QString expected = QStringLiteral("Oi = 1;\nCi = color( .33, .66, .33);\n");
    const std::unique_ptr<DzShaderString> ofClass(root->getBrickClassShaderCode());
    const std::unique_ptr<DzShaderString> ofCall(root->getShaderCodeCall(QStringList()));
    EXPECT_EQ(ofClass->getText(), expected);
    EXPECT_EQ(ofCall->getText(), expected);
}

TEST_F(NetworkWalkTest, ofSeveralRootsTheLastCounts)
{
    EXPECT_EQ(findRootBrick(&user), nullptr);
    VireoBrickBase* first = add("VireoRootBrick");
    EXPECT_EQ(findRootBrick(&user), first);
    VireoBrickBase* second = add("VireoRootBrick");
    add("VireoMatNullBrick");
    EXPECT_EQ(findRootBrick(&user), second);
    user.deleteBrick(second);
    EXPECT_EQ(findRootBrick(&user), first);
}

// For scripts and other programs -----------------------------------------------------------------

TEST_F(NetworkWalkTest, sceneCodeTellsWhichBrickWroteWhat)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    VireoBrickBase* constant = add("VireoTexFltConstantBrick");
    ASSERT_TRUE(link(constant, matte, "sigma"));
    ASSERT_TRUE(link(matte, root, "material"));
    QVariantMap map;
    ASSERT_TRUE(QMetaObject::invokeMethod(
        root, "getSceneCode", Q_RETURN_ARG(QVariantMap, map), Q_ARG(bool, true)));
    const QString text = map.value(QStringLiteral("exportText")).toString();
    EXPECT_TEXT(exportText(codeOf(root, true)), text);
    EXPECT_TEXT(freshMeshText(), map.value(QStringLiteral("meshText")).toString());
    EXPECT_TRUE(map.value(QStringLiteral("placeholders")).toList().isEmpty());
    const QVariantList statements = map.value(QStringLiteral("statements")).toList();
    const auto brickOf = [&](int index) {
        return statements.at(index).toMap().value(QStringLiteral("brick")).value<QObject*>();
    };
    const auto textOf = [&](int index) {
        const QVariantMap statement = statements.at(index).toMap();
        return text.mid(statement.value(QStringLiteral("begin")).toInt(),
            statement.value(QStringLiteral("length")).toInt());
    };
    ASSERT_EQ(statements.size(), 4);
    EXPECT_EQ(brickOf(0), constant);
    EXPECT_TEXT(constantStatement(1), textOf(0));
    EXPECT_EQ(brickOf(1), matte);
    EXPECT_TEXT(matteStatement(1).replace(QStringLiteral("\t\"float   sigma\" [0]"),
                    QStringLiteral("\t\"texture sigma\" [\"Lm_texture1\"]")),
        textOf(1));
    EXPECT_EQ(brickOf(2), root);
    EXPECT_TEXT(QStringLiteral("\nNamedMaterial \"Lm_material1\"\n"), textOf(2));
    EXPECT_EQ(brickOf(3), root);
    EXPECT_TEXT(freshMeshText(), textOf(3));
}

TEST_F(NetworkWalkTest, sceneCodeListsThePlaceholders)
{
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    matte->findParameterByName(QStringLiteral("sigma"))->getProperty(0)->lock(true);
    const QVariantList placeholders
        = matte->getSceneCode(false).value(QStringLiteral("placeholders")).toList();
    ASSERT_EQ(placeholders.size(), 2);
    const QVariantMap second = placeholders.at(1).toMap();
    EXPECT_EQ(
        second.value(QStringLiteral("name")).toString(), QStringLiteral("LuxRender_Lm_002_Kd"));
    EXPECT_EQ(second.value(QStringLiteral("brick")).value<QObject*>(), matte);
    EXPECT_EQ(second.value(QStringLiteral("property")).value<QObject*>(),
        matte->findParameterByName(QStringLiteral("Kd"))->getProperty(0));
}

TEST_F(NetworkWalkTest, sceneCodeNamesOrWritesTheMaps)
{
    VireoBrickBase* image = add("VireoTexClrImageMapBrick");
    auto* filename = qobject_cast<DzNumericProperty*>(
        image->findParameterByName(QStringLiteral("filename"))->getProperty(0));
    ASSERT_NE(filename, nullptr);
    filename->setMap(QStringLiteral("wood.png"));
    const QVariantMap values = image->getSceneCode(true);
    const QVariantList maps = values.value(QStringLiteral("unwrittenMaps")).toList();
    ASSERT_EQ(maps.size(), 1);
    EXPECT_EQ(maps.at(0).toMap().value(QStringLiteral("brick")).value<QObject*>(), image);
    EXPECT_EQ(maps.at(0).toMap().value(QStringLiteral("property")).value<QObject*>(), filename);
    const QVariantMap files = image->getSceneCode(true, true);
    EXPECT_TRUE(files.value(QStringLiteral("unwrittenMaps")).toList().isEmpty());
    EXPECT_TRUE(files.value(QStringLiteral("materialText"))
                    .toString()
                    .contains(QLatin1String("\t\"string  filename\" [\"wood.png\"]\n")));
}

// Placeholders -----------------------------------------------------------------------------------

TEST_F(NetworkWalkTest, equalPropertyNamesGetDifferentPlaceholders)
{
    VireoBrickBase* mix = add("VireoMatMixBrick");
    ASSERT_TRUE(link(add("VireoMatNullBrick"), mix, "namedmaterial1"));
    const GeneratedCode code = codeOf(mix, false);
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material2\"\n"
                               "\t\"string  bumpmap\" [%(LuxRender_Lm_002_bumpmap)]\n"
                               "\t\"string  type\" [\"null\"]\n"
                               "\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"string  bumpmap\" [%(LuxRender_Lm_001_bumpmap)]\n"
                               "\t\"string  namedmaterial1\" [\"Lm_material2\"]\n"
                               "\t\"string  amount\" [%(LuxRender_Lm_003_amount)]\n"
                               "\t\"string  type\" [\"mix\"]\n"),
        code.materialText);
    EXPECT_EQ(code.placeholderNames,
        QStringList({ QStringLiteral("LuxRender_Lm_001_bumpmap"),
            QStringLiteral("LuxRender_Lm_002_bumpmap"),
            QStringLiteral("LuxRender_Lm_003_amount") }));
    ASSERT_EQ(code.placeholderKeys.size(), 3);
    EXPECT_EQ(code.placeholderKeys.at(0), property(mix, "bumpmap"));
    EXPECT_NE(code.placeholderKeys.at(1), property(mix, "bumpmap"));
    EXPECT_EQ(code.placeholderKeys.at(2), property(mix, "amount"));
}

TEST_F(NetworkWalkTest, aPropertyUsedTwiceGetsOnePlaceholder)
{
    SceneCodeWriter writer;
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    const QString name = QStringLiteral("LuxRender_Lm_001_Kd");
    EXPECT_EQ(placeholderName(&writer, property(matte, "Kd"), QStringLiteral("Kd")), name);
    EXPECT_EQ(placeholderName(&writer, property(matte, "sigma"), QStringLiteral("sigma")),
        QStringLiteral("LuxRender_Lm_002_sigma"));
    EXPECT_EQ(placeholderName(&writer, property(matte, "Kd"), QStringLiteral("other")), name);
    EXPECT_EQ(writer.placeholderCounter, 3u);
    EXPECT_EQ(writer.placeholderKeys.size(), 2);
}

TEST_F(NetworkWalkTest, placeholderNumbersGrowBeyondThreeDigits)
{
    SceneCodeWriter writer;
    writer.placeholderCounter = 999;
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    EXPECT_EQ(placeholderName(&writer, property(matte, "Kd"), QStringLiteral("Kd")),
        QStringLiteral("LuxRender_Lm_999_Kd"));
    EXPECT_EQ(placeholderName(&writer, property(matte, "sigma"), QStringLiteral("sigma")),
        QStringLiteral("LuxRender_Lm_1000_sigma"));
}

TEST_F(NetworkWalkTest, aLockedPropertyIsAValueAmongPlaceholders)
{
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    property(matte, "Kd")->lock(true);
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"string  bumpmap\" [%(LuxRender_Lm_001_bumpmap)]\n"
                               "\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                               "\t\"string  sigma\" [%(LuxRender_Lm_002_sigma)]\n"
                               "\t\"string  type\" [\"matte\"]\n"),
        placeholderText(matte));
}

TEST_F(NetworkWalkTest, valuesOnlyTextHasNoPlaceholders)
{
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    const GeneratedCode code = codeOf(matte);
    EXPECT_EQ(code.placeholderNames, QStringList());
    EXPECT_EQ(code.placeholderKeys, QList<DzProperty*>());
    EXPECT_TEXT(matteStatement(1), code.materialText);
}

TEST_F(NetworkWalkTest, everyPropertyClassHasItsPlaceholder)
{
    VireoBrickBase* null = add("VireoMatNullBrick");
    const QString path = QStringLiteral("/General");
    const QString none;
    const auto name = [](const char* text) { return QString::fromLatin1(text); };
    null->addFloatParam(false, path, name("f"), name("f"), name("f"), 0.5f, 0, -1, 1, false, none);
    null->addColorParam(
        false, path, name("c"), name("c"), name("c"), QColor(255, 0, 0), QColor(), none);
    null->addIntParam(false, path, name("i"), name("i"), name("i"), 7, 0, 0, 10, false, none);
    null->addBoolParam(false, path, name("b"), name("b"), name("b"), true, false, none);
    null->addEnumParam(false, path, name("e"), name("e"), name("e"),
        QStringList({ name("one"), name("two words") }), 1, none);
    null->addImageParam(false, path, name("m"), name("m"), name("m"), none);
    null->addStringParam(false, path, name("s"), name("s"), name("s"), none);
    null->addFileParam(false, path, name("d"), name("d"), name("d"), none);
    propertyAs<DzImageProperty>(null, "m")->setValue(QStringLiteral("maps/a b.png"));
    propertyAs<DzStringProperty>(null, "s")->setValue(QStringLiteral("text"));
    propertyAs<DzStringProperty>(null, "d")->setValue(QStringLiteral("data/x.dat"));
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"string  bumpmap\" [%(LuxRender_Lm_001_bumpmap)]\n"
                               "\t\"float   f\" [$(LuxRender_Lm_002_f)]\n"
                               "\t\"color   c\" [$(LuxRender_Lm_003_c)]\n"
                               "\t\"integer i\" [$(LuxRender_Lm_004_i)]\n"
                               "\t\"bool    b\" [$(LuxRender_Lm_005_b)]\n"
                               "\t\"string  e\" [$(LuxRender_Lm_006_e)]\n"
                               "\t\"string  m\" [$(LuxRender_Lm_007_m)]\n"
                               "\t\"string  s\" [$(LuxRender_Lm_008_s)]\n"
                               "\t\"string  d\" [$(LuxRender_Lm_009_d)]\n"
                               "\t\"string  type\" [\"null\"]\n"),
        placeholderText(null));
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"float   f\" [0.5]\n"
                               "\t\"color   c\" [1 0 0]\n"
                               "\t\"integer i\" [7]\n"
                               "\t\"bool    b\" [\"true\"]\n"
                               "\t\"string  e\" [\"two words\"]\n"
                               "\t\"string  m\" [\"maps/a b.png\"]\n"
                               "\t\"string  s\" [\"text\"]\n"
                               "\t\"string  d\" [\"data/x.dat\"]\n"
                               "\t\"string  type\" [\"null\"]\n"),
        literalText(null));
}

TEST_F(NetworkWalkTest, unsetImagesTextsAndFilesAreEmptyStrings)
{
    VireoBrickBase* name = add("VireoTexFnlFresnelNameBrick");
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"fresnel\" \"fresnelname\"\n"
                               "\t\"string  filename\" [\"\"]\n"
                               "\t\"string  name\" [\"aluminium\"]\n"),
        literalText(name));
}

TEST_F(NetworkWalkTest, aPlainPropertyFollowsTheRulesOfItsClass)
{
    VireoBrickBase* body = add("VireoTexClrBlackBodyBrick");
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"blackbody\"\n"
                               "\t\"float   temperature\" [$(LuxRender_Lm_001_temperature)]\n"),
        placeholderText(body));
    property(body, "temperature")->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"blackbody\"\n"
                               "\t\"float   temperature\" [6500]\n"),
        placeholderText(body));
}

// Maps -------------------------------------------------------------------------------------------

TEST_F(NetworkWalkTest, literalTextWritesTheValueOfAMappedPropertyAndNoticesTheMap)
{
    VireoBrickBase* map = add("VireoTexFltNormalMapBrick");
    auto* filename = propertyAs<DzFloatProperty>(map, "filename");
    auto* scale = propertyAs<DzFloatProperty>(map, "uscale");
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/bumps.png")));
    ASSERT_TRUE(scale->setMap(QStringLiteral("maps/scale.png")));
    const GeneratedCode code = codeOf(map);
    EXPECT_TRUE(code.materialText.contains(QStringLiteral("\t\"float   filename\" [1]\n")));
    EXPECT_TRUE(code.materialText.contains(QStringLiteral("\t\"float   uscale\" [1]\n")));
    EXPECT_EQ(code.unwrittenMaps, QList<DzNumericProperty*>({ filename, scale }));
}

TEST_F(NetworkWalkTest, onRequestAMappedFilenameIsItsFileNameAndOtherMapsAreStillNoticed)
{
    VireoBrickBase* map = add("VireoTexFltNormalMapBrick");
    auto* filename = propertyAs<DzFloatProperty>(map, "filename");
    auto* scale = propertyAs<DzFloatProperty>(map, "uscale");
    ASSERT_TRUE(filename->setMap(QStringLiteral("../maps/bumps.png")));
    ASSERT_TRUE(scale->setMap(QStringLiteral("maps/scale.png")));
    const GeneratedCode code = codeOf(map, true, true);
    EXPECT_TRUE(code.materialText.contains(
        QStringLiteral("\t\"string  filename\" [\"../maps/bumps.png\"]\n")))
        << code.materialText.toStdString();
    EXPECT_TRUE(code.materialText.contains(QStringLiteral("\t\"float   uscale\" [1]\n")));
    EXPECT_EQ(code.unwrittenMaps, QList<DzNumericProperty*>({ scale }));
}

TEST_F(NetworkWalkTest, imageFilesAreNamedAsStoredFromTheRootOrFromTheText)
{
    VireoBrickBase* map = add("VireoTexFltNormalMapBrick");
    VireoBrickBase* metal = add("VireoTexFnlFresnelNameBrick");
    auto* filename = propertyAs<DzFloatProperty>(map, "filename");
    auto* image = propertyAs<DzImageProperty>(metal, "filename");
    const auto written = [&](const char* stored, const char* imageFolder, const char* textFolder) {
        filename->setMap(QString::fromLatin1(stored));
        image->setValue(QString::fromLatin1(stored));
        GenerateOptions options;
        options.mapFiles = true;
        options.imageNames.imageFolder = QString::fromLatin1(imageFolder);
        options.imageNames.textFolder = QString::fromLatin1(textFolder);
        QStringList lines;
        for (VireoBrickBase* brick : { map, metal })
            for (const QString& line :
                generateCode(brick, options).materialText.split(QLatin1Char('\n')))
                if (line.contains(QLatin1String("filename")))
                    lines.append(line.section(QLatin1Char('"'), 3, 3));
        EXPECT_EQ(lines.size(), 2);
        EXPECT_EQ(lines.value(0), lines.value(1));
        return lines.value(0).toStdString();
    };
    EXPECT_EQ(written("../maps/a.png", "", ""), "../maps/a.png");
    EXPECT_EQ(written("../maps/a.png", "/home/ada/networks", ""), "/home/ada/maps/a.png");
    EXPECT_EQ(written("/maps/a.png", "/home/ada", ""), "/maps/a.png");
    EXPECT_EQ(written("maps/a.png", "/home/ada", "/home/ada/scenes/one"), "../../maps/a.png");
    EXPECT_EQ(written("/maps/a.png", "/home/ada", "/home/ada"), "../../maps/a.png");
    // Names of another system are not ours to complete.
    EXPECT_EQ(written("C:/maps/a.png", "/home/ada", "/home/ada"), "C:/maps/a.png");
    EXPECT_EQ(written("\\\\server\\a.png", "/home/ada", "/home"), "\\\\server\\a.png");
}

TEST_F(NetworkWalkTest, imageFilesOfTheTextAreListedWithTheirPlaces)
{
    VireoBrickBase* map = add("VireoTexFltNormalMapBrick");
    auto* filename = propertyAs<DzFloatProperty>(map, "filename");
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/a.png")));
    EXPECT_TRUE(codeOf(map).imageFiles.isEmpty());
    GenerateOptions options;
    options.mapFiles = true;
    options.imageNames.imageFolder = QStringLiteral("/home/ada");
    options.imageNames.textFolder = QStringLiteral("/home");
    const GeneratedCode code = generateCode(map, options);
    ASSERT_EQ(code.imageFiles.size(), 1);
    EXPECT_EQ(code.imageFiles.at(0).property, filename);
    EXPECT_EQ(code.imageFiles.at(0).path, QStringLiteral("/home/ada/maps/a.png"));
    const QVariantList told
        = map->getSceneCode(true, true, QStringLiteral("/home/ada"), QStringLiteral("/home"))
              .value(QLatin1String(DzBrickCodeKeys::imageFiles))
              .toList();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.at(0).toMap().value(QStringLiteral("file")).toString(),
        QStringLiteral("/home/ada/maps/a.png"));
    EXPECT_EQ(told.at(0).toMap().value(QStringLiteral("brick")).value<QObject*>(), map);
    EXPECT_EQ(told.at(0).toMap().value(QStringLiteral("property")).value<QObject*>(), filename);
}

TEST_F(NetworkWalkTest, placeholdersCarryTheMapsThemselves)
{
    VireoBrickBase* map = add("VireoTexFltNormalMapBrick");
    propertyAs<DzFloatProperty>(map, "filename")->setMap(QStringLiteral("maps/bumps.png"));
    const GeneratedCode code = codeOf(map, false, true);
    EXPECT_TRUE(code.materialText.contains(
        QStringLiteral("\t\"string  filename\" [%(LuxRender_Lm_001_filename)]\n")));
    EXPECT_EQ(code.unwrittenMaps, QList<DzNumericProperty*>());
}

// Runs -------------------------------------------------------------------------------------------

TEST_F(NetworkWalkTest, anEmptiedCacheGivesTheSameTextAgain)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    ASSERT_TRUE(link(add("VireoTexFltConstantBrick"), matte, "sigma"));
    const GeneratedCode first = codeOf(root, false);
    const GeneratedCode second = codeOf(root, false);
    EXPECT_TRUE(first.materialText.contains(QStringLiteral("Lm_texture1")));
    EXPECT_TEXT(first.materialText, second.materialText);
    EXPECT_TEXT(first.resultName, second.resultName);
    EXPECT_EQ(first.placeholderNames, second.placeholderNames);
}

TEST_F(NetworkWalkTest, aCacheThatIsNotEmptiedWritesNothingAgain)
{
    VireoBrickBase* null = add("VireoMatNullBrick");
    BrickCodeCache::instance().clear();
    SceneCodeWriter first;
    first.literalValues = true;
    EXPECT_EQ(codeFor(null, &first).name, QStringLiteral("Lm_material1"));
    EXPECT_TEXT(nullStatement(1), first.outputText());
    SceneCodeWriter second;
    EXPECT_EQ(codeFor(null, &second).name, QStringLiteral("Lm_material1"));
    EXPECT_TEXT(QString(), second.outputText());
    EXPECT_EQ(second.materialCounter, 1u);
    BrickCodeCache::instance().clear();
    EXPECT_EQ(BrickCodeCache::instance().find(null), nullptr);
}

TEST_F(NetworkWalkTest, resultsTellKindAndNameAndNoColour)
{
    struct Expected {
        const char* className;
        int kind;
        const char* name;
    };
    const Expected expected[] = { { "VireoTexFltConstantBrick", 6, "Lm_texture1" },
        { "VireoTexFnlConstantBrick", 6, "Lm_texture1" },
        { "VireoMatMatteBrick", 7, "Lm_material1" }, { "VireoVolClearBrick", 8, "Lm_volume1" } };
    for (const Expected& brick : expected) {
        SCOPED_TRACE(brick.className);
        BrickCodeCache::instance().clear();
        SceneCodeWriter writer;
        const CodeResult result = codeFor(add(brick.className), &writer);
        EXPECT_EQ(result.kind, brick.kind);
        EXPECT_EQ(result.name, QString::fromLatin1(brick.name));
        EXPECT_EQ(result.aux, 0);
        for (double value : result.values)
            EXPECT_EQ(value, 0);
    }
}

TEST_F(NetworkWalkTest, aDeepChainIsWrittenWhole)
{
#ifdef __SANITIZE_ADDRESS__
    const int depth = 2000;
#else
    const int depth = 20000;
#endif
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* null = add("VireoMatNullBrick");
    ASSERT_TRUE(link(null, root, "material"));
    VireoBrickBase* consumer = null;
    const char* input = "bumpmap";
    for (int i = 0; i < depth; ++i) {
        VireoBrickBase* texture = add("VireoTexFltScaleBrick");
        ASSERT_TRUE(link(texture, consumer, input));
        consumer = texture;
        input = "tex1";
    }
    QString expected = QStringLiteral("\nTexture \"Lm_texture%1\" \"float\" \"scale\"\n"
                                      "\t\"float   tex1\" [1]\n"
                                      "\t\"float   tex2\" [1]\n")
                           .arg(depth);
    for (int number = depth - 1; number >= 1; --number)
        expected += QStringLiteral("\nTexture \"Lm_texture%1\" \"float\" \"scale\"\n"
                                   "\t\"texture tex1\" [\"Lm_texture%2\"]\n"
                                   "\t\"float   tex2\" [1]\n")
                        .arg(number)
                        .arg(number + 1);
    expected += QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"texture bumpmap\" [\"Lm_texture1\"]\n"
                               "\t\"string  type\" [\"null\"]\n"
                               "\nNamedMaterial \"Lm_material1\"\n");
    const QString text = codeOf(root).materialText;
    // Too long for a diff.
    EXPECT_EQ(text.size(), expected.size());
    EXPECT_TRUE(text == expected);
}

TEST_F(NetworkWalkTest, withoutMemoryForTheWalkNothingIsWritten)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has its own idea of memory";
#endif
    VireoBrickBase* first = add("VireoTexFltScaleBrick");
    VireoBrickBase* last = first;
    for (int i = 0; i < 12000; ++i) {
        VireoBrickBase* texture = add("VireoTexFltScaleBrick");
        ASSERT_TRUE(link(texture, last, "tex1"));
        last = texture;
    }
    const auto writeInLittleMemory = [&] {
        // The walk wants three stacks and gets room for hardly one.
        limitAddressSpace(24 << 20);
        try {
            codeOf(first);
        } catch (const std::bad_alloc&) {
            limitAddressSpace(size_t(1) << 32);
            // What follows is as if nothing had happened.
            const QString text = codeOf(first).materialText;
            _exit(text.contains(QLatin1String("Lm_texture12000")) ? 0 : 2);
        }
        _exit(1);
    };
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        writeInLittleMemory();
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(NetworkWalkTest, aLocaleWithACommaHasNoEffect)
{
    VireoBrickBase* root = add("VireoRootBrick");
    VireoBrickBase* matte = add("VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const GeneratedCode code = codeOf(root);
    QLocale::setDefault(before);
    EXPECT_TEXT(matteStatement(1) + QStringLiteral("\nNamedMaterial \"Lm_material1\"\n"),
        code.materialText);
    EXPECT_TEXT(freshMeshText(), code.resultName);
}

// The text that users see ------------------------------------------------------------------------

TEST_F(NetworkWalkTest, theExportTextIsSevenParagraphs)
{
    GeneratedCode code;
    code.materialText = QStringLiteral("material\n");
    code.resultName = QStringLiteral("mesh\n");
    const QString separator
        = QStringLiteral("#---------------------------------------------------------------------");
    EXPECT_TEXT(separator + QStringLiteral("\n# Material Settings\nmaterial\n\n\n") + separator
            + QStringLiteral("\n# Mesh Settings\nmesh\n"),
        exportText(code));
}

TEST_F(NetworkWalkTest, theExportTextOfAFreshRootHasAnEmptyMaterialSection)
{
    EXPECT_TEXT(
        QStringLiteral("#---------------------------------------------------------------------\n"
                       "# Material Settings\n"
                       "\n"
                       "\n"
                       "#---------------------------------------------------------------------\n"
                       "# Mesh Settings\n")
            + freshMeshText(),
        exportText(codeOf(add("VireoRootBrick"))));
}

TEST_F(NetworkWalkTest, anotherBrickThanARootGivesTheNameOfItsStatement)
{
    const GeneratedCode code = codeOf(add("VireoMatNullBrick"));
    EXPECT_TEXT(nullStatement(1), code.materialText);
    EXPECT_TEXT(QStringLiteral("Lm_material1"), code.resultName);
}

// Loops ---------------------------------------------------------------------------------------

namespace {

/// A brick that is fed by another without a link that the host could refuse.
class SecretlyFedBrick : public BareBrick
{
public:
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override
    {
        ++timesWritten;
        codeFor(source, writer);
        result->kind = CodeResult::TextureKind;
        result->name = QStringLiteral("secret");
        return result;
    }

    VireoBrickBase* source = nullptr;
    int timesWritten = 0;
};

} // namespace

TEST(Loops, aBrickThatFeedsItselfIsWrittenOnceAndNamed)
{
    SecretlyFedBrick first;
    SecretlyFedBrick second;
    first.source = &second;
    second.source = &first;
    for (int run = 1; run <= 2; ++run) {
        Warnings warnings;
        codeOf(&first);
        EXPECT_EQ(warnings.messages.size(), 1);
        EXPECT_EQ(first.timesWritten, run);
        EXPECT_EQ(second.timesWritten, run);
    }
}
