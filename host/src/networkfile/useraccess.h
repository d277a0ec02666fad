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

/// What the host's readers, writers and undo steps do with a brick user.
struct DzDefaultBrickUser::Access {
    typedef DzDefaultBrickUser::KeptTrees KeptTrees;

    static std::unique_ptr<KeptTrees>& kept(DzDefaultBrickUser& user) { return user.m_kept; }
    static const KeptTrees* kept(const DzDefaultBrickUser& user) { return user.m_kept.get(); }
    static int generation(const DzDefaultBrickUser& user) { return user.m_generation; }
    static uint takeNextID(DzDefaultBrickUser& user) { return user.takeNextID(); }
    /// Sees to it that no brick gets this number, or one below it.
    static void passID(DzDefaultBrickUser& user, uint id)
    {
        user.m_nextID = qMax(user.m_nextID, id + 1);
    }

    // Without asking and without undo.
    static void attach(DzDefaultBrickUser& user, DzShaderBrick* brick, uint id)
    {
        user.attach(brick, id);
    }
    static void detach(DzDefaultBrickUser& user, DzShaderBrick* brick) { user.detach(brick); }
    static void tellRestored(DzDefaultBrickUser& user, DzShaderBrick* brick)
    {
        user.brickWasRestored(brick);
    }
    static void tellRemoved(DzDefaultBrickUser& user, DzShaderBrick* brick)
    {
        user.brickWasRemoved(brick);
    }
};
