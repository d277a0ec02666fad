// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzmaterial.h"

class DzColorProperty;
class DzFloatProperty;

/// The host's ordinary surface material. Its colour and opacity are properties like all others:
/// the first that bears one of the names in use for them.
class DzDefaultMaterial : public DzMaterial
{
    Q_OBJECT

public:
    /// A white, opaque material with properties for both.
    explicit DzDefaultMaterial(const QString& name = QString());
    /// A material without any property, for whoever has a list of them to add.
    static DzDefaultMaterial* createBare(const QString& name);

    /// Name of the kind of material; "Default" unless a file told another.
    QString getMaterialName() const override { return m_materialName; }
    void setMaterialName(const QString& name) { m_materialName = name; }

    // DzMaterial. Setters add a property when the material has none; getters give white and 1 then.
    void setDiffuseColor(QColor color) override;
    QColor getDiffuseColor() const override;
    void setBaseOpacity(float opacity) override;
    float getBaseOpacity() const override;
    void setColorMap(const DzTexture* map) override;
    DzTexture* getColorMap() const override;
    void setOpacityMap(const DzTexture* map) override;
    DzTexture* getOpacityMap() const override;
    bool isColorMappable() const override;
    bool isOpacityMappable() const override;

private:
    struct Bare {
    };
    DzDefaultMaterial(const QString& name, Bare);

    DzColorProperty* colorProperty() const;
    DzFloatProperty* opacityProperty() const;
    DzColorProperty* addColorProperty();
    DzFloatProperty* addOpacityProperty();

    QString m_materialName;
};
