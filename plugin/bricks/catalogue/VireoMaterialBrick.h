// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickMacros.h"
#include "VireoBrickBase.h"

/// Base of the material bricks: an output "result", an input "bumpmap", and one
/// MakeNamedMaterial statement.
class VireoMaterialBrick : public VireoBrickBase
{
    Q_OBJECT

public:
    // DzShaderBrick
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
    QString getDefaultCategory() const override { return QLatin1String("Vireo//Material"); }
    bool shouldSeperateLocalProperties() const override { return false; }

    // VireoBrickBase
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override;

protected:
    VireoMaterialBrick();

    // Rows of the catalogue, besides those of the base.
    /// The recorded default is 0 whatever the start value.
    void addFloat(const char* name, const char* label, float value);
    void addFloat(const char* name, float value) { addFloat(name, name, value); }
    /// A float that takes Fresnel textures, likewise.
    void addFresnel(const char* name, float value);
    void addMaterialInput(const char* name, const char* label);
    void addMaterialInput(const char* name) { addMaterialInput(name, name); }
};
