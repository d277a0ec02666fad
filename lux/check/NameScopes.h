// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "RendererFacts.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace lux {

/// The names that a scene has defined so far. What a block defines is forgotten at its end.
class NameScopes
{
public:
    /// Textures by their space, then materials and volumes.
    enum Kind { Materials = textureSpaceCount, Volumes, KindCount };
    static Kind texturesOf(TextureSpace space) { return static_cast<Kind>(space); }

    struct Entry {
        int block = -1; ///< how deep the block is that defined it; -1 for no such name
        int chain = 0;  ///< how many textures stand behind one another up to this one
    };

    void openBlock() { m_blocks.push_back(m_changes.size()); }
    /// Without an open block nothing happens.
    void closeBlock();

    /// Defines a name; false if this block did so before.
    bool define(Kind kind, const std::string& name, int chain = 0);
    Entry find(Kind kind, const std::string& name) const;

private:
    struct Change {
        Kind kind;
        std::string name;
        Entry before;
    };

    std::unordered_map<std::string, Entry> m_names[KindCount]; // only asked, never walked
    std::vector<Change> m_changes;
    std::vector<size_t> m_blocks; // where each open block's changes begin
};

} // namespace lux
