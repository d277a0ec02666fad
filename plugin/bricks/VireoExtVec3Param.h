// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzvec3param.h"

/// A point, vector or normal that takes textures of its kind.
class VireoExtVec3Param : public DzVec3Param
{
    Q_OBJECT

public:
    explicit VireoExtVec3Param(ParamType type, const DzVec3& defaultValue = DzVec3());

    // DzBrickParam
    ParamType getArgType(int index) const override;
    int getType() const override;
    ParamType getTypeForToken(int index) const override;
};
