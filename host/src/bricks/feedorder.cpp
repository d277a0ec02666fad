// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "feedorder.h"

#include "brickaccess.h"
#include "dzforeachlink.h"

#include <QVector>
#include <algorithm>

namespace {

FeedPlace* lastPlace = nullptr;

/// Room that is left behind a brick that comes last.
const quint64 usualRoom = quint64(1) << 32;
const quint64 middle = quint64(1) << 63;
/// How much denser the numbers may stand in a range of half the size. Between one and two: the
/// nearer to one, the fewer are spread at a time, and the more often.
const double densityFactor = 1.4;

enum Way { Upstream, Downstream };

/// One half of a loop search: the bricks that feed a brick, or those that it feeds, as far as they
/// stand between the two ends of the link in question.
class Reach
{
public:
    Reach(FeedPlace* start, FeedPlace* goal, Way way, quint64 search)
        : m_goal(goal)
        , m_way(way)
        , m_search(search)
    {
        meet(start);
    }

    bool isDone() const { return m_next == m_met.size(); }
    /// What was looked at so far.
    int work() const { return m_work; }
    QVector<FeedPlace*>& met() { return m_met; }

    /// Goes one brick further; false when it met the other half, which closes a loop.
    bool step()
    {
        const DzShaderBrick* brick = m_met.at(m_next++)->brick();
        m_work += 1 + brick->getNumParameters();
        bool isFree = true;
        forEachLink(brick, m_way == Downstream, [&](DzBrickParam*, DzBrickParam* peer) {
            ++m_work;
            FeedPlace* place = DzShaderBrick::Access::place(peer->getTopBrickOwner());
            const bool isBetween
                = m_way == Upstream ? !place->isBefore(*m_goal) : !m_goal->isBefore(*place);
            if (!isBetween || place->visits[m_way] == m_search)
                return;
            isFree = isFree && place != m_goal && place->visits[1 - m_way] != m_search;
            meet(place);
        });
        return isFree;
    }

private:
    void meet(FeedPlace* place)
    {
        place->visits[m_way] = m_search;
        m_met.append(place);
    }

    FeedPlace* m_goal;
    Way m_way;
    quint64 m_search;
    QVector<FeedPlace*> m_met;
    int m_next = 0;
    int m_work = 0;
};

void sortByPlace(QVector<FeedPlace*>* places)
{
    std::sort(places->begin(), places->end(),
        [](const FeedPlace* a, const FeedPlace* b) { return a->isBefore(*b); });
}

} // namespace

FeedPlace::FeedPlace(const DzShaderBrick* brick)
    : m_brick(brick)
{
    putBetween(lastPlace, nullptr);
}

FeedPlace::~FeedPlace()
{
    takeOut();
}

void FeedPlace::takeOut()
{
    if (m_previous)
        m_previous->m_next = m_next;
    if (m_next)
        m_next->m_previous = m_previous;
    else
        lastPlace = m_previous;
}

void FeedPlace::moveBefore(FeedPlace* other)
{
    takeOut();
    putBetween(other->m_previous, other);
}

void FeedPlace::moveBehind(FeedPlace* other)
{
    takeOut();
    putBetween(other, other->m_next);
}

void FeedPlace::putBetween(FeedPlace* previous, FeedPlace* next)
{
    m_previous = previous;
    m_next = next;
    if (previous)
        previous->m_next = this;
    if (next)
        next->m_previous = this;
    else
        lastPlace = this;
    // The ends of the range of numbers are as good as neighbours.
    const quint64 low = previous ? previous->m_number : 0;
    const quint64 high = next ? next->m_number : ~quint64(0);
    if (!previous && !next)
        m_number = middle;
    else if (high - low < 2)
        spreadNeighbours();
    else if (!next)
        m_number = low + qMin(usualRoom, (high - low) / 2);
    else if (!previous)
        m_number = high - qMin(usualRoom, (high - low) / 2);
    else
        m_number = low + (high - low) / 2;
}

/// Finds the smallest range around the place that is not too dense, and spreads what stands in it.
void FeedPlace::spreadNeighbours()
{
    const quint64 here = m_previous ? m_previous->m_number : m_next->m_number;
    m_number = here;
    FeedPlace* first = this;
    FeedPlace* last = this;
    quint64 count = 1;
    double allowed = 1;
    for (int bits = 1; bits < 64; ++bits) {
        allowed *= 2 / densityFactor;
        const quint64 size = quint64(1) << bits;
        const quint64 base = here & ~(size - 1);
        for (; first->m_previous && first->m_previous->m_number >= base; ++count)
            first = first->m_previous;
        for (; last->m_next && last->m_next->m_number - base < size; ++count)
            last = last->m_next;
        const quint64 room = size / (count + 1);
        if (static_cast<double>(count) > allowed || room < 2)
            continue;
        quint64 number = base;
        for (FeedPlace* place = first;; place = place->m_next) {
            number += room;
            place->m_number = number;
            if (place == last)
                return;
        }
    }
}

bool letFeed(const DzShaderBrick* source, const DzShaderBrick* fed)
{
    if (!source || !fed || source == fed)
        return false;
    FeedPlace* sourcePlace = DzShaderBrick::Access::place(source);
    FeedPlace* fedPlace = DzShaderBrick::Access::place(fed);
    if (sourcePlace->isBefore(*fedPlace))
        return true;
    static quint64 searches = 0;
    const quint64 search = ++searches;
    Reach above(sourcePlace, fedPlace, Upstream, search);
    Reach below(fedPlace, sourcePlace, Downstream, search);
    // Both ends search towards each other, the one that has done less in turn: whichever side is
    // small ends the search, and only that side moves.
    while (!above.isDone() && !below.isDone()) {
        Reach& next = above.work() <= below.work() ? above : below;
        if (!next.step())
            return false;
    }
    QVector<FeedPlace*>& moved = above.isDone() ? above.met() : below.met();
    sortByPlace(&moved);
    if (above.isDone()) {
        for (FeedPlace* place : qAsConst(moved))
            place->moveBefore(fedPlace);
    } else {
        for (int i = moved.size() - 1; i >= 0; --i)
            moved.at(i)->moveBehind(sourcePlace);
    }
    return true;
}
