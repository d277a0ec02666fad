// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "layeredlayout.h"

#include <QRectF>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

typedef QVector<LayeredLayout::Edge> Edges;

LayeredLayout::Edge edge(int from, int to, qreal toOffset = 10)
{
    return LayeredLayout::Edge { from, to, 10, toOffset };
}

QVector<QSizeF> boxes(int count, qreal height = 100)
{
    return QVector<QSizeF>(count, QSizeF(200, height));
}

void expectNoOverlap(const QVector<QSizeF>& sizes, const QVector<QPointF>& places)
{
    for (int i = 0; i < places.size(); ++i)
        for (int k = 0; k < i; ++k)
            EXPECT_FALSE(
                QRectF(places.at(i), sizes.at(i)).intersects(QRectF(places.at(k), sizes.at(k))))
                << i << " and " << k;
}

void expectLeftToRight(
    const QVector<QSizeF>& sizes, const Edges& edges, const QVector<QPointF>& places)
{
    for (const LayeredLayout::Edge& each : edges)
        EXPECT_LT(places.at(each.from).x() + sizes.at(each.from).width(), places.at(each.to).x())
            << each.from << " feeds " << each.to;
}

} // namespace

TEST(LayeredLayout, nothingAndOneBoxAreNoTrouble)
{
    EXPECT_TRUE(LayeredLayout().arrange({}, {}).isEmpty());
    EXPECT_EQ(LayeredLayout().arrange(boxes(1), {}), QVector<QPointF> { QPointF() });
}

TEST(LayeredLayout, aChainIsAStraightRow)
{
    const Edges edges { edge(0, 1), edge(1, 2), edge(2, 3) };
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(4), edges);
    EXPECT_EQ(places,
        (QVector<QPointF> { QPointF(0, 0), QPointF(290, 0), QPointF(580, 0), QPointF(870, 0) }));
}

TEST(LayeredLayout, whatFeedsUpperInputsStandsAbove)
{
    // Given in the wrong order on purpose.
    const Edges edges { edge(1, 0, 90), edge(2, 0, 30), edge(3, 0, 60) };
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(4), edges);
    EXPECT_LT(places.at(2).y(), places.at(3).y());
    EXPECT_LT(places.at(3).y(), places.at(1).y());
    expectNoOverlap(boxes(4), places);
}

TEST(LayeredLayout, twoTreesThatCrossAtFirstAreUncrossed)
{
    // 0 and 1 feed 4; 2 and 3 feed 5; 4 and 5 feed 6, the second one above.
    const Edges edges { edge(0, 4, 10), edge(1, 4, 50), edge(2, 5, 10), edge(3, 5, 50),
        edge(4, 6, 80), edge(5, 6, 20) };
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(7), edges);
    EXPECT_LT(places.at(5).y(), places.at(4).y());
    EXPECT_LT(qMax(places.at(2).y(), places.at(3).y()), qMin(places.at(0).y(), places.at(1).y()));
    expectNoOverlap(boxes(7), places);
    expectLeftToRight(boxes(7), edges, places);
}

TEST(LayeredLayout, aLongWirePassesBetweenTheBoxes)
{
    // The first box feeds two others and, past them, the last one between their wires.
    const Edges edges { edge(0, 1), edge(0, 2), edge(1, 3, 10), edge(0, 3, 50), edge(2, 3, 90) };
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(4), edges);
    expectLeftToRight(boxes(4), edges, places);
    // More room than between neighbours that nothing passes.
    EXPECT_GE(places.at(2).y() - (places.at(1).y() + 100), 40);
}

TEST(LayeredLayout, anEndThatNobodyUsesStandsBesideWhatFeedsIt)
{
    // A chain, and a spare box fed by its second one and by one that nothing feeds.
    const Edges edges { edge(0, 1), edge(1, 2), edge(2, 3), edge(3, 4), edge(1, 5), edge(6, 5) };
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(7), edges);
    EXPECT_EQ(places.at(5).x(), places.at(2).x());
    EXPECT_EQ(places.at(6).x(), places.at(1).x());
    expectNoOverlap(boxes(7), places);
    expectLeftToRight(boxes(7), edges, places);
}

TEST(LayeredLayout, groupsAndLooseBoxesStandOneBelowTheOther)
{
    const Edges edges { edge(0, 1), edge(2, 3) };
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(6), edges);
    expectNoOverlap(boxes(6), places);
    EXPECT_GT(places.at(2).y(), places.at(0).y() + 100);
    EXPECT_GT(places.at(4).y(), places.at(2).y() + 100);
    EXPECT_EQ(places.at(4).y(), places.at(5).y());
}

TEST(LayeredLayout, loopsAndDoubledEdgesAreNoError)
{
    const Edges edges { edge(0, 1), edge(1, 2), edge(2, 0), edge(0, 1), edge(1, 1) };
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(3), edges);
    expectNoOverlap(boxes(3), places);
}

TEST(LayeredLayout, randomNetworksNeverOverlapAndLeadToTheRight)
{
    for (quint32 seed = 1; seed <= 30; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](int limit) { return int(random() % quint32(limit)); };
        const int count = 2 + below(60);
        QVector<QSizeF> sizes;
        for (int i = 0; i < count; ++i)
            sizes.append(QSizeF(120 + below(200), 40 + below(400)));
        Edges edges;
        for (int i = below(3 * count); i > 0; --i) {
            const int a = below(count);
            const int b = below(count);
            if (a != b)
                edges.append(edge(qMax(a, b), qMin(a, b), below(40)));
        }
        const QVector<QPointF> places = LayeredLayout().arrange(sizes, edges);
        expectNoOverlap(sizes, places);
        expectLeftToRight(sizes, edges, places);
        EXPECT_EQ(LayeredLayout().arrange(sizes, edges), places) << "the same every time";
    }
}

TEST(LayeredLayout, longChainsWithLongWiresAreArranged)
{
    // Every box of a chain feeds the last one too: the wires pass millions of places.
    const int count = 8000;
    Edges edges;
    for (int i = 0; i + 1 < count; ++i) {
        edges.append(edge(i, i + 1));
        edges.append(edge(i, count - 1, 20));
    }
    const QVector<QPointF> places = LayeredLayout().arrange(boxes(count), edges);
    ASSERT_EQ(places.size(), count);
    for (int i = 0; i + 1 < count; ++i)
        ASSERT_LT(places.at(i).x(), places.at(i + 1).x()) << i;
}
