// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "StoredNetworks.h"

#include "dzelement.h"
#include "dzsettings.h"
#include "dzsimpleelementdata.h"

namespace {

/// Users keep a network beside other things of theirs, in a tree of its own or not.
bool holdsNetwork(const DzSettings* settings)
{
    if (settings->hasKey(networkKey()))
        return true;
    for (int i = 0; i < settings->getNumValues(); ++i) {
        const DzSettings* inner = settings->getSettingsValue(settings->getKey(i));
        if (inner && inner->hasKey(networkKey()))
            return true;
    }
    return false;
}

} // namespace

QString networkKey()
{
    return QStringLiteral("BrickSetup");
}

bool keepsNetwork(const DzElement* element)
{
    for (int i = 0; i < element->getNumDataItems(); ++i) {
        const auto* item = qobject_cast<const DzSimpleElementData*>(element->getDataItem(i));
        if (item && holdsNetwork(item->getSettings()))
            return true;
    }
    return false;
}
