// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ColorTextureBricks.h"

#include "LampPresets.h"

VireoTexClrAddBrick::VireoTexClrAddBrick()
{
    addColor("tex1", 255, 255, 255);
    addColor("tex2", 255, 255, 255);
}

VireoTexClrBiLerpBrick::VireoTexClrBiLerpBrick()
{
    addColor("v00", 0, 0, 0);
    addColor("v01", 255, 255, 255);
    addColor("v10", 0, 0, 0);
    addColor("v11", 255, 255, 255);
}

VireoTexClrBlackBodyBrick::VireoTexClrBlackBodyBrick()
{
    // Kelvin; no texture can drive it.
    addPlainFloat("temperature", 6500);
}

VireoTexClrBrickBrick::VireoTexClrBrickBrick()
{
    // No placement, unlike the float brick texture.
    addBrickRows();
}

VireoTexClrColorDepthBrick::VireoTexClrColorDepthBrick()
{
    addColor("Kt", 0, 0, 0);
    addFloat("depth", 1);
}

VireoTexClrEqualEnergyBrick::VireoTexClrEqualEnergyBrick()
{
    addFloat("energy", 1);
}

VireoTexClrFrequencyBrick::VireoTexClrFrequencyBrick()
{
    addFloat("freq", 0.03f);
    addFloat("phase", 0.5f);
    addFloat("energy", 1);
}

VireoTexClrGaussianBrick::VireoTexClrGaussianBrick()
{
    addFloat("wavelength", 550);
    addFloat("width", 50);
    addFloat("energy", 1);
}

VireoTexClrHarlequinBrick::VireoTexClrHarlequinBrick()
{
}

VireoTexClrIrregularDataBrick::VireoTexClrIrregularDataBrick()
{
    addFloat("wavelengths", 0);
    addFloat("data", 0);
}

VireoTexClrLampSpectrumBrick::VireoTexClrLampSpectrumBrick()
{
    addEnum("name", lampPresets(), 0);
}

VireoTexClrMarbleBrick::VireoTexClrMarbleBrick()
{
    addInt("octaves", 8);
    addFloat("roughness", 0.5f);
    addFloat("scale", 1);
    addFloat("variation", 0.2f);
    // Placed on the surface, although the other noises are placed in space.
    add2DBlock();
}

VireoTexClrMixBrick::VireoTexClrMixBrick()
{
    addColor("tex1", 0, 0, 0);
    addColor("tex2", 255, 255, 255);
    addFloat("amount", 0.5f);
}

VireoTexClrRegularDataBrick::VireoTexClrRegularDataBrick()
{
    addFloat("start", 380);
    addFloat("end", 720);
}

VireoTexClrScaleBrick::VireoTexClrScaleBrick()
{
    addColor("tex1", 0, 0, 0);
    addColor("tex2", 255, 255, 255);
}

VireoTexColSubtractBrick::VireoTexColSubtractBrick()
{
    addColor("tex1", 255, 255, 255);
    addColor("tex2", 255, 255, 255);
}

VireoTexClrTabulatedDataBrick::VireoTexClrTabulatedDataBrick()
{
    // A number and no file property: the file is its map.
    addFloat("filename", 0);
}

VireoTexClrUvBrick::VireoTexClrUvBrick()
{
    add2DBlock();
}
