// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoTextureBrick.h"

class VireoTexFnlBiLerpBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlBiLerpBrick, "bilerp", "Bilerp", "Vireo//Fresnel/Math")
};

class VireoTexFnlCauchyBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlCauchyBrick, "cauchy", "Cauchy", "Vireo//Fresnel")
};

class VireoTexFnlFresnelColorBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFnlFresnelColorBrick, "fresnelcolor", "Fresnel Color", "Vireo//Fresnel")
};

class VireoTexFnlMixBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlMixBrick, "mix", "Mix", "Vireo//Fresnel/Math")
};

class VireoTexFnlSellmeierBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlSellmeierBrick, "sellmeier", "Sellmeier", "Vireo//Fresnel")
};

class VireoTexFnlSopraBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlSopraBrick, "sopra", "Sopra", "Vireo//Fresnel")
};

class VireoTexFnlLuxpopBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlLuxpopBrick, "luxpop", "Luxpop", "Vireo//Fresnel")
};

class VireoTexFnlPresetBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlPresetBrick, "preset", "Preset", "Vireo//Fresnel")
};

class VireoTexFnlFresnelNameBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexFnlFresnelNameBrick, "fresnelname", "Fresnel Name", "Vireo//Fresnel")
};
