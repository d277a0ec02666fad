// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LinkTypes.h"
#include "TestSupport.h"
#include "dzbrickuserfile.h"
#include "dzforeachlink.h"
#include "dzsettings.h"
#include "dzundostack.h"

#include <QElapsedTimer>
#include <QSet>

#include <random>

namespace {

/// True when `goal` can be reached from `start` along links, by a search that knows no order.
bool feeds(const DzShaderBrick* start, const DzShaderBrick* goal)
{
    QVector<const DzShaderBrick*> open { start };
    QSet<const DzShaderBrick*> met { start };
    while (!open.isEmpty()) {
        const DzShaderBrick* brick = open.takeLast();
        if (brick == goal)
            return true;
        forEachOutputLink(brick, [&](DzBrickParam*, DzBrickParam* input) {
            const DzShaderBrick* next = input->getTopBrickOwner();
            if (met.contains(next))
                return;
            met.insert(next);
            open.append(next);
        });
    }
    return false;
}

} // namespace

TEST(FeedOrder, answersAreThoseOfASearchWhateverTheOrderOfLinking)
{
    for (quint32 seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const DzUndoStackLock lock;
        VireoBrickUser user;
        QVector<VireoBrickBase*> bricks;
        for (int i = 0; i < 12; ++i)
            bricks.append(addBrick(user, "VireoTexFltScaleBrick"));
        const auto any = [&] { return bricks.at(static_cast<int>(random() % 12)); };
        for (int i = 0; i < 150; ++i) {
            VireoBrickBase* from = any();
            VireoBrickBase* to = any();
            const char* input = random() % 2 ? "tex1" : "tex2";
            if (random() % 4 == 0) {
                param(to, input)->removeConnection(param(from, "result"));
                continue;
            }
            const bool isAllowed = !feeds(to, from);
            EXPECT_EQ(to->canBeFedBy(from), isAllowed);
            const bool isThere = param(to, input)->isConnectedTo(param(from, "result"));
            EXPECT_EQ(link(from, to, input), isAllowed && !isThere);
        }
    }
}

TEST(FeedOrder, placesNeverRunOut)
{
    const DzUndoStackLock lock;
    VireoBrickUser user;
    // Every brick goes between the two that were linked last, where room halves each time.
    VireoBrickBase* low = addBrick(user, "VireoTexFltScaleBrick");
    VireoBrickBase* high = addBrick(user, "VireoTexFltScaleBrick");
    ASSERT_TRUE(link(low, high, "tex1"));
    for (int i = 0; i < 3000; ++i) {
        VireoBrickBase* between = addBrick(user, "VireoTexFltScaleBrick");
        ASSERT_TRUE(link(between, high, "tex1"));
        ASSERT_TRUE(link(low, between, "tex1"));
        (i % 2 ? low : high) = between;
    }
    EXPECT_FALSE(low->canBeFedBy(high));
    EXPECT_TRUE(high->canBeFedBy(low));
}

TEST(FeedOrder, manyShuffledLinksLoadInLittleTime)
{
    const int numBricks = 400;
    DzSettings root;
    {
        const DzUndoStackLock lock;
        VireoBrickUser user;
        for (int i = 0; i < numBricks; ++i)
            addBrick(user, "VireoTexFltScaleBrick");
        root.clear();
        user.getAttributes(&root);
    }
    QVector<QPair<int, int>> links;
    for (int from = 1; from <= numBricks; ++from)
        for (int to = from + 1; to <= numBricks; ++to)
            links.append({ from, to });
    std::mt19937 random(1);
    for (int i = links.size() - 1; i > 0; --i)
        std::swap(links[i], links[static_cast<int>(random() % static_cast<quint32>(i + 1))]);
    DzSettings* connections = root.getSettingsValue(QStringLiteral("BrickSetup"))
                                  ->setSettingsValue(QStringLiteral("Connections"));
    for (int i = 0; i < links.size(); ++i) {
        DzSettings* link = connections->setSettingsValue(QStringLiteral("Connection_%1").arg(i));
        const QString brick = QStringLiteral("Brick_%1");
        link->setStringValue(QStringLiteral("SourceBrick"), brick.arg(links.at(i).second));
        link->setStringValue(QStringLiteral("TargetBrick"), brick.arg(links.at(i).first));
        link->setStringValue(QStringLiteral("SourceParam"), QStringLiteral("tex1"));
        link->setStringValue(QStringLiteral("TargetParam"), QStringLiteral("result"));
    }
    VireoBrickUser loaded;
    const Warnings warnings;
    QElapsedTimer timer;
    timer.start();
    loaded.setAttributes(&root);
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    EXPECT_EQ(warnings.messages, QStringList());
    int count = 0;
    for (int id = 1; id <= numBricks; ++id)
        forEachInputLink(
            loaded.getBrick(static_cast<uint>(id)), [&](DzBrickParam*, DzBrickParam*) { ++count; });
    EXPECT_EQ(count, links.size());
    // With the search of a whole side for each link it takes several seconds.
    EXPECT_LT(timer.elapsed(), 2500);
}
