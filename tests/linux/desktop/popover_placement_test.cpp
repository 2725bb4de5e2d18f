#include "shells/linux/desktop/popover_placement.h"

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

constexpr QSize size(240, 223);
constexpr QRect screen(0, 0, 1280, 800);

/// A screen with a panel of 30 pixels along one edge.
constexpr ScreenArea topPanel{screen, QRect(0, 30, 1280, 770)};
constexpr ScreenArea bottomPanel{screen, QRect(0, 0, 1280, 770)};
constexpr ScreenArea leftPanel{screen, QRect(30, 0, 1250, 800)};
constexpr ScreenArea rightPanel{screen, QRect(0, 0, 1250, 800)};
constexpr ScreenArea unknownPanel{screen, screen};

TEST(PopoverPlacementTest, HangsUnderAnIconAtTheTop) {
    const QRect placed = placedAtIcon(QRect(600, 4, 22, 22), size, topPanel);
    EXPECT_EQ(placed.size(), size);
    EXPECT_NEAR(placed.center().x(), QRect(600, 4, 22, 22).center().x(), 1);
    EXPECT_EQ(placed.top(), 34);
}

TEST(PopoverPlacementTest, StandsOnAnIconAtTheBottom) {
    const QRect placed = placedAtIcon(QRect(600, 774, 22, 22), size, bottomPanel);
    EXPECT_EQ(placed.top() + placed.height(), 766);
}

TEST(PopoverPlacementTest, StandsBesideAnIconAtTheLeftOrRight) {
    const QRect left = placedAtIcon(QRect(4, 400, 22, 22), size, leftPanel);
    EXPECT_EQ(left.left(), 34);
    EXPECT_NEAR(left.center().y(), 411, 1);
    const QRect right = placedAtIcon(QRect(1254, 400, 22, 22), size, rightPanel);
    EXPECT_EQ(right.left() + right.width(), 1246);
}

TEST(PopoverPlacementTest, StaysInsideTheScreenAtEveryCorner) {
    const QRect inside = screen.adjusted(4, 4, -4, -4);
    for (const auto& area : {topPanel, bottomPanel, leftPanel, rightPanel, unknownPanel}) {
        for (const QPoint corner :
             {QPoint(0, 0), QPoint(1258, 0), QPoint(0, 778), QPoint(1258, 778), QPoint(640, 400)}) {
            const QRect placed = placedAtIcon(QRect(corner, QSize(22, 22)), size, area);
            EXPECT_TRUE(inside.contains(placed)) << corner.x() << "," << corner.y();
            EXPECT_EQ(placed.size(), size);
        }
    }
}

TEST(PopoverPlacementTest, WithoutAKnownPanelACornerBelongsToABarAlongTheTopOrBottom) {
    const QRect top = placedAtIcon(QRect(1256, 0, 24, 30), size, unknownPanel);
    EXPECT_EQ(top.top(), 34);
    const QRect bottom = placedAtIcon(QRect(1256, 770, 24, 30), size, unknownPanel);
    EXPECT_EQ(bottom.top() + bottom.height(), 766);
    const QRect side = placedAtIcon(QRect(0, 400, 30, 24), size, unknownPanel);
    EXPECT_EQ(side.left(), 34);
}

TEST(PopoverPlacementTest, PointerInAPanelStandsForTheIcon) {
    EXPECT_EQ(iconAround(QPoint(600, 15), topPanel), QRect(600, 15, 1, 1));
    const QRect placed = placedAtIcon(iconAround(QPoint(600, 15), topPanel), size, topPanel);
    EXPECT_EQ(placed.top(), 34);
}

TEST(PopoverPlacementTest, PointerInAnUnknownPanelIsGivenRoomToTheEdge) {
    const QRect icon = iconAround(QPoint(600, 20), unknownPanel);
    EXPECT_EQ(icon.center().x(), 599);
    EXPECT_LE(icon.top(), 0);
    EXPECT_GE(icon.top() + icon.height(), 40);
    const QRect edge = iconAround(QPoint(600, 0), unknownPanel);
    EXPECT_GE(edge.top() + edge.height(), 16);
}

QRect atEnd(const ScreenArea& area, Qt::LayoutDirection direction = Qt::LeftToRight) {
    return placedAtPanelEnd(size, area, direction);
}

TEST(PopoverPlacementTest, EndOfThePanelIsWhereItsIconsAre) {
    EXPECT_EQ(atEnd(topPanel), QRect(QPoint(1036, 34), size));
    EXPECT_EQ(atEnd(bottomPanel), QRect(QPoint(1036, 543), size));
    EXPECT_EQ(atEnd(leftPanel), QRect(QPoint(34, 573), size));
    EXPECT_EQ(atEnd(rightPanel), QRect(QPoint(1006, 573), size));
}

TEST(PopoverPlacementTest, EndOfThePanelIsOnTheLeftWhereOneWritesFromTheRight) {
    EXPECT_EQ(atEnd(topPanel, Qt::RightToLeft), QRect(QPoint(4, 34), size));
    EXPECT_EQ(atEnd(bottomPanel, Qt::RightToLeft), QRect(QPoint(4, 543), size));
    EXPECT_EQ(atEnd(leftPanel, Qt::RightToLeft), atEnd(leftPanel));
}

TEST(PopoverPlacementTest, WithoutAPanelItsEndIsTheTopCorner) {
    EXPECT_EQ(atEnd(unknownPanel), QRect(QPoint(1036, 4), size));
}

TEST(PopoverPlacementTest, OfTwoPanelsTheOneAtTheTopHasTheIcons) {
    const ScreenArea both{screen, QRect(0, 30, 1280, 740)};
    EXPECT_EQ(atEnd(both), QRect(QPoint(1036, 34), size));
}

TEST(PopoverPlacementTest, StripsKeptFreeAreThoseAlongTheEdges) {
    EXPECT_EQ(keptFree(topPanel), QList{QRect(0, 0, 1280, 30)});
    EXPECT_EQ(keptFree(bottomPanel), QList{QRect(0, 770, 1280, 30)});
    EXPECT_EQ(keptFree(leftPanel), QList{QRect(0, 0, 30, 800)});
    EXPECT_EQ(keptFree(rightPanel), QList{QRect(1250, 0, 30, 800)});
    EXPECT_TRUE(keptFree(unknownPanel).isEmpty());
}

TEST(PopoverPlacementTest, IconThatWasClickedOnAPanelIsThere) {
    const QRect icon = iconOnPanel(QPoint(600, 785), bottomPanel);
    EXPECT_EQ(icon, QRect(600, 785, 1, 1));
    EXPECT_EQ(placedAtIcon(icon, size, bottomPanel).bottom(), 765);
}

TEST(PopoverPlacementTest, IconInWhatAPanelHasFoldedOutCountsAsOnThatPanel) {
    const auto at = [](QPoint click, const ScreenArea& area) {
        return placedAtIcon(iconOnPanel(click, area), size, area);
    };
    const QRect bottom = at(QPoint(600, 500), bottomPanel);
    EXPECT_EQ(bottom.bottom(), 765);
    EXPECT_NEAR(bottom.center().x(), 600, 1);
    EXPECT_EQ(at(QPoint(600, 300), topPanel).top(), 34);
    EXPECT_EQ(at(QPoint(300, 400), leftPanel).left(), 34);
    EXPECT_EQ(at(QPoint(900, 400), rightPanel).right(), 1245);
}

TEST(PopoverPlacementTest, WithoutAPanelThatIsToldOfTheIconIsAroundThePointer) {
    EXPECT_EQ(iconOnPanel(QPoint(600, 20), unknownPanel),
              iconAround(QPoint(600, 20), unknownPanel));
}

TEST(PopoverPlacementTest, PanelThatTheDesktopKeepsQuietAboutIsNotAvailable) {
    const auto left = [](const QRect& panel) {
        return withoutPanel(unknownPanel, panel).available;
    };
    EXPECT_EQ(left(QRect(0, 0, 1280, 30)), topPanel.available);
    EXPECT_EQ(left(QRect(0, 770, 1280, 30)), bottomPanel.available);
    EXPECT_EQ(left(QRect(0, 0, 30, 800)), leftPanel.available);
    EXPECT_EQ(left(QRect(1250, 0, 30, 800)), rightPanel.available);
    EXPECT_EQ(left(QRect(1258, 0, 22, 30)), topPanel.available) << "a bar of one icon";
}

TEST(PopoverPlacementTest, PanelThatTheDesktopTellsOfIsNotTakenAwayTwice) {
    EXPECT_EQ(withoutPanel(rightPanel, QRect(1258, 0, 22, 30)).available, rightPanel.available);
    EXPECT_EQ(withoutPanel(topPanel, QRect(0, 0, 1280, 30)).available, topPanel.available);
}

TEST(PopoverPlacementTest, IconInTheCornerOfASidePanelHasThePopoverBesideIt) {
    const auto area = withoutPanel(unknownPanel, QRect(0, 0, 30, 800));
    const QRect placed = placedAtIcon(iconAround(QPoint(15, 785), area), size, area);
    EXPECT_EQ(placed.left(), 34);
    EXPECT_EQ(placed.top() + placed.height(), 796);
}

TEST(PopoverPlacementTest, InACornerNoBarOfEitherEdgeCoversThePopover) {
    for (const QPoint corner : {QPoint(15, 11), QPoint(1264, 15), QPoint(15, 788)}) {
        const auto area = withoutBarsAround(corner, unknownPanel);
        const QRect placed = placedAtIcon(iconAround(corner, area), size, area);
        EXPECT_TRUE(screen.adjusted(22, 22, -22, -22).contains(placed))
            << corner.x() << "," << corner.y();
    }
    EXPECT_EQ(withoutBarsAround(QPoint(640, 15), unknownPanel).available,
              screen.adjusted(0, 32, 0, 0));
    EXPECT_EQ(withoutBarsAround(QPoint(640, 400), unknownPanel).available, screen);
}

TEST(PopoverPlacementTest, SecondScreenHasCoordinatesOfItsOwn) {
    const ScreenArea second{QRect(1280, 200, 1920, 1080), QRect(1280, 200, 1920, 1050)};
    const QRect placed = placedAtIcon(QRect(3170, 1254, 22, 22), size, second);
    EXPECT_TRUE(second.available.contains(placed));
    EXPECT_EQ(placed.top() + placed.height(), 1246);
    EXPECT_EQ(atEnd(second).topLeft(), QPoint(2956, 1023));
}

} // namespace
} // namespace kestrel::linux_shell
