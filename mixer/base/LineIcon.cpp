// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LineIcon.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <map>
#include <memory>
#include <utility>

/// Resources of a static library are left out of programs that do not ask for them, and the macro
/// works outside of namespaces alone.
static void provideResources()
{
    Q_INIT_RESOURCE(lines);
}

namespace LineIcon {

namespace {

/// The icons stand in a square of this many units.
const qreal unitSize = 16;

/// The file of an icon, without folder and ending.
const char* fileOf(Name name)
{
    switch (name) {
    case Lock:
        return "lock";
    case Unlock:
        return "unlock";
    case Reset:
        return "reset";
    case Image:
        return "image";
    case Link:
        return "link";
    case Folder:
    case Open:
        return "folder";
    case Copy:
        return "copy";
    case Save:
        return "save";
    case New:
        return "new";
    case Apply:
        return "apply";
    case FromScene:
        return "from-scene";
    case Undo:
        return "undo";
    case Redo:
        return "redo";
    case Warning:
        return "warning";
    case Search:
        return "search";
    case Plus:
        return "plus";
    }
    return "";
}

/// The drawing in a colour. Each is read once: rows show the same few again and again.
QSvgRenderer* drawingOf(Name name, const QColor& color)
{
    static std::map<std::pair<QByteArray, QRgb>, std::unique_ptr<QSvgRenderer>> known;
    std::unique_ptr<QSvgRenderer>& drawing = known[{ fileOf(name), color.rgb() }];
    if (!drawing) {
        provideResources();
        QFile file(QStringLiteral(":/vireo/lines/%1.svg").arg(QLatin1String(fileOf(name))));
        file.open(QIODevice::ReadOnly);
        // Qt's reader knows no colour from outside.
        drawing.reset(new QSvgRenderer(
            file.readAll().replace("currentColor", color.name(QColor::HexRgb).toLatin1())));
    }
    return drawing.get();
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
        // A widget that has no size yet asks too; nothing can be painted then.
        if (size.isEmpty())
            return QPixmap();
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
        painter->setOpacity(color.alphaF());
        drawingOf(m_name, color)->render(painter, QRectF(0, 0, unitSize, unitSize));
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
