// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAction>

class DzShaderBrick;

/// An action of the mixer on one brick.
class DzBrickAction : public QAction
{
    Q_OBJECT

public:
    DzBrickAction()
        : QAction(nullptr)
    {
    }

    /// Hands over the brick that the action was opened on, once, before the action is shown.
    virtual void setBrick(DzShaderBrick* brick) = 0;
};
