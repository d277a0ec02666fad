// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickCodeCache.h"
#include "NetworkCode.h"
#include "SceneCodeWriter.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"

namespace {

/// The lines of a fresh image map after "filename", as values.
QString imageValues()
{
    return QStringLiteral("\t\"float   gamma\" [1]\n"
                          "\t\"string  filtertype\" [\"bilinear\"]\n"
                          "\t\"float   maxanisotropy\" [8]\n"
                          "\t\"string  wrap\" [\"repeat\"]\n"
                          "\t\"integer discardmipmaps\" [0]\n"
                          "\t\"string  channel\" [\"mean\"]\n"
                          "\t\"string  mapping\" [\"uv\"]\n"
                          "\t\"float   uscale\" [1]\n"
                          "\t\"float   vscale\" [1]\n"
                          "\t\"vector  v1\" [1 0 0]\n"
                          "\t\"vector  v2\" [0 1 0]\n");
}

/// The same as placeholders, where "filename" has none.
QString imagePlaceholders()
{
    return QStringLiteral("\t\"string  gamma\" [%(LuxRender_Lm_001_gamma)]\n"
                          "\t\"string  filtertype\" [$(LuxRender_Lm_002_filtertype)]\n"
                          "\t\"string  maxanisotropy\" [%(LuxRender_Lm_003_maxanisotropy)]\n"
                          "\t\"string  wrap\" [$(LuxRender_Lm_004_wrap)]\n"
                          "\t\"integer discardmipmaps\" [$(LuxRender_Lm_005_discardmipmaps)]\n"
                          "\t\"string  channel\" [$(LuxRender_Lm_006_channel)]\n"
                          "\t\"string  mapping\" [$(LuxRender_Lm_007_mapping)]\n"
                          "\t\"string  uscale\" [%(LuxRender_Lm_008_uscale)]\n"
                          "\t\"string  vscale\" [%(LuxRender_Lm_009_vscale)]\n"
                          "\t\"vector  v1\" [1 0 0]\n"
                          "\t\"vector  v2\" [0 1 0]\n");
}

/// The same as placeholders, where "filename" has the first.
QString imagePlaceholdersAfterFilename()
{
    return QStringLiteral("\t\"string  filename\" [%(LuxRender_Lm_001_filename)]\n"
                          "\t\"string  gamma\" [%(LuxRender_Lm_002_gamma)]\n"
                          "\t\"string  filtertype\" [$(LuxRender_Lm_003_filtertype)]\n"
                          "\t\"string  maxanisotropy\" [%(LuxRender_Lm_004_maxanisotropy)]\n"
                          "\t\"string  wrap\" [$(LuxRender_Lm_005_wrap)]\n"
                          "\t\"integer discardmipmaps\" [$(LuxRender_Lm_006_discardmipmaps)]\n"
                          "\t\"string  channel\" [$(LuxRender_Lm_007_channel)]\n"
                          "\t\"string  mapping\" [$(LuxRender_Lm_008_mapping)]\n"
                          "\t\"string  uscale\" [%(LuxRender_Lm_009_uscale)]\n"
                          "\t\"string  vscale\" [%(LuxRender_Lm_010_vscale)]\n"
                          "\t\"vector  v1\" [1 0 0]\n"
                          "\t\"vector  v2\" [0 1 0]\n");
}

GeneratedCode codeOf(VireoBrickBase* brick, bool literal, bool mapFiles = false)
{
    GenerateOptions options;
    options.literalValues = literal;
    options.mapFiles = mapFiles;
    return generateCode(brick, options);
}

/// What a brick tells of the statement that it wrote.
CodeResult resultOf(VireoBrickBase* brick, bool literal)
{
    BrickCodeCache::instance().clear();
    SceneCodeWriter writer;
    writer.literalValues = literal;
    return codeFor(brick, &writer);
}

void expectValues(const CodeResult& result, int components, double red, double green, double blue)
{
    EXPECT_EQ(result.kind, 6);
    EXPECT_EQ(result.aux, components);
    EXPECT_DOUBLE_EQ(result.values[0], red);
    EXPECT_DOUBLE_EQ(result.values[1], green);
    EXPECT_DOUBLE_EQ(result.values[2], blue);
    EXPECT_DOUBLE_EQ(result.values[3], 1);
}

/// A statement without a colour of its own.
void expectNoValues(const CodeResult& result)
{
    EXPECT_EQ(result.kind, 6);
    EXPECT_EQ(result.aux, 0);
    for (double value : result.values)
        EXPECT_EQ(value, 0);
}

class ColorConstantTest : public testing::Test
{
protected:
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoTexClrConstantBrick");
    DzColorProperty* value = propertyAs<DzColorProperty>(brick, "value");
    DzFloatProperty* scale = propertyAs<DzFloatProperty>(brick, "scale");
};

class ColorImageMapTest : public testing::Test
{
protected:
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoTexClrImageMapBrick");
    DzColorProperty* filename = propertyAs<DzColorProperty>(brick, "filename");
};

class FloatImageMapTest : public testing::Test
{
protected:
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoTexFltImageMapBrick");
    DzFloatProperty* filename = propertyAs<DzFloatProperty>(brick, "filename");
};

} // namespace

// Colour constant --------------------------------------------------------------------------------

TEST_F(ColorConstantTest, literalTextIsTheProductOfColourAndScale)
{
    value->setColorValue(QColor(255, 51, 0));
    scale->setValue(0.5f);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [0.5 0.1 0]\n"),
        literalText(brick));
}

TEST_F(ColorConstantTest, theProductMayExceedOneOrBeNegative)
{
    value->setColorValue(QColor(255, 51, 255));
    scale->setValue(-10);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [-10 -2 -10]\n"),
        literalText(brick));
}

TEST_F(ColorConstantTest, alphaIsNoPartOfTheProduct)
{
    value->setColorValue(QColor(255, 255, 255, 7));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [1 1 1]\n"),
        literalText(brick));
}

TEST_F(ColorConstantTest, literalTextIgnoresLinksIntoValueAndScale)
{
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrUvBrick"), brick, "value"));
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltConstantBrick"), brick, "scale"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [1 1 1]\n"),
        literalText(brick));
}

TEST_F(ColorConstantTest, lockedPropertiesMakeNoDifferenceInLiteralText)
{
    scale->setValue(0.5f);
    lockAll(brick);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [0.5 0.5 0.5]\n"),
        literalText(brick));
}

TEST_F(ColorConstantTest, placeholdersWrapTheConstantInAScale)
{
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"string  value\" [%(LuxRender_Lm_001_value)]\n"
                               "\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                               "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                               "\t\"color   tex2\" [$(LuxRender_Lm_002_scale) "
                               "$(LuxRender_Lm_002_scale) $(LuxRender_Lm_002_scale)]\n"),
        placeholderText(brick));
}

TEST_F(ColorConstantTest, aLockedScaleIsWrittenUnderValue)
{
    scale->setValue(0.25f);
    scale->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"string  value\" [%(LuxRender_Lm_001_value)]\n"
                               "\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                               "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                               "\t\"color   value\" [0.25 0.25 0.25]\n"),
        placeholderText(brick));
}

TEST_F(ColorConstantTest, aLockedColourIsAValueAmongPlaceholders)
{
    value->setColorValue(QColor(0, 255, 51));
    value->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [0 1 0.2]\n"
                               "\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                               "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                               "\t\"color   tex2\" [$(LuxRender_Lm_001_scale) "
                               "$(LuxRender_Lm_001_scale) $(LuxRender_Lm_001_scale)]\n"),
        placeholderText(brick));
}

TEST_F(ColorConstantTest, placeholdersReferToALinkedValueAndNotToALinkedScale)
{
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "value"));
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltConstantBrick"), brick, "scale"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"harlequin\"\n"
                               "\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"texture value\" [\"Lm_texture2\"]\n"
                               "\nTexture \"Lm_texture3\" \"color\" \"scale\"\n"
                               "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                               "\t\"color   tex2\" [$(LuxRender_Lm_001_scale) "
                               "$(LuxRender_Lm_001_scale) $(LuxRender_Lm_001_scale)]\n"),
        placeholderText(brick));
}

TEST_F(ColorConstantTest, severalLinksIntoValueWriteNoLineForIt)
{
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "value"));
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "value"));
    scale->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                               "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                               "\t\"color   value\" [1 1 1]\n"),
        placeholderText(brick));
}

TEST_F(ColorConstantTest, aCustomInputNamedScaleIsNotWrittenEither)
{
    ASSERT_NE(
        brick->addCustomInput(1009, QStringLiteral("scale"), QStringLiteral("scale"), 0), nullptr);
    ASSERT_NE(
        brick->addCustomInput(1009, QStringLiteral("other"), QStringLiteral("other"), 0), nullptr);
    lockAll(brick);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [1 1 1]\n"
                               "\t\"float   other\" [0]\n"
                               "\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                               "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                               "\t\"color   value\" [1 1 1]\n"),
        placeholderText(brick));
}

TEST_F(ColorConstantTest, theConsumerRefersToTheScaleAmongPlaceholders)
{
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    ASSERT_TRUE(link(brick, matte, "Kd"));
    lockAll(brick);
    lockAll(matte);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [1 1 1]\n"
                               "\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                               "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                               "\t\"color   value\" [1 1 1]\n"
                               "\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"texture Kd\" [\"Lm_texture2\"]\n"
                               "\t\"float   sigma\" [0]\n"
                               "\t\"string  type\" [\"matte\"]\n"),
        placeholderText(matte));
}

TEST_F(ColorConstantTest, theResultHoldsTheProductInBothModes)
{
    value->setColorValue(QColor(255, 51, 0));
    scale->setValue(0.5f);
    expectValues(resultOf(brick, true), 3, 0.5, 0.5 * 51 / 255, 0);
    EXPECT_EQ(resultOf(brick, true).name, QStringLiteral("Lm_texture1"));
    expectValues(resultOf(brick, false), 3, 0.5, 0.5 * 51 / 255, 0);
    EXPECT_EQ(resultOf(brick, false).name, QStringLiteral("Lm_texture2"));
}

TEST_F(ColorConstantTest, theResultHoldsNoColourWhereALinkedTextureStandsInItsPlace)
{
    value->setColorValue(QColor(255, 51, 0));
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrMixBrick"), brick, "value"));
    expectNoValues(resultOf(brick, false));
    expectValues(resultOf(brick, true), 3, 1, 0.2, 0);
}

TEST_F(ColorConstantTest, mapsThatTheTextDropsAreNoticed)
{
    value->setMap(QStringLiteral("maps/wood.png"));
    scale->setMap(QStringLiteral("maps/grey.png"));
    EXPECT_EQ(codeOf(brick, true).unwrittenMaps, QList<DzNumericProperty*>({ value, scale }));
    // The scale's placeholder stands for its value alone.
    EXPECT_EQ(codeOf(brick, false).unwrittenMaps, QList<DzNumericProperty*>({ scale }));
    lockAll(brick);
    EXPECT_EQ(codeOf(brick, false).unwrittenMaps, QList<DzNumericProperty*>({ value, scale }));
}

// Colour image map -------------------------------------------------------------------------------

TEST_F(ColorImageMapTest, literalTextWithoutAMapIsAConstant)
{
    filename->setColorValue(QColor(51, 102, 255, 7));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [0.2 0.4 1]\n"),
        literalText(brick));
}

TEST_F(ColorImageMapTest, literalTextWithoutAMapIsAConstantEvenWhenFilenameIsLinked)
{
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "filename"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [1 1 1]\n"),
        literalText(brick));
}

TEST_F(ColorImageMapTest, aWhiteMapInLiteralTextStandsAlone)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"color   filename\" [1 1 1]\n")
            + imageValues(),
        literalText(brick));
}

TEST_F(ColorImageMapTest, aTintedMapInLiteralTextIsScaledByTheTint)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    filename->setColorValue(QColor(255, 51, 0));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"color   filename\" [1 0.2 0]\n")
            + imageValues()
            + QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                             "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                             "\t\"color   tex2\" [1 0.2 0]\n"),
        literalText(brick));
}

TEST_F(ColorImageMapTest, whiteThatIsNotOpaqueIsATint)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    filename->setColorValue(QColor(255, 255, 255, 254));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"color   filename\" [1 1 1]\n")
            + imageValues()
            + QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                             "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                             "\t\"color   tex2\" [1 1 1]\n"),
        literalText(brick));
}

TEST_F(ColorImageMapTest, aLinkedFilenameOfAMappedPropertyIsReferredToWithoutATint)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    filename->setColorValue(QColor(255, 51, 0));
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "filename"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"harlequin\"\n"
                               "\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"texture filename\" [\"Lm_texture2\"]\n")
            + imageValues(),
        literalText(brick));
}

TEST_F(ColorImageMapTest, severalLinksIntoFilenameWriteNeitherLineNorTint)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    filename->setColorValue(QColor(255, 51, 0));
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "filename"));
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "filename"));
    EXPECT_TEXT(
        QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n") + imageValues(),
        literalText(brick));
    EXPECT_TEXT(
        QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n") + imagePlaceholders(),
        placeholderText(brick));
}

TEST_F(ColorImageMapTest, placeholdersAlwaysScaleByTheTintsPlaceholder)
{
    const QString expected = QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n")
        + imagePlaceholdersAfterFilename()
        + QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                         "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                         "\t\"color   tex2\" [$(LuxRender_Lm_001_filename)]\n");
    EXPECT_TEXT(expected, placeholderText(brick));
    filename->setMap(QStringLiteral("maps/wood.png"));
    filename->setColorValue(QColor(255, 51, 0));
    EXPECT_TEXT(expected, placeholderText(brick));
    EXPECT_EQ(codeOf(brick, false).placeholderNames.size(), 10);
}

TEST_F(ColorImageMapTest, aLockedWhiteAmongPlaceholdersStandsAlone)
{
    filename->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"color   filename\" [1 1 1]\n")
            + imagePlaceholders(),
        placeholderText(brick));
}

TEST_F(ColorImageMapTest, aLockedTintAmongPlaceholdersIsAValue)
{
    filename->setColorValue(QColor(0, 51, 255));
    filename->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"color   filename\" [0 0.2 1]\n")
            + imagePlaceholders()
            + QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                             "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                             "\t\"color   tex2\" [0 0.2 1]\n"),
        placeholderText(brick));
}

TEST_F(ColorImageMapTest, aLinkedFilenameAmongPlaceholdersIsReferredToWithoutATint)
{
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrHarlequinBrick"), brick, "filename"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"harlequin\"\n"
                               "\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"texture filename\" [\"Lm_texture2\"]\n")
            + imagePlaceholders(),
        placeholderText(brick));
}

TEST_F(ColorImageMapTest, theFileNameTakesThePlaceOfTheValueOnRequest)
{
    filename->setMap(QStringLiteral("maps/wood 100%.png"));
    filename->setColorValue(QColor(255, 51, 0));
    const GeneratedCode code = codeOf(brick, true, true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"imagemap\"\n"
                               "\t\"string  filename\" [\"maps/wood 100%.png\"]\n")
            + imageValues()
            + QStringLiteral("\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                             "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                             "\t\"color   tex2\" [1 0.2 0]\n"),
        code.materialText);
    EXPECT_EQ(code.unwrittenMaps, QList<DzNumericProperty*>());
    EXPECT_EQ(codeOf(brick, true, false).unwrittenMaps, QList<DzNumericProperty*>({ filename }));
}

TEST_F(ColorImageMapTest, aMapWithoutAFileNameIsNone)
{
    filename->setMap(QStringLiteral("maps/wood.png"));
    filename->clearMap();
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"color\" \"constant\"\n"
                               "\t\"color   value\" [1 1 1]\n"),
        literalText(brick));
}

TEST_F(ColorImageMapTest, theResultHoldsTheColour)
{
    filename->setColorValue(QColor(255, 51, 0));
    expectValues(resultOf(brick, true), 3, 1, 0.2, 0);
    EXPECT_EQ(resultOf(brick, true).name, QStringLiteral("Lm_texture1"));
    expectValues(resultOf(brick, false), 3, 1, 0.2, 0);
    EXPECT_EQ(resultOf(brick, false).name, QStringLiteral("Lm_texture2"));
}

TEST_F(ColorImageMapTest, theResultHoldsTheColourOfAConstantAlsoWhenFilenameIsLinked)
{
    filename->setColorValue(QColor(255, 51, 0));
    ASSERT_TRUE(link(addBrick(user, "VireoTexClrMixBrick"), brick, "filename"));
    expectValues(resultOf(brick, true), 3, 1, 0.2, 0);
    expectNoValues(resultOf(brick, false));
    ASSERT_TRUE(filename->setMap(QStringLiteral("wall.png")));
    expectNoValues(resultOf(brick, true));
}

// Float image map --------------------------------------------------------------------------------

TEST_F(FloatImageMapTest, literalTextWithoutAMapIsAConstant)
{
    filename->setValue(0.75f);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"constant\"\n"
                               "\t\"float   value\" [0.75]\n"),
        literalText(brick));
}

TEST_F(FloatImageMapTest, literalTextWithoutAMapIsAConstantEvenWhenFilenameIsLinked)
{
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltConstantBrick"), brick, "filename"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"constant\"\n"
                               "\t\"float   value\" [1]\n"),
        literalText(brick));
}

TEST_F(FloatImageMapTest, aMapOfValueOneInLiteralTextStandsAlone)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n"
                               "\t\"float   filename\" [1]\n")
            + imageValues(),
        literalText(brick));
}

TEST_F(FloatImageMapTest, anotherValueOfAMapInLiteralTextScalesIt)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    filename->setValue(0.5f);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n"
                               "\t\"float   filename\" [0.5]\n")
            + imageValues()
            + QStringLiteral("\nTexture \"Lm_texture2\" \"float\" \"scale\"\n"
                             "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                             "\t\"float   tex2\" [0.5]\n"),
        literalText(brick));
}

TEST_F(FloatImageMapTest, aLinkedFilenameOfAMappedPropertyIsReferredToWithoutAScale)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    filename->setValue(0.5f);
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltConstantBrick"), brick, "filename"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture2\" \"float\" \"constant\"\n"
                               "\t\"float   value\" [1]\n"
                               "\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n"
                               "\t\"texture filename\" [\"Lm_texture2\"]\n")
            + imageValues(),
        literalText(brick));
}

TEST_F(FloatImageMapTest, severalLinksIntoFilenameWriteNeitherLineNorScale)
{
    ASSERT_TRUE(filename->setMap(QStringLiteral("maps/wood.png")));
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltConstantBrick"), brick, "filename"));
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltConstantBrick"), brick, "filename"));
    EXPECT_TEXT(
        QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n") + imageValues(),
        literalText(brick));
    EXPECT_TEXT(
        QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n") + imagePlaceholders(),
        placeholderText(brick));
}

TEST_F(FloatImageMapTest, placeholdersAlwaysScaleByTheValuesPlaceholder)
{
    const QString expected = QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n")
        + imagePlaceholdersAfterFilename()
        + QStringLiteral("\nTexture \"Lm_texture2\" \"float\" \"scale\"\n"
                         "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                         "\t\"float   tex2\" [$(LuxRender_Lm_001_filename)]\n");
    EXPECT_TEXT(expected, placeholderText(brick));
    filename->setMap(QStringLiteral("maps/wood.png"));
    EXPECT_TEXT(expected, placeholderText(brick));
}

TEST_F(FloatImageMapTest, aLockedOneAmongPlaceholdersStandsAlone)
{
    filename->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n"
                               "\t\"float   filename\" [1]\n")
            + imagePlaceholders(),
        placeholderText(brick));
}

TEST_F(FloatImageMapTest, anotherLockedValueAmongPlaceholdersIsAValue)
{
    filename->setValue(2);
    filename->lock(true);
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n"
                               "\t\"float   filename\" [2]\n")
            + imagePlaceholders()
            + QStringLiteral("\nTexture \"Lm_texture2\" \"float\" \"scale\"\n"
                             "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                             "\t\"float   tex2\" [2]\n"),
        placeholderText(brick));
}

TEST_F(FloatImageMapTest, aLinkedFilenameAmongPlaceholdersIsReferredToWithoutAScale)
{
    VireoBrickBase* feeder = addBrick(user, "VireoTexFltBlenderCloudsBrick");
    ASSERT_TRUE(link(feeder, brick, "filename"));
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture2\" \"float\" \"blender_clouds\"\n"
                               "\nTexture \"Lm_texture1\" \"float\" \"imagemap\"\n"
                               "\t\"texture filename\" [\"Lm_texture2\"]\n")
            + imagePlaceholders(),
        placeholderText(brick));
}

TEST_F(FloatImageMapTest, theResultHoldsTheValueThreeTimes)
{
    filename->setValue(0.5f);
    expectValues(resultOf(brick, true), 1, 0.5, 0.5, 0.5);
    EXPECT_EQ(resultOf(brick, true).name, QStringLiteral("Lm_texture1"));
    expectValues(resultOf(brick, false), 1, 0.5, 0.5, 0.5);
    EXPECT_EQ(resultOf(brick, false).name, QStringLiteral("Lm_texture2"));
}

TEST_F(FloatImageMapTest, theResultHoldsTheValueOfAConstantAlsoWhenFilenameIsLinked)
{
    filename->setValue(0.25f);
    ASSERT_TRUE(link(addBrick(user, "VireoTexFltMixBrick"), brick, "filename"));
    expectValues(resultOf(brick, true), 1, 0.25, 0.25, 0.25);
    expectNoValues(resultOf(brick, false));
    ASSERT_TRUE(filename->setMap(QStringLiteral("wall.png")));
    expectNoValues(resultOf(brick, true));
}
