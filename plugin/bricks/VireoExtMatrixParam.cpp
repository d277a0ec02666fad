// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoExtMatrixParam.h"

#include "LinkTypes.h"

VireoExtMatrixParam::VireoExtMatrixParam()
{
}

DzBrickParam::ParamType VireoExtMatrixParam::getArgType(int index) const
{
    return linkTypeFor(DzMatrixParam::getArgType(index));
}

int VireoExtMatrixParam::getType() const
{
    return linkTypeFor(DzMatrixParam::getType());
}

DzBrickParam::ParamType VireoExtMatrixParam::getTypeForToken(int index) const
{
    return linkTypeFor(DzMatrixParam::getTypeForToken(index));
}
