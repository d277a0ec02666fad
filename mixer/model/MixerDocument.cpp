// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MixerDocument.h"

#include "BrickSelection.h"
#include "BrickUsers.h"
#include "NetworkEdit.h"
#include "NetworkWatcher.h"
#include "dzelement.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace {

/// Milliseconds of rest before the text is compared, which costs as much as saving.
const int comparisonDelay = 150;

} // namespace

std::unique_ptr<MixerDocument> MixerDocument::create(QString* error)
{
    IDzBrickUser* user = makeBrickUser();
    if (!user) {
        if (error)
            *error = tr("No loaded module offers networks: put the module beside the program, or "
                        "name its folder in VIREO_PLUGIN_PATH.");
        return nullptr;
    }
    auto document = std::make_unique<MixerDocument>(user);
    releaseBrickUser(user);
    return document;
}

MixerDocument::MixerDocument(IDzBrickUser* user)
    : m_user(user)
    , m_edit(new NetworkEdit(user))
    , m_selection(new BrickSelection)
    , m_watcher(new NetworkWatcher(user))
    , m_key(QUuid::createUuid().toString(QUuid::WithoutBraces))
    , m_title(user->getBrickUserName())
{
    keepBrickUser(user);
    connect(
        m_watcher.get(), &NetworkWatcher::structureChanged, this, &MixerDocument::structureChanged);
    connect(
        m_watcher.get(), &NetworkWatcher::propertyChanged, this, &MixerDocument::propertyChanged);
    connect(
        m_watcher.get(), &NetworkWatcher::structureChanged, this, &MixerDocument::networkChanged);
    connect(
        m_watcher.get(), &NetworkWatcher::propertyChanged, this, &MixerDocument::networkChanged);
    connect(m_edit.get(), &NetworkEdit::bricksMoved, this, &MixerDocument::networkChanged);
    connect(m_edit.get(), &NetworkEdit::brickSettingsChanged, this, &MixerDocument::networkChanged);
    m_comparison.setSingleShot(true);
    connect(&m_comparison, &QTimer::timeout, this, &MixerDocument::compareWithSaved);
    m_savedDigest = getDigest();
}

MixerDocument::~MixerDocument()
{
    // Those that look at the network go before it.
    m_watcher.reset();
    m_selection.reset();
    m_edit.reset();
    releaseBrickUser(m_user);
}

QString MixerDocument::getFolder() const
{
    return m_path.isEmpty() ? m_fallbackFolder : QFileInfo(m_path).absolutePath();
}

QString MixerDocument::getTitle() const
{
    return m_path.isEmpty() ? m_title : QFileInfo(m_path).fileName();
}

void MixerDocument::setTitle(const QString& title)
{
    m_title = title;
    emit titleChanged();
}

void MixerDocument::markUnsaved()
{
    // No text is equal to this one, so undo does not lead back to it.
    m_savedDigest.clear();
    setModified(true);
    emit changed();
}

void MixerDocument::setModified(bool modified)
{
    m_everModified = m_everModified || modified;
    if (modified == m_modified)
        return;
    m_modified = modified;
    emit modifiedChanged(modified);
}

bool MixerDocument::load(const QString& path)
{
    if (!m_file.load(path, m_user)) {
        m_error = m_file.getError();
        return false;
    }
    m_path = QFileInfo(path).absoluteFilePath();
    replaced();
    emit titleChanged();
    return true;
}

bool MixerDocument::loadText(const QByteArray& text, const QString& name)
{
    if (!m_file.loadText(text, name, m_user)) {
        m_error = m_file.getError();
        return false;
    }
    replaced();
    return true;
}

bool MixerDocument::loadTemplate(const QString& path)
{
    if (!m_file.load(path, m_user)) {
        m_error = m_file.getError();
        return false;
    }
    m_user->setIdentifier(QUuid::createUuid());
    replaced();
    return true;
}

bool MixerDocument::restore(const QString& copy, const QString& path, const QString& title)
{
    if (!m_file.load(copy, m_user)) {
        m_error = m_file.getError();
        return false;
    }
    m_path = path;
    m_title = title;
    replaced();
    markUnsaved();
    emit titleChanged();
    return true;
}

bool MixerDocument::save(const QString& path)
{
    if (!m_file.save(path, m_user)) {
        m_error = m_file.getError();
        return false;
    }
    m_path = QFileInfo(path).absoluteFilePath();
    m_savedDigest = getDigest();
    setModified(false);
    emit titleChanged();
    return true;
}

QByteArray MixerDocument::getText() const
{
    return m_file.saveText(m_user);
}

QByteArray MixerDocument::getDigest() const
{
    return QCryptographicHash::hash(getText(), QCryptographicHash::Sha1);
}

void MixerDocument::replaced()
{
    m_watcher->rescan();
    m_edit->arrangeUnplaced();
    m_comparison.stop();
    m_savedDigest = getDigest();
    m_everModified = false;
    setModified(false);
}

void MixerDocument::networkChanged()
{
    // Undo may lead back to what was saved; any other change leads away from it.
    if (dzUndoStack->isInUndoRedo())
        m_comparison.start(comparisonDelay);
    else
        setModified(true);
    emit changed();
}

void MixerDocument::compareWithSaved()
{
    setModified(getDigest() != m_savedDigest);
}
