// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickMacros.h"
#include "VireoBrickBase.h"

/// Base of the volume bricks: an output "result" and one MakeNamedVolume statement.
class VireoVolumeBrick : public VireoBrickBase
{
    Q_OBJECT

public:
    // DzShaderBrick
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
    QString getDefaultCategory() const override { return QLatin1String("Vireo//Volumes"); }
    bool shouldSeperateLocalProperties() const override { return false; }

    // VireoBrickBase
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override;

protected:
    VireoVolumeBrick();

    /// A row of the catalogue: a float that takes Fresnel textures. The recorded default is 0
    /// whatever the start value.
    void addFresnel(const char* name, float value);
};
