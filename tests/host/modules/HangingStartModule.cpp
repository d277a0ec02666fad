// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

#include <unistd.h>

namespace {

/// Never returns while the system loads the module.
struct Start {
    Start()
    {
        for (;;)
            pause();
    }
} start;

} // namespace

MODULE_EXPORT DzVersion getSDKVersion()
{
    return DZ_SDK_VERSION;
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin plugin("HangingStart");
    return &plugin;
}
