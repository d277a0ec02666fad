// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickset.h"

#include "dzshaderbrick.h"

DzBrickSet::DzBrickSet(DzShaderBrick* root, IDzBrickUser* owner)
    : m_root(root)
    , m_owner(owner)
{
}

DzBrickSet::ShaderType DzBrickSet::getShaderType() const
{
    return m_root->type();
}
