// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Networks.h"
#include "VireoBrickBase.h"
#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzpluginmgr.h"

#include <benchmark/benchmark.h>

namespace {

QList<const DzClassFactory*> brickFactories()
{
    QList<const DzClassFactory*> factories;
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories())
        if (factory->getMetaObject().inherits(&VireoBrickBase::staticMetaObject))
            factories.append(factory);
    return factories;
}

/// One of each brick, made and deleted.
void BM_MakeEveryBrick(benchmark::State& state)
{
    const QList<const DzClassFactory*> factories = brickFactories();
    require(factories.size() == 81, "number of classes");
    for (auto _ : state)
        for (const DzClassFactory* factory : factories)
            delete factory->createInstance();
}

} // namespace

BENCHMARK(BM_MakeEveryBrick)->Unit(benchmark::kMillisecond);
