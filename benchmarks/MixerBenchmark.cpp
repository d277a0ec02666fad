// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickAppearance.h"
#include "BrickItem.h"
#include "BrickSelection.h"
#include "NetworkCopies.h"
#include "NetworkEdit.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "Networks.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzbrickuserfile.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <benchmark/benchmark.h>
#include <random>

namespace {

const QSize windowSize(1600, 1000);
const int wiresPerBrick = 3;
/// A brick is fed by bricks among the next so many, as networks are in which parts are shared.
const int nearBricks = 40;

/// Counts how often a widget is painted.
class PaintCounter : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    qint64 count = 0;
};

DzShaderBrick* add(VireoBrickUser* user, const char* className)
{
    auto* brick
        = qobject_cast<DzShaderBrick*>(dzApp->createInstance(QString::fromLatin1(className)));
    require(brick && user->addBrick(brick) != 0, className);
    return brick;
}

/// Mixes that share what feeds them: three wires a brick, no loops.
std::unique_ptr<VireoBrickUser> buildWeb(int bricks)
{
    auto user = std::make_unique<VireoBrickUser>();
    QVector<DzShaderBrick*> mixes;
    for (int i = 0; i < bricks; ++i)
        mixes.append(add(user.get(), i % 3 == 2 ? "VireoTexFltMixBrick" : "VireoTexClrMixBrick"));
    std::mt19937 random(7);
    const char* const inputs[wiresPerBrick] = { "tex1", "tex2", "amount" };
    for (int i = 0; i + nearBricks < bricks; ++i) {
        for (const char* name : inputs) {
            DzBrickParam* input = mixes.at(i)->findParameterByName(QString::fromLatin1(name));
            for (;;) {
                DzShaderBrick* source = mixes.at(i + 1 + int(random() % nearBricks));
                if (input->addConnection(source->findParameterByName(QStringLiteral("result"))))
                    break;
            }
        }
    }
    return user;
}

/// A network on a canvas of the usual size.
class Canvas
{
public:
    explicit Canvas(int bricks)
        : user(buildWeb(bricks))
        , edit(user.get())
        , view(&edit, &selection)
    {
        view.resize(windowSize);
        view.viewport()->installEventFilter(&paints);
        view.show();
        QApplication::processEvents();
        int wires = 0;
        for (const BrickItem* item : view.getNetworkScene()->getItems())
            wires += item->getWires().size();
        require(view.getNetworkScene()->getItems().size() == bricks, "bricks on the canvas");
        require(wires == (bricks - nearBricks) * wiresPerBrick, "wires on the canvas");
    }

    /// One event loop turn, which must have painted.
    void frame()
    {
        const qint64 before = paints.count;
        QApplication::processEvents();
        require(paints.count > before, "a frame was painted");
    }
    void lookAtMiddle()
    {
        view.zoomAt(QPointF(), 1 / view.getZoom());
        view.goTo(middle()->pos() + QPointF(100, 60));
        QApplication::processEvents();
    }
    BrickItem* middle() const
    {
        return view.getNetworkScene()->getItem(user->getBrick(uint(user->getNumBricks() / 2)));
    }
    void mouse(QEvent::Type type, const QPoint& place, Qt::MouseButtons buttons)
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(
            type, place, view.viewport()->mapToGlobal(place), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    }
    int bricksAt(const QPoint& place) const
    {
        return view.getNetworkScene()
            ->bricksIn(QRectF(view.mapToScene(place), QSizeF(1, 1)))
            .size();
    }
    int bricksInView() const
    {
        return view.getNetworkScene()->bricksIn(view.getVisibleBox()).size();
    }

    std::unique_ptr<VireoBrickUser> user;
    NetworkEdit edit;
    BrickSelection selection;
    NetworkView view;
    PaintCounter paints;
};

/// Lets steps be kept for a scope; the benchmarks' main function locks the stack.
class UnlockScope
{
public:
    UnlockScope() { dzUndoStack->unlock(); }
    ~UnlockScope()
    {
        dzUndoStack->clearAll();
        dzUndoStack->lock();
    }
};

void BM_CanvasPan(benchmark::State& state)
{
    Canvas canvas(static_cast<int>(state.range(0)));
    canvas.lookAtMiddle();
    const int before = canvas.view.horizontalScrollBar()->value();
    int step = 0;
    for (auto _ : state) {
        // There and back, so that every frame uncovers something.
        const int places[] = { 40, 80, 120, 80, 40, 0 };
        canvas.view.horizontalScrollBar()->setValue(before + places[step++ % 6]);
        canvas.frame();
    }
    state.counters["bricks_in_view"] = canvas.bricksInView();
}

void BM_CanvasDragBrick(benchmark::State& state)
{
    Canvas canvas(static_cast<int>(state.range(0)));
    canvas.lookAtMiddle();
    const QPointF start = canvas.middle()->pos();
    const QPoint place = canvas.view.mapFromScene(start + QPointF(60, 12));
    canvas.mouse(QEvent::MouseButtonPress, place, Qt::LeftButton);
    int step = 0;
    for (auto _ : state) {
        ++step;
        canvas.mouse(
            QEvent::MouseMove, place + QPoint(20 + step % 50, 10 + step % 40), Qt::LeftButton);
        canvas.frame();
    }
    require(canvas.middle()->pos() != start, "the brick moved");
    canvas.mouse(QEvent::MouseButtonRelease, place, Qt::NoButton);
}

void BM_CanvasDragWire(benchmark::State& state)
{
    Canvas canvas(static_cast<int>(state.range(0)));
    canvas.lookAtMiddle();
    BrickItem* item = canvas.middle();
    DzBrickParam* output = item->getBrick()->findParameterByName(QStringLiteral("result"));
    const QPoint place = canvas.view.mapFromScene(item->pinPlace(output));
    canvas.mouse(QEvent::MouseButtonPress, place, Qt::LeftButton);
    int step = 0;
    for (auto _ : state) {
        ++step;
        canvas.mouse(
            QEvent::MouseMove, place + QPoint(20 + step % 200, 10 + step % 140), Qt::LeftButton);
        canvas.frame();
    }
    canvas.mouse(QEvent::MouseButtonRelease, item->pos().toPoint(), Qt::NoButton);
}

void BM_CanvasAllInView(benchmark::State& state)
{
    Canvas canvas(static_cast<int>(state.range(0)));
    canvas.view.zoomToAll();
    QApplication::processEvents();
    require(canvas.bricksInView() == state.range(0), "all bricks in view");
    for (auto _ : state) {
        canvas.view.viewport()->update();
        canvas.frame();
    }
}

/// Every zoom between one and all: the slowest is what a user waits for.
void BM_CanvasZoomLevels(benchmark::State& state)
{
    Canvas canvas(2000);
    canvas.view.zoomAt(QPointF(), double(state.range(0)) / 100 / canvas.view.getZoom());
    canvas.view.goTo(canvas.middle()->pos());
    QApplication::processEvents();
    for (auto _ : state) {
        canvas.view.viewport()->update();
        canvas.frame();
    }
    state.counters["bricks_in_view"] = canvas.bricksInView();
}

/// One move of the mouse that draws a selecting box over half the network, larger and smaller.
void BM_CanvasBoxSelectStep(benchmark::State& state)
{
    Canvas canvas(static_cast<int>(state.range(0)));
    canvas.view.zoomToAll();
    QApplication::processEvents();
    const QPoint corner(1, 1);
    require(canvas.bricksAt(corner) == 0, "nothing under the corner");
    canvas.mouse(QEvent::MouseButtonPress, corner, Qt::LeftButton);
    const QPoint places[]
        = { QPoint(790, 990), QPoint(800, 990), QPoint(810, 990), QPoint(800, 990) };
    int step = 0;
    for (auto _ : state) {
        canvas.mouse(QEvent::MouseMove, places[step++ % 4], Qt::LeftButton);
        canvas.frame();
    }
    require(canvas.selection.size() > state.range(0) / 4, "many are selected");
    state.counters["selected"] = canvas.selection.size();
    canvas.mouse(QEvent::MouseButtonRelease, places[0], Qt::NoButton);
}

enum UndoneEdit {
    UndoneMove,
    UndoneLink,
    UndoneDelete,
    UndoneMoveAll,
    UndoneDeleteAll,
    UndoneDuplicateAll
};

/// One step back and one forth with the canvas and its picture, twice an iteration.
void BM_CanvasUndo(benchmark::State& state)
{
    Canvas canvas(2000);
    canvas.lookAtMiddle();
    const UnlockScope unlocked;
    DzShaderBrick* brick = canvas.middle()->getBrick();
    DzBrickParam* input = brick->findParameterByName(QStringLiteral("tex1"));
    QVector<NetworkEdit::Move> moves;
    switch (state.range(0)) {
    case UndoneMove:
        canvas.edit.moveBricks({ { brick, BrickAppearance::position(brick) + QPointF(9, 9) } });
        break;
    case UndoneLink:
        unlinkAll(input);
        break;
    case UndoneDelete:
        canvas.edit.deleteBricks({ brick });
        break;
    case UndoneDeleteAll:
        canvas.edit.deleteBricks(canvas.edit.getBricks());
        break;
    case UndoneDuplicateAll:
        duplicateBricks(&canvas.edit, canvas.edit.getBricks(), QPointF(9, 9));
        break;
    default:
        for (DzShaderBrick* each : canvas.edit.getBricks())
            moves.append({ each, BrickAppearance::position(each) + QPointF(9, 9) });
        canvas.edit.moveBricks(moves);
        break;
    }
    const QByteArray text = DzBrickUserFile().saveText(canvas.user.get());
    QApplication::processEvents();
    require(dzUndoStack->getNumUndoItems() == 1, "one step");
    const bool isAllSelected = state.range(1);
    for (auto _ : state) {
        dzUndoStack->undo();
        canvas.frame();
        if (isAllSelected) {
            state.PauseTiming();
            canvas.selection.set(canvas.edit.getBricks());
            QApplication::processEvents();
            state.ResumeTiming();
        }
        dzUndoStack->redo();
        canvas.frame();
    }
    require(DzBrickUserFile().saveText(canvas.user.get()) == text, "the same network");
}

/// Layers and sees that nothing overlaps and that what feeds stands on the left.
void checkArranged(const NetworkEdit& edit)
{
    const QVector<BrickLink> links = edit.getLinks();
    for (const BrickLink& link : links) {
        const DzShaderBrick* source = link.output->getTopBrickOwner();
        require(BrickAppearance::position(source).x() + BrickAppearance::width(source)
                < BrickAppearance::position(link.input->getTopBrickOwner()).x(),
            "what feeds stands on the left");
    }
    QVector<QRectF> boxes;
    for (const DzShaderBrick* brick : edit.getBricks())
        boxes.append(QRectF(BrickAppearance::position(brick), BrickAppearance::size(brick)));
    for (int i = 0; i < boxes.size(); ++i)
        for (int k = 0; k < i; ++k)
            require(!boxes.at(i).intersects(boxes.at(k)), "bricks do not overlap");
}

void BM_Arrange(benchmark::State& state)
{
    const std::unique_ptr<VireoBrickUser> user = buildWeb(static_cast<int>(state.range(0)));
    NetworkEdit edit(user.get());
    edit.arrange({});
    checkArranged(edit);
    for (auto _ : state)
        edit.arrange({});
}

/// From a file's text to the first picture.
void BM_OpenOnCanvas(benchmark::State& state)
{
    QByteArray text;
    {
        const std::unique_ptr<VireoBrickUser> user = buildWeb(static_cast<int>(state.range(0)));
        NetworkEdit(user.get()).arrange({});
        text = DzBrickUserFile().saveText(user.get());
    }
    for (auto _ : state) {
        VireoBrickUser user;
        require(DzBrickUserFile().loadText(text, QStringLiteral("benchmark"), &user), "load");
        NetworkEdit edit(&user);
        BrickSelection selection;
        NetworkView view(&edit, &selection);
        PaintCounter paints;
        view.viewport()->installEventFilter(&paints);
        view.resize(windowSize);
        view.show();
        view.zoomToAll();
        while (paints.count == 0)
            QApplication::processEvents();
        require(
            view.getNetworkScene()->getItems().size() == state.range(0), "bricks on the canvas");
        state.PauseTiming();
        view.hide();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(BM_CanvasPan)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CanvasDragBrick)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CanvasBoxSelectStep)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CanvasDragWire)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CanvasAllInView)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CanvasZoomLevels)
    ->Arg(10)
    ->Arg(20)
    ->Arg(30)
    ->Arg(45)
    ->Arg(60)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CanvasUndo)
    ->ArgNames({ "edit", "selected" })
    ->Args({ UndoneMove, false })
    ->Args({ UndoneLink, false })
    ->Args({ UndoneDelete, false })
    ->Args({ UndoneMoveAll, false })
    ->Args({ UndoneMoveAll, true })
    ->Args({ UndoneDeleteAll, false })
    ->Args({ UndoneDeleteAll, true })
    ->Args({ UndoneDuplicateAll, false })
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Arrange)->Arg(1000)->Arg(2000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenOnCanvas)->Arg(1000)->Unit(benchmark::kMillisecond);
