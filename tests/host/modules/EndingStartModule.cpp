// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

#include <cstdlib>

namespace {

/// Ends the program while the system loads the module.
struct Start {
    Start() { std::exit(0); }
} start;

} // namespace

MODULE_EXPORT DzVersion getSDKVersion()
{
    return DZ_SDK_VERSION;
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin plugin("EndingStart");
    return &plugin;
}
