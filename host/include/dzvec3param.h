// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"
#include "dzvec3.h"

class DzFloatProperty;

/// A parameter of three float components, each a property ("X", "Y", "Z"). It may be linked to
/// outputs of exactly its own type.
class DzVec3Param : public DzBrickParam
{
    Q_OBJECT

public:
    /// `type` is one of the point, vector and normal types.
    explicit DzVec3Param(ParamType type, const DzVec3& defaultValue = DzVec3());
    ~DzVec3Param() override;

    void setDirection(int direction) { changeDirection(direction); }
    Q_INVOKABLE DzVec3 getValue() const;
    Q_INVOKABLE void setValue(const DzVec3& value);
    Q_INVOKABLE DzVec3 getDefaultValue() const;

    int getNumProperties() const override { return 3; }
    DzProperty* getProperty(int index) const override;
    QString getStringValue(int index) const override;
    /// The host's word for the kind, whatever number a derived class gives it.
    QString getTypeString(int index = 0) const override;
    int getType() const override { return m_type; }
    bool canConnect(DzBrickParam* other) const override;

private:
    ParamType m_type;
    DzFloatProperty* m_components[3];
};
