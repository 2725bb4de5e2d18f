#include "shells/linux/desktop/status_icon_images.h"

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

/// A square that fills all that it is given.
StatusIconImages filled() {
    StatusIconImages images([](const Image&, int pixels) {
        QImage square(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        square.fill(Qt::black);
        return square;
    });
    images.setImage(std::make_shared<Image>());
    return images;
}

TEST(StatusIconImagesTest, HasNoneWithoutAnImage) {
    const StatusIconImages images([](const Image&, int) { return QImage(); });
    EXPECT_TRUE(images.isEmpty());
    EXPECT_TRUE(images.drawn(Qt::white).isEmpty());
}

TEST(StatusIconImagesTest, DrawsTheSizesThatPanelsShow) {
    QList<int> sides;
    for (const QImage& image : filled().drawn(Qt::white)) {
        EXPECT_EQ(image.width(), image.height());
        sides.append(image.width());
    }
    EXPECT_EQ(sides, (QList{16, 22, 24, 32, 48, 64}));
}

TEST(StatusIconImagesTest, LargerOnesHaveABorderAsTheirNeighboursHave) {
    for (const QImage& image : filled().drawn(Qt::white)) {
        const bool isSmallest = image.width() == 16;
        EXPECT_EQ(image.pixelColor(0, 0).alpha() != 0, isSmallest) << image.width();
        EXPECT_NE(image.pixelColor(image.width() / 2, image.width() / 2).alpha(), 0);
    }
}

TEST(StatusIconImagesTest, OnlyATemplateTakesTheColour) {
    auto images = filled();
    EXPECT_EQ(images.drawn(Qt::white).first().pixelColor(8, 8), QColor(Qt::black));
    images.setIsTemplate(true);
    EXPECT_EQ(images.drawn(Qt::white).first().pixelColor(8, 8), QColor(Qt::white));
}

} // namespace
} // namespace kestrel::linux_shell
