// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCode.h"
#include "Networks.h"
#include "VireoRootBrick.h"

#include <benchmark/benchmark.h>

namespace {

/// What every text of a network must have: one statement a texture, each before its use.
void checkText(const Network& network, const GeneratedCode& code)
{
    const QString& text = code.materialText;
    require(text.count(QLatin1String("\nTexture \"")) == network.brickCount, "number of textures");
    require(
        text.count(QLatin1String("\t\"texture ")) == network.brickCount, "number of references");
    require(text.endsWith(QLatin1String("\nNamedMaterial \"Lm_material1\"\n")), "last line");
    require(text.indexOf(QLatin1String("Texture \"Lm_texture1\""))
            > text.indexOf(QStringLiteral("Texture \"Lm_texture%1\"").arg(network.brickCount)),
        "order of statements");
}

void measure(benchmark::State& state, const Network& network, bool literal)
{
    GenerateOptions options;
    options.literalValues = literal;
    const GeneratedCode once = generateCode(network.root, options);
    checkText(network, once);
    require(generateCode(network.root, options).materialText == once.materialText, "second run");
    for (auto _ : state) {
        const GeneratedCode code = generateCode(network.root, options);
        benchmark::DoNotOptimize(code.materialText.size());
    }
    state.counters["us_per_brick"]
        = benchmark::Counter(static_cast<double>(network.brickCount) * 1e-6,
            benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_MixTreeText(benchmark::State& state)
{
    measure(state, buildMixTree(static_cast<int>(state.range(0))), true);
}

void BM_MixTreePlaceholders(benchmark::State& state)
{
    measure(state, buildMixTree(static_cast<int>(state.range(0))), false);
}

void BM_ScaleChainText(benchmark::State& state)
{
    measure(state, buildScaleChain(static_cast<int>(state.range(0))), true);
}

} // namespace

// The walk runs on threads of its own: the time of the whole process counts.
BENCHMARK(BM_MixTreeText)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK(BM_MixTreePlaceholders)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK(BM_ScaleChainText)->Arg(20000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
