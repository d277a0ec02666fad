// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzsettings.h"
#include "dzwarning.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class IDzBrickUser;

/// A brick user's network as a file.
///
/// The file is JSON text: "format" (the brick user's file extension), "version", then the brick
/// user's attributes in the encoding of the host's scene files. What the file holds beyond that is
/// kept and written back, so one object stands for one document through loading and saving.
class DzBrickUserFile
{
public:
    /// The version that this program writes; files of a later one are refused.
    static const int formatVersion = 1;
    /// The largest file that is read, in bytes.
    static const qint64 maximumSize = 512 * 1024 * 1024;

    /// Reads `path` into `user`, replacing its network. On failure false: `user` is unchanged and
    /// getError() says file, place, cause and what to do. Things that were kept without being
    /// understood are warnings.
    bool load(const QString& path, IDzBrickUser* user);
    bool loadText(const QByteArray& text, const QString& name, IDzBrickUser* user);

    /// Writes `user` to `path` by way of a temporary file beside it, so that `path` always is the
    /// old or the new file as a whole. On failure false, with the reason in getError().
    bool save(const QString& path, const IDzBrickUser* user);
    QByteArray saveText(const IDzBrickUser* user) const;
    /// A file of only the bricks with the given numbers and the links among them. What the file
    /// that was read holds beyond its network is left out.
    QByteArray saveText(const IDzBrickUser* user, const QList<uint>& ids) const;

    QString getError() const { return m_error; }
    /// The warnings of the last loading.
    const DzWarningList& getWarningList() const { return m_warnings; }
    /// The same, a line each.
    QStringList getWarnings() const { return m_warnings.toLines(); }

private:
    bool fail(const QString& error);

    /// Unknown members of the file, in place.
    DzSettings m_kept;
    QString m_error;
    DzWarningList m_warnings;
};
