// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ClassRegistration.h"

#include "BlenderTextureBricks.h"
#include "ColorTextureBricks.h"
#include "FloatTextureBricks.h"
#include "FresnelTextureBricks.h"
#include "ImageAndConstantTextureBricks.h"
#include "MaterialBricks.h"
#include "MultiInputTextureBricks.h"
#include "VireoBrickUser.h"
#include "VireoExportCodeAction.h"
#include "VireoImporLbm2Action.h"
#include "VireoRootBrick.h"
#include "VolumeBricks.h"
#include "dzclassfactory.h"
#include "dzplugin.h"

namespace {

/// What all class identifiers begin with.
const char* const guidPrefix = "5F0C2E91-7A4B-4D3E-9C61-3B8A20D7";

template <typename T>
void addClass(DzPlugin* plugin, const char* guidEnding)
{
    const DzGuid guid = DzGuid::fromString(QLatin1String(guidPrefix) + QLatin1String(guidEnding));
    plugin->addClassFactory(new DzTClassFactory<T>(T::staticMetaObject, guid));
}

} // namespace

void registerClasses(DzPlugin* plugin)
{
    // Scenes know the classes by these endings: their jumps and letter cases stay.
    addClass<VireoBrickUser>(plugin, "3571");
    addClass<VireoRootBrick>(plugin, "3572");
    // Two bricks share the identifiers of these actions.
    addClass<VireoImporLbm2Action>(plugin, "357A");
    addClass<VireoExportCodeAction>(plugin, "357B");
    addClass<VireoMatCarpaintBrick>(plugin, "357A");
    addClass<VireoMatClothBrick>(plugin, "357B");
    addClass<VireoMatGlassBrick>(plugin, "357C");
    addClass<VireoMatGlass2Brick>(plugin, "357D");
    addClass<VireoMatGlossyBrick>(plugin, "357F");
    addClass<VireoMatGlossyTranslucentBrick>(plugin, "3580");
    addClass<VireoMatLayeredBrick>(plugin, "3581");
    addClass<VireoMatMatteBrick>(plugin, "3582");
    addClass<VireoMatMatteTranslucentBrick>(plugin, "3583");
    addClass<VireoMatMetal2Brick>(plugin, "3584");
    addClass<VireoMatMirrorBrick>(plugin, "3585");
    addClass<VireoMatMixBrick>(plugin, "3586");
    addClass<VireoMatNullBrick>(plugin, "3587");
    addClass<VireoMatRoughGlassBrick>(plugin, "3588");
    addClass<VireoMatScatterBrick>(plugin, "3589");
    addClass<VireoMatVelvetBrick>(plugin, "358A");
    addClass<VireoMatGlossyCoatingBrick>(plugin, "358B");
    addClass<VireoVolClearBrick>(plugin, "3590");
    addClass<VireoVolHomogeneousBrick>(plugin, "3593");
    addClass<VireoTexFltAddBrick>(plugin, "3600");
    addClass<VireoTexClrAddBrick>(plugin, "3601");
    addClass<VireoTexFltBAndBrick>(plugin, "3602");
    addClass<VireoTexClrBAndBrick>(plugin, "3603");
    addClass<VireoTexFnlBAndBrick>(plugin, "3604");
    addClass<VireoTexFltBiLerpBrick>(plugin, "3605");
    addClass<VireoTexClrBiLerpBrick>(plugin, "3606");
    addClass<VireoTexFnlBiLerpBrick>(plugin, "3607");
    addClass<VireoTexClrBlackBodyBrick>(plugin, "3608");
    addClass<VireoTexFltBlenderBlendBrick>(plugin, "3609");
    addClass<VireoTexFltBlenderCloudsBrick>(plugin, "360a");
    addClass<VireoTexFltBlenderDistortedNoiseBrick>(plugin, "360b");
    addClass<VireoTexFltBlenderMagicBrick>(plugin, "360c");
    addClass<VireoTexFltBlenderMarbleBrick>(plugin, "360d");
    addClass<VireoTexFltBlenderMusgraveBrick>(plugin, "360e");
    addClass<VireoTexFltBlenderNoiseBrick>(plugin, "360f");
    addClass<VireoTexFltBlenderStucciBrick>(plugin, "3620");
    addClass<VireoTexFltBlenderVoronoiBrick>(plugin, "3621");
    addClass<VireoTexFltBlenderWoodBrick>(plugin, "3622");
    addClass<VireoTexFltBrickBrick>(plugin, "3623");
    addClass<VireoTexClrBrickBrick>(plugin, "3624");
    addClass<VireoTexFnlCauchyBrick>(plugin, "3625");
    addClass<VireoTexFltCheckerboardBrick>(plugin, "3626");
    addClass<VireoTexClrColorDepthBrick>(plugin, "3627");
    addClass<VireoTexFltConstantBrick>(plugin, "3628");
    addClass<VireoTexClrConstantBrick>(plugin, "3629");
    addClass<VireoTexFnlConstantBrick>(plugin, "362a");
    addClass<VireoTexFltDotsBrick>(plugin, "362b");
    addClass<VireoTexClrEqualEnergyBrick>(plugin, "362c");
    addClass<VireoTexFltFbmBrick>(plugin, "362d");
    addClass<VireoTexClrFrequencyBrick>(plugin, "362e");
    addClass<VireoTexFnlFresnelColorBrick>(plugin, "362f");
    addClass<VireoTexClrGaussianBrick>(plugin, "3630");
    addClass<VireoTexClrHarlequinBrick>(plugin, "3631");
    addClass<VireoTexFltImageMapBrick>(plugin, "3632");
    addClass<VireoTexClrImageMapBrick>(plugin, "3633");
    addClass<VireoTexFltNormalMapBrick>(plugin, "3634");
    addClass<VireoTexClrIrregularDataBrick>(plugin, "3635");
    addClass<VireoTexClrLampSpectrumBrick>(plugin, "3636");
    addClass<VireoTexClrMarbleBrick>(plugin, "3637");
    addClass<VireoTexFltMixBrick>(plugin, "3638");
    addClass<VireoTexClrMixBrick>(plugin, "3639");
    addClass<VireoTexFnlMixBrick>(plugin, "363a");
    addClass<VireoTexFltMultiMixBrick>(plugin, "363b");
    addClass<VireoTexClrMultiMixBrick>(plugin, "363c");
    addClass<VireoTexFnlMultiMixBrick>(plugin, "363d");
    addClass<VireoTexClrRegularDataBrick>(plugin, "363e");
    addClass<VireoTexFltScaleBrick>(plugin, "363f");
    addClass<VireoTexClrScaleBrick>(plugin, "3640");
    addClass<VireoTexFnlSellmeierBrick>(plugin, "3641");
    addClass<VireoTexFltSubtractBrick>(plugin, "3642");
    addClass<VireoTexColSubtractBrick>(plugin, "3643");
    addClass<VireoTexClrTabulatedDataBrick>(plugin, "3644");
    addClass<VireoTexFnlSopraBrick>(plugin, "3645");
    addClass<VireoTexFnlLuxpopBrick>(plugin, "3646");
    addClass<VireoTexFnlPresetBrick>(plugin, "3647");
    addClass<VireoTexFnlFresnelNameBrick>(plugin, "3648");
    addClass<VireoTexClrUvBrick>(plugin, "3649");
    addClass<VireoTexFltUvMaskBrick>(plugin, "364a");
    addClass<VireoTexFltWindyBrick>(plugin, "364b");
    addClass<VireoTexFltWrinkledBrick>(plugin, "364c");
}
