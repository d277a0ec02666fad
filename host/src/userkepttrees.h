// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzdefaultbrickuser.h"
#include "dzsettings.h"

#include <memory>

struct DzDefaultBrickUser::KeptTrees {
    std::unique_ptr<DzSettings> setup;
    std::unique_ptr<DzSettings> bricks;
    std::unique_ptr<DzSettings> connections;
    /// Entries of links that say more than their ends, by linkName().
    QHash<QString, DzSettings> linkEntries;
    /// Entries of "Connections" that make no link, in order; their keys are not kept.
    DzSettings danglingLinks;
};
