// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FloatTextureBricks.h"

VireoTexFltAddBrick::VireoTexFltAddBrick()
{
    // They start at 1 and reset to 0: an input that is reset adds nothing.
    addFloat("tex1", 1, 0);
    addFloat("tex2", 1, 0);
}

VireoTexFltBiLerpBrick::VireoTexFltBiLerpBrick()
{
    addFloat("v00", 0);
    addFloat("v01", 1);
    addFloat("v10", 0);
    addFloat("v11", 1);
}

VireoTexFltBrickBrick::VireoTexFltBrickBrick()
{
    addBrickRows();
    add2DBlock();
}

VireoTexFltCheckerboardBrick::VireoTexFltCheckerboardBrick()
{
    addInt("dimension", 2);
    addFloat("tex1", 1);
    addFloat("tex2", 0);
    QStringList modes;
    modes << QLatin1String("none") << QLatin1String("supersample") << QLatin1String("closedform");
    addEnum("aamode", modes, 0);
    add2DBlock();
    add3DBlock();
}

VireoTexFltDotsBrick::VireoTexFltDotsBrick()
{
    addFloat("inside", 1);
    addFloat("outside", 0);
}

VireoTexFltFbmBrick::VireoTexFltFbmBrick()
{
    addInt("octaves", 8);
    addFloat("roughness", 0.5f);
    add3DBlock();
}

VireoTexFltMixBrick::VireoTexFltMixBrick()
{
    addFloat("tex1", 0);
    addFloat("tex2", 1);
    addFloat("amount", 0.5f);
}

VireoTexFltScaleBrick::VireoTexFltScaleBrick()
{
    addFloat("tex1", 1);
    addFloat("tex2", 1);
}

VireoTexFltSubtractBrick::VireoTexFltSubtractBrick()
{
    addFloat("tex1", 1);
    addFloat("tex2", 1);
}

VireoTexFltUvMaskBrick::VireoTexFltUvMaskBrick()
{
    addFloat("innertex", 1);
    addFloat("outertex", 0);
}

VireoTexFltWindyBrick::VireoTexFltWindyBrick()
{
    add3DBlock();
}

VireoTexFltWrinkledBrick::VireoTexFltWrinkledBrick()
{
    addInt("octaves", 8);
    addFloat("roughness", 0.5f);
    add3DBlock();
}
