// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Networks.h"
#include "dzbrickuserfile.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <mimalloc.h>

namespace {

/// Saves to `path`, loads that, and sees to it that the same bytes come out.
void checkRoundTrip(const Network& network, const QString& path)
{
    DzBrickUserFile file;
    VireoBrickUser user;
    require(file.save(path, network.user.get()), "save");
    require(file.load(path, &user) && file.getWarnings().isEmpty(), "load");
    require(file.saveText(&user) == file.saveText(network.user.get()), "same bytes");
}

void BM_SaveNetwork(benchmark::State& state)
{
    const Network network = buildMixedNetwork(static_cast<int>(state.range(0)));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("network.sskn"));
    DzBrickUserFile file;
    checkRoundTrip(network, path);
    for (auto _ : state)
        require(file.save(path, network.user.get()), "save");
    state.counters["MB"] = static_cast<double>(file.saveText(network.user.get()).size()) / 1e6;
}

void BM_LoadNetwork(benchmark::State& state)
{
    const Network network = buildMixedNetwork(static_cast<int>(state.range(0)));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("network.sskn"));
    DzBrickUserFile file;
    checkRoundTrip(network, path);
    for (auto _ : state) {
        state.PauseTiming();
        auto user = std::make_unique<VireoBrickUser>();
        state.ResumeTiming();
        require(file.load(path, user.get()), "load");
        state.PauseTiming();
        user.reset();
        state.ResumeTiming();
    }
}

/// Builds a network link by link, as a user or a script does.
void BM_BuildChain(benchmark::State& state)
{
    for (auto _ : state) {
        const Network network = buildScaleChain(static_cast<int>(state.range(0)));
        require(network.user->getNumBricks() == state.range(0) + 2, "number of bricks");
    }
}

/// Bytes that the program's allocator has given out to this thread, rounded up as it does.
std::size_t bytesGivenOut()
{
    std::size_t bytes = 0;
    const auto add
        = [](const mi_heap_t*, const mi_heap_area_t* area, void*, std::size_t, void* sum) {
              *static_cast<std::size_t*>(sum) += area->used * area->block_size;
              return true;
          };
    mi_heap_visit_blocks(mi_heap_get_default(), false, add, &bytes);
    return bytes;
}

/// Memory of a network by the allocator's count, per brick.
void BM_MemoryPerBrick(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    double bytes = 0;
    for (auto _ : state) {
        const std::size_t before = bytesGivenOut();
        require(before > 0, "the allocator");
        const Network network = buildMixedNetwork(count);
        bytes = static_cast<double>(bytesGivenOut() - before);
        benchmark::DoNotOptimize(network.root);
    }
    state.counters["bytes_per_brick"] = bytes / count;
}

} // namespace

BENCHMARK(BM_SaveNetwork)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadNetwork)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildChain)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MemoryPerBrick)->Arg(1000)->Iterations(3)->Unit(benchmark::kMillisecond);
