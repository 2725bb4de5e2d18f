#include "shells/linux/views/item_editor_form.h"

#include "shells/linux/views/kit/divider.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/segmented_control.h"
#include "shells/linux/views/kit/text_label.h"
#include "tests/fakes/fake_system.h"
#include "tests/linux/views/widget_fixture.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QKeyEvent>

#include <gmock/gmock.h>

#include <optional>

namespace kestrel::linux_shell {
namespace {

class ItemEditorFormTest : public testing::Test {
  protected:
    tests::FakeOpenPanel openPanel;
    std::vector<LauncherItem> saved;
    int dismissed = 0;
    std::unique_ptr<ItemEditorForm> form;

    ItemEditorForm& open(std::optional<LauncherItem> item = std::nullopt) {
        auto view = std::make_unique<AddEditItemView>(
            std::move(item), [this](LauncherItem result) { saved.push_back(std::move(result)); },
            openPanel);
        view->dismiss = [this] { ++dismissed; };
        form = std::make_unique<ItemEditorForm>(std::move(view));
        form->show();
        form->activateWindow();
        form->focusFirstField();
        turnEventLoop();
        return *form;
    }

    void type(QLineEdit& field, const QString& text) {
        field.setFocus();
        for (const QChar letter : text)
            keyClick(field, 0, Qt::NoModifier, QString(letter));
        turnEventLoop();
    }

    /// As the window system delivers it, shortcuts first.
    void keyOfWindow(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        sendWindowKey(*form, key, modifiers);
        turnEventLoop();
    }

    QRect placeOf(const QWidget& widget) const {
        return {widget.mapTo(form.get(), QPoint()), widget.size()};
    }
};

TEST_F(ItemEditorFormTest, Is460WideWith24AtEverySide) {
    open();
    EXPECT_EQ(form->width(), 460);
    EXPECT_EQ(placeOf(*form->findChild<TextLabel*>()).topLeft(), QPoint(24, 24));
    EXPECT_EQ(placeOf(form->titleField()).right() + 1, 460 - 24);
    EXPECT_EQ(placeOf(form->confirmButton()).right() + 1, 460 - 24);
    EXPECT_EQ(placeOf(form->confirmButton()).bottom() + 1, form->height() - 24);
}

TEST_F(ItemEditorFormTest, TheGapsBetweenTheRowsAreTheStatedOnes) {
    open();
    const auto below = [this](const QWidget& widget) { return placeOf(widget).bottom() + 1; };
    EXPECT_EQ(placeOf(form->titleField()).top(), below(*form->findChild<TextLabel*>()) + 20);
    EXPECT_EQ(placeOf(form->typeControl()).top(), below(form->titleField()) + 14);
    EXPECT_EQ(placeOf(form->pathField()).top(), below(form->typeControl()) + 14);
    const auto& divider = *form->findChild<Divider*>();
    EXPECT_EQ(placeOf(divider).top(), below(form->pathField()) + 14 + 6);
    EXPECT_EQ(divider.height(), 1);
    EXPECT_EQ(divider.width(), 412);
    EXPECT_EQ(placeOf(form->cancelButton()).top(), below(divider) + 14);
    EXPECT_EQ(placeOf(form->browseButton()).left(), placeOf(form->pathField()).right() + 1 + 8);
}

TEST_F(ItemEditorFormTest, TheFieldsLineUpWhateverTheType) {
    open();
    const int left = placeOf(form->titleField()).left();
    EXPECT_EQ(placeOf(form->typeControl()).left(), left);
    EXPECT_EQ(placeOf(form->pathField()).left(), left);
    form->view().setType(ItemType::inlineCommand);
    turnEventLoop();
    EXPECT_EQ(placeOf(form->commandField()).left(), left);
    EXPECT_EQ(placeOf(form->commandField()).right() + 1, 460 - 24);
}

TEST_F(ItemEditorFormTest, AddingStartsEmptyWithTheAppRowAndADisabledButton) {
    open();
    EXPECT_EQ(form->findChild<TextLabel*>()->text(), QStringLiteral("Add Item"));
    EXPECT_EQ(form->titleField().text(), QString());
    EXPECT_EQ(form->titleField().placeholderText(), QStringLiteral("e.g. Xcode, Deploy Script"));
    EXPECT_EQ(form->typeControl().currentIndex(), 0);
    EXPECT_TRUE(form->pathField().isVisible());
    EXPECT_TRUE(form->browseButton().isVisible());
    EXPECT_FALSE(form->commandField().isVisible());
    EXPECT_EQ(form->confirmButton().text(), QStringLiteral("Add"));
    EXPECT_FALSE(form->confirmButton().isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &form->titleField());
}

TEST_F(ItemEditorFormTest, EditingShowsTheItem) {
    open(tests::commandItem("Load", "htop"));
    EXPECT_EQ(form->findChild<TextLabel*>()->text(), QStringLiteral("Edit Item"));
    EXPECT_EQ(form->titleField().text(), QStringLiteral("Load"));
    EXPECT_EQ(form->typeControl().currentIndex(), 2);
    EXPECT_EQ(form->commandField().text(), QStringLiteral("htop"));
    EXPECT_TRUE(form->commandField().isVisible());
    EXPECT_FALSE(form->browseButton().isVisible());
    EXPECT_EQ(form->confirmButton().text(), QStringLiteral("Save"));
    EXPECT_TRUE(form->confirmButton().isEnabled());
}

TEST_F(ItemEditorFormTest, TypingReachesTheViewAndEnablesTheButton) {
    open();
    type(form->titleField(), QStringLiteral("  "));
    EXPECT_FALSE(form->confirmButton().isEnabled());
    type(form->titleField(), QStringLiteral("Deploy"));
    EXPECT_EQ(form->view().title(), "  Deploy");
    EXPECT_TRUE(form->confirmButton().isEnabled());
    type(form->pathField(), QStringLiteral("/x "));
    EXPECT_EQ(form->view().path(), "/x ");
}

TEST_F(ItemEditorFormTest, TypingInTheMiddleKeepsTheCursorThere) {
    open(tests::appItem("Eitor"));
    form->titleField().setCursorPosition(1);
    type(form->titleField(), QStringLiteral("d"));
    EXPECT_EQ(form->titleField().text(), QStringLiteral("Editor"));
    EXPECT_EQ(form->titleField().cursorPosition(), 2);
}

TEST_F(ItemEditorFormTest, AppAndFileShareThePathUnderTheirOwnLabels) {
    open();
    type(form->pathField(), QStringLiteral("/a"));
    EXPECT_EQ(accessibleName(form->pathField()), QStringLiteral("App"));
    EXPECT_EQ(form->pathField().placeholderText(), QStringLiteral("/Applications/MyApp.app"));
    form->typeControl().segment(1).click();
    turnEventLoop();
    EXPECT_EQ(form->view().type(), ItemType::commandFile);
    EXPECT_EQ(form->pathField().text(), QStringLiteral("/a"));
    EXPECT_EQ(accessibleName(form->pathField()), QStringLiteral("File"));
    EXPECT_EQ(form->pathField().placeholderText(), QStringLiteral("~/Desktop/script.command"));
}

TEST_F(ItemEditorFormTest, TheCommandFieldIsMonospacedAtBodySize) {
    open();
    const QFont font = form->commandField().font();
    EXPECT_EQ(font.pixelSize(), 13);
    EXPECT_TRUE(QFontInfo(font).fixedPitch());
}

TEST_F(ItemEditorFormTest, ControlReturnCommitsAndPlainReturnDoesNot) {
    open(tests::appItem("Editor"));
    keyOfWindow(Qt::Key_Return);
    EXPECT_TRUE(saved.empty());
    form->confirmButton().setFocus();
    keyOfWindow(Qt::Key_Return);
    EXPECT_TRUE(saved.empty());
    form->titleField().setFocus();
    keyOfWindow(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(saved.size(), 1U);
    EXPECT_EQ(dismissed, 1);
}

TEST_F(ItemEditorFormTest, ControlEnterOfTheKeypadCommitsAsWell) {
    open(tests::appItem("Editor"));
    keyOfWindow(Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(saved.size(), 1U);
}

TEST_F(ItemEditorFormTest, ControlReturnDoesNothingWithABlankTitle) {
    open(tests::appItem("   "));
    keyOfWindow(Qt::Key_Return, Qt::ControlModifier);
    keyOfWindow(Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_TRUE(saved.empty());
    EXPECT_EQ(dismissed, 0);
}

TEST_F(ItemEditorFormTest, ChangesThroughAssistiveTechnologyReachTheView) {
    open();
    auto* const title = form->findChildren<RoundedField*>().first();
    QAccessible::queryAccessibleInterface(title)->setText(QAccessible::Value,
                                                          QStringLiteral("Spoken"));
    auto* const control = form->findChild<SegmentedControl*>();
    auto* const command = control->findChildren<QAbstractButton*>().last();
    auto* const actions = QAccessible::queryAccessibleInterface(command)->actionInterface();
    ASSERT_NE(actions, nullptr);
    actions->doAction(QAccessibleActionInterface::toggleAction());
    turnEventLoop();
    EXPECT_EQ(form->view().title(), "Spoken");
    EXPECT_EQ(form->view().type(), ItemType::inlineCommand);
}

TEST_F(ItemEditorFormTest, LongTextsAndTextsOfSeveralLinesSurviveAnEditOfTheTitle) {
    const std::string command = std::string(100'000, 'x') + "\nls\t-l\r\n";
    const std::string title = "Two\nlines";
    open(LauncherItem{.title = title, .type = ItemType::inlineCommand, .command = command});
    auto* const field = form->findChildren<RoundedField*>().first();
    field->end(false);
    type(*field, QStringLiteral("!"));
    form->view().commitSave();
    ASSERT_EQ(saved.size(), 1U);
    EXPECT_EQ(saved[0].title, title + "!");
    EXPECT_EQ(saved[0].command, command);
}

TEST_F(ItemEditorFormTest, EscapeAndCancelCloseWithoutSaving) {
    open(tests::appItem("Editor"));
    keyOfWindow(Qt::Key_Escape);
    EXPECT_EQ(dismissed, 1);
    form->cancelButton().click();
    EXPECT_EQ(dismissed, 2);
    EXPECT_TRUE(saved.empty());
}

TEST_F(ItemEditorFormTest, BrowseFillsPathAndEmptyTitle) {
    open();
    openPanel.result = "/usr/share/applications/editor.desktop";
    form->browseButton().click();
    turnEventLoop();
    EXPECT_EQ(form->pathField().text(), QStringLiteral("/usr/share/applications/editor.desktop"));
    EXPECT_EQ(form->titleField().text(), QStringLiteral("editor"));
    ASSERT_EQ(openPanel.shown.size(), 1U);
    EXPECT_EQ(openPanel.shown[0].content, OpenPanelOptions::Content::applications);
    form->view().setType(ItemType::commandFile);
    form->browseButton().click();
    EXPECT_EQ(openPanel.shown.at(1).content, OpenPanelOptions::Content::anyFile);
}

TEST_F(ItemEditorFormTest, TheTypeIsAGroupOfRadioButtonsForTheArrowKeys) {
    open();
    SegmentedControl& control = form->typeControl();
    EXPECT_EQ(accessibleRole(control), QAccessible::Grouping);
    EXPECT_EQ(accessibleName(control), QStringLiteral("Type"));
    const QStringList names{QStringLiteral("App"), QStringLiteral("Command File"),
                            QStringLiteral("Inline Command")};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(accessibleRole(control.segment(i)), QAccessible::RadioButton);
        EXPECT_EQ(accessibleName(control.segment(i)), names[i]);
    }
    control.segment(0).setFocus();
    keyClick(control.segment(0), Qt::Key_Right);
    turnEventLoop();
    EXPECT_EQ(form->view().type(), ItemType::commandFile);
    EXPECT_EQ(QApplication::focusWidget(), &control.segment(1));
}

TEST_F(ItemEditorFormTest, TabGoesFromTheTitleToTheButtons) {
    open(tests::appItem("Editor"));
    std::vector<QWidget*> stops;
    for (int i = 0; i < 6; ++i) {
        stops.push_back(QApplication::focusWidget());
        keyClick(*QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(stops, (std::vector<QWidget*>{&form->titleField(), &form->typeControl().segment(0),
                                            &form->pathField(), &form->browseButton(),
                                            &form->cancelButton(), &form->confirmButton()}));
}

TEST_F(ItemEditorFormTest, TabReachesTheChosenSegmentFromBothSides) {
    open(tests::commandItem("Load", "htop"));
    QWidget* const chosen = &form->typeControl().segment(2);
    keyOfWindow(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), chosen);
    keyOfWindow(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &form->commandField());
    keyOfWindow(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), chosen);
    keyOfWindow(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &form->titleField());
    EXPECT_EQ(form->view().type(), ItemType::inlineCommand);

    form->view().setType(ItemType::commandFile);
    turnEventLoop();
    keyOfWindow(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &form->typeControl().segment(1));
}

TEST_F(ItemEditorFormTest, ArrowsChooseFromTheChosenSegmentOnAndSpaceChangesNothing) {
    open(tests::commandItem("Load", "htop"));
    keyOfWindow(Qt::Key_Tab);
    keyOfWindow(Qt::Key_Space);
    keyOfWindow(Qt::Key_Return);
    EXPECT_EQ(form->view().type(), ItemType::inlineCommand);
    const struct {
        Qt::LayoutDirection direction;
        int key;
        ItemType type;
    } table[] = {
        {Qt::LeftToRight, Qt::Key_Right, ItemType::inlineCommand},
        {Qt::LeftToRight, Qt::Key_Left, ItemType::commandFile},
        {Qt::LeftToRight, Qt::Key_Up, ItemType::app},
        {Qt::LeftToRight, Qt::Key_Left, ItemType::app},
        {Qt::LeftToRight, Qt::Key_Down, ItemType::commandFile},
        {Qt::RightToLeft, Qt::Key_Left, ItemType::inlineCommand},
        {Qt::RightToLeft, Qt::Key_Right, ItemType::commandFile},
        {Qt::RightToLeft, Qt::Key_Down, ItemType::inlineCommand},
        {Qt::RightToLeft, Qt::Key_Up, ItemType::commandFile},
    };
    int line = 0;
    for (const auto& row : table) {
        form->setLayoutDirection(row.direction);
        turnEventLoop();
        keyOfWindow(row.key);
        EXPECT_EQ(form->view().type(), row.type) << "line " << line;
        EXPECT_EQ(QApplication::focusWidget(),
                  &form->typeControl().segment(form->typeControl().currentIndex()))
            << "line " << line;
        ++line;
    }
}

TEST_F(ItemEditorFormTest, ClickOnASegmentTakesTheKeysThereOnlyWhenItChooses) {
    open();
    QAbstractButton& file = form->typeControl().segment(1);
    press(file, file.rect().center());
    release(file, QPoint(-40, 5));
    EXPECT_EQ(form->view().type(), ItemType::app);
    EXPECT_EQ(QApplication::focusWidget(), &form->titleField());
    click(file, file.rect().center());
    EXPECT_EQ(form->view().type(), ItemType::commandFile);
    EXPECT_EQ(QApplication::focusWidget(), &file);
}

TEST_F(ItemEditorFormTest, ReturnPressesNoButtonOfTheForm) {
    open(tests::appItem("Editor"));
    for (QWidget* const button :
         {&form->browseButton(), &form->cancelButton(), &form->confirmButton()}) {
        button->setFocus();
        keyOfWindow(Qt::Key_Return);
        keyOfWindow(Qt::Key_Enter, Qt::KeypadModifier);
    }
    EXPECT_TRUE(openPanel.shown.empty());
    EXPECT_TRUE(saved.empty());
    EXPECT_EQ(dismissed, 0);
    form->cancelButton().setFocus();
    keyOfWindow(Qt::Key_Space);
    EXPECT_EQ(dismissed, 1);
}

TEST_F(ItemEditorFormTest, ClickOnALabelFocusesItsControl) {
    open(tests::commandItem("Load", "htop"));
    const auto clickLabel = [this](const QString& text) {
        for (TextLabel* const label : form->findChildren<TextLabel*>())
            if (label->text() == text)
                click(*label, label->rect().center());
        return QApplication::focusWidget();
    };
    EXPECT_EQ(clickLabel(QStringLiteral("Type")), &form->typeControl().segment(2));
    EXPECT_EQ(clickLabel(QStringLiteral("Title")), &form->titleField());
    EXPECT_EQ(clickLabel(QStringLiteral("Command")), &form->commandField());
    form->view().setType(ItemType::app);
    turnEventLoop();
    EXPECT_EQ(clickLabel(QStringLiteral("App")), &form->pathField());
    EXPECT_EQ(clickLabel(QStringLiteral("Edit Item")), &form->pathField());
}

TEST_F(ItemEditorFormTest, AltAndALetterActOnEachControl) {
    open(tests::appItem("Editor"));
    const auto alt = [this](int key) {
        keyOfWindow(key, Qt::AltModifier);
        return QApplication::focusWidget();
    };
    EXPECT_EQ(alt(Qt::Key_Y), &form->typeControl().segment(0));
    EXPECT_EQ(alt(Qt::Key_P), &form->pathField());
    EXPECT_EQ(alt(Qt::Key_T), &form->titleField());
    alt(Qt::Key_B);
    EXPECT_EQ(openPanel.shown.size(), 1U);
    form->view().setType(ItemType::inlineCommand);
    turnEventLoop();
    alt(Qt::Key_B);
    EXPECT_EQ(openPanel.shown.size(), 1U) << "there is no such button now";
    EXPECT_EQ(alt(Qt::Key_P), &form->titleField());
    EXPECT_EQ(alt(Qt::Key_O), &form->commandField());
    EXPECT_EQ(dismissed, 0);
    alt(Qt::Key_C);
    EXPECT_EQ(dismissed, 1);
    alt(Qt::Key_S);
    EXPECT_EQ(saved.size(), 1U);
}

TEST_F(ItemEditorFormTest, LettersAreUnderlinedWhileAltIsDown) {
    open(tests::appItem("Editor"));
    const QImage plain = form->grab().toImage();
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier);
    QApplication::sendEvent(&form->titleField(), &down);
    EXPECT_NE(form->grab().toImage(), plain);
    EXPECT_EQ(form->cancelButton().text(), QStringLiteral("Cancel"));
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Alt, Qt::NoModifier);
    QApplication::sendEvent(&form->titleField(), &up);
    EXPECT_EQ(form->grab().toImage(), plain);
}

TEST_F(ItemEditorFormTest, EveryControlHasANameAndARole) {
    open();
    for (QWidget* const control : form->findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || !control->isVisible())
            continue;
        EXPECT_NE(accessibleName(*control), QString()) << control->metaObject()->className();
        EXPECT_NE(accessibleRole(*control), QAccessible::NoRole);
        EXPECT_NE(accessibleRole(*control), QAccessible::Client);
    }
}

} // namespace
} // namespace kestrel::linux_shell
