// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProxyStyle>

/// The program's style: Qt's own "Fusion", with outlines of fields and switches that are seen on
/// dark ground too, and quieter crosses on tabs.
class MixerStyle : public QProxyStyle
{
    Q_OBJECT

public:
    MixerStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
};
