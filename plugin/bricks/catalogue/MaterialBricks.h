// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoMaterialBrick.h"

class VireoMatCarpaintBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatCarpaintBrick, "carpaint", "Car Paint")
};

class VireoMatClothBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatClothBrick, "cloth", "Cloth")
};

class VireoMatGlassBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatGlassBrick, "glass", "Glass")
};

/// A glass whose colour and index come from the interior volume.
class VireoMatGlass2Brick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatGlass2Brick, "glass2", "Glass2")
};

class VireoMatGlossyBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatGlossyBrick, "glossy", "Glossy")
};

/// A glossy coat over another material.
class VireoMatGlossyCoatingBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatGlossyCoatingBrick, "glossycoating", "Glossy Coating")
};

class VireoMatGlossyTranslucentBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatGlossyTranslucentBrick, "glossytranslucent", "Glossy Translucent")
};

/// Up to four materials on top of each other, each with an opacity.
class VireoMatLayeredBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatLayeredBrick, "layered", "Layered")
};

class VireoMatMatteBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatMatteBrick, "matte", "Matte")
};

class VireoMatMatteTranslucentBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatMatteTranslucentBrick, "mattetranslucent", "Matte Translucent")
};

class VireoMatMetal2Brick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatMetal2Brick, "metal2", "Metal2")
};

class VireoMatMirrorBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatMirrorBrick, "mirror", "Mirror")
};

/// Two materials blended by an amount.
class VireoMatMixBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatMixBrick, "mix", "Mix")
};

/// A surface that is not there: it only bounds volumes.
class VireoMatNullBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatNullBrick, "null", "Null")
};

class VireoMatRoughGlassBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatRoughGlassBrick, "roughglass", "Rough Glass")
};

class VireoMatScatterBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatScatterBrick, "scatter", "Scatter")
};

class VireoMatVelvetBrick : public VireoMaterialBrick
{
    Q_OBJECT
    VIREO_BRICK(VireoMatVelvetBrick, "velvet", "Velvet")
};
