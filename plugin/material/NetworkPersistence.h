// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>

class DzElement;
class DzMaterial;
class DzSettings;
class DzShaderBrick;
class VireoBrickUser;

/// Keys of the trees in which networks are stored. They are part of files.
namespace StoredKeys {
/// A brick user's network, in the host's layout.
inline QString brickSetup()
{
    return QLatin1String("BrickSetup");
}
/// The element data item that keeps a network on a surface, and its one level.
inline QString dataItem()
{
    return QLatin1String("VireoElementDataItem");
}
inline QString sceneInformation()
{
    return QLatin1String("VireoSceneBrickInformation");
}
/// Which properties of the surface stand for which properties of the network.
inline QString propertyMap()
{
    return QLatin1String("MyExtBrickSetProperties");
}
} // namespace StoredKeys

/// Stores the network of a brick user's attributes on a surface, in place of one that it has.
/// Attributes without a network change nothing. It can be undone.
void storeNetwork(DzMaterial* material, const DzSettings& attributes);

/// What a surface keeps under "VireoSceneBrickInformation", when that holds a network; else null.
const DzSettings* storedNetwork(const DzMaterial* material);

/// Rebuilds the network that a surface keeps in an empty brick user; false when it keeps none.
bool rebuildStoredNetwork(const DzMaterial* material, VireoBrickUser* user);

/// Brings the values of an element's properties into a rebuilt network, as `propertyMap` says.
/// Entries that lead nowhere are skipped.
void applyPropertyMap(const QHash<QString, DzShaderBrick*>& createdBricks,
    const DzSettings* propertyMap, const DzElement* element);
