#include "shells/linux/desktop/appearance/contrast.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrel::linux_shell {
namespace {

TEST(ContrastTest, ContrastIsThatOfTheGuidelines) {
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::white), 1, 0.001);
    // Known pairs: the grey that just passes on white, and the one that just does not.
    EXPECT_NEAR(contrastRatio(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::white, QColor(0x77, 0x77, 0x77)), 4.48, 0.01);
}

QColor mixture(const QColor& under, const QColor& over, double share) {
    const auto channel = [share](int below, int above) {
        return static_cast<int>(below + (above - below) * share + 0.5);
    };
    return {channel(under.red(), over.red()), channel(under.green(), over.green()),
            channel(under.blue(), over.blue())};
}

TEST(ContrastTest, TheLeastShareIsEnoughAndLittleLessIsNot) {
    struct Case {
        QColor under;
        QColor over;
        QColor against;
    };
    const std::vector<Case> table{
        {Qt::white, Qt::black, Qt::white},
        {QColor(0x2B, 0x2B, 0x2B), QColor(0xF2, 0xF2, 0xF2), QColor(0x2B, 0x2B, 0x2B)},
        {QColor(0xEF, 0xF0, 0xF1), QColor(0x23, 0x26, 0x29), QColor(0xEF, 0xF0, 0xF1)},
        {QColor(0x3D, 0xAE, 0xE9), Qt::black, Qt::white},
        {QColor(0x3D, 0xAE, 0xE9), QColor(0x23, 0x26, 0x29), QColor(0xEF, 0xF0, 0xF1)},
    };
    for (const auto& [under, over, against] : table) {
        for (const double ratio : {visibleShape, readableText}) {
            const double share = leastShare(under, over, against, ratio);
            EXPECT_GE(contrastRatio(mixture(under, over, share), against), ratio)
                << under.name().toStdString() << ' ' << share;
            EXPECT_LT(contrastRatio(mixture(under, over, share - 0.03), against), ratio)
                << under.name().toStdString() << ' ' << share;
        }
    }
}

TEST(ContrastTest, TheLeastShareIsNoneWhereNoneIsNeededAndAllWhereNothingHelps) {
    EXPECT_EQ(leastShare(Qt::black, Qt::white, Qt::white, 3), 0);
    const QColor gray(0x80, 0x80, 0x80);
    EXPECT_EQ(leastShare(gray, QColor(0x90, 0x90, 0x90), gray, 4.5), 1);
}

} // namespace
} // namespace kestrel::linux_shell
