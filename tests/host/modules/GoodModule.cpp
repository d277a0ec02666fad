// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"
#include "dzelement.h"

/// What other modules are compared with: nothing is wrong with it, and it is of an older SDK.
MODULE_EXPORT DzVersion getSDKVersion()
{
    return DzVersion(4, 0, 3, 2);
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin* definition = nullptr;
    if (!definition) {
        static DzPlugin plugin("Good");
        plugin.setVersion(1, 2, 3, 4);
        plugin.setDescription("A \"quoted\" description");
        plugin.addClassFactory(new DzTClassFactory<DzElement>(DzElement::staticMetaObject,
            DzGuid::fromString("AAAAaaaa-2222-3333-4444-555555555555")));
        definition = &plugin;
    }
    return definition;
}
