// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LuxCoreScene.h"
#include "TestSupport.h"

#include <QDir>
#include <QSet>
#include <QTemporaryDir>
#include <cmath>

using namespace lux;

namespace {

LuxCoreMaterial translated(const QByteArray& text, const QString& folder = QString())
{
    SceneOptions options;
    options.reading.acceptsLooseParameters = true;
    SceneText scene;
    scene.readText(text, folder, options);
    LuxCoreOptions translation;
    translation.imageFolder = folder;
    translation.prefix = "n";
    return luxCoreMaterial(scene, translation);
}

/// The value of a property of the material that the text puts on the surface.
QByteArray valueOf(const LuxCoreMaterial& material, const QByteArray& key)
{
    const QByteArray begin = "scene.materials." + material.name + '.' + key + " = ";
    QByteArray value;
    for (const QByteArray& line : material.properties.split('\n'))
        if (line.startsWith(begin))
            value = line.mid(begin.size());
    return value;
}

QByteArray textureValue(
    const LuxCoreMaterial& material, const QByteArray& texture, const QByteArray& key)
{
    const QByteArray begin = "scene.textures." + texture + '.' + key + " = ";
    for (const QByteArray& line : material.properties.split('\n'))
        if (line.startsWith(begin))
            return line.mid(begin.size());
    return QByteArray();
}

QByteArray matteOf(const QByteArray& statements)
{
    return statements
        + "MakeNamedMaterial \"m\" \"texture Kd\" [\"t\"] \"string type\" [\"matte\"]\n";
}

} // namespace

TEST(LuxCoreScene, lastNamedMaterialIsDrawn)
{
    const QByteArray two = "MakeNamedMaterial \"a\" \"string type\" [\"matte\"]\n"
                           "MakeNamedMaterial \"b\" \"string type\" [\"mirror\"]\n";
    EXPECT_EQ(valueOf(translated(two), "type"), QByteArray("mirror"));
    EXPECT_EQ(valueOf(translated(two + "NamedMaterial \"a\"\n"), "type"), QByteArray("matte"));
    EXPECT_EQ(valueOf(translated(two + "NamedMaterial \"a\"\nNamedMaterial \"b\"\n"), "type"),
        QByteArray("mirror"));
    EXPECT_TRUE(translated("Texture \"t\" \"float\" \"fbm\"\n").name.isEmpty());
}

TEST(LuxCoreScene, valuesThatAreNotGivenAreTheRenderersOwn)
{
    const LuxCoreMaterial glass = translated("Material \"glass\"\n");
    EXPECT_EQ(valueOf(glass, "interiorior"), QByteArray("1.5"));
    EXPECT_EQ(valueOf(glass, "kr"), QByteArray("1 1 1"));
    EXPECT_EQ(valueOf(translated("Material \"velvet\"\n"), "p1"), QByteArray("-2"));
}

TEST(LuxCoreScene, valuesOfAnotherTypeAreNotRead)
{
    const LuxCoreMaterial matte
        = translated("Material \"matte\" \"float Kd\" [0.1] \"color sigma\" [9 9 9]\n");
    EXPECT_EQ(valueOf(matte, "type"), QByteArray("matte"));
    EXPECT_EQ(valueOf(matte, "kd"), QByteArray("0.9 0.9 0.9"));
    EXPECT_EQ(valueOf(translated("Material \"matte\" \"color Kd\" [0.1]\n"), "kd"),
        QByteArray("0.9 0.9 0.9"));
    // Words where numbers belong.
    EXPECT_EQ(valueOf(translated("Material \"matte\" \"color Kd\" [\"a\" \"b\" \"c\"]\n"), "kd"),
        QByteArray("0.9 0.9 0.9"));
}

TEST(LuxCoreScene, sigmaIsTurnedFromDegreesToRadians)
{
    const LuxCoreMaterial matte = translated("Material \"matte\" \"float sigma\" [20]\n");
    EXPECT_EQ(valueOf(matte, "type"), QByteArray("roughmatte"));
    EXPECT_NEAR(valueOf(matte, "sigma").split(' ').first().toDouble(), 0.349066, 1e-6);
}

TEST(LuxCoreScene, glassOfIndexZeroIsAMirror)
{
    EXPECT_EQ(valueOf(translated("Material \"glass\" \"float index\" [0]\n"), "type"),
        QByteArray("mirror"));
}

TEST(LuxCoreScene, kindsOfTexturesHaveNamesOfTheirOwn)
{
    // The colour of this name is not the float of this name, and a float is no colour.
    const LuxCoreMaterial matte
        = translated(matteOf("Texture \"t\" \"color\" \"constant\" \"color value\" [0.1 0.2 0.3]\n"
                             "Texture \"t\" \"float\" \"constant\" \"float value\" [0.5]\n"));
    EXPECT_EQ(valueOf(matte, "kd"), QByteArray("0.1 0.2 0.3"));
    const LuxCoreMaterial plain
        = translated(matteOf("Texture \"t\" \"float\" \"constant\" \"float value\" [0.5]\n"));
    EXPECT_EQ(valueOf(plain, "kd"), QByteArray("0.9 0.9 0.9"));
}

TEST(LuxCoreScene, lastDefinitionOfANameWins)
{
    const LuxCoreMaterial matte = translated(
        matteOf("Texture \"t\" \"color\" \"constant\" \"color value\" [0.1 0.2 0.3]\n"
                "Texture \"t\" \"color\" \"constant\" \"color value\" [0.4 0.5 0.6]\n"));
    EXPECT_EQ(valueOf(matte, "kd"), QByteArray("0.4 0.5 0.6"));
}

TEST(LuxCoreScene, missingCoordinatesAreGlobal)
{
    const LuxCoreMaterial matte = translated(matteOf("Texture \"t\" \"color\" \"marble\"\n"));
    EXPECT_EQ(
        textureValue(matte, valueOf(matte, "kd"), "mapping.type"), QByteArray("globalmapping3d"));
}

TEST(LuxCoreScene, placementOfASolidIsAMatrix)
{
    const LuxCoreMaterial matte
        = translated(matteOf("Texture \"t\" \"color\" \"marble\" \"vector translate\" [1 2 3] "
                             "\"vector rotate\" [0 0 90] \"vector scale\" [2 4 5]\n"));
    const QList<QByteArray> numbers
        = textureValue(matte, valueOf(matte, "kd"), "mapping.transformation").split(' ');
    ASSERT_EQ(numbers.size(), 16);
    // The point (1 + x, 2 + y, 3 + z) is moved to (x, y, z), turned to (-y, x, z) and divided.
    const double expected[] = { 0, 0.25, 0, 0, -0.5, 0, 0, 0, 0, 0, 0.2, 0, 1, -0.25, -0.6, 1 };
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(numbers.at(i).toDouble(), expected[i], 1e-9) << i;
}

TEST(LuxCoreScene, noiseAtAScaleOfZeroIsNothing)
{
    const QByteArray text = "Texture \"t\" \"float\" \"fbm\" \"vector scale\" [1 0 0]\n"
                            "MakeNamedMaterial \"m\" \"texture sigma\" [\"t\"] "
                            "\"string type\" [\"matte\"]\n";
    const LuxCoreMaterial matte = translated(text);
    EXPECT_EQ(valueOf(matte, "type"), QByteArray("matte"));
    ASSERT_EQ(matte.notes.size(), 1);
    EXPECT_TRUE(matte.notes.first().startsWith(QLatin1String("t: its scale has a 0")));
}

TEST(LuxCoreScene, bandOfTexturesIsAChainOfMixes)
{
    const LuxCoreMaterial matte = translated("Texture \"a\" \"color\" \"uv\"\n"
        + matteOf("Texture \"t\" \"color\" \"band\" \"float offsets\" [0 0.5 1] "
                  "\"float amount\" [0.25] \"texture tex1\" [\"a\"] \"color tex2\" [1 0 0] "
                  "\"color tex3\" [0 0 1]\n"));
    const QByteArray last = valueOf(matte, "kd");
    EXPECT_EQ(textureValue(matte, last, "type"), QByteArray("mix"));
    EXPECT_EQ(textureValue(matte, last, "texture2"), QByteArray("0 0 1"));
    const QByteArray first = textureValue(matte, last, "texture1");
    EXPECT_EQ(textureValue(matte, first, "type"), QByteArray("mix"));
    EXPECT_EQ(textureValue(matte, first, "texture2"), QByteArray("1 0 0"));
    const QByteArray share = textureValue(matte, last, "amount");
    EXPECT_EQ(textureValue(matte, share, "sourcemin"), QByteArray("0.5"));
    EXPECT_EQ(textureValue(matte, share, "sourcemax"), QByteArray("1"));
}

TEST(LuxCoreScene, bandOfColorsIsABand)
{
    const LuxCoreMaterial matte
        = translated(matteOf("Texture \"t\" \"color\" \"band\" \"float offsets\" [0 1] "
                             "\"color tex1\" [1 0 0] \"color tex2\" [0 0 1]\n"));
    EXPECT_EQ(textureValue(matte, valueOf(matte, "kd"), "type"), QByteArray("band"));
    EXPECT_EQ(textureValue(matte, valueOf(matte, "kd"), "value1"), QByteArray("0 0 1"));
}

TEST(LuxCoreScene, emptyBandIsSaidAndNotDrawn)
{
    const LuxCoreMaterial matte = translated(matteOf("Texture \"t\" \"color\" \"band\"\n"));
    EXPECT_EQ(valueOf(matte, "kd"), QByteArray("0"));
    ASSERT_EQ(matte.notes.size(), 1);
    EXPECT_TRUE(matte.notes.first().contains(QLatin1String("crashes LuxRender")));
}

TEST(LuxCoreScene, imageNamesAreMeantFromTheTextsFolder)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(projectPath(QStringLiteral("examples/textures/bricks.png")),
        folder.filePath(QStringLiteral("wall picture.png"))));
    const QByteArray text
        = matteOf("Texture \"t\" \"color\" \"imagemap\" \"string filename\" [\"wall picture.png\"] "
                  "\"float gamma\" [2.2] \"float gain\" [0.5]\n");
    const LuxCoreMaterial matte = translated(text, folder.path());
    const QByteArray texture = valueOf(matte, "kd");
    EXPECT_EQ(textureValue(matte, texture, "file"),
        '"' + folder.filePath(QStringLiteral("wall picture.png")).toUtf8() + '"');
    EXPECT_EQ(textureValue(matte, texture, "gamma"), QByteArray("2.2"));
    EXPECT_NEAR(textureValue(matte, texture, "gain").toDouble(), std::pow(0.5, 2.2), 1e-6);
    EXPECT_TRUE(matte.notes.isEmpty());
}

TEST(LuxCoreScene, missingImageIsSaidAndWhite)
{
    const LuxCoreMaterial matte = translated(
        matteOf("Texture \"t\" \"color\" \"imagemap\" \"string filename\" [\"none.png\"]\n"));
    EXPECT_EQ(valueOf(matte, "kd"), QByteArray("1"));
    EXPECT_EQ(matte.notes,
        QStringList { QStringLiteral("t: its image none.png is missing, and it is drawn white") });
}

TEST(LuxCoreScene, imageNameWithAQuoteIsSaid)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(projectPath(QStringLiteral("examples/textures/bricks.png")),
        folder.filePath(QStringLiteral("it's.png"))));
    const LuxCoreMaterial matte = translated(
        matteOf("Texture \"t\" \"color\" \"imagemap\" \"string filename\" [\"it's.png\"]\n"),
        folder.path());
    ASSERT_EQ(matte.notes.size(), 1);
    EXPECT_TRUE(matte.notes.first().contains(QLatin1String("a quote")));
    EXPECT_FALSE(matte.properties.contains("it's"));
}

TEST(LuxCoreScene, wordsFromTextsReachNoOtherProperty)
{
    // A name with a line end or a quote in it must not become a property of its own.
    const LuxCoreMaterial matte
        = translated("MakeNamedMaterial \"m\" \"string presetname\" [\"denim\\nscene.camera.type = "
                     "environment\"] \"string type\" [\"cloth\"]\n");
    for (const QByteArray& line : matte.properties.split('\n'))
        EXPECT_TRUE(line.isEmpty() || line.startsWith("scene.materials.n")
            || line.startsWith("scene.textures.n") || line.startsWith("scene.volumes.n"))
            << line.constData();
}

TEST(LuxCoreScene, unknownTypesAreSaid)
{
    const LuxCoreMaterial material = translated("Texture \"t\" \"color\" \"regular data\"\n"
                                                "Material \"gold\"\n");
    EXPECT_EQ(valueOf(material, "type"), QByteArray("matte"));
    ASSERT_EQ(material.notes.size(), 2);
    EXPECT_TRUE(material.notes.at(0).contains(QLatin1String("no type \"regular data\"")));
    EXPECT_TRUE(material.notes.at(1).contains(QLatin1String("no type \"gold\"")));
}

TEST(LuxCoreScene, volumesBelongToTheMaterial)
{
    const LuxCoreMaterial glass = translated(
        "Texture \"f\" \"fresnel\" \"cauchy\" \"float cauchya\" [1.458] \"float cauchyb\" "
        "[0.00354]\n"
        "MakeNamedVolume \"v\" \"clear\" \"texture fresnel\" [\"f\"] \"color absorption\" [1 2 3]\n"
        "MakeNamedMaterial \"m\" \"bool dispersion\" [\"true\"] \"string type\" [\"glass2\"]\n"
        "NamedMaterial \"m\"\nInterior \"v\"\nExterior \"unknown\"\n");
    const QByteArray volume = valueOf(glass, "volume.interior");
    EXPECT_TRUE(glass.properties.contains("scene.volumes." + volume + ".absorption = 1 2 3\n"));
    // A + B / 0.5876²
    EXPECT_TRUE(glass.properties.contains("scene.volumes." + volume + ".ior = 1.46825"));
    EXPECT_EQ(valueOf(glass, "cauchyb"), QByteArray("0.00354"));
    EXPECT_TRUE(valueOf(glass, "volume.exterior").isEmpty());
}

TEST(LuxCoreScene, meshSettingsAreRead)
{
    const LuxCoreMaterial material = translated(
        "Texture \"d\" \"float\" \"fbm\"\nMakeNamedMaterial \"m\" \"string type\" "
        "[\"matte\"]\nNamedMaterial \"m\"\n"
        "\"string displacementmap\" [\"d\"] \"float dmscale\" [0.5] \"float dmoffset\" "
        "[0.25] \"integer nsubdivlevels\" [3]\n");
    EXPECT_EQ(material.mesh.subdivisions, 3);
    EXPECT_EQ(material.mesh.displacementScale, 0.5);
    EXPECT_EQ(material.mesh.displacementOffset, 0.25);
    EXPECT_FALSE(material.mesh.displacement.isEmpty());
    EXPECT_EQ(material.notes.size(), 1);
}

TEST(LuxCoreScene, whatIsReferredToStandsBefore)
{
    // LuxCore knows no reference to what comes later.
    for (const QFileInfo& file : QDir(projectPath(QStringLiteral("tests/data/reference-pictures")))
                                     .entryInfoList({ QStringLiteral("*.txt") }, QDir::Files)) {
        SCOPED_TRACE(file.fileName().toStdString());
        QFile text(file.filePath());
        ASSERT_TRUE(text.open(QIODevice::ReadOnly));
        const LuxCoreMaterial material
            = translated(text.readAll(), projectPath(QStringLiteral("examples")));
        EXPECT_FALSE(material.name.isEmpty());
        QSet<QByteArray> known;
        for (const QByteArray& line : material.properties.split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            const QList<QByteArray> path = words.first().split('.');
            // The names that this test gives: n and digits.
            for (const QByteArray& word : words.mid(2)) {
                const bool isName = word.size() > 1 && word[0] == 'n' && isdigit(word[1]);
                EXPECT_TRUE(!isName || known.contains(word)) << line.constData();
            }
            if (path.size() > 2)
                known.insert(path.at(2));
        }
    }
}
