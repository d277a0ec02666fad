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

    // Rows of the catalogue. A label that is not given equals the name.
    /// The recorded default is 0 whatever the start value.
    void addFloat(const char* name, const char* label, float value);
    void addFloat(const char* name, float value) { addFloat(name, name, value); }
    /// A float that takes Fresnel textures.
    void addFresnel(const char* name, float value);
    void addColor(const char* name, const char* label, int red, int green, int blue);
    void addColor(const char* name, int red, int green, int blue)
    {
        addColor(name, name, red, green, blue);
    }
    void addBool(const char* name, const char* label, bool value);
    void addBool(const char* name, bool value) { addBool(name, name, value); }
    void addEnum(const char* name, const QStringList& items, int value);
    void addMaterialInput(const char* name, const char* label);
    void addMaterialInput(const char* name) { addMaterialInput(name, name); }
};
