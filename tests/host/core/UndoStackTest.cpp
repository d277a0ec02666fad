// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"
#include "dzundostack.h"

#include <QObject>
#include <QStringList>
#include <QUndoStack>
#include <functional>
#include <gtest/gtest.h>

namespace {

/// Writes down what happens to it.
class LoggedItem : public DzUndoItem
{
public:
    LoggedItem(QStringList* log, const QString& name)
        : m_log(log)
        , m_name(name)
    {
    }
    ~LoggedItem() override { m_log->append("delete " + m_name); }

    void undo() override { m_log->append("undo " + m_name); }
    void redo() override { m_log->append("redo " + m_name); }

private:
    QStringList* m_log;
    QString m_name;
};

/// Sets a number; takes over later changes of the same number.
class NumberItem : public DzUndoItem
{
public:
    NumberItem(int* number, int value)
        : m_number(number)
        , m_before(*number)
        , m_after(value)
    {
        *number = value;
    }

    void undo() override { *m_number = m_before; }
    void redo() override { *m_number = m_after; }
    bool mergeWith(DzUndoItem* later) override
    {
        auto* same = dynamic_cast<NumberItem*>(later);
        if (!same || same->m_number != m_number)
            return false;
        m_after = same->m_after;
        ++merged;
        return true;
    }

    static int merged;

private:
    int* m_number;
    int m_before;
    int m_after;
};

int NumberItem::merged = 0;

/// Does something when it is undone, redone or deleted.
class ActingItem : public DzUndoItem
{
public:
    std::function<void()> atUndo = [] {};
    std::function<void()> atDelete = [] {};

    ~ActingItem() override { atDelete(); }
    void undo() override { atUndo(); }
    void redo() override {}
};

class UndoStack : public testing::Test
{
protected:
    void pushLogged(const QString& name) { stack.push(new LoggedItem(&log, name), name); }
    QStringList takeLog()
    {
        const QStringList taken = log;
        log.clear();
        return taken;
    }

    QStringList log;
    DzUndoStack stack;
};

} // namespace

TEST_F(UndoStack, aPushedItemIsOneStepAndIsNotRunByPushing)
{
    pushLogged("a");
    EXPECT_EQ(takeLog(), QStringList());
    EXPECT_TRUE(stack.canUndo());
    EXPECT_FALSE(stack.canRedo());
    EXPECT_TRUE(stack.undo());
    EXPECT_TRUE(stack.redo());
    EXPECT_TRUE(stack.undo());
    EXPECT_EQ(takeLog(), QStringList({ "undo a", "redo a", "undo a" }));
}

TEST_F(UndoStack, undoAndRedoWithNothingThereGiveFalse)
{
    EXPECT_FALSE(stack.undo());
    EXPECT_FALSE(stack.redo());
    pushLogged("a");
    EXPECT_FALSE(stack.redo());
    EXPECT_TRUE(stack.undo());
    EXPECT_FALSE(stack.undo());
}

TEST_F(UndoStack, captionsAndNumbersFollowTheSteps)
{
    pushLogged("a");
    pushLogged("b");
    stack.undo();
    EXPECT_EQ(stack.getUndoCaption(), QString("a"));
    EXPECT_EQ(stack.getRedoCaption(), QString("b"));
    EXPECT_EQ(stack.getNumUndoItems(), 1);
    EXPECT_EQ(stack.getNumRedoItems(), 1);
    EXPECT_EQ(stack.getNumItems(), 2);
    EXPECT_TRUE(stack.hasItems());
}

TEST_F(UndoStack, aNewStepDeletesTheUndoneOnes)
{
    pushLogged("a");
    pushLogged("b");
    stack.undo();
    takeLog();
    pushLogged("c");
    EXPECT_EQ(takeLog(), QStringList("delete b"));
    EXPECT_FALSE(stack.canRedo());
    EXPECT_EQ(stack.getNumItems(), 2);
}

TEST_F(UndoStack, aHoldGathersOneStepThatIsUndoneInReverse)
{
    stack.beginHold();
    pushLogged("a");
    pushLogged("b");
    EXPECT_EQ(stack.getNumItems(), 0);
    stack.accept("both");
    EXPECT_EQ(stack.getNumItems(), 1);
    EXPECT_EQ(stack.getUndoCaption(), QString("both"));
    stack.undo();
    stack.redo();
    EXPECT_EQ(takeLog(), QStringList({ "undo b", "undo a", "redo a", "redo b" }));
}

TEST_F(UndoStack, anEmptyHoldLeavesNoStep)
{
    stack.beginHold();
    stack.accept("nothing");
    EXPECT_FALSE(stack.hasItems());
    EXPECT_EQ(stack.getHoldDepth(), 0);
}

TEST_F(UndoStack, anAcceptedInnerHoldIsPartOfTheOuterOne)
{
    stack.beginHold();
    pushLogged("a");
    stack.beginHold();
    EXPECT_EQ(stack.getHoldDepth(), 2);
    pushLogged("b");
    stack.accept("inner");
    EXPECT_FALSE(stack.hasItems());
    stack.accept("outer");
    EXPECT_EQ(stack.getUndoCaption(), QString("outer"));
    stack.undo();
    EXPECT_EQ(takeLog(), QStringList({ "undo b", "undo a" }));
}

TEST_F(UndoStack, cancellingTakesBackOnlyTheInnermostHold)
{
    stack.beginHold();
    pushLogged("a");
    stack.beginHold();
    pushLogged("b");
    pushLogged("c");
    stack.cancel();
    EXPECT_EQ(takeLog().mid(0, 2), QStringList({ "undo c", "undo b" }));
    stack.accept("outer");
    stack.undo();
    EXPECT_EQ(takeLog(), QStringList("undo a"));
}

TEST_F(UndoStack, nothingIsPushedWhileAHoldIsCancelled)
{
    auto* item = new ActingItem;
    item->atUndo = [this] {
        EXPECT_TRUE(stack.isInUndoRedo());
        EXPECT_FALSE(stack.canPushItems());
        pushLogged("late");
    };
    stack.beginHold();
    stack.push(item, "x");
    stack.cancel();
    EXPECT_EQ(takeLog(), QStringList("delete late"));
    EXPECT_FALSE(stack.isInUndoRedo());
    EXPECT_TRUE(stack.canPushItems());
}

TEST_F(UndoStack, droppingForgetsTheItemsAndRunsNone)
{
    stack.beginHold();
    pushLogged("a");
    stack.drop();
    EXPECT_EQ(takeLog(), QStringList("delete a"));
    EXPECT_FALSE(stack.hasItems());
}

TEST_F(UndoStack, undoAndRedoAreRefusedWhileAHoldIsOpen)
{
    pushLogged("a");
    pushLogged("b");
    stack.undo();
    takeLog();
    stack.beginHold();
    EXPECT_FALSE(stack.canUndo());
    EXPECT_FALSE(stack.canRedo());
    EXPECT_FALSE(stack.undo());
    EXPECT_FALSE(stack.redo());
    stack.cancel();
    EXPECT_EQ(takeLog(), QStringList());
    EXPECT_TRUE(stack.undo());
}

TEST_F(UndoStack, closingAHoldThatIsNotOpenIsOnlyAWarning)
{
    stack.accept("x");
    stack.cancel();
    stack.drop();
    EXPECT_EQ(stack.getHoldDepth(), 0);
}

TEST_F(UndoStack, changesOfOneThingMergeInsideAHold)
{
    int number = 0;
    int other = 0;
    NumberItem::merged = 0;
    stack.beginHold();
    for (int value = 1; value <= 100; ++value)
        stack.push(new NumberItem(&number, value), "drag");
    stack.push(new NumberItem(&other, 1), "drag");
    stack.accept("drag");
    EXPECT_EQ(NumberItem::merged, 99);
    stack.undo();
    EXPECT_EQ(number, 0);
    EXPECT_EQ(other, 0);
    stack.redo();
    EXPECT_EQ(number, 100);
    EXPECT_EQ(other, 1);
}

TEST_F(UndoStack, changesMergeAcrossInnerHoldsOfOneOuter)
{
    int number = 0;
    NumberItem::merged = 0;
    stack.beginHold();
    for (int value = 1; value <= 3; ++value) {
        stack.beginHold();
        stack.push(new NumberItem(&number, value), "step");
        stack.accept("step");
    }
    stack.accept("drag");
    EXPECT_EQ(NumberItem::merged, 2);
    stack.undo();
    EXPECT_EQ(number, 0);
}

TEST_F(UndoStack, changesDoNotMergeOutsideAHold)
{
    int number = 0;
    stack.push(new NumberItem(&number, 1), "one");
    stack.push(new NumberItem(&number, 2), "two");
    EXPECT_EQ(stack.getNumItems(), 2);
    stack.undo();
    EXPECT_EQ(number, 1);
}

TEST_F(UndoStack, aLockedStackDeletesWhatIsPushed)
{
    stack.lock();
    stack.lock();
    stack.unlock();
    EXPECT_TRUE(stack.isLocked());
    EXPECT_FALSE(stack.canPushItems());
    pushLogged("a");
    EXPECT_EQ(takeLog(), QStringList("delete a"));
    stack.unlock();
    pushLogged("b");
    EXPECT_EQ(stack.getNumItems(), 1);
}

TEST_F(UndoStack, unlockingAnUnlockedStackLeavesItUnlocked)
{
    stack.unlock();
    EXPECT_FALSE(stack.isLocked());
    stack.lock();
    EXPECT_TRUE(stack.isLocked());
    stack.unlock();
    EXPECT_FALSE(stack.isLocked());
}

TEST_F(UndoStack, pushingNothingIsIgnored)
{
    stack.push(nullptr, "none");
    EXPECT_FALSE(stack.hasItems());
}

TEST_F(UndoStack, nothingIsPushedWhileUndoing)
{
    auto* item = new ActingItem;
    item->atUndo = [this] {
        EXPECT_TRUE(stack.isInUndoRedo());
        pushLogged("late");
        EXPECT_FALSE(stack.undo());
    };
    stack.push(item, "x");
    EXPECT_TRUE(stack.undo());
    EXPECT_EQ(takeLog(), QStringList("delete late"));
    EXPECT_EQ(stack.getNumItems(), 1);
}

TEST_F(UndoStack, nothingIsPushedWhenAViewRunsTheStepsItself)
{
    auto* item = new ActingItem;
    item->atUndo = [this] { pushLogged("late"); };
    stack.push(item, "x");
    pushLogged("b");
    stack.getQtStack()->setIndex(0);
    EXPECT_EQ(takeLog(), QStringList({ "undo b", "delete late" }));
    EXPECT_EQ(stack.getNumRedoItems(), 2);
}

TEST_F(UndoStack, nothingIsPushedByItemsThatAreDeleted)
{
    const auto makeItem = [this] {
        auto* item = new ActingItem;
        item->atDelete = [this] { pushLogged("late"); };
        return item;
    };
    stack.push(makeItem(), "x");
    stack.undo();
    pushLogged("a");
    EXPECT_EQ(takeLog(), QStringList("delete late"));
    stack.beginHold();
    stack.push(makeItem(), "x");
    stack.drop();
    EXPECT_EQ(takeLog(), QStringList("delete late"));
    stack.push(makeItem(), "x");
    stack.clearAll();
    EXPECT_FALSE(stack.hasItems());
}

TEST_F(UndoStack, clearingForgetsStepsAndGatheredItemsButKeepsHoldsBalanced)
{
    pushLogged("a");
    stack.beginHold();
    pushLogged("b");
    stack.clearAll();
    EXPECT_EQ(stack.getHoldDepth(), 1);
    stack.accept("empty");
    EXPECT_FALSE(stack.hasItems());
    QStringList deleted = takeLog();
    deleted.sort();
    EXPECT_EQ(deleted, QStringList({ "delete a", "delete b" }));
}

TEST_F(UndoStack, signalsTellAvailabilityAndCaptions)
{
    QStringList told;
    const auto onOff = [](bool available) { return available ? "yes" : "no"; };
    QObject::connect(&stack, &DzUndoStack::undoAvailable,
        [&](bool available) { told.append(QString("undo ") + onOff(available)); });
    QObject::connect(&stack, &DzUndoStack::redoAvailable,
        [&](bool available) { told.append(QString("redo ") + onOff(available)); });
    QObject::connect(&stack, &DzUndoStack::undoCaptionChanged,
        [&](const QString& caption) { told.append("undo caption " + caption); });
    QObject::connect(&stack, &DzUndoStack::redoCaptionChanged,
        [&](const QString& caption) { told.append("redo caption " + caption); });
    pushLogged("a");
    EXPECT_TRUE(told.contains("undo yes"));
    EXPECT_TRUE(told.contains("undo caption a"));
    told.clear();
    stack.undo();
    EXPECT_TRUE(told.contains("undo no"));
    EXPECT_TRUE(told.contains("redo yes"));
    EXPECT_TRUE(told.contains("redo caption a"));
}

TEST_F(UndoStack, aStackIsDeletedWithItemsAndAnOpenHold)
{
    {
        DzUndoStack other;
        other.push(new LoggedItem(&log, "a"), "a");
        other.beginHold();
        other.push(new LoggedItem(&log, "b"), "b");
    }
    QStringList deleted = takeLog();
    deleted.sort();
    EXPECT_EQ(deleted, QStringList({ "delete a", "delete b" }));
}

TEST(UndoStackScopes, aLockLastsAsLongAsItsScope)
{
    {
        const DzUndoStackLock outer;
        const DzUndoStackLock inner;
        EXPECT_FALSE(dzUndoStack->canPushItems());
    }
    EXPECT_TRUE(dzUndoStack->canPushItems());
}

TEST(UndoStackScopes, aHoldThatIsNotAcceptedIsTakenBack)
{
    int number = 0;
    {
        const DzUndoStackHold hold;
        dzUndoStack->push(new NumberItem(&number, 1), "x");
    }
    EXPECT_EQ(number, 0);
    EXPECT_EQ(dzUndoStack->getHoldDepth(), 0);
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST(UndoStackScopes, anAcceptedHoldIsOneStepAndADroppedOneNone)
{
    int number = 0;
    {
        DzUndoStackHold hold;
        dzUndoStack->push(new NumberItem(&number, 1), "x");
        hold.accept("one");
    }
    {
        DzUndoStackHold hold;
        dzUndoStack->push(new NumberItem(&number, 2), "x");
        hold.drop();
    }
    EXPECT_EQ(number, 2);
    EXPECT_EQ(dzUndoStack->getNumItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QString("one"));
    EXPECT_EQ(dzUndoStack->getHoldDepth(), 0);
}
