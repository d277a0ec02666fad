// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickAction.h"

class MaterialReading;

/// Asks for a LuxRender material file, and reads and checks it. It builds nothing from the file and
/// reports nothing.
class VireoImporLbm2Action : public VireoBrickAction
{
    Q_OBJECT

public:
    VireoImporLbm2Action();

    // VireoBrickAction
    /// Returns when the file is chosen; it is read meanwhile. Does nothing while an earlier call is
    /// not through. The reading ends early when the brick or the main window goes.
    void doTrigger() override;

private:
    QPointer<MaterialReading> reading;
    bool asking;
};
