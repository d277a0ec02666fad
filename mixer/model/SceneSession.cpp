// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneSession.h"

#include "dzscene.h"
#include "dzscenefile.h"
#include "dzundostack.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QUndoStack>

SceneSession::SceneSession(QObject* parent)
    : QObject(parent)
{
    connect(dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this,
        [this] { m_steppedSince = true; });
}

SceneSession::~SceneSession()
{
}

bool SceneSession::load(const QString& path)
{
    auto file = std::make_unique<DzSceneFile>();
    if (!file->load(path, dzScene)) {
        m_error = file->getError();
        return false;
    }
    m_file = std::move(file);
    m_path = QFileInfo(path).absoluteFilePath();
    setSaved();
    emit changed();
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
    m_path = QFileInfo(path).absoluteFilePath();
    setSaved();
    emit changed();
    return true;
}

QString SceneSession::getSavePath() const
{
    return m_path.endsWith(QLatin1String(".duf"), Qt::CaseInsensitive) ? m_path : QString();
}

QStringList SceneSession::getWarnings() const
{
    return m_file ? m_file->getWarnings() : QStringList();
}

bool SceneSession::isModified()
{
    if (m_file && m_steppedSince) {
        m_modified = getDigest() != m_savedDigest;
        m_steppedSince = false;
    }
    return m_modified;
}

void SceneSession::setSaved()
{
    m_savedDigest = getDigest();
    m_modified = false;
    m_steppedSince = false;
}

QByteArray SceneSession::getDigest()
{
    return QCryptographicHash::hash(m_file->saveText(), QCryptographicHash::Sha1);
}

bool SceneSession::isSceneFile(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("duf") || suffix == QLatin1String("dsf")
        || suffix == QLatin1String("obj");
}

QString SceneSession::fileFilter()
{
    return tr("Scenes (*.duf *.obj);;All files (*)");
}
