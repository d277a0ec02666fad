// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzdefaultbrickuser.h"
#include "settingstree.h"

#include <memory>

struct DzDefaultBrickUser::KeptTrees {
    std::unique_ptr<SettingsTree> setup;
    std::unique_ptr<SettingsTree> bricks;
    std::unique_ptr<SettingsTree> connections;
    /// Entries of links that say more than their ends, by linkName().
    QHash<QString, SettingsTree> linkEntries;
    /// Entries of "Connections" that make no link, in order; their keys are not kept.
    SettingsTree danglingLinks;
};
