// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CliSupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

const char* const network = "examples/glossy-checkerboard.sskn";
const char* const scene = "examples/scenes/table-and-lamp.obj";

QStringList words(std::initializer_list<const char*> list)
{
    QStringList result;
    for (const char* word : list)
        result.append(QString::fromUtf8(word));
    return result;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// A scene in the host's format with the example's surfaces and nothing of ours.
QString plainScene(const QTemporaryDir& folder)
{
    const QString path = folder.filePath(QStringLiteral("plain.duf"));
    // Nothing of ours was there to take off: what is written is the scene itself.
    expectDone(runVireo(words({ "strip", scene, "--all", "-o" }) << path));
    return path;
}

QString applied(const QTemporaryDir& folder, const QString& sceneFile, const QStringList& choice)
{
    const QString path = folder.filePath(QStringLiteral("applied.duf"));
    expectDone(runVireo(
        words({ "apply", network }) << sceneFile << choice << QStringLiteral("-o") << path));
    return path;
}

QJsonArray jsonOf(const QStringList& arguments)
{
    const Outcome outcome = runVireo(arguments);
    expectDone(outcome);
    const QJsonDocument document = QJsonDocument::fromJson(outcome.output.toUtf8());
    EXPECT_TRUE(document.isArray()) << outcome.output.toStdString();
    return document.array();
}

} // namespace

TEST(SurfacesCommand, listsNodesSurfacesAndTheirState)
{
    const QTemporaryDir folder;
    const QString path
        = applied(folder, QString::fromLatin1(scene), words({ "--surface", "Wood" }));
    const Outcome outcome = runVireo(words({ "surfaces" }) << path);
    expectDone(outcome);
    EXPECT_TEXT(QStringLiteral("node            surface  material  LuxRender  network\n"
                               "table-and-lamp  Wood     Default   network    Glossy Checkerboard\n"
                               "table-and-lamp  Edge     Default   -\n"
                               "table-and-lamp  Shade    Default   -\n"),
        outcome.output);
}

TEST(SurfacesCommand, listsAsJson)
{
    const QTemporaryDir folder;
    const QString path
        = applied(folder, QString::fromLatin1(scene), words({ "--surface", "Wood" }));
    const QJsonArray list = jsonOf(words({ "surfaces", "--json" }) << path);
    ASSERT_EQ(list.size(), 3);
    const QJsonObject wood = list.at(0).toObject();
    EXPECT_EQ(wood.value(QStringLiteral("surface")).toString(), QStringLiteral("Wood"));
    EXPECT_EQ(wood.value(QStringLiteral("state")).toString(), QStringLiteral("network"));
    EXPECT_EQ(
        wood.value(QStringLiteral("network")).toString(), QStringLiteral("Glossy Checkerboard"));
    EXPECT_GT(wood.value(QStringLiteral("appliedProperties")).toInt(), 2);
    const QJsonObject edge = list.at(1).toObject();
    EXPECT_EQ(edge.value(QStringLiteral("state")).toString(), QStringLiteral("none"));
    EXPECT_EQ(edge.value(QStringLiteral("appliedProperties")).toInt(), 0);
}

TEST(SurfacesCommand, filesThatAreNoScenesAreTold)
{
    const QTemporaryDir folder;
    expectFailure(runVireo(words({ "surfaces", "no-such.duf" })), 1, words({ "no-such.duf" }));
    expectFailure(runVireo(words({ "surfaces" }) << writeFile(
                               folder, QStringLiteral("cut.duf"), "{ \"file_version\" : \"0.6")),
        1, words({ "cut.duf", "line 1" }));
    expectFailure(runVireo(words({ "surfaces" })), 2, words({ "SCENE" }));
}

TEST(ApplyCommand, aRebuiltNetworkGivesTheSameText)
{
    const QTemporaryDir folder;
    const QString path
        = applied(folder, QString::fromLatin1(scene), words({ "--surface", "Wood" }));
    const QString nets = folder.filePath(QStringLiteral("nets"));
    const Outcome rebuilt
        = runVireo(words({ "rebuild", "--stored" }) << path << QStringLiteral("-o") << nets);
    expectDone(rebuilt);
    EXPECT_EQ(QDir(nets).entryList(QDir::Files), words({ "Wood.sskn" }));
    const Outcome again = runVireo(words({ "export" }) << nets + QStringLiteral("/Wood.sskn"));
    expectDone(again);
    EXPECT_TEXT(runVireo(words({ "export", network })).output, again.output);
}

TEST(ApplyCommand, applyingTwiceGivesTheSameFileAndOneNetwork)
{
    const QTemporaryDir folder;
    const QString once = applied(folder, plainScene(folder), words({ "--all" }));
    const QString twice = folder.filePath(QStringLiteral("twice.duf"));
    expectDone(runVireo(words({ "apply", network }) << once << words({ "--all", "-o" }) << twice));
    EXPECT_TRUE(contentOf(once) == contentOf(twice));
    EXPECT_EQ(contentOf(twice).count("\"VireoElementDataItem\""), 3);
}

TEST(ApplyCommand, strippingGivesTheOriginalBack)
{
    const QTemporaryDir folder;
    const QString plain = plainScene(folder);
    const QString path = applied(folder, plain, words({ "--all" }));
    EXPECT_FALSE(contentOf(path) == contentOf(plain));
    const QString stripped = folder.filePath(QStringLiteral("stripped.duf"));
    expectDone(runVireo(words({ "strip", "--all", "-o" }) << stripped << path));
    EXPECT_TRUE(contentOf(stripped) == contentOf(plain));
}

TEST(ApplyCommand, theSceneItselfMayBeReplaced)
{
    const QTemporaryDir folder;
    const QString path = plainScene(folder);
    expectDone(runVireo(
        words({ "apply", network }) << path << words({ "--surface", "Wood", "-o" }) << path));
    EXPECT_EQ(contentOf(path).count("\"VireoElementDataItem\""), 1);
}

TEST(ApplyCommand, surfacesAreChosenByNameByNodeAndByPattern)
{
    const QTemporaryDir folder;
    const auto chosen = [&](const QStringList& choice) {
        QStringList names;
        for (const QJsonValue& surface :
            jsonOf(words({ "apply", network, scene, "--dry-run", "--json" }) << choice))
            names.append(surface.toObject().value(QStringLiteral("surface")).toString());
        return names;
    };
    EXPECT_EQ(chosen(words({ "--surface", "Shade" })), words({ "Shade" }));
    EXPECT_EQ(chosen(words({ "--surface", "table-and-lamp/Edge" })), words({ "Edge" }));
    EXPECT_EQ(chosen(words({ "--surface", "*d*" })), words({ "Wood", "Edge", "Shade" }));
    EXPECT_EQ(
        chosen(words({ "--surface", "?dge", "--surface", "Wood" })), words({ "Wood", "Edge" }));
    EXPECT_EQ(chosen(words({ "--all" })), words({ "Wood", "Edge", "Shade" }));
}

TEST(ApplyCommand, aDryRunListsAndWritesNothing)
{
    const QTemporaryDir folder;
    const QString path = plainScene(folder);
    const QByteArray before = contentOf(path);
    const Outcome fresh = runVireo(
        words({ "apply", network }) << path << words({ "--surface", "Wood", "--dry-run" }));
    expectDone(fresh);
    EXPECT_TRUE(fresh.output.startsWith(QStringLiteral("table-and-lamp/Wood\n  + ")))
        << fresh.output.toStdString();
    EXPECT_TRUE(fresh.output.contains(QStringLiteral("  + LuxRender_Lm_002_Kd: 32 72 140\n")));
    EXPECT_TRUE(fresh.output.endsWith(QStringLiteral("  + data VireoElementDataItem\n")));
    EXPECT_TRUE(contentOf(path) == before);

    const QString once = applied(folder, path, words({ "--surface", "Wood" }));
    const Outcome again = runVireo(
        words({ "apply", network }) << once << words({ "--surface", "Wood", "--dry-run" }));
    EXPECT_TEXT(QStringLiteral("table-and-lamp/Wood: no change\n"), again.output);
    const Outcome other = runVireo(words({ "apply", "examples/plain-matte.sskn" })
        << once << words({ "--surface", "Wood", "--dry-run" }));
    EXPECT_TRUE(other.output.contains(QStringLiteral("\n  - LuxRender_Lm_003_Ks: 60 60 60\n")))
        << other.output.toStdString();
    EXPECT_TRUE(other.output.contains(QStringLiteral("\n  ~ data VireoElementDataItem\n")));
}

TEST(ApplyCommand, wrongUseIsTold)
{
    const QTemporaryDir folder;
    const QString out = folder.filePath(QStringLiteral("out.duf"));
    const QStringList apply = words({ "apply", network, scene });
    expectFailure(runVireo(apply + words({ "-o" }) + QStringList(out)), 2, words({ "--surface" }));
    expectFailure(runVireo(apply + words({ "--all" })), 2, words({ "-o FILE" }));
    expectFailure(
        runVireo(apply + words({ "--all", "--surface", "Wood", "-o" }) + QStringList(out)), 2, {});
    expectFailure(
        runVireo(apply + words({ "--all", "--dry-run", "-o" }) + QStringList(out)), 2, {});
    expectFailure(runVireo(apply + words({ "--surface", "Marble", "-o" }) + QStringList(out)), 1,
        words({ "Marble", "Wood", "table-and-lamp.obj" }));
    expectFailure(runVireo(apply + words({ "--surface", "Wood", "--surface", "M*", "-o" })
                      + QStringList(out)),
        1, words({ "M*" }));
    expectFailure(
        runVireo(words({ "apply", "no-such.sskn", scene, "--all", "-o" }) + QStringList(out)), 1,
        words({ "no-such.sskn" }));
    expectFailure(runVireo(apply + words({ "--all", "-o", "/no-such-folder/out.duf" })), 1,
        words({ "/no-such-folder" }));
    EXPECT_FALSE(QFile::exists(out));
}

TEST(ApplyCommand, aNetworkWithoutRootIsStoredWithEmptyTexts)
{
    const QTemporaryDir folder;
    const QString net = writeFile(folder, QStringLiteral("rootless.sskn"),
        "{\"format\":\"sskn\",\"version\":1,\"BrickSetup\":{\"type\":\"settings\",\"value\":"
        "{\"Bricks\":{\"type\":\"settings\",\"value\":{\"Brick_1\":{\"type\":\"settings\","
        "\"value\":"
        "{\"DAZStudioClassName\":\"VireoMatNullBrick\"}}}}}}}\n");
    const QString out = folder.filePath(QStringLiteral("out.duf"));
    const Outcome outcome = runVireo(QStringList({ QStringLiteral("apply"), net })
        << words({ scene, "--surface", "Wood", "-o" }) << out);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.error.contains(QStringLiteral("no root brick")));
    EXPECT_EQ(contentOf(out).count("\"VireoElementDataItem\""), 1);
    EXPECT_EQ(contentOf(out).count("LuxRender_Lm_"), 0);
}

TEST(StripCommand, otherPropertiesOfTheRendererStay)
{
    const QTemporaryDir folder;
    const QString path = applied(folder, plainScene(folder), words({ "--all" }));
    QByteArray text = contentOf(path);
    // One published value becomes a property that somebody else put there.
    text.replace("LuxRender_Lm_001_bumpmap\",\n", "LuxRender_matte_sigma\",\n");
    const QString edited = writeFile(folder, QStringLiteral("edited.duf"), text);
    const QString stripped = folder.filePath(QStringLiteral("stripped.duf"));
    expectDone(runVireo(words({ "strip", "--all", "-o" }) << stripped << edited));
    EXPECT_EQ(contentOf(stripped).count("\"LuxRender_matte_sigma\""), 3);
    EXPECT_EQ(contentOf(stripped).count("LuxRender_Lm_"), 0);
    EXPECT_EQ(contentOf(stripped).count("LuxRender_material_"), 0);
    EXPECT_EQ(contentOf(stripped).count("VireoElementDataItem"), 0);
    for (const QJsonValue& surface : jsonOf(words({ "surfaces", "--json" }) << stripped))
        EXPECT_EQ(surface.toObject().value(QStringLiteral("state")).toString(),
            QStringLiteral("properties"));
}

TEST(RebuildCommand, everySurfaceGetsAFileThatLoads)
{
    const QTemporaryDir folder;
    const QString nets = folder.filePath(QStringLiteral("a/b"));
    const QJsonArray list = jsonOf(words({ "rebuild", scene, "--json", "-o" }) << nets);
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(QDir(nets).entryList(QDir::Files, QDir::Name),
        words({ "Edge.sskn", "Shade.sskn", "Wood.sskn" }));
    // A surface that says nothing of its own becomes a plain glossy one.
    const Outcome text = runVireo(words({ "export" }) << nets + QStringLiteral("/Edge.sskn"));
    expectDone(text);
    EXPECT_TRUE(text.output.contains(QStringLiteral("\t\"string  type\" [\"glossy\"]\n")));
    // It is laid out: the root asks for it no more, and the bricks have places.
    const QByteArray file = contentOf(nets + QStringLiteral("/Edge.sskn"));
    EXPECT_FALSE(file.contains("AutoArrange"));
    EXPECT_EQ(file.count("\"PosX\""), 2);
}

TEST(RebuildCommand, namesThatNoFileMayHaveAreReplacedAndRepeatedOnesNumbered)
{
    const QTemporaryDir folder;
    const QString obj = writeFile(folder, QStringLiteral("odd.obj"),
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl a/b\nf 1 2 3\nusemtl a:b\nf 1 2 3\n"
        "usemtl ..\nf 1 2 3\nusemtl \xc3\x84rmel\nf 1 2 3\nusemtl A_B\nf 1 2 3\n");
    const QString nets = folder.filePath(QStringLiteral("nets"));
    expectDone(runVireo(words({ "rebuild" }) << obj << QStringLiteral("-o") << nets));
    EXPECT_EQ(QDir(nets).entryList(QDir::Files, QDir::Name | QDir::LocaleAware).size(), 5);
    EXPECT_TRUE(QFile::exists(nets + QStringLiteral("/a_b.sskn")));
    EXPECT_TRUE(QFile::exists(nets + QStringLiteral("/a_b (2).sskn")));
    EXPECT_TRUE(QFile::exists(nets + QStringLiteral("/A_B (3).sskn")));
    EXPECT_TRUE(QFile::exists(nets + QStringLiteral("/__.sskn"))
        || QFile::exists(nets + QStringLiteral("/_.sskn")));
    EXPECT_TRUE(QFile::exists(nets + QString::fromUtf8("/\xc3\x84rmel.sskn")));
}

TEST(RebuildCommand, wrongUseIsTold)
{
    const QTemporaryDir folder;
    expectFailure(runVireo(words({ "rebuild", scene })), 2, words({ "--output" }));
    expectFailure(runVireo(words({ "rebuild", scene, "--stored", "-o" })
                      << folder.filePath(QStringLiteral("n"))),
        1, words({ "keeps a network" }));
    const QString file = writeFile(folder, QStringLiteral("file"), "x");
    expectFailure(runVireo(words({ "rebuild", scene, "-o" }) << file + QStringLiteral("/nets")), 1,
        words({ "cannot make the folder" }));
}
