// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

class DzShaderBrick;

/// The place of a brick in one order of all bricks, in which every brick stands behind those that
/// feed it. While there is such an order there is no loop, and most new links agree with it
/// already, so that asking whether a link would close a loop costs next to nothing.
///
/// Places are numbers with room between them; where it runs out, numbers nearby are spread anew.
class FeedPlace
{
public:
    /// At the end of the order.
    explicit FeedPlace(const DzShaderBrick* brick);
    ~FeedPlace();

    const DzShaderBrick* brick() const { return m_brick; }
    bool isBefore(const FeedPlace& other) const { return m_number < other.m_number; }
    void moveBefore(FeedPlace* other);
    void moveBehind(FeedPlace* other);

    /// The last searches that met the brick, going upstream and going downstream.
    quint64 visits[2] = { 0, 0 };

private:
    Q_DISABLE_COPY(FeedPlace)

    void takeOut();
    void putBetween(FeedPlace* previous, FeedPlace* next);
    void spreadNeighbours();

    const DzShaderBrick* m_brick;
    FeedPlace* m_previous = nullptr;
    FeedPlace* m_next = nullptr;
    quint64 m_number = 0;
};

/// True when the output of `source` may feed `fed` without closing a loop; the order then agrees
/// with such a link. Costs no more than looking at what lies between the two, and no more than the
/// smaller of what feeds the one and what the other feeds.
bool letFeed(const DzShaderBrick* source, const DzShaderBrick* fed);
