// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickUser.h"

#include <QString>
#include <memory>

class VireoRootBrick;

/// A network built for measuring, with its root.
struct Network {
    std::unique_ptr<VireoBrickUser> user;
    VireoRootBrick* root;
    int brickCount; ///< textures, without root and material
};

/// A matte material whose colour comes from a full binary tree of colour mix textures.
Network buildMixTree(int textures);
/// A matte material whose bump comes from a chain of float scale textures.
Network buildScaleChain(int textures);
/// A chain of colour mixes with checkerboards and image maps in them, and constants that feed
/// nothing, in equal parts; `textures` is a multiple of 4.
Network buildMixedNetwork(int textures);

/// Ends the program when `holds` is false: what is wrong must not be timed.
void require(bool holds, const char* what);
