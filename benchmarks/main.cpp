// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Networks.h"
#include "dzapp.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QApplication>
#include <benchmark/benchmark.h>

// A program with windows has threads, and with threads every allocation costs more: what needs no
// window is measured without.
#ifdef VIREO_WINDOWS
typedef QApplication Application;
#else
typedef QCoreApplication Application;
#endif

int main(int argc, char** argv)
{
    // Pictures are painted in memory unless somebody wants to look at them.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
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
