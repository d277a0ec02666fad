// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

/// True when some session keeps a copy of a network in the folder of an autosave store.
inline bool holdsCopy(const QString& folder)
{
    const QDir sessions(folder);
    for (const QString& name : sessions.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (!QDir(sessions.filePath(name)).entryList({ QStringLiteral("*.network") }).isEmpty())
            return true;
    return false;
}
