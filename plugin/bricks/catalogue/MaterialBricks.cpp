// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MaterialBricks.h"

VireoMatCarpaintBrick::VireoMatCarpaintBrick()
{
    addColor("Kd", 128, 128, 128);
    addColor("Ks1", 32, 32, 32);
    addColor("Ks2", 32, 32, 32);
    addColor("Ks3", 32, 32, 32);
    addColor("Ka", 32, 32, 32);
    addFloat("d", 0);
    addFloat("R1", 0);
    addFloat("R2", 0);
    addFloat("R3", 0);
    addFloat("M1", 0);
    addFloat("M2", 0);
    addFloat("M3", 0);
}

VireoMatClothBrick::VireoMatClothBrick()
{
    addColor("warp_Kd", 0, 0, 0);
    addColor("warp_Ks", 0, 0, 0);
    addColor("weft_Kd", 0, 0, 0);
    addColor("weft_Ks", 0, 0, 0);
    addFloat("repeat_u", 100);
    addFloat("repeat_v", 100);
    QStringList presets;
    presets << QLatin1String("cotton_twill") << QLatin1String("denim")
            << QLatin1String("polyester_lining_cloth") << QLatin1String("silk_charmeuse")
            << QLatin1String("silk_shantung") << QLatin1String("wool_gabardine");
    addEnum("presetname", presets, presets.indexOf(QLatin1String("denim")));
}

VireoMatGlassBrick::VireoMatGlassBrick()
{
    addColor("Kr", 255, 255, 255);
    addColor("Kt", 255, 255, 255);
    // Not the index of any glass, unlike that of rough glass: the user chooses one.
    addFloat("index", 0);
    addFloat("cauchyb", 0);
    addFloat("film", 0);
    addFloat("filmindex", 0);
    addBool("architectural", false);
}

VireoMatGlass2Brick::VireoMatGlass2Brick()
{
    addBool("architectural", false);
    addBool("dispersion", false);
}

VireoMatGlossyBrick::VireoMatGlossyBrick()
{
    addColor("Kd", "Diffuse color", 255, 255, 255);
    addColor("Ks", "Specular color", 255, 255, 255);
    addFloat("index", "IOR", 0);
    addFloat("uroughness", "RoughnessU", 0.1f);
    addFloat("vroughness", "RoughnessV", 0.1f);
    addColor("Ka", "Absorption", 255, 255, 255);
    addBool("multibounce", "Multibounce", false);
    addFloat("d", 0);
}

VireoMatGlossyCoatingBrick::VireoMatGlossyCoatingBrick()
{
    addMaterialInput("basematerial");
    addColor("Ks", "Specular color", 255, 255, 255);
    addFloat("index", "IOR", 0);
    addFloat("uroughness", "RoughnessU", 0.1f);
    addFloat("vroughness", "RoughnessV", 0.1f);
    addColor("Ka", "Absorption", 255, 255, 255);
    addBool("multibounce", "Multibounce", false);
    addFloat("d", 0);
}

VireoMatGlossyTranslucentBrick::VireoMatGlossyTranslucentBrick()
{
    addColor("Kd", 255, 255, 255);
    addColor("Kt", 255, 255, 255);
    addColor("Ks", 255, 255, 255);
    addFloat("index", 0);
    // Black, where the other glossy materials start white.
    addColor("Ka", 0, 0, 0);
    addFloat("d", 0);
    addFloat("uroughness", 0.1f);
    addFloat("vroughness", 0.1f);
    addBool("multibounce", false);
    addBool("onesided", true);
    addColor("backface_Ks", 0, 0, 0);
    addFloat("backface_index", 0);
    addColor("backface_Ka", 0, 0, 0);
    addFloat("backface_d", 0);
    // The back starts without the front's roughness: it counts only when it is not one-sided.
    addFloat("backface_uroughness", 0);
    addFloat("backface_vroughness", 0);
    addBool("backface_multibounce", false);
}

VireoMatLayeredBrick::VireoMatLayeredBrick()
{
    addMaterialInput("namedmaterial1", "Material1");
    addFloat("opacity1", 1);
    addMaterialInput("namedmaterial2", "Material2");
    addFloat("opacity2", 1);
    addMaterialInput("namedmaterial3", "Material3");
    addFloat("opacity3", 1);
    addMaterialInput("namedmaterial4", "Material4");
    addFloat("opacity4", 1);
}

VireoMatMatteBrick::VireoMatMatteBrick()
{
    addColor("Kd", "Diffuse", 230, 230, 230);
    addFloat("sigma", "Sigma", 0);
}

VireoMatMatteTranslucentBrick::VireoMatMatteTranslucentBrick()
{
    addBool("energyconserving", "Energy Conserving", false);
    addColor("Kr", "Reflection color", 255, 255, 255);
    addColor("Kt", "Transmission color", 255, 255, 255);
    // 1, where matte starts at 0.
    addFloat("sigma", "Sigma", 1);
}

VireoMatMetal2Brick::VireoMatMetal2Brick()
{
    addFresnel("fresnel", 5);
    addFloat("uroughness", 0.1f);
    addFloat("vroughness", 0.1f);
}

VireoMatMirrorBrick::VireoMatMirrorBrick()
{
    addColor("Kr", 255, 255, 255);
    addFloat("film", 0);
    addFloat("filmindex", 1);
}

VireoMatMixBrick::VireoMatMixBrick()
{
    addMaterialInput("namedmaterial1", "Material1");
    addMaterialInput("namedmaterial2", "Material2");
    addFloat("amount", 0.5f);
}

VireoMatNullBrick::VireoMatNullBrick()
{
}

VireoMatRoughGlassBrick::VireoMatRoughGlassBrick()
{
    addColor("Kr", 255, 255, 255);
    addColor("Kt", 255, 255, 255);
    addFloat("uroughness", 0.001f);
    addFloat("vroughness", 0.001f);
    addFloat("index", 1.5f);
    addFloat("cauchyb", 0);
    addBool("dispersion", false);
}

VireoMatScatterBrick::VireoMatScatterBrick()
{
    addColor("Kd", 230, 230, 230);
    // The asymmetry is one number here, not a colour as in a homogeneous volume.
    addFloat("g", 0);
}

VireoMatVelvetBrick::VireoMatVelvetBrick()
{
    addColor("Kd", 77, 77, 77);
    addFloat("p1", -2);
    addFloat("p2", 20);
    addFloat("p3", 2);
    addFloat("thickness", 0.1f);
}
