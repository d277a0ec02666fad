// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoImporLbm2Action.h"

#include "MaterialReading.h"
#include "VireoBrickBase.h"
#include "dzapp.h"
#include "dzmainwindow.h"

#include <QFileDialog>

VireoImporLbm2Action::VireoImporLbm2Action()
    : VireoBrickAction(tr("Import Lbm2 Material"))
    , asking(false)
{
}

void VireoImporLbm2Action::doTrigger()
{
    // While the dialog is open, brick, window and this action may go.
    const QPointer<VireoImporLbm2Action> self(this);
    const QPointer<VireoBrickBase> target(getBrick());
    if (!target || asking || reading)
        return;
    asking = true;
    // The caption's last word is spelt so.
    const QString path = QFileDialog::getOpenFileName(dzApp->getInterface(),
        tr("Import LuxRender Lmb2"), QString(), tr("LuxRender Material(*.lbm2)"));
    if (!self)
        return;
    asking = false;
    if (path.isEmpty() || !target)
        return;
    // Not a child of this action, which goes with the menu: that must not wait for the thread.
    QObject* owner = dzApp->getInterface();
    reading = new MaterialReading(path, owner ? owner : dzApp);
    connect(target, SIGNAL(destroyed()), reading, SLOT(stop()));
    connect(reading, SIGNAL(finished()), reading, SLOT(deleteLater()));
    reading->start();
}
