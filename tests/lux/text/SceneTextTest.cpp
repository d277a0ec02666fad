// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneText.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>

using namespace lux;

namespace {

class LuxSceneText : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& text)
    {
        const QString path = m_folder.filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }

    /// The names that NamedMaterial statements give, in order.
    QStringList names(const SceneText& scene) const
    {
        QStringList list;
        for (const SceneText::Step step : scene.steps())
            list.append(QString::fromStdString(scene.statement(step).headText(0)));
        return list;
    }

    QStringList errors(const SceneText& scene) const
    {
        QStringList list;
        for (int i = 0; i < scene.documentCount(); ++i)
            for (const TextError& error : scene.document(i).errors())
                list.append(scene.document(i).message(error));
        return list;
    }

    QTemporaryDir m_folder;
};

TEST_F(LuxSceneText, includedStatementsStandInPlace)
{
    const QString path
        = write("scene.lxs", "NamedMaterial \"1\"\nInclude \"parts/a.lxm\"\nNamedMaterial \"4\"\n");
    // Names are relative to the file that they stand in.
    write("parts/a.lxm", "NamedMaterial \"2\"\nInclude \"b.lxm\"\n");
    write("parts/b.lxm", "NamedMaterial \"3\"\n");
    SceneText scene;
    QString error;
    ASSERT_TRUE(scene.readFile(path, SceneOptions(), &error)) << error.toStdString();
    EXPECT_EQ(names(scene), (QStringList { "1", "2", "3", "4" }));
    EXPECT_EQ(errors(scene), QStringList());
    EXPECT_EQ(scene.documentCount(), 3);
    EXPECT_EQ(scene.path(0), path);
    EXPECT_TRUE(scene.path(2).endsWith("parts/b.lxm"));
}

TEST_F(LuxSceneText, aFileIsReadOnceAndIncludedTwice)
{
    write("a.lxm", "NamedMaterial \"a\"\n");
    SceneText scene;
    scene.readText("Include \"a.lxm\" Include \"./a.lxm\"", m_folder.path(), SceneOptions());
    EXPECT_EQ(names(scene), (QStringList { "a", "a" }));
    EXPECT_EQ(scene.documentCount(), 2);
}

TEST_F(LuxSceneText, missingFilesAreNamedAndTheRestIsRead)
{
    SceneText scene;
    scene.readText("Include \"gone.lxm\"\nNamedMaterial \"a\"", m_folder.path(), SceneOptions());
    EXPECT_EQ(names(scene), QStringList { "a" });
    ASSERT_EQ(errors(scene).size(), 1);
    EXPECT_TRUE(errors(scene).at(0).contains("gone.lxm"));
    EXPECT_EQ(scene.document(0).errors().at(0).kind, ErrorKind::Include);
}

TEST_F(LuxSceneText, includesCanBeRefused)
{
    write("a.lxm", "NamedMaterial \"a\"\n");
    SceneOptions options;
    options.followsIncludes = false;
    SceneText scene;
    scene.readText("Include \"a.lxm\"", m_folder.path(), options);
    EXPECT_EQ(names(scene), QStringList());
    ASSERT_EQ(errors(scene).size(), 1);
    EXPECT_TRUE(errors(scene).at(0).contains("a.lxm"));
}

TEST_F(LuxSceneText, itFollows32Levels)
{
    for (int i = 0; i < 40; ++i)
        write(QString::number(i) + ".lxm",
            "NamedMaterial \"" + QByteArray::number(i) + "\"\nInclude \""
                + QByteArray::number(i + 1) + ".lxm\"\n");
    SceneText scene;
    QString error;
    ASSERT_TRUE(scene.readFile(m_folder.filePath("0.lxm"), SceneOptions(), &error));
    EXPECT_EQ(scene.documentCount(), SceneText::maximumDepth);
    ASSERT_EQ(errors(scene).size(), 1);
    EXPECT_TRUE(errors(scene).at(0).contains("32"));
}

TEST_F(LuxSceneText, filesThatIncludeThemselves)
{
    const QString path = write("a.lxm", "NamedMaterial \"a\" Include \"b.lxm\"");
    write("b.lxm", "NamedMaterial \"b\" Include \"a.lxm\"");
    SceneText scene;
    QString error;
    ASSERT_TRUE(scene.readFile(path, SceneOptions(), &error));
    EXPECT_EQ(names(scene), (QStringList { "a", "b" }));
    ASSERT_EQ(errors(scene).size(), 1);
    EXPECT_TRUE(errors(scene).at(0).contains("includes itself"));
}

TEST_F(LuxSceneText, manyTimesTwoIsBounded)
{
    for (int i = 0; i < 31; ++i) {
        const QByteArray next = "Include \"" + QByteArray::number(i + 1) + ".lxm\"\n";
        write(QString::number(i) + ".lxm", i == 30 ? QByteArray("Identity") : next + next);
    }
    SceneText scene;
    QString error;
    ASSERT_TRUE(scene.readFile(m_folder.filePath("0.lxm"), SceneOptions(), &error));
    ASSERT_FALSE(errors(scene).isEmpty());
    EXPECT_TRUE(errors(scene).at(0).contains("too often"));
}

TEST_F(LuxSceneText, pipesAndFoldersAreNotWaitedFor)
{
    ASSERT_EQ(mkfifo(m_folder.filePath("pipe").toLocal8Bit().constData(), 0600), 0);
    SceneText scene;
    scene.readText("Include \"pipe\" Include \".\"", m_folder.path(), SceneOptions());
    EXPECT_EQ(errors(scene).size(), 2);
}

TEST_F(LuxSceneText, aSceneThatIsNotThere)
{
    SceneText scene;
    QString error;
    EXPECT_FALSE(scene.readFile(m_folder.filePath("no.lxs"), SceneOptions(), &error));
    EXPECT_TRUE(error.contains("no.lxs"));
}

} // namespace
