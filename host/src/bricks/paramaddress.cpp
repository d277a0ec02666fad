// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "paramaddress.h"

#include "brickaccess.h"

void ParamAddress::set(DzBrickParam* param)
{
    m_param = param;
    if (param)
        ++DzBrickParam::Access::numAddresses(param);
}

void ParamAddress::release()
{
    if (!m_param)
        return;
    // Off its brick and known to no step: nobody can bring it back any more.
    if (--DzBrickParam::Access::numAddresses(m_param) == 0 && !m_param->getTopBrickOwner()
        && DzBrickParam::Access::formerBrick(m_param))
        delete m_param;
    m_param = nullptr;
}

ParamAddress& ParamAddress::operator=(const ParamAddress& other)
{
    ParamAddress copy(other);
    m_param.swap(copy.m_param);
    return *this;
}
