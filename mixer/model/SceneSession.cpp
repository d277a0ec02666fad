// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneSession.h"

#include "dzfileformat.h"
#include "dzfilewriter.h"
#include "dzscene.h"
#include "dzscenefile.h"
#include "dzundostack.h"
#include "dzwarning.h"

#include <QFileInfo>
#include <QUndoStack>
#include <climits>

namespace {

/// What one text can hold.
const qint64 largestCopy = INT_MAX - 4096;

} // namespace

SceneSession::SceneSession(QObject* parent)
    : Work(parent)
{
    connect(dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this, [this] {
        m_steppedSince = true;
        if (m_file)
            emit changed();
    });
}

SceneSession::~SceneSession()
{
}

bool SceneSession::load(const QString& path)
{
    // Looked at before it is read, so that a change of the file from now on is noticed.
    const FileState state = FileState::ofFile(path);
    auto file = std::make_unique<DzSceneFile>();
    if (!file->load(path, dzScene)) {
        m_error = file->getError();
        return false;
    }
    m_warnings = file->getReadWarnings().toLines();
    const QByteArray digest = digestOf(file->saveText());
    m_file = std::move(file);
    m_fileState = state;
    setFile(path, digest);
    return true;
}

bool SceneSession::restore(const QString& copy, const QString& path)
{
    QByteArray text;
    if (!dzReadFile(copy, largestCopy, &text, &m_error))
        return false;
    auto file = std::make_unique<DzSceneFile>();
    if (!file->loadText(text, path, dzScene)) {
        m_error = file->getError();
        return false;
    }
    dzScene->setFilename(path);
    m_warnings = file->getReadWarnings().toLines();
    m_file = std::move(file);
    // What another program wrote since the copy was made is not known: the copy replaces it.
    m_fileState = FileState::ofFile(path);
    setFile(path, QByteArray());
    return true;
}

bool SceneSession::save(const QString& path)
{
    if (!m_file)
        return false;
    if (!m_file->save(path)) {
        m_error = m_file->getError();
        return false;
    }
    m_warnings = m_file->getSaveWarnings().toLines();
    const QByteArray digest = digestOf(m_file->saveText());
    m_fileState = FileState::ofFile(path);
    setFile(path, digest);
    return true;
}

/// The scene is that of the file now; without a digest it is unsaved.
void SceneSession::setFile(const QString& path, const QByteArray& savedDigest)
{
    m_path = QFileInfo(path).absoluteFilePath();
    m_savedDigest = savedDigest;
    m_modified = savedDigest.isEmpty();
    m_steppedSince = false;
    emit modifiedChanged(m_modified);
    if (m_modified)
        emit changed();
    emit fileChanged();
}

QString SceneSession::getTitle() const
{
    return QFileInfo(m_path).fileName();
}

QString SceneSession::getSavePath() const
{
    const bool isWritable
        = DzFileFormats::isUsable(m_path, DzFileKind::scene(), DzFileFormats::Writing);
    return isWritable ? m_path : QString();
}

bool SceneSession::isModified() const
{
    if (m_file && m_steppedSince)
        getText();
    return m_modified;
}

QByteArray SceneSession::getText() const
{
    const QByteArray text = m_file ? m_file->saveText() : QByteArray();
    m_modified = m_file && digestOf(text) != m_savedDigest;
    m_steppedSince = false;
    return text;
}
