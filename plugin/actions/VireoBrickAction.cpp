// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoBrickAction.h"

#include "VireoBrickBase.h"

VireoBrickAction::VireoBrickAction(const QString& menuText)
{
    setText(menuText);
}

void VireoBrickAction::setBrick(DzShaderBrick* brick)
{
    disconnect(this, SIGNAL(triggered(bool)), this, SLOT(doTrigger()));
    keptBrick = qobject_cast<VireoBrickBase*>(brick);
    if (keptBrick)
        connect(this, SIGNAL(triggered(bool)), this, SLOT(doTrigger()));
}

VireoBrickBase* VireoBrickAction::getBrick() const
{
    return keptBrick;
}
