// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "AutosaveStore.h"
#include "BrickSelection.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "MainWindow.h"
#include "MixerDocument.h"
#include "NetworkCopies.h"
#include "NetworkEdit.h"
#include "NetworkTextPanel.h"
#include "Networks.h"
#include "ProblemFinder.h"
#include "ProgramSettings.h"
#include "RendererFindings.h"
#include "dzbrickparam.h"
#include "dzbrickuserfile.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"

#include <QApplication>
#include <QDockWidget>
#include <QElapsedTimer>
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
        require(!program.window->getTextPanel()->getText().isEmpty(), "the text is shown");
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
        program.window->getTextPanel()->updateNow();
    }
    require(program.window->getTextPanel()->getText().contains(
                QStringLiteral("\"float   sigma\" [%1]").arg(sigma->getValueText())),
        "the text follows");
}

namespace {

/// Lets work that is put off for a moment be done: long texts, problems, comparing with the file.
void rest()
{
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < 300)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
}

/// A large file in a window with all its panels, with a brick selected and near, and some time
/// after it was opened.
struct OpenNetwork {
    explicit OpenNetwork(int textures)
    {
        require(program.window->openFile(networkFile(program.dir, textures)), "open");
        for (QDockWidget* dock : program.window->findChildren<QDockWidget*>()) {
            dock->show();
            dock->raise();
        }
        dzUndoStack->unlock(); // benchmarks leave no steps otherwise
        document = program.window->getDocument();
        const QVector<DzShaderBrick*> bricks = document->getEdit()->getBricks();
        for (int i = textures / 2; !amount; ++i) {
            brick = bricks.at(i);
            amount = brick->findParameterByName(QStringLiteral("amount"));
        }
        settle(); // shows all at first
        program.window->showBrick(brick);
        rest();
    }
    ~OpenNetwork()
    {
        dzUndoStack->clearAll();
        dzUndoStack->lock();
    }

    Program program;
    MixerDocument* document;
    DzShaderBrick* brick = nullptr;
    /// An input of the brick.
    DzBrickParam* amount = nullptr;
};

/// Takes one step back or does it again, up to the picture.
void undoAndRedo(benchmark::State& state)
{
    require(dzUndoStack->getNumUndoItems() == 1, "one step");
    bool isUndo = true;
    for (auto _ : state) {
        if (isUndo)
            dzUndoStack->undo();
        else
            dzUndoStack->redo();
        settle();
        isUndo = !isUndo;
        state.PauseTiming();
        rest();
        state.ResumeTiming();
    }
}

} // namespace

/// Undo and redo of a value of one brick.
static void BM_WindowUndoValue(benchmark::State& state)
{
    OpenNetwork open(static_cast<int>(state.range(0)));
    auto* value = static_cast<DzNumericProperty*>(open.amount->getProperty(0));
    value->setDoubleValue(value->getDoubleValue() + 0.25);
    settle();
    undoAndRedo(state);
}

/// Undo and redo of one link taken away.
static void BM_WindowUndoUnlink(benchmark::State& state)
{
    OpenNetwork open(static_cast<int>(state.range(0)));
    const QVector<BrickLink> links = open.document->getEdit()->getLinks();
    unlinkAll(links.at(links.size() / 2).input);
    settle();
    undoAndRedo(state);
}

/// Undo and redo of one brick deleted.
static void BM_WindowUndoDelete(benchmark::State& state)
{
    OpenNetwork open(static_cast<int>(state.range(0)));
    open.document->getEdit()->deleteBricks({ open.brick });
    settle();
    undoAndRedo(state);
}

/// Undo of duplicating half of the bricks, of which the copies are selected, with the text.
static void BM_WindowUndoDuplicate(benchmark::State& state)
{
    OpenNetwork open(static_cast<int>(state.range(0)));
    NetworkEdit* edit = open.document->getEdit();
    const QVector<DzShaderBrick*> bricks = edit->getBricks();
    // Without root and material; and the end of the chain, to which the copies are linked.
    const QVector<DzShaderBrick*> some = bricks.mid(2, bricks.size() / 2);
    DzBrickParam* end = nullptr;
    for (int i = 0; i < bricks.size(); ++i)
        if (bricks.at(i)->findParameterByName(QStringLiteral("amount")))
            end = bricks.at(i)->findParameterByName(QStringLiteral("tex1"));
    for (auto _ : state) {
        state.PauseTiming();
        QString error;
        DzUndoStackHold hold;
        const QVector<DzShaderBrick*> copies = duplicateBricks(edit, some, QPointF(40, 40), &error);
        require(copies.size() == some.size(), "copies");
        require(linkPins(copies.first()->findParameterByName(QStringLiteral("result")), end),
            "copies are linked");
        hold.accept(QStringLiteral("Duplicate"));
        open.document->getSelection()->set(copies);
        rest();
        state.ResumeTiming();
        dzUndoStack->undo();
        settle();
        open.program.window->getTextPanel()->updateNow();
    }
}

/// The text on screen follows the undo and the redo of a link taken away, by which half of it
/// comes and goes.
static void BM_LongTextFollows(benchmark::State& state)
{
    OpenNetwork open(static_cast<int>(state.range(0)));
    const QVector<BrickLink> links = open.document->getEdit()->getLinks();
    unlinkAll(links.at(links.size() / 2).input);
    NetworkTextPanel* code = open.program.window->getTextPanel();
    for (auto _ : state) {
        dzUndoStack->undo();
        code->updateNow();
        const int whole = code->getText().size();
        dzUndoStack->redo();
        code->updateNow();
        require(code->getText().size() < whole, "text comes and goes");
    }
}

/// Selecting everything, and nothing again, up to the picture.
static void BM_WindowSelectAll(benchmark::State& state)
{
    OpenNetwork open(static_cast<int>(state.range(0)));
    const QVector<DzShaderBrick*> bricks = open.document->getEdit()->getBricks();
    for (auto _ : state) {
        open.document->getSelection()->set(bricks);
        settle();
        open.document->getSelection()->clear();
        settle();
    }
}

static void BM_Problems(benchmark::State& state)
{
    const Network network = buildMixedNetwork(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(findProblems(network.user.get(), QString()));
    state.SetComplexityN(state.range(0));
}

/// What the window waits for; the check itself runs in a thread of its own.
static void BM_RendererCheckStarted(benchmark::State& state)
{
    const Network network = buildMixedNetwork(static_cast<int>(state.range(0)));
    RendererFindings findings;
    for (auto _ : state) {
        findings.check(network.user.get());
        state.PauseTiming();
        findings.finish();
        require(!findings.getFindings().isEmpty(), "the check found something");
        state.ResumeTiming();
    }
}

/// Until it is told what was found.
static void BM_RendererCheckDone(benchmark::State& state)
{
    const Network network = buildMixedNetwork(static_cast<int>(state.range(0)));
    RendererFindings findings;
    for (auto _ : state) {
        findings.check(network.user.get());
        findings.finish();
    }
    require(!findings.getFindings().isEmpty(), "the check found something");
}

BENCHMARK(BM_WindowStart)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowOpen)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LiveText)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowUndoValue)->Arg(2000)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowUndoUnlink)->Arg(2000)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowUndoDelete)->Arg(2000)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowUndoDuplicate)->Arg(2000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LongTextFollows)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WindowSelectAll)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RendererCheckStarted)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RendererCheckDone)->Arg(1000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Problems)->Arg(1000)->Arg(4000)->Complexity(benchmark::oN);
