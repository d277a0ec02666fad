// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

/// One build later than what the host offers.
MODULE_EXPORT DzVersion getSDKVersion()
{
    return DzVersion(4, 5, 0, 101);
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin plugin("Newer");
    return &plugin;
}
