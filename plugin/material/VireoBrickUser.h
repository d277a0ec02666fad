// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LinkTypes.h"
#include "dzdefaultbrickuser.h"
#include "dzmaterial.h"

#include <QHash>
#include <QVariant>

class VireoBrickUserPrivate;

/// The material that owns a network of the plug-in's bricks. In the viewport it is plain black and
/// opaque; what it means is in its network.
///
/// Scripts see four signals and the invokable methods in the order in which they stand here, and
/// count on that order.
class VireoBrickUser : public DzMaterial, public DzDefaultBrickUser
{
    Q_OBJECT
    Q_ENUMS(MyExParamType)

public:
    /// Kinds of inputs that users add.
    enum MyExParamType {
        VireoExtMaterial = MaterialLink,
        VireoExtVolume = VolumeLink,
        VireoExtFloat = FloatLink,
        VireoExtColor = ColorLink,
        VireoExtPoint = PointLink,
        VireoExtVector = VectorLink,
        VireoExtNormal = NormalLink,
        VireoExtMatrix = MatrixLink,
        VireoExtString = StringLink,
        VireoExtFresnel = FresnelLink
    };

    VireoBrickUser();
    ~VireoBrickUser() override;

    // DzElement
    /// Copies the network of another brick user, and the properties of any element.
    void copyFrom(const DzElement* other) override;

    // DzMaterial. The viewport shows black: what would change that does nothing.
    Q_INVOKABLE void setDiffuseColor(QColor color) override;
    Q_INVOKABLE void setBaseOpacity(float opacity) override;
    Q_INVOKABLE void setColorMap(const DzTexture* map) override;
    Q_INVOKABLE void setOpacityMap(const DzTexture* map) override;
    Q_INVOKABLE QColor getDiffuseColor() const override;
    Q_INVOKABLE float getBaseOpacity() const override;
    Q_INVOKABLE bool isColorMappable() const override;
    Q_INVOKABLE bool isOpacityMappable() const override;
    Q_INVOKABLE DzTexture* getColorMap() const override;
    Q_INVOKABLE DzTexture* getOpacityMap() const override;
    Q_INVOKABLE QString getMaterialName() const override;
    Q_INVOKABLE bool needsTangentSpaceParams() const override;
    Q_INVOKABLE bool shouldAlwaysEmbed() const override;

    // IDzBrickUser and, again, DzElement
    Q_INVOKABLE QString getExtension() const override;
    Q_INVOKABLE DzElement* setAttributes(const DzSettings* settings) override;
    Q_INVOKABLE void getAttributes(DzSettings* settings) const override;
    Q_INVOKABLE QString getBrickUserName() const override;
    Q_INVOKABLE void setBrickUserName(const QString& name) override;
    Q_INVOKABLE int getNumBrickSets() const override;
    Q_INVOKABLE DzBrickSet* getBrickSet(int index) const override;
    Q_INVOKABLE uint addBrick(DzShaderBrick* brick) override;
    Q_INVOKABLE DzShaderBrick* getBrick(uint id) const override;
    /// The numbers of all bricks, ascending.
    Q_INVOKABLE QVariantList getBrickIDs() const;
    Q_INVOKABLE void getBrickIDs(QList<uint>& ids) const override;
    Q_INVOKABLE bool deleteBrick(uint id) override;
    Q_INVOKABLE bool deleteBrick(DzShaderBrick* brick) override;
    Q_INVOKABLE void deleteAllBricks() override;
    Q_INVOKABLE void invalidateSets() override;
    Q_INVOKABLE bool moveBrick(uint id, IDzBrickUser* newOwner) override;
    Q_INVOKABLE QUuid getIdentifier() const override;
    Q_INVOKABLE void setIdentifier(const QUuid& identifier) override;
    Q_INVOKABLE void updateIdentifierOnSetInvalidate(bool onOff) override;
    Q_INVOKABLE bool isInEditMode() const override;
    Q_INVOKABLE void startEditMode() override;
    Q_INVOKABLE void endEditMode() override;
    Q_INVOKABLE void applyToScene() override;
    void removeFromScene() override;
    Q_INVOKABLE QList<IDzBrickUser*> fromScene() override;
    /// Brings the values of an element's properties into a network that was just rebuilt.
    /// `createdBricks` are its bricks by the names they had in the settings; entries of the map
    /// that lead nowhere are skipped.
    Q_INVOKABLE void applyElementPropsToSettings(QHash<QString, DzShaderBrick*> createdBricks,
        const DzSettings* propertyMapSet, DzElement* elem);
    Q_INVOKABLE bool usesLocalShaderSpace() const override;
    Q_INVOKABLE void removeSet(DzBrickSet* set) override;
    Q_INVOKABLE void brickIDChanged(int oldID) override;
    Q_INVOKABLE void resolvePropertyOwnership(DzShaderBrick* brick) override;

    // Not for scripts
    bool allowsAutoBake() const override;
    DzElement* getBrickUserElement() override { return this; }
    /// Only the plug-in's own bricks write text, so only they may be used.
    bool canUseBrick(const DzShaderBrick* brick) const override;
    IDzBrickUser* createBrickUser() const override;
    void generatingFilesStarted() override;
    void generatingFilesFinished() override;

signals:
    void brickRemoved(DzShaderBrick* brick);
    void brickAdded(DzShaderBrick* brick);
    void generateFilesStarted();
    void generateFilesFinished();

protected:
    // DzMaterial
    void setGLMat(DzDrawStyle* style) override;
    void unsetGLMat(DzDrawStyle* style) override;
    /// Clears the surface and has every brick set make its own.
    void setShader(DzRenderSettings* settings) override;
    void setTextureConvertShader(DzRenderSettings* settings) override;

    // IDzBrickUser
    void brickWasRestored(DzShaderBrick* brick) override;
    void brickWasRemoved(DzShaderBrick* brick) override;

private:
    VireoBrickUserPrivate* d;
};
