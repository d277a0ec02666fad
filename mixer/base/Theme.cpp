// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Theme.h"

#include "MixerStyle.h"

#include <QApplication>
#include <QToolTip>

namespace Theme {

namespace {

struct Colors {
    QRgb window, base, alternate, button, text, faint, mid, dark, light, highlight, link;
};

const Colors lightColors { 0xffeeeeec, 0xfffcfcfb, 0xfff3f3f1, 0xffe6e6e3, 0xff1f2123, 0xff8b8f92,
    0xffb9bab7, 0xff9a9b98, 0xffffffff, 0xff2f6fb5, 0xff1f5fa8 };
const Colors darkColors { 0xff2b2d30, 0xff1f2123, 0xff25272a, 0xff393c40, 0xffdfe1e4, 0xff84888d,
    0xff4a4d52, 0xff17181a, 0xff4a4d52, 0xff3d7cc4, 0xff79b0ea };

/// The desktop's own colours, before ours are set for the first time.
const QPalette& desktopPalette()
{
    static const QPalette palette = QGuiApplication::palette();
    return palette;
}

} // namespace

QString toWord(Mode mode)
{
    switch (mode) {
    case Mode::Light:
        return QStringLiteral("light");
    case Mode::Dark:
        return QStringLiteral("dark");
    case Mode::System:
        break;
    }
    return QStringLiteral("system");
}

Mode fromWord(const QString& word)
{
    if (word == QLatin1String("light"))
        return Mode::Light;
    return word == QLatin1String("dark") ? Mode::Dark : Mode::System;
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightness()
        > palette.color(QPalette::Window).lightness();
}

QPalette palette(bool dark)
{
    const Colors& colors = dark ? darkColors : lightColors;
    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternate);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.faint);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::Mid, colors.mid);
    palette.setColor(QPalette::Midlight, colors.button);
    palette.setColor(QPalette::Dark, colors.dark);
    palette.setColor(QPalette::Light, colors.light);
    palette.setColor(QPalette::Shadow, dark ? 0xff0d0e0f : 0xff707070);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::LinkVisited, colors.link);
    for (const QPalette::ColorRole role :
        { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
        palette.setColor(QPalette::Disabled, role, colors.faint);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.mid);
    return palette;
}

void apply(Mode mode)
{
    const bool desktopIsDark = isDark(desktopPalette());
    if (!qobject_cast<MixerStyle*>(QApplication::style()))
        QApplication::setStyle(new MixerStyle);
    const QPalette colors = palette(mode == Mode::Dark || (mode == Mode::System && desktopIsDark));
    QApplication::setPalette(colors);
    QToolTip::setPalette(colors);
}

} // namespace Theme
