// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoRemoveCustomExtInParamAction.h"

#include "VireoBrickBase.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzmainwindow.h"

#include <QInputDialog>
#include <QMetaType>

namespace {

// The host finds classes without a factory by their pointer types.
const int pointerType
    = qRegisterMetaType<VireoRemoveCustomExtInParamAction*>("VireoRemoveCustomExtInParamAction*");

QStringList customLabels(const VireoBrickBase* brick)
{
    QStringList labels;
    const QList<DzBrickParam*> params = brick->getCustomParams();
    for (int i = 0; i < params.size(); ++i)
        labels << params.at(i)->getLabel();
    return labels;
}

} // namespace

VireoRemoveCustomExtInParamAction::VireoRemoveCustomExtInParamAction()
    : VireoBrickAction(tr("Remove Custom Input..."))
{
    Q_UNUSED(pointerType);
}

void VireoRemoveCustomExtInParamAction::doTrigger()
{
    // While the question is open, the brick may go, and this action too.
    const QPointer<VireoBrickBase> target(getBrick());
    if (!target)
        return;
    bool accepted = false;
    const QString label = QInputDialog::getItem(dzApp->getInterface(), tr("Remove Parameter"),
        tr("Parameter :"), customLabels(target), 0, false, &accepted);
    if (!accepted || !target)
        return;
    // Looked up afresh: the inputs may have changed meanwhile.
    target->removeCustomParam(target->getCustomParam(customLabels(target).indexOf(label)));
}
