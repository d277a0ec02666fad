// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LineIcon.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace LineIcon {

namespace {

/// The icons stand in a square of this many units.
const qreal unitSize = 16;

void addArrowHead(QPainterPath* path, const QPointF& tip, const QPointF& left, const QPointF& right)
{
    path->moveTo(left);
    path->lineTo(tip);
    path->lineTo(right);
}

void addPadlock(QPainterPath* path, bool closed)
{
    path->addRoundedRect(QRectF(3, 7, 10, 7), 1.2, 1.2);
    path->moveTo(5, 7);
    path->lineTo(5, 5);
    path->arcTo(QRectF(5, 2, 6, 6), 180, closed ? -180 : -140);
    if (closed)
        path->lineTo(11, 7);
}

void addSheet(QPainterPath* path)
{
    path->moveTo(4, 2);
    path->lineTo(9.5, 2);
    path->lineTo(12.5, 5);
    path->lineTo(12.5, 14);
    path->lineTo(4, 14);
    path->closeSubpath();
}

void addTurn(QPainterPath* path, bool back)
{
    const auto x = [back](qreal value) { return back ? value : unitSize - value; };
    path->moveTo(x(3), 6.5);
    path->lineTo(x(9), 6.5);
    path->cubicTo(x(14), 6.5, x(14), 13, x(9), 13);
    path->lineTo(x(6), 13);
    addArrowHead(path, QPointF(x(3), 6.5), QPointF(x(6), 3.5), QPointF(x(6), 9.5));
}

QPainterPath pathOf(Name name)
{
    QPainterPath path;
    switch (name) {
    case Lock:
        addPadlock(&path, true);
        break;
    case Unlock:
        addPadlock(&path, false);
        break;
    case Reset:
        path.arcMoveTo(QRectF(3, 3, 10, 10), 130);
        path.arcTo(QRectF(3, 3, 10, 10), 130, -300);
        addArrowHead(&path, QPointF(4.2, 4.8), QPointF(4, 1.6), QPointF(7.6, 4.9));
        break;
    case Image:
        path.addRoundedRect(QRectF(2, 3, 12, 10), 1, 1);
        path.moveTo(3, 11.5);
        path.lineTo(6.5, 7.5);
        path.lineTo(9, 10.5);
        path.lineTo(10.5, 9);
        path.lineTo(13, 11.5);
        path.addEllipse(QPointF(10.6, 6), 1, 1);
        break;
    case Link:
        path.addEllipse(QPointF(3.6, 8), 1.6, 1.6);
        path.moveTo(5.2, 8);
        path.lineTo(13, 8);
        addArrowHead(&path, QPointF(13, 8), QPointF(10, 5), QPointF(10, 11));
        break;
    case Folder:
    case Open:
        path.moveTo(2, 13);
        path.lineTo(2, 3.5);
        path.lineTo(6, 3.5);
        path.lineTo(7.5, 5.5);
        path.lineTo(14, 5.5);
        path.lineTo(14, 13);
        path.closeSubpath();
        break;
    case Copy:
        path.addRoundedRect(QRectF(5.5, 5.5, 8, 8.5), 1, 1);
        path.moveTo(10.5, 3);
        path.lineTo(10.5, 2);
        path.lineTo(2.5, 2);
        path.lineTo(2.5, 10.5);
        path.lineTo(3.5, 10.5);
        break;
    case Save:
        path.moveTo(8, 2);
        path.lineTo(8, 9.5);
        addArrowHead(&path, QPointF(8, 9.5), QPointF(5, 6.5), QPointF(11, 6.5));
        path.moveTo(2.5, 10);
        path.lineTo(2.5, 13.5);
        path.lineTo(13.5, 13.5);
        path.lineTo(13.5, 10);
        break;
    case New:
        addSheet(&path);
        path.moveTo(8.2, 6.5);
        path.lineTo(8.2, 11.5);
        path.moveTo(5.7, 9);
        path.lineTo(10.7, 9);
        break;
    case Apply:
        path.addEllipse(QPointF(11, 11), 3.2, 3.2);
        path.moveTo(2, 2.5);
        path.lineTo(8, 8.5);
        addArrowHead(&path, QPointF(8, 8.5), QPointF(8, 4.6), QPointF(4.1, 8.5));
        break;
    case FromScene:
        path.addEllipse(QPointF(11, 11), 3.2, 3.2);
        path.moveTo(8, 8.5);
        path.lineTo(2.5, 3);
        addArrowHead(&path, QPointF(2.5, 3), QPointF(2.5, 6.9), QPointF(6.4, 3));
        break;
    case Undo:
        addTurn(&path, true);
        break;
    case Redo:
        addTurn(&path, false);
        break;
    case Warning:
        path.moveTo(8, 2);
        path.lineTo(14.5, 13.5);
        path.lineTo(1.5, 13.5);
        path.closeSubpath();
        path.moveTo(8, 6.5);
        path.lineTo(8, 9.8);
        path.moveTo(8, 11.4);
        path.lineTo(8, 11.9);
        break;
    case Search:
        path.addEllipse(QPointF(6.8, 6.8), 4.3, 4.3);
        path.moveTo(10, 10);
        path.lineTo(14, 14);
        break;
    case Plus:
        path.moveTo(8, 3);
        path.lineTo(8, 13);
        path.moveTo(3, 8);
        path.lineTo(13, 8);
        break;
    }
    return path;
}

/// Drawn anew wherever it is shown: screens may have any scale, and a picture that is fitted to it
/// gets uneven.
class Engine : public QIconEngine
{
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal scale = qMin(rect.width(), rect.height()) / unitSize;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center() + QPointF(0.5, 0.5));
        painter->scale(scale, scale);
        painter->translate(-unitSize / 2, -unitSize / 2);
        draw(painter, mode);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

protected:
    /// In a square of `unitSize`.
    virtual void draw(QPainter* painter, QIcon::Mode mode) const = 0;
};

class LineEngine : public Engine
{
public:
    explicit LineEngine(Name name)
        : m_name(name)
    {
    }
    QIconEngine* clone() const override { return new LineEngine(m_name); }

protected:
    void draw(QPainter* painter, QIcon::Mode mode) const override
    {
        const QPalette palette = QApplication::palette();
        QColor color = palette.color(
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
        if (mode == QIcon::Selected)
            color = palette.color(QPalette::HighlightedText);
        painter->setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(pathOf(m_name));
    }

private:
    Name m_name;
};

class DotEngine : public Engine
{
public:
    DotEngine(const QColor& color, bool isRing)
        : m_color(color)
        , m_isRing(isRing)
    {
    }
    QIconEngine* clone() const override { return new DotEngine(m_color, m_isRing); }

protected:
    void draw(QPainter* painter, QIcon::Mode) const override
    {
        painter->setPen(QPen(m_color, 2));
        painter->setBrush(m_isRing ? QBrush() : QBrush(m_color));
        painter->drawEllipse(QPointF(unitSize / 2, unitSize / 2), 3.5, 3.5);
    }

private:
    QColor m_color;
    bool m_isRing;
};

} // namespace

QIcon make(Name name)
{
    return QIcon(new LineEngine(name));
}

QIcon makeDot(const QColor& color, bool isRing)
{
    return QIcon(new DotEngine(color, isRing));
}

} // namespace LineIcon
