// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CodeResult.h"

#include <QtGlobal>
#include <map>

class SceneCodeWriter;
class VireoBrickBase;

/// The process-wide memory of what each brick wrote, so that a brick is written once per run.
///
/// Bricks are known by address and are not owned: whoever starts a run empties the cache first.
class BrickCodeCache
{
public:
    static BrickCodeCache& instance();

    void clear() { results.clear(); }
    /// What a brick wrote since the cache was emptied; null when it wrote nothing yet.
    const CodeResult* find(const VireoBrickBase* brick) const;
    void insert(const VireoBrickBase* brick, const CodeResult& result);

private:
    BrickCodeCache() {}

    std::map<quintptr, CodeResult> results;
};

/// What a brick writes: from the cache, or else by having it write its statement, and those of the
/// bricks that feed it, now. Networks may be as deep as memory allows: the walk runs on stacks of
/// its own while the caller waits, and std::bad_alloc is thrown where there is none for another.
CodeResult codeFor(VireoBrickBase* brick, SceneCodeWriter* writer);
