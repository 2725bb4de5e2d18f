#include "shells/linux/desktop/kwin_outputs.h"

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

QString report(const char* screens) {
    return QStringLiteral("Screens\n=======\nActive screen follows mouse:  yes\n") +
           QString::fromLatin1(screens) + QStringLiteral("\nCompositing\n===========\n");
}

TEST(KWinOutputsTest, ReadsEachOutputsGeometryAndScale) {
    const auto outputs = kwinOutputs(report("Screen 0:\n---------\nName: A\nEnabled: 1\n"
                                            "Geometry: 0,0,1600x900\nScale: 1.5\n"
                                            "Screen 1:\n---------\nName: B\nEnabled: 1\n"
                                            "Geometry: 1600,-20,1280x720\nScale: 2\n"));
    ASSERT_EQ(outputs.size(), 2);
    EXPECT_EQ(outputs[0].geometry, QRect(0, 0, 1600, 900));
    EXPECT_EQ(outputs[0].scale, 1.5);
    EXPECT_EQ(outputs[1].geometry, QRect(1600, -20, 1280, 720));
    EXPECT_EQ(outputs[1].scale, 2);
}

TEST(KWinOutputsTest, TextThatIsNoReportHasNone) {
    for (const char* text : {"", "Geometry: 0,0,1600x900\n", "Geometry: 0,0,0x900\nScale: 1\n",
                             "Geometry: 0,0,9x9\nScale: 0\n", "Geometry: a,b,cxd\nScale: 1\n",
                             "Geometry: 0,0,9x9\nScale: -2\n"})
        EXPECT_TRUE(kwinOutputs(report(text)).isEmpty()) << text;
}

TEST(KWinOutputsTest, PlaceIsDividedByItsOutputsScale) {
    const QList<KWinOutput> outputs{{QRect(0, 0, 1600, 900), 2}};
    EXPECT_EQ(placeOnOutputs(QPoint(2755, 1756), outputs, 1), QPoint(1378, 878));
    EXPECT_EQ(placeOnOutputs(QPoint(2755, 1756), outputs, 2), QPoint(2755, 1756));
}

TEST(KWinOutputsTest, EachOfSeveralOutputsHasItsOwnScale) {
    const QList<KWinOutput> outputs{{QRect(0, 0, 1000, 900), 1}, {QRect(1000, 0, 800, 600), 2}};
    EXPECT_EQ(placeOnOutputs(QPoint(990, 10), outputs, 1), QPoint(990, 10));
    EXPECT_EQ(placeOnOutputs(QPoint(3000, 10), outputs, 1), QPoint(1500, 5));
}

TEST(KWinOutputsTest, PlaceBeyondAllOutputsIsNone) {
    EXPECT_EQ(placeOnOutputs(QPoint(5000, 10), {{QRect(0, 0, 1600, 900), 2}}, 1), std::nullopt);
    EXPECT_EQ(placeOnOutputs(QPoint(1, 1), {}, 1), std::nullopt);
}

} // namespace
} // namespace kestrel::linux_shell
