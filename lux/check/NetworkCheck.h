// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TextCheck.h"

class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

namespace lux {

/// A finding of a network. Its span and place are those of the text that the check wrote.
struct BrickFinding {
    Finding finding;
    /// The brick that wrote the statement; null if it is none of one brick.
    DzShaderBrick* brick = nullptr;
    /// The value that the finding is of; null if it is none of one value.
    DzProperty* property = nullptr;
    /// False if the brick feeds nothing that a root brick writes, so that the renderer never sees
    /// it.
    bool isWritten = true;
};

struct NetworkCheckOptions {
    bool tellsPortability = false;
    /// The folder that image files are looked for in; empty to look for none.
    QString imageFolder;
};

/// What the renderer will do with a network: with the text that its root writes, images named by
/// their files, and then with the bricks that the root does not reach. Bricks and properties are
/// not owned and live as long as the network is not changed. Only for the thread that owns it.
std::vector<BrickFinding> checkNetwork(
    const IDzBrickUser* user, const NetworkCheckOptions& options);

} // namespace lux
