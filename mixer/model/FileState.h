// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// Remembers what a file holds, to notice when another program writes it.
class FileState
{
public:
    /// A state of no file, which never changes.
    FileState() {}

    /// What the file holds now, read from it.
    static FileState ofFile(const QString& path);
    /// The file when it holds these bytes.
    static FileState ofBytes(const QString& path, const QByteArray& bytes);

    /// True when the file holds something else now; false when it is gone, or nothing that can be
    /// read at once.
    bool isChanged() const;

private:
    QString m_path;
    QByteArray m_digest;
};

/// A short stand-in for a text, to tell whether it is another one.
QByteArray digestOf(const QByteArray& text);
