// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickItem.h"

#include "CanvasStyle.h"
#include "LinkColors.h"
#include "NetworkScene.h"
#include "dzbrickparam.h"
#include "dzcolorproperty.h"
#include "dzshaderbrick.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

using BrickAppearance::Row;
using BrickAppearance::rowCentre;
using BrickAppearance::rowHeight;
using BrickAppearance::titleHeight;

namespace {

const qreal cornerRadius = 5;
const qreal pinRadius = 5;
const qreal sideMargin = 13;
const qreal swatchWidth = 34;
const qreal badgeSize = 16;
/// The border and the pins stand out by this.
const qreal outline = pinRadius + 2;
/// Rows are painted from this zoom on, titles from the second.
const qreal rowDetail = 0.45;
const qreal titleDetail = 0.2;
const qreal dimmedOpacity = 0.25;

const DzColorProperty* colorOf(const Row& row)
{
    const DzProperty* property = row.param ? row.param->getProperty(0) : row.property;
    return row.kind == Row::Output ? nullptr : qobject_cast<const DzColorProperty*>(property);
}

bool isLocked(const Row& row)
{
    const DzProperty* property = row.param ? row.param->getProperty(0) : row.property;
    return property && property->isLocked();
}

/// How far a wire runs on in the direction of its pin.
qreal wireReach(const QPointF& from, const QPointF& to)
{
    const qreal across = to.x() - from.x();
    const qreal along = qAbs(to.y() - from.y());
    return across >= 0 ? qBound(qreal(24), across / 2, qreal(160))
                       : qBound(qreal(40), -across / 2 + along / 6, qreal(220));
}

} // namespace

QPainterPath wirePath(const QPointF& from, const QPointF& to)
{
    const QPointF reach(wireReach(from, to), 0);
    QPainterPath path(from);
    path.cubicTo(from + reach, to - reach, to);
    return path;
}

QPointF wirePoint(const QPointF& from, const QPointF& to, qreal part)
{
    const QPointF reach(wireReach(from, to), 0);
    const qreal rest = 1 - part;
    return rest * rest * rest * from + 3 * rest * rest * part * (from + reach)
        + 3 * rest * part * part * (to - reach) + part * part * part * to;
}

QRectF wireBounds(const QPointF& from, const QPointF& to)
{
    const QPointF reach(wireReach(from, to), 0);
    const qreal pen = 4;
    QRectF box = QRectF(from, to).normalized();
    box |= QRectF(from + reach, to - reach).normalized();
    return box.adjusted(-pen, -pen, pen, pen);
}

BrickItem::BrickItem(NetworkScene* scene, DzShaderBrick* brick)
    : m_scene(scene)
    , m_brick(brick)
{
    // A change of place is told to the wires by the scene.
    setFlag(ItemSendsGeometryChanges, false);
    setFlag(ItemUsesExtendedStyleOption);
    setPos(BrickAppearance::position(brick));
    connectToBrick();
}

void BrickItem::connectToBrick()
{
    const auto drop = [this] { dropRows(); };
    QObject::connect(m_brick, &DzShaderBrick::paramAdded, &m_context, drop);
    QObject::connect(m_brick, &DzShaderBrick::paramRemoved, &m_context, drop);
    const auto dropText = [this] { dropTexts(); };
    QObject::connect(m_brick, &DzShaderBrick::brickTitleChanged, &m_context, dropText);
    QObject::connect(m_brick, &DzShaderBrick::brickIDChanged, &m_context, dropText);
    QObject::connect(m_brick, &DzElement::propertyAdded, &m_context, drop);
    QObject::connect(m_brick, &DzElement::propertyRemoved, &m_context, drop);
    QObject::connect(m_brick, &DzShaderBrick::connectionsChanged, &m_context, [this] {
        // The parameters at the other ends may go next.
        m_wires.clear();
        m_wiresDirty = true;
        if (BrickAppearance::hidesParams(m_brick))
            dropRows();
        dropTexts();
        m_scene->noteDirty(this);
    });
}

/// Connections to rows are worth their memory only for bricks that are looked at closely.
void BrickItem::connectToRows()
{
    m_rowContext.reset(new QObject);
    QObject* context = m_rowContext.get();
    const auto dropText = [this] { dropTexts(); };
    const auto drop = [this] { dropRows(); };
    for (const Row& row : qAsConst(m_rows)) {
        if (row.param) {
            QObject::connect(row.param, &DzBrickParam::propertyChanged, context, dropText);
            QObject::connect(row.param, &DzBrickParam::labelChanged, context, dropText);
            // Rows are made in another order or with other wires; this ends the connections.
            QObject::connect(row.param, &DzBrickParam::typeChanged, context, drop);
            QObject::connect(row.param, &DzBrickParam::directionChanged, context, drop);
        } else {
            QObject::connect(row.property, &DzProperty::currentValueChanged, context, dropText);
            QObject::connect(row.property, &DzProperty::lockStateChanged, context, dropText);
            QObject::connect(row.property, &DzProperty::labelChanged, context, dropText);
        }
    }
}

void BrickItem::dropRows()
{
    m_rows.clear();
    m_wires.clear();
    m_rowContext.reset();
    m_rowsDirty = true;
    m_wiresDirty = true;
    dropTexts();
    m_scene->noteDirty(this);
}

void BrickItem::makeRows()
{
    m_rowsDirty = false;
    m_rowContext.reset();
    m_rows = BrickAppearance::rows(m_brick);
    const QSizeF size = BrickAppearance::size(m_brick, m_rows.size());
    if (size != m_size) {
        prepareGeometryChange();
        m_size = size;
    }
    m_barColor = QColor();
    for (const Row& row : qAsConst(m_rows))
        if (row.kind == Row::Output) {
            m_barColor = linkColor(row.param->getTypeString());
            break;
        }
    dropTexts();
}

void BrickItem::makeWires()
{
    m_wiresDirty = false;
    m_wires.clear();
    for (int row = 0; row < m_rows.size(); ++row) {
        DzBrickParam* input = m_rows.at(row).param;
        if (!input || input->isOutput())
            continue;
        for (int k = 0; k < input->getNumConnections(); ++k) {
            CanvasWire wire;
            wire.output = input->getConnection(k);
            wire.input = input;
            wire.inputRow = row;
            wire.source = m_scene->getItem(wire.output->getTopBrickOwner());
            if (!wire.source)
                continue;
            wire.color = linkColor(wire.output->getTypeString());
            wire.from = wire.source->pinPlace(wire.output);
            wire.to = inputPlace(row);
            wire.bounds = wireBounds(wire.from, wire.to);
            m_wires.append(wire);
        }
    }
}

int BrickItem::rowOf(const DzBrickParam* param) const
{
    for (int row = 0; row < m_rows.size(); ++row)
        if (m_rows.at(row).param == param)
            return row;
    return -1;
}

int BrickItem::rowAt(const QPointF& place) const
{
    const int row = place.y() < titleHeight ? -1 : int((place.y() - titleHeight) / rowHeight);
    return row < m_rows.size() ? row : -1;
}

QPointF BrickItem::pinPlace(const DzBrickParam* param) const
{
    return pos() + QPointF(param->isOutput() ? m_size.width() : 0, rowCentre(rowOf(param)));
}

int BrickItem::firstRowIn(const QRectF& box) const
{
    return qMax(0, int((box.top() - outline - titleHeight) / rowHeight));
}

int BrickItem::lastRowIn(const QRectF& box) const
{
    return qMin(m_rows.size() - 1, int((box.bottom() + outline - titleHeight) / rowHeight));
}

QPointF BrickItem::inputPlace(int row) const
{
    return pos() + QPointF(0, rowCentre(row));
}

void BrickItem::setBadge(const QString& text, ProblemLevel level)
{
    if (text == m_badge && level == m_badgeLevel)
        return;
    // The title makes room for it.
    if (text.isEmpty() != m_badge.isEmpty())
        dropTexts();
    m_badge = text;
    m_badgeLevel = level;
    update();
}

QRectF BrickItem::badgeBox() const
{
    return QRectF(
        m_size.width() - badgeSize - 6, (titleHeight - badgeSize) / 2, badgeSize, badgeSize);
}

void BrickItem::setSelected(bool isSelected)
{
    if (isSelected == m_isSelected)
        return;
    m_isSelected = isSelected;
    update();
}

void BrickItem::dropTexts()
{
    m_textsDirty = true;
    update();
}

void BrickItem::makeTexts()
{
    m_textsDirty = false;
    if (!m_rowContext)
        connectToRows();
    const CanvasStyle& style = m_scene->getStyle();
    const qreal badgeRoom = m_badge.isEmpty() ? 0 : badgeSize + 6;
    m_title = QFontMetricsF(style.titleFont)
                  .elidedText(BrickAppearance::titleText(m_brick), Qt::ElideRight,
                      m_size.width() - 20 - badgeRoom);
    m_texts.clear();
    m_texts.reserve(m_rows.size());
    for (const Row& row : qAsConst(m_rows))
        m_texts.append(makeText(row));
}

BrickItem::RowText BrickItem::makeText(const Row& row) const
{
    RowText text;
    text.isLinked = row.param && row.param->getNumConnections() > 0;
    text.isLocked = isLocked(row);
    if (row.kind != Row::Setting)
        text.pin = linkColor(row.param->getTypeString());
    const QFontMetricsF metrics(m_scene->getStyle().font);
    const qreal room = m_size.width() - 2 * sideMargin;
    const QString label = BrickAppearance::rowLabel(row);
    const DzColorProperty* color = colorOf(row);
    if (color && !color->isMapped() && !text.isLinked)
        text.swatch = color->getColorValue();
    else if (!text.isLinked)
        text.value = BrickAppearance::rowValue(row);
    const qreal labelWidth = metrics.horizontalAdvance(label);
    const qreal valueWidth
        = text.swatch.isValid() ? swatchWidth : metrics.horizontalAdvance(text.value);
    const qreal gap = valueWidth > 0 ? 8 : 0;
    // The longer of the two gives way first.
    qreal labelRoom = room - valueWidth - gap;
    if (labelRoom < labelWidth)
        labelRoom = qMax(labelRoom, qMin(labelWidth, room * 0.55));
    text.label = metrics.elidedText(label, Qt::ElideRight, labelRoom);
    if (!text.value.isEmpty())
        text.value = metrics.elidedText(
            text.value, Qt::ElideMiddle, room - gap - qMin(labelWidth, labelRoom));
    return text;
}

QRectF BrickItem::boundingRect() const
{
    return QRectF(QPointF(), m_size).adjusted(-outline, -outline, outline, outline);
}

QColor BrickItem::titleBarColor() const
{
    const CanvasStyle& style = m_scene->getStyle();
    return style.titleColor(m_barColor.isValid() ? m_barColor : style.selection);
}

void BrickItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    const CanvasStyle& style = m_scene->getStyle();
    const qreal detail = option->levelOfDetailFromTransform(painter->worldTransform());
    const bool isDimmed = m_scene->isDimmed(this);
    if (isDimmed)
        painter->setOpacity(dimmedOpacity);
    if (detail < rowDetail) {
        paintFar(painter, style, detail);
    } else {
        if (m_textsDirty)
            makeTexts();
        paintBody(painter, style);
        paintTitle(painter, style);
        painter->setFont(style.font);
        // Bricks may have very many rows.
        const int first = firstRowIn(option->exposedRect);
        const int last = lastRowIn(option->exposedRect);
        for (int row = first; row <= last; ++row)
            paintRow(painter, style, row);
        paintPins(painter, style, first, last);
    }
    if (isDimmed)
        painter->setOpacity(1);
}

void BrickItem::paintFar(QPainter* painter, const CanvasStyle& style, qreal detail) const
{
    painter->setRenderHint(QPainter::Antialiasing, false);
    const QRectF box(QPointF(), m_size);
    if (m_isSelected) {
        const qreal border = qMin(2.5 / detail, qreal(40));
        painter->fillRect(box.adjusted(-border, -border, border, border), style.selection);
    }
    painter->fillRect(box, style.body);
    painter->fillRect(QRectF(0, 0, m_size.width(), titleHeight), titleBarColor());
    if (!m_badge.isEmpty())
        painter->fillRect(badgeBox(), levelColor(m_badgeLevel));
    if (detail < titleDetail)
        return;
    painter->setFont(style.titleFont);
    painter->setPen(style.titleText);
    if (m_textsDirty)
        const_cast<BrickItem*>(this)->makeTexts();
    painter->drawText(QPointF(10, titleHeight - 8), m_title);
}

void BrickItem::paintBody(QPainter* painter, const CanvasStyle& style) const
{
    const QRectF box(QPointF(), m_size);
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setPen(QPen(m_isSelected ? style.selection : style.border, m_isSelected ? 2.5 : 1));
    painter->setBrush(style.body);
    painter->drawRoundedRect(box, cornerRadius, cornerRadius);
}

void BrickItem::paintTitle(QPainter* painter, const CanvasStyle& style) const
{
    QPainterPath bar;
    const qreal width = m_size.width();
    bar.moveTo(1, titleHeight);
    bar.lineTo(1, cornerRadius);
    bar.quadTo(1, 1, cornerRadius, 1);
    bar.lineTo(width - cornerRadius, 1);
    bar.quadTo(width - 1, 1, width - 1, cornerRadius);
    bar.lineTo(width - 1, titleHeight);
    bar.closeSubpath();
    painter->fillPath(bar, titleBarColor());
    painter->setFont(style.titleFont);
    painter->setPen(style.titleText);
    painter->drawText(QPointF(10, titleHeight - 8), m_title);
    if (!m_badge.isEmpty())
        paintBadge(painter, style);
}

/// Each level has a shape of its own, for those who do not tell the colours apart.
void BrickItem::paintBadge(QPainter* painter, const CanvasStyle& style) const
{
    const QRectF box = badgeBox();
    painter->setPen(QPen(style.border, 1));
    painter->setBrush(levelColor(m_badgeLevel));
    if (m_badgeLevel == ProblemLevel::Warns) {
        const QPointF corners[]
            = { QPointF(box.center().x(), box.top()), box.bottomRight(), box.bottomLeft() };
        painter->drawPolygon(corners, 3);
        painter->setPen(Qt::black);
        painter->drawText(box.adjusted(0, 3, 0, 0), Qt::AlignCenter, QStringLiteral("!"));
        return;
    }
    const bool isNote = m_badgeLevel == ProblemLevel::Notes;
    if (isNote)
        painter->drawEllipse(box.adjusted(1, 1, -1, -1));
    else
        painter->drawRect(box.adjusted(1, 1, -1, -1));
    painter->setPen(Qt::white);
    painter->drawText(box, Qt::AlignCenter, isNote ? QStringLiteral("i") : QStringLiteral("!"));
}

void BrickItem::paintRow(QPainter* painter, const CanvasStyle& style, int row) const
{
    const RowText& text = m_texts.at(row);
    const bool isOutput = m_rows.at(row).kind == Row::Output;
    const qreal top = titleHeight + row * rowHeight;
    const qreal baseline = top + rowHeight / 2 + 4.5;
    const qreal right = m_size.width() - sideMargin;
    if (m_scene->isFocusRow(this, row)) {
        painter->setPen(QPen(style.selection, 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(QRectF(3, top + 1, m_size.width() - 6, rowHeight - 2));
    }
    painter->setPen(style.text);
    if (isOutput) {
        painter->drawText(QRectF(sideMargin, top, right - sideMargin, rowHeight),
            Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text.label);
        return;
    }
    painter->drawText(QPointF(sideMargin, baseline), text.label);
    if (text.swatch.isValid()) {
        painter->setPen(QPen(style.border, 1));
        painter->setBrush(text.swatch);
        painter->drawRect(QRectF(right - swatchWidth, top + 4.5, swatchWidth, rowHeight - 9));
    } else if (!text.value.isEmpty()) {
        painter->setPen(style.faintText);
        const qreal width = QFontMetricsF(style.font).horizontalAdvance(text.value);
        painter->drawText(QPointF(right - width, baseline), text.value);
    }
    if (text.isLocked) {
        // A small padlock between pin and label's start.
        painter->setPen(QPen(style.faintText, 1));
        painter->setBrush(style.faintText);
        const QPointF place(m_size.width() - sideMargin + 3, top + rowHeight / 2 - 1);
        painter->drawRect(QRectF(place, QSizeF(6, 5)));
        painter->setBrush(Qt::NoBrush);
        painter->drawArc(QRectF(place + QPointF(1, -3), QSizeF(4, 6)), 0, 180 * 16);
    }
}

void BrickItem::paintPins(QPainter* painter, const CanvasStyle& style, int first, int last) const
{
    for (int row = first; row <= last; ++row) {
        const Row& shown = m_rows.at(row);
        if (shown.kind == Row::Setting)
            continue;
        const QPointF centre(shown.kind == Row::Output ? m_size.width() : 0, rowCentre(row));
        const LinkFit fit = m_scene->getFit(shown.param);
        painter->setOpacity(fit == NoFit ? dimmedOpacity : 1);
        const qreal radius = fit == Fits ? pinRadius + 1.5 : pinRadius;
        painter->setPen(QPen(fit == Fits ? style.text : style.border, fit == Fits ? 1.5 : 1));
        painter->setBrush(m_texts.at(row).pin);
        if (shown.param->isArray())
            painter->drawRect(
                QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
        else
            painter->drawEllipse(centre, radius, radius);
    }
    painter->setOpacity(1);
}
