// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MixerStyle.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

QColor outlineOf(const QStyleOption* option)
{
    const bool hasFocus = option->state & QStyle::State_HasFocus;
    return option->palette.color(hasFocus ? QPalette::Highlight : QPalette::Mid);
}

void paintField(const QStyleOption* option, QPainter* painter, bool filled)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(outlineOf(option));
    painter->setBrush(filled ? option->palette.brush(QPalette::Base) : QBrush(Qt::NoBrush));
    painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter->restore();
}

void paintSwitch(const QStyleOption* option, QPainter* painter)
{
    const bool isOn = option->state & QStyle::State_On;
    const bool isMixed = option->state & QStyle::State_NoChange;
    const bool isEnabled = option->state & QStyle::State_Enabled;
    QRectF box(option->rect);
    const qreal side = qMin(box.width(), box.height()) - 1;
    box = QRectF(box.center() - QPointF(side, side) / 2, QSizeF(side, side));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool isFilled = isEnabled && (isOn || isMixed);
    const bool isLit
        = isFilled || option->state & (QStyle::State_HasFocus | QStyle::State_MouseOver);
    painter->setPen(
        option->palette.color(isLit && isEnabled ? QPalette::Highlight : QPalette::Mid));
    painter->setBrush(option->palette.brush(isFilled ? QPalette::Highlight : QPalette::Base));
    painter->drawRoundedRect(box, 3, 3);
    if (isOn || isMixed) {
        QPainterPath sign;
        if (isMixed) {
            sign.moveTo(0.28, 0.5);
            sign.lineTo(0.72, 0.5);
        } else {
            sign.moveTo(0.25, 0.52);
            sign.lineTo(0.43, 0.7);
            sign.lineTo(0.76, 0.3);
        }
        painter->translate(box.topLeft());
        painter->scale(side, side);
        painter->setPen(QPen(option->palette.color(
                                 isEnabled ? QPalette::HighlightedText : QPalette::PlaceholderText),
            0.13, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        painter->drawPath(sign);
    }
    painter->restore();
}

void paintCross(const QStyleOption* option, QPainter* painter)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRectF box(option->rect);
    const bool isHot = option->state & QStyle::State_MouseOver;
    if (isHot) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(option->palette.color(QPalette::Mid));
        painter->drawRoundedRect(box.adjusted(1, 1, -1, -1), 3, 3);
    }
    painter->setPen(QPen(option->palette.color(isHot ? QPalette::Text : QPalette::PlaceholderText),
        1.3, Qt::SolidLine, Qt::RoundCap));
    const QPointF centre = box.center();
    const qreal arm = qMin(box.width(), box.height()) * 0.22;
    painter->drawLine(centre + QPointF(-arm, -arm), centre + QPointF(arm, arm));
    painter->drawLine(centre + QPointF(-arm, arm), centre + QPointF(arm, -arm));
    painter->restore();
}

/// Separators of menus: room for the line, and how far it keeps off the menu's sides.
const int separatorHeight = 7;
const int separatorMargin = 6;
const qreal separatorOpacity = 0.3;

bool isPlainSeparator(const QStyleOption* option)
{
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    return item && item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty();
}

} // namespace

MixerStyle::MixerStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

void MixerStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
    QPainter* painter, const QWidget* widget) const
{
    switch (element) {
    case PE_PanelLineEdit: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (!frame || frame->lineWidth <= 0)
            break;
        paintField(option, painter, true);
        return;
    }
    case PE_FrameLineEdit:
        paintField(option, painter, false);
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        paintSwitch(option, painter);
        return;
    case PE_IndicatorTabClose:
        paintCross(option, painter);
        return;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void MixerStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
    const QWidget* widget) const
{
    if (element != CE_MenuItem || !isPlainSeparator(option)) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    // Fusion gives it two pixels, out of which rounding takes the line at most scales.
    QColor color = option->palette.color(QPalette::WindowText);
    color.setAlphaF(separatorOpacity);
    const QRectF room = QRectF(option->rect).adjusted(separatorMargin, 0, -separatorMargin, 0);
    painter->fillRect(QRectF(room.left(), option->rect.center().y(), room.width(), 1), color);
}

QSize MixerStyle::sizeFromContents(
    ContentsType type, const QStyleOption* option, const QSize& size, const QWidget* widget) const
{
    if (type == CT_MenuItem && isPlainSeparator(option))
        return QSize(size.width(), separatorHeight);
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}
