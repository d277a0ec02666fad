// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dznetworklayout.h"
#include "dzsettings.h"

#include <QRectF>
#include <QSet>

namespace {

using namespace DzNetworkLayout;

QRectF boxOf(const DzShaderBrick* brick)
{
    return QRectF(position(brick), size(brick));
}

void place(DzShaderBrick* brick, qreal x, qreal y)
{
    setPosition(brick, QPointF(x, y));
}

TEST(NetworkLayout, bricksThatNobodyPlacedStandBelowTheOthersInTheOrderOfTheirLinks)
{
    VireoBrickUser user;
    DzShaderBrick* kept = addBrick(user, "VireoTexClrMixBrick");
    DzShaderBrick* root = addBrick(user, "VireoRootBrick");
    DzShaderBrick* matte = addBrick(user, "VireoMatMatteBrick");
    DzShaderBrick* texture = addBrick(user, "VireoTexClrConstantBrick");
    place(kept, -700, -40);
    ASSERT_TRUE(link(matte, root, "material"));
    ASSERT_TRUE(link(texture, matte, "Kd"));
    EXPECT_FALSE(hasPosition(root));

    EXPECT_EQ(arrangeUnplaced(&user), QVector<DzShaderBrick*>({ root, matte, texture }));

    EXPECT_EQ(position(kept), QPointF(-700, -40));
    EXPECT_LT(boxOf(texture).right(), boxOf(matte).left());
    EXPECT_LT(boxOf(matte).right(), boxOf(root).left());
    for (const DzShaderBrick* brick : { root, matte, texture }) {
        EXPECT_TRUE(hasPosition(brick));
        EXPECT_GT(boxOf(brick).top(), boxOf(kept).bottom());
        EXPECT_EQ(position(brick), QPointF(position(brick).toPoint()));
    }
    EXPECT_TRUE(arrangeUnplaced(&user).isEmpty()) << "once is enough";
}

TEST(NetworkLayout, aBrickThatAsksForItLosesItsPlaceAndAsksNoMore)
{
    VireoBrickUser user;
    DzShaderBrick* matte = addBrick(user, "VireoMatMatteBrick");
    place(matte, 500, 500);
    matte->getBrickSettings()->setBoolValue(QStringLiteral("AutoArrange"), true);
    EXPECT_EQ(arrangeUnplaced(&user), QVector<DzShaderBrick*>({ matte }));
    EXPECT_EQ(position(matte), QPointF(0, 0));
    EXPECT_FALSE(matte->getBrickSettings()->hasKey(QStringLiteral("AutoArrange")));
}

TEST(NetworkLayout, anEmptyNetworkAndAForeignSourceAreNoError)
{
    VireoBrickUser user;
    EXPECT_TRUE(arrangeUnplaced(&user).isEmpty());
    EXPECT_TRUE(arranged({}).isEmpty());
    DzShaderBrick* root = addBrick(user, "VireoRootBrick");
    DzShaderBrick* matte = addBrick(user, "VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    const QVector<Place> places = arranged({ root });
    ASSERT_EQ(places.size(), 1);
    EXPECT_EQ(places.first().brick, root);
    EXPECT_EQ(places.first().position, QPointF(0, 0));
    EXPECT_FALSE(hasPosition(root)) << "nothing is stored";
}

TEST(NetworkLayout, aBrickThatHidesItsRowsShowsTheLinkedOnes)
{
    VireoBrickUser user;
    DzShaderBrick* matte = addBrick(user, "VireoMatMatteBrick");
    DzShaderBrick* texture = addBrick(user, "VireoTexClrConstantBrick");
    const qreal wholeHeight = size(matte).height();
    ASSERT_TRUE(link(texture, matte, "Kd"));
    matte->getBrickSettings()->setBoolValue(QStringLiteral("HideParams"), true);
    const QVector<Row> shown = rows(matte);
    ASSERT_EQ(shown.size(), 2) << "the output is there to be linked";
    EXPECT_EQ(shown.first().param, param(matte, "result"));
    EXPECT_EQ(shown.first().kind, Row::Output);
    EXPECT_EQ(shown.last().param, param(matte, "Kd"));
    EXPECT_EQ(shown.last().kind, Row::Input);
    EXPECT_LT(size(matte).height(), wholeHeight);
    EXPECT_EQ(pinOffset(matte, param(matte, "result")), QPointF(width(matte), rowCentre(0)));
    EXPECT_EQ(pinOffset(matte, param(matte, "Kd")), QPointF(0, rowCentre(1)));
    EXPECT_EQ(pinOffset(matte, param(matte, "sigma")), QPointF(0, rowCentre(-1)));
}

} // namespace
