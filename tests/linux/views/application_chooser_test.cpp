#include "shells/linux/views/application_chooser.h"

#include "shells/linux/desktop/appearance/contrast.h"
#include "shells/linux/views/application_row.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "tests/linux/views/pictures.h"
#include "tests/linux/views/theme_palettes.h"
#include "tests/linux/views/widget_fixture.h"

#include <QMouseEvent>
#include <QScrollBar>

#include <gmock/gmock.h>

#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ApplicationChooserTest : public testing::Test {
  protected:
    std::vector<std::string> iconsAsked;
    QIcon icon;
    FileIconSource icons{[this](const std::string& path) {
        iconsAsked.push_back(path);
        return icon;
    }};
    std::unique_ptr<ApplicationChooser> chooser;
    int others = 0;

    void SetUp() override {
        chooser = std::make_unique<ApplicationChooser>(icons);
        QObject::connect(chooser.get(), &ApplicationChooser::otherRequested, [this] { ++others; });
        chooser->move(300, 300); // away from where the pointer rests
        chooser->show();
        chooser->activateWindow();
        turnEventLoop();
    }

    void showThree() {
        chooser->setApplications({{"/a/editor.desktop", "Editor", "Text"},
                                  {"/a/mail.desktop", "Mail", "Post"},
                                  {"/a/maps.desktop", "Maps", "Routes"}});
        turnEventLoop();
    }

    void showMany(int count) {
        std::vector<InstalledApplication> applications;
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            applications.push_back({"/a/" + number + ".desktop", "Tool " + number, "kind"});
        }
        chooser->setApplications(std::move(applications));
        turnEventLoop();
    }

    void type(const QString& text) {
        for (const QChar letter : text)
            sendWindowKey(*chooser, 0, Qt::NoModifier, letter);
        turnEventLoop();
    }

    void key(int key) {
        sendWindowKey(*chooser, key);
        turnEventLoop();
    }

    std::vector<std::string> shown() {
        std::vector<std::string> names;
        names.reserve(static_cast<std::size_t>(chooser->list().count()));
        for (int row = 0; row < chooser->list().count(); ++row)
            names.push_back(chooser->list().source().titleOf(row).toStdString());
        return names;
    }

    std::string selected() const {
        return chooser->selected() == nullptr ? std::string() : chooser->selected()->name;
    }

    /// What a screen reader tells of the field that has the keys.
    std::string told() {
        auto* const field = QAccessible::queryAccessibleInterface(&chooser->searchField());
        return field->text(QAccessible::Description).toStdString();
    }

    QWidget& viewport() { return *chooser->list().viewport(); }
    QPoint middleOf(int row) { return chooser->list().rowRect(row).center(); }
};

TEST_F(ApplicationChooserTest, IsThereBeforeTheListAndThenHasNothingSelected) {
    EXPECT_TRUE(chooser->searchField().hasFocus());
    EXPECT_FALSE(chooser->nothingFoundLabel().isVisible());
    EXPECT_FALSE(chooser->chooseButton().isEnabled());
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_TRUE(chooser->isVisible());
    showThree();
    EXPECT_THAT(shown(), ElementsAre("Editor", "Mail", "Maps"));
    EXPECT_EQ(selected(), "");
    EXPECT_FALSE(chooser->chooseButton().isEnabled());
    key(Qt::Key_Return); // takes none that nobody has pointed out
    EXPECT_TRUE(chooser->isVisible());
}

TEST_F(ApplicationChooserTest, TypingFindsAndSelectsTheFirst) {
    showThree();
    type(QStringLiteral("ma"));
    EXPECT_THAT(shown(), ElementsAre("Mail", "Maps"));
    EXPECT_EQ(selected(), "Mail");
    EXPECT_EQ(told(), "Mail");
    EXPECT_TRUE(chooser->chooseButton().isEnabled());
    type(QStringLiteral("p"));
    EXPECT_EQ(selected(), "Maps");
    EXPECT_EQ(told(), "Maps");
    key(Qt::Key_Return);
    EXPECT_EQ(chooser->result(), QDialog::Accepted);
    EXPECT_EQ(selected(), "Maps");
}

TEST_F(ApplicationChooserTest, WhatWasTypedBeforeTheListArrivedCounts) {
    type(QStringLiteral("mail"));
    EXPECT_EQ(selected(), "");
    showThree();
    EXPECT_THAT(shown(), ElementsAre("Mail"));
    EXPECT_EQ(selected(), "Mail");
}

TEST_F(ApplicationChooserTest, WithNothingFoundALineSaysSoAndReturnTakesNothing) {
    showThree();
    type(QStringLiteral("xyz"));
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_TRUE(chooser->nothingFoundLabel().isVisible());
    EXPECT_EQ(told(), chooser->nothingFoundLabel().text().toStdString());
    EXPECT_FALSE(chooser->chooseButton().isEnabled());
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_TRUE(chooser->isVisible());
    chooser->searchField().clear();
    turnEventLoop();
    EXPECT_THAT(shown(), ElementsAre("Editor", "Mail", "Maps"));
    EXPECT_FALSE(chooser->nothingFoundLabel().isVisible());
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(told(), "Search"); // as the field itself says
}

TEST_F(ApplicationChooserTest, ArrowsAndPagesMoveTheSelectionWhileTheFieldKeepsTheKeys) {
    showMany(100);
    const int page = chooser->list().viewport()->height() / 34 - 1;
    ASSERT_GT(page, 2);
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), "Tool 0");
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Up);
    EXPECT_EQ(selected(), "Tool 1");
    EXPECT_EQ(told(), "Tool 1");
    key(Qt::Key_PageDown);
    EXPECT_EQ(selected(), "Tool " + std::to_string(1 + page));
    key(Qt::Key_PageDown);
    EXPECT_NE(chooser->list().realisedRow(1 + 2 * page), nullptr); // has been scrolled to
    EXPECT_GT(chooser->list().verticalScrollBar()->value(), 0);
    key(Qt::Key_PageUp);
    key(Qt::Key_PageUp);
    EXPECT_EQ(selected(), "Tool 1");
    EXPECT_TRUE(chooser->searchField().hasFocus());
}

TEST_F(ApplicationChooserTest, WithNothingSelectedAStepBeginsAtTheEndThatItLeadsFrom) {
    showMany(100);
    const std::vector<std::pair<int, std::string>> steps{{Qt::Key_Down, "Tool 0"},
                                                         {Qt::Key_PageDown, "Tool 0"},
                                                         {Qt::Key_Up, "Tool 99"},
                                                         {Qt::Key_PageUp, "Tool 99"}};
    for (const auto& [step, expected] : steps) {
        chooser->list().setCurrentRow(-1);
        key(step);
        EXPECT_EQ(selected(), expected) << step;
    }
}

TEST_F(ApplicationChooserTest, HomeAndEndAreTheFields) {
    showMany(100);
    type(QStringLiteral("tool"));
    key(Qt::Key_Down);
    key(Qt::Key_Home);
    EXPECT_EQ(chooser->searchField().cursorPosition(), 0);
    key(Qt::Key_End);
    EXPECT_EQ(chooser->searchField().cursorPosition(), 4);
    EXPECT_EQ(selected(), "Tool 1");
}

TEST_F(ApplicationChooserTest, TypingScrollsBackToTheFirst) {
    showMany(100);
    key(Qt::Key_PageDown);
    key(Qt::Key_PageDown);
    type(QStringLiteral("tool"));
    EXPECT_EQ(selected(), "Tool 0");
    EXPECT_EQ(chooser->list().verticalScrollBar()->value(), 0);
}

TEST_F(ApplicationChooserTest, AClickSelectsAndADoubleClickTakes) {
    showThree();
    click(viewport(), middleOf(2));
    EXPECT_EQ(selected(), "Maps");
    EXPECT_TRUE(chooser->chooseButton().isEnabled());
    EXPECT_TRUE(chooser->searchField().hasFocus());
    click(viewport(), middleOf(2) + QPoint(0, 40)); // beside the rows
    EXPECT_EQ(selected(), "Maps");
    EXPECT_TRUE(chooser->isVisible());
    doubleClick(viewport(), middleOf(1));
    EXPECT_EQ(chooser->result(), QDialog::Accepted);
    EXPECT_FALSE(chooser->isVisible());
    EXPECT_EQ(selected(), "Mail");
}

TEST_F(ApplicationChooserTest, ASecondClickWhereTheListHasChangedTakesNothing) {
    showThree();
    click(viewport(), middleOf(1));
    type(QStringLiteral("m"));
    QMouseEvent second(QEvent::MouseButtonDblClick, middleOf(1),
                       viewport().mapToGlobal(middleOf(1)), Qt::LeftButton, Qt::LeftButton,
                       Qt::NoModifier);
    QApplication::sendEvent(&viewport(), &second);
    EXPECT_TRUE(chooser->isVisible());
    EXPECT_EQ(selected(), "Maps");
}

TEST_F(ApplicationChooserTest, ChooseTakesTheSelected) {
    showThree();
    click(viewport(), middleOf(0));
    chooser->chooseButton().click();
    EXPECT_EQ(chooser->result(), QDialog::Accepted);
    EXPECT_EQ(chooser->selected()->path, "/a/editor.desktop");
}

TEST_F(ApplicationChooserTest, EscapeAndCancelClose) {
    showThree();
    type(QStringLiteral("m"));
    key(Qt::Key_Escape);
    EXPECT_EQ(chooser->result(), QDialog::Rejected);
    EXPECT_FALSE(chooser->isVisible());
    chooser->show();
    chooser->cancelButton().click();
    EXPECT_FALSE(chooser->isVisible());
    EXPECT_EQ(chooser->result(), QDialog::Rejected);
}

TEST_F(ApplicationChooserTest, ReturnPressesTheButtonThatHasTheKeys) {
    showThree();
    key(Qt::Key_Down);
    chooser->otherButton().setFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    EXPECT_EQ(others, 1);
    EXPECT_TRUE(chooser->isVisible());
    chooser->cancelButton().setFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    EXPECT_EQ(chooser->result(), QDialog::Rejected);
    EXPECT_FALSE(chooser->isVisible());
}

TEST_F(ApplicationChooserTest, TabGoesFromTheFieldThroughTheButtons) {
    showThree();
    key(Qt::Key_Down);
    std::vector<QWidget*> stops;
    for (int i = 0; i < 4; ++i) {
        stops.push_back(QApplication::focusWidget());
        keyClick(*QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(stops, ElementsAre(&chooser->searchField(), &chooser->otherButton(),
                                   &chooser->cancelButton(), &chooser->chooseButton()));
    EXPECT_TRUE(chooser->searchField().hasFocus());
}

TEST_F(ApplicationChooserTest, OnlyTheRowsInSightExistAndAskForIcons) {
    showMany(500);
    chooser->repaint();
    turnEventLoop();
    const int inSight = viewport().height() / 34 + 1;
    EXPECT_EQ(chooser->list().count(), 500);
    EXPECT_LE(chooser->list().realisedCount(), inSight);
    EXPECT_LE(std::ssize(iconsAsked), inSight);
    EXPECT_THAT(iconsAsked, testing::Contains("/a/0.desktop"));
    iconsAsked.clear();
    Q_EMIT icons.changed(); // an answer that came late
    chooser->repaint();
    turnEventLoop();
    EXPECT_THAT(iconsAsked, testing::Contains("/a/0.desktop"));
}

TEST_F(ApplicationChooserTest, EverythingHasANameAndARoleForAScreenReader) {
    showThree();
    EXPECT_EQ(accessibleRole(*chooser), QAccessible::Dialog);
    EXPECT_EQ(accessibleName(*chooser), QStringLiteral("Choose an Application"));
    EXPECT_EQ(accessibleRole(chooser->searchField()), QAccessible::EditableText);
    EXPECT_EQ(accessibleName(chooser->searchField()), QStringLiteral("Search"));
    for (QWidget* const button :
         {&chooser->otherButton(), &chooser->cancelButton(), &chooser->chooseButton()}) {
        EXPECT_EQ(accessibleRole(*button), QAccessible::Button);
        EXPECT_NE(accessibleName(*button), QString());
    }
    ChoiceList& list = chooser->list();
    EXPECT_EQ(accessibleRole(list), QAccessible::List);
    EXPECT_EQ(accessibleName(list), QStringLiteral("Applications"));
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&list);
    ASSERT_NE(interface, nullptr);
    QAccessibleInterface* const row = interface->child(1);
    ASSERT_NE(row, nullptr);
    QAccessibleActionInterface* const actions = row->actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("Mail"));
    EXPECT_EQ(row->text(QAccessible::Description), QString());
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(selected(), "Mail");
    EXPECT_TRUE(row->state().selected);
    // What it does not offer: nothing here can be moved or deleted.
    EXPECT_EQ(actions->actionNames().size(), 2);
}

TEST_F(ApplicationChooserTest, LettersForTheListGoToTheField) {
    showThree();
    ChoiceList& list = chooser->list();
    list.setFocus(Qt::OtherFocusReason);
    type(QStringLiteral("mail"));
    EXPECT_EQ(chooser->searchField().text(), QStringLiteral("mail"));
    EXPECT_EQ(selected(), "Mail");
}

TEST_F(ApplicationChooserTest, TheSelectedNameIsReadableInAllColors) {
    const QPalette before = QApplication::palette();
    showThree();
    for (const NamedPalette& theme : themePalettes()) {
        QApplication::setPalette(theme.palette);
        chooser->list().setCurrentRow(1);
        turnEventLoop();
        const auto& row = static_cast<const ApplicationRow&>(*chooser->list().realisedRow(1));
        const QRect title = row.titleRect().translated(row.pos()).adjusted(0, 4, 0, -4);
        const QImage image = viewport().grab(title).toImage();
        const QColor background = selectionColor(theme.palette);
        EXPECT_EQ(image.pixel(image.width() - 1, 0), background.rgb()) << theme.name;
        EXPECT_GE(greatestContrast(image, background), readableText) << theme.name;
    }
    QApplication::setPalette(before);
}

TEST_F(ApplicationChooserTest, RowsAreMirroredInALayoutFromRightToLeft) {
    QPixmap red(48, 48);
    red.fill(Qt::red);
    icon = QIcon(red);
    showThree();
    const auto isRed = [this](int x) {
        const QImage image = viewport().grab().toImage();
        return image.pixelColor(x, middleOf(0).y()) == QColor(Qt::red);
    };
    const int beside = 8 + 16 + 12; // padding of the list and the row, half an icon
    const int right = viewport().width() - beside;
    EXPECT_TRUE(isRed(beside));
    EXPECT_FALSE(isRed(right));
    chooser->setLayoutDirection(Qt::RightToLeft);
    turnEventLoop();
    EXPECT_TRUE(isRed(right));
    EXPECT_FALSE(isRed(beside));
    EXPECT_GT(chooser->otherButton().x(), chooser->chooseButton().x());
}

} // namespace
} // namespace kestrel::linux_shell
