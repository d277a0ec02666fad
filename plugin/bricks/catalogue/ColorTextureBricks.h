// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoTextureBrick.h"

class VireoTexClrAddBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrAddBrick, "add", "Add", "Vireo//Color/Math")
};

class VireoTexClrBiLerpBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrBiLerpBrick, "bilerp", "Bilerp", "Vireo//Color/Math")
};

class VireoTexClrBlackBodyBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrBlackBodyBrick, "blackbody", "Black Body", "Vireo//Color")
};

class VireoTexClrBrickBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrBrickBrick, "brick", "Brick", "Vireo//Color")
};

class VireoTexClrColorDepthBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrColorDepthBrick, "colordepth", "Color Depth", "Vireo//Color")
};

class VireoTexClrEqualEnergyBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrEqualEnergyBrick, "equalenergy", "Equal Energy", "Vireo//Color")
};

class VireoTexClrFrequencyBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrFrequencyBrick, "frequency", "Frequency", "Vireo//Color")
};

class VireoTexClrGaussianBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrGaussianBrick, "gaussian", "Gaussian", "Vireo//Color")
};

class VireoTexClrHarlequinBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrHarlequinBrick, "harlequin", "Harlequin", "Vireo//Color")
};

class VireoTexClrIrregularDataBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    // The renderer's word has a blank.
    VIREO_TEXTURE_BRICK(
        VireoTexClrIrregularDataBrick, "irregular data", "Irregular Data", "Vireo//Color")
};

class VireoTexClrLampSpectrumBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(
        VireoTexClrLampSpectrumBrick, "lampspectrum", "Lamp Spectrum", "Vireo//Color")
};

class VireoTexClrMarbleBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrMarbleBrick, "marble", "Marble", "Vireo//Color")
};

class VireoTexClrMixBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrMixBrick, "mix", "Mix", "Vireo//Color/Math")
};

class VireoTexClrRegularDataBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    // The renderer's word has a blank.
    VIREO_TEXTURE_BRICK(VireoTexClrRegularDataBrick, "regular data", "Regular Data", "Vireo//Color")
};

class VireoTexClrScaleBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrScaleBrick, "scale", "Scale", "Vireo//Color/Math")
};

// "Col", where its siblings have "Clr": the name stands in stored networks.
class VireoTexColSubtractBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexColSubtractBrick, "subtract", "Subtract", "Vireo//Color/Math")
};

class VireoTexClrTabulatedDataBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    // The renderer's word is spelt so.
    VIREO_TEXTURE_BRICK(
        VireoTexClrTabulatedDataBrick, "tubulateddata", "Tabulated Data", "Vireo//Color")
};

class VireoTexClrUvBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrUvBrick, "uv", "UV", "Vireo//Color/Misc")
};
