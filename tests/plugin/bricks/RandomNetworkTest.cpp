// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "RandomNetwork.h"
#include "NetworkCode.h"
#include "TestSupport.h"
#include "VireoRootBrick.h"
#include "dzbrickuserfile.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

const int networkCount = 300;

QString networkName(int index)
{
    return QStringLiteral("network-%1").arg(index, 3, 10, QLatin1Char('0'));
}

QString textOf(const VireoBrickUser& user, bool literal)
{
    GenerateOptions options;
    options.literalValues = literal;
    const QString text = exportText(generateCode(findRootBrick(&user), options));
    return text.endsWith(QLatin1Char('\n')) ? text : text + QLatin1Char('\n');
}

QString readText(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

} // namespace

/// The script states the rules of the text anew, from the tables and the network files alone.
TEST(RandomNetworks, textEqualsThatOfTheIndependentRenderer)
{
    const QTemporaryDir folder;
    for (int i = 0; i < networkCount; ++i) {
        VireoBrickUser user;
        buildRandomNetwork(&user, static_cast<quint32>(i));
        DzBrickUserFile file;
        ASSERT_TRUE(file.save(folder.filePath(networkName(i) + QStringLiteral(".sskn")), &user));
    }
    QProcess renderer;
    renderer.start(QStringLiteral("python3"),
        { projectPath(QStringLiteral("tools/render_golden.py")), QStringLiteral("examples"),
            folder.path() });
    ASSERT_TRUE(renderer.waitForFinished(300000));
    ASSERT_EQ(renderer.exitCode(), 0) << renderer.readAllStandardError().toStdString();
    int statements = 0;
    for (int i = 0; i < networkCount; ++i) {
        SCOPED_TRACE("seed " + std::to_string(i));
        VireoBrickUser user;
        buildRandomNetwork(&user, static_cast<quint32>(i));
        statements += textOf(user, true).count(QLatin1String("\nTexture "));
        EXPECT_TEXT(
            readText(folder.filePath(networkName(i) + QStringLiteral(".txt"))), textOf(user, true));
        EXPECT_TEXT(readText(folder.filePath(networkName(i) + QStringLiteral(".placeholders.txt"))),
            textOf(user, false));
    }
    // The networks must be worth comparing.
    EXPECT_GT(statements, networkCount * 3);
    RecordProperty("statements", statements);
}

TEST(RandomNetworks, loadingGivesTheSameTextAndBytes)
{
    for (int i = 0; i < networkCount; ++i) {
        SCOPED_TRACE("seed " + std::to_string(i));
        VireoBrickUser user;
        buildRandomNetwork(&user, static_cast<quint32>(i));
        DzBrickUserFile file;
        const QByteArray bytes = file.saveText(&user);
        VireoBrickUser loaded;
        DzBrickUserFile loadedFile;
        ASSERT_TRUE(loadedFile.loadText(bytes, QStringLiteral("network"), &loaded))
            << loadedFile.getError().toStdString();
        EXPECT_EQ(loadedFile.getWarnings(), QStringList());
        EXPECT_TEXT(QString::fromUtf8(bytes), QString::fromUtf8(loadedFile.saveText(&loaded)));
        EXPECT_TEXT(textOf(user, true), textOf(loaded, true));
        EXPECT_TEXT(textOf(user, false), textOf(loaded, false));
    }
}
