// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoBrickUser.h"

#include "MaterialConversion.h"
#include "NetworkPersistence.h"
#include "SurfaceProperties.h"
#include "VireoBrickBase.h"
#include "dzapp.h"
#include "dzrenderer.h"
#include "dzsettings.h"
#include "dzundostack.h"

/// Kept for state to come: the class's size is part of what the host's modules agree on.
class VireoBrickUserPrivate
{
};

VireoBrickUser::VireoBrickUser()
    : d(new VireoBrickUserPrivate)
{
    setName(QLatin1String("Vireo Brick User"));
    setBrickUserName(QLatin1String("Vireo Brick User"));
}

VireoBrickUser::~VireoBrickUser()
{
    DzUndoStackLock lock;
    DzDefaultBrickUser::deleteAllBricks();
    delete d;
}

DzElement* VireoBrickUser::setAttributes(const DzSettings* settings)
{
    const DzSettings* setup
        = settings ? settings->getSettingsValue(StoredKeys::brickSetup()) : nullptr;
    if (setup)
        setAttributesHelper(setup, nullptr);
    return this;
}

void VireoBrickUser::getAttributes(DzSettings* settings) const
{
    DzSettings* setup = settings->setSettingsValue(StoredKeys::brickSetup());
    QList<uint> ids;
    DzDefaultBrickUser::getBrickIDs(ids);
    getAttributesHelper(setup, ids, nullptr);
}

void VireoBrickUser::copyFrom(const DzElement* other)
{
    if (!other) {
        // The text names the host's class, as users of the host know it.
        dzApp->warning(QLatin1String("NULL pointer passed to DzBrickGroup::copyFrom()"));
        return;
    }
    const VireoBrickUser* source = qobject_cast<const VireoBrickUser*>(other);
    // Copying from itself would delete what is to be copied.
    if (source && source != this) {
        // What is copied is made without undo, so that what it replaces goes without undo too.
        DzUndoStackLock lock;
        deleteAllBricks();
        DzSettings settings;
        settings.setStringValue(QLatin1String("AttributesMode"), QLatin1String("Copy"));
        source->getAttributes(&settings);
        setAttributes(&settings);
        // A copy is another user: it keeps all else.
        setIdentifier(QUuid::createUuid());
    }
    DzElement::copyFrom(other);
}

void VireoBrickUser::setDiffuseColor(QColor)
{
}

void VireoBrickUser::setBaseOpacity(float)
{
}

void VireoBrickUser::setColorMap(const DzTexture*)
{
}

void VireoBrickUser::setOpacityMap(const DzTexture*)
{
}

QColor VireoBrickUser::getDiffuseColor() const
{
    return QColor(0, 0, 0, 255);
}

float VireoBrickUser::getBaseOpacity() const
{
    return 1.0f;
}

bool VireoBrickUser::isColorMappable() const
{
    return false;
}

bool VireoBrickUser::isOpacityMappable() const
{
    return false;
}

DzTexture* VireoBrickUser::getColorMap() const
{
    return nullptr;
}

DzTexture* VireoBrickUser::getOpacityMap() const
{
    return nullptr;
}

QString VireoBrickUser::getMaterialName() const
{
    return QLatin1String("Vireo - LuxRender");
}

bool VireoBrickUser::needsTangentSpaceParams() const
{
    return false;
}

bool VireoBrickUser::shouldAlwaysEmbed() const
{
    return true;
}

QString VireoBrickUser::getExtension() const
{
    return QLatin1String("sskn");
}

QString VireoBrickUser::getBrickUserName() const
{
    return DzDefaultBrickUser::getBrickUserName();
}

void VireoBrickUser::setBrickUserName(const QString& name)
{
    DzDefaultBrickUser::setBrickUserName(name);
}

int VireoBrickUser::getNumBrickSets() const
{
    return DzDefaultBrickUser::getNumBrickSets();
}

DzBrickSet* VireoBrickUser::getBrickSet(int index) const
{
    return DzDefaultBrickUser::getBrickSet(index);
}

uint VireoBrickUser::addBrick(DzShaderBrick* brick)
{
    const uint id = DzDefaultBrickUser::addBrick(brick);
    if (id != 0)
        emit brickAdded(brick);
    return id;
}

DzShaderBrick* VireoBrickUser::getBrick(uint id) const
{
    return DzDefaultBrickUser::getBrick(id);
}

QVariantList VireoBrickUser::getBrickIDs() const
{
    QList<uint> ids;
    DzDefaultBrickUser::getBrickIDs(ids);
    QVariantList list;
    for (int i = 0; i < ids.size(); ++i)
        list.append(ids.at(i));
    return list;
}

void VireoBrickUser::getBrickIDs(QList<uint>& ids) const
{
    DzDefaultBrickUser::getBrickIDs(ids);
}

bool VireoBrickUser::deleteBrick(uint id)
{
    return DzDefaultBrickUser::deleteBrick(id);
}

bool VireoBrickUser::deleteBrick(DzShaderBrick* brick)
{
    return DzDefaultBrickUser::deleteBrick(brick);
}

void VireoBrickUser::deleteAllBricks()
{
    DzDefaultBrickUser::deleteAllBricks();
}

void VireoBrickUser::invalidateSets()
{
    DzDefaultBrickUser::invalidateSets();
}

bool VireoBrickUser::moveBrick(uint id, IDzBrickUser* newOwner)
{
    return DzDefaultBrickUser::moveBrick(id, newOwner);
}

QUuid VireoBrickUser::getIdentifier() const
{
    return DzDefaultBrickUser::getIdentifier();
}

void VireoBrickUser::setIdentifier(const QUuid& identifier)
{
    DzDefaultBrickUser::setIdentifier(identifier);
}

void VireoBrickUser::updateIdentifierOnSetInvalidate(bool onOff)
{
    DzDefaultBrickUser::updateIdentifierOnSetInvalidate(onOff);
}

bool VireoBrickUser::isInEditMode() const
{
    return DzDefaultBrickUser::isInEditMode();
}

void VireoBrickUser::startEditMode()
{
    DzDefaultBrickUser::startEditMode();
}

void VireoBrickUser::endEditMode()
{
    DzDefaultBrickUser::endEditMode();
}

void VireoBrickUser::applyToScene()
{
    applyToSelectedMaterials(this);
}

void VireoBrickUser::removeFromScene()
{
    stripSelectedSurfaces();
}

QList<IDzBrickUser*> VireoBrickUser::fromScene()
{
    const QList<VireoBrickUser*> converted = convertSelectedMaterials();
    QList<IDzBrickUser*> users;
    for (int i = 0; i < converted.size(); ++i)
        users.append(converted.at(i));
    return users;
}

void VireoBrickUser::applyElementPropsToSettings(
    QHash<QString, DzShaderBrick*> createdBricks, const DzSettings* propertyMapSet, DzElement* elem)
{
    applyPropertyMap(createdBricks, propertyMapSet, elem);
}

bool VireoBrickUser::usesLocalShaderSpace() const
{
    return DzDefaultBrickUser::usesLocalShaderSpace();
}

void VireoBrickUser::removeSet(DzBrickSet* set)
{
    DzDefaultBrickUser::removeSet(set);
}

void VireoBrickUser::brickIDChanged(int oldID)
{
    DzDefaultBrickUser::brickIDChanged(oldID);
}

void VireoBrickUser::resolvePropertyOwnership(DzShaderBrick* brick)
{
    DzDefaultBrickUser::resolvePropertyOwnership(brick);
}

bool VireoBrickUser::allowsAutoBake() const
{
    return false;
}

bool VireoBrickUser::canUseBrick(const DzShaderBrick* brick) const
{
    return qobject_cast<const VireoBrickBase*>(brick) != nullptr;
}

IDzBrickUser* VireoBrickUser::createBrickUser() const
{
    return new VireoBrickUser;
}

void VireoBrickUser::generatingFilesStarted()
{
    emit generateFilesStarted();
}

void VireoBrickUser::generatingFilesFinished()
{
    emit generateFilesFinished();
}

void VireoBrickUser::setGLMat(DzDrawStyle*)
{
}

void VireoBrickUser::unsetGLMat(DzDrawStyle*)
{
}

void VireoBrickUser::setShader(DzRenderSettings* settings)
{
    settings->renderEngine->riSurface(QString(), 0, nullptr, nullptr);
    for (int i = 0; i < getNumBrickSets(); ++i)
        getBrickSet(i)->apply(settings);
}

void VireoBrickUser::setTextureConvertShader(DzRenderSettings*)
{
}

void VireoBrickUser::brickWasRestored(DzShaderBrick* brick)
{
    // A brick of unknown class comes and goes unannounced: only loading may put one in.
    if (canUseBrick(brick))
        emit brickAdded(brick);
}

void VireoBrickUser::brickWasRemoved(DzShaderBrick* brick)
{
    emit brickRemoved(brick);
}
