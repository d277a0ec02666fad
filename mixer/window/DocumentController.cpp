// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "DocumentController.h"

#include "AutosaveStore.h"
#include "Autosaver.h"
#include "DataFiles.h"
#include "DocumentTabs.h"
#include "Messages.h"
#include "MixerDocument.h"
#include "NetworkView.h"
#include "OverwriteQuestion.h"
#include "PendingEdits.h"
#include "ProgramSettings.h"
#include "dzelement.h"
#include "dzfileformat.h"
#include "idzbrickuser.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSet>

#include <algorithm>

DocumentController::DocumentController(
    DocumentTabs* tabs, ProgramSettings* settings, AutosaveStore* store, QWidget* window)
    : m_tabs(tabs)
    , m_settings(settings)
    , m_store(store)
    , m_window(window)
    , m_autosaver(new Autosaver(store))
{
    connect(m_tabs, &DocumentTabs::opened, m_autosaver.get(), &Autosaver::watch);
    connect(m_tabs, &DocumentTabs::closed, this, [this](MixerDocument* document) {
        if (!m_tabs->getUnsavedBehindSteps().contains(document))
            m_autosaver->release(document);
    });
    connect(m_autosaver.get(), &Autosaver::failed, this, &DocumentController::message);
    connect(m_tabs, &DocumentTabs::closeRequested, this, &DocumentController::close);
}

DocumentController::~DocumentController()
{
}

std::shared_ptr<MixerDocument> DocumentController::makeDocument()
{
    QString error;
    std::unique_ptr<MixerDocument> document = MixerDocument::create(&error);
    if (!document)
        Messages::showError(m_window, error);
    return std::shared_ptr<MixerDocument>(std::move(document));
}

MixerDocument* DocumentController::show(const std::shared_ptr<MixerDocument>& document)
{
    m_tabs->open(document)->setFocus();
    Messages::showWarnings(m_window,
        tr("Parts of %1 are not understood. They are kept, and saved again:")
            .arg(document->getTitle()),
        document->getWarnings());
    return document.get();
}

MixerDocument* DocumentController::createNew()
{
    const std::shared_ptr<MixerDocument> document = makeDocument();
    if (!document)
        return nullptr;
    const QString start = findDataFile(QStringLiteral("start.sskn"));
    if (start.isEmpty())
        emit message(tr("The network that new documents start with is missing: start.sskn in "
                        "share/vireo. The document is empty."));
    else if (!document->loadTemplate(start))
        Messages::showError(m_window, document->getError());
    ++m_untitledCount;
    document->setTitle(
        m_untitledCount == 1 ? tr("Untitled") : tr("Untitled %1").arg(m_untitledCount));
    return show(document);
}

MixerDocument* DocumentController::open(const QString& path)
{
    if (MixerDocument* present = m_tabs->findPath(path)) {
        m_tabs->setCurrent(present);
        return present;
    }
    const std::shared_ptr<MixerDocument> document = makeDocument();
    if (!document)
        return nullptr;
    if (!document->load(path)) {
        Messages::showError(m_window, document->getError());
        return nullptr;
    }
    remember(document->getPath());
    leavePristine();
    return show(document);
}

MixerDocument* DocumentController::openAsNew(const QString& path)
{
    const std::shared_ptr<MixerDocument> document = makeDocument();
    if (!document)
        return nullptr;
    if (!document->loadTemplate(path)) {
        Messages::showError(m_window, document->getError());
        return nullptr;
    }
    document->setTitle(QFileInfo(path).completeBaseName());
    document->setFallbackFolder(QFileInfo(path).absolutePath());
    leavePristine();
    return show(document);
}

MixerDocument* DocumentController::openUser(IDzBrickUser* user, const QString& title)
{
    auto document = std::make_shared<MixerDocument>(user);
    leavePristine();
    document->setTitle(freeTitle(title));
    document->markUnsaved();
    return show(document);
}

/// The title, with a number where another document has it.
QString DocumentController::freeTitle(const QString& title) const
{
    QSet<QString> taken;
    for (const MixerDocument* document : m_tabs->getDocuments())
        taken.insert(document->getTitle());
    QString free = title;
    for (int number = 2; taken.contains(free); ++number)
        free = tr("%1 %2").arg(title).arg(number);
    return free;
}

QStringList DocumentController::askForFiles() const
{
    const MixerDocument* current = m_tabs->getCurrent();
    return QFileDialog::getOpenFileNames(m_window, tr("Open Networks and Scenes"),
        current ? current->getFolder() : QString(),
        DzFileFormats::getDialogFilter(
            { DzFileKind::network(), DzFileKind::scene() }, DzFileFormats::Reading));
}

/// A fresh tab that nobody touched makes room for what is opened.
void DocumentController::leavePristine()
{
    commitPendingEdits();
    MixerDocument* current = m_tabs->getCurrent();
    if (current && current->isPristine())
        m_tabs->close(current, false);
}

bool DocumentController::save(MixerDocument* document)
{
    if (!document)
        return false;
    if (document->getPath().isEmpty())
        return saveAs(document);
    if (document->isFileChanged())
        return saveOverChanged(document);
    return saveTo(document, document->getPath());
}

bool DocumentController::saveOverChanged(MixerDocument* document)
{
    switch (askToOverwrite(m_window, document->getTitle())) {
    case OverwriteAnswer::Overwrite:
        return saveTo(document, document->getPath());
    case OverwriteAnswer::SaveAs:
        return saveAs(document);
    default:
        return false;
    }
}

bool DocumentController::saveAs(MixerDocument* document)
{
    if (!document)
        return false;
    const QString extension = document->getUser()->getExtension();
    QFileDialog dialog(m_window, tr("Save Network"), document->getFolder(),
        DzFileFormats::getDialogFilter({ DzFileKind::network() }, DzFileFormats::Writing));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(extension);
    dialog.selectFile(document->getPath().isEmpty()
            ? document->getBaseName() + QLatin1Char('.') + extension
            : document->getPath());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    return saveTo(document, dialog.selectedFiles().first());
}

bool DocumentController::saveTo(MixerDocument* document, const QString& path)
{
    commitPendingEdits();
    const MixerDocument* other = m_tabs->findPath(path);
    if (other && other != document) {
        Messages::showError(m_window,
            tr("%1 is open in another tab. Save under another name, or close that tab first.")
                .arg(path));
        return false;
    }
    if (!document->save(path)) {
        Messages::showError(m_window, document->getError());
        return false;
    }
    remember(document->getPath());
    emit message(tr("Saved %1.").arg(document->getPath()));
    return true;
}

DocumentController::Answer DocumentController::askToSave(MixerDocument* document)
{
    m_tabs->setCurrent(document);
    QMessageBox box(QMessageBox::Question, tr("Save the Network?"),
        tr("Save the changes to \"%1\"?").arg(document->getTitle()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return Save;
    case QMessageBox::Discard:
        return Discard;
    default:
        return Stay;
    }
}

bool DocumentController::close(MixerDocument* document)
{
    if (!document)
        return false;
    commitPendingEdits();
    if (document->isModified()) {
        const Answer answer = askToSave(document);
        if (answer == Stay || (answer == Save && !save(document)))
            return false;
    }
    m_tabs->close(document, !document->isPristine());
    return true;
}

bool DocumentController::mayLeave()
{
    commitPendingEdits();
    for (MixerDocument* document : m_tabs->getDocuments() + m_tabs->getUnsavedBehindSteps()) {
        if (!document->isModified())
            continue;
        const Answer answer = askToSave(document);
        if (answer == Stay || (answer == Save && !save(document)))
            return false;
    }
    return true;
}

bool DocumentController::restore(const RestorableWork& work)
{
    const std::shared_ptr<MixerDocument> document = makeDocument();
    if (!document)
        return false;
    // The newest copy that can be read.
    const bool isRead = std::any_of(work.files.begin(), work.files.end(),
        [&](const QString& file) { return document->restore(file, work.path, work.title); });
    if (!isRead) {
        Messages::showError(m_window, document->getError());
        return false;
    }
    leavePristine();
    // What the file holds is older than the copy.
    MixerDocument* present = m_tabs->findPath(document->getPath());
    if (present && !present->isModified())
        m_tabs->close(present, false);
    show(document);
    // It is kept under the new name before the old copies go.
    if (m_autosaver->keepNow(document.get()))
        m_store->discard(work);
    return true;
}

void DocumentController::remember(const QString& path)
{
    m_settings->addRecentFile(path);
    emit recentFilesChanged();
}
