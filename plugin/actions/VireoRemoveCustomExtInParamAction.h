// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickAction.h"

/// Asks for one of the inputs that users added, and removes it from the brick.
class VireoRemoveCustomExtInParamAction : public VireoBrickAction
{
    Q_OBJECT

public:
    /// Invokable, because the host makes this class by name without a factory.
    Q_INVOKABLE VireoRemoveCustomExtInParamAction();

    // VireoBrickAction
    /// Of several inputs with the chosen label, the first is removed.
    void doTrigger() override;
};
