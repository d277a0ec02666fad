// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "WindowFixture.h"

#include "DocumentController.h"
#include "DocumentTabs.h"
#include "MixerDocument.h"
#include "NetworkWalk.h"
#include "RestoreDialog.h"
#include "SceneController.h"
#include "SceneSession.h"
#include "dzmaterial.h"
#include "dzscene.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QPushButton>

#include <random>
#include <set>
#include <thread>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// Starts the helper and waits for its line.
void startHelper(QProcess* helper, const QStringList& arguments, const char* line)
{
    helper->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    helper->start(QStringLiteral(VIREO_SAVE_HELPER), arguments);
    ASSERT_TRUE(helper->waitForStarted());
    while (!helper->canReadLine())
        ASSERT_TRUE(helper->waitForReadyRead(20000)) << "the helper says nothing";
    ASSERT_EQ(helper->readLine().trimmed(), QByteArray(line));
}

void killHelper(QProcess* helper)
{
    helper->kill();
    helper->waitForFinished();
}

} // namespace

TEST(CrashWhileSaving, theFileIsAlwaysTheOldOrTheNewOne)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("network.sskn"));
    const QString oldPath = projectPath(QStringLiteral("examples/plain-matte.sskn"));
    const QString newPath = projectPath(QStringLiteral("examples/layered-car-paint.sskn"));
    const QByteArray oldText = contentOf(oldPath);
    const QByteArray newText = contentOf(newPath);
    ASSERT_TRUE(QFile::copy(oldPath, file));
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
    std::mt19937 random(20260701);
    std::uniform_int_distribution<int> microseconds(0, 8000);
    int olds = 0;
    int news = 0;
    for (int i = 0; i < 200; ++i) {
        QProcess helper;
        startHelper(&helper, { QStringLiteral("save"), file, oldPath, newPath }, "ready");
        if (HasFatalFailure())
            return;
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        killHelper(&helper);
        const QByteArray text = contentOf(file);
        olds += text == oldText ? 1 : 0;
        news += text == newText ? 1 : 0;
        ASSERT_TRUE(text == oldText || text == newText)
            << "after kill " << i << " the file has " << text.size() << " bytes";
    }
    // Both were met, so the kills did fall among the saves.
    EXPECT_GT(olds, 0);
    EXPECT_GT(news, 0);
}

TEST_F(WindowTest, afterACrashNetworksAreOfferedAndRestored)
{
    QProcess helper;
    startHelper(&helper,
        { QStringLiteral("autosave"), file("copies"),
            projectPath(QStringLiteral("examples/plain-matte.sskn")) },
        "kept");
    // As long as the other program lives, its networks are its own.
    EXPECT_EQ(m_window->offerRestore(), 0);
    killHelper(&helper);

    // Putting it off keeps them.
    withDialog<RestoreDialog>([](RestoreDialog* dialog) {
        dialog->findChild<QPushButton*>(QStringLiteral("later"))->click();
    });
    EXPECT_EQ(m_window->offerRestore(), 0);
    openWindow();

    withDialog<RestoreDialog>([](RestoreDialog* dialog) {
        EXPECT_EQ(dialog->getChosen().size(), 2);
        dialog->findChild<QPushButton*>(QStringLiteral("restore"))->click();
    });
    EXPECT_EQ(m_window->offerRestore(), 2);
    settle();
    std::set<QString> titles;
    for (const MixerDocument* restored : m_window->getTabs()->getDocuments()) {
        titles.insert(restored->getTitle());
        EXPECT_TRUE(restored->isModified());
        EXPECT_EQ(bricksOf(restored->getUser()).last()->getBrickTitle(),
            QStringLiteral("Changed Before the Crash"));
    }
    EXPECT_EQ(titles,
        (std::set<QString> { QStringLiteral("Never Saved"), QStringLiteral("plain-matte.sskn") }));
    // The file itself is as it was, and the copies belong to this program now.
    AutosaveStore other(file("copies"));
    EXPECT_TRUE(other.takeOver().isEmpty());
    EXPECT_EQ(m_window->offerRestore(), 0);
}

TEST_F(WindowTest, aRestoredNetworkTakesThePlaceOfItsFile)
{
    const QString path = projectPath(QStringLiteral("examples/plain-matte.sskn"));
    QProcess helper;
    startHelper(&helper, { QStringLiteral("autosave"), file("copies"), path }, "kept");
    killHelper(&helper);
    ASSERT_TRUE(m_window->openFile(path));
    withDialog<RestoreDialog>([](RestoreDialog* dialog) {
        dialog->findChild<QPushButton*>(QStringLiteral("restore"))->click();
    });
    EXPECT_EQ(m_window->offerRestore(), 2);
    settle();
    int count = 0;
    for (const MixerDocument* open : m_window->getTabs()->getDocuments())
        if (open->getPath() == path) {
            ++count;
            EXPECT_TRUE(open->isModified());
        }
    EXPECT_EQ(count, 1);
}

TEST_F(WindowTest, afterACrashTheSceneIsOfferedAndRestored)
{
    const QString path = projectPath(QStringLiteral("examples/scenes/vase-on-table.obj"));
    QProcess helper;
    startHelper(&helper, { QStringLiteral("scene"), file("copies"), path }, "kept");
    killHelper(&helper);
    withDialog<RestoreDialog>([](RestoreDialog* dialog) {
        ASSERT_EQ(dialog->getChosen().size(), 1);
        EXPECT_EQ(dialog->getChosen().first().kind, Work::Scene);
        dialog->findChild<QPushButton*>(QStringLiteral("restore"))->click();
    });
    EXPECT_EQ(m_window->offerRestore(), 1);
    settle();
    const SceneSession* session = m_window->getSceneController()->getSession();
    EXPECT_EQ(session->getPath(), path);
    EXPECT_TRUE(session->isModified());
    ASSERT_FALSE(dzScene->getSurfaces().isEmpty());
    for (const DzSurface& surface : dzScene->getSurfaces())
        EXPECT_NE(surface.material->findDataItem(QStringLiteral("ChangedBeforeTheCrash")), nullptr);
    // A restored scene is unsaved whatever is undone and done again, and it is kept on.
    AutosaveStore other(file("copies"));
    EXPECT_TRUE(other.takeOver().isEmpty());
    ASSERT_TRUE(m_window->getSceneController()->saveTo(file("saved.duf")));
    EXPECT_FALSE(session->isModified());
    EXPECT_EQ(m_window->offerRestore(), 0);
}

TEST_F(WindowTest, whatIsDiscardedIsNotOfferedAgain)
{
    QProcess helper;
    startHelper(&helper,
        { QStringLiteral("autosave"), file("copies"),
            projectPath(QStringLiteral("examples/plain-matte.sskn")) },
        "kept");
    killHelper(&helper);
    withDialog<RestoreDialog>([](RestoreDialog* dialog) {
        dialog->findChild<QPushButton*>(QStringLiteral("discard"))->click();
    });
    EXPECT_EQ(m_window->offerRestore(), 0);
    openWindow();
    EXPECT_EQ(m_window->offerRestore(), 0);
}
