// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class IDzBrickUser;
class VireoRootBrick;

/// Loads a network file and finds the root that is written. Warnings become notices; `purpose` is
/// what could not be done without a root: "cannot <purpose> FILE: …".
VireoRootBrick* loadNetworkRoot(const QString& path, IDzBrickUser* user, const char* purpose);
