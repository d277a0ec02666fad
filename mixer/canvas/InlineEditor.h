// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLineEdit>

/// A line that is edited in its place on the canvas: Return or leaving it takes the text over,
/// Escape does not. It deletes itself.
class InlineEditor : public QLineEdit
{
    Q_OBJECT

public:
    InlineEditor(const QString& text, const QRect& place, QWidget* parent);

    /// Takes the text over and ends.
    void commit() { end(true); }

signals:
    void committed(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void end(bool isCommitted);

    bool m_isOver = false;
};
