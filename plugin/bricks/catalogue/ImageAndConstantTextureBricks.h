// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoTextureBrick.h"

#include <QPointer>

class DzProperty;
class VireoExtPropertyParam;

class VireoTexFltConstantBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltConstantBrick, "constant", "Constant", "Vireo//Float")
};

/// A colour times a scale. The renderer's constant has no scale: in values the product is written,
/// in placeholders a scale texture is wrapped around the constant.
class VireoTexClrConstantBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrConstantBrick, "constant", "Constant", "Vireo//Color")

public:
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override;

private:
    QPointer<VireoExtPropertyParam> valueParam;
    QPointer<VireoExtPropertyParam> scaleParam;
};

class VireoTexFnlConstantBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlConstantBrick, "constant", "Constant", "Vireo//Fresnel")
};

/// The image is the map of the property "filename", and the property's own value is a tint:
/// without an image a constant is written, and a tint wraps the image in a scale texture.
class VireoTexFltImageMapBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltImageMapBrick, "imagemap", "Image Map", "Vireo//Float")

public:
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override;

private:
    QPointer<VireoExtPropertyParam> filenameParam;
};

/// The same with a colour.
class VireoTexClrImageMapBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrImageMapBrick, "imagemap", "Image Map", "Vireo//Color")

public:
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override;

private:
    QPointer<VireoExtPropertyParam> filenameParam;
};

class VireoTexFltNormalMapBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltNormalMapBrick, "normalmap", "Normal Map", "Vireo//Float")
};
