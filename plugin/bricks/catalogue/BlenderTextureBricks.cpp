// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BlenderTextureBricks.h"

VireoTexFltBlenderBlendBrick::VireoTexFltBlenderBlendBrick()
{
    // A colour, although the texture is a number.
    addColor("tex1", 255, 255, 255);
}

// The others leave all settings and the placement to the renderer.

VireoTexFltBlenderCloudsBrick::VireoTexFltBlenderCloudsBrick()
{
}

VireoTexFltBlenderDistortedNoiseBrick::VireoTexFltBlenderDistortedNoiseBrick()
{
}

VireoTexFltBlenderMagicBrick::VireoTexFltBlenderMagicBrick()
{
}

VireoTexFltBlenderMarbleBrick::VireoTexFltBlenderMarbleBrick()
{
}

VireoTexFltBlenderMusgraveBrick::VireoTexFltBlenderMusgraveBrick()
{
}

VireoTexFltBlenderNoiseBrick::VireoTexFltBlenderNoiseBrick()
{
}

VireoTexFltBlenderStucciBrick::VireoTexFltBlenderStucciBrick()
{
}

VireoTexFltBlenderVoronoiBrick::VireoTexFltBlenderVoronoiBrick()
{
}

VireoTexFltBlenderWoodBrick::VireoTexFltBlenderWoodBrick()
{
}
