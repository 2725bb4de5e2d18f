#include "shells/linux/views/item_row_widget.h"

#include "shells/linux/desktop/appearance/symbol.h"
#include "shells/linux/views/badge.h"
#include "shells/linux/views/item_row_metrics.h"
#include "shells/linux/views/kit/actions_menu.h"
#include "shells/linux/views/kit/cut_text.h"
#include "shells/linux/views/kit/ellipsis_button.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_line.h"
#include "shells/linux/views/kit/wrapped_text.h"
#include "views/accessible_texts.h"
#include "views/settings/item_row_style.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace kestrel::linux_shell {

namespace row_style = item_row_style;

namespace {

// Paths and commands are, whatever letters stand in them.
constexpr Qt::LayoutDirection detailDirection = Qt::LeftToRight;

} // namespace

ItemRowWidget::ItemRowWidget(QWidget* parent)
    : ListRow(parent),
      actions_(new EllipsisButton(row_style::actions, textFor(accessible_texts::rowActions), this)),
      menu_(new ActionsMenu(this)) {
    QAction* edit = menu_->addAction(textFor(row_style::editAction));
    menu_->addSeparator();
    QAction* remove = menu_->addDestructiveAction(textFor(row_style::deleteAction));
    menu_->showKeys(*edit, Qt::Key_Return);
    menu_->showKeys(*remove, Qt::Key_Delete);
    connect(menu_, &QMenu::aboutToShow, this, [this] { menuItem_ = item_; });
    connect(menu_, &QMenu::aboutToHide, actions_, qOverload<>(&QWidget::update));
    // Copies, because the callback may bind this row to another item or take it away.
    connect(edit, &QAction::triggered, this, [this] { ItemRow(menuItem_).onEdit(); });
    connect(remove, &QAction::triggered, this, [this] { ItemRow(menuItem_).onDelete(); });
    actions_->setMenu(menu_);
    updateActions();
}

void ItemRowWidget::bind(ItemRow row, const QPixmap& icon, const QPixmap& selectedIcon) {
    if (row.item.id != item_.item.id)
        giveFocusToList();
    item_ = std::move(row);
    title_ = toQString(item_.item.title);
    badge_ = toQString(item_.badge());
    icon_ = icon;
    selectedIcon_ = selectedIcon;
    setAccessibleDescription(toQString(item_.accessibleDescription()));
    updateActions();
    placeActions();
    update();
}

ItemRowWidget::Layout ItemRowWidget::layoutOfParts() const {
    const ItemRowColumns columns = itemRowColumns(badge_, width());
    const auto centered = [this](int left, QSize size) {
        return QRect(QPoint(left, (height() - size.height()) / 2), size);
    };
    const auto visual = [this](const QRect& part) {
        return QStyle::visualRect(layoutDirection(), rect(), part);
    };
    const int titleHeight =
        wrappedHeight(title_, fontFor(row_style::title.font), columns.textWidth);
    const int detailHeight = itemRowLineHeight(row_style::detail.font);
    const int spacing = pixels(row_style::lineSpacing);
    const QRect text =
        centered(columns.textLeft, QSize(columns.textWidth, titleHeight + spacing + detailHeight));
    const int actions = symbolExtent(row_style::actions.font.size);
    return {
        .icon = visual(centered(itemRowInset, sizeFor(row_style::iconSize))),
        .title = visual(QRect(text.topLeft(), QSize(text.width(), titleHeight))),
        .detail = visual(
            QRect(text.left(), text.top() + titleHeight + spacing, text.width(), detailHeight)),
        .actions = visual(centered(columns.actionsLeft, QSize(actions, actions))),
        .badge = visual(centered(columns.badgeLeft, badgeSize(badge_))),
    };
}

void ItemRowWidget::placeActions() {
    const QRect symbol = layoutOfParts().actions;
    QRect button(QPoint(), actions_->size());
    button.moveCenter(symbol.center());
    actions_->move(button.topLeft());
}

void ItemRowWidget::updateActions() {
    item_.isHovered = state().hovered;
    actions_->setOpacity(item_.actionsOpacity());
    // One stop for Tab in the whole list; the other rows' menus open with the menu key.
    actions_->setFocusPolicy(state().current ? Qt::TabFocus : Qt::NoFocus);
    // The inherited palette goes on following the application's.
    const QPalette onSelection = paletteOnSelection(palette());
    const bool hasOwn = state().current && onSelection != palette();
    if (hasOwn || actions_->testAttribute(Qt::WA_SetPalette))
        actions_->setPalette(hasOwn ? onSelection : QPalette());
}

void ItemRowWidget::popUpMenu(QPoint globalPosition) { menu_->popup(globalPosition); }

void ItemRowWidget::stateChanged() {
    updateActions();
    ListRow::stateChanged();
}

void ItemRowWidget::changeEvent(QEvent* event) {
    ListRow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        updateActions();
}

void ItemRowWidget::resizeEvent(QResizeEvent* event) {
    ListRow::resizeEvent(event);
    placeActions();
}

void ItemRowWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setLayoutDirection(layoutDirection());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const Layout parts = layoutOfParts();
    const QPalette colors = state().current ? paletteOnSelection(palette()) : palette();
    const QPixmap& icon = state().current ? selectedIcon_ : icon_;
    if (!icon.isNull())
        painter.drawPixmap(parts.icon, icon);
    painter.setPen(colorFor(row_style::title.color, colors));
    drawWrapped(painter, parts.title, title_, fontFor(row_style::title.font), Qt::AlignLeft);
    painter.setFont(fontFor(row_style::detail.font));
    painter.setPen(colorFor(row_style::detail.color, colors));
    drawLine(painter, parts.detail, shownDetail(parts.detail.width()), Qt::AlignLeft,
             detailDirection);
    drawBadge(painter, parts.badge.topLeft(), badge_, colors);
}

QString ItemRowWidget::shownDetail(int width) const {
    const QFontMetrics metrics(fontFor(row_style::detail.font));
    return metrics.elidedText(toQString(item_.detail()), Qt::ElideMiddle, width);
}

// The title has as many lines as it needs: only the detail line can be cut.
bool ItemRowWidget::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return ListRow::event(event);
    const QString detail = toQString(item_.detail());
    const bool isCut = shownDetail(layoutOfParts().detail.width()) != detail;
    showCutText(*event, *this, isCut ? tooltipOf(detail, detailDirection) : QString());
    return true;
}

} // namespace kestrel::linux_shell
