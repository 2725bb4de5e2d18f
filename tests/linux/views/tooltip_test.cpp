// The tooltips of the lists: the whole of what a row shows cut, and of an application where it is.

#include "shells/linux/views/application_row.h"
#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/cut_text.h"
#include "shells/linux/views/popover_row.h"
#include "tests/linux/views/widget_fixture.h"

#include <QHelpEvent>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

/// What the pointer that rests over the row is told; empty for no tooltip.
QString tooltipOver(QWidget& row) {
    QHelpEvent event(QEvent::ToolTip, row.rect().center(), row.mapToGlobal(row.rect().center()));
    QApplication::sendEvent(&row, &event);
    if (!event.isAccepted())
        return {};
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
}

QString overPopoverRow(const QString& title) {
    const FileIconSource icons([](const std::string&) { return QIcon(); });
    PopoverRow row(icons, nullptr);
    row.resize(240, 34);
    row.show(title, FileIcon{""});
    return tooltipOver(row);
}

QString overApplicationRow(const QString& name) {
    const FileIconSource icons([](const std::string&) { return QIcon(); });
    ApplicationRow row(icons, nullptr);
    row.resize(240, 34);
    row.show({"/a/<i>entry</i>.desktop", name.toStdString(), ""});
    return tooltipOver(row);
}

QString overSettingsRow(const std::string& title, const std::string& path) {
    ItemRowWidget row;
    row.resize(300, 44);
    row.bind({.item = tests::appItem(title, path)}, {});
    return tooltipOver(row);
}

TEST(TooltipTest, ThePopoversRowTellsATitleThatItShowsCut) {
    const QString title = QStringLiteral("a title of more words than fit into the popover's row");
    EXPECT_EQ(overPopoverRow(title), title);
    EXPECT_EQ(overPopoverRow(QStringLiteral("one\ntwo")), QStringLiteral("one\ntwo"));
    EXPECT_EQ(overPopoverRow(QStringLiteral("short")), QString());
}

TEST(TooltipTest, TheRowOfAnApplicationTellsWhereItIsAndANameThatItShowsCut) {
    const QString path = QStringLiteral("/a/<i>entry</i>.desktop");
    EXPECT_EQ(overApplicationRow(QStringLiteral("Editor")), path);
    const QString name = QStringLiteral("a name of more words than fit into the chooser's row");
    EXPECT_EQ(overApplicationRow(name), name + u'\n' + path);
}

TEST(TooltipTest, TheSettingsRowTellsAPathThatItShowsCutAndNoTitle) {
    const std::string path = "/opt/a/folder/inside/another/folder/inside/one/more/program";
    EXPECT_EQ(overSettingsRow("Title", path), QString::fromStdString(path));
    EXPECT_EQ(overSettingsRow(std::string(200, 'm'), "/opt/program"), QString());
}

TEST(TooltipTest, NothingInATextIsMarkup) {
    const QString title =
        QStringLiteral("<b>bold</b> &amp; <img src=x>  and much more of the same");
    EXPECT_EQ(overPopoverRow(title), title);
}

TEST(TooltipTest, ATextWithoutEndIsShortenedAndWraps) {
    const QString path = QStringLiteral("/start") + QString(5000, u'm') + QStringLiteral("/end");
    ItemRowWidget row;
    row.resize(300, 44);
    row.bind({.item = tests::appItem("", path.toStdString())}, {});
    const QString shown = tooltipOver(row);
    EXPECT_TRUE(shown.startsWith(QStringLiteral("/"))) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith(QStringLiteral("end")));
    EXPECT_LT(shown.size(), 1200);
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        if (window->inherits("QTipLabel")) {
            EXPECT_LT(window->width(), 1000);
        }
    }
    // No letter of two units is torn.
    const QString letters = QStringLiteral("😀").repeated(3000);
    for (const QString& text : {letters, u'x' + letters}) {
        const QString plain =
            QTextDocumentFragment::fromHtml(tooltipOf(text, Qt::LeftToRight)).toPlainText();
        EXPECT_TRUE(plain.isValidUtf16());
    }
}

} // namespace
} // namespace kestrel::linux_shell
