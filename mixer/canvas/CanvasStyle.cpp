// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasStyle.h"

namespace {

/// In units of the canvas, like the rows that they stand in.
const int fontPixels = 12;

QColor mix(const QColor& a, const QColor& b, qreal part)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * part,
        a.greenF() + (b.greenF() - a.greenF()) * part, a.blueF() + (b.blueF() - a.blueF()) * part);
}

} // namespace

CanvasStyle::CanvasStyle(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Window);
    text = palette.color(QPalette::WindowText);
    isDark = window.lightness() < text.lightness();
    const QColor base = palette.color(QPalette::Base);
    canvas = isDark ? mix(window, Qt::black, 0.25) : mix(window, Qt::black, 0.09);
    grid = mix(canvas, text, isDark ? 0.05 : 0.035);
    body = isDark ? mix(window, Qt::white, 0.06) : mix(base, window, 0.15);
    border = isDark ? mix(canvas, Qt::black, 0.5) : mix(canvas, Qt::black, 0.35);
    faintText = mix(text, body, 0.4);
    titleText = isDark ? QColor(Qt::white) : QColor(0x18, 0x18, 0x18);
    selection = palette.color(QPalette::Highlight);
    // Some palettes have a highlight that a selected brick's border would drown in.
    if (qAbs(selection.lightness() - canvas.lightness()) < 40)
        selection = isDark ? selection.lighter(190) : selection.darker(160);
    frame = mix(canvas, text, isDark ? 0.09 : 0.08);
    frameTitle = mix(text, canvas, 0.25);
    refusal = isDark ? QColor(0xe0, 0x60, 0x50) : QColor(0xb8, 0x2c, 0x20);
    hint = isDark ? QColor(0x10, 0x10, 0x10, 0xe8) : QColor(0xff, 0xff, 0xff, 0xf0);
    hintText = isDark ? QColor(0xf4, 0xf4, 0xf4) : QColor(0x18, 0x18, 0x18);
    font.setPixelSize(fontPixels);
    titleFont = font;
    titleFont.setBold(true);
}

QColor CanvasStyle::titleColor(const QColor& typeColor) const
{
    return isDark ? mix(typeColor, QColor(0x20, 0x20, 0x20), 0.5) : mix(typeColor, body, 0.4);
}
