// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Translation.h"

#include <map>
#include <string>

namespace lux {

/// A volume that was defined.
struct VolumeTerm {
    QByteArray name; ///< LuxCore's
    FresnelTerm fresnel;
};

/// The materials and volumes that were defined so far; of equal names the last.
struct MaterialNames {
    std::map<std::string, QByteArray> materials;
    std::map<std::string, VolumeTerm> volumes;
    /// Materials, by LuxCore's name, that disperse light by the volume within.
    std::map<QByteArray, bool> disperses;
};

/// Adds the volume that the statement defines.
void translateVolume(const Statement& statement, Translation* translation, MaterialNames* names);

/// Writes the material that the statement describes; LuxCore's name of it. What the renderer
/// refuses is its default material, with a note.
QByteArray translateMaterial(
    const Statement& statement, Translation* translation, MaterialNames* names);

} // namespace lux
