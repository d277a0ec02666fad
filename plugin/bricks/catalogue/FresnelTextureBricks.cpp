// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FresnelTextureBricks.h"

VireoTexFnlBiLerpBrick::VireoTexFnlBiLerpBrick()
{
    addFresnel("v00", 0);
    addFresnel("v01", 1);
    addFresnel("v10", 0);
    addFresnel("v11", 1);
}

VireoTexFnlCauchyBrick::VireoTexFnlCauchyBrick()
{
    addFloat("index", 0);
    addFloat("cauchyb", -1);
    addFloat("cauchya", 1.5f);
}

VireoTexFnlFresnelColorBrick::VireoTexFnlFresnelColorBrick()
{
    addColor("Kr", 127, 127, 127);
}

VireoTexFnlMixBrick::VireoTexFnlMixBrick()
{
    // No "amount", unlike the other mixes.
    addFresnel("tex1", 0);
    addFresnel("tex2", 1);
}

VireoTexFnlSellmeierBrick::VireoTexFnlSellmeierBrick()
{
}

VireoTexFnlSopraBrick::VireoTexFnlSopraBrick()
{
    // A number and no file property: the file is its map.
    addFloat("filename", 0);
}

VireoTexFnlLuxpopBrick::VireoTexFnlLuxpopBrick()
{
    // A number and no file property: the file is its map.
    addFloat("filename", 0);
}

VireoTexFnlPresetBrick::VireoTexFnlPresetBrick()
{
}

VireoTexFnlFresnelNameBrick::VireoTexFnlFresnelNameBrick()
{
    // An image property, where the other file names are numbers with a map.
    addImage("filename");
    QStringList metals;
    metals << QLatin1String("aluminium") << QLatin1String("amorphous carbon")
           << QLatin1String("silver") << QLatin1String("gold") << QLatin1String("copper");
    addEnum("name", metals, 0);
}
