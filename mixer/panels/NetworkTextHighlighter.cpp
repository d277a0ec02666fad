// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkTextHighlighter.h"

#include "Theme.h"

#include <QApplication>

namespace {

bool isWordStart(const QString& text)
{
    return !text.isEmpty() && text.at(0).isLetter();
}

} // namespace

void NetworkTextHighlighter::highlightBlock(const QString& text)
{
    if (text.isEmpty())
        return;
    const QPalette palette = QApplication::palette();
    const bool dark = Theme::isDark(palette);
    if (text.startsWith(QLatin1Char('#'))) {
        setFormat(0, text.size(), palette.color(QPalette::PlaceholderText));
        return;
    }
    if (isWordStart(text)) {
        QTextCharFormat keyword;
        keyword.setFontWeight(QFont::DemiBold);
        setFormat(0, text.indexOf(QLatin1Char(' ')), keyword);
    }
    const QColor name = dark ? QColor(0x9c, 0xc8, 0x8a) : QColor(0x2e, 0x6b, 0x2a);
    const QColor placeholder = dark ? QColor(0xe3, 0xb4, 0x6a) : QColor(0x96, 0x5a, 0x00);
    int from = 0;
    for (;;) {
        const int open = text.indexOf(QLatin1Char('"'), from);
        const int close = open < 0 ? -1 : text.indexOf(QLatin1Char('"'), open + 1);
        if (close < 0)
            break;
        setFormat(open, close - open + 1, name);
        from = close + 1;
    }
    for (int at = 0; (at = text.indexOf(QLatin1Char('('), at)) > 0; ++at) {
        const QChar mark = text.at(at - 1);
        const int end = text.indexOf(QLatin1Char(')'), at);
        if (end > 0 && (mark == QLatin1Char('$') || mark == QLatin1Char('%')))
            setFormat(at - 1, end - at + 2, placeholder);
    }
}
