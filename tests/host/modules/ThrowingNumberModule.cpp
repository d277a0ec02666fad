// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

namespace {

/// Throws what is no exception.
struct Start {
    Start() { throw 7; }
} start;

} // namespace

MODULE_EXPORT DzVersion getSDKVersion()
{
    return DZ_SDK_VERSION;
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    static DzPlugin plugin("ThrowingNumber");
    return &plugin;
}
