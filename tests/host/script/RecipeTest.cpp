// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

/// Runs recipes as a user does, each in a fresh folder.
class Recipe : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// What the program prints; a failure of the test when it fails.
    QString run(const QStringList& arguments, int exitCode = 0)
    {
        QProcess process;
        process.setWorkingDirectory(QStringLiteral(VIREO_SOURCE_DIR));
        process.start(QStringLiteral(VIREO_PROGRAM), arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        m_error = QString::fromUtf8(process.readAllStandardError());
        EXPECT_EQ(process.exitCode(), exitCode) << m_error.toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    QString runRecipe(const QString& name, const QStringList& arguments, int exitCode = 0)
    {
        return run(QStringList { QStringLiteral("run"),
                       QStringLiteral("examples/scripts/%1.dsa").arg(name) }
                + arguments,
            exitCode);
    }

    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    QTemporaryDir m_folder;
    QString m_error;
};

QStringList exampleNetworks()
{
    return QDir(projectPath(QStringLiteral("examples")))
        .entryList({ QStringLiteral("*.sskn") }, QDir::Files, QDir::Name);
}

QStringList recipeFiles()
{
    QStringList files;
    for (const QString& folder : { QStringLiteral(""), QStringLiteral("lib/") })
        for (const QString& name : QDir(projectPath(QStringLiteral("examples/scripts/") + folder))
                                       .entryList({ QStringLiteral("*.dsa") }, QDir::Files))
            files.append(folder + name);
    return files;
}

} // namespace

TEST_F(Recipe, buildNetworkPrintsTheTextOfTheExample)
{
    const QString expected
        = QString::fromUtf8(projectFile(QStringLiteral("examples/glossy-checkerboard.txt")));
    EXPECT_TEXT(expected,
        runRecipe(QStringLiteral("build-network"), { path(QStringLiteral("built.sskn")) }));
    EXPECT_TEXT(expected, run({ QStringLiteral("export"), path(QStringLiteral("built.sskn")) }));
}

TEST_F(Recipe, batchExportWritesTheTextOfEveryExample)
{
    const QString output = runRecipe(QStringLiteral("batch-export"),
        { QStringLiteral("examples"), path(QStringLiteral("new/texts")) });
    const QStringList networks = exampleNetworks();
    EXPECT_GE(networks.size(), 12);
    EXPECT_EQ(output.count(QLatin1Char('\n')), networks.size());
    EXPECT_TRUE(output.contains(QLatin1String("\nvelvet.sskn 2 bricks\n"))) << output.toStdString();
    for (const QString& network : networks) {
        const QString text = network.chopped(5) + QStringLiteral(".txt");
        EXPECT_TEXT(QString::fromUtf8(projectFile(QStringLiteral("examples/") + text)),
            QString::fromUtf8(content(QStringLiteral("new/texts/") + text)));
    }
    EXPECT_TEXT(QString(),
        runRecipe(QStringLiteral("batch-export"), { path(QStringLiteral("none")), QString() }, 1));
    EXPECT_TRUE(m_error.contains(QLatin1String("there is no folder"))) << m_error.toStdString();
}

TEST_F(Recipe, swapTextureChangesThatFileAlone)
{
    for (const QString& network : exampleNetworks())
        ASSERT_TRUE(QFile::copy(projectPath(QStringLiteral("examples/") + network), path(network)));
    const QString output = runRecipe(QStringLiteral("swap-texture"),
        { m_folder.path(), QStringLiteral("textures/bricks.png"),
            QStringLiteral("textures/\u00fc.png") });
    EXPECT_TEXT(QStringLiteral("tinted-image-map.sskn: 1\n"), output);
    for (const QString& network : exampleNetworks()) {
        QByteArray expected = projectFile(QStringLiteral("examples/") + network);
        expected.replace("textures/bricks.png", "textures/\xc3\xbc.png");
        EXPECT_TEXT(QString::fromUtf8(expected), QString::fromUtf8(content(network)));
    }
}

TEST_F(Recipe, listPlaceholdersNamesThemAll)
{
    EXPECT_TEXT(QStringLiteral("LuxRender_Lm_001_bumpmap Matte (2) bumpmap = 0\n"
                               "LuxRender_Lm_002_Kd Matte (2) Kd = 176 64 48\n"
                               "LuxRender_Lm_003_sigma Matte (2) sigma = 20\n"
                               "LuxRender_Lm_004_generatetangents Vireo Surface (1) "
                               "generatetangents = false\n"
                               "LuxRender_Lm_005_dmscale Vireo Surface (1) dmscale = 0.1\n"
                               "LuxRender_Lm_006_dmoffset Vireo Surface (1) dmoffset = 0\n"
                               "LuxRender_Lm_007_dmnormalsmooth Vireo Surface (1) dmnormalsmooth "
                               "= true\n"
                               "LuxRender_Lm_008_dmnormalsplit Vireo Surface (1) dmnormalsplit = "
                               "false\n"
                               "LuxRender_Lm_009_dmsharpboundary Vireo Surface (1) "
                               "dmsharpboundary = false\n"
                               "LuxRender_Lm_010_nsubdivlevels Vireo Surface (1) nsubdivlevels = "
                               "0\n"
                               "LuxRender_Lm_011_subdivscheme Vireo Surface (1) subdivscheme = "
                               "loop\n"),
        runRecipe(
            QStringLiteral("list-placeholders"), { QStringLiteral("examples/plain-matte.sskn") }));
}

TEST_F(Recipe, randomNetworkIsTheSameForTheSameSeed)
{
    const QStringList arguments { QStringLiteral("7"), QStringLiteral("40"),
        path(QStringLiteral("random.sskn")) };
    const QString text = runRecipe(QStringLiteral("random-network"), arguments);
    EXPECT_EQ(text.count(QLatin1String("\nTexture \"")), 40);
    EXPECT_EQ(text.count(QLatin1String("\t\"texture ")), 40);
    EXPECT_TEXT(text, runRecipe(QStringLiteral("random-network"), arguments.mid(0, 2)));
    EXPECT_TEXT(text, run({ QStringLiteral("export"), path(QStringLiteral("random.sskn")) }));
    EXPECT_NE(text,
        runRecipe(QStringLiteral("random-network"), { QStringLiteral("8"), QStringLiteral("40") }));
}

TEST_F(Recipe, applyBySurfaceStoresTheNetworkOnThatSurface)
{
    QFile file(path(QStringLiteral("box.obj")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("o Box\nv 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\n"
               "usemtl Red\nf 1 2 3\nusemtl Blue\nf 1 2 4\n");
    file.close();
    const QString network = QStringLiteral("examples/plain-matte.sskn");
    const QStringList arguments { path(QStringLiteral("box.obj")),
        path(QStringLiteral("applied.duf")), network };
    EXPECT_TEXT(QStringLiteral("box: Blue\n"),
        runRecipe(
            QStringLiteral("apply-by-surface"), arguments + QStringList(QStringLiteral("Blue"))));
    // What a renderer's exporter reads from the one surface is the text with placeholders.
    const QString code
        = QStringLiteral("Scene.loadScene(args[0]);"
                         "var shape = Scene.getNodeList()[0].getObject().getCurrentShape();"
                         "shape.getAllMaterials().forEach(function (material) {"
                         "    var text = material.findProperty("
                         "        'LuxRender_material_extrasettings');"
                         "    print(material.name, text ? text.getValue() : 'none'); });");
    QFile script(path(QStringLiteral("look.dsa")));
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write(code.toUtf8());
    script.close();
    EXPECT_TEXT(QStringLiteral("Red none\nBlue %1\n")
                    .arg(run({ QStringLiteral("export"), QStringLiteral("--placeholders"),
                        QStringLiteral("--section"), QStringLiteral("material"), network })),
        run({ QStringLiteral("run"), path(QStringLiteral("look.dsa")),
            path(QStringLiteral("applied.duf")) }));
    runRecipe(
        QStringLiteral("apply-by-surface"), arguments + QStringList(QStringLiteral("Green")), 1);
    EXPECT_TRUE(m_error.contains(QLatin1String("Error: the scene has no surface Green")))
        << m_error.toStdString();
}

TEST_F(Recipe, wrongArgumentsAreToldInOneLine)
{
    for (const char* name : { "batch-export", "swap-texture", "list-placeholders", "random-network",
             "apply-by-surface" }) {
        EXPECT_TEXT(QString(), runRecipe(QString::fromLatin1(name), {}, 1));
        EXPECT_TRUE(m_error.contains(QLatin1String(".dsa:"))
            && m_error.contains(QLatin1String(": Error: name a ")))
            << m_error.toStdString();
    }
}

TEST(RecipeText, thePageShowsTheFilesAsTheyAre)
{
    const QString page = QString::fromUtf8(projectFile(QStringLiteral("docs/scripting.md")));
    const QStringList files = recipeFiles();
    EXPECT_GE(files.size(), 7);
    for (const QString& file : files) {
        const QString code
            = QString::fromUtf8(projectFile(QStringLiteral("examples/scripts/") + file));
        // The licence lines stand in the file alone.
        const QString shown = code.section(QLatin1Char('\n'), 3);
        EXPECT_TRUE(page.contains(QStringLiteral("```js\n%1```\n").arg(shown)))
            << file.toStdString() << " is not shown as it is";
    }
}
