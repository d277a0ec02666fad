// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "AutosaveStore.h"
#include "TestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void keep(AutosaveStore& store, const char* key, const QByteArray& text)
{
    QString error;
    EXPECT_TRUE(
        store.keep({ Work::Network, QString::fromLatin1(key), QStringLiteral("Title of ") + key,
                       QStringLiteral("/some/file.sskn") },
            text, &error))
        << error.toStdString();
}

/// Copies a store's folders so that they are held by nobody, as after a crash.
QString crashedCopy(const QString& folder, const QTemporaryDir& target)
{
    const QString copy = target.filePath(QStringLiteral("crashed"));
    for (const QString& session : QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QDir().mkpath(copy + QLatin1Char('/') + session);
        const QDir from(folder + QLatin1Char('/') + session);
        for (const QString& name : from.entryList(QDir::Files))
            QFile::copy(
                from.filePath(name), copy + QLatin1Char('/') + session + QLatin1Char('/') + name);
    }
    return copy;
}

} // namespace

TEST(AutosaveStore, keepsTheLastCopiesOfEachDocument)
{
    QTemporaryDir dir;
    AutosaveStore store(dir.filePath(QStringLiteral("store")));
    for (int i = 1; i <= AutosaveStore::keptCopies + 3; ++i)
        keep(store, "a", QByteArray::number(i));
    keep(store, "b", "other");
    const QString copy = crashedCopy(store.getFolder(), dir);
    AutosaveStore next(copy);
    const QVector<RestorableWork> found = next.takeOver();
    ASSERT_EQ(found.size(), 2);
    const RestorableWork& a = found.at(0).key == QLatin1String("a") ? found.at(0) : found.at(1);
    EXPECT_EQ(a.title, QStringLiteral("Title of a"));
    EXPECT_EQ(a.path, QStringLiteral("/some/file.sskn"));
    ASSERT_EQ(a.files.size(), int(AutosaveStore::keptCopies));
    EXPECT_EQ(contentOf(a.files.first()), "8");
    EXPECT_EQ(contentOf(a.files.last()), "4");
}

TEST(AutosaveStore, aForgottenDocumentIsNotOffered)
{
    QTemporaryDir dir;
    AutosaveStore store(dir.filePath(QStringLiteral("store")));
    keep(store, "a", "1");
    store.forget(QStringLiteral("a"));
    AutosaveStore next(crashedCopy(store.getFolder(), dir));
    EXPECT_TRUE(next.takeOver().isEmpty());
}

TEST(AutosaveStore, theEndOfAProgramLeavesNothing)
{
    QTemporaryDir dir;
    {
        AutosaveStore store(dir.path());
        keep(store, "a", "1");
        EXPECT_FALSE(QDir(dir.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
    }
    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
}

TEST(AutosaveStore, aRunningProgramKeepsItsCopiesToItself)
{
    QTemporaryDir dir;
    AutosaveStore first(dir.path());
    keep(first, "a", "1");
    AutosaveStore second(dir.path());
    EXPECT_TRUE(second.takeOver().isEmpty());
    keep(second, "a", "2");
    EXPECT_TRUE(first.takeOver().isEmpty());
}

TEST(AutosaveStore, whatIsTakenOverIsOfferedOnceAtATime)
{
    QTemporaryDir dir;
    AutosaveStore store(dir.filePath(QStringLiteral("store")));
    keep(store, "a", "1");
    const QString copy = crashedCopy(store.getFolder(), dir);
    {
        AutosaveStore first(copy);
        EXPECT_EQ(first.takeOver().size(), 1);
        AutosaveStore second(copy);
        EXPECT_TRUE(second.takeOver().isEmpty());
    }
    // Nobody decided: it is there again.
    AutosaveStore third(copy);
    const QVector<RestorableWork> again = third.takeOver();
    ASSERT_EQ(again.size(), 1);
    third.discard(again.first());
    AutosaveStore fourth(copy);
    EXPECT_TRUE(fourth.takeOver().isEmpty());
    EXPECT_TRUE(QDir(copy).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
}

TEST(AutosaveStore, aFolderThatCannotBeMadeIsAnError)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("file"));
    QFile plain(file);
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    plain.close();
    AutosaveStore store(file + QStringLiteral("/below"));
    QString error;
    EXPECT_FALSE(store.keep({ Work::Network, QStringLiteral("a"), {}, {} }, "1", &error));
    EXPECT_TRUE(error.contains(file)) << error.toStdString();
    EXPECT_TRUE(error.contains(QLatin1String("VIREO_AUTOSAVE_DIR"))) << error.toStdString();
}

TEST(AutosaveStore, scenesAreKeptBesideNetworks)
{
    QTemporaryDir dir;
    AutosaveStore store(dir.filePath(QStringLiteral("store")));
    QString error;
    ASSERT_TRUE(store.keep({ Work::Scene, QStringLiteral("s"), QStringLiteral("room.duf"),
                               QStringLiteral("/some/room.duf") },
        "{}", &error));
    AutosaveStore next(crashedCopy(store.getFolder(), dir));
    const QVector<RestorableWork> found = next.takeOver();
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found.first().kind, Work::Scene);
    EXPECT_EQ(found.first().path, QStringLiteral("/some/room.duf"));
}

namespace {

/// A folder with a file called "lock" and others, as any program may have.
void makeForeignFolder(const QString& path)
{
    ASSERT_TRUE(QDir().mkpath(path + QStringLiteral("/below")));
    for (const char* name : { "lock", "letter.txt", "below/photo.png", "a.00000001.network" }) {
        QFile file(path + QLatin1Char('/') + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("mine");
    }
}

QStringList everythingIn(const QString& folder)
{
    QStringList names;
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (walk.hasNext())
        names.append(walk.next());
    names.sort();
    return names;
}

/// The folder of the one session in a store's folder.
QString sessionIn(const QString& folder)
{
    const QStringList names = QDir(folder).entryList(
        { QStringLiteral("session-*") }, QDir::Dirs | QDir::NoDotAndDotDot);
    EXPECT_EQ(names.size(), 1);
    return folder + QLatin1Char('/') + names.value(0);
}

const char sessionName[] = "session-01234567-89ab-cdef-0123-456789abcdef";

} // namespace

TEST(AutosaveStore, foldersOfOthersAreLeftAlone)
{
    QTemporaryDir used;
    QTemporaryDir elsewhere;
    makeForeignFolder(used.filePath(QStringLiteral("documents")));
    // Also when they are called as ours are.
    makeForeignFolder(used.filePath(QString::fromLatin1(sessionName)));
    makeForeignFolder(elsewhere.filePath(QStringLiteral("target")));
    ASSERT_TRUE(QFile::link(
        elsewhere.filePath(QStringLiteral("target")), used.filePath(QStringLiteral("linked"))));
    const QStringList before = everythingIn(used.path()) + everythingIn(elsewhere.path());
    {
        AutosaveStore store(used.path());
        EXPECT_TRUE(store.takeOver().isEmpty());
        keep(store, "a", "1");
    }
    EXPECT_EQ(everythingIn(used.path()) + everythingIn(elsewhere.path()), before);
}

TEST(AutosaveStore, aLinkToASessionIsNoSession)
{
    QTemporaryDir dir;
    AutosaveStore store(dir.filePath(QStringLiteral("store")));
    keep(store, "a", "1");
    const QString copy = crashedCopy(store.getFolder(), dir);
    const QString linked = dir.filePath(QStringLiteral("linked"));
    ASSERT_TRUE(QDir().mkpath(linked));
    ASSERT_TRUE(
        QFile::link(sessionIn(copy), linked + QLatin1Char('/') + QLatin1String(sessionName)));
    const QStringList before = everythingIn(copy);
    {
        AutosaveStore next(linked);
        EXPECT_TRUE(next.takeOver().isEmpty());
    }
    EXPECT_EQ(everythingIn(copy), before);
}

TEST(AutosaveStore, whatOthersPutIntoASessionStays)
{
    QTemporaryDir dir;
    AutosaveStore store(dir.filePath(QStringLiteral("store")));
    keep(store, "a", "1");
    const QString copy = crashedCopy(store.getFolder(), dir);
    const QString session = sessionIn(copy);
    makeForeignFolder(session + QStringLiteral("/added"));
    ASSERT_TRUE(QFile::copy(session + QStringLiteral("/a.00000001.network"),
        session + QStringLiteral("/a copy of a.network")));
    // What is left of a copy when the program is killed while it writes.
    ASSERT_TRUE(QFile::copy(session + QStringLiteral("/a.00000001.network"),
        session + QStringLiteral("/a.00000002.network.AbCd12")));
    {
        AutosaveStore next(copy);
        const QVector<RestorableWork> found = next.takeOver();
        ASSERT_EQ(found.size(), 1);
        next.discard(found.first());
    }
    QStringList left = everythingIn(session);
    left.replaceInStrings(session + QLatin1Char('/'), QString());
    EXPECT_EQ(left,
        QStringList({ QStringLiteral("a copy of a.network"), QStringLiteral("added"),
            QStringLiteral("added/a.00000001.network"), QStringLiteral("added/below"),
            QStringLiteral("added/below/photo.png"), QStringLiteral("added/letter.txt"),
            QStringLiteral("added/lock") }));
}

TEST(AutosaveStore, theFolderCanBeNamed)
{
    qputenv("VIREO_AUTOSAVE_DIR", "/named/folder");
    EXPECT_EQ(AutosaveStore().getFolder(), QStringLiteral("/named/folder"));
    qunsetenv("VIREO_AUTOSAVE_DIR");
    EXPECT_TRUE(AutosaveStore().getFolder().endsWith(QLatin1String("/autosave")));
}
