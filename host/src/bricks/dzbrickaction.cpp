// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickaction.h"

#include "dzbrickstate.h"

void dzTriggerBrickAction(DzBrickAction* action, DzShaderBrick* brick)
{
    if (!action || !brick)
        return;
    // The icon text is the menu's without shortcut mark and dots.
    const QString caption = action->iconText();
    DzBrickStateHold hold(brick);
    action->trigger();
    hold.accept(caption);
}
