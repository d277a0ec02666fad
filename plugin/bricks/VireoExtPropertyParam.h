// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoParam.h"
#include "dzpropertyparam.h"

/// An input or settings row over a host property. When one texture is linked to it, the texture
/// is written instead of the property's value.
class VireoExtPropertyParam : public DzPropertyParam, public VireoParam
{
    Q_OBJECT
    Q_INTERFACES(VireoParam)

public:
    VireoExtPropertyParam();

    // DzBrickParam
    ParamType getArgType(int index) const override;
    int getType() const override;
    ParamType getTypeForToken(int index) const override;
    bool needsPrepForCall(int index) const override;
    bool canConnect(DzBrickParam* other) const override;
    QString getTypeString(int index = 0) const override;

    // VireoParam
    void writeParameterCode(SceneCodeWriter* writer) override;

    /// A Fresnel input takes Fresnel textures, and only those.
    void setFresnel(bool isFresnel) { block.fresnel = isFresnel; }
    bool isFresnel() const { return block.fresnel; }
    /// A connection-only input writes nothing until something is linked to it.
    void setConnectedOnly(bool connectedOnly) { block.connectedOnly = connectedOnly; }
    bool isConnectedOnly() const { return block.connectedOnly; }

private:
    struct Block {
        bool fresnel = false;
        bool connectedOnly = false;
    };

    void writeConnected(SceneCodeWriter* writer);

    Block block;
};
