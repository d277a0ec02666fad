// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Networks.h"
#include "dzapp.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    DzApp host;
    const DzUndoStackLock lock;
    QString error;
    require(host.getPluginMgr()->loadPlugin(QStringLiteral(VIREO_MODULE), &error), VIREO_MODULE);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
