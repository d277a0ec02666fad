// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfilewriter.h"
#include "dzwarning.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

namespace {

class FileWriter : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QByteArray native(const QString& name) const { return QFile::encodeName(path(name)); }

    void put(const QString& name, const QByteArray& data) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(data), data.size());
    }
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    QStringList names() const
    {
        return QDir(m_folder.path())
            .entryList(
                QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    /// The message of a failed write, with the test's folder as "DIR".
    std::string writeError(const QString& name, const QByteArray& data = "data") const
    {
        QString error;
        EXPECT_FALSE(dzWriteFile(name, data, &error)) << name.toStdString();
        return error.replace(m_folder.path(), "DIR").toStdString();
    }
    std::string readError(const QString& name, qint64 maximumSize = 1000) const
    {
        QByteArray data = "before";
        QString error;
        EXPECT_FALSE(dzReadFile(name, maximumSize, &data, &error)) << name.toStdString();
        EXPECT_EQ(data, QByteArray("before"));
        return error.replace(m_folder.path(), "DIR").toStdString();
    }

private:
    QTemporaryDir m_folder;
};

/// Runs a function in a process of its own, which may be robbed of rights; true when it returned
/// true.
bool inChild(const std::function<bool()>& function)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(function() ? 0 : 1);
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool limitFileSize(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = { bytes, bytes };
    return setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

/// Root may write everywhere: the test goes on as somebody else.
bool dropRootRights()
{
    return geteuid() != 0 || setuid(65534) == 0;
}

} // namespace

TEST_F(FileWriter, aNewFileIsWrittenWithAllItsBytes)
{
    const QByteArray data("a\0b\r\n\xff", 6);
    QString error;
    EXPECT_TRUE(dzWriteFile(path("new"), data, &error)) << error.toStdString();
    EXPECT_EQ(content("new"), data);
    EXPECT_EQ(names(), QStringList("new"));
}

TEST_F(FileWriter, anExistingFileIsReplacedWhole)
{
    put("file", QByteArray(10000, 'x'));
    EXPECT_TRUE(dzWriteFile(path("file"), "short", nullptr));
    EXPECT_EQ(content("file"), QByteArray("short"));
    EXPECT_EQ(names(), QStringList("file"));
}

TEST_F(FileWriter, anEmptyFileCanBeWritten)
{
    put("file", "old");
    EXPECT_TRUE(dzWriteFile(path("file"), QByteArray(), nullptr));
    EXPECT_EQ(content("file"), QByteArray());
}

TEST_F(FileWriter, aNameOfAnyCharactersIsWritten)
{
    const QString name = QString::fromUtf8("grün %1 €.net");
    EXPECT_TRUE(dzWriteFile(path(name), "data", nullptr));
    EXPECT_EQ(content(name), QByteArray("data"));
}

TEST_F(FileWriter, aFullDiskLeavesTheOldFileWhole)
{
    put("file", "old content");
    const QByteArray large(100000, 'x');
    EXPECT_TRUE(inChild([&] {
        QString error;
        return limitFileSize(50000) && !dzWriteFile(path("file"), large, &error)
            && error
            == QString("cannot write %1: File too large; free some space or choose another "
                       "place")
                   .arg(path("file"));
    }));
    EXPECT_EQ(content("file"), QByteArray("old content"));
    EXPECT_EQ(names(), QStringList("file")) << "no temporary file stays behind";
}

TEST_F(FileWriter, aFullDiskIsNoticedForFewBytesToo)
{
    put("file", "old content");
    EXPECT_TRUE(
        inChild([&] { return limitFileSize(0) && !dzWriteFile(path("file"), "x", nullptr); }));
    EXPECT_EQ(content("file"), QByteArray("old content"));
    EXPECT_EQ(names(), QStringList("file"));
}

TEST_F(FileWriter, aFullDeviceGivesTheCauseAndStaysADevice)
{
    EXPECT_EQ(writeError("/dev/full"),
        "cannot write /dev/full: No space left on device; free some space or choose another place");
    struct stat status;
    ASSERT_EQ(stat("/dev/full", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST_F(FileWriter, aLinkToADeviceWritesToTheDevice)
{
    ASSERT_EQ(symlink("/dev/full", native("link").constData()), 0);
    EXPECT_EQ(writeError(path("link")),
        "cannot write DIR/link: No space left on device; free some space or choose another place");
    EXPECT_TRUE(QFileInfo(path("link")).isSymLink());
}

TEST_F(FileWriter, aPipeIsWrittenToAndStaysAPipe)
{
    ASSERT_EQ(mkfifo(native("pipe").constData(), 0600), 0);
    const QByteArray data(300000, 'x');
    QByteArray received;
    std::thread reader([&] {
        QString error;
        EXPECT_TRUE(dzReadFile(path("pipe"), data.size(), &received, &error))
            << error.toStdString();
    });
    EXPECT_TRUE(dzWriteFile(path("pipe"), data, nullptr));
    reader.join();
    EXPECT_EQ(received, data);
    struct stat status;
    ASSERT_EQ(stat(native("pipe").constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(FileWriter, standardOutputIsAddedToEvenWhenItIsAFile)
{
    put("output", "earlier\n");
    EXPECT_TRUE(inChild([&] {
        const int file = open(native("output").constData(), O_WRONLY | O_APPEND);
        return dup2(file, STDOUT_FILENO) == STDOUT_FILENO
            && dzWriteFile("/dev/stdout", "later\n", nullptr);
    }));
    EXPECT_EQ(content("output"), QByteArray("earlier\nlater\n"));
    EXPECT_EQ(names(), QStringList("output"));
}

TEST_F(FileWriter, permissionsOfAnExistingFileAreKept)
{
    put("file", "old");
    ASSERT_EQ(chmod(native("file").constData(), 0640), 0);
    EXPECT_TRUE(dzWriteFile(path("file"), "new", nullptr));
    struct stat status;
    ASSERT_EQ(stat(native("file").constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(FileWriter, ownerAndGroupOfAnExistingFileAreKept)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can give files away";
    put(QStringLiteral("file"), "old");
    ASSERT_EQ(chown(native(QStringLiteral("file")).constData(), 1234, 2345), 0);
    ASSERT_EQ(chmod(native(QStringLiteral("file")).constData(), 02754), 0);
    ASSERT_TRUE(dzWriteFile(path(QStringLiteral("file")), "new", nullptr));
    struct stat now = {};
    ASSERT_EQ(stat(native(QStringLiteral("file")).constData(), &now), 0);
    EXPECT_EQ(now.st_uid, 1234u);
    EXPECT_EQ(now.st_gid, 2345u);
    EXPECT_EQ(now.st_mode & 07777, 02754u);
    EXPECT_EQ(content(QStringLiteral("file")), QByteArray("new"));
}

TEST_F(FileWriter, anOwnerThatCannotBeKeptIsAWarning)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can make files of others";
    put(QStringLiteral("file"), "old");
    ASSERT_EQ(chmod(native(QStringLiteral("file")).constData(), 0666), 0);
    ASSERT_EQ(chmod(QFile::encodeName(path(QString())).constData(), 0777), 0);
    // In a process that has given its rights away.
    const pid_t child = fork();
    if (child == 0) {
        if (setgid(2345) != 0 || setuid(1234) != 0)
            _exit(2);
        DzWarningList warnings;
        const DzWarningScope scope(&warnings);
        const bool isWritten = dzWriteFile(path(QStringLiteral("file")), "new", nullptr);
        const bool isTold = warnings.getAll().size() == 1
            && warnings.toLines().first().contains(QLatin1String("owner and group"));
        _exit(isWritten && isTold ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(content(QStringLiteral("file")), QByteArray("new"));
}

TEST_F(FileWriter, extendedAttributesOfAnExistingFileAreKept)
{
    put(QStringLiteral("file"), "old");
    const QByteArray name = native(QStringLiteral("file"));
    if (setxattr(name.constData(), "user.vireo.note", "a\0b", 3, 0) != 0)
        GTEST_SKIP() << "this file system has no extended attributes";
    ASSERT_EQ(setxattr(name.constData(), "user.vireo.empty", "", 0, 0), 0);
    DzWarningList warnings;
    {
        const DzWarningScope scope(&warnings);
        ASSERT_TRUE(dzWriteFile(path(QStringLiteral("file")), "new", nullptr));
    }
    EXPECT_EQ(warnings.toLines(), QStringList());
    char value[8] = {};
    EXPECT_EQ(getxattr(name.constData(), "user.vireo.note", value, sizeof value), 3);
    EXPECT_EQ(QByteArray(value, 3), QByteArray("a\0b", 3));
    EXPECT_EQ(getxattr(name.constData(), "user.vireo.empty", value, sizeof value), 0);
}

TEST_F(FileWriter, otherNamesOfTheFileStayWithTheOldContent)
{
    put(QStringLiteral("file"), "old");
    ASSERT_EQ(link(native(QStringLiteral("file")).constData(),
                  native(QStringLiteral("other")).constData()),
        0);
    ASSERT_TRUE(dzWriteFile(path(QStringLiteral("file")), "new", nullptr));
    EXPECT_EQ(content(QStringLiteral("file")), QByteArray("new"));
    EXPECT_EQ(content(QStringLiteral("other")), QByteArray("old"));
}

TEST_F(FileWriter, aNewFileHasTheUsualPermissions)
{
    const mode_t before = umask(027);
    EXPECT_TRUE(dzWriteFile(path("file"), "new", nullptr));
    umask(before);
    struct stat status;
    ASSERT_EQ(stat(native("file").constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(FileWriter, aChainOfLinksStaysAndItsEndIsReplaced)
{
    put("file", "old");
    ASSERT_EQ(symlink("file", native("inner").constData()), 0);
    ASSERT_EQ(symlink("inner", native("outer").constData()), 0);
    EXPECT_TRUE(dzWriteFile(path("outer"), "new", nullptr));
    EXPECT_EQ(content("file"), QByteArray("new"));
    EXPECT_TRUE(QFileInfo(path("outer")).isSymLink());
    EXPECT_TRUE(QFileInfo(path("inner")).isSymLink());
    EXPECT_FALSE(QFileInfo(path("file")).isSymLink());
}

TEST_F(FileWriter, aLinkToNothingMakesItsTarget)
{
    ASSERT_EQ(symlink("target", native("link").constData()), 0);
    EXPECT_TRUE(dzWriteFile(path("link"), "new", nullptr));
    EXPECT_TRUE(QFileInfo(path("link")).isSymLink());
    EXPECT_EQ(content("target"), QByteArray("new"));
}

TEST_F(FileWriter, linksInACircleAreRefused)
{
    ASSERT_EQ(symlink("b", native("a").constData()), 0);
    ASSERT_EQ(symlink("a", native("b").constData()), 0);
    EXPECT_EQ(
        writeError(path("a")), "cannot write DIR/a: its links form a loop; choose another place");
    EXPECT_EQ(names(), QStringList({ "a", "b" }));
}

TEST_F(FileWriter, aFolderIsNotWritten)
{
    EXPECT_EQ(writeError(path("")), "cannot write DIR: it is a folder; name a file");
    EXPECT_EQ(writeError("/dev"), "cannot write /dev: it is a folder; name a file");
}

TEST_F(FileWriter, anEmptyNameIsRefused)
{
    EXPECT_EQ(writeError(""), "cannot write : it has no name; name a file");
}

TEST_F(FileWriter, aMissingFolderIsNamedAsTheCause)
{
    EXPECT_EQ(writeError(path("none/file")),
        "cannot write DIR/none/file: there is no such folder; make the folder or choose another "
        "place");
}

TEST_F(FileWriter, aFileInPlaceOfAFolderIsRefused)
{
    put("file", "x");
    EXPECT_EQ(writeError(path("file/inner")),
        "cannot write DIR/file/inner: there is no such folder; make the folder or choose another "
        "place");
}

TEST_F(FileWriter, aWriteProtectedFileIsLeftAlone)
{
    put("file", "old");
    ASSERT_EQ(chmod(native("file").constData(), 0444), 0);
    ASSERT_EQ(chmod(native("").constData(), 0777), 0);
    EXPECT_TRUE(inChild([&] {
        QString error;
        return dropRootRights() && !dzWriteFile(path("file"), "new", &error)
            && error
            == QString("cannot write %1: it is write-protected; change the permissions or "
                       "choose another place")
                   .arg(path("file"));
    }));
    EXPECT_EQ(content("file"), QByteArray("old"));
}

TEST_F(FileWriter, aFolderWithoutWriteAccessGivesTheCause)
{
    ASSERT_EQ(chmod(native("").constData(), 0555), 0);
    EXPECT_TRUE(inChild([&] {
        QString error;
        return dropRootRights() && !dzWriteFile(path("file"), "new", &error)
            && error
            == QString("cannot write %1: its folder is write-protected; change the permissions "
                       "or choose another place")
                   .arg(path("file"));
    }));
    ASSERT_EQ(chmod(native("").constData(), 0755), 0);
}

TEST_F(FileWriter, aFileIsReadWhole)
{
    QByteArray data("a\0b", 3);
    data += QByteArray(3000000, 'x');
    put("file", data);
    QByteArray back;
    QString error;
    EXPECT_TRUE(dzReadFile(path("file"), 10000000, &back, &error)) << error.toStdString();
    EXPECT_EQ(back, data);
}

TEST_F(FileWriter, aFileOfTheMaximumSizeIsReadAndALargerOneIsNot)
{
    put("fits", QByteArray(10, 'x'));
    put("large", QByteArray(11, 'x'));
    QByteArray data;
    EXPECT_TRUE(dzReadFile(path("fits"), 10, &data, nullptr));
    EXPECT_EQ(data.size(), 10);
    EXPECT_EQ(readError(path("large"), 10),
        "cannot read DIR/large: it is larger than 10 bytes; choose a smaller file");
}

TEST_F(FileWriter, anEndlessDeviceIsReadUpToTheLimit)
{
    EXPECT_EQ(readError("/dev/zero", 2 * 1024 * 1024),
        "cannot read /dev/zero: it is larger than 2 MiB; choose a smaller file");
}

TEST_F(FileWriter, anEmptyFileIsRead)
{
    put("file", "");
    QByteArray data = "before";
    EXPECT_TRUE(dzReadFile(path("file"), 0, &data, nullptr));
    EXPECT_TRUE(data.isEmpty());
}

TEST_F(FileWriter, aMissingFileIsNotRead)
{
    EXPECT_EQ(readError(path("none")),
        "cannot read DIR/none: No such file or directory; check its name and its permissions");
}

TEST_F(FileWriter, aFolderIsNotRead)
{
    EXPECT_EQ(readError(path("")), "cannot read DIR: it is a folder; name a file");
}

TEST_F(FileWriter, anUnreadableFileIsNotRead)
{
    put("file", "secret");
    ASSERT_EQ(chmod(native("file").constData(), 0), 0);
    ASSERT_EQ(chmod(native("").constData(), 0777), 0);
    EXPECT_TRUE(inChild([&] {
        QByteArray data;
        QString error;
        return dropRootRights() && !dzReadFile(path("file"), 100, &data, &error)
            && error
            == QString("cannot read %1: Permission denied; check its name and its "
                       "permissions")
                   .arg(path("file"));
    }));
}

TEST_F(FileWriter, aReadErrorIsNotTakenForTheEnd)
{
    // Reading the memory of a process at address 0 fails after the file was opened.
    EXPECT_EQ(readError("/proc/self/mem"),
        "cannot read /proc/self/mem: Input/output error; try again or copy it");
}

TEST_F(FileWriter, aFileInSharedMemoryIsReplacedLikeAnyOther)
{
    if (!QDir(QStringLiteral("/dev/shm")).exists())
        GTEST_SKIP() << "this system has no /dev/shm";
    const QTemporaryDir folder(QStringLiteral("/dev/shm/vireo-XXXXXX"));
    const QString path = folder.filePath(QStringLiteral("twice.txt"));
    QString error;
    ASSERT_TRUE(dzWriteFile(path, QByteArrayLiteral("first"), &error)) << error.toStdString();
    ASSERT_TRUE(dzWriteFile(path, QByteArrayLiteral("2nd"), &error)) << error.toStdString();
    QByteArray content;
    ASSERT_TRUE(dzReadFile(path, 100, &content, &error));
    EXPECT_EQ(content, QByteArrayLiteral("2nd"));
}
