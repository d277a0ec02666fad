// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "InlineEditor.h"

#include <QApplication>
#include <QKeyEvent>

InlineEditor::InlineEditor(const QString& text, const QRect& place, QWidget* parent)
    : QLineEdit(text, parent)
{
    setObjectName(QStringLiteral("titleEditor"));
    setAccessibleName(tr("Title"));
    setGeometry(place.adjusted(0, 0, 0, qMax(0, sizeHint().height() - place.height())));
    selectAll();
    show();
    setFocus(Qt::OtherFocusReason);
}

void InlineEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        end(false);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        end(true);
    else
        QLineEdit::keyPressEvent(event);
}

void InlineEditor::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Its own menu takes the focus only for a while.
    if (event->reason() != Qt::PopupFocusReason)
        end(true);
}

void InlineEditor::end(bool isCommitted)
{
    if (m_isOver)
        return;
    m_isOver = true;
    // Whoever took the keyboard keeps it.
    const bool isFocusFree = hasFocus() || !QApplication::focusWidget();
    if (isCommitted)
        emit committed(text());
    hide();
    deleteLater();
    if (isFocusFree && parentWidget())
        parentWidget()->setFocus();
}
