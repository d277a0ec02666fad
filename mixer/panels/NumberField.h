// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLineEdit>

/// A number that is changed by dragging sideways, by typing a number or arithmetic, or by the
/// arrow keys. With limits that make sense as a slider it shows where between them the value is.
class NumberField : public QLineEdit
{
    Q_OBJECT

public:
    explicit NumberField(QWidget* parent = nullptr);

    /// Shows a value; an empty text stands for several different ones. Typing goes on undisturbed.
    void showValue(double value, const QString& text);
    /// Limits for dragging; typed values may go beyond them. Without sense for limits that are too
    /// far apart to be a slider.
    void setLimits(double minimum, double maximum);
    void setWhole(bool whole) { m_whole = whole; }
    /// Change of value for one step of the keys, or one pixel without a slider.
    void setStep(double step) { m_step = step; }

signals:
    void dragStarted();
    void dragged(double value);
    /// The drag is over; false when it is to be taken back.
    void dragFinished(bool accepted);
    void entered(double value);
    /// Something was typed that is no number.
    void refused(const QString& cause);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool hasSlider() const;
    void startTyping();
    void finishTyping();
    void stopTyping();
    void endDrag(bool accepted);
    double rounded(double value) const;
    void stepBy(double steps);

    QString m_text;
    double m_value = 0;
    double m_minimum = 0;
    double m_maximum = 0;
    double m_step = 0.01;
    bool m_whole = false;
    bool m_typing = false;
    bool m_pressed = false;
    bool m_dragging = false;
    int m_pressX = 0;
    int m_lastX = 0;
    double m_dragValue = 0;
};
