// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickMacros.h"
#include "VireoBrickBase.h"

#include <QList>
#include <QPointer>
#include <QScopedPointer>

class NumberedPairs;
class VireoExtVec3Param;

/// Base of the texture bricks: one Texture statement.
class VireoTextureBrick : public VireoBrickBase
{
    Q_OBJECT

public:
    ~VireoTextureBrick() override;

    // DzElement
    DzElement* setAttributes(const DzSettings* settings) override;

    // DzShaderBrick
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
    QString getDefaultCategory() const override { return QLatin1String("Vireo//Values"); }
    bool shouldSeperateLocalProperties() const override { return false; }

    // VireoBrickBase
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override;
    /// Writes everything in order of creation: inputs, the vectors of the placement blocks, and
    /// properties without input. A texture of numbered pairs writes those and nothing else.
    void writeParameters(SceneCodeWriter* writer) override;

    /// The renderer's word for the texture's value: "float", "color" or "fresnel".
    virtual QString getLuxTextureKind() const;

public slots:
    /// Brings the numbered pairs in line with "count".
    void countChanged();

protected:
    VireoTextureBrick();

    /// Opens the statement of a texture of this brick's kind and returns the texture's name.
    QString beginTexture(SceneCodeWriter* writer, const QString& luxType);
    void endTexture(CodeResult* result, SceneCodeWriter* writer, const QString& name);

    /// Writes the statements of an image map whose image is the map of `tint`, null when there is
    /// none. Defined beside the two image maps, one for each class of property.
    template <typename Property>
    CodeResult* writeImageMap(
        Property* tint, bool isImageLinked, CodeResult* result, SceneCodeWriter* writer);

    // Rows of the catalogue, besides those of the base.
    VireoExtPropertyParam* addFloat(const char* name, float value);
    VireoExtPropertyParam* addFloat(const char* name, float value, float defaultValue);
    /// A float that takes Fresnel textures.
    VireoExtPropertyParam* addFresnel(const char* name, float value);
    /// A property without input: nothing can be linked to it.
    void addPlainFloat(const char* name, float value);
    /// The placement of a texture on the surface.
    void add2DBlock();
    /// The placement of a texture in space.
    void add3DBlock();
    /// How an image is sampled.
    void addImageBlock();
    /// The bond, bricks and mortar of a wall: the float and the colour brick texture share them.
    void addBrickRows();
    /// A property "count" and the pairs that it asks for, see NumberedPairs. `amount` is written
    /// before them; null for none.
    void addNumberedPairs(const char* numberName, VireoExtPropertyParam* amount);

private:
    friend class NumberedPairs;

    struct PlainProperty {
        QString name;
        int position; ///< number of parameters that were there before it
    };

    void addBlockVector(const char* name, const DzVec3& value);
    void writePlainProperties(SceneCodeWriter* writer, int position);
    void writeBlockVector(SceneCodeWriter* writer, const DzBrickParam* param);

    /// The vectors of the placement blocks.
    QList<QPointer<VireoExtVec3Param>> blockParams;
    QList<PlainProperty> plainProperties;
    QScopedPointer<NumberedPairs> pairs; ///< null in most textures
};

/// A texture of one number. It feeds float inputs.
class VireoTextureFloatBrick : public VireoTextureBrick
{
    Q_OBJECT

public:
    QString getLuxTextureKind() const override { return QLatin1String("float"); }

protected:
    VireoTextureFloatBrick();
};

/// A texture of a colour. It feeds colour inputs.
class VireoTextureColorBrick : public VireoTextureBrick
{
    Q_OBJECT

public:
    QString getLuxTextureKind() const override { return QLatin1String("color"); }

protected:
    VireoTextureColorBrick();
};

/// A texture of optical constants. It feeds Fresnel inputs.
class VireoTextureFresnelBrick : public VireoTextureBrick
{
    Q_OBJECT

public:
    QString getLuxTextureKind() const override { return QLatin1String("fresnel"); }

protected:
    VireoTextureFresnelBrick();
};
