// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Translation.h"

namespace lux {

/// What the fresnel texture of the statement is. False if the renderer has no such type, or refuses
/// the texture for what it says; in both cases whoever refers to it takes its own default.
bool translateFresnel(const Statement& statement, Translation* translation, FresnelTerm* term);

} // namespace lux
