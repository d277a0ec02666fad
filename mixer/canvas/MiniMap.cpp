// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MiniMap.h"

#include "BrickItem.h"
#include "BrickSelection.h"
#include "NetworkScene.h"
#include "NetworkView.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

const int margin = 6;
const qreal smallestMark = 2;

} // namespace

MiniMap::MiniMap(NetworkView* view)
    : QWidget(view)
    , m_view(view)
{
    setObjectName(QStringLiteral("miniMap"));
    setAccessibleName(tr("Overview of the network"));
    setCursor(Qt::PointingHandCursor);
    setToolTip(tr("Click or drag to go there"));
    connect(view->getNetworkScene(), &NetworkScene::layoutChanged, this, [this] { update(); });
    connect(view->getNetworkScene()->getSelection(), &BrickSelection::selectionChanged, this,
        [this] { update(); });
    resize(sizeHint());
}

QSize MiniMap::sizeHint() const
{
    return QSize(180, 120);
}

QTransform MiniMap::transformToMap() const
{
    QRectF all = m_view->getNetworkScene()->boxOfAll();
    all |= m_view->getVisibleBox();
    const QRectF room = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    const qreal scale = qMin(
        room.width() / qMax(qreal(1), all.width()), room.height() / qMax(qreal(1), all.height()));
    QTransform transform;
    transform.translate(room.center().x(), room.center().y());
    transform.scale(scale, scale);
    transform.translate(-all.center().x(), -all.center().y());
    return transform;
}

void MiniMap::paintEvent(QPaintEvent*)
{
    NetworkScene* scene = m_view->getNetworkScene();
    const CanvasStyle& style = scene->getStyle();
    QPainter painter(this);
    QColor back = style.body;
    back.setAlpha(225);
    painter.fillRect(rect(), back);
    painter.setPen(style.border);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    const QTransform transform = transformToMap();
    for (const BrickItem* item : scene->getItems()) {
        QRectF mark = transform.mapRect(QRectF(item->pos(), item->getSize()));
        mark.setSize(mark.size().expandedTo(QSizeF(smallestMark, smallestMark)));
        const bool isSelected = scene->getSelection()->contains(item->getBrick());
        painter.fillRect(mark, isSelected ? style.selection : style.faintText);
    }
    painter.setPen(QPen(style.selection, 1.5));
    painter.drawRect(transform.mapRect(m_view->getVisibleBox()));
}

void MiniMap::goTo(const QPointF& place)
{
    m_view->goTo(transformToMap().inverted().map(place));
}

void MiniMap::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        goTo(event->localPos());
}

void MiniMap::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        goTo(event->localPos());
}
