// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NumberField.h"

#include "NumberExpression.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFrame>

#include <cmath>

namespace {

/// Limits that are further apart stand for "any number".
const double widestSlider = 1000;
/// With Shift a drag is finer by this.
const double fineFactor = 0.1;
const double coarseSteps = 10;

/// The value with as many decimals as the step has: a drag leaves numbers that can be read.
double roundedTo(double step, double value)
{
    if (!(step > 0) || !std::isfinite(value))
        return value;
    // A step that is a power of ten but for its last bits needs no decimal more.
    const double decimals = std::ceil(-std::log10(step) - 1e-3);
    if (decimals <= 0)
        return std::round(value);
    const double scale = std::pow(10, decimals);
    return std::round(value * scale) / scale;
}

} // namespace

NumberField::NumberField(QWidget* parent)
    : QLineEdit(parent)
{
    setReadOnly(true);
    setFrame(false);
    setTextMargins(6, 2, 6, 2);
    setCursor(Qt::SizeHorCursor);
    setMinimumWidth(56);
    // The ground is painted here, below the text.
    QPalette clear;
    clear.setColor(QPalette::Base, Qt::transparent);
    setPalette(clear);
    connect(this, &QLineEdit::returnPressed, this, &NumberField::finishTyping);
}

void NumberField::showValue(double value, const QString& text)
{
    m_value = value;
    m_text = text;
    if (!m_typing)
        setText(text);
    update();
}

void NumberField::setLimits(double minimum, double maximum)
{
    m_minimum = minimum;
    m_maximum = maximum;
    update();
}

bool NumberField::hasSlider() const
{
    return m_maximum > m_minimum && m_maximum - m_minimum <= widestSlider;
}

double NumberField::rounded(double value) const
{
    return m_whole ? std::round(value) : value;
}

void NumberField::mousePressEvent(QMouseEvent* event)
{
    if (m_typing || event->button() != Qt::LeftButton) {
        QLineEdit::mousePressEvent(event);
        return;
    }
    m_pressed = true;
    m_pressX = m_lastX = event->x();
    event->accept();
}

void NumberField::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressed) {
        QLineEdit::mouseMoveEvent(event);
        return;
    }
    if (!m_dragging) {
        if (std::abs(event->x() - m_pressX) < QApplication::startDragDistance() / 2)
            return;
        m_dragging = true;
        m_dragValue = m_value;
        emit dragStarted();
    }
    const double perPixel = hasSlider() ? (m_maximum - m_minimum) / qMax(1, width())
                                        : qMax(m_step, std::abs(m_dragValue) * 0.01);
    const double factor = event->modifiers() & Qt::ShiftModifier ? fineFactor : 1;
    m_dragValue += (event->x() - m_lastX) * perPixel * factor;
    // The place of the hand is kept as it is: else fine steps would be lost.
    double value = roundedTo(perPixel * factor, m_dragValue);
    if (hasSlider()) {
        m_dragValue = qBound(m_minimum, m_dragValue, m_maximum);
        value = qBound(m_minimum, value, m_maximum);
    }
    m_lastX = event->x();
    emit dragged(rounded(value));
}

void NumberField::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_pressed) {
        QLineEdit::mouseReleaseEvent(event);
        return;
    }
    m_pressed = false;
    if (m_dragging)
        endDrag(true);
    else
        startTyping();
}

void NumberField::endDrag(bool accepted)
{
    m_pressed = false;
    if (!m_dragging)
        return;
    m_dragging = false;
    emit dragFinished(accepted);
}

void NumberField::startTyping()
{
    if (!isEnabled())
        return;
    m_typing = true;
    setReadOnly(false);
    setCursor(Qt::IBeamCursor);
    setFocus(Qt::OtherFocusReason);
    selectAll();
}

void NumberField::finishTyping()
{
    if (!m_typing)
        return;
    const QString typed = text();
    const bool isNew = isModified() && typed != m_text;
    stopTyping();
    if (!isNew)
        return;
    double value = 0;
    QString cause;
    if (!evaluateNumber(typed, &value, &cause)) {
        emit refused(cause);
        return;
    }
    emit entered(rounded(value));
}

void NumberField::stopTyping()
{
    m_typing = false;
    setReadOnly(true);
    setCursor(Qt::SizeHorCursor);
    setText(m_text);
    deselect();
}

void NumberField::stepBy(double steps)
{
    // What was typed counts first.
    finishTyping();
    const double step = m_whole ? qMax(1.0, m_step) : m_step;
    emit entered(rounded(m_value + steps * step));
}

void NumberField::keyPressEvent(QKeyEvent* event)
{
    if (m_dragging && event->key() == Qt::Key_Escape) {
        endDrag(false);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Up:
        stepBy(1);
        return;
    case Qt::Key_Down:
        stepBy(-1);
        return;
    case Qt::Key_PageUp:
        stepBy(coarseSteps);
        return;
    case Qt::Key_PageDown:
        stepBy(-coarseSteps);
        return;
    case Qt::Key_Escape:
        if (m_typing && isModified()) {
            stopTyping();
            startTyping();
            return;
        }
        break;
    default:
        break;
    }
    if (!m_typing && !event->text().isEmpty() && event->text().at(0).isPrint())
        startTyping();
    QLineEdit::keyPressEvent(event);
}

void NumberField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason
        || event->reason() == Qt::ShortcutFocusReason)
        startTyping();
}

void NumberField::focusOutEvent(QFocusEvent* event)
{
    endDrag(true);
    // A menu on the field is no end of typing.
    if (event->reason() != Qt::PopupFocusReason)
        finishTyping();
    QLineEdit::focusOutEvent(event);
}

void NumberField::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_typing)
        QLineEdit::contextMenuEvent(event);
    else
        event->ignore(); // the row's menu
}

void NumberField::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
        painter.setBrush(QApplication::palette().color(QPalette::Base));
        painter.drawRoundedRect(box, 3, 3);
        if (hasSlider() && !m_typing && !m_text.isEmpty()) {
            QColor fill = palette().color(QPalette::Highlight);
            fill.setAlpha(isEnabled() ? 90 : 40);
            const double part = qBound(0.0, (m_value - m_minimum) / (m_maximum - m_minimum), 1.0);
            QRectF bar = box.adjusted(1, 1, -1, -1);
            bar.setWidth(bar.width() * part);
            painter.setPen(Qt::NoPen);
            painter.setBrush(fill);
            painter.drawRoundedRect(bar, 2, 2);
        }
    }
    // The line edit paints its text on what is there.
    QLineEdit::paintEvent(event);
}
