// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoTextureBrick.h"

#include <QList>
#include <QPointer>

class DzIntProperty;
class VireoExtPropertyParam;

/// The inputs of a texture with a variable number of them: a property "count" (0 to 10), and that
/// many pairs of a number and a texture, numbered from 1. The numbers are written together as one
/// array.
///
/// Pairs stand before the inputs that users add, in order of their numbers. Values and links of
/// pairs that stay are kept.
class NumberedPairs
{
public:
    enum TextureKind { FloatTexture, ColorTexture, FresnelTexture };

    /// `name` is that of a pair's number without its index: "offset" or "weight".
    NumberedPairs(VireoBrickBase* owner, const char* name, TextureKind textureKind);

    /// Makes the property "count", which belongs to the brick.
    DzIntProperty* createCount();
    /// An input that is written before the pairs.
    void setAmount(VireoExtPropertyParam* param);
    /// Takes over "count" from stored attributes, so that the pairs stand before other inputs.
    void readCount(const DzSettings* attributes);
    /// Makes missing pairs up to "count" and removes the pairs above it.
    void matchCount();
    /// Writes the amount, the pairs' textures, then the array of their numbers.
    void write(SceneCodeWriter* writer) const;

private:
    struct Pair {
        QPointer<VireoExtPropertyParam> number;
        QPointer<VireoExtPropertyParam> texture;
    };

    void completePair(int index);
    VireoExtPropertyParam* createNumber(const QString& name) const;
    VireoExtPropertyParam* createTexture(const QString& name) const;
    void placeBeforeCustomInputs(DzBrickParam* param) const;

    VireoBrickBase* brick;
    QString numberName;
    TextureKind kind;
    QPointer<DzIntProperty> count;
    QPointer<VireoExtPropertyParam> amount;
    QList<Pair> pairs;
};

class VireoTexFltBAndBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltBAndBrick, "band", "Band", "Vireo//Float/Math")

public:
    DzElement* setAttributes(const DzSettings* settings) override;
    void writeParameters(SceneCodeWriter* writer) override;

public slots:
    /// Brings the pairs in line with "count".
    void countChanged();

private:
    NumberedPairs pairs;
};

class VireoTexClrBAndBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrBAndBrick, "band", "Band", "Vireo//Color/Math")

public:
    DzElement* setAttributes(const DzSettings* settings) override;
    void writeParameters(SceneCodeWriter* writer) override;

public slots:
    /// Brings the pairs in line with "count".
    void countChanged();

private:
    NumberedPairs pairs;
};

class VireoTexFnlBAndBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlBAndBrick, "band", "Band", "Vireo//Fresnel/Math")

public:
    DzElement* setAttributes(const DzSettings* settings) override;
    void writeParameters(SceneCodeWriter* writer) override;

public slots:
    /// Brings the pairs in line with "count".
    void countChanged();

private:
    NumberedPairs pairs;
};

class VireoTexFltMultiMixBrick : public VireoTextureFloatBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFltMultiMixBrick, "multimix", "Multi Mix", "Vireo//Float/Math")

public:
    DzElement* setAttributes(const DzSettings* settings) override;
    void writeParameters(SceneCodeWriter* writer) override;

public slots:
    /// Brings the pairs in line with "count".
    void countChanged();

private:
    NumberedPairs pairs;
};

class VireoTexClrMultiMixBrick : public VireoTextureColorBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexClrMultiMixBrick, "multimix", "Multi Mix", "Vireo//Color/Math")

public:
    DzElement* setAttributes(const DzSettings* settings) override;
    void writeParameters(SceneCodeWriter* writer) override;

public slots:
    /// Brings the pairs in line with "count".
    void countChanged();

private:
    NumberedPairs pairs;
};

class VireoTexFnlMultiMixBrick : public VireoTextureFresnelBrick
{
    Q_OBJECT
    VIREO_TEXTURE_BRICK(VireoTexFnlMultiMixBrick, "multimix", "Multi Mix", "Vireo//Fresnel/Math")

public:
    DzElement* setAttributes(const DzSettings* settings) override;
    void writeParameters(SceneCodeWriter* writer) override;

public slots:
    /// Brings the pairs in line with "count".
    void countChanged();

private:
    NumberedPairs pairs;
};
