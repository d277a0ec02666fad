// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "DataFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

QStringList dataFolders()
{
    QStringList folders;
    const QString named = QString::fromLocal8Bit(qgetenv("VIREO_DATA_DIR"));
    if (!named.isEmpty())
        folders.append(named);
    // Beside the program, so that an installation may be moved as a whole.
    folders.append(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/vireo"));
    return folders;
}

} // namespace

QString findDataFile(const QString& name)
{
    for (const QString& folder : dataFolders()) {
        const QString path = QFileInfo(QDir(folder).filePath(name)).canonicalFilePath();
        if (!path.isEmpty())
            return path;
    }
    return QString();
}

QStringList findExamples()
{
    const QString folder = findDataFile(QStringLiteral("examples"));
    QStringList paths;
    for (const QFileInfo& file :
        QDir(folder).entryInfoList({ QStringLiteral("*.sskn") }, QDir::Files, QDir::Name))
        if (!folder.isEmpty())
            paths.append(file.filePath());
    return paths;
}
