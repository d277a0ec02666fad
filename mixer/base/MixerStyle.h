// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProxyStyle>

/// The program's style: Qt's own "Fusion", with outlines of fields and switches that are seen on
/// dark ground too, quieter crosses on tabs, and separators of menus that are seen at any scale.
class MixerStyle : public QProxyStyle
{
    Q_OBJECT

public:
    MixerStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
        const QWidget* widget) const override;
};
