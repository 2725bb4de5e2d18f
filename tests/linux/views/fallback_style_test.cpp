#include "shells/linux/views/kit/fallback_style.h"

#include "shells/linux/desktop/appearance/contrast.h"
#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "tests/linux/views/events.h"
#include "tests/linux/views/pictures.h"
#include "views/popover/menu_popover_style.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QFileDialog>
#include <QFontMetrics>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionMenuItem>
#include <QStyleOptionSlider>
#include <QTreeView>

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

class FallbackStyleTest : public testing::Test {
  protected:
    FallbackStyleTest() {
        QApplication::setPalette(paletteFor(ColorScheme::light, Contrast::normal));
    }

    ~FallbackStyleTest() override { QApplication::setPalette(QPalette()); }

    void use(QWidget& widget) {
        widget.setStyle(&style);
        widget.ensurePolished();
    }

    /// With nothing written on it, so that only the face is seen.
    QImage grabbed(QWidget& widget) {
        widget.setAttribute(Qt::WA_DontShowOnScreen);
        widget.resize(120, 30);
        return widget.grab().toImage();
    }

    bool isCompositing = false;
    FallbackStyle style{[this] { return isCompositing; }};
};

QStyleOptionSlider optionOf(const QScrollBar& bar) {
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.pageStep = bar.pageStep();
    option.sliderPosition = bar.value();
    option.sliderValue = bar.value();
    return option;
}

TEST_F(FallbackStyleTest, ScrollBarsAreSlimAndHaveNoButtons) {
    QScrollBar bar(Qt::Vertical);
    use(bar);
    EXPECT_LE(bar.sizeHint().width(), 12);
    bar.setRange(0, 300);
    bar.setPageStep(100);
    bar.resize(12, 400);
    const auto part = [&](QStyle::SubControl control) {
        const QStyleOptionSlider option = optionOf(bar);
        return style.subControlRect(QStyle::CC_ScrollBar, &option, control, &bar);
    };
    EXPECT_TRUE(part(QStyle::SC_ScrollBarAddLine).isEmpty());
    EXPECT_TRUE(part(QStyle::SC_ScrollBarSubLine).isEmpty());
    EXPECT_EQ(part(QStyle::SC_ScrollBarGroove), bar.rect());
    EXPECT_EQ(part(QStyle::SC_ScrollBarSlider), QRect(0, 0, 12, 100));
    bar.setValue(300);
    EXPECT_EQ(part(QStyle::SC_ScrollBarSlider), QRect(0, 300, 12, 100));
    bar.setPageStep(1);
    EXPECT_GE(part(QStyle::SC_ScrollBarSlider).height(), 24)
        << "there is something to take hold of";
}

TEST_F(FallbackStyleTest, ThumbIsRoundedOnTheListsOwnBackground) {
    QScrollArea list;
    use(list);
    QWidget content;
    content.resize(100, 800);
    list.setWidget(&content);
    list.viewport()->setBackgroundRole(QPalette::Base);
    QScrollBar& bar = *list.verticalScrollBar();
    use(bar);
    bar.setRange(0, 300);
    bar.setPageStep(100);
    bar.resize(12, 400);
    const QImage image = bar.grab().toImage();
    const QColor base = bar.palette().color(QPalette::Base);
    EXPECT_EQ(image.pixelColor(6, 300), base);
    EXPECT_LT(contrastRatio(image.pixelColor(3, 2), base), 1.1) << "a corner of the thumb";
    EXPECT_GE(contrastRatio(image.pixelColor(6, 50), base), 3);
    EXPECT_EQ(image.pixelColor(1, 50), base);
}

TEST_F(FallbackStyleTest, ThumbIsDraggedByThePointer) {
    QScrollBar bar(Qt::Vertical);
    use(bar);
    bar.setRange(0, 300);
    bar.setPageStep(100);
    bar.resize(12, 400);
    bar.show();
    press(bar, QPoint(6, 50));
    drag(bar, QPoint(6, 150));
    release(bar, QPoint(6, 150));
    EXPECT_EQ(bar.value(), 100);
    click(bar, QPoint(6, 390));
    EXPECT_EQ(bar.value(), 200) << "a page on";
}

TEST_F(FallbackStyleTest, MenusHaveThePopoversCorners) {
    QMenu cut;
    use(cut);
    EXPECT_FALSE(cut.testAttribute(Qt::WA_TranslucentBackground));
    QStyleOption option;
    option.rect = QRect(0, 0, 100, 60);
    QStyleHintReturnMask mask;
    ASSERT_EQ(style.styleHint(QStyle::SH_Menu_Mask, &option, &cut, &mask), 1);
    EXPECT_FALSE(mask.region.contains(QPoint(1, 1)));
    EXPECT_TRUE(mask.region.contains(QPoint(10, 1)));
    EXPECT_TRUE(mask.region.contains(QPoint(50, 30)));

    isCompositing = true;
    QMenu soft;
    use(soft);
    EXPECT_TRUE(soft.testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(style.styleHint(QStyle::SH_Menu_Mask, &option, &soft, &mask), 0);
    soft.addAction(QStringLiteral("Action"));
    soft.resize(soft.sizeHint());
    QImage image(soft.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    soft.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    EXPECT_EQ(image.pixelColor(1, 1).alpha(), 0);
    EXPECT_EQ(image.pixelColor(image.width() / 2, 2), soft.palette().color(QPalette::Window));
}

QImage highlightedAction(const QMenu& menu, const FallbackStyle& style) {
    QStyleOptionMenuItem option;
    option.initFrom(&menu);
    option.rect = QRect(0, 0, 100, 28);
    option.state |= QStyle::State_Selected | QStyle::State_Enabled;
    option.menuItemType = QStyleOptionMenuItem::Normal;
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(option.palette.color(QPalette::Window));
    QPainter painter(&image);
    style.drawControl(QStyle::CE_MenuItem, &option, &painter, &menu);
    return image;
}

TEST_F(FallbackStyleTest, HighlightedActionHasTheWashOfThePopoversRows) {
    const QMenu menu;
    const QImage image = highlightedAction(menu, style);
    const QColor window = menu.palette().color(QPalette::Window);
    const QColor text = menu.palette().color(QPalette::WindowText);
    const double share = menu_popover_style::row::highlightOpacity;
    EXPECT_NEAR(image.pixelColor(50, 14).green(),
                window.green() + share * (text.green() - window.green()), 1.5);
    EXPECT_EQ(image.pixelColor(0, 0), window) << "the corners are round";
}

TEST_F(FallbackStyleTest, HighlightedActionUnderHighContrastHasTheFullHighlight) {
    QApplication::setPalette(paletteFor(ColorScheme::dark, Contrast::high));
    const QMenu menu;
    EXPECT_EQ(highlightedAction(menu, style).pixelColor(50, 14),
              menu.palette().color(QPalette::Highlight));
}

TEST_F(FallbackStyleTest, ButtonsOfDialogsLookLikeTheForms) {
    struct Case {
        PushButton::Look look;
        bool isDefault;
        bool isEnabled;
    };
    for (const auto& [look, isDefault, isEnabled] :
         {Case{PushButton::Look::bordered, false, true},
          Case{PushButton::Look::prominent, true, true},
          Case{PushButton::Look::bordered, false, false},
          Case{PushButton::Look::prominent, true, false}}) {
        PushButton own(QString(), look);
        own.setEnabled(isEnabled);
        QPushButton toolkits;
        use(toolkits);
        toolkits.setDefault(isDefault);
        toolkits.setEnabled(isEnabled);
        EXPECT_EQ(grabbed(toolkits), grabbed(own)) << isDefault << isEnabled;
    }
}

TEST_F(FallbackStyleTest, ButtonsOfDialogsAreAsTallAsTheFormsAndWithoutIcons) {
    QPushButton button(QStringLiteral("Open"));
    use(button);
    EXPECT_EQ(button.sizeHint().height(), controlHeight);
    EXPECT_EQ(
        style.styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons, nullptr, nullptr, nullptr), 0);
}

TEST_F(FallbackStyleTest, ListOfAComboBoxHasLinesOfAMenu) {
    QComboBox combo;
    use(combo);
    combo.addItems({QStringLiteral("first"), QStringLiteral("second")});
    combo.show();
    combo.showPopup();
    QAbstractItemView& list = *combo.view();
    const QRect line = list.visualRect(list.model()->index(1, 0));
    EXPECT_GE(line.height(), 24);
    EXPECT_LE(line.height(), 32);
    const QImage image = list.viewport()->grab(line).toImage();
    EXPECT_GT(greatestContrast(image, image.pixelColor(0, 0)), 4.5) << "there is a text";
    combo.hidePopup();
}

TEST_F(FallbackStyleTest, FieldsOfDialogsLookLikeTheForms) {
    RoundedField own(style::body, QString(), QStringLiteral("own"));
    QLineEdit toolkits;
    use(toolkits);
    EXPECT_EQ(grabbed(toolkits), grabbed(own));
}

TEST_F(FallbackStyleTest, TooltipsHaveTheColorsOfListsUnlessAPaletteSaysOthers) {
    const QString before = QApplication::style()->name();
    QApplication::setStyle(new FallbackStyle([] { return false; }));
    QApplication::setPalette(QPalette());
    const QPalette toolkits = QApplication::palette();
    EXPECT_EQ(toolkits.color(QPalette::ToolTipBase), toolkits.color(QPalette::Base));
    EXPECT_EQ(toolkits.color(QPalette::ToolTipText), toolkits.color(QPalette::Text));
    const QPalette dark = paletteFor(ColorScheme::dark, Contrast::normal);
    QApplication::setPalette(dark);
    EXPECT_EQ(QApplication::palette().color(QPalette::ToolTipBase),
              dark.color(QPalette::ToolTipBase));
    QApplication::setStyle(before);
}

/// The number of pixels a cell of the dialog's list has for a text.
int spaceInColumn(const QTreeView& list, int column) {
    return list.header()->sectionSize(column) -
           2 * (list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &list) + 1);
}

TEST_F(FallbackStyleTest, SizesAndDatesInTheFileDialogAreNotCut) {
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    auto* const list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    ASSERT_NE(list, nullptr);
    const int width = dialog.sizeHint().width();
    use(dialog);
    const QFontMetrics metrics(list->font());
    const QLocale locale = QLocale::system();
    for (const qint64 bytes : {999, 1'000, 100'000, 1'000'000})
        EXPECT_GE(spaceInColumn(*list, 1),
                  metrics.horizontalAdvance(locale.formattedDataSize(bytes)));
    const QDateTime date(QDate(2022, 10, 20), QTime(20, 20, 20));
    EXPECT_GE(spaceInColumn(*list, 3),
              metrics.horizontalAdvance(locale.toString(date, QLocale::ShortFormat)));
    EXPECT_GE(dialog.minimumWidth(), std::min(width, dialog.screen()->availableSize().width() / 2))
        << "what the columns have gained is not taken from the names";
    EXPECT_LE(dialog.minimumWidth(), dialog.screen()->availableSize().width());
}

} // namespace
} // namespace kestrel::linux_shell
