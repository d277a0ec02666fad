// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LineIcon.h"
#include "Theme.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <gtest/gtest.h>

namespace {

QImage imageOf(LineIcon::Name name, int size, QIcon::Mode mode = QIcon::Normal)
{
    return LineIcon::make(name).pixmap(size, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Pixels that are more than half covered.
int countDrawn(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 127;
    return count;
}

/// The colour of the pixel that is covered most.
QColor colorOf(const QImage& image)
{
    QRgb found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > qAlpha(found))
                found = image.pixel(x, y);
    return QColor(found);
}

class LineIcons : public testing::Test
{
protected:
    ~LineIcons() override { QApplication::setPalette(m_before); }

    const QPalette m_before = QApplication::palette();
};

} // namespace

TEST_F(LineIcons, eachIsDrawnInTheColourOfTextAtAnySizeInBothThemes)
{
    for (const bool isDark : { false, true }) {
        const QPalette palette = Theme::palette(isDark);
        QApplication::setPalette(palette);
        for (int name = LineIcon::Lock; name <= LineIcon::Plus; ++name) {
            const auto icon = static_cast<LineIcon::Name>(name);
            for (const int size : { 16, 32, 48 }) {
                const QImage image = imageOf(icon, size);
                EXPECT_EQ(image.size(), QSize(size, size));
                // A line of 1.3 units, some ten units long at least.
                EXPECT_GT(countDrawn(image), size * size / 26) << name << ' ' << size;
            }
            EXPECT_EQ(colorOf(imageOf(icon, 48)).name(),
                palette.color(QPalette::Active, QPalette::ButtonText).name())
                << name;
            EXPECT_EQ(colorOf(imageOf(icon, 48, QIcon::Disabled)).name(),
                palette.color(QPalette::Disabled, QPalette::ButtonText).name())
                << name;
        }
    }
}

TEST_F(LineIcons, noTwoKindsLookTheSame)
{
    for (int a = LineIcon::Lock; a <= LineIcon::Plus; ++a)
        for (int b = a + 1; b <= LineIcon::Plus; ++b) {
            const bool areFolders = a == LineIcon::Folder && b == LineIcon::Open;
            EXPECT_EQ(imageOf(static_cast<LineIcon::Name>(a), 32)
                    == imageOf(static_cast<LineIcon::Name>(b), 32),
                areFolders)
                << a << ' ' << b;
        }
}
