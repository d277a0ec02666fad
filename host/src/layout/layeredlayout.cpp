// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "layeredlayout.h"

#include <algorithm>
#include <numeric>

namespace {

/// Rounds of reordering, and of moving up and down; more change next to nothing.
const int orderSweeps = 10;
const int placeSweeps = 6;
/// So many rounds without fewer crossings end the reordering.
const int idleSweeps = 3;
/// A wire that passes a column keeps this much room.
const qreal passGap = 20;
/// Wires that pass columns are worth this many boxes and edges; beyond it the longest are left out.
const int passesPerPart = 6;
/// How much straighter than others a wire that passes columns is kept.
const qreal passWeight = 4;

/// A joint between neighbouring columns. Ports are heights below the tops of the items.
struct Segment {
    int left;
    int right;
    qreal leftPort;
    qreal rightPort;
};

/// One group of joined boxes.
class Group
{
public:
    Group(const LayeredLayout& layout, const QVector<QSizeF>& sizes, const QVector<int>& boxes,
        const QVector<LayeredLayout::Edge>& edges)
        : m_layout(layout)
        , m_sizes(sizes)
        , m_boxes(boxes)
        , m_edges(edges)
    {
    }

    /// Writes the boxes' places into `places` and returns the extent.
    QSizeF arrange(QVector<QPointF>* places)
    {
        dropLoops();
        makeColumns();
        makeItems();
        orderAtFirst();
        reduceCrossings();
        placeVertically();
        return placeHorizontally(places);
    }

private:
    struct Item {
        int box; ///< -1 where a wire passes
        int column;
        qreal height;
        QVector<int> leftSegments;
        QVector<int> rightSegments;
        int rank = 0;
        qreal y = 0;
    };

    void dropLoops();
    void makeColumns();
    void makeItems();
    void joinItems(const LayeredLayout::Edge& edge, bool isPassing);
    void addSegment(int left, int right, qreal leftPort, qreal rightPort);
    void orderAtFirst();
    void setRanks(int column);
    void reduceCrossings();
    void orderColumn(int column, bool byRight);
    qint64 countCrossings() const;
    qint64 countCrossings(int column) const;
    void placeVertically();
    void placeColumn(int column, bool useLeft, bool useRight);
    qreal wantedPlace(const Item& item, bool useLeft, bool useRight, qreal* weight) const;
    qreal gapBelow(const Item& upper, const Item& lower) const;
    QSizeF placeHorizontally(QVector<QPointF>* places) const;

    const LayeredLayout& m_layout;
    const QVector<QSizeF>& m_sizes;
    const QVector<int>& m_boxes;
    /// Between places in m_boxes; without loops after dropLoops().
    QVector<LayeredLayout::Edge> m_edges;
    QVector<int> m_order; ///< places in m_boxes, what feeds first
    QVector<int> m_columnOf;
    QVector<Item> m_items; ///< the boxes first
    QVector<Segment> m_segments;
    QVector<QVector<int>> m_columns; ///< items from above, columns from the right
};

/// Visits every box after all boxes that feed it; an edge back to a box that is being visited
/// closes a loop.
void Group::dropLoops()
{
    const int count = m_boxes.size();
    QVector<QVector<int>> into(count);
    for (int i = 0; i < m_edges.size(); ++i)
        into[m_edges.at(i).to].append(i);
    enum State { New, Open, Done };
    QVector<State> states(count, New);
    QVector<int> nextEdge(count, 0);
    QVector<bool> dropped(m_edges.size(), false);
    QVector<int> stack;
    for (int start = 0; start < count; ++start) {
        if (states.at(start) != New)
            continue;
        stack.append(start);
        states[start] = Open;
        while (!stack.isEmpty()) {
            const int box = stack.last();
            if (nextEdge.at(box) == into.at(box).size()) {
                states[box] = Done;
                m_order.append(box);
                stack.removeLast();
                continue;
            }
            const int edge = into.at(box).at(nextEdge[box]++);
            const int feeder = m_edges.at(edge).from;
            if (states.at(feeder) == Open)
                dropped[edge] = true;
            if (states.at(feeder) != New)
                continue;
            states[feeder] = Open;
            stack.append(feeder);
        }
    }
    QVector<LayeredLayout::Edge> kept;
    kept.reserve(m_edges.size());
    for (int i = 0; i < m_edges.size(); ++i)
        if (!dropped.at(i))
            kept.append(m_edges.at(i));
    m_edges = kept;
}

/// Every box stands one column left of the leftmost box that it feeds, or beside what feeds it when
/// that makes wires no longer.
void Group::makeColumns()
{
    const int count = m_boxes.size();
    QVector<QVector<int>> fed(count);
    QVector<QVector<int>> feeders(count);
    for (const LayeredLayout::Edge& edge : qAsConst(m_edges)) {
        fed[edge.from].append(edge.to);
        feeders[edge.to].append(edge.from);
    }
    m_columnOf.fill(0, count);
    // A box may leave for the left when no more wires hold it at boxes that stay.
    QVector<bool> isFree(count, false);
    for (int i = m_order.size() - 1; i >= 0; --i) {
        const int box = m_order.at(i);
        int holding = 0;
        for (const int next : qAsConst(fed[box])) {
            m_columnOf[box] = qMax(m_columnOf.at(box), m_columnOf.at(next) + 1);
            holding += !isFree.at(next);
        }
        isFree[box] = !feeders.at(box).isEmpty() && feeders.at(box).size() >= holding;
    }
    // What nothing feeds goes along with the box that it feeds.
    const auto isSource = [&](int box) { return feeders.at(box).isEmpty(); };
    for (const int box : qAsConst(m_order)) {
        int nearest = -1;
        for (const int feeder : qAsConst(feeders[box]))
            if (!isSource(feeder) && (nearest < 0 || m_columnOf.at(feeder) < nearest))
                nearest = m_columnOf.at(feeder);
        if (isFree.at(box) && nearest > 0)
            m_columnOf[box] = nearest - 1;
    }
    for (const int box : qAsConst(m_order))
        for (const int next : qAsConst(fed[box]))
            m_columnOf[box] = qMax(m_columnOf.at(box), m_columnOf.at(next) + 1);
}

void Group::makeItems()
{
    const int count = m_boxes.size();
    m_items.reserve(count);
    for (int i = 0; i < count; ++i) {
        Item item;
        item.box = i;
        item.column = m_columnOf.at(i);
        item.height = m_sizes.at(m_boxes.at(i)).height();
        m_items.append(item);
    }
    // The longest wires make the most places to pass and gain the least by it.
    const auto span = [this](const LayeredLayout::Edge& edge) {
        return m_columnOf.at(edge.from) - m_columnOf.at(edge.to);
    };
    QVector<int> bySpan(m_edges.size());
    std::iota(bySpan.begin(), bySpan.end(), 0);
    std::stable_sort(bySpan.begin(), bySpan.end(),
        [&](int a, int b) { return span(m_edges.at(a)) < span(m_edges.at(b)); });
    int passesLeft = passesPerPart * (count + m_edges.size());
    QVector<bool> isPassing(m_edges.size(), false);
    for (const int edge : qAsConst(bySpan)) {
        passesLeft -= span(m_edges.at(edge)) - 1;
        isPassing[edge] = passesLeft >= 0;
    }
    for (int i = 0; i < m_edges.size(); ++i)
        joinItems(m_edges.at(i), isPassing.at(i));
}

void Group::joinItems(const LayeredLayout::Edge& edge, bool isPassing)
{
    const int first = m_columnOf.at(edge.to);
    const int last = m_columnOf.at(edge.from);
    if (last - first > 1 && !isPassing)
        return;
    int right = edge.to;
    qreal rightPort = edge.toOffset;
    for (int column = first + 1; column < last; ++column) {
        Item pass;
        pass.box = -1;
        pass.column = column;
        pass.height = 0;
        m_items.append(pass);
        addSegment(m_items.size() - 1, right, 0, rightPort);
        right = m_items.size() - 1;
        rightPort = 0;
    }
    addSegment(edge.from, right, edge.fromOffset, rightPort);
}

void Group::addSegment(int left, int right, qreal leftPort, qreal rightPort)
{
    m_items[left].rightSegments.append(m_segments.size());
    m_items[right].leftSegments.append(m_segments.size());
    m_segments.append(Segment { left, right, leftPort, rightPort });
}

/// Follows the inputs from above to below, so that trees come out without a crossing.
void Group::orderAtFirst()
{
    const int columnCount = 1 + *std::max_element(m_columnOf.constBegin(), m_columnOf.constEnd());
    m_columns.resize(columnCount);
    for (Item& item : m_items)
        std::stable_sort(item.leftSegments.begin(), item.leftSegments.end(), [this](int a, int b) {
            return m_segments.at(a).rightPort < m_segments.at(b).rightPort;
        });
    QVector<bool> isSeen(m_items.size(), false);
    QVector<int> stack;
    for (int start = 0; start < m_items.size(); ++start) {
        if (!m_items.at(start).rightSegments.isEmpty())
            continue;
        stack.append(start);
        while (!stack.isEmpty()) {
            const int index = stack.takeLast();
            if (isSeen.at(index))
                continue;
            isSeen[index] = true;
            const Item& item = m_items.at(index);
            m_columns[item.column].append(index);
            for (int i = item.leftSegments.size() - 1; i >= 0; --i)
                stack.append(m_segments.at(item.leftSegments.at(i)).left);
        }
    }
    for (int column = 0; column < columnCount; ++column)
        setRanks(column);
}

void Group::setRanks(int column)
{
    const QVector<int>& items = m_columns.at(column);
    for (int i = 0; i < items.size(); ++i)
        m_items[items.at(i)].rank = i;
}

void Group::reduceCrossings()
{
    QVector<QVector<int>> best = m_columns;
    qint64 bestCount = countCrossings();
    int idle = 0;
    for (int sweep = 0; sweep < orderSweeps && bestCount > 0 && idle < idleSweeps; ++sweep) {
        if (sweep % 2 == 0)
            for (int column = 1; column < m_columns.size(); ++column)
                orderColumn(column, true);
        else
            for (int column = m_columns.size() - 2; column >= 0; --column)
                orderColumn(column, false);
        const qint64 count = countCrossings();
        ++idle;
        if (count < bestCount) {
            bestCount = count;
            best = m_columns;
            idle = 0;
        }
    }
    m_columns = best;
    for (int column = 0; column < m_columns.size(); ++column)
        setRanks(column);
}

/// Sorts a column by where its neighbours stand; items without neighbours keep their places.
void Group::orderColumn(int column, bool byRight)
{
    QVector<int>& items = m_columns[column];
    QVector<QPair<qreal, int>> wanted;
    wanted.reserve(items.size());
    QVector<int> places;
    places.reserve(items.size());
    for (int i = 0; i < items.size(); ++i) {
        const Item& item = m_items.at(items.at(i));
        const QVector<int>& segments = byRight ? item.rightSegments : item.leftSegments;
        if (segments.isEmpty())
            continue;
        qreal sum = 0;
        for (const int index : segments) {
            const Segment& segment = m_segments.at(index);
            const Item& peer = m_items.at(byRight ? segment.right : segment.left);
            const qreal port = byRight ? segment.rightPort : segment.leftPort;
            sum += peer.rank + (peer.height > 0 ? port / peer.height : 0.5);
        }
        wanted.append(qMakePair(sum / segments.size(), items.at(i)));
        places.append(i);
    }
    std::stable_sort(wanted.begin(), wanted.end(),
        [](const QPair<qreal, int>& a, const QPair<qreal, int>& b) { return a.first < b.first; });
    for (int i = 0; i < places.size(); ++i)
        items[places.at(i)] = wanted.at(i).second;
    setRanks(column);
}

qint64 Group::countCrossings() const
{
    qint64 count = 0;
    for (int column = 0; column + 1 < m_columns.size(); ++column)
        count += countCrossings(column);
    return count;
}

/// Crossings between a column and the one left of it: pairs in wrong order, counted by merging.
qint64 Group::countCrossings(int column) const
{
    QVector<qreal> ends;
    QVector<QPair<qreal, qreal>> joints;
    for (const int index : m_columns.at(column)) {
        for (const int segmentIndex : m_items.at(index).leftSegments) {
            const Segment& segment = m_segments.at(segmentIndex);
            const Item& left = m_items.at(segment.left);
            const Item& right = m_items.at(segment.right);
            const auto place = [](const Item& item, qreal port) {
                return item.rank + (item.height > 0 ? port / (item.height + 1) : 0.5);
            };
            joints.append(
                qMakePair(place(right, segment.rightPort), place(left, segment.leftPort)));
        }
    }
    std::sort(joints.begin(), joints.end());
    ends.reserve(joints.size());
    for (const auto& joint : qAsConst(joints))
        ends.append(joint.second);
    QVector<qreal> merged(ends.size());
    qint64 count = 0;
    for (int width = 1; width < ends.size(); width *= 2) {
        for (int start = 0; start < ends.size(); start += 2 * width) {
            const int middle = qMin(start + width, ends.size());
            const int end = qMin(start + 2 * width, ends.size());
            int a = start;
            int b = middle;
            for (int out = start; out < end; ++out) {
                if (b >= end || (a < middle && ends.at(a) <= ends.at(b))) {
                    merged[out] = ends.at(a++);
                } else {
                    count += middle - a;
                    merged[out] = ends.at(b++);
                }
            }
        }
        ends.swap(merged);
    }
    return count;
}

qreal Group::gapBelow(const Item& upper, const Item& lower) const
{
    return upper.box < 0 || lower.box < 0 ? passGap : m_layout.rowGap;
}

void Group::placeVertically()
{
    for (const QVector<int>& column : qAsConst(m_columns)) {
        qreal y = 0;
        for (int i = 0; i < column.size(); ++i) {
            Item& item = m_items[column.at(i)];
            item.y = y;
            y += item.height;
            if (i + 1 < column.size())
                y += gapBelow(item, m_items.at(column.at(i + 1)));
        }
        for (const int index : column)
            m_items[index].y -= y / 2;
    }
    for (int sweep = 0; sweep < placeSweeps; ++sweep) {
        for (int column = 1; column < m_columns.size(); ++column)
            placeColumn(column, false, true);
        for (int column = m_columns.size() - 2; column >= 0; --column)
            placeColumn(column, true, sweep > 0);
    }
}

qreal Group::wantedPlace(const Item& item, bool useLeft, bool useRight, qreal* weight) const
{
    qreal sum = 0;
    *weight = 0;
    const auto take = [&](const QVector<int>& segments, bool isLeft) {
        for (const int index : segments) {
            const Segment& segment = m_segments.at(index);
            const Item& peer = m_items.at(isLeft ? segment.left : segment.right);
            const qreal peerPort = isLeft ? segment.leftPort : segment.rightPort;
            const qreal ownPort = isLeft ? segment.rightPort : segment.leftPort;
            const qreal pull = item.box < 0 && peer.box < 0 ? passWeight : 1;
            sum += pull * (peer.y + peerPort - ownPort);
            *weight += pull;
        }
    };
    if (useLeft)
        take(item.leftSegments, true);
    if (useRight)
        take(item.rightSegments, false);
    if (*weight > 0)
        return sum / *weight;
    *weight = 0.01;
    return item.y;
}

/// Brings every item as near as can be to where its neighbours want it, in the given order and
/// without overlap: neighbours that press on each other become one block at their mean.
void Group::placeColumn(int column, bool useLeft, bool useRight)
{
    struct Block {
        qreal place;
        qreal weight;
        int count;
    };
    const QVector<int>& items = m_columns.at(column);
    QVector<qreal> offsets(items.size());
    QVector<Block> blocks;
    qreal offset = 0;
    for (int i = 0; i < items.size(); ++i) {
        const Item& item = m_items.at(items.at(i));
        offsets[i] = offset;
        qreal weight = 0;
        const qreal wanted = wantedPlace(item, useLeft, useRight, &weight);
        blocks.append(Block { wanted - offset, weight, 1 });
        while (blocks.size() > 1 && blocks.at(blocks.size() - 2).place > blocks.last().place) {
            const Block lower = blocks.takeLast();
            Block& upper = blocks.last();
            upper.place = (upper.place * upper.weight + lower.place * lower.weight)
                / (upper.weight + lower.weight);
            upper.weight += lower.weight;
            upper.count += lower.count;
        }
        offset += item.height;
        if (i + 1 < items.size())
            offset += gapBelow(item, m_items.at(items.at(i + 1)));
    }
    int next = 0;
    for (const Block& block : qAsConst(blocks))
        for (int i = 0; i < block.count; ++i, ++next)
            m_items[items.at(next)].y = block.place + offsets.at(next);
}

QSizeF Group::placeHorizontally(QVector<QPointF>* places) const
{
    QVector<qreal> widths(m_columns.size(), 0);
    qreal top = 0;
    qreal bottom = 0;
    bool isFirst = true;
    for (const Item& item : m_items) {
        if (item.box < 0)
            continue;
        widths[item.column]
            = qMax(widths.at(item.column), m_sizes.at(m_boxes.at(item.box)).width());
        top = isFirst ? item.y : qMin(top, item.y);
        bottom = isFirst ? item.y + item.height : qMax(bottom, item.y + item.height);
        isFirst = false;
    }
    QVector<qreal> rightEdges(m_columns.size());
    qreal right = 0;
    for (int column = m_columns.size() - 1; column >= 0; --column) {
        right += widths.at(column);
        rightEdges[column] = right;
        right += m_layout.columnGap;
    }
    for (const Item& item : m_items) {
        if (item.box < 0)
            continue;
        const int box = m_boxes.at(item.box);
        (*places)[box]
            = QPointF(rightEdges.at(item.column) - m_sizes.at(box).width(), item.y - top);
    }
    return QSizeF(right - m_layout.columnGap, bottom - top);
}

int findGroup(QVector<int>& groups, int box)
{
    while (groups.at(box) != box) {
        groups[box] = groups.at(groups.at(box));
        box = groups.at(box);
    }
    return box;
}

/// Boxes that are joined with nothing stand in rows of this many.
const int looseBoxesInRow = 5;

} // namespace

QVector<QPointF> LayeredLayout::arrange(
    const QVector<QSizeF>& sizes, const QVector<Edge>& edges) const
{
    const int count = sizes.size();
    QVector<int> groups(count);
    std::iota(groups.begin(), groups.end(), 0);
    for (const Edge& edge : edges) {
        const int a = findGroup(groups, edge.from);
        const int b = findGroup(groups, edge.to);
        groups[qMax(a, b)] = qMin(a, b);
    }
    QVector<QVector<int>> boxesOf(count);
    QVector<QVector<Edge>> edgesOf(count);
    QVector<int> placeInGroup(count);
    for (int box = 0; box < count; ++box) {
        QVector<int>& boxes = boxesOf[findGroup(groups, box)];
        placeInGroup[box] = boxes.size();
        boxes.append(box);
    }
    for (const Edge& edge : edges)
        if (edge.from != edge.to)
            edgesOf[findGroup(groups, edge.from)].append(Edge { placeInGroup.at(edge.from),
                placeInGroup.at(edge.to), edge.fromOffset, edge.toOffset });

    QVector<QPointF> places(count);
    QVector<qreal> widths(count, 0);
    qreal y = 0;
    qreal widest = 0;
    for (int group = 0; group < count; ++group) {
        if (boxesOf.at(group).size() < 2)
            continue;
        const QSizeF extent
            = Group(*this, sizes, boxesOf.at(group), edgesOf.at(group)).arrange(&places);
        for (const int box : qAsConst(boxesOf[group]))
            places[box].ry() += y;
        y += extent.height() + groupGap;
        widths[group] = extent.width();
        widest = qMax(widest, extent.width());
    }
    // The right ends stand in line: there the networks end.
    for (int group = 0; group < count; ++group)
        if (boxesOf.at(group).size() > 1)
            for (const int box : qAsConst(boxesOf[group]))
                places[box].rx() += widest - widths.at(group);

    QPointF place(0, y);
    qreal rowHeight = 0;
    int inRow = 0;
    for (int group = 0; group < count; ++group) {
        if (boxesOf.at(group).size() != 1)
            continue;
        if (inRow == looseBoxesInRow) {
            place = QPointF(0, place.y() + rowHeight + rowGap);
            rowHeight = 0;
            inRow = 0;
        }
        const int box = boxesOf.at(group).first();
        places[box] = place;
        place.rx() += sizes.at(box).width() + rowGap;
        rowHeight = qMax(rowHeight, sizes.at(box).height());
        ++inRow;
    }
    return places;
}
