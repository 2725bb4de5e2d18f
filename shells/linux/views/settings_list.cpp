#include "shells/linux/views/settings_list.h"

#include "shells/linux/views/item_row_metrics.h"
#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/painting.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/settings/item_row_style.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>

#include <utility>

namespace kestrel::linux_shell {

namespace {

constexpr int listInset = 8; // pixels around the rows

} // namespace

SettingsRows::SettingsRows(SettingsView& view, const FileIconSource& fileIcons)
    : view_(view), fileIcons_(fileIcons) {}

int SettingsRows::count() const { return static_cast<int>(view_.items().size()); }

std::vector<int> SettingsRows::heights(int width) const {
    const ItemRowMetrics metrics(width);
    std::vector<int> heights;
    heights.reserve(view_.items().size());
    for (const LauncherItem& item : view_.items())
        heights.push_back(metrics.heightFor(item.title, item.type));
    return heights;
}

QString SettingsRows::titleOf(int row) const {
    return toQString(view_.items()[static_cast<std::size_t>(row)].title);
}

ListRow* SettingsRows::makeRow(QWidget* parent) { return new ItemRowWidget(parent); }

void SettingsRows::bindRow(ListRow& row, int index) {
    ItemRow item = view_.row(static_cast<std::size_t>(index));
    const ItemIcon icon = view_.manager().icon(item.item);
    const auto drawnIn = [&](const QPalette& palette) {
        return itemIconPixmap(icon, fileIcons_, sizeFor(item_row_style::iconSize),
                              row.devicePixelRatioF(),
                              colorFor(style::ColorLevel::primary, palette));
    };
    // The application's palette, which on a change is there before a row's own.
    const QPalette palette = QApplication::palette(&row);
    const QPalette onSelection = paletteOnSelection(palette);
    const QPixmap plain = drawnIn(palette);
    static_cast<ItemRowWidget&>(row).bind(std::move(item), plain,
                                          onSelection == palette ? plain : drawnIn(onSelection));
}

SettingsList::SettingsList(SettingsRows& rows, QWidget* parent)
    : SelectionList(rows, QMargins(listInset, listInset, listInset, listInset), parent) {
    // The highlight tells whether the keys are the list's, through a row's button too, which on
    // losing them paints no more than itself.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* from, QWidget* to) {
        if (isAncestorOf(from) || isAncestorOf(to))
            viewport()->update();
    });
}

// A row's button that has the focus loses it while the list is taken apart.
SettingsList::~SettingsList() { disconnect(qApp, nullptr, this, nullptr); }

bool SettingsList::hasKeys() const {
    // A row's menu is its child in another window.
    const QWidget* focused = QApplication::focusWidget();
    while (focused != nullptr && focused != this)
        focused = focused->parentWidget();
    return isActiveWindow() && focused != nullptr;
}

void SettingsList::paintEvent(QPaintEvent* event) {
    SelectionList::paintEvent(event);
    if (currentRow() >= 0 || !hasFocus() || !isActiveWindow() || !keyboardFocus_.isFromKeyboard())
        return;
    QPainter painter(viewport());
    drawFocusRing(painter, QRectF(viewport()->rect()).adjusted(2, 2, -2, -2), highlightRadius,
                  palette());
}

void SettingsList::focusInEvent(QFocusEvent* event) {
    keyboardFocus_.focused(event->reason());
    SelectionList::focusInEvent(event);
}

} // namespace kestrel::linux_shell
