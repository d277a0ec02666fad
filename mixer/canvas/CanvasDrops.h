// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class NetworkView;
class QDragMoveEvent;
class QDropEvent;
class QEvent;
class QPointF;
struct BrickLink;

/// What is dragged onto the canvas from elsewhere: kinds of bricks, which are added where they are
/// dropped, or put into the wire that is there.
class CanvasDrops
{
public:
    explicit CanvasDrops(NetworkView* view);

    /// True when the event was one of dragging. It is accepted when it holds something for the
    /// canvas.
    bool handle(QEvent* event);

private:
    void drag(QDragMoveEvent* event);
    void leave();
    void drop(QDropEvent* event);
    QString classOf(const QDropEvent* event) const;
    BrickLink wireFor(const QString& className, const QPointF& place) const;

    NetworkView* m_view;
};
