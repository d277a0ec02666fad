// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneController.h"

#include "ApplyDialog.h"
#include "ApplyPreview.h"
#include "AutosaveStore.h"
#include "Autosaver.h"
#include "BrickUsers.h"
#include "ElementLabel.h"
#include "Messages.h"
#include "MixerDocument.h"
#include "OverwriteQuestion.h"
#include "PendingEdits.h"
#include "ProgramSettings.h"
#include "SceneSession.h"
#include "dzelement.h"
#include "dzfileformat.h"
#include "dzmaterial.h"
#include "dznode.h"
#include "dzscene.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include <algorithm>

namespace {

/// What a surface is called, with its node before it.
QString nameOf(const DzSurface& surface)
{
    const QString name = labelOf(surface.material);
    return surface.node ? labelOf(surface.node) + QLatin1Char(' ') + name : name;
}

/// While it lives, one surface alone is selected.
class OnlySelected
{
public:
    explicit OnlySelected(DzMaterial* only)
    {
        for (const DzSurface& surface : DzScene::getSelectedMaterials()) {
            m_before.append(surface.material);
            surface.material->select(false);
        }
        only->select(true);
        m_only = only;
    }
    ~OnlySelected()
    {
        if (m_only)
            m_only->select(false);
        for (const QPointer<DzMaterial>& surface : qAsConst(m_before))
            if (surface)
                surface->select(true);
    }

private:
    Q_DISABLE_COPY(OnlySelected)

    QPointer<DzMaterial> m_only;
    QVector<QPointer<DzMaterial>> m_before;
};

/// What the network is called that new documents start with.
const QLatin1String startName("Untitled");

/// What a network is called that nobody gave a name.
QString nameOfNewUser(const IDzBrickUser* maker)
{
    IDzBrickUser* fresh = maker->createBrickUser();
    keepBrickUser(fresh);
    const QString name = fresh->getBrickUserName();
    releaseBrickUser(fresh);
    return name;
}

} // namespace

SceneController::SceneController(ProgramSettings* settings, AutosaveStore* store, QWidget* window)
    : m_settings(settings)
    , m_store(store)
    , m_window(window)
    , m_session(new SceneSession)
    , m_autosaver(new Autosaver(store))
{
    m_autosaver->watch(m_session.get());
    connect(m_autosaver.get(), &Autosaver::failed, this, &SceneController::message);
}

SceneController::~SceneController()
{
}

bool SceneController::open(const QString& path)
{
    if (!mayLeave())
        return false;
    if (!m_session->load(path)) {
        Messages::showError(m_window, m_session->getError());
        return false;
    }
    remember();
    emit opened();
    emit message(tr("Opened %1.").arg(path));
    Messages::showWarnings(
        m_window, tr("Not everything in %1 was read:").arg(path), m_session->getWarnings());
    return true;
}

void SceneController::openWithDialog()
{
    const QString path = QFileDialog::getOpenFileName(m_window, tr("Open Scene"),
        QFileInfo(m_session->getPath()).absolutePath(),
        DzFileFormats::getDialogFilter({ DzFileKind::scene() }, DzFileFormats::Reading));
    if (!path.isEmpty())
        open(path);
}

bool SceneController::restore(const RestorableWork& work)
{
    if (!mayLeave())
        return false;
    // The newest copy that can be read.
    const bool isRead = std::any_of(work.files.begin(), work.files.end(),
        [&](const QString& file) { return m_session->restore(file, work.path); });
    if (!isRead) {
        Messages::showError(m_window, m_session->getError());
        return false;
    }
    emit opened();
    // It is kept under the new name before the old copies go.
    if (m_autosaver->keepNow(m_session.get()))
        m_store->discard(work);
    return true;
}

bool SceneController::save()
{
    const QString path = m_session->getSavePath();
    if (path.isEmpty())
        return saveAs();
    return m_session->isFileChanged() ? saveOverChanged() : saveTo(path);
}

bool SceneController::saveOverChanged()
{
    switch (askToOverwrite(m_window, m_session->getTitle())) {
    case OverwriteAnswer::Overwrite:
        return saveTo(m_session->getSavePath());
    case OverwriteAnswer::SaveAs:
        return saveAs();
    default:
        return false;
    }
}

bool SceneController::saveAs()
{
    if (!m_session->hasScene())
        return false;
    const QFileInfo before(m_session->getPath());
    const QString suffix = DzFileFormats::getUsualSuffix(DzFileKind::scene());
    QFileDialog dialog(m_window, tr("Save Scene"), before.absolutePath(),
        DzFileFormats::getDialogFilter({ DzFileKind::scene() }, DzFileFormats::Writing));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(before.completeBaseName() + QLatin1Char('.') + suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    return saveTo(dialog.selectedFiles().first());
}

bool SceneController::saveTo(const QString& path)
{
    if (!m_session->save(path)) {
        Messages::showError(m_window, m_session->getError());
        return false;
    }
    remember();
    emit message(tr("Saved %1.").arg(path));
    Messages::showWarnings(
        m_window, tr("Not everything could be saved in %1:").arg(path), m_session->getWarnings());
    return true;
}

bool SceneController::keepNow()
{
    return m_autosaver->keepNow(m_session.get());
}

void SceneController::remember()
{
    m_settings->addRecentFile(m_session->getPath());
    emit recentFilesChanged();
}

bool SceneController::mayLeave()
{
    if (!m_session->isModified())
        return true;
    QMessageBox box(QMessageBox::Question, tr("Save the Scene?"),
        tr("Save the changes to the scene \"%1\"?").arg(m_session->getTitle()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

bool SceneController::confirmApply(MixerDocument* document)
{
    if (!m_settings->isApplyListShown())
        return true;
    ApplyDialog dialog(document->getTitle(), previewApply(document->getUser()), m_window);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (!dialog.isToBeShownAgain()) {
        m_settings->setApplyListShown(false);
        emit applyListShownChanged(false);
    }
    return true;
}

bool SceneController::apply(MixerDocument* document)
{
    const int count = selectedSurfaces().size();
    if (!document || count == 0) {
        emit message(tr("Select surfaces in the Surfaces panel first."));
        return false;
    }
    commitPendingEdits();
    if (!confirmApply(document))
        return false;
    DzUndoStackHold hold;
    document->getUser()->applyToScene();
    hold.accept(tr("Apply %1").arg(document->getTitle()));
    emit message(
        count == 1 ? tr("Applied to 1 surface.") : tr("Applied to %1 surfaces.").arg(count));
    return true;
}

DzMaterial* SceneController::getOrigin(const MixerDocument* document) const
{
    const DzElement* network = document ? document->getUser()->getBrickUserElement() : nullptr;
    for (const Origin& origin : m_origins) {
        if (!network || origin.network != network)
            continue;
        // Undo may keep a surface that another scene has taken the place of.
        for (const DzSurface& surface : dzScene->getSurfaces())
            if (surface.material == origin.surface)
                return surface.material;
    }
    return nullptr;
}

bool SceneController::applyBack(MixerDocument* document)
{
    DzMaterial* surface = getOrigin(document);
    if (!surface) {
        emit message(tr("This network was taken from no surface of the scene. Select surfaces in "
                        "the panel \"Surfaces\" and apply it to them."));
        return false;
    }
    const OnlySelected selection(surface);
    return apply(document);
}

QVector<SceneNetwork> SceneController::fromScene(MixerDocument* document)
{
    IDzBrickUser* maker = document ? document->getUser() : makeBrickUser();
    if (!maker)
        return {};
    const QVector<DzSurface> surfaces = DzScene::getSelectedMaterials();
    const QList<IDzBrickUser*> users = maker->fromScene();
    const QString unnamed = nameOfNewUser(maker);
    if (!document)
        releaseBrickUser(maker);
    if (users.isEmpty())
        emit message(tr("None of the selected surfaces has anything to take."));
    m_origins.erase(std::remove_if(m_origins.begin(), m_origins.end(),
                        [](const Origin& origin) { return !origin.network || !origin.surface; }),
        m_origins.end());
    QVector<SceneNetwork> networks;
    for (int i = 0; i < users.size(); ++i) {
        const QString name = users.at(i)->getBrickUserName();
        const bool isNamed = !name.isEmpty() && name != unnamed && name != startName;
        networks.append(SceneNetwork {
            users.at(i), isNamed || i >= surfaces.size() ? name : nameOf(surfaces.at(i)) });
        if (i < surfaces.size())
            m_origins.append(
                Origin { users.at(i)->getBrickUserElement(), surfaces.at(i).material });
    }
    return networks;
}
