#include "shells/linux/desktop/popover_window.h"

#include "tests/linux/desktop/waiting.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <gmock/gmock.h>

#include <memory>

namespace kestrel::linux_shell {
namespace {

class FixedAnchor : public PopoverAnchorSource {
  public:
    PopoverAnchor anchor() const override { return place; }
    void setClickedPoint(QPoint) override {}

    PopoverAnchor place;
};

/// Counts how often a widget is painted.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    int count = 0;

  private:
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

class PopoverWindowTest : public testing::Test {
  protected:
    PopoverWindowTest() { content->setFocusPolicy(Qt::StrongFocus); }

    void open() { popover.show({240, 181}); }

    void mouse(QEvent::Type type, QPoint position) {
        const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, position, popover.mapToGlobal(position), Qt::LeftButton, buttons,
                          Qt::NoModifier);
        QApplication::sendEvent(&popover, &event);
    }

    void key(int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(content, &event);
    }

    QRect contentOnScreen() const { return {content->mapToGlobal(QPoint(0, 0)), content->size()}; }

    FixedAnchor anchor;
    QWidget* content = new QWidget;
    PopoverWindow popover{std::unique_ptr<QWidget>(content), anchor};
};

TEST_F(PopoverWindowTest, ContentHasExactlyTheSizeThatItIsShownAt) {
    open();
    EXPECT_TRUE(popover.isShown());
    EXPECT_TRUE(content->isVisible());
    EXPECT_EQ(content->size(), QSize(240, 181));
    popover.close();
    popover.show({240, 361});
    EXPECT_EQ(content->size(), QSize(240, 361));
}

TEST_F(PopoverWindowTest, IsPaintedOnceAtEachOpening) {
    const PaintCounter window(popover);
    const PaintCounter inside(*content);
    for (int opening = 1; opening <= 3; ++opening) {
        open();
        // The server asks for the paint before the toolkit's own wish for one arrives.
        QExposeEvent exposed(popover.rect());
        QCoreApplication::sendEvent(popover.windowHandle(), &exposed);
        QCoreApplication::processEvents();
        EXPECT_EQ(window.count, opening);
        EXPECT_EQ(inside.count, opening);
        popover.close();
    }
}

TEST_F(PopoverWindowTest, OpensAtTheIcon) {
    anchor.place = {.kind = PopoverAnchor::Kind::icon, .icon = QRect(400, 0, 24, 24), .point = {}};
    open();
    EXPECT_NEAR(contentOnScreen().center().x(), QRect(400, 0, 24, 24).center().x(), 1);
    EXPECT_EQ(contentOnScreen().top(), 28);
}

TEST_F(PopoverWindowTest, FollowsANewSizeFromTheIconAwayWhicheverEdgeThatIsAt) {
    const QRect edges = popover.screen()->geometry();
    const int middle = edges.center().x();
    const auto openAt = [this](const QRect& icon) {
        anchor.place = {.kind = PopoverAnchor::Kind::icon, .icon = icon, .point = {}};
        open();
        return contentOnScreen();
    };
    const auto resized = [this](int height) {
        popover.setContentSize({240, static_cast<double>(height)});
        EXPECT_EQ(content->size(), QSize(240, height));
        EXPECT_EQ(contentOnScreen().size(), QSize(240, height));
        return contentOnScreen();
    };
    const QRect below = openAt(QRect(middle, 0, 24, 24));
    EXPECT_EQ(resized(361).topLeft(), below.topLeft());
    EXPECT_EQ(resized(87).topLeft(), below.topLeft());
    popover.close();

    const QRect above = openAt(QRect(middle, edges.bottom() - 23, 24, 24));
    EXPECT_EQ(resized(361).bottomLeft(), above.bottomLeft());
    EXPECT_EQ(resized(87).bottomLeft(), above.bottomLeft());
    popover.close();

    const QRect beside = openAt(QRect(0, edges.center().y(), 24, 24));
    EXPECT_EQ(resized(361).left(), beside.left());
    EXPECT_NEAR(contentOnScreen().center().y(), beside.center().y(), 1);
}

TEST_F(PopoverWindowTest, NewSizeOfAClosedPopoverIsIgnored) {
    open();
    popover.close();
    popover.setContentSize({240, 361});
    EXPECT_FALSE(popover.isShown());
    EXPECT_EQ(content->size(), QSize(240, 181));
}

TEST_F(PopoverWindowTest, WithoutAnIconOpensInTheTopRightCorner) {
    open();
    const QRect available = popover.screen()->availableGeometry();
    EXPECT_EQ(contentOnScreen().topRight(), available.topRight() + QPoint(-4, 4));
}

TEST_F(PopoverWindowTest, HiddenPointerThatNobodyFindsIsWhereItWasTheTimeBefore) {
    anchor.place = {
        .kind = PopoverAnchor::Kind::hiddenPointer, .icon = {}, .point = QPoint(300, 10)};
    open();
    EXPECT_NEAR(contentOnScreen().center().x(), 300, 2);
    popover.close();
    anchor.place.point.reset();
    open();
    EXPECT_EQ(contentOnScreen().topRight(),
              popover.screen()->availableGeometry().topRight() + QPoint(-4, 4));
}

TEST_F(PopoverWindowTest, EscapeCloses) {
    open();
    key(Qt::Key_A);
    EXPECT_TRUE(popover.isShown());
    key(Qt::Key_Escape);
    EXPECT_FALSE(popover.isShown());
}

TEST_F(PopoverWindowTest, ClickElsewhereClosesOnTheReleaseOnly) {
    open();
    mouse(QEvent::MouseButtonPress, QPoint(-50, 300));
    EXPECT_TRUE(popover.isShown());
    mouse(QEvent::MouseButtonRelease, QPoint(-50, 300));
    EXPECT_FALSE(popover.isShown());
}

TEST_F(PopoverWindowTest, ClickOnItsShadowIsElsewhere) {
    open();
    mouse(QEvent::MouseButtonPress, content->geometry().topLeft() - QPoint(2, 2));
    mouse(QEvent::MouseButtonRelease, content->geometry().topLeft() - QPoint(2, 2));
    EXPECT_FALSE(popover.isShown());
}

TEST_F(PopoverWindowTest, ClickInsideLeavesItOpen) {
    open();
    mouse(QEvent::MouseButtonPress, content->geometry().center());
    mouse(QEvent::MouseButtonRelease, content->geometry().center());
    EXPECT_TRUE(popover.isShown());
}

TEST_F(PopoverWindowTest, ReleaseOfAPressFromBeforeTheOpeningLeavesItOpen) {
    open();
    mouse(QEvent::MouseButtonRelease, QPoint(-50, 300));
    EXPECT_TRUE(popover.isShown());
}

TEST_F(PopoverWindowTest, ToolkitsLateCloseDoesNotReachAFreshPopover) {
    open();
    EXPECT_FALSE(popover.QWidget::close());
    EXPECT_TRUE(popover.isShown());
    EXPECT_TRUE(waitUntil([&] { return popover.QWidget::close(); }));
    EXPECT_FALSE(popover.isShown());
}

TEST_F(PopoverWindowTest, PreparingShowsNothing) {
    popover.prepare();
    EXPECT_FALSE(popover.isShown());
    EXPECT_FALSE(content->isVisible());
}

TEST_F(PopoverWindowTest, FocusGoesToTheContent) {
    open();
    EXPECT_TRUE(waitUntil([&] { return content->hasFocus(); }));
}

TEST_F(PopoverWindowTest, CanBeFoundByTitleAndRole) {
    EXPECT_EQ(popover.windowTitle(), QStringLiteral("Kestrel"));
    EXPECT_EQ(popover.windowRole(), QStringLiteral("popover"));
}

TEST(PopoverWindowOwnershipTest, ContentDiesWithThePopover) {
    const QPointer<QWidget> content = new QWidget;
    FixedAnchor anchor;
    { const PopoverWindow popover(std::unique_ptr<QWidget>(content), anchor); }
    EXPECT_TRUE(content.isNull());
}

} // namespace
} // namespace kestrel::linux_shell
