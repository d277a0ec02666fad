// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CommandSet.h"

#include <QMenu>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

/// A window with a registry.
class CommandSetTest : public testing::Test
{
protected:
    CommandSetTest()
        : m_commands(&m_window)
    {
    }

    Command counting(const char* id, const char* keys = "")
    {
        return { QString::fromLatin1(id), QStringLiteral("&Count"), keys, QStringLiteral("Counts"),
            [this] { return m_isAllowed; }, [this] { ++m_count; } };
    }

    QWidget m_window;
    CommandSet m_commands;
    bool m_isAllowed = true;
    int m_count = 0;
};

TEST_F(CommandSetTest, aRowIsAnActionWithTextKeysAndTip)
{
    const QAction* action = m_commands.add(counting("count", "Ctrl+Y; F5"));
    EXPECT_EQ(action->data().toString(), QStringLiteral("count"));
    EXPECT_EQ(action->text(), QStringLiteral("&Count"));
    EXPECT_EQ(action->shortcuts(),
        (QList<QKeySequence> { QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::Key_F5) }));
    EXPECT_EQ(action->statusTip(), QStringLiteral("Counts"));
    EXPECT_EQ(action->toolTip(), QStringLiteral("Counts (Ctrl+Y)"));
    EXPECT_TRUE(m_window.actions().contains(const_cast<QAction*>(action)));
    EXPECT_EQ(m_commands.find(QStringLiteral("count")), action);
}

TEST_F(CommandSetTest, standardKeysComeWithTheKnownOneOnce)
{
    const QAction* action = m_commands.add({ QStringLiteral("save"), QStringLiteral("Save"),
        { QKeySequence::Save, "Ctrl+S; F4" }, QStringLiteral("Saves"), nullptr, [] {} });
    EXPECT_EQ(action->shortcuts().count(QKeySequence(Qt::CTRL | Qt::Key_S)), 1);
    EXPECT_EQ(action->shortcuts().last(), QKeySequence(Qt::Key_F4));
}

TEST_F(CommandSetTest, whetherItCanRunIsAskedWhenItMatters)
{
    QAction* action = m_commands.add(counting("count"));
    EXPECT_TRUE(action->isEnabled());
    // Nobody has told: the run itself asks.
    m_isAllowed = false;
    action->trigger();
    EXPECT_EQ(m_count, 0);
    EXPECT_FALSE(action->isEnabled());
    m_isAllowed = true;
    m_commands.refresh(Command::Canvas);
    EXPECT_FALSE(action->isEnabled()) << "it is a command of the window";
    m_commands.refresh();
    EXPECT_TRUE(action->isEnabled());
    action->trigger();
    EXPECT_EQ(m_count, 1);
}

TEST_F(CommandSetTest, aSwitchShowsWhatIsAndNotWhatWasPressed)
{
    bool isOn = false;
    QAction* action = m_commands.add(Command { QStringLiteral("map"), QStringLiteral("Map"), {},
        QStringLiteral("Shows it"), [this] { return m_isAllowed; },
        [&] { isOn = !isOn; } }.asSwitch([&] { return isOn; }));
    EXPECT_TRUE(action->isCheckable());
    EXPECT_FALSE(action->isChecked());
    action->trigger();
    EXPECT_TRUE(isOn && action->isChecked());
    m_isAllowed = false;
    action->trigger();
    EXPECT_TRUE(isOn && action->isChecked());
}

TEST_F(CommandSetTest, ofAChoiceOneIsOn)
{
    int chosen = 0;
    QVector<QAction*> actions;
    for (const int i : { 0, 1 })
        actions.append(m_commands.add(Command { QString::number(i), QStringLiteral("Look"), {},
            QStringLiteral("A look"), nullptr, [&chosen, i] {
                chosen = i;
            } }.asChoice(QStringLiteral("look"), [&chosen, i] { return chosen == i; })));
    EXPECT_TRUE(actions.at(0)->isChecked());
    actions.at(1)->trigger();
    EXPECT_EQ(chosen, 1);
    EXPECT_TRUE(actions.at(1)->isChecked());
    EXPECT_FALSE(actions.at(0)->isChecked());
    actions.at(1)->trigger();
    EXPECT_TRUE(actions.at(1)->isChecked()) << "what is chosen stays so";
}

TEST_F(CommandSetTest, menusAreFilledInOrderAndWithoutUnknownNames)
{
    m_commands.add(counting("first"));
    m_commands.add(counting("second"));
    QMenu menu;
    m_commands.fill(&menu, "second | third first");
    const QList<QAction*> shown = menu.actions();
    ASSERT_EQ(shown.size(), 3);
    EXPECT_EQ(shown.at(0)->data().toString(), QStringLiteral("second"));
    EXPECT_TRUE(shown.at(1)->isSeparator());
    EXPECT_EQ(shown.at(2)->data().toString(), QStringLiteral("first"));
    EXPECT_EQ(m_commands.find(QStringLiteral("third")), nullptr);
}

TEST_F(CommandSetTest, aSecondRowOfAnIdIsRefused)
{
    const QAction* first = m_commands.add(counting("count"));
    EXPECT_EQ(m_commands.add(counting("count")), first);
    ASSERT_EQ(m_commands.getGroups().size(), 1);
    EXPECT_EQ(m_commands.getGroups().first().actions.size(), 1);
}

TEST_F(CommandSetTest, keysOfTheCanvasHoldOnTheCanvasAlone)
{
    Command command = counting("count", "M");
    command.scope = Command::Canvas;
    QAction* action = m_commands.add(command);
    EXPECT_FALSE(m_window.actions().contains(action));
    QWidget canvas;
    m_commands.installOn(&canvas);
    EXPECT_TRUE(canvas.actions().contains(action));
    EXPECT_EQ(action->shortcutContext(), Qt::WidgetShortcut);
}

} // namespace
