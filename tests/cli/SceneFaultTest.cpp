// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// What is wrong with scenes, names and files, and how the program tells it.

#include "CliSupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

const char* const network = "examples/plain-matte.sskn";

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

QByteArray instance(const QByteArray& name, const QByteArray& more = QByteArray())
{
    return "{ \"url\" : \"#Def\", \"groups\" : [ \"" + name + "\" ]" + more + " }";
}

QByteArray sceneText(const QByteArray& definition, const QByteArray& materials)
{
    return "{\n\t\"asset_info\" : { \"type\" : \"scene\" },\n\t\"material_library\" : [ "
        + definition + " ],\n\t\"scene\" : {\n\t\t\"materials\" : [\n\t\t\t" + materials
        + "\n\t\t]\n\t}\n}";
}

const QByteArray bareDefinition = "{ \"id\" : \"Other\" }";

/// Like expectFailure(), for commands that print and warn before they fail.
void expectFailedAfterWarning(const Outcome& outcome, const char* warning, const char* failure)
{
    EXPECT_EQ(outcome.exitCode, 1) << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.contains(QLatin1String("vireo: warning: ")));
    EXPECT_TRUE(outcome.error.contains(QLatin1String(warning))) << outcome.error.toStdString();
    EXPECT_TRUE(
        outcome.error.trimmed().split(QLatin1Char('\n')).last().contains(QLatin1String(failure)))
        << outcome.error.toStdString();
}

/// Runs the program with arguments of any bytes.
Outcome runWithBytes(const QList<QByteArray>& arguments)
{
    QByteArray line = "exec \"$0\"";
    QProcess process;
    QStringList parts { QStringLiteral("-c"), QString(), QStringLiteral(VIREO_PROGRAM) };
    for (const QByteArray& argument : arguments) {
        line += " \"$(printf '";
        for (const char c : argument)
            line += '\\' + QByteArray::number(static_cast<uchar>(c), 8).rightJustified(3, '0');
        line += "')\"";
    }
    parts[1] = QString::fromLatin1(line);
    process.setWorkingDirectory(QStringLiteral(VIREO_SOURCE_DIR));
    process.start(QStringLiteral("/bin/sh"), parts);
    EXPECT_TRUE(process.waitForFinished(60000));
    return Outcome { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}

} // namespace

TEST(SceneFaults, aSurfaceThatCannotBeStoredIsNotCounted)
{
    const QTemporaryDir folder;
    const QString out = folder.filePath(QStringLiteral("out.duf"));
    for (const char* odd : { ", \"extra\" : {}", ", \"extra\" : null",
             ", \"extra\" : [ { \"type\" : \"studio_material_channels\", \"channels\" : {} } ]" }) {
        const QString scene = writeFile(folder, QStringLiteral("in.duf"),
            sceneText(bareDefinition, instance("Odd", odd) + ", " + instance("Good")));
        const Outcome outcome
            = runVireo(words({ "apply", network }) << scene << words({ "--all", "-o" }) << out);
        expectFailedAfterWarning(outcome, "this surface", "not all could be stored");
        EXPECT_TRUE(outcome.output.startsWith(QLatin1String("applied to 1 surface; ")))
            << outcome.output.toStdString();
        EXPECT_TRUE(outcome.error.contains(QLatin1String("Odd")));
        const Outcome dry
            = runVireo(words({ "apply", network }) << scene << words({ "--all", "--dry-run" }));
        EXPECT_EQ(dry.exitCode, 1);
        EXPECT_TRUE(dry.output.contains(QLatin1String("Good\n  + LuxRender_")));
    }
}

TEST(SceneFaults, aDryRunOfWhatASharedDefinitionKeepsPromisesNothing)
{
    const QTemporaryDir folder;
    const QByteArray definition
        = "{ \"id\" : \"Def\", \"extra\" : [ { \"type\" : \"studio_material_channels\", "
          "\"channels\" "
          ": [ { \"user_property\" : true, \"channel\" : { \"id\" : "
          "\"LuxRender_material_extrasettings\", \"type\" : \"string\", \"value\" : \"t\" } } ] }, "
          "{ "
          "\"type\" : \"studio/element_data/simple_data\", \"name\" : \"VireoElementDataItem\", "
          "\"settings\" : {} } ] }";
    const QString scene = writeFile(folder, QStringLiteral("in.duf"),
        sceneText(definition, instance("A") + ", " + instance("B")));
    const Outcome dry
        = runVireo(words({ "strip" }) << scene << words({ "--surface", "A", "--dry-run" }));
    expectFailedAfterWarning(
        dry, "in a definition that other surfaces use", "not all could be stored");
    EXPECT_TRUE(dry.output.endsWith(QLatin1String("A: no change\n"))) << dry.output.toStdString();

    const QString out = folder.filePath(QStringLiteral("out.duf"));
    expectDone(runVireo(words({ "strip" }) << scene << words({ "--all", "-o" }) << out));
    EXPECT_FALSE(contentOf(out).contains("LuxRender_"));
    EXPECT_FALSE(contentOf(out).contains("VireoElementDataItem"));
}

TEST(SceneFaults, sceneTextNeverReplacesAMesh)
{
    const QTemporaryDir folder;
    const QString mesh = writeFile(folder, QStringLiteral("x.obj"),
        contentOf(projectPath(QStringLiteral("examples/scenes/table-and-lamp.obj"))));
    const QByteArray before = contentOf(mesh);
    const QString scene
        = writeFile(folder, QStringLiteral("in.duf"), sceneText(bareDefinition, instance("A")));
    for (const QString& from : { mesh, scene })
        expectFailure(
            runVireo(words({ "apply", network }) << from << words({ "--all", "-o" }) << mesh), 1,
            words({ "x.obj", ".duf" }));
    EXPECT_EQ(contentOf(mesh), before);
    // Nor does a network's text replace a scene.
    const QByteArray sceneBefore = contentOf(scene);
    expectFailure(runVireo(words({ "export", network, "-o" }) << scene), 1, words({ "in.duf" }));
    EXPECT_EQ(contentOf(scene), sceneBefore);
}

TEST(SceneFaults, onlyStarsAndQuestionMarksAreSpecialInPatterns)
{
    const QTemporaryDir folder;
    const QString scene = writeFile(folder, QStringLiteral("in.duf"),
        sceneText(bareDefinition,
            instance("a[1]") + ", " + instance("a1") + ", " + instance("a.b") + ", "
                + instance("axb") + ", " + instance("a\\\\b")));
    const auto chosen = [&](const char* pattern) {
        const Outcome outcome = runVireo(
            words({ "apply", network }) << scene << words({ "--dry-run", "--surface", pattern }));
        QStringList names;
        for (const QString& line : outcome.output.split(QLatin1Char('\n')))
            if (!line.startsWith(QLatin1Char(' ')) && !line.isEmpty())
                names.append(line.section(QLatin1Char('/'), 1));
        return names.join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(chosen("a[1]"), "a[1]");
    EXPECT_EQ(chosen("a[1*"), "a[1]");
    EXPECT_EQ(chosen("a.*"), "a.b");
    EXPECT_EQ(chosen("a?b"), "a.b axb a\\b");
    EXPECT_EQ(chosen("*\\b"), "a\\b");
}

TEST(SceneFaults, namesFromFilesAreShownWithoutTheirControlCharacters)
{
    const QTemporaryDir folder;
    const QByteArray odd = "a\\u001b[31m\\tb\\nc\\u009b\\u202e";
    const QString scene = writeFile(folder, QStringLiteral("in.duf"),
        sceneText(bareDefinition, instance(odd) + ", " + instance(QByteArray(500, 'n'))));
    const QByteArray safe = "a\\x1b[31m\\tb\\nc\\x9b\\u202e";
    const Outcome table = runVireo(words({ "surfaces" }) << scene);
    expectDone(table);
    EXPECT_EQ(table.output.count(QLatin1Char('\n')), 3) << table.output.toStdString();
    EXPECT_TRUE(table.output.contains(QString::fromUtf8(safe))) << table.output.toStdString();
    for (const QString& line : table.output.split(QLatin1Char('\n')))
        EXPECT_LT(line.size(), 250);
    const Outcome none = runVireo(
        words({ "apply", network }) << scene << words({ "--surface", "no\x1b", "--dry-run" }));
    expectFailure(none, 1, { QString::fromUtf8(safe), QStringLiteral("no\\x1b") });
    EXPECT_FALSE(none.error.contains(QLatin1Char('\x1b')));
    const Outcome dry
        = runVireo(words({ "apply", network }) << scene << words({ "--all", "--dry-run" }));
    expectDone(dry);
    EXPECT_TRUE(dry.output.contains(QString::fromUtf8(safe)));
    EXPECT_FALSE(dry.output.contains(QLatin1Char('\x1b')));
}

TEST(SceneFaults, fileNamesMayBeAnyBytes)
{
    const QTemporaryDir folder;
    const QByteArray base = QFile::encodeName(folder.path()) + "/caf\xe9";
    const QByteArray trap = QFile::encodeName(folder.path()) + "/caf\xef\xbf\xbd.txt";
    writeFile(folder, QString::fromUtf8("caf\xef\xbf\xbd.txt"), "mine");
    const Outcome written = runWithBytes({ "export", network, "-o", base + ".txt" });
    EXPECT_EQ(written.exitCode, 0) << written.error.toStdString();
    EXPECT_EQ(contentOf(QFile::decodeName(trap)), "mine");
    struct stat info = {};
    EXPECT_EQ(stat((base + ".txt").constData(), &info), 0);
    EXPECT_GT(info.st_size, 100);
    const Outcome missing = runWithBytes({ "export", base + ".sskn" });
    expectFailure(missing, 1, words({ "caf\\xe9.sskn" }));
}

TEST(SceneFaults, anEmptyFileNameIsAWrongCall)
{
    expectFailure(runVireo(words({ "export", network, "-o", "" })), 2, words({ "empty" }));
    expectFailure(runVireo(words({ "export", "" })), 2, words({ "empty" }));
    expectFailure(
        runVireo(words({ "apply", network, "x.duf", "--all", "-o", "" })), 2, words({ "empty" }));
    expectFailure(runVireo(words({ "rebuild", "x.duf", "-o", "" })), 2, words({ "empty" }));
}

TEST(SceneFaults, materialFilesOfAMeshAreOnlyReadBesideItOrBelow)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("mesh/below")));
    const QByteArray material = "newmtl M\nKd 1 0 0\n";
    writeFile(folder, QStringLiteral("outside.mtl"), material);
    writeFile(folder, QStringLiteral("mesh/below/in.mtl"), material);
    const QString pipe = folder.filePath(QStringLiteral("mesh/pipe.mtl"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("outside.mtl")),
        folder.filePath(QStringLiteral("mesh/link.mtl"))));
    const auto surfaces = [&](const QByteArray& library) {
        return runVireo(
            words({ "surfaces" }) << writeFile(folder, QStringLiteral("mesh/m.obj"),
                "mtllib " + library + "\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl M\nf 1 2 3\n"));
    };
    expectDone(surfaces("below/in.mtl"));
    for (const char* library : { "../outside.mtl", "pipe.mtl", "/dev/zero", "link.mtl" }) {
        const Outcome outcome = surfaces(library);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.error.count(QLatin1Char('\n')), 1) << outcome.error.toStdString();
        EXPECT_TRUE(outcome.error.contains(QLatin1String("not a plain file beside the mesh")))
            << library << outcome.error.toStdString();
    }
}
