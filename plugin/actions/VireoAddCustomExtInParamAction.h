// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickAction.h"

/// Asks for a type and a name, and adds an input of that type to the brick.
class VireoAddCustomExtInParamAction : public VireoBrickAction
{
    Q_OBJECT

public:
    /// Invokable, because the host makes this class by name without a factory.
    Q_INVOKABLE VireoAddCustomExtInParamAction();

    // VireoBrickAction
    void doTrigger() override;
};
