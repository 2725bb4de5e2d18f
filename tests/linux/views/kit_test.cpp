#include "shells/linux/desktop/appearance/contrast.h"
#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/badge.h"
#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/kit/actions_menu.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "shells/linux/views/kit/wrapped_text.h"
#include "shells/linux/views/toolbar_button.h"
#include "tests/linux/views/events.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QImage>
#include <QTranslator>

#include <gmock/gmock.h>

namespace kestrel::linux_shell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

QPalette darkPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(40, 40, 44));
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::Highlight, QColor(0, 120, 60));
    return palette;
}

QImage grab(QWidget& widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

bool contains(const QImage& image, QColor color) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == color)
                return true;
    }
    return false;
}

TEST(StyleBridgeTest, APointIsAPixelOfTheSystemFont) {
    const QFont font = fontFor({.size = 10, .weight = FontWeight::medium});
    EXPECT_EQ(font.pixelSize(), 10);
    EXPECT_EQ(font.weight(), QFont::Medium);
    EXPECT_EQ(font.family(), QApplication::font().family());
    EXPECT_EQ(fontFor(style::headline).weight(), QFont::Bold);
}

TEST(StyleBridgeTest, TheLevelsAreStepsOfThePalettesTextColour) {
    using enum style::ColorLevel;
    for (const QPalette& palette : {QPalette(Qt::lightGray), darkPalette()}) {
        const QColor text = palette.color(QPalette::WindowText);
        double last = 1.01;
        for (const style::ColorLevel level : {primary, secondary, tertiary, quaternary}) {
            const QColor color = colorFor(level, palette);
            EXPECT_EQ(color.rgb() & 0xFFFFFF, text.rgb() & 0xFFFFFF);
            EXPECT_LT(color.alphaF(), last);
            last = color.alphaF();
        }
        EXPECT_EQ(colorFor(accent, palette), palette.color(QPalette::Highlight));
        EXPECT_EQ(colorFor(windowBackground, palette), palette.color(QPalette::Window));
    }
}

TEST(StyleBridgeTest, TheHighlightIsEightPercentOfThePrimaryColour) {
    const QColor wash = washColor(darkPalette(), 0.08);
    EXPECT_EQ(wash.red(), 255);
    EXPECT_NEAR(wash.alphaF(), 0.08, 0.002);
}

class Shouting : public QTranslator {
  public:
    QString translate(const char* context, const char* key, const char* /*disambiguation*/,
                      int /*n*/) const override {
        return qstrcmp(context, "kestrel::style::Text") == 0 ? QString::fromUtf8(key).toUpper()
                                                             : QString();
    }
    bool isEmpty() const override { return false; }
};

TEST(StyleBridgeTest, OnlyLocalizableTextsAreTranslated) {
    Shouting translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(textFor(style::Text::localizable("Cancel")), QStringLiteral("CANCEL"));
    EXPECT_EQ(textFor(style::Text{"App"}), QStringLiteral("App"));
    QCoreApplication::removeTranslator(&translator);
    EXPECT_EQ(textFor(style::Text::localizable("Browse…")), QStringLiteral("Browse…"));
}

TEST(SymbolTest, EverySymbolOfTheProgramIsThereInItsColourAtEveryScale) {
    for (const char* const name :
         {"app.dashed", "doc.text", "ellipsis.circle", "gearshape", "pencil", "plus", "power",
          "square.grid.2x2", "terminal", "trash"}) {
        for (const double scale : {1.0, 1.25, 2.0}) {
            const QPixmap pixmap = symbolPixmap(name, 20, Qt::red, scale);
            ASSERT_FALSE(pixmap.isNull()) << name;
            EXPECT_EQ(pixmap.width(), qRound(20 * scale)) << name;
            EXPECT_EQ(pixmap.deviceIndependentSize(), QSizeF(20, 20)) << name;
        }
        const QImage image = symbolPixmap(name, 40, Qt::red, 1).toImage();
        EXPECT_TRUE(contains(image, Qt::red)) << name;
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << name;
    }
}

TEST(SymbolTest, AnUnknownNameIsANullPixmap) {
    EXPECT_TRUE(symbolPixmap("no.such.symbol", 20, Qt::red, 1).isNull());
}

TEST(ItemIconPixmapTest, AnIconIsStretchedToExactlyTheSize) {
    QPixmap odd(10, 40);
    odd.fill(Qt::blue);
    const FileIconSource icons([&](const std::string&) { return QIcon(odd); });
    const QPixmap pixmap = itemIconPixmap(FileIcon{"/x"}, icons, QSize(18, 18), 1.5, Qt::black);
    EXPECT_EQ(pixmap.size(), QSize(27, 27));
    EXPECT_EQ(pixmap.toImage().pixelColor(1, 13), QColor(Qt::blue));
}

TEST(ItemIconPixmapTest, AMissingIconIsANullPixmap) {
    const FileIconSource none([](const std::string&) { return QIcon(); });
    EXPECT_TRUE(itemIconPixmap(FileIcon{"/x"}, none, QSize(18, 18), 1, Qt::black).isNull());
    EXPECT_TRUE(itemIconPixmap(SymbolIcon{"nothing"}, none, QSize(18, 18), 1, Qt::black).isNull());
}

TEST(PushButtonTest, TheProminentOneIsFilledWithTheAccentColourWhileEnabled) {
    PushButton button(QStringLiteral("Add"), PushButton::Look::prominent);
    button.setPalette(darkPalette());
    button.resize(button.sizeHint());
    EXPECT_TRUE(contains(grab(button), QColor(0, 120, 60)));
    button.setEnabled(false);
    EXPECT_FALSE(contains(grab(button), QColor(0, 120, 60)));
}

TEST(PushButtonTest, ReturnAndSpacePress) {
    PushButton button(QStringLiteral("Add"), PushButton::Look::bordered);
    EventLog log;
    QObject::connect(&button, &QAbstractButton::clicked, [&] { log << "clicked"; });
    keyClick(button, Qt::Key_Return);
    EXPECT_THAT(log.take(), ElementsAre("clicked"));
    keyClick(button, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(log.take(), ElementsAre("clicked"));
    keyClick(button, Qt::Key_Space);
    EXPECT_THAT(log.take(), ElementsAre("clicked"));
    keyClick(button, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST(PushButtonTest, ReturnThatIsLeftToOthersPressesNothing) {
    PushButton button(QStringLiteral("Add"), PushButton::Look::bordered);
    button.setReturnKey(ControlButton::ReturnKey::leftToOthers);
    EventLog log;
    QObject::connect(&button, &QAbstractButton::clicked, [&] { log << "clicked"; });
    keyClick(button, Qt::Key_Return);
    keyClick(button, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_THAT(log.take(), IsEmpty());
    keyClick(button, Qt::Key_Space);
    EXPECT_THAT(log.take(), ElementsAre("clicked"));
}

TEST(PushButtonTest, NoMarkIsLeftOnOneThatWasHiddenMeanwhile) {
    QWidget window;
    PushButton button(QStringLiteral("Add"), PushButton::Look::bordered, &window);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    button.setFocus(Qt::PopupFocusReason);
    const QImage plain = grab(button);
    keyClick(button, Qt::Key_Escape);
    EXPECT_NE(grab(button), plain);
    button.hide();
    button.show();
    button.setFocus(Qt::PopupFocusReason);
    EXPECT_TRUE(button.hasFocus());
    EXPECT_EQ(grab(button), plain);
}

TEST(ToolbarButtonTest, TheWholeRectangleReactsWhileEnabled) {
    ToolbarButton button(QStringLiteral("Add"), "plus");
    EXPECT_EQ(button.size(), QSize(52, 42));
    EventLog log;
    QObject::connect(&button, &QAbstractButton::clicked, [&] { log << "clicked"; });
    click(button, QPoint(1, 1));
    click(button, QPoint(50, 40));
    EXPECT_THAT(log.take(), ElementsAre("clicked", "clicked"));
    button.setEnabled(false);
    click(button, QPoint(26, 20));
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST(ToolbarButtonTest, IsDrawnInTheDisabledLabelColourWhileDisabled) {
    ToolbarButton button(QStringLiteral("Add"), "plus");
    button.setPalette(darkPalette());
    EXPECT_TRUE(contains(grab(button), Qt::white));
    button.setEnabled(false);
    EXPECT_FALSE(contains(grab(button), Qt::white));
}

TEST(RoundedFieldTest, ShowingAnotherTextReportsNoEdit) {
    RoundedField field(style::body, QStringLiteral("e.g."), QStringLiteral("Title"));
    EventLog log;
    QObject::connect(&field, &RoundedField::edited, [&] { log << "edited"; });
    field.show(QStringLiteral("abc"));
    EXPECT_EQ(field.text(), QStringLiteral("abc"));
    EXPECT_EQ(field.cursorPosition(), 0);
    EXPECT_THAT(log.take(), IsEmpty());
}

TEST(RoundedFieldTest, FollowsThePaletteThatChangesUnderIt) {
    RoundedField field(style::body, QStringLiteral("hint"), QStringLiteral("Title"));
    field.ensurePolished();
    const QPalette dark = paletteFor(ColorScheme::dark, Contrast::normal);
    QApplication::setPalette(dark);
    QApplication::processEvents();
    EXPECT_EQ(field.palette().color(QPalette::Text), dark.color(QPalette::Text));
    EXPECT_EQ(field.palette().color(QPalette::Base), QColor(Qt::transparent));
    EXPECT_EQ(field.palette().color(QPalette::PlaceholderText), placeholderColor(dark));
    QApplication::setPalette(QPalette());
    QApplication::processEvents();
    EXPECT_EQ(field.palette().color(QPalette::Text), QApplication::palette().color(QPalette::Text));
}

TEST(RoundedFieldTest, PlaceholderCanBeReadEvenWhereThePaletteHasNone) {
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(0x1B, 0x1E, 0x20));
    dark.setColor(QPalette::Text, QColor(0xFC, 0xFC, 0xFC));
    dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    QApplication::setPalette(dark);
    const RoundedField field(style::body, QStringLiteral("hint"), QStringLiteral("Title"));
    const QColor hint = field.palette().color(QPalette::PlaceholderText);
    const QColor background = dark.color(QPalette::Base);
    EXPECT_GE(contrastRatio(mixed(background, QColor(hint.rgb()), hint.alphaF()), background), 4.5);
    QApplication::setPalette(QPalette());
}

TEST(HighContrastTest, TextsAndLinesAreStrongAndBackgroundsLeaveTheirTextReadable) {
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const QPalette palette = paletteFor(scheme, Contrast::high);
        const QColor window = palette.color(QPalette::Window);
        const QColor text = palette.color(QPalette::WindowText);
        const auto shown = [&](const QColor& faded) { return mixed(window, text, faded.alphaF()); };
        for (const auto level : {style::ColorLevel::secondary, style::ColorLevel::tertiary})
            EXPECT_GE(contrastRatio(shown(colorFor(level, palette)), window), 7);
        EXPECT_GE(contrastRatio(shown(colorFor(style::ColorLevel::tertiaryLabel, palette)), window),
                  4.5);
        EXPECT_GE(contrastRatio(shown(separatorColor(palette)), window), 3);
        EXPECT_GE(contrastRatio(shown(outlineColor(palette, 0.06)), window), 3);
        EXPECT_GE(contrastRatio(shown(washColor(palette, 0.1)), text), 7);
        const QColor badge = shown(colorFor(style::ColorLevel::quaternary, palette));
        EXPECT_GE(contrastRatio(shown(colorFor(style::ColorLevel::secondary, palette)), badge),
                  4.5);
    }
}

TEST(BadgeTest, PadsItsTextByFiveAndTwo) {
    const QFontMetrics metrics(fontFor(style::caption.withWeight(FontWeight::medium)));
    const QString text = QStringLiteral("Command File");
    EXPECT_EQ(badgeSize(text), QSize(metrics.horizontalAdvance(text) + 10, metrics.height() + 4));
}

TEST(TextLabelTest, LooksTheSameWhileDisabled) {
    TextLabel label(QStringLiteral("No items yet"), {style::callout, style::ColorLevel::primary});
    label.setPalette(darkPalette());
    label.resize(label.sizeHint());
    const QImage enabled = grab(label);
    EXPECT_TRUE(contains(enabled, Qt::white));
    label.setEnabled(false);
    EXPECT_EQ(grab(label), enabled);
}

TEST(TextLabelTest, FollowsTheSystemFontAsFieldsDo) {
    const QFont before = QApplication::font();
    const TextLabel label(QStringLiteral("Title"), {style::headline});
    const RoundedField field(style::body, {}, QStringLiteral("Title"));
    label.ensurePolished();
    field.ensurePolished();
    QFont other = before;
    other.setFamily(QStringLiteral("DejaVu Serif"));
    QApplication::setFont(other);
    QApplication::processEvents();
    EXPECT_EQ(label.font().family(), other.family());
    EXPECT_EQ(label.font().weight(), QFont::Bold);
    EXPECT_EQ(field.font().family(), other.family());
    EXPECT_EQ(field.font().pixelSize(), 13);
    QApplication::setFont(before);
}

TEST(WrappedTextTest, NeedsALineForEverySortOfLineBreak) {
    const QFont font = fontFor(style::body);
    const int line = wrappedHeight(QStringLiteral("one"), font, 400);
    for (const QChar separator :
         {QChar(u'\n'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)}) {
        const QString text = QStringLiteral("one%1two%1three").arg(separator);
        EXPECT_GE(wrappedHeight(text, font, 400), 3 * line)
            << static_cast<int>(separator.unicode());
    }
}

TEST(WrappedTextTest, NeedsALineForEachLineBreakAndBreaksLongWords) {
    const QFont font = fontFor(style::body);
    const int line = wrappedHeight(QStringLiteral("one"), font, 400);
    EXPECT_EQ(line, QFontMetrics(font).height());
    EXPECT_NEAR(wrappedHeight(QStringLiteral("one\ntwo"), font, 400), 2 * line, 2);
    EXPECT_GE(wrappedHeight(QString(200, QLatin1Char('m')), font, 400), 4 * line);
    EXPECT_EQ(wrappedHeight(QString(), font, 400), line);
}

} // namespace
} // namespace kestrel::linux_shell
