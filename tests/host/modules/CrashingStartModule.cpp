// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

#include <csignal>

namespace {

/// Crashes while the system loads the module.
struct Start {
    Start() { std::raise(SIGSEGV); }
} start;

} // namespace

MODULE_EXPORT DzVersion getSDKVersion()
{
    return DZ_SDK_VERSION;
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin plugin("CrashingStart");
    return &plugin;
}
