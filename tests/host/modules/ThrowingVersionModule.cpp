// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

#include <stdexcept>

MODULE_EXPORT DzVersion getSDKVersion()
{
    throw std::runtime_error("no version\ntoday");
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    return nullptr;
}
