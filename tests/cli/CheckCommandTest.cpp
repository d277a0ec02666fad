// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CliSupport.h"
#include "TestSupport.h"
#include "dzbrickuserfile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

class CheckCommand : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& text)
    {
        return writeFile(m_folder, name, text);
    }

    /// A network file of a root that a material feeds.
    QString writeNetwork(const QString& name, const char* material)
    {
        VireoBrickUser user;
        VireoBrickBase* root = addBrick(user, "VireoRootBrick");
        EXPECT_TRUE(link(addBrick(user, material), root, "material"));
        const QString path = m_folder.filePath(name);
        DzBrickUserFile file;
        EXPECT_TRUE(file.save(path, &user));
        return path;
    }

    static QJsonArray reports(const Outcome& outcome)
    {
        return QJsonDocument::fromJson(outcome.output.toUtf8()).array();
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(CheckCommand, examplesHaveNothingToTell)
{
    const Outcome outcome = runVireo({ "check", "examples" });
    expectDone(outcome);
    EXPECT_TEXT(QString(), outcome.output);
}

TEST_F(CheckCommand, aLineAFinding)
{
    const QString path = writeNetwork("glass.sskn", "VireoMatGlassBrick");
    const Outcome outcome = runVireo({ "check", path });
    expectDone(outcome);
    EXPECT_TEXT(path
            + ": Glass (2): index 0: surprising: Glass of index 0 lets no light in: it looks like "
              "a mirror. Set \"index\" to 1.5.\n",
        outcome.output);
}

TEST_F(CheckCommand, textsHaveLinesAndColumns)
{
    const QString path
        = write("scene.lxs", "WorldBegin\nTexture \"a\" \"float\" \"band\"\n\t\"float x\" [1]\n");
    const Outcome outcome = runVireo({ "check", path });
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TEXT(QString(), outcome.error);
    EXPECT_TRUE(outcome.output.contains(path + ":2:21: Texture \"a\": offsets: crash: "))
        << outcome.output.toStdString();
    EXPECT_TRUE(outcome.output.contains(path + ":3:12: Texture \"a\": x 1: ignored: "))
        << outcome.output.toStdString();
}

TEST_F(CheckCommand, includedFilesAreNamed)
{
    write("part.lxm", "MakeNamedMaterial \"m\" \"string type\" [\"glas\"]\n");
    const QString path = write("scene.lxs", "WorldBegin\nInclude \"part.lxm\"\nWorldEnd\n");
    const Outcome outcome = runVireo({ "check", path });
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(m_folder.filePath("part.lxm") + ":1:"))
        << outcome.output.toStdString();
}

TEST_F(CheckCommand, exitCodes)
{
    const QString harmless
        = write("a.lxm", "Texture \"a\" \"float\" \"fbm\" \"vector scale\" [0 0 0]");
    const QString refused = write("b.lxm", "Texture \"a\" \"float\" \"fbn\"");
    const QString crash = write("c.lxm", "Texture \"a\" \"float\" \"band\"");
    EXPECT_EQ(runVireo({ "check", harmless }).exitCode, 0);
    EXPECT_EQ(runVireo({ "check", refused }).exitCode, 1);
    EXPECT_EQ(runVireo({ "check", crash }).exitCode, 1);
    EXPECT_EQ(runVireo({ "check", harmless, refused }).exitCode, 1);
    expectFailure(runVireo({ "check" }), 2, { "FILE" });
    expectFailure(runVireo({ "check", harmless, "--renderer", "other" }), 2, { "renderer" });
    expectFailure(runVireo({ "check", "README.md" }), 2, { "README.md", "lxs" });
    expectFailure(runVireo({ "check", m_folder.filePath("gone.lxm") }), 1, { "gone.lxm" });
}

TEST_F(CheckCommand, quietFindingsAreToldOnRequest)
{
    const QString path = writeNetwork("matte.sskn", "VireoMatMatteBrick");
    EXPECT_TEXT(QString(), runVireo({ "check", path }).output);
    const Outcome outcome = runVireo({ "check", "--all", path });
    expectDone(outcome);
    EXPECT_TRUE(outcome.output.contains("bumpmap 0: ignored: ")) << outcome.output.toStdString();
}

TEST_F(CheckCommand, json)
{
    const QString path = writeNetwork("glass.sskn", "VireoMatGlassBrick");
    const QJsonArray list = reports(runVireo({ "check", "--json", path, "examples/velvet.sskn" }));
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(0).toObject().value("file").toString(), path);
    const QJsonArray findings = list.at(0).toObject().value("findings").toArray();
    ASSERT_EQ(findings.size(), 1);
    const QJsonObject finding = findings.at(0).toObject();
    EXPECT_EQ(finding.value("rule").toString(), QStringLiteral("mirror-glass"));
    EXPECT_EQ(finding.value("severity").toString(), QStringLiteral("surprising"));
    EXPECT_EQ(finding.value("brick").toString(), QStringLiteral("Glass (2)"));
    EXPECT_EQ(finding.value("property").toString(), QStringLiteral("index"));
    EXPECT_EQ(finding.value("remedies")
                  .toArray()
                  .at(0)
                  .toObject()
                  .value("values")
                  .toObject()
                  .value("index")
                  .toString(),
        QStringLiteral("1.5"));
    EXPECT_TRUE(list.at(1).toObject().value("findings").toArray().isEmpty());
}

TEST_F(CheckCommand, anotherRenderer)
{
    const QString path = write("a.lxm", "Texture \"a\" \"float\" \"dots\"");
    EXPECT_TEXT(QString(), runVireo({ "check", path }).output);
    const Outcome outcome = runVireo({ "check", "--renderer", "luxcore", path });
    expectDone(outcome);
    EXPECT_TRUE(outcome.output.contains("portability: LuxCore")) << outcome.output.toStdString();
}

TEST_F(CheckCommand, scenesAreCheckedSurfaceBySurface)
{
    const QString network = writeNetwork("glass.sskn", "VireoMatGlassBrick");
    const QString scene = m_folder.filePath("scene.duf");
    const QString source = QDir(projectPath("examples/scenes")).entryList({ "*.obj" }).value(0);
    ASSERT_FALSE(source.isEmpty());
    const Outcome applied
        = runVireo({ "apply", network, "examples/scenes/" + source, "--all", "-o", scene });
    ASSERT_EQ(applied.exitCode, 0) << applied.error.toStdString();
    const Outcome outcome = runVireo({ "check", scene });
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.output.startsWith(scene + ": ")) << outcome.output.toStdString();
    EXPECT_TRUE(outcome.output.contains(": Glass (2): index 0: surprising: "))
        << outcome.output.toStdString();
}

TEST_F(CheckCommand, aNetworkWithoutARoot)
{
    VireoBrickUser user;
    addBrick(user, "VireoTexFltBAndBrick");
    const QString path = m_folder.filePath("a.sskn");
    DzBrickUserFile file;
    ASSERT_TRUE(file.save(path, &user));
    const Outcome outcome = runVireo({ "check", path });
    expectDone(outcome);
    EXPECT_EQ(outcome.output.count('\n'), 1) << outcome.output.toStdString();
    EXPECT_TRUE(outcome.output.contains("no \"Vireo Surface\""));
    EXPECT_EQ(runVireo({ "check", "--all", path }).output.count('\n'), 2);
}

TEST_F(CheckCommand, foldersAreSharedAmongProcesses)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkpath("inner"));
    const int count = 120;
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("inner/%1").arg(i, 3, 10, QLatin1Char('0'));
        if (i % 2)
            write(name + ".lxm", "Texture \"a\" \"float\" \"fbm\" \"vector scale\" [0 0 0]\n");
        else
            writeNetwork(name + ".sskn", "VireoMatGlassBrick");
    }
    write("inner/050b.sskn", "not a network");
    write("inner/mesh.obj", "not a mesh");
    write("notes.txt", "not ours");
    const Outcome outcome = runVireo({ "check", m_folder.path() });
    EXPECT_EQ(outcome.exitCode, 1);
    const QStringList lines = outcome.output.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), count) << outcome.output.toStdString();
    for (int i = 0; i < count; ++i)
        EXPECT_TRUE(
            lines.at(i).contains(QStringLiteral("inner/%1.").arg(i, 3, 10, QLatin1Char('0'))))
            << lines.at(i).toStdString();
    EXPECT_TRUE(outcome.error.contains("050b.sskn")) << outcome.error.toStdString();
    EXPECT_EQ(outcome.error.count('\n'), 1) << outcome.error.toStdString();
    EXPECT_EQ(reports(runVireo({ "check", "--json", m_folder.path() })).size(), count + 1);
}
