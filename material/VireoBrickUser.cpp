// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoBrickUser.h"

#include "VireoBrickBase.h"
#include "dzapp.h"
#include "dzsettings.h"
#include "dzundostack.h"

namespace {

const char* const setupKey = "BrickSetup";

} // namespace

VireoBrickUser::VireoBrickUser()
{
    setName(QLatin1String("Vireo Brick User"));
    setBrickUserName(QLatin1String("Vireo Brick User"));
}

VireoBrickUser::~VireoBrickUser()
{
    DzUndoStackLock lock;
    deleteAllBricks();
}

DzElement* VireoBrickUser::setAttributes(const DzSettings* settings)
{
    const DzSettings* setup
        = settings ? settings->getSettingsValue(QLatin1String(setupKey)) : nullptr;
    if (setup)
        setAttributesHelper(setup, nullptr);
    return this;
}

void VireoBrickUser::getAttributes(DzSettings* settings) const
{
    DzSettings* setup = settings->setSettingsValue(QLatin1String(setupKey));
    QList<uint> ids;
    getBrickIDs(ids);
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

bool VireoBrickUser::canUseBrick(const DzShaderBrick* brick) const
{
    return qobject_cast<const VireoBrickBase*>(brick) != nullptr;
}

IDzBrickUser* VireoBrickUser::createBrickUser() const
{
    return new VireoBrickUser;
}

QString VireoBrickUser::getExtension() const
{
    return QLatin1String("sskn");
}

uint VireoBrickUser::addBrick(DzShaderBrick* brick)
{
    const uint id = DzDefaultBrickUser::addBrick(brick);
    if (id != 0)
        emit brickAdded(brick);
    return id;
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
