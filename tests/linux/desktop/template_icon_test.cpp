#include "shells/linux/desktop/template_icon.h"

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

QImage filled(const QColor& color) {
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

TEST(TemplateIconTest, TintKeepsTheShapeAndTakesTheColour) {
    QImage shape = filled(Qt::black);
    shape.setPixelColor(1, 1, QColor(0, 0, 0, 0));
    shape.setPixelColor(2, 2, QColor(200, 100, 0, 128));
    const QImage result = tinted(shape, QColor(10, 200, 30));
    EXPECT_EQ(result.pixelColor(0, 0), QColor(10, 200, 30));
    EXPECT_EQ(result.pixelColor(1, 1).alpha(), 0);
    EXPECT_EQ(result.pixelColor(2, 2).alpha(), 128);
    EXPECT_NEAR(result.pixelColor(2, 2).green(), 200, 2);
}

TEST(TemplateIconTest, DarkGroundGetsALightIconAndLightGroundADarkOne) {
    EXPECT_GT(contrastingColor(filled(QColor(0x30, 0x30, 0x30))).lightness(), 200);
    EXPECT_LT(contrastingColor(filled(QColor(0xF6, 0xF5, 0xF4))).lightness(), 60);
}

TEST(TemplateIconTest, OneOddCornerDecidesNothing) {
    QImage background = filled(Qt::black);
    background.setPixelColor(3, 0, Qt::white);
    EXPECT_GT(contrastingColor(background).lightness(), 200);
}

} // namespace
} // namespace kestrel::linux_shell
