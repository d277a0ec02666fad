// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Networks.h"
#include "dzapp.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    // Pictures are painted in memory unless somebody wants to look at them.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
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
