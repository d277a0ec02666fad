// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PendingEdits.h"

#include <QApplication>
#include <QLineEdit>
#include <QPointer>

void commitPendingEdits()
{
    const QPointer<QWidget> field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (!field)
        return;
    // Every field takes its text when the keyboard leaves it.
    field->clearFocus();
    // A title on the canvas is gone now, and has passed the keyboard on.
    if (field && field->isVisible() && !QApplication::focusWidget())
        field->setFocus(Qt::OtherFocusReason);
}
