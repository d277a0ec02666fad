// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

/// Colours and fonts of the canvas, made from a palette so that they go with a light and with a
/// dark desktop.
struct CanvasStyle {
    explicit CanvasStyle(const QPalette& palette = QPalette());

    /// A title bar in the spirit of a link type's colour.
    QColor titleColor(const QColor& typeColor) const;

    bool isDark;
    QColor canvas;
    QColor grid;
    QColor body;
    QColor border;
    QColor text;
    QColor faintText;
    QColor titleText;
    QColor selection;
    QColor frame;
    QColor frameTitle;
    QColor refusal;
    QColor hint;
    QColor hintText;
    QFont font;
    QFont titleFont;
};
