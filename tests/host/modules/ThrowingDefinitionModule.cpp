// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

MODULE_EXPORT DzVersion getSDKVersion()
{
    return DZ_SDK_VERSION;
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    throw 7;
}
