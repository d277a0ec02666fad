// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoVolumeBrick.h"

class VireoVolClearBrick : public VireoVolumeBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoVolClearBrick, "clear", "Clear")
};

class VireoVolHomogeneousBrick : public VireoVolumeBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoVolHomogeneousBrick, "homogeneous", "Homogeneous")
};
