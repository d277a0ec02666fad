// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"
#include "dzbrickuserfile.h"
#include "dzwarning.h"

#include <thread>

TEST(Warnings, sayPlaceThenTextThenRemedy)
{
    const auto line = [](const char* place, const char* text, const char* remedy) {
        return DzWarning { QString::fromUtf8(place), QString::fromUtf8(text),
            QString::fromUtf8(remedy) }
            .toLine();
    };
    EXPECT_EQ(line("line 1", "it is odd", "it is left out"),
        QStringLiteral("line 1: it is odd; it is left out"));
    EXPECT_EQ(line("", "it is odd", ""), QStringLiteral("it is odd"));
}

TEST(Warnings, aListWithALimitCountsTheRest)
{
    DzWarningList list(2);
    for (int i = 0; i < 5; ++i)
        list.add({ QString::number(i), QStringLiteral("odd"), QString() });
    EXPECT_EQ(list.toLines(),
        QStringList(
            { QStringLiteral("0: odd"), QStringLiteral("1: odd"), QStringLiteral("and 3 more") }));
    EXPECT_FALSE(list.hasRoom());
    DzWarningList all;
    all.add(list);
    EXPECT_EQ(all.getAll().size(), 2);
    EXPECT_EQ(all.getNumOmitted(), 3);
    all.clear();
    EXPECT_TRUE(all.isEmpty());
    EXPECT_EQ(all.toLines(), QStringList());
}

TEST(Warnings, goToTheInnermostScopeAndElseToTheApplication)
{
    const Warnings told;
    DzWarningList outer;
    DzWarningList inner;
    {
        const DzWarningScope outerScope(&outer);
        {
            const DzWarningScope innerScope(&inner);
            dzApp->warning(QStringLiteral("a"));
        }
        dzWarn({ QStringLiteral("here"), QStringLiteral("b"), QString() });
        // What another thread does is none of this reader's business.
        std::thread([] { dzApp->warning(QStringLiteral("c")); }).join();
        dzApp->log(QStringLiteral("no warning"));
    }
    dzApp->warning(QStringLiteral("d"));
    EXPECT_EQ(inner.toLines(), QStringList({ QStringLiteral("a") }));
    EXPECT_EQ(outer.toLines(), QStringList({ QStringLiteral("here: b") }));
    EXPECT_EQ(told.messages, QStringList({ QStringLiteral("c"), QStringLiteral("d") }));
}

TEST(Warnings, aNetworkFileGathersPlaceTextAndRemedy)
{
    const Warnings told;
    const DzTSharedPointer<VireoBrickUser> user(new VireoBrickUser);
    DzBrickUserFile file;
    ASSERT_TRUE(file.loadText(
        "{\"format\":\"sskn\",\"version\":1,\"BrickSetup\":{\"type\":\"settings\",\"value\":"
        "{\"Bricks\":{\"type\":\"settings\",\"value\":{\"Brick_7\":3}}}}}",
        QStringLiteral("net.sskn"), user));
    ASSERT_EQ(file.getWarningList().getAll().size(), 1);
    const DzWarning& warning = file.getWarningList().getAll().first();
    EXPECT_EQ(warning.place, QStringLiteral("Brick_7"));
    EXPECT_EQ(warning.text, QStringLiteral("this is not a brick"));
    EXPECT_EQ(warning.remedy, QStringLiteral("it is kept as it is"));
    EXPECT_EQ(told.messages, QStringList());
}
