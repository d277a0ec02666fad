// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoTextureBrick.h"

class VireoTexFltAddBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltAddBrick, "add", "Add", "Vireo//Float/Math")
};

class VireoTexFltBiLerpBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltBiLerpBrick, "bilerp", "Bilerp", "Vireo//Float/Math")
};

class VireoTexFltBrickBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltBrickBrick, "brick", "Brick", "Vireo//Float")
};

/// Takes two dimensions on the surface or three in space, so it has both placements.
class VireoTexFltCheckerboardBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFltCheckerboardBrick, "checkerboard", "Checkerboard", "Vireo//Float")
};

class VireoTexFltDotsBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltDotsBrick, "dots", "Dots", "Vireo//Float")
};

class VireoTexFltFbmBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltFbmBrick, "fbm", "FBM", "Vireo//Float")
};

class VireoTexFltMixBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltMixBrick, "mix", "Mix", "Vireo//Float/Math")
};

class VireoTexFltScaleBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltScaleBrick, "scale", "Scale", "Vireo//Float/Math")
};

class VireoTexFltSubtractBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltSubtractBrick, "subtract", "Subtract", "Vireo//Float/Math")
};

class VireoTexFltUvMaskBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltUvMaskBrick, "uvmask", "UV Mask", "Vireo//Float/Misc")
};

class VireoTexFltWindyBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltWindyBrick, "windy", "Windy", "Vireo//Float")
};

class VireoTexFltWrinkledBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltWrinkledBrick, "wrinkled", "Wrinkled", "Vireo//Float")
};
