// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfilewriter.h"

#include "dzwarning.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <new>
#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

namespace {

/// Links to links that are followed; the system itself follows as many.
const int longestLinkChain = 40;

const qint64 readBlockSize = 1 << 20;

QString text(const char* source)
{
    return QCoreApplication::translate("DzFileWriter", source);
}

bool failWriting(const QString& path, const QString& cause, const QString& advice, QString* error)
{
    if (error)
        *error = text("cannot write %1: %2; %3").arg(path, cause, advice);
    return false;
}

bool failReading(const QString& path, const QString& cause, const QString& advice, QString* error)
{
    if (error)
        *error = text("cannot read %1: %2; %3").arg(path, cause, advice);
    return false;
}

bool failWithFileError(const QString& path, const QFileDevice& file, QString* error)
{
    return failWriting(
        path, file.errorString(), text("free some space or choose another place"), error);
}

bool failForbidden(const QString& path, const QString& cause, QString* error)
{
    return failWriting(path, cause, text("change the permissions or choose another place"), error);
}

/// These names stand for what a process has open, even where that is a file.
bool isSystemPath(const QString& path)
{
    const QString clean = QDir::cleanPath(path);
    return clean == QLatin1String("/dev/stdout") || clean == QLatin1String("/dev/stderr")
        || clean.startsWith(QLatin1String("/dev/fd/")) || clean.startsWith(QLatin1String("/proc/"));
}

/// The file that is to be replaced: the end of a chain of links, whether there is a file or not.
QString followLinks(const QString& path)
{
    QFileInfo info(path);
    for (int i = 0; i < longestLinkChain && info.isSymLink() && !isSystemPath(info.filePath()); ++i)
        info.setFile(info.symLinkTarget());
    return info.filePath();
}

/// Writes to an unbuffered file. A disk that fills up takes a part first: only writing the rest
/// gives the cause.
bool writeAll(QFileDevice* file, const QByteArray& data)
{
    qint64 done = 0;
    while (done < data.size()) {
        const qint64 written = file->write(data.constData() + done, data.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

/// Writes to what is there: a pipe or a device must never be replaced by a file.
bool writeDirectly(const QString& path, const QByteArray& data, QString* error)
{
    QFile file(path);
    QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    // Standard output may be a file that others have written to before.
    if (QFileInfo(path).isFile())
        mode |= QIODevice::Append;
    if (!file.open(mode) || !writeAll(&file, data))
        return failWithFileError(path, file, error);
    return true;
}

/// Keeps Ctrl+C waiting for a scope, so that no half-written temporary file stays behind.
class InterruptBlock
{
public:
#ifdef Q_OS_UNIX
    InterruptBlock()
    {
        sigset_t interrupt;
        sigemptyset(&interrupt);
        sigaddset(&interrupt, SIGINT);
        pthread_sigmask(SIG_BLOCK, &interrupt, &m_before);
    }
    ~InterruptBlock()
    {
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

private:
    sigset_t m_before;
#else
    InterruptBlock()
    {
    }
    ~InterruptBlock()
    {
    }
#endif
};

#ifdef Q_OS_UNIX

/// Gives the new file owner and group of the old one, as far as the system lets us.
void keepOwner(const QString& path, int oldFile, int newFile)
{
    struct stat before = {};
    struct stat now = {};
    if (fstat(oldFile, &before) != 0 || fstat(newFile, &now) != 0
        || (before.st_uid == now.st_uid && before.st_gid == now.st_gid))
        return;
    const uid_t unchanged = static_cast<uid_t>(-1);
    const bool hasBoth = fchown(newFile, before.st_uid, before.st_gid) == 0;
    const bool hasGroup
        = hasBoth || fchown(newFile, unchanged, before.st_gid) == 0 || before.st_gid == now.st_gid;
    // Changing owners takes some permissions away.
    if (fchmod(newFile, before.st_mode & 07777) != 0 || !hasBoth)
        dzWarn({ path,
            hasGroup ? text("the owner of the file could not be kept")
                     : text("owner and group of the file could not be kept"),
            text("it is yours now; give it back with chown") });
}

#endif
#ifdef Q_OS_LINUX

/// Names of a file's extended attributes.
QList<QByteArray> attributeNames(int file)
{
    const ssize_t size = flistxattr(file, nullptr, 0);
    if (size <= 0)
        return {};
    QByteArray names(static_cast<int>(size), '\0');
    const ssize_t used = flistxattr(file, names.data(), static_cast<std::size_t>(size));
    names.truncate(used < 0 ? 0 : static_cast<int>(used));
    QList<QByteArray> list = names.split('\0');
    list.removeAll(QByteArray());
    return list;
}

/// Value of an extended attribute; null when it cannot be read.
QByteArray attributeValue(int file, const QByteArray& name)
{
    const ssize_t size = fgetxattr(file, name.constData(), nullptr, 0);
    if (size < 0)
        return QByteArray();
    QByteArray value(static_cast<int>(size), '\0');
    const ssize_t used
        = fgetxattr(file, name.constData(), value.data(), static_cast<std::size_t>(size));
    return used == size ? value : QByteArray();
}

/// Gives the new file the extended attributes of the old one: notes of programs, lists of who may.
void keepAttributes(const QString& path, int oldFile, int newFile)
{
    QStringList lost;
    for (const QByteArray& name : attributeNames(oldFile)) {
        const QByteArray value = attributeValue(oldFile, name);
        const QByteArray given = attributeValue(newFile, name);
        if (!value.isNull() && !given.isNull() && value == given)
            continue;
        const bool isKept = !value.isNull()
            && fsetxattr(newFile, name.constData(), value.constData(),
                   static_cast<std::size_t>(value.size()), 0)
                == 0;
        if (!isKept)
            lost.append(QString::fromUtf8(name));
    }
    if (!lost.isEmpty())
        dzWarn({ path,
            text("extended attributes of the file could not be kept: %1")
                .arg(lost.join(QLatin1String(", "))),
            text("set them again") });
}

#endif

/// Gives the new file what the old one had beside its content. Permissions are kept by QSaveFile.
void keepMetadata(const QString& path, const QString& target, const QSaveFile& file)
{
#ifdef Q_OS_UNIX
    const int oldFile
        = open(QFile::encodeName(target).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (oldFile < 0)
        return;
    keepOwner(path, oldFile, file.handle());
#ifdef Q_OS_LINUX
    keepAttributes(path, oldFile, file.handle());
#endif
    close(oldFile);
#else
    Q_UNUSED(path)
    Q_UNUSED(target)
    Q_UNUSED(file)
#endif
}

/// Brings the new name to disk too, so that it outlives a power cut. Some file systems know no such
/// thing for folders; that is no fault of the file's.
void syncFolder(const QString& folder)
{
#ifdef Q_OS_UNIX
    const int handle
        = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    if (fsync(handle) != 0 && errno != EINVAL && errno != EROFS && errno != ENOTSUP)
        dzWarn({ folder,
            text("the folder could not be written to disk: %1")
                .arg(QString::fromLocal8Bit(std::strerror(errno))),
            text("check the disk") });
    close(handle);
#else
    Q_UNUSED(folder)
#endif
}

bool replaceFile(const QString& path, const QString& target, const QByteArray& data, QString* error)
{
    const QFileInfo info(target);
    if (!info.absoluteDir().exists())
        return failWriting(path, text("there is no such folder"),
            text("make the folder or choose another place"), error);
    if (info.exists() && !info.isWritable())
        return failForbidden(path, text("it is write-protected"), error);
    if (!QFileInfo(info.absolutePath()).isWritable())
        return failForbidden(path, text("its folder is write-protected"), error);
    const InterruptBlock block;
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeAll(&file, data))
        return failWithFileError(path, file, error);
    if (info.exists())
        keepMetadata(path, target, file);
    if (!file.commit())
        return failWithFileError(path, file, error);
    syncFolder(info.absolutePath());
    return true;
}

/// Limits are round numbers, or so large that a part of one says nothing.
QString sizeText(qint64 bytes)
{
    const qint64 mebibyte = 1 << 20;
    return bytes < mebibyte ? text("%1 bytes").arg(bytes) : text("%1 MiB").arg(bytes / mebibyte);
}

} // namespace

bool dzWriteFile(const QString& path, const QByteArray& data, QString* error)
{
    const QString target = followLinks(path);
    const QFileInfo info(target);
    if (path.isEmpty() || info.isDir())
        return failWriting(path, path.isEmpty() ? text("it has no name") : text("it is a folder"),
            text("name a file"), error);
    if (info.isSymLink() && !isSystemPath(target))
        return failWriting(
            path, text("its links form a loop"), text("choose another place"), error);
    if (isSystemPath(target) || (info.exists() && !info.isFile()))
        return writeDirectly(path, data, error);
    return replaceFile(path, target, data, error);
}

bool dzReadFile(const QString& path, qint64 maximumSize, QByteArray* data, QString* error)
{
    const QFileInfo info(path);
    if (info.isDir())
        return failReading(path, text("it is a folder"), text("name a file"), error);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failReading(
            path, file.errorString(), text("check its name and its permissions"), error);
    const auto failTooLarge = [&] {
        return failReading(path, text("it is larger than %1").arg(sizeText(maximumSize)),
            text("choose a smaller file"), error);
    };
    // What has no size, a pipe or a device, says 0.
    if (file.size() > maximumSize)
        return failTooLarge();
    try {
        QByteArray content;
        content.reserve(static_cast<int>(file.size()));
        // Block by block, since a pipe neither has a size nor gives all at once.
        for (;;) {
            const QByteArray block = file.read(readBlockSize);
            if (file.error() != QFileDevice::NoError)
                return failReading(path, file.errorString(), text("try again or copy it"), error);
            if (block.isEmpty())
                break;
            // Compared first: a text cannot grow beyond what it can hold.
            if (block.size() > maximumSize - content.size())
                return failTooLarge();
            content += block;
        }
        *data = content;
    } catch (const std::bad_alloc&) {
        return failReading(path, text("there is not enough memory for it"),
            text("close other programs or choose a smaller file"), error);
    }
    return true;
}
