// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

/// Lacks the other entry point.
MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin plugin("NoVersion");
    return &plugin;
}
