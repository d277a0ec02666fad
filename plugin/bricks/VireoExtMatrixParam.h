// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzmatrixparam.h"

/// A matrix that takes textures of its kind.
class VireoExtMatrixParam : public DzMatrixParam
{
    Q_OBJECT

public:
    VireoExtMatrixParam();

    // DzBrickParam
    ParamType getArgType(int index) const override;
    int getType() const override;
    ParamType getTypeForToken(int index) const override;
};
