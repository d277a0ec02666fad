// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickCatalogue.h"
#include "BrickItem.h"
#include "CanvasFixture.h"
#include "Explanations.h"
#include "MiniMap.h"
#include "NetworkFrames.h"
#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzundostack.h"

#include <QAbstractEventDispatcher>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

namespace {

class Canvas : public CanvasFixture
{
protected:
    /// A root, a matte material and a colour texture, from right to left and not linked.
    void addThree()
    {
        root = add("VireoRootBrick", 200, -100);
        matte = add("VireoMatMatteBrick", -100, -100);
        texture = add("VireoTexClrMixBrick", -400, -100);
    }
    void linkThree()
    {
        addThree();
        DzUndoStackLock lock;
        EXPECT_TRUE(linkPins(output(matte), param(root, "material")));
        EXPECT_TRUE(linkPins(output(texture), param(matte, "Kd")));
        m_view.getNetworkScene()->flush();
    }
    LinkFit fitOf(DzShaderBrick* brick, const char* name)
    {
        return m_view.getNetworkScene()->getFit(param(brick, name));
    }
    bool isDimmed(DzShaderBrick* brick)
    {
        return m_view.getNetworkScene()->isDimmed(m_view.getNetworkScene()->getItem(brick));
    }
    QVector<DzShaderBrick*> selected() const { return m_selection.getBricks(); }
    static void dropOn(NetworkView* view, const QPoint& place, const QMimeData* data, bool* taken)
    {
        QDragEnterEvent enter(place, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &enter);
        *taken = enter.isAccepted();
        if (!*taken)
            return;
        QDragMoveEvent move(place, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &move);
        QDropEvent drop(place, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &drop);
    }
    QMenu* openMenu() const { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    VireoBrickBase* root = nullptr;
    VireoBrickBase* matte = nullptr;
    VireoBrickBase* texture = nullptr;
};

} // namespace

// Wires.

TEST_F(Canvas, draggingFromAnOutputToAnInputLinksThem)
{
    addThree();
    drag(pinOf(matte, "result"), pinOf(root, "material"));
    EXPECT_TRUE(isLinked(matte, root, "material"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_FALSE(isLinked(matte, root, "material"));
}

TEST_F(Canvas, draggingFromAnInputToAnOutputLinksThem)
{
    addThree();
    drag(pinOf(matte, "Kd"), pinOf(texture, "result"));
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
}

TEST_F(Canvas, aWireMayBeDroppedAnywhereOnTheRowOrOnTheTitle)
{
    addThree();
    drag(pinOf(texture, "result"), pinOf(matte, "Kd") + QPoint(80, 0));
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
    drag(pinOf(matte, "result"), titleOf(root));
    EXPECT_TRUE(isLinked(matte, root, "material"));
}

TEST_F(Canvas, draggingAWireLightsUpWhatItCanJoinAndDimsTheRest)
{
    addThree();
    VireoBrickBase* number = add("VireoTexFltConstantBrick", -400, 150);
    EXPECT_EQ(fitOf(matte, "Kd"), NoProbe);
    const QPoint from = pinOf(texture, "result");
    press(from);
    moveTo(from + QPoint(30, 10));
    EXPECT_EQ(fitOf(matte, "Kd"), Fits);
    EXPECT_EQ(fitOf(matte, "sigma"), NoFit);
    EXPECT_EQ(fitOf(matte, "result"), NoFit);
    EXPECT_EQ(fitOf(root, "material"), NoFit);
    EXPECT_FALSE(isDimmed(matte));
    EXPECT_TRUE(isDimmed(root));
    EXPECT_TRUE(isDimmed(number));
    EXPECT_FALSE(isDimmed(texture));
    key(Qt::Key_Escape);
    EXPECT_EQ(fitOf(matte, "Kd"), NoProbe);
    release(from + QPoint(30, 10));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, whatWouldCloseALoopDoesNotLightUp)
{
    addThree();
    VireoBrickBase* second = add("VireoTexClrMixBrick", -700, -100);
    {
        DzUndoStackLock lock;
        ASSERT_TRUE(linkPins(output(second), param(texture, "tex1")));
    }
    press(pinOf(texture, "result"));
    moveTo(pinOf(texture, "result") + QPoint(30, 10));
    EXPECT_EQ(fitOf(second, "tex1"), NoFit);
    EXPECT_TRUE(isDimmed(second));
    release(titleOf(texture));
}

TEST_F(Canvas, droppingAWireInTheVoidOpensASearchOfWhatFits)
{
    addThree();
    drag(pinOf(matte, "Kd"), QPoint(300, 600));
    ASSERT_NE(search(), nullptr);
    const QStringList found = foundInSearch();
    EXPECT_TRUE(found.contains(texture->getPreferredName()));
    EXPECT_FALSE(found.contains(matte->getPreferredName()));
    EXPECT_FALSE(found.contains(root->getPreferredName()));
    typeInSearch(QStringLiteral("mix"));
    ASSERT_EQ(m_user.getNumBricks(), 4);
    DzShaderBrick* added = m_user.getBrick(4);
    EXPECT_TRUE(isLinked(added, matte, "Kd"));
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { added });
    // Its pin is where the wire was dropped.
    EXPECT_LE((pinOf(added, "result") - QPoint(300, 600)).manhattanLength(), 2);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_EQ(m_user.getNumBricks(), 3);
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 0);
}

TEST_F(Canvas, aSearchThatIsLeftAddsNothing)
{
    addThree();
    drag(pinOf(matte, "Kd"), QPoint(300, 600));
    ASSERT_NE(search(), nullptr);
    QTest::keyClick(search()->findChild<QLineEdit*>(), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(search(), nullptr);
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, droppingOnAnOccupiedInputReplacesTheLink)
{
    linkThree();
    VireoBrickBase* other = add("VireoTexClrConstantBrick", -400, 200);
    drag(pinOf(other, "result"), pinOf(matte, "Kd"));
    EXPECT_TRUE(isLinked(other, matte, "Kd"));
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 1);
}

TEST_F(Canvas, droppingWithShiftKeepsTheLinksOfTheInput)
{
    linkThree();
    VireoBrickBase* other = add("VireoTexClrConstantBrick", -400, 200);
    drag(pinOf(other, "result"), pinOf(matte, "Kd"), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_TRUE(isLinked(other, matte, "Kd"));
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
}

TEST_F(Canvas, draggingALinkedInputTakesItsWireToAnotherInput)
{
    linkThree();
    VireoBrickBase* glossy = add("VireoMatGlossyBrick", -100, 100);
    drag(pinOf(matte, "Kd"), pinOf(glossy, "Ks"));
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
    EXPECT_TRUE(isLinked(texture, glossy, "Ks"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
    EXPECT_FALSE(isLinked(texture, glossy, "Ks"));
}

TEST_F(Canvas, droppingATakenWireInTheVoidRemovesTheLink)
{
    linkThree();
    drag(pinOf(matte, "Kd"), QPoint(300, 600));
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 0);
    EXPECT_EQ(search(), nullptr);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(Canvas, puttingATakenWireBackChangesNothing)
{
    linkThree();
    const QPoint pin = pinOf(matte, "Kd");
    press(pin);
    moveTo(pin + QPoint(-60, 40));
    moveTo(pin);
    release(pin);
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, aRefusedLinkSaysWhy)
{
    addThree();
    drag(pinOf(texture, "result"), pinOf(matte, "sigma"));
    EXPECT_EQ(param(matte, "sigma")->getNumConnections(), 0);
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_EQ(m_messages.first(), QStringLiteral("Sigma takes LFloat, and this is LColor."));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, aRefusedWireSaysWhyBesideTheCursor)
{
    addThree();
    const QPoint place = pinOf(matte, "sigma");
    press(pinOf(texture, "result"));
    moveTo(place + QPoint(-20, 0));
    moveTo(place);
    const QImage shown = m_view.viewport()->grab().toImage();
    // Painting the same words over it changes nothing; other words would show.
    const auto differsFrom = [&](const QString& text) {
        QImage painted = shown;
        QPainter painter(&painted);
        painter.setTransform(m_view.viewportTransform());
        m_view.paintHint(&painter, m_view.mapToScene(place), text, true);
        const QFontMetrics metrics(m_view.getNetworkScene()->getStyle().font);
        const QRect inside(place + QPoint(20, 22), QSize(metrics.horizontalAdvance(text), 12));
        int different = 0;
        for (int x = inside.left(); x <= inside.right(); ++x)
            for (int y = inside.top(); y <= inside.bottom(); ++y) {
                const int before = qGray(shown.pixel(x, y));
                different += qAbs(before - qGray(painted.pixel(x, y))) > 60;
            }
        return different > 0;
    };
    EXPECT_FALSE(differsFrom(QStringLiteral("Sigma takes LFloat, and this is LColor.")));
    EXPECT_TRUE(differsFrom(QStringLiteral("Sigma takes LFloat, and this is LGhost.")));
    EXPECT_TRUE(differsFrom(QStringLiteral("Nothing is refused.")));
    release(place);
}

TEST_F(Canvas, cuttingAcrossWiresRemovesThem)
{
    linkThree();
    const QPoint first = middleOfWire(texture, matte, "Kd");
    const QPoint second = middleOfWire(matte, root, "material");
    drag(first - QPoint(0, 60), first + QPoint(0, 60), Qt::RightButton, Qt::ControlModifier);
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
    EXPECT_TRUE(isLinked(matte, root, "material"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    drag(second - QPoint(0, 60), second + QPoint(0, 60), Qt::RightButton, Qt::ControlModifier);
    EXPECT_FALSE(isLinked(matte, root, "material"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
}

// Moving.

TEST_F(Canvas, draggingABrickMovesIt)
{
    addThree();
    drag(titleOf(matte), titleOf(matte) + QPoint(37, 81));
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-63, -19));
    EXPECT_EQ(matte->getBrickSettings()->getFloatValue(QStringLiteral("PosX")), -63);
    EXPECT_EQ(matte->getBrickSettings()->getFloatValue(QStringLiteral("PosY")), -19);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-100, -100));
    EXPECT_EQ(m_view.getNetworkScene()->getItem(matte)->pos(), QPointF(-100, -100));
}

TEST_F(Canvas, draggingOneOfTheSelectedBricksMovesAllInOneStep)
{
    linkThree();
    m_selection.set({ matte, texture });
    drag(titleOf(matte), titleOf(matte) + QPoint(40, -30));
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-60, -130));
    EXPECT_EQ(BrickAppearance::position(texture), QPointF(-360, -130));
    EXPECT_EQ(BrickAppearance::position(root), QPointF(200, -100));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    EXPECT_EQ(selected().size(), 2);
}

TEST_F(Canvas, escapeTakesADragBack)
{
    addThree();
    const QPoint from = titleOf(matte);
    press(from);
    moveTo(from + QPoint(50, 50));
    EXPECT_EQ(m_view.getNetworkScene()->getItem(matte)->pos(), QPointF(-50, -50));
    key(Qt::Key_Escape);
    EXPECT_EQ(m_view.getNetworkScene()->getItem(matte)->pos(), QPointF(-100, -100));
    release(from + QPoint(50, 50));
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-100, -100));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, movingSnapsToTheGridWhenAskedTo)
{
    addThree();
    command("snapToGrid")->trigger();
    drag(titleOf(matte), titleOf(matte) + QPoint(37, 81));
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-60, -20));
}

TEST_F(Canvas, wiresFollowABrickThatIsDragged)
{
    linkThree();
    const QPoint from = titleOf(texture);
    press(from);
    moveTo(from + QPoint(10, 120));
    const QVector<CanvasWire> wires = m_view.getNetworkScene()->getItem(matte)->getWires();
    ASSERT_EQ(wires.size(), 1);
    EXPECT_EQ(
        wires.first().from, m_view.getNetworkScene()->getItem(texture)->pinPlace(output(texture)));
    EXPECT_EQ(m_view.getNetworkScene()->getItem(texture)->pos(), QPointF(-390, 20));
    release(from + QPoint(10, 120));
}

TEST_F(Canvas, droppingALooseBrickOnAWireInsertsIt)
{
    linkThree();
    VireoBrickBase* mix = add("VireoTexClrMixBrick", -400, 150);
    const QPoint wire = middleOfWire(texture, matte, "Kd");
    drag(titleOf(mix), wire);
    EXPECT_TRUE(isLinked(mix, matte, "Kd"));
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
    EXPECT_TRUE(isLinked(texture, mix, "tex1"));
    EXPECT_NE(BrickAppearance::position(mix), QPointF(-400, 150));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
    EXPECT_EQ(BrickAppearance::position(mix), QPointF(-400, 150));
}

TEST_F(Canvas, aLinkedBrickIsNotInsertedByChance)
{
    linkThree();
    VireoBrickBase* mix = add("VireoTexClrMixBrick", -400, 150);
    VireoBrickBase* constant = add("VireoTexClrConstantBrick", -400, 300);
    {
        DzUndoStackLock lock;
        ASSERT_TRUE(linkPins(output(constant), param(mix, "tex2")));
    }
    drag(titleOf(mix), middleOfWire(texture, matte, "Kd"));
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
}

TEST_F(Canvas, aBrickThatIsDeletedWhileItIsDraggedDoesNoHarm)
{
    linkThree();
    m_selection.set({ matte, texture });
    const QPoint from = titleOf(matte);
    press(from);
    moveTo(from + QPoint(30, 30));
    {
        DzUndoStackLock lock;
        m_user.deleteBrick(matte);
    }
    moveTo(from + QPoint(60, 60));
    release(from + QPoint(60, 60));
    EXPECT_EQ(m_user.getNumBricks(), 2);
    EXPECT_EQ(BrickAppearance::position(texture), QPointF(-340, -40));
}

TEST_F(Canvas, aBrickThatIsDeletedWhileItsWireIsDraggedDoesNoHarm)
{
    addThree();
    const QPoint from = pinOf(texture, "result");
    press(from);
    moveTo(from + QPoint(30, 30));
    {
        DzUndoStackLock lock;
        m_user.deleteBrick(texture);
    }
    moveTo(pinOf(matte, "Kd"));
    release(pinOf(matte, "Kd"));
    EXPECT_EQ(param(matte, "Kd")->getNumConnections(), 0);
}

TEST_F(Canvas, noSearchAndNoMenuOpensDuringADrag)
{
    addThree();
    const QPoint from = titleOf(matte);
    press(from);
    moveTo(from + QPoint(30, 30));
    key(Qt::Key_Tab);
    EXPECT_EQ(search(), nullptr);
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(search(), nullptr);
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint());
    QCoreApplication::sendEvent(m_view.viewport(), &menuKey);
    EXPECT_EQ(openMenu(), nullptr);
    moveTo(from + QPoint(50, 60));
    release(from + QPoint(50, 60));
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-50, -40));
    press(QPoint(500, 600), Qt::MiddleButton);
    key(Qt::Key_Tab);
    EXPECT_EQ(search(), nullptr);
    release(QPoint(500, 600), Qt::MiddleButton);
    key(Qt::Key_Tab);
    EXPECT_NE(search(), nullptr);
}

TEST_F(Canvas, aDragWhoseButtonIsUpAlreadyIsTakenBack)
{
    addThree();
    // The release went to another window.
    const auto moveFreely = [this](const QPoint& place) {
        QMouseEvent event(QEvent::MouseMove, place, m_view.viewport()->mapToGlobal(place),
            Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.viewport(), &event);
    };
    const QPoint from = titleOf(matte);
    press(from);
    moveTo(from + QPoint(30, 30));
    moveFreely(from + QPoint(200, 30));
    EXPECT_EQ(m_view.getNetworkScene()->getItem(matte)->pos(), QPointF(-100, -100));
    release(from + QPoint(200, 30));
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-100, -100));
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
    const QPointF before = m_view.mapToScene(QPoint(500, 600));
    press(QPoint(500, 600), Qt::MiddleButton);
    moveFreely(QPoint(600, 600));
    EXPECT_EQ(m_view.mapToScene(QPoint(500, 600)), before);
    release(QPoint(600, 600), Qt::MiddleButton);
}

TEST_F(Canvas, aSecondQuickPressOfAnyButtonIsAPress)
{
    linkThree();
    const auto send = [this](QEvent::Type type, const QPoint& place, Qt::MouseButton button,
                          Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
        QMouseEvent event(
            type, place, m_view.viewport()->mapToGlobal(place), button, buttons, modifiers);
        QCoreApplication::sendEvent(m_view.viewport(), &event);
    };
    const auto dragAgain = [&](const QPoint& from, const QPoint& to, Qt::MouseButton button,
                               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        send(QEvent::MouseButtonDblClick, from, button, button, modifiers);
        send(QEvent::MouseMove, to, Qt::NoButton, button, modifiers);
        send(QEvent::MouseButtonRelease, to, button, Qt::NoButton, modifiers);
    };
    const QPointF before = m_view.mapToScene(QPoint(500, 600));
    dragAgain(QPoint(500, 600), QPoint(540, 610), Qt::MiddleButton);
    EXPECT_EQ(m_view.mapToScene(QPoint(540, 610)), before);
    const QPoint wire = middleOfWire(texture, matte, "Kd");
    dragAgain(wire - QPoint(0, 60), wire + QPoint(0, 60), Qt::RightButton, Qt::ControlModifier);
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
    QTest::keyPress(window(), Qt::Key_Space);
    dragAgain(QPoint(540, 610), QPoint(500, 600), Qt::LeftButton);
    QTest::keyRelease(window(), Qt::Key_Space);
    EXPECT_EQ(m_view.mapToScene(QPoint(500, 600)), before);
    EXPECT_EQ(search(), nullptr);
    dragAgain(QPoint(500, 600), QPoint(500, 600), Qt::RightButton);
    ASSERT_NE(openMenu(), nullptr);
    openMenu()->close();
}

// Selecting.

TEST_F(Canvas, clicksSelect)
{
    addThree();
    click(titleOf(matte));
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { matte });
    click(titleOf(root), Qt::ShiftModifier);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { matte, root }));
    click(titleOf(matte), Qt::ShiftModifier);
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { root });
    m_selection.set({ root, matte });
    click(titleOf(matte));
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { matte });
    click(voidPlace());
    EXPECT_TRUE(selected().isEmpty());
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, aBoxSelectsWhatItReachesOver)
{
    addThree();
    const QPoint corner = at(QPointF(-450, -150));
    drag(corner, at(QPointF(-50, 0)));
    EXPECT_EQ(selected().size(), 2);
    EXPECT_TRUE(m_selection.contains(matte));
    EXPECT_TRUE(m_selection.contains(texture));
    drag(at(QPointF(450, -150)), at(QPointF(350, 0)), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(selected().size(), 3);
    drag(corner, at(QPointF(-350, 0)), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(selected().size(), 2);
    EXPECT_FALSE(m_selection.contains(texture));
}

TEST_F(Canvas, aBoxTellsWhenSelectingIsOver)
{
    addThree();
    int ends = 0;
    QObject::connect(&m_selection, &BrickSelection::selectingEnded, &m_view, [&] { ++ends; });
    const QPoint corner = at(QPointF(-450, -150));
    press(corner);
    EXPECT_TRUE(m_selection.isSelecting());
    moveTo(at(QPointF(-350, 0)));
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { texture });
    EXPECT_TRUE(m_selection.isSelecting());
    moveTo(at(QPointF(-50, 0)));
    EXPECT_EQ(ends, 0);
    release(at(QPointF(-50, 0)));
    EXPECT_FALSE(m_selection.isSelecting());
    EXPECT_EQ(ends, 1);
    press(corner);
    key(Qt::Key_Escape);
    EXPECT_FALSE(m_selection.isSelecting());
    EXPECT_EQ(ends, 2);
    release(corner);
    EXPECT_EQ(ends, 2);
}

TEST_F(Canvas, aBoxDoesNotSelectWhatWasDeletedMeanwhile)
{
    addThree();
    m_selection.set({ matte, texture });
    const QPoint corner = at(QPointF(450, -150));
    press(corner, Qt::LeftButton, Qt::ShiftModifier);
    moveTo(at(QPointF(400, -50)));
    EXPECT_EQ(selected().size(), 3);
    m_edit.deleteBricks({ matte });
    moveTo(at(QPointF(390, -50)));
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { texture, root }));
    release(at(QPointF(390, -50)));
    dzUndoStack->undo();
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { texture, root }));
}

TEST_F(Canvas, bricksThatGoTogetherLeaveTheSelectionTogether)
{
    linkThree();
    m_selection.set(m_edit.getBricks());
    key(Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(selected().size(), 3);
    int changes = 0;
    QObject::connect(&m_selection, &BrickSelection::selectionChanged, &m_view, [&] { ++changes; });
    dzUndoStack->undo();
    QCoreApplication::processEvents();
    EXPECT_TRUE(selected().isEmpty());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(m_view.getNetworkScene()->getItems().size(), 3);
    dzUndoStack->redo();
    m_selection.set(m_edit.getBricks());
    dzUndoStack->undo();
    dzUndoStack->redo();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_view.getNetworkScene()->getItems().size(), 6);
    m_view.grab();
}

TEST_F(Canvas, keysSelectAllUpstreamAndDownstream)
{
    linkThree();
    VireoBrickBase* loose = add("VireoTexClrMixBrick", -400, 200);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected().size(), 4);
    m_selection.set({ matte });
    key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { matte, texture }));
    m_selection.set({ matte });
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { matte, root }));
    EXPECT_FALSE(m_selection.contains(loose));
    key(Qt::Key_Escape);
    EXPECT_TRUE(selected().isEmpty());
}

// Adding.

TEST_F(Canvas, controlSpaceAndTabSearchToAddAtTheCursor)
{
    moveTo(QPoint(400, 300));
    key(Qt::Key_Space, Qt::ControlModifier);
    ASSERT_NE(search(), nullptr);
    typeInSearch(QStringLiteral("matte"));
    ASSERT_EQ(m_user.getNumBricks(), 1);
    EXPECT_EQ(m_user.getBrick(1)->getPreferredName(), QStringLiteral("Matte"));
    EXPECT_EQ(at(BrickAppearance::position(m_user.getBrick(1))), QPoint(400, 300));
    moveTo(QPoint(100, 120));
    key(Qt::Key_Tab);
    ASSERT_NE(search(), nullptr);
    typeInSearch(QStringLiteral("glossy"));
    ASSERT_EQ(m_user.getNumBricks(), 2);
    EXPECT_EQ(at(BrickAppearance::position(m_user.getBrick(2))), QPoint(100, 120));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
}

TEST_F(Canvas, theSearchIsWalkedWithKeys)
{
    key(Qt::Key_Tab);
    ASSERT_NE(search(), nullptr);
    const QStringList all = foundInSearch();
    auto* edit = search()->findChild<QLineEdit*>();
    QTest::keyClick(edit, Qt::Key_Down);
    QTest::keyClick(edit, Qt::Key_Down);
    QTest::keyClick(edit, Qt::Key_Up);
    QTest::keyClick(edit, Qt::Key_Return);
    ASSERT_EQ(m_user.getNumBricks(), 1);
    EXPECT_EQ(m_user.getBrick(1)->getPreferredName(), all.at(1));
}

TEST_F(Canvas, tabChoosesOnlyWhatWasTypedOrWalkedTo)
{
    key(Qt::Key_Tab);
    ASSERT_NE(search(), nullptr);
    auto* edit = search()->findChild<QLineEdit*>();
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(m_user.getNumBricks(), 0);
    ASSERT_NE(search(), nullptr);
    QTest::keyClick(edit, Qt::Key_Down);
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(m_user.getNumBricks(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    key(Qt::Key_Tab);
    ASSERT_NE(search(), nullptr);
    edit = search()->findChild<QLineEdit*>();
    QTest::keyClicks(edit, QStringLiteral("glossy"));
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(m_user.getNumBricks(), 2);
}

TEST_F(Canvas, aSecondRootIsAddedOnlyOnPurpose)
{
    const QString name = QStringLiteral("Vireo Surface");
    key(Qt::Key_Tab);
    ASSERT_NE(search(), nullptr);
    EXPECT_EQ(foundInSearch().last(), name) << "there is none yet";
    search()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    addThree();
    EXPECT_EQ(m_user.getNumBricks(), 3);
    m_messages.clear();
    key(Qt::Key_Tab);
    ASSERT_NE(search(), nullptr);
    for (const QString& found : foundInSearch())
        EXPECT_FALSE(found.startsWith(name));
    typeInSearch(QString());
    ASSERT_EQ(m_user.getNumBricks(), 4);
    EXPECT_EQ(rootOf(&m_user), root) << "what stands first is no root";
    EXPECT_TRUE(m_messages.isEmpty());
    // By its own name it is there, and says what it is.
    key(Qt::Key_Tab);
    ASSERT_NE(search(), nullptr);
    auto* edit = search()->findChild<QLineEdit*>();
    QTest::keyClicks(edit, name);
    ASSERT_FALSE(foundInSearch().isEmpty());
    EXPECT_EQ(
        foundInSearch().first(), name + QStringLiteral(" (another root: only one is written)"));
    QTest::keyClick(edit, Qt::Key_Return);
    ASSERT_EQ(m_user.getNumBricks(), 5);
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages.first().contains(QStringLiteral("another root")));
    EXPECT_TRUE(m_messages.first().contains(QStringLiteral("Undo")));
}

TEST_F(Canvas, newBricksHideNoOthers)
{
    addThree();
    const auto hidesNone = [this](uint id) {
        m_view.getNetworkScene()->flush();
        const QRectF box = m_view.getNetworkScene()->boxOf({ m_user.getBrick(id) });
        for (VireoBrickBase* other : { root, matte, texture })
            EXPECT_FALSE(box.intersects(m_view.getNetworkScene()->boxOf({ other }))) << id;
    };
    moveTo(titleOf(matte) + QPoint(0, 20));
    key(Qt::Key_Tab);
    typeInSearch(QStringLiteral("glossy"));
    ASSERT_EQ(m_user.getNumBricks(), 4);
    hidesNone(4);
    // A wire that is dropped just beside a brick.
    drag(pinOf(matte, "sigma"), titleOf(texture) - QPoint(80, 0));
    typeInSearch(QStringLiteral("mix"));
    ASSERT_EQ(m_user.getNumBricks(), 5);
    hidesNone(5);
    QMimeData data;
    data.setData(BrickCatalogue::mimeType(), "VireoMatVelvetBrick");
    bool taken = false;
    dropOn(&m_view, titleOf(root), &data, &taken);
    ASSERT_EQ(m_user.getNumBricks(), 6);
    hidesNone(6);
}

TEST_F(Canvas, theMouseIsKnownAgainWhenAPopupHasClosed)
{
    addThree();
    m_selection.set({ matte });
    key(Qt::Key_C, Qt::ControlModifier);
    moveTo(QPoint(100, 600));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_view.viewport(), &leave);
    // What Qt tells the widget under the mouse then.
    const QPointF place(250, 620);
    QEnterEvent enter(place, place, m_view.viewport()->mapToGlobal(place.toPoint()));
    QCoreApplication::sendEvent(m_view.viewport(), &enter);
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(m_user.getNumBricks(), 4);
    const QRectF box = m_view.getNetworkScene()->boxOf({ m_user.getBrick(4) });
    EXPECT_TRUE(box.contains(m_view.mapToScene(place.toPoint())));
}

TEST_F(Canvas, doubleClickInTheVoidOpensTheSearch)
{
    doubleClick(QPoint(250, 250));
    ASSERT_NE(search(), nullptr);
    typeInSearch(QStringLiteral("velvet"));
    ASSERT_EQ(m_user.getNumBricks(), 1);
}

TEST_F(Canvas, aBrickDraggedFromElsewhereIsAddedWhereItIsDropped)
{
    QMimeData data;
    data.setData(BrickCatalogue::mimeType(), "VireoMatMatteBrick");
    bool taken = false;
    dropOn(&m_view, QPoint(300, 200), &data, &taken);
    EXPECT_TRUE(taken);
    ASSERT_EQ(m_user.getNumBricks(), 1);
    EXPECT_TRUE(m_view.getNetworkScene()
                    ->boxOf({ m_user.getBrick(1) })
                    .contains(m_view.mapToScene(QPoint(300, 200))));
}

TEST_F(Canvas, newBricksAreWhollyInView)
{
    QMimeData data;
    data.setData(BrickCatalogue::mimeType(), "VireoMatMatteBrick");
    const auto* map = m_view.findChild<MiniMap*>();
    const QPoint last(m_view.width() - 3, m_view.height() - 3);
    const auto check = [&](uint id) {
        DzShaderBrick* brick = m_user.getBrick(id);
        ASSERT_NE(brick, nullptr);
        const QRectF box = m_view.getNetworkScene()->boxOf({ brick });
        EXPECT_TRUE(m_view.getVisibleBox().contains(box)) << id;
        EXPECT_FALSE(m_view.mapFromScene(box).boundingRect().intersects(map->geometry())) << id;
    };
    bool taken = false;
    for (const QPoint& place : { QPoint(2, 2), QPoint(last.x(), 300), QPoint(300, last.y()) }) {
        dropOn(&m_view, place, &data, &taken);
        const uint id = uint(m_user.getNumBricks());
        check(id);
        const QRectF box = m_view.getNetworkScene()->boxOf({ m_user.getBrick(id) });
        EXPECT_TRUE(box.adjusted(-20, -20, 20, 20).contains(m_view.mapToScene(place)))
            << "no farther than needed";
    }
    moveTo(QPoint(last.x(), 200));
    key(Qt::Key_Tab);
    typeInSearch(QStringLiteral("glossy"));
    check(4);
    // With a wire that is dropped near the edge.
    dzUndoStack->clearAll();
    drag(pinOf(m_user.getBrick(1), "Kd"), QPoint(4, last.y()));
    typeInSearch(QStringLiteral("mix"));
    check(5);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(Canvas, aBrickThatIsPutIntoAWireHidesNoOther)
{
    addThree();
    {
        DzUndoStackLock lock;
        ASSERT_TRUE(linkPins(output(texture), param(matte, "Kd")));
    }
    const auto check = [&](VireoBrickBase* brick) {
        for (VireoBrickBase* other : { root, matte, texture })
            EXPECT_FALSE(m_view.getNetworkScene()->boxOf({ brick }).intersects(
                m_view.getNetworkScene()->boxOf({ other })));
        EXPECT_TRUE(isLinked(brick, matte, "Kd"));
        EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
        dzUndoStack->undo();
        EXPECT_TRUE(isLinked(texture, matte, "Kd"));
        dzUndoStack->clearAll();
    };
    VireoBrickBase* mix = add("VireoTexClrMixBrick", -400, 150);
    drag(titleOf(mix), middleOfWire(texture, matte, "Kd"));
    check(mix);
    EXPECT_EQ(BrickAppearance::position(mix), QPointF(-400, 150));
    QMimeData data;
    data.setData(BrickCatalogue::mimeType(), "VireoTexClrMixBrick");
    bool taken = false;
    dropOn(&m_view, middleOfWire(texture, matte, "Kd"), &data, &taken);
    check(qobject_cast<VireoBrickBase*>(m_user.getBrick(5)));
}

TEST_F(Canvas, whatIsNoBrickOfThisNetworkIsNotTaken)
{
    QMimeData data;
    data.setData(BrickCatalogue::mimeType(), "NoSuchBrick");
    bool taken = true;
    dropOn(&m_view, QPoint(300, 200), &data, &taken);
    EXPECT_FALSE(taken);
    QMimeData text;
    text.setText(QStringLiteral("VireoMatMatteBrick"));
    dropOn(&m_view, QPoint(300, 200), &text, &taken);
    EXPECT_FALSE(taken);
    EXPECT_EQ(m_user.getNumBricks(), 0);
}

TEST_F(Canvas, aBrickDraggedFromElsewhereOntoAWireIsInserted)
{
    linkThree();
    QMimeData data;
    data.setData(BrickCatalogue::mimeType(), "VireoTexClrMixBrick");
    bool taken = false;
    dropOn(&m_view, middleOfWire(texture, matte, "Kd"), &data, &taken);
    ASSERT_EQ(m_user.getNumBricks(), 4);
    EXPECT_TRUE(isLinked(m_user.getBrick(4), matte, "Kd"));
    EXPECT_TRUE(isLinked(texture, m_user.getBrick(4), "tex1"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

// Copies.

TEST_F(Canvas, copyAndPasteKeepLinksInside)
{
    linkThree();
    m_selection.set({ matte, texture });
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(QLatin1String("\"BrickSetup\"")));
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(m_user.getNumBricks(), 5);
    DzShaderBrick* matteCopy = m_user.getBrick(4);
    DzShaderBrick* textureCopy = m_user.getBrick(5);
    EXPECT_EQ(matteCopy->className(), matte->className());
    EXPECT_TRUE(isLinked(textureCopy, matteCopy, "Kd"));
    EXPECT_EQ(output(matteCopy)->getNumConnections(), 0);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { matteCopy, textureCopy }));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_EQ(m_user.getNumBricks(), 3);
}

TEST_F(Canvas, whatIsPastedHidesNoOthers)
{
    linkThree();
    m_selection.set({ matte, texture });
    key(Qt::Key_C, Qt::ControlModifier);
    moveTo(titleOf(matte) - QPoint(100, 0));
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(m_user.getNumBricks(), 5);
    m_view.getNetworkScene()->flush();
    for (const uint id : { 4u, 5u })
        for (VireoBrickBase* other : { root, matte, texture })
            EXPECT_FALSE(m_view.getNetworkScene()
                             ->boxOf({ m_user.getBrick(id) })
                             .intersects(m_view.getNetworkScene()->boxOf({ other })))
                << id;
}

TEST_F(Canvas, cutTakesTheBricksAway)
{
    linkThree();
    m_selection.set({ texture });
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(m_user.getNumBricks(), 2);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(m_user.getNumBricks(), 3);
}

TEST_F(Canvas, textOfOtherProgramsIsNotPasted)
{
    addThree();
    const QStringList strange { QStringLiteral("Dear Sir or Madam"), QStringLiteral("{}"),
        QStringLiteral("{\"format\": \"sskn\"}"), QStringLiteral("[1, 2"), QString(4096, '{') };
    for (const QString& text : strange) {
        QGuiApplication::clipboard()->setText(text);
        key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(m_user.getNumBricks(), 3);
    }
    const QStringList damaged { QStringLiteral("\"BrickSetup\""),
        QStringLiteral("{\"BrickSetup\": 3}"), QStringLiteral("{\"BrickSetup\": {\"type\": ") };
    for (const QString& text : damaged) {
        m_messages.clear();
        QGuiApplication::clipboard()->setText(text);
        key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(m_messages.size(), 1) << text.left(40).toStdString();
        EXPECT_EQ(m_user.getNumBricks(), 3);
    }
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, duplicateKeepsLinksInside)
{
    linkThree();
    m_selection.set({ matte, texture });
    key(Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(m_user.getNumBricks(), 5);
    EXPECT_TRUE(isLinked(m_user.getBrick(5), m_user.getBrick(4), "Kd"));
    EXPECT_EQ(BrickAppearance::position(m_user.getBrick(4)), QPointF(-60, -60));
}

TEST_F(Canvas, deleteRemovesAndReconnects)
{
    linkThree();
    VireoBrickBase* mix = add("VireoTexClrMixBrick", -400, 150);
    {
        DzUndoStackLock lock;
        ASSERT_TRUE(m_edit.insertOnLink(mix, BrickLink { output(texture), param(matte, "Kd") }));
    }
    m_selection.set({ mix });
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(m_user.getNumBricks(), 3);
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
    m_selection.set({ matte });
    key(Qt::Key_Delete);
    EXPECT_EQ(m_user.getNumBricks(), 2);
    EXPECT_TRUE(selected().isEmpty());
    dzUndoStack->undo();
    dzUndoStack->undo();
    EXPECT_EQ(m_user.getNumBricks(), 4);
    EXPECT_TRUE(isLinked(mix, matte, "Kd"));
    EXPECT_EQ(m_view.getNetworkScene()->getItems().size(), 4);
}

// Frames and titles.

TEST_F(Canvas, framesAreMadeNamedAndMoved)
{
    addThree();
    m_selection.set({ matte, texture });
    key(Qt::Key_G, Qt::ControlModifier);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Paint"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_EQ(framesOf(m_edit).size(), 1);
    EXPECT_EQ(framesOf(m_edit).first().title, QStringLiteral("Paint"));
    EXPECT_EQ(framesOf(m_edit).first().bricks.size(), 2);
    m_selection.clear();
    const QPoint title
        = at(m_view.getNetworkScene()->frameTitleBox(framesOf(m_edit).first().number).center());
    drag(title, title + QPoint(20, 60));
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-80, -40));
    EXPECT_EQ(BrickAppearance::position(texture), QPointF(-380, -40));
    EXPECT_EQ(BrickAppearance::position(root), QPointF(200, -100));
}

TEST_F(Canvas, stepsAreNamedAsPeopleCount)
{
    linkThree();
    drag(titleOf(root), titleOf(root) + QPoint(30, 30));
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Move ") + root->getBrickTitle());
    m_selection.set({ matte, texture });
    drag(titleOf(matte), titleOf(matte) + QPoint(30, 30));
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Move 2 Bricks"));
    const auto cut = [this](const QPoint& place) {
        drag(place - QPoint(0, 40), place + QPoint(0, 40), Qt::RightButton, Qt::ControlModifier);
    };
    cut(middleOfWire(texture, matte, "Kd"));
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Cut Wire"));
}

TEST_F(Canvas, doubleClickOnAFramesTitleChangesIt)
{
    addThree();
    const int frame = frameBricks(&m_edit, { matte }, QStringLiteral("Old"));
    QCoreApplication::processEvents();
    doubleClick(at(m_view.getNetworkScene()->frameTitleBox(frame).center()));
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("Old"));
    QTest::keyClicks(editor, QStringLiteral("New"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(framesOf(m_edit).first().title, QStringLiteral("New"));
}

TEST_F(Canvas, aBrickDroppedIntoAFrameJoinsIt)
{
    addThree();
    const int frame = frameBricks(&m_edit, { matte, root }, QStringLiteral("Frame"));
    m_selection.clear();
    drag(titleOf(texture), at(QPointF(150, 0)));
    EXPECT_EQ(BrickAppearance::frameNumber(texture), frame);
    key(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(BrickAppearance::frameNumber(texture), 0);
}

TEST_F(Canvas, titlesAreEditedInPlace)
{
    addThree();
    m_selection.set({ matte });
    key(Qt::Key_F2);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Wall paint"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Wall paint"));
    EXPECT_EQ(BrickAppearance::titleText(matte), QStringLiteral("Wall paint (2)"));
    dzUndoStack->undo();
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Matte"));
    EXPECT_FALSE(matte->getBrickSettings()->hasKey(QStringLiteral("BrickTitle")));
}

TEST_F(Canvas, escapeLeavesATitleAsItIs)
{
    addThree();
    m_selection.set({ matte });
    key(Qt::Key_F2);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Wall paint"));
    QTest::keyClick(editor, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Matte"));
    EXPECT_EQ(m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor")), nullptr);
}

TEST_F(Canvas, aTitleThatLosesTheKeyboardIsTakenOver)
{
    addThree();
    m_selection.set({ matte });
    key(Qt::Key_F2);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Wall paint"));
    ASSERT_EQ(QApplication::focusWidget(), editor);
    QApplication::focusWidget()->clearFocus();
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Wall paint"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
}

TEST_F(Canvas, aTitleIsTakenOverWhenAnotherIsEdited)
{
    addThree();
    m_view.editTitle(matte);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Wall paint"));
    m_view.editTitle(root);
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Wall paint"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), root->getBrickTitle());
    EXPECT_TRUE(editor->hasFocus());
}

TEST_F(Canvas, whoTakesTheKeyboardFromATitleKeepsIt)
{
    addThree();
    QLineEdit other(&m_view);
    other.show();
    m_view.editTitle(matte);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Wall paint"));
    other.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Wall paint"));
    EXPECT_TRUE(other.hasFocus());
}

TEST_F(Canvas, draggingTheRightEdgeChangesTheWidth)
{
    addThree();
    const BrickItem* item = m_view.getNetworkScene()->getItem(matte);
    const QPoint edge = at(item->pos() + QPointF(item->getSize().width() - 3, 8));
    drag(edge, edge + QPoint(43, 0));
    EXPECT_EQ(matte->getBrickSettings()->getIntValue(QStringLiteral("Width")), 250);
    EXPECT_EQ(item->getSize().width(), 250);
    dzUndoStack->undo();
    m_view.getNetworkScene()->flush();
    EXPECT_EQ(item->getSize().width(), 210);
}

TEST_F(Canvas, hidingParametersKeepsLinkedRows)
{
    linkThree();
    m_selection.set({ matte });
    key(Qt::Key_H);
    m_view.getNetworkScene()->flush();
    const BrickItem* item = m_view.getNetworkScene()->getItem(matte);
    ASSERT_EQ(item->getRows().size(), 2);
    EXPECT_EQ(item->getRows().at(0).param, output(matte));
    EXPECT_EQ(item->getRows().at(1).param, param(matte, "Kd"));
    key(Qt::Key_H);
    m_view.getNetworkScene()->flush();
    EXPECT_EQ(item->getRows().size(), matte->getNumParameters());
}

TEST_F(Canvas, aCollapsedBrickKeepsOutputPinAndColour)
{
    addThree();
    m_view.setFocus();
    const auto barColor = [this] {
        const QPointF corner = m_view.getNetworkScene()->getItem(texture)->pos();
        return m_view.grab().toImage().pixelColor(at(corner + QPointF(4, 14)));
    };
    const QColor before = barColor();
    m_selection.set({ texture });
    key(Qt::Key_H);
    m_selection.clear();
    EXPECT_EQ(barColor(), before);
    EXPECT_EQ(m_view.getNetworkScene()->getItem(texture)->getRows().size(), 1);
    drag(pinOf(texture, "result"), pinOf(matte, "Kd"));
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
}

// Looking around.

TEST_F(Canvas, theWheelZoomsAtTheCursor)
{
    addThree();
    const QPoint place(700, 200);
    const QPointF before = m_view.mapToScene(place);
    wheel(place, 120);
    EXPECT_NEAR(m_view.getZoom(), 1.2, 0.001);
    EXPECT_LE((m_view.mapToScene(place) - before).manhattanLength(), 2);
    wheel(place, -240);
    EXPECT_NEAR(m_view.getZoom(), 1 / 1.2, 0.001);
    EXPECT_LE((m_view.mapToScene(place) - before).manhattanLength(), 3);
    for (int i = 0; i < 100; ++i)
        wheel(place, 120);
    EXPECT_LE(m_view.getZoom(), 4);
    for (int i = 0; i < 100; ++i)
        wheel(place, -120);
    EXPECT_GE(m_view.getZoom(), 0.02);
}

TEST_F(Canvas, theMiddleButtonAndSpacePan)
{
    const QPointF before = m_view.mapToScene(QPoint(500, 300));
    drag(QPoint(500, 300), QPoint(560, 330), Qt::MiddleButton);
    EXPECT_EQ(m_view.mapToScene(QPoint(560, 330)), before);
    QTest::keyPress(window(), Qt::Key_Space);
    drag(QPoint(560, 330), QPoint(500, 300));
    QTest::keyRelease(window(), Qt::Key_Space);
    EXPECT_EQ(m_view.mapToScene(QPoint(500, 300)), before);
    EXPECT_EQ(search(), nullptr);
}

TEST_F(Canvas, keysZoomToTheSelectionAndToAll)
{
    addThree();
    add("VireoTexClrMixBrick", 3000, 2000);
    m_selection.set({ texture });
    key(Qt::Key_F);
    EXPECT_TRUE(m_view.getVisibleBox().contains(m_view.getNetworkScene()->boxOf({ texture })));
    EXPECT_LE(
        (m_view.getVisibleBox().center() - m_view.getNetworkScene()->boxOf({ texture }).center())
            .manhattanLength(),
        4);
    key(Qt::Key_A);
    EXPECT_TRUE(m_view.getVisibleBox().contains(m_view.getNetworkScene()->boxOfAll()));
    lookAt(5000, 5000);
    key(Qt::Key_Home);
    EXPECT_TRUE(m_view.getVisibleBox().contains(m_view.getNetworkScene()->boxOfAll()));
}

TEST_F(Canvas, zoomingLeavesNothingUnderTheMiniMap)
{
    addThree();
    VireoBrickBase* far = add("VireoTexClrMixBrick", 1800, 1200);
    frameBricks(&m_edit, { far }, QStringLiteral("Frame"));
    m_view.getNetworkScene()->flush();
    const auto* map = m_view.findChild<MiniMap*>();
    const auto isUnderMap = [&](const QRectF& box) {
        return m_view.mapFromScene(box).boundingRect().intersects(map->geometry());
    };
    const QRectF all = m_view.getNetworkScene()->boxOfAll();
    key(Qt::Key_A);
    EXPECT_TRUE(m_view.getVisibleBox().contains(all));
    EXPECT_FALSE(isUnderMap(all));
    m_selection.set({ texture, far });
    key(Qt::Key_F);
    EXPECT_FALSE(isUnderMap(m_view.getNetworkScene()->boxOf({ texture, far })));
    const qreal beside = m_view.getZoom();
    key(Qt::Key_M);
    key(Qt::Key_F);
    EXPECT_GT(m_view.getZoom(), beside) << "without it there is more room";
    // A view that is hardly larger than the mini-map shows more with it on top.
    key(Qt::Key_M);
    m_view.resize(220, 160);
    key(Qt::Key_A);
    EXPECT_TRUE(m_view.getVisibleBox().contains(all));
}

TEST_F(Canvas, showingABrickScrollsOnlyAsFarAsNeeded)
{
    addThree();
    const QPointF before = m_view.getVisibleBox().topLeft();
    m_view.showBrick(texture);
    EXPECT_EQ(m_view.getVisibleBox().topLeft(), before);
    const auto* map = m_view.findChild<MiniMap*>();
    VireoBrickBase* hidden = add("VireoTexClrMixBrick", 0, 0);
    m_edit.moveBricks({ NetworkEdit::Move { hidden, m_view.mapToScene(map->pos()) } });
    VireoBrickBase* outside = add("VireoTexClrMixBrick", 3000, -2000);
    for (VireoBrickBase* brick : { hidden, outside, root }) {
        m_view.showBrick(brick);
        const QRectF box = m_view.getNetworkScene()->boxOf({ brick });
        EXPECT_TRUE(m_view.getVisibleBox().contains(box));
        EXPECT_FALSE(m_view.mapFromScene(box).boundingRect().intersects(map->geometry()));
        EXPECT_EQ(m_view.getZoom(), 1);
    }
}

TEST_F(Canvas, networksOfAnySizeCanBeSeenWhole)
{
    add("VireoMatMatteBrick", -500000, 0);
    add("VireoMatMatteBrick", 500000, 900000);
    key(Qt::Key_A);
    EXPECT_TRUE(m_view.getVisibleBox().contains(m_view.getNetworkScene()->boxOfAll()));
    m_view.grab();
    wheel(QPoint(500, 300), -120);
    wheel(QPoint(500, 300), 120 * 80);
    EXPECT_GT(m_view.getZoom(), 1);
}

TEST_F(Canvas, theMiniMapGoesThere)
{
    addThree();
    add("VireoTexClrMixBrick", 6000, 4000);
    auto* map = m_view.findChild<MiniMap*>();
    ASSERT_NE(map, nullptr);
    ASSERT_TRUE(map->isVisible());
    const QPointF before = m_view.getVisibleBox().center();
    QTest::mouseClick(
        map, Qt::LeftButton, Qt::NoModifier, QPoint(map->width() - 20, map->height() / 2));
    EXPECT_GT(m_view.getVisibleBox().center().x(), before.x() + 1000);
    key(Qt::Key_M);
    EXPECT_FALSE(map->isVisible());
}

TEST_F(Canvas, arrangePutsWhatFeedsToTheLeft)
{
    root = add("VireoRootBrick", 0, 0);
    matte = add("VireoMatMatteBrick", 10, 10);
    texture = add("VireoTexClrMixBrick", 20, 20);
    {
        DzUndoStackLock lock;
        linkPins(output(matte), param(root, "material"));
        linkPins(output(texture), param(matte, "Kd"));
    }
    key(Qt::Key_L, Qt::ControlModifier);
    const auto box
        = [this](DzShaderBrick* brick) { return m_view.getNetworkScene()->boxOf({ brick }); };
    EXPECT_LT(box(texture).right(), box(matte).left());
    EXPECT_LT(box(matte).right(), box(root).left());
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_EQ(BrickAppearance::position(texture), QPointF(20, 20));
}

// Keys alone.

TEST_F(Canvas, severalBricksAreSelectedWithKeysAlone)
{
    addThree();
    m_selection.set({ texture });
    key(Qt::Key_Space, Qt::ShiftModifier);
    key(Qt::Key_Right);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { texture, matte }));
    key(Qt::Key_Right);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { texture, root })) << "matte was not kept";
    key(Qt::Key_Space, Qt::ShiftModifier);
    key(Qt::Key_Left);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { texture, root, matte }));
    key(Qt::Key_Left);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { root, texture }));
    EXPECT_TRUE(m_view.accessibleDescription().contains(QLatin1String("kept selected")))
        << m_view.accessibleDescription().toStdString();
    key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_FALSE(m_view.accessibleDescription().contains(QLatin1String("kept selected")));
    key(Qt::Key_Right);
    EXPECT_EQ(selected(), (QVector<DzShaderBrick*> { root, matte })) << "texture is let go";
    key(Qt::Key_Escape);
    key(Qt::Key_Right);
    EXPECT_EQ(selected().size(), 1) << "Escape lets all go";
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST_F(Canvas, aClickLetsGoWhatKeysKept)
{
    addThree();
    m_selection.set({ texture });
    key(Qt::Key_Space, Qt::ShiftModifier);
    click(titleOf(matte));
    key(Qt::Key_Right);
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { root });
}

TEST_F(Canvas, keysChangeTheWidthOfAllSelectedBricks)
{
    addThree();
    m_selection.set({ matte, texture });
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(BrickAppearance::width(matte), 230);
    EXPECT_EQ(BrickAppearance::width(texture), 230);
    EXPECT_EQ(BrickAppearance::width(root), 210);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    key(Qt::Key_Left, Qt::AltModifier);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(BrickAppearance::width(matte), 190);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Change Width"));
    m_edit.changeWidth({ matte, texture }, -BrickAppearance::maximumWidth);
    const int steps = dzUndoStack->getNumUndoItems();
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), steps);
}

TEST_F(Canvas, keysChangeTheTitleOfAFrameAndRemoveIt)
{
    addThree();
    frameBricks(&m_edit, { matte, texture }, QStringLiteral("Old"));
    m_selection.set({ root });
    EXPECT_FALSE(command("frameTitle")->isEnabled());
    m_selection.set({ matte });
    key(Qt::Key_F2, Qt::ShiftModifier);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("Old"));
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_EQ(framesOf(m_edit).size(), 1);
    EXPECT_EQ(framesOf(m_edit).first().title, QString());
    m_view.setFocus();
    key(Qt::Key_G, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(framesOf(m_edit).isEmpty());
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Remove Frame"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 3);
    EXPECT_FALSE(command("removeFrame")->isEnabled());
    dzUndoStack->undo();
    ASSERT_EQ(framesOf(m_edit).size(), 1);
    EXPECT_EQ(framesOf(m_edit).first().bricks.size(), 2);
}

TEST_F(Canvas, aBrickIsPutIntoAWireWithKeysAlone)
{
    linkThree();
    m_selection.set({ matte });
    m_messages.clear();
    key(Qt::Key_I, Qt::ControlModifier);
    EXPECT_EQ(search(), nullptr);
    EXPECT_EQ(m_messages,
        QStringList(QStringLiteral("Go to a linked pin first: Up and Down walk the rows.")));
    const BrickItem* item = m_view.getNetworkScene()->getItem(matte);
    for (int row = 0; row <= item->rowOf(param(matte, "Kd")); ++row)
        key(Qt::Key_Down);
    key(Qt::Key_I, Qt::ControlModifier);
    ASSERT_NE(search(), nullptr);
    EXPECT_TRUE(foundInSearch().contains(texture->getPreferredName()));
    EXPECT_FALSE(foundInSearch().contains(matte->getPreferredName()));
    EXPECT_FALSE(foundInSearch().contains(QStringLiteral("Black Body")))
        << "what has no input cannot stand in a wire";
    typeInSearch(QStringLiteral("mix"));
    ASSERT_EQ(m_user.getNumBricks(), 4);
    DzShaderBrick* added = m_user.getBrick(4);
    EXPECT_TRUE(isLinked(added, matte, "Kd"));
    EXPECT_TRUE(isLinked(texture, added, "tex1"));
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { added });
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 1);
    dzUndoStack->undo();
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
}

TEST_F(Canvas, aBrickIsPutIntoAWireFromItsMenu)
{
    linkThree();
    const QPoint wire = middleOfWire(texture, matte, "Kd");
    drag(wire, wire, Qt::RightButton);
    ASSERT_NE(openMenu(), nullptr);
    QAction* insert = openMenu()->actions().at(1);
    EXPECT_EQ(insert->text(), QStringLiteral("&Insert Brick…"));
    openMenu()->close();
    insert->trigger();
    typeInSearch(QStringLiteral("mix"));
    ASSERT_EQ(m_user.getNumBricks(), 4);
    EXPECT_TRUE(isLinked(m_user.getBrick(4), matte, "Kd"));
}

TEST_F(Canvas, everyCommandSaysWhatItDoes)
{
    QSet<QString> tips;
    for (const QAction* action : m_commands.getGroups().first().actions) {
        const QString tip = action->statusTip();
        EXPECT_GT(tip.size(), action->text().size()) << action->text().toStdString();
        EXPECT_FALSE(tips.contains(tip)) << tip.toStdString();
        tips.insert(tip);
        EXPECT_TRUE(action->toolTip().startsWith(tip));
        EXPECT_TRUE(action->shortcut().isEmpty()
            || action->toolTip().contains(action->shortcut().toString(QKeySequence::NativeText)));
    }
}

TEST_F(Canvas, pinsAreLinkedWithKeysAlone)
{
    addThree();
    m_selection.set({ texture });
    key(Qt::Key_Down); // the output row
    key(Qt::Key_Return);
    EXPECT_EQ(fitOf(matte, "Kd"), Fits);
    key(Qt::Key_Right); // to the matte brick's title
    EXPECT_EQ(m_selection.getCurrent(), matte);
    const BrickItem* item = m_view.getNetworkScene()->getItem(matte);
    for (int row = 0; row <= item->rowOf(param(matte, "Kd")); ++row)
        key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_TRUE(isLinked(texture, matte, "Kd"));
    EXPECT_EQ(fitOf(matte, "Kd"), NoProbe);
    // The arrow follows the wire now, and back.
    key(Qt::Key_Left);
    EXPECT_EQ(m_selection.getCurrent(), texture);
    key(Qt::Key_Right);
    EXPECT_EQ(m_selection.getCurrent(), matte);
    key(Qt::Key_Backspace);
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
    EXPECT_EQ(dzUndoStack->getNumUndoItems(), 2);
    EXPECT_TRUE(m_view.accessibleDescription().contains(QLatin1String("Matte (2), Diffuse")))
        << m_view.accessibleDescription().toStdString();
}

TEST_F(Canvas, aRefusedLinkWithKeysSaysWhyAndEscapeStops)
{
    addThree();
    m_selection.set({ texture });
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    m_messages.clear();
    key(Qt::Key_Return);
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_EQ(m_messages.first(),
        QStringLiteral("Both are outputs: a wire leads from an output to an input."));
    key(Qt::Key_Escape);
    EXPECT_EQ(fitOf(matte, "Kd"), NoProbe);
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { matte });
}

TEST_F(Canvas, arrowsWithControlMoveTheSelection)
{
    addThree();
    m_selection.set({ matte });
    key(Qt::Key_Right, Qt::ControlModifier);
    key(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(BrickAppearance::position(matte), QPointF(-80, -120));
}

TEST_F(Canvas, arrowsFindABrickWhenNoneIsSelected)
{
    addThree();
    key(Qt::Key_Down);
    EXPECT_EQ(selected().size(), 1);
}

// Menus and hints.

TEST_F(Canvas, theMenuKeyOpensTheBricksMenu)
{
    addThree();
    m_selection.set({ matte });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint());
    QCoreApplication::sendEvent(m_view.viewport(), &event);
    QMenu* menu = openMenu();
    ASSERT_NE(menu, nullptr);
    QStringList names;
    for (const QAction* action : menu->actions())
        if (!action->objectName().isEmpty())
            names.append(action->objectName());
    EXPECT_EQ(names,
        QStringList({ QStringLiteral("VireoAddCustomExtInParamAction"),
            QStringLiteral("VireoRemoveCustomExtInParamAction"),
            QStringLiteral("VireoImporLbm2Action") }));
    menu->close();
}

TEST_F(Canvas, theRightButtonOpensTheMenuOfWhatIsThere)
{
    linkThree();
    drag(titleOf(root), titleOf(root), Qt::RightButton);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(selected(), QVector<DzShaderBrick*> { root });
    openMenu()->close();
    const QPoint wire = middleOfWire(texture, matte, "Kd");
    drag(wire, wire, Qt::RightButton);
    ASSERT_NE(openMenu(), nullptr);
    QAction* cut = openMenu()->actions().first();
    EXPECT_EQ(cut->text(), QStringLiteral("&Delete Wire"));
    cut->trigger();
    openMenu()->close();
    EXPECT_FALSE(isLinked(texture, matte, "Kd"));
}

TEST_F(Canvas, commandsThatCanDoNothingAreDisabled)
{
    addThree();
    const QAction* unframe = command("unframe");
    m_selection.set({ matte, root });
    EXPECT_FALSE(unframe->isEnabled());
    const int frame = frameBricks(&m_edit, { root }, QStringLiteral("Frame"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(unframe->isEnabled());
    removeFrame(&m_edit, frame);
    QCoreApplication::processEvents();
    EXPECT_FALSE(unframe->isEnabled());

    const QAction* paste = command("paste");
    QGuiApplication::clipboard()->clear();
    EXPECT_FALSE(paste->isEnabled());
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(paste->isEnabled());
    QGuiApplication::clipboard()->setText(QStringLiteral("Dear Sir or Madam"));
    EXPECT_FALSE(paste->isEnabled());
}

TEST_F(Canvas, toolTipsNameTypesAndValues)
{
    addThree();
    const auto tipAt = [this](const QPoint& place) {
        QHelpEvent event(QEvent::ToolTip, place, m_view.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(m_view.viewport(), &event);
        return QToolTip::text();
    };
    const auto help = [](const char* className, const char* input) {
        return Explanations::ofInput(QString::fromLatin1(className), QString::fromLatin1(input))
            .toHtmlEscaped();
    };
    EXPECT_EQ(tipAt(pinOf(matte, "sigma")),
        QStringLiteral("Sigma: LFloat<br>0<br>") + help("VireoMatMatteBrick", "sigma"));
    EXPECT_EQ(tipAt(pinOf(matte, "result")), QStringLiteral("Result: LuxMaterial"));
    VireoBrickBase* checks = add("VireoTexFltCheckerboardBrick", -400, 100);
    EXPECT_EQ(tipAt(pinOf(checks, "v1")),
        QStringLiteral("v1: vector<br>1, 0, 0<br>") + help("VireoTexFltCheckerboardBrick", "v1"));
    EXPECT_TRUE(
        tipAt(titleOf(matte))
            .contains(Explanations::ofBrick(QStringLiteral("VireoMatMatteBrick")).toHtmlEscaped()));
    m_view.getNetworkScene()->setBadge(matte, QStringLiteral("a <b> file is missing"));
    const BrickItem* item = m_view.getNetworkScene()->getItem(matte);
    EXPECT_EQ(tipAt(at(item->pos() + item->badgeBox().center())),
        QStringLiteral("a &lt;b&gt; file is missing"));
    m_view.getNetworkScene()->clearBadges();
    EXPECT_EQ(item->getBadge(), QString());
}

TEST_F(Canvas, doubleClickChangesTheTitleOrTheValueThatItHits)
{
    addThree();
    QVector<DzProperty*> activated;
    QObject::connect(&m_view, &NetworkView::valueActivated, &m_view,
        [&](DzProperty* property) { activated.append(property); });
    const QPoint besideThePin(60, 0);
    doubleClick(pinOf(matte, "sigma") + besideThePin);
    EXPECT_EQ(activated, QVector<DzProperty*> { property(matte, "sigma") });
    doubleClick(pinOf(matte, "result") - besideThePin);
    EXPECT_EQ(activated.size(), 1) << "an output has no value";
    EXPECT_EQ(m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor")), nullptr);
    doubleClick(titleOf(matte));
    EXPECT_EQ(activated.size(), 1);
    auto* editor = m_view.findChild<QLineEdit*>(QStringLiteral("titleEditor"));
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Chalk"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(matte->getBrickTitle(), QStringLiteral("Chalk"));
}

TEST_F(Canvas, returnOnATitleActivatesTheBrick)
{
    addThree();
    DzShaderBrick* activated = nullptr;
    QObject::connect(&m_view, &NetworkView::brickActivated, &m_view,
        [&](DzShaderBrick* brick) { activated = brick; });
    click(titleOf(matte));
    key(Qt::Key_Return);
    EXPECT_EQ(activated, matte);
}

// Following others.

TEST_F(Canvas, followsWhateverOthersDoToTheNetwork)
{
    addThree();
    NetworkScene* scene = m_view.getNetworkScene();
    VireoBrickBase* added = addBrick(m_user, "VireoTexClrBAndBrick");
    EXPECT_NE(scene->getItem(added), nullptr);
    EXPECT_TRUE(BrickAppearance::hasPosition(added));
    ASSERT_TRUE(link(added, matte, "Kd"));
    scene->flush();
    ASSERT_EQ(scene->getItem(matte)->getWires().size(), 1);
    const int rows = scene->getItem(added)->getRows().size();
    propertyAs<DzIntProperty>(added, "count")->setValue(2);
    scene->flush();
    EXPECT_EQ(scene->getItem(added)->getRows().size(), rows + 4);
    m_user.deleteBrick(added);
    scene->flush();
    EXPECT_EQ(scene->getItem(added), nullptr);
    EXPECT_TRUE(scene->getItem(matte)->getWires().isEmpty());
    dzUndoStack->undo();
    scene->flush();
    EXPECT_NE(scene->getItem(added), nullptr);
    EXPECT_EQ(scene->getItem(matte)->getWires().size(), 1);
}

TEST_F(Canvas, rebuildShowsWhatWasLoaded)
{
    addThree();
    DzBrickUserFile file;
    ASSERT_TRUE(file.load(projectPath(QStringLiteral("examples/layered-car-paint.sskn")), &m_user));
    m_view.rebuild();
    EXPECT_EQ(m_view.getNetworkScene()->getItems().size(), m_user.getNumBricks());
    int wires = 0;
    for (const BrickItem* item : m_view.getNetworkScene()->getItems())
        wires += item->getWires().size();
    EXPECT_EQ(wires, m_edit.getLinks().size());
    EXPECT_TRUE(m_view.getVisibleBox().contains(m_view.getNetworkScene()->boxOfAll()));
    m_view.grab();
}

TEST_F(Canvas, showsBricksOfUnknownClassAndFollowsTheirDeletion)
{
    const Warnings warnings;
    QByteArray text = projectFile(QStringLiteral("examples/plain-matte.sskn"));
    text.replace("VireoMatMatteBrick", "SomebodysMatteBrick");
    DzBrickUserFile file;
    ASSERT_TRUE(file.loadText(text, QStringLiteral("test"), &m_user));
    m_view.rebuild();
    const int count = m_user.getNumBricks();
    ASSERT_EQ(m_view.getNetworkScene()->getItems().size(), count);
    DzShaderBrick* unknown = nullptr;
    const QVector<DzShaderBrick*> bricks = m_edit.getBricks();
    for (DzShaderBrick* brick : bricks)
        if (brick->inherits("DzUnknownBrick"))
            unknown = brick;
    ASSERT_NE(unknown, nullptr);
    EXPECT_FALSE(m_view.getNetworkScene()->getItem(unknown)->getBadge().isEmpty());
    m_view.grab();
    m_edit.deleteBricks({ unknown });
    EXPECT_EQ(m_view.getNetworkScene()->getItems().size(), count - 1);
    dzUndoStack->undo();
    EXPECT_EQ(m_view.getNetworkScene()->getItems().size(), count);
    EXPECT_NE(m_view.getNetworkScene()->getItem(unknown), nullptr);
}

TEST_F(Canvas, valuesInRowsFollowTheirProperties)
{
    addThree();
    const QImage before = m_view.grab().toImage();
    {
        DzUndoStackLock lock;
        propertyAs<DzFloatProperty>(matte, "sigma")->setValue(12.5f);
    }
    EXPECT_NE(m_view.grab().toImage(), before);
}

TEST_F(Canvas, anImageIsNamedInTheRowInPlaceOfItsValue)
{
    addThree();
    auto* color = propertyAs<DzColorProperty>(matte, "Kd");
    const auto shown = [&] {
        for (const BrickAppearance::Row& row : BrickAppearance::rows(matte))
            if (row.param && row.param->getProperty(0) == color)
                return BrickAppearance::rowValue(row);
        return QString();
    };
    const QImage before = m_view.grab().toImage();
    color->setMap(QStringLiteral("textures/wood.png"));
    EXPECT_EQ(shown(), QStringLiteral("wood.png"));
    const QImage named = m_view.grab().toImage();
    EXPECT_NE(named, before);
    color->setMap(QStringLiteral("textures/stone.png"));
    EXPECT_NE(m_view.grab().toImage(), named);
    color->clearMap();
    EXPECT_EQ(m_view.grab().toImage(), before);
}

TEST_F(Canvas, valuesAreStillFollowedWhenRowsWereMadeAnew)
{
    addThree();
    VireoBrickBase* band = add("VireoTexClrBAndBrick", -400, 120);
    const auto follows = [&](DzShaderBrick* brick, const char* name) {
        // A picture is asked for before the next turn of the event loop.
        m_view.grab();
        QCoreApplication::processEvents();
        const QImage before = m_view.grab().toImage();
        DzUndoStackLock lock;
        auto* value = propertyAs<DzFloatProperty>(brick, name);
        value->setValue(value->getValue() + 1);
        return m_view.grab().toImage() != before;
    };
    EXPECT_TRUE(follows(matte, "sigma"));
    m_edit.setHidesParams({ matte }, true);
    m_view.grab();
    m_edit.setHidesParams({ matte }, false);
    EXPECT_TRUE(follows(matte, "sigma")) << "after its rows were hidden";
    m_edit.setWidth(matte, 230);
    EXPECT_TRUE(follows(matte, "sigma")) << "after a new width";
    m_edit.setTitle(matte, QStringLiteral("Wall paint"));
    EXPECT_TRUE(follows(matte, "sigma")) << "after a new title";
    EXPECT_TRUE(follows(band, "amount"));
    propertyAs<DzIntProperty>(band, "count")->setValue(3);
    EXPECT_TRUE(follows(band, "amount")) << "after new inputs";
}

TEST_F(Canvas, whatIsPaintedIsNeverHalfDone)
{
    linkThree();
    QCoreApplication::processEvents();
    m_view.grab();
    m_edit.setHidesParams({ matte }, true);
    m_edit.setHidesParams({ texture }, true);
    m_edit.deleteBricks({ root });
    const QImage atOnce = m_view.grab().toImage();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_view.grab().toImage(), atOnce);
}

TEST_F(Canvas, rowsThatAreMadeAnewAreFollowedOnce)
{
    struct Peek : DzBrickParam {
        using DzBrickParam::receivers;
    };
    addThree();
    const auto followers = [this] {
        m_view.grab();
        return (param(matte, "sigma")->*(&Peek::receivers))(SIGNAL(typeChanged()));
    };
    const int before = followers();
    for (const bool hides : { true, false, true, false }) {
        m_edit.setHidesParams({ matte }, hides);
        m_view.grab();
    }
    EXPECT_GT(before, 0);
    EXPECT_EQ(followers(), before);
    emit param(matte, "sigma")->typeChanged();
    EXPECT_EQ(followers(), before);
}

TEST_F(Canvas, colorsFollowThePalette)
{
    addThree();
    const QColor light = m_view.getNetworkScene()->getStyle().canvas;
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::WindowText, QColor(230, 230, 230));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    m_view.setPalette(dark);
    const QColor now = m_view.getNetworkScene()->getStyle().canvas;
    EXPECT_LT(now.lightness(), 60);
    EXPECT_GT(light.lightness(), 150);
    EXPECT_EQ(m_view.grab().toImage().pixelColor(10, 690).lightness() < 80, true);
}

TEST_F(Canvas, nothingMovesWhileIdle)
{
    linkThree();
    QTest::qWait(50);
    struct PaintCounter : QObject {
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint || event->type() == QEvent::Timer;
            return false;
        }
        int paints = 0;
    } counter;
    QCoreApplication::instance()->installEventFilter(&counter);
    QTest::qWait(300);
    QCoreApplication::instance()->removeEventFilter(&counter);
    EXPECT_EQ(counter.paints, 0);
}

TEST_F(Canvas, theSearchSaysWhatTheBrickIsForThatWouldBeTaken)
{
    key(Qt::Key_Space, Qt::ControlModifier);
    ASSERT_NE(search(), nullptr);
    auto* help = search()->findChild<QLabel*>(QStringLiteral("brickHelp"));
    ASSERT_NE(help, nullptr);
    QTest::keyClicks(search()->findChild<QLineEdit*>(), QStringLiteral("velvet"));
    EXPECT_EQ(help->text(), Explanations::ofBrick(QStringLiteral("VireoMatVelvetBrick")));
    EXPECT_TRUE(help->isVisible());
    QTest::keyClicks(search()->findChild<QLineEdit*>(), QStringLiteral("!!!"));
    EXPECT_EQ(help->text(), QString()) << "nothing fits";
}
