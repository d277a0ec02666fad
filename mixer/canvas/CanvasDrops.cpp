// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasDrops.h"

#include "BrickCatalogue.h"
#include "CanvasSearch.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "idzbrickuser.h"

#include <QDropEvent>
#include <QMimeData>

CanvasDrops::CanvasDrops(NetworkView* view)
    : m_view(view)
{
}

bool CanvasDrops::handle(QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        drag(static_cast<QDragMoveEvent*>(event));
        return true;
    case QEvent::DragLeave:
        leave();
        return true;
    case QEvent::Drop:
        drop(static_cast<QDropEvent*>(event));
        return true;
    default:
        return false;
    }
}

/// The class of bricks that is dragged; empty for anything else, and for bricks that the network
/// does not take.
QString CanvasDrops::classOf(const QDropEvent* event) const
{
    const QMimeData* mime = event->mimeData();
    if (!mime->hasFormat(BrickCatalogue::mimeType()))
        return QString();
    const QString className = QString::fromUtf8(mime->data(BrickCatalogue::mimeType()));
    const BrickKind* kind = BrickCatalogue::instance()->find(className);
    const IDzBrickUser* user = m_view->getEdit()->getUser();
    return kind && user && user->canUseBrick(kind->sample) ? className : QString();
}

/// The wire there that a brick of the class can be put into.
BrickLink CanvasDrops::wireFor(const QString& className, const QPointF& place) const
{
    const BrickKind* kind = BrickCatalogue::instance()->find(className);
    const BrickLink link = m_view->getNetworkScene()->hitWire(place, m_view->getReach());
    return canInsertOnLink(kind->sample, link) ? link : BrickLink();
}

void CanvasDrops::drag(QDragMoveEvent* event)
{
    const QString className = classOf(event);
    if (className.isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    m_view->getNetworkScene()->setMarkedWire(wireFor(className, m_view->mapToScene(event->pos())));
}

void CanvasDrops::leave()
{
    m_view->getNetworkScene()->setMarkedWire(BrickLink());
}

void CanvasDrops::drop(QDropEvent* event)
{
    leave();
    const QString className = classOf(event);
    if (className.isEmpty()) {
        event->ignore();
        return;
    }
    const QPointF place = m_view->mapToScene(event->pos());
    m_view->getSearch()->add(className, place, wireFor(className, place));
    event->acceptProposedAction();
    m_view->setFocus();
}
