// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FrameLayer.h"

#include "NetworkFrames.h"
#include "NetworkScene.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace {

const qreal margin = 18;
const qreal titleHeight = 26;
const qreal titleDetail = 0.15;

} // namespace

FrameLayer::FrameLayer(NetworkScene* scene)
    : m_scene(scene)
{
    setZValue(-1);
}

void FrameLayer::rebuild()
{
    QVector<Shown> frames;
    const QVector<BrickFrame> known = framesOf(*m_scene->getEdit());
    for (const BrickFrame& frame : known) {
        QRectF box = m_scene->boxOf(frame.bricks).adjusted(-margin, -margin, margin, margin);
        box.setTop(box.top() - titleHeight);
        frames.append(Shown { frame.number, frame.title, box });
    }
    if (frames.isEmpty() && m_frames.isEmpty())
        return;
    prepareGeometryChange();
    m_frames = frames;
    update();
}

QRectF FrameLayer::titleBox(const Shown& frame)
{
    return QRectF(frame.box.left(), frame.box.top(), frame.box.width(), titleHeight);
}

QRectF FrameLayer::titleBox(int frame) const
{
    for (const Shown& shown : m_frames)
        if (shown.number == frame)
            return titleBox(shown);
    return QRectF();
}

int FrameLayer::titleAt(const QPointF& place) const
{
    for (int i = m_frames.size() - 1; i >= 0; --i)
        if (titleBox(m_frames.at(i)).contains(place))
            return m_frames.at(i).number;
    return 0;
}

int FrameLayer::frameAt(const QPointF& place) const
{
    for (int i = m_frames.size() - 1; i >= 0; --i)
        if (m_frames.at(i).box.contains(place))
            return m_frames.at(i).number;
    return 0;
}

QRectF FrameLayer::box() const
{
    QRectF box;
    for (const Shown& frame : m_frames)
        box |= frame.box;
    return box;
}

QRectF FrameLayer::boundingRect() const
{
    return box().adjusted(-2, -2, 2, 2);
}

void FrameLayer::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    const CanvasStyle& style = m_scene->getStyle();
    const qreal detail = option->levelOfDetailFromTransform(painter->worldTransform());
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setFont(style.titleFont);
    const QFontMetricsF metrics(style.titleFont);
    for (const Shown& frame : qAsConst(m_frames)) {
        painter->setPen(QPen(style.border, 1));
        painter->setBrush(style.frame);
        painter->drawRoundedRect(frame.box, 8, 8);
        if (detail < titleDetail)
            continue;
        painter->setPen(style.frameTitle);
        const QRectF title = titleBox(frame).adjusted(12, 0, -12, 0);
        painter->drawText(title, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            metrics.elidedText(frame.title, Qt::ElideRight, title.width()));
    }
}
