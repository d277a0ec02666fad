// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class IDzBrickUser;

/// A new, empty brick user of the kind that the loaded modules offer, owned by the caller; null
/// when they offer none.
IDzBrickUser* makeBrickUser();

/// Deletes a brick user, or gives up one share of one that is shared.
void releaseBrickUser(IDzBrickUser* user);
/// Takes one share of a brick user that can be shared.
void keepBrickUser(IDzBrickUser* user);
