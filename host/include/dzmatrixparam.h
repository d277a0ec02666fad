// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"

class DzFloatProperty;

/// A parameter of sixteen float components in row order, each a property; the identity at first.
/// It may be linked to matrix outputs only.
class DzMatrixParam : public DzBrickParam
{
    Q_OBJECT

public:
    DzMatrixParam();
    ~DzMatrixParam() override;

    void setDirection(int direction) { changeDirection(direction); }

    int getNumProperties() const override { return 16; }
    DzProperty* getProperty(int index) const override;
    QString getStringValue(int index) const override;
    /// The host's word for the kind, whatever number a derived class gives it.
    QString getTypeString(int index = 0) const override;
    int getType() const override { return MatrixType; }
    bool canConnect(DzBrickParam* other) const override;

private:
    DzFloatProperty* m_components[16];
};
