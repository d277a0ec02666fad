// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Restoring.h"

#include "AutosaveStore.h"
#include "DocumentController.h"
#include "Messages.h"
#include "RestoreDialog.h"
#include "SceneController.h"

int offerRestore(
    AutosaveStore* store, DocumentController* documents, SceneController* scene, QWidget* window)
{
    const QVector<RestorableWork> works = store->takeOver();
    if (works.isEmpty())
        return 0;
    const Messages::Gathering gathering(window);
    RestoreDialog dialog(works, window);
    dialog.exec();
    int opened = 0;
    for (const RestorableWork& work : dialog.getChosen()) {
        if (dialog.getChoice() == RestoreDialog::Discard)
            store->discard(work);
        else if (dialog.getChoice() == RestoreDialog::Restore)
            opened += work.kind == Work::Scene ? scene->restore(work) : documents->restore(work);
    }
    return opened;
}
