// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FirstFocus.h"

#include <QWidget>

bool focusFirstIn(QWidget* top)
{
    QWidget* widget = top;
    do {
        if (widget->isVisible() && widget->isEnabled() && widget->focusPolicy() & Qt::TabFocus) {
            widget->setFocus(Qt::TabFocusReason);
            return true;
        }
        do
            widget = widget->nextInFocusChain();
        while (widget && widget != top && !top->isAncestorOf(widget));
    } while (widget && widget != top);
    return false;
}
