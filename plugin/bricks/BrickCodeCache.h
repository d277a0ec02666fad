// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CodeResult.h"

#include <QtGlobal>
#include <map>
#include <set>

class SceneCodeWriter;
class VireoBrickBase;

/// The process-wide memory of what each brick wrote, so that a brick is written once per run.
///
/// Bricks are known by address and are not owned: whoever starts a run empties the cache first.
class BrickCodeCache
{
public:
    static BrickCodeCache& instance();

    void clear()
    {
        results.clear();
        open.clear();
    }
    /// What a brick wrote since the cache was emptied; null when it wrote nothing yet.
    const CodeResult* find(const VireoBrickBase* brick) const;
    void insert(const VireoBrickBase* brick, const CodeResult& result);
    /// Notes that a brick is being written, until its result comes; false when it was noted before:
    /// the brick feeds itself.
    bool begin(const VireoBrickBase* brick);

private:
    BrickCodeCache() {}

    std::map<quintptr, CodeResult> results;
    std::set<quintptr> open;
};

/// What a brick writes: from the cache, or else by having it write its statement, and those of the
/// bricks that feed it, now. Networks may be as deep as memory allows: the walk runs on stacks of
/// its own while the caller waits, and std::bad_alloc is thrown where there is none for another. A
/// brick that feeds itself, over whatever way, is written once: its own input gets nothing, and a
/// warning names it.
CodeResult codeFor(VireoBrickBase* brick, SceneCodeWriter* writer);
