// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "AutosaveStore.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "MainWindow.h"
#include "MixerDocument.h"
#include "Networks.h"
#include "ProblemFinder.h"
#include "ProgramSettings.h"
#include "SceneCodePanel.h"
#include "dzbrickparam.h"
#include "dzbrickuserfile.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

/// The program's window with a folder of its own.
struct Program {
    Program()
    {
        qputenv("VIREO_SETTINGS_FILE", dir.filePath(QStringLiteral("settings.ini")).toLocal8Bit());
        settings = std::make_unique<ProgramSettings>();
        store = std::make_unique<AutosaveStore>(dir.filePath(QStringLiteral("copies")));
        window = std::make_unique<MainWindow>(settings.get(), store.get());
        window->resize(1600, 1000);
        window->show();
    }

    QTemporaryDir dir;
    std::unique_ptr<ProgramSettings> settings;
    std::unique_ptr<AutosaveStore> store;
    std::unique_ptr<MainWindow> window;
};

/// Everything that was put off up to the first picture.
void settle()
{
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

QString networkFile(const QTemporaryDir& dir, int textures)
{
    const Network network = buildMixedNetwork(textures);
    const QString path = dir.filePath(QStringLiteral("network.sskn"));
    DzBrickUserFile file;
    require(file.save(path, network.user.get()), "save");
    return path;
}

} // namespace

/// From nothing to the first picture of a window with a new document.
static void BM_WindowStart(benchmark::State& state)
{
    for (auto _ : state) {
        Program program;
        program.window->getDocuments()->createNew();
        settle();
        require(program.window->getDocument() != nullptr, "a document is open");
    }
}

/// Opening a file up to the first picture, text and problems included.
static void BM_WindowOpen(benchmark::State& state)
{
    Program program;
    settle();
    const QString path = networkFile(program.dir, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        require(program.window->openFile(path), "open");
        settle();
        state.PauseTiming();
        require(!program.window->getSceneCode()->getText().isEmpty(), "the text is shown");
        program.window->getTabs()->close(program.window->getDocument(), false);
        settle();
        state.ResumeTiming();
    }
}

/// A value changes, and the text on screen follows.
static void BM_LiveText(benchmark::State& state)
{
    Program program;
    const QString path = networkFile(program.dir, static_cast<int>(state.range(0)));
    require(program.window->openFile(path), "open");
    settle();
    DzShaderBrick* matte = program.window->getDocument()->getUser()->getBrick(2);
    auto* sigma = static_cast<DzNumericProperty*>(
        matte->findParameterByName(QStringLiteral("sigma"))->getProperty(0));
    const DzUndoStackLock lock;
    double value = 1;
    for (auto _ : state) {
        sigma->setDoubleValue(++value);
        program.window->getSceneCode()->updateNow();
    }
    require(program.window->getSceneCode()->getText().contains(
                QStringLiteral("\"float   sigma\" [%1]").arg(sigma->getValueText())),
        "the text follows");
}

static void BM_Problems(benchmark::State& state)
{
    const Network network = buildMixedNetwork(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(findProblems(network.user.get(), QString()));
    state.SetComplexityN(state.range(0));
}

BENCHMARK(BM_WindowStart)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowOpen)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LiveText)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Problems)->Arg(1000)->Arg(4000)->Complexity(benchmark::oN);
