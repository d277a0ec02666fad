// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzoutparam.h"

DzOutParam::DzOutParam()
    : DzBrickParam(OutputDirection)
{
    setName(QStringLiteral("out"));
}

void DzOutParam::setType(ParamType type)
{
    if (type == m_type)
        return;
    m_type = type;
    emit typeChanged();
    clearInvalidConnections();
}
