// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "settingstree.h"

#include <QString>
#include <QStringList>

/// The names of the members of a brick user's attributes, as the host's scene files have them.
namespace NetworkKeys {

#define DZ_NETWORK_KEY(function, text)                                                             \
    inline const QString& function()                                                               \
    {                                                                                              \
        static const QString key = QStringLiteral(text);                                           \
        return key;                                                                                \
    }

DZ_NETWORK_KEY(bricks, "Bricks")
DZ_NETWORK_KEY(connections, "Connections")
DZ_NETWORK_KEY(userName, "BrickUserName")
DZ_NETWORK_KEY(identifier, "Identifier")
DZ_NETWORK_KEY(className, "DAZStudioClassName")
DZ_NETWORK_KEY(attributes, "Attributes")
DZ_NETWORK_KEY(parameters, "Parameters")
// Members of a parameter that is not found under its own key on a fresh brick.
DZ_NETWORK_KEY(originalName, "OriginalName")
DZ_NETWORK_KEY(paramName, "Name")
// Marks a link that was never made, where reading it would make it now.
DZ_NETWORK_KEY(inactive, "Inactive")
DZ_NETWORK_KEY(brickProperties, "BrickProperties")
DZ_NETWORK_KEY(brickSettings, "BrickSettings")
// A link's source is its input side, its target the side whose output feeds it.
DZ_NETWORK_KEY(sourceBrick, "SourceBrick")
DZ_NETWORK_KEY(targetBrick, "TargetBrick")
DZ_NETWORK_KEY(sourceParam, "SourceParam")
DZ_NETWORK_KEY(targetParam, "TargetParam")

#undef DZ_NETWORK_KEY

/// What tells one link entry from another: its four ends.
inline QString linkName(const SettingsTree& entry)
{
    QStringList ends;
    for (const QString& key : { sourceBrick(), sourceParam(), targetBrick(), targetParam() })
        ends.append(entry.getStringValue(key));
    return ends.join(QLatin1Char('\n'));
}

inline QString brick(uint id)
{
    return QStringLiteral("Brick_%1").arg(id);
}

/// The number in a brick's name, 0 when the name is of another form.
inline uint brickID(const QString& name)
{
    const QString prefix = QStringLiteral("Brick_");
    bool ok = false;
    const uint id = name.startsWith(prefix) ? name.midRef(prefix.size()).toUInt(&ok) : 0;
    return ok && brick(id) == name ? id : 0;
}

} // namespace NetworkKeys
