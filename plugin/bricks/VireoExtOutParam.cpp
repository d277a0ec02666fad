// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoExtOutParam.h"

#include "LinkTypes.h"

VireoExtOutParam::VireoExtOutParam()
{
}

DzBrickParam::ParamType VireoExtOutParam::getArgType(int) const
{
    return linkTypeFor(DzOutParam::getType());
}

int VireoExtOutParam::getType() const
{
    return linkTypeFor(DzOutParam::getType());
}

DzBrickParam::ParamType VireoExtOutParam::getTypeForToken(int) const
{
    return linkTypeFor(DzOutParam::getType());
}

QString VireoExtOutParam::getTypeString(int) const
{
    return linkTypeText(this);
}

void VireoExtOutParam::setLinkType(int code)
{
    if (isLinkType(code))
        setType(code);
}
