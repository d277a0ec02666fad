// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QUuid>

class DzBrickSet;
class DzElement;
class DzShaderBrick;

/// Anything that owns a network of bricks.
class IDzBrickUser
{
public:
    virtual ~IDzBrickUser() {}

    /// The element that is the brick user.
    virtual DzElement* getBrickUserElement() = 0;
    const DzElement* getBrickUserElement() const
    {
        return const_cast<IDzBrickUser*>(this)->getBrickUserElement();
    }
    virtual QString getBrickUserName() const = 0;
    virtual void setBrickUserName(const QString& name) = 0;
    virtual QUuid getIdentifier() const = 0;
    virtual void setIdentifier(const QUuid& identifier) = 0;
    /// File extension of saved networks, without dot.
    virtual QString getExtension() const = 0;
    /// A new, empty brick user of the same kind, owned by the caller.
    virtual IDzBrickUser* createBrickUser() const = 0;

    /// True when a user of the mixer may put this brick into the network.
    virtual bool canUseBrick(const DzShaderBrick* brick) const = 0;
    /// Adds a brick, as a user would, and returns its number; 0 when it is refused, and then it
    /// stays the caller's. The brick user holds a share of the brick.
    virtual uint addBrick(DzShaderBrick* brick) = 0;
    virtual DzShaderBrick* getBrick(uint id) const = 0;
    /// The numbers of all bricks, ascending, appended to `ids`.
    virtual void getBrickIDs(QList<uint>& ids) const = 0;
    virtual int getNumBricks() const = 0;
    /// Removes a brick with its links, as a user would; false when there is none.
    virtual bool deleteBrick(uint id) = 0;
    virtual bool deleteBrick(DzShaderBrick* brick) = 0;
    virtual void deleteAllBricks() = 0;
    /// Gives a brick to another user that takes it; links to bricks that stay are removed.
    virtual bool moveBrick(uint id, IDzBrickUser* newOwner) = 0;

    virtual int getNumBrickSets() const = 0;
    virtual DzBrickSet* getBrickSet(int index) const = 0;
    /// Takes a set out until the sets are made anew.
    virtual void removeSet(DzBrickSet* set) = 0;
    /// The sets are made anew when they are asked for next.
    virtual void invalidateSets() = 0;
    /// When on, the identifier changes whenever the sets become invalid. Off at the start.
    virtual void updateIdentifierOnSetInvalidate(bool onOff) = 0;

    virtual bool isInEditMode() const = 0;
    virtual void startEditMode() = 0;
    virtual void endEditMode() = 0;

    /// Puts the network on every selected surface of the scene, as one undo step.
    virtual void applyToScene() = 0;
    /// Takes what applying put there off every selected surface of the scene, as one undo step.
    virtual void removeFromScene() {}
    /// A new brick user for every surface of DzScene::getSelectedMaterials(), in its order; the
    /// caller owns them.
    virtual QList<IDzBrickUser*> fromScene() = 0;
    /// True when shaders of this user compute in the space of the surface rather than the camera.
    virtual bool usesLocalShaderSpace() const = 0;
    /// A brick got another number.
    virtual void brickIDChanged(int oldID) = 0;
    /// Decides again which element a brick's properties belong to.
    virtual void resolvePropertyOwnership(DzShaderBrick* brick) = 0;
    /// A set is about to make its shader, or has made it.
    virtual void generatingFilesStarted() = 0;
    virtual void generatingFilesFinished() = 0;

    /// For the host's own sources.
    struct Access;

protected:
    /// A brick came back, or went, other than through addBrick().
    virtual void brickWasRestored(DzShaderBrick* brick) = 0;
    virtual void brickWasRemoved(DzShaderBrick* brick) = 0;

private:
    /// Called by a brick that is deleted by somebody else.
    virtual void forgetBrick(DzShaderBrick* brick) = 0;
};
