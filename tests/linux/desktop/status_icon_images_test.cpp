#include "shells/linux/desktop/status_icon_images.h"

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

/// A square that fills all that it is given.
QList<QImage> filledIcons(const QColor& color) {
    return statusIconImages(
        [](int pixels) {
            QImage square(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
            square.fill(Qt::black);
            return square;
        },
        color);
}

TEST(StatusIconImagesTest, HasNoneWithoutADrawing) {
    EXPECT_TRUE(statusIconImages([](int) { return QImage(); }, Qt::white).isEmpty());
}

TEST(StatusIconImagesTest, DrawsTheSizesThatPanelsShow) {
    QList<int> sides;
    for (const QImage& image : filledIcons(Qt::white)) {
        EXPECT_EQ(image.width(), image.height());
        sides.append(image.width());
    }
    EXPECT_EQ(sides, (QList{16, 22, 24, 32, 48, 64}));
}

TEST(StatusIconImagesTest, LargerOnesHaveABorderAsTheirNeighboursHave) {
    for (const QImage& image : filledIcons(Qt::white)) {
        const bool isSmallest = image.width() == 16;
        EXPECT_EQ(image.pixelColor(0, 0).alpha() != 0, isSmallest) << image.width();
        EXPECT_NE(image.pixelColor(image.width() / 2, image.width() / 2).alpha(), 0);
    }
}

TEST(StatusIconImagesTest, TheShapeTakesTheColour) {
    EXPECT_EQ(filledIcons(Qt::white).first().pixelColor(8, 8), QColor(Qt::white));
}

} // namespace
} // namespace kestrel::linux_shell
