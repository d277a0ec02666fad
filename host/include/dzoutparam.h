// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"

/// An output.
class DzOutParam : public DzBrickParam
{
    Q_OBJECT

public:
    DzOutParam();

    void setType(ParamType type);
    int getType() const override { return m_type; }

private:
    ParamType m_type = UnknownType;
};
