// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkPersistence.h"

#include "VireoBrickUser.h"
#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzpropertysettings.h"
#include "dzshaderbrick.h"
#include "dzsimpleelementdata.h"
#include "dzundostack.h"

namespace {

const DzSimpleElementData* findDataItem(const DzMaterial* material)
{
    return qobject_cast<const DzSimpleElementData*>(material->findDataItem(StoredKeys::dataItem()));
}

/// Properties that the map's own files put under this path go back to where they were.
void leaveMapPath(DzProperty* property)
{
    const QString prefix = QLatin1String("/MyExtProperties/");
    const QString path = property->getPath() + QLatin1Char('/');
    if (path.startsWith(prefix))
        property->setPath(path.mid(prefix.size()));
}

void applyMapEntry(const QHash<QString, DzShaderBrick*>& createdBricks, const DzSettings& entry,
    const QHash<QString, const DzProperty*>& sources)
{
    const QString brickName = entry.getStringValue(QLatin1String("SourceBrick"));
    const QString arg = entry.getStringValue(QLatin1String("SourceParam"));
    const QString propertyName = entry.getStringValue(QLatin1String("PropertyName"));
    if (brickName.isEmpty() || arg.isEmpty() || propertyName.isEmpty())
        return;
    DzShaderBrick* brick = createdBricks.value(brickName);
    const DzProperty* source = sources.value(propertyName);
    if (!brick || !source)
        return;
    DzBrickParam* param = brick->findParameterByArg(arg);
    // Whole numbers are stored as floats: what is too large for one is not an index either.
    const double index = entry.getFloatValue(QLatin1String("PropertyIndex"), 0);
    if (!param || !(index > -1 && index < param->getNumProperties()))
        return;
    DzProperty* target = param->getProperty(static_cast<int>(index));
    DzPropertySettings attributes;
    source->getAttributes(&attributes);
    target->setAttributes(&attributes);
    target->copyFrom(source);
    leaveMapPath(target);
}

} // namespace

void storeNetwork(DzMaterial* material, const DzSettings& attributes)
{
    const DzSettings* setup = attributes.getSettingsValue(StoredKeys::brickSetup());
    if (!setup)
        return;
    DzSettings information;
    information.setSettingsValue(StoredKeys::brickSetup(), *setup);
    // Another item in its place rather than other settings in the item: so it can be undone.
    DzSimpleElementData* item = new DzSimpleElementData(StoredKeys::dataItem(), true);
    DzElementData* before = material->findDataItem(StoredKeys::dataItem());
    if (const DzSimpleElementData* simple = findDataItem(material))
        *item->getSettings() = *simple->getSettings();
    if (before)
        material->deleteDataItem(before);
    item->getSettings()->setSettingsValue(StoredKeys::sceneInformation(), information);
    material->addDataItem(item);
}

const DzSettings* storedNetwork(const DzMaterial* material)
{
    const DzSimpleElementData* item = findDataItem(material);
    const DzSettings* information
        = item ? item->getSettings()->getSettingsValue(StoredKeys::sceneInformation()) : nullptr;
    const bool hasNetwork = information && information->getSettingsValue(StoredKeys::brickSetup());
    return hasNetwork ? information : nullptr;
}

bool rebuildStoredNetwork(const DzMaterial* material, VireoBrickUser* user)
{
    const DzSettings* information = storedNetwork(material);
    if (!information)
        return false;
    QHash<QString, DzShaderBrick*> createdBricks;
    user->setAttributesHelper(
        information->getSettingsValue(StoredKeys::brickSetup()), &createdBricks);
    // The surface may be rebuilt many times: each is another user.
    user->setIdentifier(QUuid::createUuid());
    applyPropertyMap(
        createdBricks, information->getSettingsValue(StoredKeys::propertyMap()), material);
    return true;
}

void applyPropertyMap(const QHash<QString, DzShaderBrick*>& createdBricks,
    const DzSettings* propertyMap, const DzElement* element)
{
    if (!propertyMap || !element || createdBricks.isEmpty())
        return;
    DzUndoStackLock lock;
    QHash<QString, const DzProperty*> sources;
    for (int i = 0; i < element->getNumProperties(); ++i)
        sources.insert(element->getProperty(i)->getName(), element->getProperty(i));
    for (int i = 0; i < propertyMap->getNumValues(); ++i)
        if (const DzSettings* entry = propertyMap->getSettingsValue(propertyMap->getKey(i)))
            applyMapEntry(createdBricks, *entry, sources);
}
