#include "views/settings/announcement.h"

#include "tests/fakes/store_fixture.h"
#include "views/accessible_texts.h"
#include "views/settings/settings_view.h"

#include <gtest/gtest.h>

namespace kestrel::tests {
namespace {

class AnnouncementTest : public ThreeItemsFixture {
  protected:
    FakeOpenPanel openPanel;
    SettingsView view{manager, clock, openPanel};

    static Announcement movedTo(std::size_t place) {
        return {accessible_texts::moved, {place, std::size_t{3}}};
    }
    static Announcement deleted(const std::string& title) {
        return {accessible_texts::deleted, {title}};
    }
};

TEST_F(AnnouncementTest, OpeningTheSettingsAndSelectingARowSaysNothing) {
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    view.setSelectedID(second.id);
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
}

TEST_F(AnnouncementTest, AMoveIsSaidOnceWithTheNewPlaceCountedFromOne) {
    view.moveRows({0}, 2);
    EXPECT_EQ(view.nextAnnouncement(), movedTo(2));
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    view.moveRows({2}, 0);
    EXPECT_EQ(view.nextAnnouncement(), movedTo(1));
    view.moveRows({0}, 3);
    EXPECT_EQ(view.nextAnnouncement(), movedTo(3));
}

TEST_F(AnnouncementTest, ARowThatIsDroppedWhereItWasOrStandsAtThatEndIsNotSaid) {
    view.moveRows({1}, 1);
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    view.moveRows({1}, 2);
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    view.setSelectedID(first.id);
    view.moveSelectedRow(RowDirection::up);
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
}

TEST_F(AnnouncementTest, EveryWayToDeleteSaysTheTitleOfTheItem) {
    view.deleteItem(second);
    EXPECT_EQ(view.nextAnnouncement(), deleted("Second"));
    view.setSelectedID(first.id);
    view.deleteCommitted();
    EXPECT_EQ(view.nextAnnouncement(), deleted("First"));
    view.setSelectedID(third.id);
    view.deleteSelectedRow();
    EXPECT_EQ(view.nextAnnouncement(), deleted("Third"));
}

TEST_F(AnnouncementTest, SeveralRowsAtOnceAndRowsThatHaveGoneAreNotSaid) {
    view.moveRows({7}, 0);
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    view.moveRows({0, 1}, 3);
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    view.deleteRows({7});
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    view.deleteRows({0, 1});
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
}

TEST_F(AnnouncementTest, AnAddedItemIsSaidByTheTitleThatItGot) {
    view.addClicked();
    const auto form = view.nextSheet();
    form->setTitle("Fourth");
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
    form->commitSave();
    EXPECT_EQ(view.nextAnnouncement(), (Announcement{accessible_texts::added, {"Fourth"}}));
}

TEST_F(AnnouncementTest, WhatAnotherMachineChangesIsNotSaid) {
    manager.items.assign({first});
    EXPECT_EQ(view.nextAnnouncement(), std::nullopt);
}

} // namespace
} // namespace kestrel::tests
