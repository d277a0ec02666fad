// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAction>

class DzShaderBrick;

/// A command that the mixer offers in a brick's menu. It is made by class name each time the menu
/// opens, handed the brick, and owned by the menu.
class DzBrickAction : public QAction
{
    Q_OBJECT

public:
    DzBrickAction()
        : QAction(nullptr)
    {
    }
    /// Hands over the brick that the menu was opened on; not owned, and it may be of any family.
    virtual void setBrick(DzShaderBrick* brick) = 0;
};

/// Triggers an action that was handed `brick`. Whatever it changes in the brick's attributes,
/// inputs and links is one undo step, named after the action; no step when it changes nothing. The
/// brick and the action may go meanwhile.
void dzTriggerBrickAction(DzBrickAction* action, DzShaderBrick* brick);
