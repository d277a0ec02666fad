// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCode.h"
#include "Networks.h"
#include "VireoRootBrick.h"
#include "dzscript.h"
#include "dzundostack.h"

#include <benchmark/benchmark.h>

namespace {

/// What the script prints.
QString runScript(DzScript* script, int textures)
{
    QString output;
    script->setPrintHandler([&output](const QString& text, QString*) {
        output += text;
        return true;
    });
    if (!script->execute({ QString::number(textures) }))
        require(false, qPrintable(script->getErrorMessage()));
    return output;
}

/// Builds, links and exports a network in a script, with undo steps as a user's script leaves them.
void BM_ScriptMixTree(benchmark::State& state)
{
    const int textures = static_cast<int>(state.range(0));
    DzScript script;
    require(script.loadFromFile(QStringLiteral(VIREO_SCRIPT)), VIREO_SCRIPT);
    dzUndoStack->unlock();
    {
        const Network network = buildMixTree(textures);
        const QString expected = exportText(generateCode(network.root, GenerateOptions()));
        require(runScript(&script, textures) == expected + QLatin1Char('\n'), "text of the script");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(runScript(&script, textures).size());
        dzUndoStack->clearAll();
    }
    dzUndoStack->clearAll();
    dzUndoStack->lock();
}

} // namespace

BENCHMARK(BM_ScriptMixTree)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
