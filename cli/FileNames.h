// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QSet>
#include <QString>

/// Makes file names of any texts, each another one, such as every file system takes.
class FileNames
{
public:
    explicit FileNames(const QString& extension)
        : m_extension(extension)
    {
    }

    /// The text with everything replaced that a file name may not hold, and the extension. A name
    /// that was given already, in whatever case, gets a number.
    QString nameFor(const QString& text);

private:
    QString m_extension;
    // Case-folded: names that were given, and the last number of each repeated one.
    QSet<QString> m_taken;
    QHash<QString, int> m_lastNumber;
};
