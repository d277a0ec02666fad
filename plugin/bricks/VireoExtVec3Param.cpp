// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoExtVec3Param.h"

#include "LinkTypes.h"

VireoExtVec3Param::VireoExtVec3Param(ParamType type, const DzVec3& defaultValue)
    : DzVec3Param(type, defaultValue)
{
}

DzBrickParam::ParamType VireoExtVec3Param::getArgType(int index) const
{
    return linkTypeFor(DzVec3Param::getArgType(index));
}

int VireoExtVec3Param::getType() const
{
    return linkTypeFor(DzVec3Param::getType());
}

DzBrickParam::ParamType VireoExtVec3Param::getTypeForToken(int index) const
{
    return linkTypeFor(DzVec3Param::getTypeForToken(index));
}
