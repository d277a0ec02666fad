// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FileState.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace {

/// Of the bytes of a file; empty when there is none, or it is nothing that can be read at once.
QByteArray digestOfFile(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return QByteArray();
    QCryptographicHash hash(QCryptographicHash::Sha1);
    return hash.addData(&file) ? hash.result() : QByteArray();
}

} // namespace

FileState FileState::ofFile(const QString& path)
{
    FileState state;
    state.m_path = path;
    state.m_digest = digestOfFile(path);
    return state;
}

FileState FileState::ofBytes(const QString& path, const QByteArray& bytes)
{
    FileState state;
    state.m_path = path;
    state.m_digest = digestOf(bytes);
    return state;
}

bool FileState::isChanged() const
{
    if (m_path.isEmpty())
        return false;
    const QByteArray now = digestOfFile(m_path);
    return !now.isEmpty() && now != m_digest;
}

QByteArray digestOf(const QByteArray& text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1);
}
