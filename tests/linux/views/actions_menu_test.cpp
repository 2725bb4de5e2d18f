#include "shells/linux/views/kit/actions_menu.h"

#include "shells/linux/desktop/appearance/palettes.h"
#include "shells/linux/views/kit/fallback_style.h"

#include <QApplication>
#include <QImage>
#include <QStyleOptionMenuItem>

#include <gtest/gtest.h>

namespace kestrel::linux_shell {
namespace {

class TestMenu : public ActionsMenu {
  public:
    TestMenu() : ActionsMenu(nullptr) {}

    QString shownText(const QAction& action) const {
        QStyleOptionMenuItem option;
        initStyleOption(&option, &action);
        return option.text;
    }

    QColor textColor(const QAction& action) const {
        QStyleOptionMenuItem option;
        initStyleOption(&option, &action);
        return option.palette.color(QPalette::WindowText);
    }
};

TEST(ActionsMenuTest, KeysAreShownButNotListenedForNorPartOfTheName) {
    TestMenu menu;
    QAction* edit = menu.addAction(QStringLiteral("Edit"));
    QAction* other = menu.addAction(QStringLiteral("Other"));
    menu.showKeys(*edit, Qt::Key_Return);
    const QString keys = QKeySequence(Qt::Key_Return).toString(QKeySequence::NativeText);
    EXPECT_EQ(menu.shownText(*edit), QStringLiteral("Edit\t") + keys);
    EXPECT_EQ(menu.shownText(*other), QStringLiteral("Other"));
    EXPECT_EQ(edit->text(), QStringLiteral("Edit")) << "what a screen reader says";
    EXPECT_TRUE(edit->shortcut().isEmpty());
}

/// The right half of the first action's line.
QImage endOfFirstLine(ActionsMenu& menu) {
    menu.ensurePolished();
    menu.resize(menu.sizeHint());
    const QRect line = menu.actionGeometry(menu.actions().constFirst());
    return menu.grab(QRect(line.center(), line.bottomRight() - QPoint(2, 0))).toImage();
}

TEST(ActionsMenuTest, KeysHaveTheirPlaceInTheMenuInAnyStyle) {
    FallbackStyle fallback([] { return false; });
    for (QStyle* style : {QApplication::style(), static_cast<QStyle*>(&fallback)}) {
        TestMenu plain;
        plain.setStyle(style);
        plain.addAction(QStringLiteral("A title that is long"));
        plain.ensurePolished();
        TestMenu withKeys;
        withKeys.setStyle(style);
        withKeys.showKeys(*withKeys.addAction(QStringLiteral("A title that is long")),
                          Qt::Key_Return);
        withKeys.ensurePolished();
        EXPECT_GE(withKeys.sizeHint().width(), plain.sizeHint().width() + withKeys.keysWidth());

        TestMenu narrow;
        narrow.setStyle(style);
        narrow.addAction(QStringLiteral("A"));
        const QImage empty = endOfFirstLine(narrow);
        narrow.showKeys(*narrow.actions().constFirst(), Qt::Key_Return);
        EXPECT_NE(endOfFirstLine(narrow), empty);
    }
}

TEST(ActionsMenuTest, ActionThatDeletesIsMarkedButNotOnTheHighlightOfHighContrast) {
    for (const Contrast contrast : {Contrast::normal, Contrast::high}) {
        TestMenu menu;
        menu.setPalette(paletteFor(ColorScheme::dark, contrast));
        QAction* remove = menu.addDestructiveAction(QStringLiteral("Delete"));
        const QColor own = menu.palette().color(QPalette::WindowText);
        EXPECT_NE(menu.textColor(*remove), own);
        menu.setActiveAction(remove);
        EXPECT_EQ(menu.textColor(*remove) == own, contrast == Contrast::high);
    }
}

} // namespace
} // namespace kestrel::linux_shell
