// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoParam.h"
#include "dzbrickparam.h"

/// An input without a property, there only to be linked to: a material or a volume.
class VireoExtComplexIn : public DzBrickParam, public VireoParam
{
    Q_OBJECT
    Q_INTERFACES(VireoParam)

public:
    VireoExtComplexIn();

    // DzBrickParam
    int getNumTokensNeeded() const override;
    QString getArg(int index) const override;
    ParamType getArgType(int index) const override;
    int getPropertyMapToken(int index) const override;
    int getType() const override;
    QString getStringValue(int index) const override;
    bool canConnect(DzBrickParam* other) const override;
    QString getTypeString(int index = 0) const override;

    // VireoParam
    void writeParameterCode(SceneCodeWriter* writer) override;

    /// Sets what can be linked; a number that is not a link type is ignored.
    void setLinkType(int code);

public slots:
    void setArgName(const QString& argName) { block.argName = argName; }

private:
    /// What a bare input starts with: bricks set both.
    struct Block {
        QString argName = QLatin1String("val1");
        int linkType = FloatType;
    };

    Block block;
};
