// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoTextureBrick.h"

class VireoTexFltBlenderBlendBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltBlenderBlendBrick, "blender_blend", "Blender Blend", "Vireo//Float/Blender")
};

class VireoTexFltBlenderCloudsBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltBlenderCloudsBrick, "blender_clouds", "Blender Clouds", "Vireo//Float/Blender")
};

class VireoTexFltBlenderDistortedNoiseBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltBlenderDistortedNoiseBrick, "blender_distortednoise",
        "Blender Distorted Noise", "Vireo//Float/Blender")
};

class VireoTexFltBlenderMagicBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltBlenderMagicBrick, "blender_magic", "Blender Magic", "Vireo//Float/Blender")
};

class VireoTexFltBlenderMarbleBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltBlenderMarbleBrick, "blender_marble", "Blender Marble", "Vireo//Float/Blender")
};

class VireoTexFltBlenderMusgraveBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltBlenderMusgraveBrick, "blender_musgrave", "Blender Musgrave",
        "Vireo//Float/Blender")
};

class VireoTexFltBlenderNoiseBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltBlenderNoiseBrick, "blender_noise", "Blender Noise", "Vireo//Float/Blender")
};

class VireoTexFltBlenderStucciBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltBlenderStucciBrick, "blender_stucci", "Blender Stucci", "Vireo//Float/Blender")
};

class VireoTexFltBlenderVoronoiBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltBlenderVoronoiBrick, "blender_voronoi", "Blender Voronoi",
        "Vireo//Float/Blender")
};

class VireoTexFltBlenderWoodBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltBlenderWoodBrick, "blender_wood", "Blender Wood", "Vireo//Float/Blender")
};
