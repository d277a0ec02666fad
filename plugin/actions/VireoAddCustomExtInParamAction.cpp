// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoAddCustomExtInParamAction.h"

#include "LinkTypes.h"
#include "VireoBrickBase.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzmainwindow.h"

#include <QInputDialog>
#include <QMetaType>

namespace {

// The host finds classes without a factory by their pointer types.
const int pointerType
    = qRegisterMetaType<VireoAddCustomExtInParamAction*>("VireoAddCustomExtInParamAction*");

QStringList typeNames()
{
    QStringList names;
    for (int type = MaterialLink; type <= FresnelLink; ++type)
        names << linkTypeName(type);
    return names;
}

} // namespace

VireoAddCustomExtInParamAction::VireoAddCustomExtInParamAction()
    : VireoBrickAction(tr("Add Custom Input..."))
{
    Q_UNUSED(pointerType);
}

void VireoAddCustomExtInParamAction::doTrigger()
{
    // While a question is open, the brick may go, and this action too: its fields are not touched
    // after the first.
    const QPointer<VireoBrickBase> target(getBrick());
    if (!target)
        return;
    const QStringList types = typeNames();
    bool accepted = false;
    const QString type = QInputDialog::getItem(
        dzApp->getInterface(), tr("Parameter Type"), tr("Type :"), types, 0, false, &accepted);
    if (!accepted || type.isEmpty() || !target)
        return;
    const QString name = QInputDialog::getText(dzApp->getInterface(), tr("Parameter Name"),
        tr("Name :"), QLineEdit::Normal, QString(), &accepted)
                             .trimmed();
    if (!accepted || name.isEmpty() || !target)
        return;
    target->addCustomInput(
        MaterialLink + types.indexOf(type), name, name, DzBrickParam::InputDirection);
}
