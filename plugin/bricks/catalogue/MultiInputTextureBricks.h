// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoTextureBrick.h"

class VireoTexFltBAndBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltBAndBrick, "band", "Band", "Vireo//Float/Math")
};

class VireoTexClrBAndBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrBAndBrick, "band", "Band", "Vireo//Color/Math")
};

class VireoTexFnlBAndBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlBAndBrick, "band", "Band", "Vireo//Fresnel/Math")
};

class VireoTexFltMultiMixBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltMultiMixBrick, "multimix", "Multi Mix", "Vireo//Float/Math")
};

class VireoTexClrMultiMixBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrMultiMixBrick, "multimix", "Multi Mix", "Vireo//Color/Math")
};

class VireoTexFnlMultiMixBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlMultiMixBrick, "multimix", "Multi Mix", "Vireo//Fresnel/Math")
};
