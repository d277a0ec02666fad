// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>

/// What the properties of all bricks have in common.
namespace PropertyDefaults {

/// The limit of unlimited floats: the single-precision number nearest to it.
const float floatLimit = 1e38f;

/// The group under which the properties are shown.
inline QLatin1String path()
{
    return QLatin1String("/General");
}

} // namespace PropertyDefaults
