// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzdefaultbrickuser.h"
#include "dzmaterial.h"

/// The material that owns a network of the plug-in's bricks. In the viewport it is plain black and
/// opaque; what it means is in its network.
class VireoBrickUser : public DzMaterial, public DzDefaultBrickUser
{
    Q_OBJECT

public:
    VireoBrickUser();
    ~VireoBrickUser() override;

    // DzElement
    DzElement* setAttributes(const DzSettings* settings) override;
    void copyFrom(const DzElement* other) override;
    void getAttributes(DzSettings* settings) const override;

    // DzMaterial
    void setDiffuseColor(QColor color) override;
    void setBaseOpacity(float opacity) override;
    void setColorMap(const DzTexture* map) override;
    void setOpacityMap(const DzTexture* map) override;
    QColor getDiffuseColor() const override;
    float getBaseOpacity() const override;
    bool isColorMappable() const override;
    bool isOpacityMappable() const override;
    DzTexture* getColorMap() const override;
    DzTexture* getOpacityMap() const override;
    QString getMaterialName() const override;
    bool needsTangentSpaceParams() const override;
    bool shouldAlwaysEmbed() const override;

    // IDzBrickUser
    DzElement* getBrickUserElement() override { return this; }
    bool canUseBrick(const DzShaderBrick* brick) const override;
    IDzBrickUser* createBrickUser() const override;
    QString getExtension() const override;
    uint addBrick(DzShaderBrick* brick) override;

signals:
    void brickRemoved(DzShaderBrick* brick);
    void brickAdded(DzShaderBrick* brick);

protected:
    // IDzBrickUser
    void brickWasRestored(DzShaderBrick* brick) override;
    void brickWasRemoved(DzShaderBrick* brick) override;
};
