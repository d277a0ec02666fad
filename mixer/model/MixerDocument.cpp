// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MixerDocument.h"

#include "BrickSelection.h"
#include "BrickUsers.h"
#include "NetworkEdit.h"
#include "NetworkWatcher.h"
#include "dzelement.h"
#include "dzfilewriter.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QFileInfo>
#include <QUndoStack>

namespace {

/// Milliseconds of rest before the text is compared, which costs as much as saving.
const int comparisonDelay = 150;

/// The last step that was done and not undone; null when there is none.
const QUndoCommand* lastStep()
{
    const QUndoStack* stack = dzUndoStack->getQtStack();
    return stack->command(stack->index() - 1);
}

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
    // After the watcher, which looks at this signal for bricks that came unannounced.
    connect(
        dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this, &MixerDocument::stepChanged);
    m_comparison.setSingleShot(true);
    connect(&m_comparison, &QTimer::timeout, this, &MixerDocument::compareWithSaved);
    setSaved(getText());
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

QString MixerDocument::getBaseName() const
{
    if (!m_path.isEmpty())
        return QFileInfo(m_path).completeBaseName();
    // Surfaces, and what is called as they are, may have any name.
    return QString(m_title).replace(QLatin1Char('/'), QLatin1Char('-'));
}

void MixerDocument::markUnsaved()
{
    // No text is equal to this one, so undo does not lead back to it.
    m_savedDigest.clear();
    m_savedSteps.clear();
    m_comparison.stop();
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
    // Read once, so that a change of the file from now on is noticed.
    QByteArray text;
    if (!dzReadFile(path, DzBrickUserFile::maximumSize, &text, &m_error) || !loadText(text, path))
        return false;
    m_path = QFileInfo(path).absoluteFilePath();
    m_fileState = FileState::ofBytes(m_path, text);
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
    m_fileState = FileState::ofFile(path);
    m_title = title;
    replaced();
    markUnsaved();
    emit titleChanged();
    return true;
}

bool MixerDocument::save(const QString& path)
{
    const QByteArray text = getText();
    if (!dzWriteFile(path, text, &m_error))
        return false;
    m_path = QFileInfo(path).absoluteFilePath();
    m_fileState = FileState::ofBytes(m_path, text);
    setSaved(text);
    setModified(false);
    emit titleChanged();
    return true;
}

QByteArray MixerDocument::getText() const
{
    return m_file.saveText(m_user);
}

void MixerDocument::setSaved(const QByteArray& text)
{
    m_comparison.stop();
    m_savedDigest = digestOf(text);
    m_step = lastStep();
    m_savedSteps = { m_step };
    m_changedSinceStep = false;
    m_changedUnseen = false;
}

void MixerDocument::replaced()
{
    m_watcher->rescan();
    m_edit->arrangeUnplaced();
    setSaved(getText());
    m_everModified = false;
    setModified(false);
}

void MixerDocument::networkChanged()
{
    m_changedSinceStep = true;
    // Undo may lead back to what was saved, which is found out when it has: till then the change
    // counts, for the window may be closed at any moment.
    setModified(true);
    // What changes while the stack takes nothing may be taken back without a step.
    if (dzUndoStack->isLocked()) {
        m_changedUnseen = true;
        m_comparison.start(comparisonDelay);
    }
    emit changed();
}

void MixerDocument::stepChanged()
{
    const QUndoCommand* step = lastStep();
    // The steps of other documents leave this one as it is.
    if (!m_changedSinceStep && m_savedSteps.contains(m_step))
        m_savedSteps.insert(step);
    m_step = step;
    m_changedSinceStep = false;
    if (m_modified && m_savedSteps.contains(step))
        m_comparison.start(comparisonDelay);
    else if (!m_changedUnseen)
        m_comparison.stop();
}

void MixerDocument::compareWithSaved()
{
    // A drag that goes on is compared when it is over.
    if (dzUndoStack->isLocked() || dzUndoStack->getHoldDepth() > 0) {
        m_comparison.start(comparisonDelay);
        return;
    }
    m_changedUnseen = false;
    const bool isSaved = digestOf(getText()) == m_savedDigest;
    if (isSaved)
        m_savedSteps.insert(m_step);
    else
        m_savedSteps.remove(m_step);
    setModified(!isSaved);
}
