// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VolumeBricks.h"

VireoVolClearBrick::VireoVolClearBrick()
{
    addFresnel("fresnel", 1.5f);
    addColor("absorption", 0, 0, 0);
}

VireoVolHomogeneousBrick::VireoVolHomogeneousBrick()
{
    addFresnel("fresnel", 1);
    addColor("sigma_a", 0, 0, 0);
    addColor("sigma_s", 0, 0, 0);
    // The asymmetry is given per component, as a colour.
    addColor("g", 0, 0, 0);
}
