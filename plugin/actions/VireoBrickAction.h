// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickaction.h"

#include <QPointer>

class VireoBrickBase;

/// Base of the plug-in's brick actions: it keeps the brick and runs doTrigger() when the user
/// chooses the action.
class VireoBrickAction : public DzBrickAction
{
    Q_OBJECT

public:
    explicit VireoBrickAction(const QString& menuText);

    // DzBrickAction
    /// Keeps a brick of the plug-in. Any other is not kept, and the action does nothing then.
    void setBrick(DzShaderBrick* brick) override;

public slots:
    /// What the action does; nothing without a brick.
    virtual void doTrigger() = 0;

protected:
    /// The kept brick; null when there is none, or none any more.
    VireoBrickBase* getBrick() const;

private:
    QPointer<VireoBrickBase> keptBrick;
};
