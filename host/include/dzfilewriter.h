// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// Writes `data` to `path` as a whole: to a temporary file beside it that is flushed to disk and
/// renamed. Permissions, owner, group and extended attributes of a file that is replaced are kept
/// where the system allows it; what it does not is a warning. Other names of the same file, hard
/// links, stay with the old content. A path that exists and is no regular file (a pipe, a device)
/// is written directly. On failure false, `error` saying file, cause and what to do, and the old
/// file is untouched.
bool dzWriteFile(const QString& path, const QByteArray& data, QString* error);

/// Reads the file at `path` whole, up to `maximumSize` bytes. On failure false, with file, cause
/// and what to do in `error`.
bool dzReadFile(const QString& path, qint64 maximumSize, QByteArray* data, QString* error);
