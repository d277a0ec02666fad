// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

// Reading the renderer's text: at most 150 ms and eight times the text for 10 MB.

#include "Document.h"
#include "Networks.h"
#include "TextCheck.h"

#include <QByteArray>
#include <benchmark/benchmark.h>

namespace {

constexpr int textSize = 10 * 1000 * 1000;

QByteArray repeated(const QByteArray& part)
{
    return part.repeated(textSize / part.size() + 1);
}

/// Statements as networks write them.
QByteArray networkText()
{
    return repeated("Texture \"Lm_texture123\" \"float\" \"fbm\"\n"
                    "\t\"integer octaves\" [8]\n\t\"float   roughness\" [0.5]\n"
                    "\t\"string  coordinates\" [\"global\"]\n\t\"vector  translate\" [1 0 0]\n"
                    "\t\"vector  rotate\" [1 0 0]\n\t\"vector  scale\" [1 0 0]\n\n"
                    "MakeNamedMaterial \"Lm_material12\"\n\t\"texture bumpmap\" "
                    "[\"Lm_texture123\"]\n\t\"color   Kd\" [0.901961 0.901961 0.901961]\n"
                    "\t\"float   sigma\" [0]\n\t\"string  type\" [\"matte\"]\n\n");
}

/// One shape with very many corners.
QByteArray meshText()
{
    return "Shape \"mesh\"\n\t\"integer triindices\" [" + repeated("0 1 2 ") + "]\n\t\"point P\" ["
        + repeated("-0.137215 12.5 3e-05\n") + "]\n";
}

void readText(benchmark::State& state, const QByteArray& text)
{
    const lux::Document document(text);
    require(document.errorCount() == 0 && document.write() == text, "the text is not read whole");
    for (auto _ : state) {
        const lux::Document again(text);
        benchmark::DoNotOptimize(again.statementCount());
    }
    state.counters["times the text"]
        = static_cast<double>(document.memoryUsed()) / static_cast<double>(text.size());
    state.SetBytesProcessed(static_cast<qint64>(state.iterations()) * text.size());
}

void readsNetworks(benchmark::State& state)
{
    readText(state, networkText());
}
BENCHMARK(readsNetworks)->Unit(benchmark::kMillisecond);

void readsMeshes(benchmark::State& state)
{
    readText(state, meshText());
}
BENCHMARK(readsMeshes)->Unit(benchmark::kMillisecond);

/// With all numbers taken, as a program that draws them does.
void takesNumbers(benchmark::State& state)
{
    const lux::Document document(meshText());
    require(document.statement(0).parameter(1).numbers().at(2) == 3e-05, "numbers");
    for (auto _ : state)
        benchmark::DoNotOptimize(document.statement(0).parameter(1).numbers().size());
}
BENCHMARK(takesNumbers)->Unit(benchmark::kMillisecond);

/// With a finding a texture, as in networks of fresh bricks.
void checksNetworks(benchmark::State& state)
{
    lux::SceneText scene;
    scene.readText(networkText(), QString(), lux::SceneOptions());
    const auto numFindings = lux::checkScene(scene, lux::CheckOptions()).size();
    require(numFindings > 1000 && numFindings < 5000, "findings");
    for (auto _ : state)
        benchmark::DoNotOptimize(lux::checkScene(scene, lux::CheckOptions()).size());
}
BENCHMARK(checksNetworks)->Unit(benchmark::kMillisecond);

} // namespace
