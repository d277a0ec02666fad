// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "paramaddress.h"

#include "paramkeys.h"

ParamAddress::ParamAddress(DzBrickParam* param)
    : m_brick(param->getTopBrickOwner())
    , m_param(param)
    , m_key(m_brick ? ParamKeys::keyOf(m_brick, param) : QString())
{
}

DzBrickParam* ParamAddress::find()
{
    if (!m_param && m_brick)
        m_param = ParamKeys(m_brick).find(m_key);
    return m_param;
}
