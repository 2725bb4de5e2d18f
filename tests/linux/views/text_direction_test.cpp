// Texts that run from right to left, or both ways, in both lists and in the form.

#include "shells/linux/views/application_row.h"
#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "shells/linux/views/kit/text_line.h"
#include "shells/linux/views/kit/wrapped_text.h"
#include "shells/linux/views/popover_row.h"
#include "tests/linux/views/widget_fixture.h"

#include <QFontMetrics>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kestrel::linux_shell {
namespace {

const QString hebrew = QStringLiteral("שלום");
constexpr int rowWidth = 240;

/// The rectangle of what is drawn in the columns of an image from `left` to `right`.
QRect inkIn(const QImage& image, int left, int right) {
    QRect result;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = std::max(left, 0); x < std::min(right, image.width()); ++x)
            if (image.pixel(x, y) != image.pixel(0, 0))
                result |= QRect(x, y, 1, 1);
    }
    return result;
}

QRect inkOf(const QImage& image) { return inkIn(image, 0, image.width()); }

/// How high the first and the last columns of what is drawn are.
std::pair<int, int> heightsAtEnds(const QImage& image, int columns) {
    const QRect ink = inkOf(image);
    return {inkIn(image, ink.left(), ink.left() + columns).height(),
            inkIn(image, ink.right() + 1 - columns, ink.right() + 1).height()};
}

/// A row of the popover without an icon.
QImage popoverRow(const QString& title, Qt::LayoutDirection window = Qt::LeftToRight) {
    const FileIconSource icons([](const std::string&) { return QIcon(); });
    PopoverRow row(icons, nullptr);
    row.setLayoutDirection(window);
    row.resize(rowWidth, 34);
    row.show(title, FileIcon{""});
    return row.grab().toImage();
}

/// A row of the list of applications without an icon.
QImage applicationRow(const QString& name, Qt::LayoutDirection window = Qt::LeftToRight) {
    const FileIconSource icons([](const std::string&) { return QIcon(); });
    ApplicationRow row(icons, nullptr);
    row.setLayoutDirection(window);
    row.resize(rowWidth, 34);
    row.show({"/a/entry.desktop", name.toStdString(), ""});
    return row.grab().toImage();
}

/// A row of the settings list without an icon.
QImage settingsRow(const QString& title, const std::string& path,
                   Qt::LayoutDirection window = Qt::LeftToRight) {
    ItemRowWidget row;
    row.setLayoutDirection(window);
    row.resize(rowWidth, 44);
    row.bind({.item = tests::appItem(title.toStdString(), path)}, {});
    return row.grab().toImage();
}

TEST(TextDirectionTest, ALongTitleFromTheRightIsCutAtItsLeftEndWhereTheEllipsisStands) {
    const QString words = (hebrew + u' ').repeated(20);
    for (const auto& rowOf : {popoverRow, applicationRow}) {
        for (const Qt::LayoutDirection window : {Qt::LeftToRight, Qt::RightToLeft}) {
            const QImage image = rowOf(words, window);
            EXPECT_EQ(image, rowOf(words + hebrew, window)) << "the end is what is not shown";
            const QRect ink = inkOf(image);
            const int dots = 8; // pixels; an ellipsis takes more
            EXPECT_LE(inkIn(image, ink.left(), ink.left() + dots).height(), 3);
            EXPECT_GE(inkIn(image, ink.right() - dots, ink.right() + 1).height(), 5);
        }
    }
}

TEST(TextDirectionTest, AMixedTitleRunsInTheDirectionOfItsFirstLetter) {
    // Both put the Latin word left of the Hebrew one.
    const QString latinFirst = QStringLiteral("Kestrel ") + hebrew;
    const QString hebrewFirst = hebrew + QStringLiteral(" Kestrel");
    EXPECT_EQ(popoverRow(latinFirst), popoverRow(hebrewFirst));
    EXPECT_EQ(applicationRow(latinFirst), applicationRow(hebrewFirst));
    EXPECT_EQ(settingsRow(latinFirst, ""), settingsRow(hebrewFirst, ""));
    EXPECT_EQ(popoverRow(latinFirst, Qt::RightToLeft), popoverRow(hebrewFirst, Qt::RightToLeft));
    EXPECT_EQ(settingsRow(latinFirst, "", Qt::RightToLeft),
              settingsRow(hebrewFirst, "", Qt::RightToLeft));
    EXPECT_NE(popoverRow(latinFirst), popoverRow(hebrew));
}

TEST(TextDirectionTest, TheEllipsisRunsWithTheLettersThatAreCut) {
    const QFontMetrics metrics(fontFor(style::body));
    const auto endOf = [&](const QString& title) {
        return cutAtEnd(title, metrics, 150).section(QChar(0x2026), 1, -1, {});
    };
    EXPECT_EQ(endOf(QStringLiteral("Kestrel ") + hebrew.repeated(20)), QChar(0x200F));
    EXPECT_EQ(endOf(hebrew + u' ' + QStringLiteral("Kestrel").repeated(20)), QChar(0x200E));
    EXPECT_EQ(endOf(hebrew.repeated(20)), QString());
    EXPECT_EQ(endOf(QStringLiteral("Kestrel").repeated(20)), QString());
    EXPECT_EQ(cutAtEnd(hebrew, metrics, 150), hebrew);
}

TEST(TextDirectionTest, ATitleStandsWhereTheRowsBegin) {
    for (const QString& title : {QStringLiteral("Title"), hebrew}) {
        EXPECT_NEAR(inkOf(popoverRow(title)).left(), 12 + 18 + 10, 2);
        EXPECT_NEAR(inkOf(popoverRow(title, Qt::RightToLeft)).right(), rowWidth - 12 - 18 - 10, 2);
    }
}

TEST(TextDirectionTest, APathRunsFromLeftToRightInEveryWindow) {
    for (const Qt::LayoutDirection window : {Qt::LeftToRight, Qt::RightToLeft}) {
        ItemRowWidget row;
        row.setLayoutDirection(window);
        row.resize(300, 44);
        for (const char* const path : {"/nnn", "/ש/nnn"}) {
            row.bind({.item = tests::appItem("", path)}, {});
            const QRect place = row.layoutOfParts().detail;
            const auto [left, right] = heightsAtEnds(row.grab(place).toImage(), 4);
            EXPECT_GT(left, right) << path << ": the slash is higher than the letter";
        }
    }
}

TEST(TextDirectionTest, EnglishInAWindowFromTheRightKeepsItsFullStopAtItsEnd) {
    TextLabel label(QStringLiteral("nnn."), {style::body});
    TextLabel wrapped(QStringLiteral("nnn."), {style::body});
    wrapped.setWrapWidth(120);
    for (TextLabel* const widget : {&label, &wrapped}) {
        widget->setLayoutDirection(Qt::RightToLeft);
        widget->resize(widget->sizeHint());
        const auto [left, right] = heightsAtEnds(widget->grab().toImage(), 2);
        EXPECT_GT(left, right + 1) << "the letter is higher than the full stop";
    }
}

TEST(TextDirectionTest, EvenLinesAreAsFewAndNoWiderThanTheyMust) {
    const QString text = QStringLiteral("Four words of equal length here stand");
    const QFont font = fontFor(style::callout);
    const int line = QFontMetrics(font).height();
    const int whole = static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(text)));
    EXPECT_EQ(evenWidth(text, font, whole), whole) << "one line stays one";
    const int even = evenWidth(text, font, whole - 1);
    EXPECT_EQ(wrappedHeight(text, font, even), wrappedHeight(text, font, whole - 1));
    EXPECT_NEAR(wrappedHeight(text, font, even), 2 * line, 2);
    EXPECT_GT(wrappedHeight(text, font, even - 1), 2 * line + 2);
    EXPECT_LT(even, whole * 2 / 3);
}

TEST(TextDirectionTest, AWidthThatIsJustEnoughLosesNoWord) {
    QString text;
    for (int words = 1; words < 40; ++words) {
        text += QStringLiteral("if ");
        TextLabel line(text.trimmed(), {style::caption});
        line.resize(line.sizeHint());
        TextLabel wrapped(text.trimmed(), {style::caption});
        wrapped.setWrapWidth(2 * line.width());
        wrapped.resize(wrapped.sizeHint());
        EXPECT_NEAR(inkOf(wrapped.grab().toImage()).width(), inkOf(line.grab().toImage()).width(),
                    1)
            << words;
    }
}

class FormDirectionTest : public SettingsFixture {};

TEST_F(FormDirectionTest, ATitleIsEditedInItsOwnDirectionAndPathsFromLeftToRight) {
    view().addClicked();
    turnEventLoop();
    ItemEditorForm& form = *widget->form();
    EXPECT_EQ(form.titleField().layoutDirection(), Qt::LeftToRight);
    form.titleField().setText(hebrew + QStringLiteral(" Kestrel"));
    EXPECT_EQ(form.titleField().layoutDirection(), Qt::RightToLeft);
    form.titleField().setText(QStringLiteral("Kestrel ") + hebrew);
    EXPECT_EQ(form.titleField().layoutDirection(), Qt::LeftToRight);
    form.pathField().setText(hebrew);
    form.commandField().setText(hebrew);
    EXPECT_EQ(form.pathField().layoutDirection(), Qt::LeftToRight);
    EXPECT_EQ(form.commandField().layoutDirection(), Qt::LeftToRight);
}

} // namespace
} // namespace kestrel::linux_shell
