// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickTable.h"
#include "CliSupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

QStringList exampleNames()
{
    QStringList names;
    for (const QString& file :
        QDir(projectPath(QStringLiteral("examples")))
            .entryList({ QStringLiteral("*.sskn") }, QDir::Files, QDir::Name))
        names.append(file.chopped(5));
    return names;
}

class ExampleTest : public testing::TestWithParam<std::string>
{
protected:
    QString file(const char* ending) const
    {
        return QStringLiteral("examples/") + QString::fromStdString(GetParam())
            + QLatin1String(ending);
    }
};

std::vector<std::string> exampleParameters()
{
    std::vector<std::string> names;
    for (const QString& name : exampleNames())
        names.push_back(name.toStdString());
    return names;
}

std::string testName(const testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

} // namespace

TEST_P(ExampleTest, exportGivesTheCommittedText)
{
    const Outcome outcome = runVireo({ QStringLiteral("export"), file(".sskn") });
    EXPECT_EQ(outcome.exitCode, 0) << outcome.error.toStdString();
    EXPECT_TEXT(QString::fromUtf8(projectFile(file(".txt"))), outcome.output);
}

TEST_P(ExampleTest, exportGivesTheCommittedPlaceholders)
{
    const Outcome outcome
        = runVireo({ QStringLiteral("export"), QStringLiteral("--placeholders"), file(".sskn") });
    EXPECT_EQ(outcome.exitCode, 0) << outcome.error.toStdString();
    EXPECT_TEXT(QString::fromUtf8(projectFile(file(".placeholders.txt"))), outcome.output);
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleTest, testing::ValuesIn(exampleParameters()), testName);

TEST(ExportCommand, thereAreExamplesOfManyKinds)
{
    EXPECT_GE(exampleNames().size(), 12);
}

TEST(ExportCommand, aSectionIsPrintedRaw)
{
    const QString example = QStringLiteral("examples/plain-matte.sskn");
    const Outcome material = runVireo({ QStringLiteral("export"), example,
        QStringLiteral("--section"), QStringLiteral("material") });
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"float   bumpmap\" [0]\n"
                               "\t\"color   Kd\" [0.690196 0.25098 0.188235]\n"
                               "\t\"float   sigma\" [20]\n"
                               "\t\"string  type\" [\"matte\"]\n"
                               "\nNamedMaterial \"Lm_material1\"\n"),
        material.output);
    const Outcome mesh = runVireo(
        { QStringLiteral("export"), example, QStringLiteral("--section"), QStringLiteral("mesh") });
    EXPECT_TEXT(freshMeshText(), mesh.output);
}

TEST(ExportCommand, placeholdersAreListedWithBrickPropertyAndValue)
{
    const Outcome outcome = runVireo({ QStringLiteral("export"), QStringLiteral("--placeholders"),
        QStringLiteral("--list"), QStringLiteral("examples/plain-matte.sskn") });
    EXPECT_EQ(outcome.exitCode, 0);
    const QStringList lines = outcome.output.split(QLatin1Char('\n'));
    bool found = false;
    for (const QString& line : lines)
        found = found
            || line.simplified() == QLatin1String("# LuxRender_Lm_002_Kd Matte (2) Kd 176 64 48");
    EXPECT_TRUE(found) << outcome.output.toStdString();
}

TEST(ExportCommand, listWithoutPlaceholdersIsWrongUse)
{
    expectFailure(runVireo({ QStringLiteral("export"), QStringLiteral("--list"),
                      QStringLiteral("examples/plain-matte.sskn") }),
        2, { QStringLiteral("--placeholders") });
}

TEST(ExportCommand, mapsThatTheTextDoesNotCarryAreNamed)
{
    const QString example = QStringLiteral("examples/tinted-image-map.sskn");
    const Outcome without = runVireo({ QStringLiteral("export"), example });
    EXPECT_EQ(without.exitCode, 0);
    EXPECT_TRUE(without.error.contains(QLatin1String("Brick Wall (3)/filename")));
    EXPECT_TRUE(without.error.contains(QLatin1String("textures/bricks.png")));
    EXPECT_FALSE(without.output.contains(QLatin1String("bricks.png")));

    const Outcome with
        = runVireo({ QStringLiteral("export"), QStringLiteral("--map-files"), example });
    EXPECT_EQ(with.exitCode, 0);
    EXPECT_TEXT(QString(), with.error);
    EXPECT_TRUE(
        with.output.contains(QStringLiteral("\t\"string  filename\" [\"%1\"]\n")
                                 .arg(projectPath(QStringLiteral("examples/textures/bricks.png")))))
        << with.output.toStdString();
}

TEST(ExportCommand, imageFilesAreNamedFromTheWrittenFileOnRequest)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("work/maps")));
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("scenes/one")));
    QByteArray network = projectFile(QStringLiteral("examples/tinted-image-map.sskn"));
    network.replace("textures/bricks.png", "maps/bricks.png");
    const QString path = writeFile(folder, QStringLiteral("work/wall.sskn"), network);
    writeFile(folder, QStringLiteral("work/maps/bricks.png"), QByteArrayLiteral("image"));
    const QString target = folder.filePath(QStringLiteral("scenes/one/wall.lxm"));
    expectDone(runVireo({ QStringLiteral("export"), path, QStringLiteral("--map-files"),
        QStringLiteral("--relative"), QStringLiteral("-o"), target }));
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.contains("\t\"string  filename\" [\"../../work/maps/bricks.png\"]\n"))
        << text.toStdString();
    expectFailure(runVireo({ QStringLiteral("export"), path, QStringLiteral("--relative") }), 2,
        { QStringLiteral("--map-files") });
}

TEST(ExportCommand, missingImageFilesAreNamed)
{
    const QTemporaryDir folder;
    QByteArray network = projectFile(QStringLiteral("examples/tinted-image-map.sskn"));
    network.replace("textures/bricks.png", "maps/gone.png");
    const QString path = writeFile(folder, QStringLiteral("wall.sskn"), network);
    const Outcome outcome
        = runVireo({ QStringLiteral("export"), path, QStringLiteral("--map-files") });
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.error.contains(QLatin1String("Brick Wall (3)/filename")))
        << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.contains(folder.filePath(QStringLiteral("maps/gone.png"))));
}

TEST(ExportCommand, writesIntoAFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromUtf8("ausgabe ü.txt"));
    const Outcome outcome = runVireo({ QStringLiteral("export"),
        QStringLiteral("examples/velvet.sskn"), QStringLiteral("-o"), path });
    EXPECT_EQ(outcome.exitCode, 0) << outcome.error.toStdString();
    EXPECT_TEXT(QString(), outcome.output);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), projectFile(QStringLiteral("examples/velvet.txt")));
}

TEST(ExportCommand, fileNamesAreUtf8AlsoWithoutALocale)
{
    const QTemporaryDir folder;
    const QString path = writeFile(folder, QString::fromUtf8("Glühwürmchen 螢.sskn"),
        projectFile(QStringLiteral("examples/velvet.sskn")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LANG"));
    environment.remove(QStringLiteral("LC_CTYPE"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VIREO_PROGRAM), { QStringLiteral("export"), path });
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_EQ(process.readAllStandardOutput(), projectFile(QStringLiteral("examples/velvet.txt")));
}

TEST(ExportCommand, namesFilePlaceAndCauseOfABrokenFile)
{
    const QTemporaryDir folder;
    const QByteArray whole = projectFile(QStringLiteral("examples/velvet.sskn"));
    const QString path = writeFile(folder, QStringLiteral("broken.sskn"), whole.left(500));
    expectFailure(runVireo({ QStringLiteral("export"), path }), 1,
        { QStringLiteral("broken.sskn"), QStringLiteral("line "), QStringLiteral("column ") });
    const QString text = writeFile(
        folder, QStringLiteral("letter.sskn"), QByteArrayLiteral("Dear all,\nhello.\n"));
    expectFailure(runVireo({ QStringLiteral("export"), text }), 1,
        { QStringLiteral("letter.sskn"), QStringLiteral("line 1") });
}

TEST(ExportCommand, aMissingFileOrAFolderFails)
{
    expectFailure(runVireo({ QStringLiteral("export"), QStringLiteral("no/such.sskn") }), 1,
        { QStringLiteral("no/such.sskn") });
    expectFailure(runVireo({ QStringLiteral("export"), QStringLiteral("examples") }), 1,
        { QStringLiteral("folder") });
}

TEST(ExportCommand, aNetworkWithoutRootFails)
{
    const QTemporaryDir folder;
    const QString path = writeFile(folder, QStringLiteral("rootless.sskn"),
        QByteArrayLiteral("{\"format\": \"sskn\", \"version\": 1, "
                          "\"BrickSetup\": {\"type\": \"settings\", \"value\": {}}}"));
    expectFailure(runVireo({ QStringLiteral("export"), path }), 1,
        { QStringLiteral("rootless.sskn"), QStringLiteral("root") });
}

TEST(ExportCommand, aFullDeviceFailsAndIsNotReplaced)
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        GTEST_SKIP() << "this system has no /dev/full";
    expectFailure(runVireo({ QStringLiteral("export"), QStringLiteral("examples/velvet.sskn"),
                      QStringLiteral("-o"), QStringLiteral("/dev/full") }),
        1, { QStringLiteral("/dev/full") });
    EXPECT_FALSE(QFileInfo(QStringLiteral("/dev/full")).isFile());
}

TEST(ExportCommand, unknownClassesAreReportedAndTheRestIsWritten)
{
    const QTemporaryDir folder;
    QByteArray network = projectFile(QStringLiteral("examples/metal-fresnel-color.sskn"));
    network.replace("VireoTexFnlFresnelColorBrick", "VireoTexFnlFutureBrick");
    const Outcome outcome = runVireo(
        { QStringLiteral("export"), writeFile(folder, QStringLiteral("future.sskn"), network) });
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.error.contains(QLatin1String("VireoTexFnlFutureBrick")));
    EXPECT_TRUE(outcome.error.contains(QLatin1String("Brick_3")));
    EXPECT_TRUE(outcome.output.contains(QLatin1String("[\"metal2\"]")));
    EXPECT_FALSE(outcome.output.contains(QLatin1String("fresnel")));
}

TEST(BricksCommand, listsEveryClassOnce)
{
    const Outcome outcome = runVireo({ QStringLiteral("bricks"), QStringLiteral("--json") });
    EXPECT_EQ(outcome.exitCode, 0);
    const QJsonArray bricks = QJsonDocument::fromJson(outcome.output.toUtf8()).array();
    EXPECT_EQ(bricks.size(), brickTable().size());
    const QJsonObject matte
        = bricks.at(brickClassNames().indexOf(QStringLiteral("VireoMatMatteBrick"))).toObject();
    EXPECT_EQ(
        matte.value(QStringLiteral("class")).toString(), QStringLiteral("VireoMatMatteBrick"));
    EXPECT_EQ(matte.value(QStringLiteral("kind")).toString(), QStringLiteral("material"));
    EXPECT_EQ(matte.value(QStringLiteral("type")).toString(), QStringLiteral("matte"));
    EXPECT_EQ(matte.value(QStringLiteral("label")).toString(), QStringLiteral("Matte"));
    EXPECT_EQ(
        matte.value(QStringLiteral("category")).toString(), QStringLiteral("Vireo//Material"));
    // And the headline.
    EXPECT_EQ(runVireo({ QStringLiteral("bricks") }).output.count(QLatin1Char('\n')),
        brickTable().size() + 1);
}

TEST(BricksCommand, theReferencePageIsUpToDate)
{
    const Outcome outcome = runVireo({ QStringLiteral("bricks"), QStringLiteral("--markdown") });
    EXPECT_TEXT(QString::fromUtf8(projectFile(QStringLiteral("docs/bricks.md"))), outcome.output)
        << "make golden writes docs/bricks.md anew";
}

TEST(ShowCommand, valuesMapsAndLocksAreAppliedInTurn)
{
    const Outcome literal
        = runVireo({ QStringLiteral("show"), QStringLiteral("VireoTexClrImageMapBrick"),
            QStringLiteral("--set"), QStringLiteral("filename=255 0 128"), QStringLiteral("--map"),
            QStringLiteral("filename=a.png") });
    EXPECT_EQ(literal.exitCode, 0) << literal.error.toStdString();
    EXPECT_TRUE(
        literal.output.endsWith(QLatin1String("\nTexture \"Lm_texture2\" \"color\" \"scale\"\n"
                                              "\t\"texture tex1\" [\"Lm_texture1\"]\n"
                                              "\t\"color   tex2\" [1 0 0.501961]\n")))
        << literal.output.toStdString();
    const Outcome locked = runVireo({ QStringLiteral("show"),
        QStringLiteral("VireoMatScatterBrick"), QStringLiteral("--placeholders"),
        QStringLiteral("--lock"), QStringLiteral("Kd"), QStringLiteral("--set"),
        QStringLiteral("Kd=0 0 0"), QStringLiteral("--set"), QStringLiteral("g=0.25") });
    EXPECT_TEXT(QStringLiteral("\nMakeNamedMaterial \"Lm_material1\"\n"
                               "\t\"string  bumpmap\" [%(LuxRender_Lm_001_bumpmap)]\n"
                               "\t\"color   Kd\" [0 0 0]\n"
                               "\t\"string  g\" [%(LuxRender_Lm_002_g)]\n"
                               "\t\"string  type\" [\"scatter\"]\n"),
        locked.output);
}

TEST(ShowCommand, checkerboardHasBothBlocks)
{
    const Outcome outcome
        = runVireo({ QStringLiteral("show"), QStringLiteral("VireoTexFltCheckerboardBrick") });
    EXPECT_TEXT(QStringLiteral("\nTexture \"Lm_texture1\" \"float\" \"checkerboard\"\n"
                               "\t\"integer dimension\" [2]\n"
                               "\t\"float   tex1\" [1]\n"
                               "\t\"float   tex2\" [0]\n"
                               "\t\"string  aamode\" [\"none\"]\n"
                               "\t\"string  mapping\" [\"uv\"]\n"
                               "\t\"float   uscale\" [1]\n"
                               "\t\"float   vscale\" [1]\n"
                               "\t\"vector  v1\" [1 0 0]\n"
                               "\t\"vector  v2\" [0 1 0]\n"
                               "\t\"string  coordinates\" [\"global\"]\n"
                               "\t\"vector  translate\" [1 0 0]\n"
                               "\t\"vector  rotate\" [1 0 0]\n"
                               "\t\"vector  scale\" [1 0 0]\n"),
        outcome.output);
}

TEST(ShowCommand, theRootShowsItsMeshText)
{
    const Outcome outcome = runVireo({ QStringLiteral("show"), QStringLiteral("VireoRootBrick"),
        QStringLiteral("--set"), QStringLiteral("nsubdivlevels=3") });
    EXPECT_TRUE(outcome.output.startsWith(QLatin1String("\t\"bool    generatetangents\"")));
    EXPECT_TRUE(outcome.output.contains(QLatin1String("\t\"integer nsubdivlevels\" [3]\n")));
}

TEST(ShowCommand, mapsThatTheTextDoesNotCarryAreNamedOrWritten)
{
    const QStringList show = { QStringLiteral("show"), QStringLiteral("VireoTexClrImageMapBrick"),
        QStringLiteral("--map"), QStringLiteral("filename=examples/textures/bricks.png"),
        QStringLiteral("--map"), QStringLiteral("uscale=gone.png") };
    const Outcome without = runVireo(show);
    EXPECT_EQ(without.exitCode, 0);
    EXPECT_TRUE(without.error.contains(
        QLatin1String("Image Map/filename: its value is written and does not carry its map "
                      "examples/textures/bricks.png; --map-files writes it")))
        << without.error.toStdString();
    const Outcome with = runVireo(show + QStringList(QStringLiteral("--map-files")));
    EXPECT_TRUE(with.output.contains(projectPath(QStringLiteral("examples/textures/bricks.png"))))
        << with.output.toStdString();
    EXPECT_FALSE(with.error.contains(QLatin1String("filename")));
    EXPECT_TRUE(with.error.contains(QLatin1String("Image Map/uscale")));
    const Outcome missing = runVireo({ QStringLiteral("show"),
        QStringLiteral("VireoTexClrImageMapBrick"), QStringLiteral("--map"),
        QStringLiteral("filename=maps/gone.png"), QStringLiteral("--map-files") });
    EXPECT_EQ(missing.exitCode, 0);
    EXPECT_TRUE(missing.error.contains(projectPath(QStringLiteral("maps/gone.png"))))
        << missing.error.toStdString();
}

TEST(ShowCommand, anInputWithoutAValueCannotBeLocked)
{
    expectFailure(runVireo({ QStringLiteral("show"), QStringLiteral("VireoMatMixBrick"),
                      QStringLiteral("--lock"), QStringLiteral("namedmaterial1") }),
        2, { QStringLiteral("lock"), QStringLiteral("namedmaterial1") });
}

TEST(ShowCommand, aNumberThatIsTooLargeIsAnsweredWithTheRange)
{
    for (const char* number : { "1e39", "-1e39", "1e999" })
        expectFailure(
            runVireo({ QStringLiteral("show"), QStringLiteral("VireoMatMatteBrick"),
                QStringLiteral("--set"), QStringLiteral("sigma=") + QLatin1String(number) }),
            2, { QLatin1String(number), QStringLiteral("-3.40282e+38 to 3.40282e+38") });
    expectFailure(runVireo({ QStringLiteral("show"), QStringLiteral("VireoTexFltFbmBrick"),
                      QStringLiteral("--set"), QStringLiteral("octaves=3000000000") }),
        2, { QStringLiteral("3000000000"), QStringLiteral("-2147483648 to 2147483647") });
    // Limits of a slider do not bind.
    expectDone(runVireo({ QStringLiteral("show"), QStringLiteral("VireoTexFltImageMapBrick"),
        QStringLiteral("--set"), QStringLiteral("gamma=20") }));
}

TEST(ShowCommand, aBrickWithoutInputsSaysSo)
{
    const Outcome outcome = runVireo({ QStringLiteral("show"),
        QStringLiteral("VireoTexClrHarlequinBrick"), QStringLiteral("--inputs") });
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TEXT(QStringLiteral("VireoTexClrHarlequinBrick has no inputs\n"), outcome.output);
}

TEST(ShowCommand, onlyLimitsThatHoldAreShownAsLimits)
{
    const auto lineOf = [](const char* className, const char* input) {
        const Outcome outcome = runVireo(
            { QStringLiteral("show"), QLatin1String(className), QStringLiteral("--inputs") });
        for (const QString& line : outcome.output.split(QLatin1Char('\n')))
            if (line.startsWith(QLatin1String(input) + QLatin1Char(' ')))
                return line.simplified().toStdString();
        return std::string();
    };
    EXPECT_EQ(lineOf("VireoTexFltBAndBrick", "count"), "count count int 0 0 - 0 to 10");
    EXPECT_EQ(lineOf("VireoTexFltImageMapBrick", "gamma"),
        "gamma gamma float 1 1 LFloat 0 to 10 (slider only)");
    EXPECT_EQ(lineOf("VireoTexFltFbmBrick", "octaves"),
        "octaves octaves int 8 8 - -1000 to 1000 (slider only)");
    EXPECT_EQ(lineOf("VireoTexFltFbmBrick", "translate"),
        "translate translate vector 1 0 0 1 0 0 vector");
}

TEST(ShowCommand, inputsAreListedWithKindValueDefaultAndLimits)
{
    const Outcome outcome = runVireo({ QStringLiteral("show"),
        QStringLiteral("VireoMatVelvetBrick"), QStringLiteral("--inputs") });
    QStringList lines;
    for (const QString& line : outcome.output.split(QLatin1Char('\n')))
        lines.append(line.simplified());
    EXPECT_TRUE(lines.contains(QStringLiteral("p2 p2 float 20 0 LFloat")))
        << outcome.output.toStdString();
    EXPECT_TRUE(lines.contains(QStringLiteral("Kd Kd color 77 77 77 77 77 77 LColor")));
    EXPECT_TRUE(
        lines.contains(QStringLiteral("thickness: How thick the pile is: thicker gives more "
                                      "sheen. Begin with 0.1.")));
}

TEST(ShowCommand, wrongUseNamesWhatIsWrong)
{
    const QString show = QStringLiteral("show");
    const QString matte = QStringLiteral("VireoMatMatteBrick");
    expectFailure(runVireo({ show, QStringLiteral("VireoMatMadeUpBrick") }), 2,
        { QStringLiteral("VireoMatMadeUpBrick"), QStringLiteral("vireo bricks") });
    expectFailure(runVireo({ show, QStringLiteral("VireoBrickUser") }), 2,
        { QStringLiteral("VireoBrickUser") });
    expectFailure(runVireo({ show, matte, QStringLiteral("--set"), QStringLiteral("Kd") }), 2,
        { QStringLiteral("NAME=VALUE") });
    expectFailure(runVireo({ show, matte, QStringLiteral("--set"), QStringLiteral("Kx=1") }), 2,
        { QStringLiteral("Kx"), QStringLiteral("--inputs") });
    expectFailure(runVireo({ show, matte, QStringLiteral("--set"), QStringLiteral("sigma=much") }),
        2, { QStringLiteral("sigma"), QStringLiteral("much") });
    expectFailure(runVireo({ show, matte, QStringLiteral("--set"), QStringLiteral("Kd=1 2") }), 2,
        { QStringLiteral("Kd") });
    expectFailure(runVireo({ show, QStringLiteral("VireoMatGlass2Brick"), QStringLiteral("--map"),
                      QStringLiteral("dispersion=a.png") }),
        2, { QStringLiteral("dispersion"), QStringLiteral("map") });
    expectFailure(runVireo({ show, QStringLiteral("VireoMatMixBrick"), QStringLiteral("--set"),
                      QStringLiteral("namedmaterial1=1") }),
        2, { QStringLiteral("namedmaterial1") });
    expectFailure(runVireo({ show, QStringLiteral("VireoRootBrick"), QStringLiteral("--set"),
                      QStringLiteral("displacementmap=1") }),
        2, { QStringLiteral("displacementmap"), QStringLiteral("locked") });
}

TEST(Program, wrongUseIsExitCodeTwo)
{
    expectFailure(runVireo({}), 2, { QStringLiteral("--help") });
    expectFailure(runVireo({ QStringLiteral("exprot") }), 2, { QStringLiteral("--help") });
    expectFailure(runVireo({ QStringLiteral("export") }), 2, { QStringLiteral("FILE") });
    expectFailure(runVireo({ QStringLiteral("bricks"), QStringLiteral("--yaml") }), 2, {});
    expectFailure(runVireo({ QStringLiteral("export"), QStringLiteral("examples/velvet.sskn"),
                      QStringLiteral("--section"), QStringLiteral("roof") }),
        2, { QStringLiteral("--section") });
}

TEST(Program, helpAndVersionGoToStandardOutput)
{
    for (const QStringList& arguments : { QStringList { QStringLiteral("--help") },
             { QStringLiteral("export"), QStringLiteral("--help") },
             { QStringLiteral("bricks"), QStringLiteral("--help") },
             { QStringLiteral("show"), QStringLiteral("--help") } }) {
        const Outcome outcome = runVireo(arguments);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_TRUE(outcome.output.contains(QLatin1String("Usage:")))
            << outcome.output.toStdString();
        EXPECT_TEXT(QString(), outcome.error);
    }
    EXPECT_TEXT(
        QStringLiteral("vireo 0.0.0.5\n"), runVireo({ QStringLiteral("--version") }).output);
}

TEST(Program, withoutItsModuleItSaysWhatToDo)
{
    // A copy of the program alone: it finds its libraries, but has no module beside it.
    const QTemporaryDir folder;
    const QString program = folder.filePath(QStringLiteral("vireo"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(VIREO_PROGRAM), program));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_LIBRARY_PATH"),
        QFileInfo(QStringLiteral(VIREO_MODULE)).absolutePath() + QStringLiteral("/.."));
    environment.remove(QStringLiteral("VIREO_PLUGIN_PATH"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(
        program, { QStringLiteral("export"), projectPath(QStringLiteral("examples/velvet.sskn")) });
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(process.readAllStandardError().contains("VIREO_PLUGIN_PATH"));

    environment.insert(QStringLiteral("VIREO_PLUGIN_PATH"),
        QFileInfo(QStringLiteral(VIREO_MODULE)).absolutePath());
    process.setProcessEnvironment(environment);
    process.start(
        program, { QStringLiteral("export"), projectPath(QStringLiteral("examples/velvet.sskn")) });
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
}
