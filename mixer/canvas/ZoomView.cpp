// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ZoomView.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QtMath>

namespace {

const qreal zoomLimits[] = { 0.02, 4 };
const qreal smallestZoom = 1e-4; ///< for scenes that do not fit otherwise
const qreal zoomPerNotch = 1.2;
const qreal turnPerNotch = 120; ///< as wheels report it, in eighths of a degree
const qreal zoomMargin = 40;
const int overlayMargin = 8;
/// Room between the view's edge and a box that is brought into view, in pixels.
const int viewMargin = 16;

QRectF wideBox(const QRectF& box)
{
    return box.adjusted(-zoomMargin, -zoomMargin, zoomMargin, zoomMargin);
}

/// The zoom at which a box fits.
qreal fitOf(const QSizeF& box, const QSizeF& room)
{
    return qMin(room.width() / box.width(), room.height() / box.height());
}

/// How far a stretch has to go to lie within another; with its beginning when it is too long.
int wayInto(int first, int last, int from, int to)
{
    if (first < from || last - first > to - from)
        return from - first;
    return qMin(0, to - last);
}

/// The same for a box, which keeps off the edges.
QPoint wayInto(const QRect& box, const QRect& room)
{
    const QRect inner = room.adjusted(viewMargin, viewMargin, -viewMargin, -viewMargin);
    return QPoint(wayInto(box.left(), box.right(), inner.left(), inner.right()),
        wayInto(box.top(), box.bottom(), inner.top(), inner.bottom()));
}

} // namespace

ZoomView::ZoomView(qreal reach, QWidget* parent)
    : QGraphicsView(parent)
{
    setSceneRect(-reach, -reach, 2 * reach, 2 * reach);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(NoAnchor);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
}

// Zoom and places.

void ZoomView::zoomAt(const QPointF& place, qreal factor)
{
    const qreal lowest = qMin(zoomLimits[0], getZoom());
    const qreal wanted = qBound(lowest, getZoom() * factor, zoomLimits[1]);
    const QPointF before = mapFromScene(place);
    setTransform(QTransform::fromScale(wanted, wanted));
    const QPointF after = mapFromScene(place);
    scrollBy((after - before).toPoint());
}

void ZoomView::zoomIn()
{
    zoomAt(getVisibleBox().center(), zoomPerNotch);
}

void ZoomView::zoomOut()
{
    zoomAt(getVisibleBox().center(), 1 / zoomPerNotch);
}

void ZoomView::zoomToOne()
{
    zoomAt(getVisibleBox().center(), 1 / getZoom());
}

void ZoomView::zoomTo(const QRectF& box)
{
    fitInto(viewport()->rect(), box);
    if (isUnderOverlay(mapFromScene(box).boundingRect()))
        fitInto(roomFor(wideBox(box).size()), box);
}

/// Shows a box of the scene as large as it fits in the middle of a part of the view.
void ZoomView::fitInto(const QRect& room, const QRectF& box)
{
    // Nobody wants to see a single brick fill the screen.
    const qreal zoom = qBound(smallestZoom, fitOf(wideBox(box).size(), room.size()), qreal(1));
    setTransform(QTransform::fromScale(zoom, zoom));
    goTo(box.center() + (QRectF(viewport()->rect()).center() - QRectF(room).center()) / zoom);
}

void ZoomView::goTo(const QPointF& place)
{
    centerOn(place);
    if (m_overlay)
        m_overlay->update();
}

void ZoomView::showBox(const QRectF& box)
{
    scrollBy(wayIntoView(mapFromScene(box).boundingRect()));
}

void ZoomView::scrollBy(const QPoint& way)
{
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + way.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + way.y());
    // It shows the zoom too.
    if (m_overlay)
        m_overlay->update();
}

QRectF ZoomView::getVisibleBox() const
{
    return mapToScene(viewport()->rect()).boundingRect();
}

QPointF ZoomView::broughtIntoView(const QPointF& place, const QSizeF& size) const
{
    const QRect box = mapFromScene(QRectF(place, size)).boundingRect();
    const QPointF way = QPointF(wayIntoView(box)) / getZoom();
    return way.isNull() ? place : QPointF((place - way).toPoint());
}

QPointF ZoomView::getMousePlace() const
{
    return m_isMouseInside ? mapToScene(m_mouse) : getVisibleBox().center();
}

// The widget over the corner.

void ZoomView::setOverlay(QWidget* overlay)
{
    m_overlay = overlay;
}

bool ZoomView::isUnderOverlay(const QRect& box) const
{
    return m_overlay && !m_overlay->isHidden() && m_overlay->geometry().intersects(box);
}

/// The part of the view beside or above the overlay, whichever shows a box of this shape larger;
/// the whole view when it is hardly larger than the overlay.
QRect ZoomView::roomFor(const QSizeF& shape) const
{
    const QRect all = viewport()->rect();
    if (!m_overlay || m_overlay->isHidden())
        return all;
    QRect beside = all;
    beside.setRight(m_overlay->x() - 1);
    QRect above = all;
    above.setBottom(m_overlay->y() - 1);
    const QRect room = fitOf(shape, beside.size()) > fitOf(shape, above.size()) ? beside : above;
    const bool isWorthIt = room.width() > all.width() / 2 && room.height() > all.height() / 2;
    return isWorthIt ? room : all;
}

/// How far the view has to scroll to have a box of it wholly in view and not under the overlay.
QPoint ZoomView::wayIntoView(const QRect& box) const
{
    const QRect all = viewport()->rect();
    const QPoint way = all.contains(box) ? QPoint() : wayInto(box, all);
    return -(isUnderOverlay(box.translated(way)) ? wayInto(box, roomFor(box.size())) : way);
}

void ZoomView::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    if (m_overlay)
        m_overlay->move(width() - m_overlay->width() - overlayMargin,
            height() - m_overlay->height() - overlayMargin);
}

void ZoomView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    if (m_overlay)
        m_overlay->update();
}

// The view in the user's hand.

bool ZoomView::panPress(QMouseEvent* event)
{
    m_mouse = event->pos();
    m_isMouseInside = true;
    if (event->button() != Qt::MiddleButton
        && !(event->button() == Qt::LeftButton && m_isSpaceDown))
        return false;
    m_isPanning = true;
    m_panStart = event->pos();
    updateCursor();
    return true;
}

bool ZoomView::panMove(QMouseEvent* event)
{
    m_mouse = event->pos();
    m_isMouseInside = true;
    // Another window took the release.
    if (event->buttons() == Qt::NoButton)
        m_isPanning = false;
    if (!m_isPanning)
        return false;
    const QPoint way = event->pos() - m_panStart;
    m_panStart = event->pos();
    scrollBy(-way);
    return true;
}

bool ZoomView::panRelease(QMouseEvent* event)
{
    m_mouse = event->pos();
    if (!m_isPanning)
        return false;
    m_isPanning = false;
    updateCursor();
    return true;
}

Qt::CursorShape ZoomView::cursorAt(const QPointF&)
{
    return Qt::ArrowCursor;
}

void ZoomView::updateCursor()
{
    if (m_isPanning)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else if (m_isSpaceDown)
        viewport()->setCursor(Qt::OpenHandCursor);
    else
        viewport()->setCursor(cursorAt(mapToScene(m_mouse)));
}

bool ZoomView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) {
        m_isMouseInside = false;
    } else if (event->type() == QEvent::Enter) {
        // Also when a popup has closed under the mouse.
        m_isMouseInside = true;
        m_mouse = static_cast<QEnterEvent*>(event)->pos();
    }
    return QGraphicsView::viewportEvent(event);
}

void ZoomView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space || event->modifiers()) {
        // Not QGraphicsView's, which scrolls by the arrow keys.
        QAbstractScrollArea::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        m_isSpaceDown = true;
        updateCursor();
    }
}

void ZoomView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_isSpaceDown = false;
        updateCursor();
    } else {
        QAbstractScrollArea::keyReleaseEvent(event);
    }
}

void ZoomView::focusOutEvent(QFocusEvent* event)
{
    m_isSpaceDown = false;
    m_isPanning = false;
    QGraphicsView::focusOutEvent(event);
}

void ZoomView::wheelEvent(QWheelEvent* event)
{
    const QPoint turn = event->angleDelta();
    if (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) {
        const int way = -(turn.y() ? turn.y() : turn.x());
        scrollBy(event->modifiers() & Qt::ShiftModifier ? QPoint(way, 0) : QPoint(0, way));
    } else if (turn.y() != 0) {
        zoomAt(
            mapToScene(event->position().toPoint()), qPow(zoomPerNotch, turn.y() / turnPerNotch));
    }
    event->accept();
}
