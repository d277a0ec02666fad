// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGraphicsView>

/// A view that moves over its scene as if there were no end: the wheel zooms, the middle button or
/// Space with the left one moves it, and whatever is shown keeps clear of a widget that lies over
/// its corner.
class ZoomView : public QGraphicsView
{
    Q_OBJECT

public:
    /// The scene reaches this far from its middle to every side.
    explicit ZoomView(qreal reach, QWidget* parent = nullptr);

    qreal getZoom() const { return transform().m11(); }
    /// Zooms with the place of the scene staying where it is on the screen.
    void zoomAt(const QPointF& place, qreal factor);
    void zoomIn();
    void zoomOut();
    void zoomToOne();
    /// As large as it fits, clear of the widget over the corner.
    void zoomTo(const QRectF& box);
    /// Brings a place of the scene to the middle.
    void goTo(const QPointF& place);
    /// Scrolls as little as needed to have the whole box in view, and not at all when it is.
    void showBox(const QRectF& box);
    /// The part of the scene that is in view.
    QRectF getVisibleBox() const;
    /// The place nearest to the wanted one where a box of this size is wholly in view.
    QPointF broughtIntoView(const QPointF& place, const QSizeF& size) const;
    /// Where in the scene the mouse is; the middle of the view when it is elsewhere.
    QPointF getMousePlace() const;

protected:
    /// The widget over the lower right corner, a child of the view.
    void setOverlay(QWidget* overlay);
    QWidget* getOverlay() const { return m_overlay; }

    /// True while the view is in the user's hand.
    bool isPanning() const { return m_isPanning; }
    /// True while Space is held down, which makes the left button move the view.
    bool isSpaceDown() const { return m_isSpaceDown; }
    /// These are given the mouse's events first; true when an event was for them.
    bool panPress(QMouseEvent* event);
    bool panMove(QMouseEvent* event);
    bool panRelease(QMouseEvent* event);
    /// The cursor over a place of the scene when the view is in nobody's hand.
    virtual Qt::CursorShape cursorAt(const QPointF& place);
    void updateCursor();

    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void scrollBy(const QPoint& way);
    void fitInto(const QRect& room, const QRectF& box);
    bool isUnderOverlay(const QRect& box) const;
    QRect roomFor(const QSizeF& shape) const;
    QPoint wayIntoView(const QRect& box) const;

    QWidget* m_overlay = nullptr;
    QPoint m_mouse;
    QPoint m_panStart;
    bool m_isMouseInside = false;
    bool m_isPanning = false;
    bool m_isSpaceDown = false;
};
