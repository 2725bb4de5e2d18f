#include "shells/linux/views/kit/announcer.h"

#include "tests/linux/views/widget_fixture.h"
#include "views/accessible_texts.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

Announcement movedTo(std::size_t place, std::size_t count) {
    return {accessible_texts::moved, {place, count}};
}

TEST(AnnouncerTest, TheTextHasItsArgumentsInTheirPlacesAndTakesNoTitleForAPlace) {
    EXPECT_EQ(textFor(movedTo(2, 5)), QStringLiteral("Moved to 2 of 5"));
    EXPECT_EQ(textFor(Announcement{accessible_texts::deleted, {"%1 %2 %L1"}}),
              QStringLiteral("Deleted %1 %2 %L1"));
}

TEST(AnnouncerTest, NumbersAreWrittenInTheUsersDigits) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Persian));
    const QString text = textFor(movedTo(2, 3));
    QLocale::setDefault(before);
    EXPECT_EQ(text, QStringLiteral("Moved to \u06F2 of \u06F3"));
}

using AccessibleWindowTest = SettingsFixture;

TEST_F(AccessibleWindowTest, NothingIsDrawnOfANotification) {
    auto* const announcer = widget->findChild<Announcer*>();
    ASSERT_NE(announcer, nullptr);
    EXPECT_FALSE(announcer->isVisible());
    EXPECT_EQ(accessibleRole(*announcer), QAccessible::Notification);
}

TEST_F(AccessibleWindowTest, TheSheetIsAModalDialogAndNothingElseIsModal) {
    view().addClicked();
    turnEventLoop();
    QWidget& sheet = *widget->form()->parentWidget();
    EXPECT_EQ(accessibleRole(sheet), QAccessible::Dialog);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&sheet)->state().modal);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(widget.get())->state().modal);
}

} // namespace
} // namespace kestrel::linux_shell
