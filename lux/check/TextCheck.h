// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Finding.h"
#include "SceneText.h"

#include <vector>

namespace lux {

struct CheckOptions {
    /// Tells also where LuxCore shows something else.
    bool tellsPortability = false;
    /// True if all that the text names stands in it. A text with WorldBegin is taken for whole.
    bool isWhole = false;
    /// The folder that image files are looked for in; empty to look for none.
    QString imageFolder;
    /// As many findings of a rule are told; the rest is one finding with their number.
    int mostOfARule = 1000;
};

/// What the renderer will do with a scene that its author may not expect, in the scene's order:
/// by document, then by place. Safe to call from several threads at once.
std::vector<Finding> checkScene(const SceneText& scene, const CheckOptions& options);

} // namespace lux
