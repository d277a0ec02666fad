// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MixerStyle.h"

#include <QImage>
#include <QPainter>
#include <QStyleOptionMenuItem>

#include <gtest/gtest.h>

namespace {

/// True when something is seen of a separator that begins at a place of a menu.
bool isSeen(const QStyle& style, int top, qreal scale)
{
    QStyleOptionMenuItem option;
    option.menuItemType = QStyleOptionMenuItem::Separator;
    const QSize size = style.sizeFromContents(QStyle::CT_MenuItem, &option, QSize(80, 0), nullptr);
    option.rect = QRect(QPoint(0, top), QSize(80, size.height()));
    QImage image(200, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    // Menus paint each item through its own clip.
    painter.setClipRegion(QRegion(option.rect));
    style.drawControl(QStyle::CE_MenuItem, &option, &painter, nullptr);
    painter.end();
    const int middle = int(40 * scale);
    for (int y = 0; y < image.height(); ++y)
        if (image.pixelColor(middle, y) != QColor(Qt::white))
            return true;
    return false;
}

TEST(MixerStyle, separatorsOfMenusAreSeenAtAnyScale)
{
    const MixerStyle style;
    for (const qreal scale : { 1.0, 100 / 96.0, 1.25, 1.5, 1.75, 2.0 })
        for (int top = 0; top < 60; ++top)
            EXPECT_TRUE(isSeen(style, top, scale)) << top << " at " << scale;
}

} // namespace
