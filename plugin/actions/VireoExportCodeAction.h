// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickAction.h"

/// Shows the text of a brick and what feeds it, with values, in a window of its own.
class VireoExportCodeAction : public VireoBrickAction
{
    Q_OBJECT

public:
    VireoExportCodeAction();

    // VireoBrickAction
    /// Opens one more window, a child of the main window, and returns at once.
    void doTrigger() override;
};
