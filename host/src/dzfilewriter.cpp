// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfilewriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzFileWriter", source);
}

bool failWriting(const QString& path, const QString& cause, QString* error)
{
    *error = text("cannot write %1: %2; the old content is untouched: free some space or choose "
                  "another place")
                 .arg(path, cause);
    return false;
}

bool writeAll(QFileDevice* file, const QByteArray& data)
{
    return file->write(data) == data.size() && file->flush();
}

} // namespace

bool dzWriteFile(const QString& path, const QByteArray& data, QString* error)
{
    const QFileInfo info(path);
    if (info.isDir())
        return failWriting(path, text("it is a folder"), error);
    if (info.exists() && !info.isFile()) {
        // A pipe or a device must be written itself, never replaced.
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || !writeAll(&file, data))
            return failWriting(path, file.errorString(), error);
        return true;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !writeAll(&file, data) || !file.commit())
        return failWriting(path, file.errorString(), error);
    return true;
}

bool dzReadFile(const QString& path, qint64 maximumSize, QByteArray* data, QString* error)
{
    const auto refuse = [&](const QString& cause) {
        *error = text("cannot read %1: %2").arg(path, cause);
        return false;
    };
    const QFileInfo info(path);
    if (info.isDir())
        return refuse(text("it is a folder; name a file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refuse(text("%1; check the name and the permissions").arg(file.errorString()));
    // A pipe has no size: it is read up to the limit.
    const QByteArray content = file.read(maximumSize + 1);
    if (file.error() != QFileDevice::NoError)
        return refuse(file.errorString());
    if (content.size() > maximumSize)
        return refuse(text("it is larger than %1 MB").arg(maximumSize / (1024 * 1024)));
    *data = content;
    return true;
}
