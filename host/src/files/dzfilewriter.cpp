// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfilewriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <new>
#ifdef Q_OS_UNIX
#include <csignal>
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
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeAll(&file, data)
        || !file.commit())
        return failWithFileError(path, file, error);
    return true;
}

QString sizeText(qint64 bytes)
{
    const qint64 mebibyte = 1 << 20;
    return bytes > 0 && bytes % mebibyte == 0 ? text("%1 MiB").arg(bytes / mebibyte)
                                              : text("%1 bytes").arg(bytes);
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
