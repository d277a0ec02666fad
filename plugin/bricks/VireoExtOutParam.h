// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzoutparam.h"

/// A brick's output.
class VireoExtOutParam : public DzOutParam
{
    Q_OBJECT

public:
    VireoExtOutParam();

    // DzBrickParam
    ParamType getArgType(int index) const override;
    int getType() const override;
    ParamType getTypeForToken(int index) const override;
    QString getTypeString(int index = 0) const override;

    /// Sets what the output carries; a number that is not a link type is ignored.
    void setLinkType(int code);
};
