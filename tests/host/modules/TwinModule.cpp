// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

MODULE_EXPORT DzVersion getSDKVersion()
{
    return DZ_SDK_VERSION;
}

/// Takes the name of another module.
MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin plugin("Good");
    return &plugin;
}
