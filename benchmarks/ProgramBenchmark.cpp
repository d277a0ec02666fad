// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Networks.h"

#include <QProcess>
#include <benchmark/benchmark.h>
#include <sys/resource.h>

namespace {

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// CPU time of all child processes that have ended.
double childrenTime()
{
    rusage usage;
    require(getrusage(RUSAGE_CHILDREN, &usage) == 0, "times of children");
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

QByteArray runProgram(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(VIREO_PROGRAM), arguments);
    require(process.waitForFinished() && process.exitCode() == 0, "run of the program");
    return process.readAllStandardOutput();
}

/// CPU time of a whole run of the program, from its start to its end.
void measure(benchmark::State& state, const QStringList& arguments, const QByteArray& ending)
{
    for (auto _ : state) {
        const double before = childrenTime();
        const QByteArray output = runProgram(arguments);
        state.SetIterationTime(childrenTime() - before);
        require(output.endsWith(ending), "output of the program");
    }
}

/// Loads the module and registers its classes, besides what every start costs.
void BM_ListPlugins(benchmark::State& state)
{
    measure(state, { QStringLiteral("plugins") },
        "VireoTexFltWrinkledBrick               5F0C2E91-7A4B-4D3E-9C61-3B8A20D7364c\n");
}

void BM_ShowOneBrick(benchmark::State& state)
{
    measure(state, { QStringLiteral("show"), QStringLiteral("VireoMatNullBrick") },
        "\t\"string  type\" [\"null\"]\n");
}

} // namespace

BENCHMARK(BM_ListPlugins)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ShowOneBrick)->UseManualTime()->Unit(benchmark::kMillisecond);
