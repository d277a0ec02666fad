// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickCodeCache.h"

#include "SceneCodeWriter.h"
#include "VireoBrickBase.h"
#include "dzapp.h"

#include <QThread>
#include <exception>
#include <new>

namespace {

/// A brick costs under 1 KiB of stack in a release build and a few KiB in others, so that
/// one stack takes these many with room to spare. All stacks of a walk stand at the same time.
const int bricksPerStack = 4000;
#ifdef NDEBUG
const uint walkStackSize = 16u * 1024 * 1024;
#else
const uint walkStackSize = 64u * 1024 * 1024;
#endif

/// Bricks whose writeCode() has begun and not ended.
int walkDepth = 0;

/// Counts one for a scope.
class DepthCount
{
public:
    DepthCount() { ++walkDepth; }
    ~DepthCount() { --walkDepth; }

private:
    Q_DISABLE_COPY(DepthCount)
};

void writeBrick(VireoBrickBase* brick, SceneCodeWriter* writer, CodeResult* result)
{
    const DepthCount count;
    writer->beginBrick(brick);
    brick->writeCode(result, writer);
    writer->endBrick();
}

/// Writes one brick, and whatever feeds it, on a stack of its own.
class WriteThread : public QThread
{
public:
    WriteThread(VireoBrickBase* startBrick, SceneCodeWriter* textWriter, CodeResult* target)
        : brick(startBrick)
        , writer(textWriter)
        , result(target)
        , hasRun(false)
    {
        setStackSize(walkStackSize);
    }

    /// Waits for the end. Without memory for another stack std::bad_alloc: the caller's may have no
    /// room left either. What is thrown on the other stack is thrown on.
    void finish()
    {
        start();
        wait();
        if (!hasRun)
            throw std::bad_alloc();
        if (problem)
            std::rethrow_exception(problem);
    }

protected:
    void run() override
    {
        hasRun = true;
        try {
            writeBrick(brick, writer, result);
        } catch (...) {
            problem = std::current_exception();
        }
    }

private:
    VireoBrickBase* brick;
    SceneCodeWriter* writer;
    CodeResult* result;
    bool hasRun;
    std::exception_ptr problem;
};

} // namespace

BrickCodeCache& BrickCodeCache::instance()
{
    static BrickCodeCache cache;
    return cache;
}

const CodeResult* BrickCodeCache::find(const VireoBrickBase* brick) const
{
    const std::map<quintptr, CodeResult>::const_iterator found
        = results.find(reinterpret_cast<quintptr>(brick));
    return found == results.end() ? nullptr : &found->second;
}

void BrickCodeCache::insert(const VireoBrickBase* brick, const CodeResult& result)
{
    results[reinterpret_cast<quintptr>(brick)] = result;
    open.erase(reinterpret_cast<quintptr>(brick));
}

bool BrickCodeCache::begin(const VireoBrickBase* brick)
{
    return open.insert(reinterpret_cast<quintptr>(brick)).second;
}

CodeResult codeFor(VireoBrickBase* brick, SceneCodeWriter* writer)
{
    BrickCodeCache& cache = BrickCodeCache::instance();
    if (const CodeResult* known = cache.find(brick))
        return *known;
    CodeResult result;
    // The host lets no link close a loop; should one be there all the same, the walk ends.
    if (!cache.begin(brick)) {
        dzApp->warning(VireoBrickBase::tr("%1 feeds itself: remove one of the links between it and "
                                          "what it feeds")
                           .arg(brick->getBrickTitle()));
        return result;
    }
    if (walkDepth % bricksPerStack == 0) {
        WriteThread thread(brick, writer, &result);
        thread.finish();
    } else {
        writeBrick(brick, writer, &result);
    }
    cache.insert(brick, result);
    return result;
}
