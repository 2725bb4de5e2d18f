#include "views/popover/menu_popover_view.h"

#include "views/popover/menu_popover_style.h"
#include "views/row_place.h"

#include <utility>

namespace kestrel {

namespace {

/// The whole rows that a list of full height shows.
constexpr auto pageLength =
    static_cast<std::size_t>(menu_popover_style::maximumListHeight / menu_popover_style::rowHeight);

void call(const std::function<void()>& callback) {
    if (callback)
        callback();
}

} // namespace

MenuPopoverView::MenuPopoverView(ItemsManager& manager, MainQueue& mainQueue, Clock& clock,
                                 Callbacks callbacks)
    : manager_(manager),
      mainQueue_(mainQueue),
      callbacks_(std::move(callbacks)),
      typeSelect_(clock),
      itemsWillChange_(manager.objectWillChange.subscribe([this] {
          // What stood under the highlight may move away; the pointer reports itself again.
          objectWillChange.fire();
          hoveredRow_.reset();
      })) {}

ItemRowView MenuPopoverView::row(std::size_t position) const {
    const LauncherItem& item = items()[position];
    return {
        .item = item,
        .onTap =
            [weak = anchor_.weak(), item] {
                const auto self = weak.lock();
                if (!self)
                    return;
                self->manager_.execute(item);
                // Later, so that the click's own handling finishes in an open popover.
                self->mainQueue_.async([weak] {
                    if (const auto view = weak.lock())
                        call(view->callbacks_.onClose);
                });
            },
        .isHovered = hoveredRow() == position,
    };
}

void MenuPopoverView::settingsClicked() const { call(callbacks_.onOpenSettings); }

void MenuPopoverView::quitClicked() const { call(callbacks_.onQuit); }

void MenuPopoverView::cancelled() const { call(callbacks_.onClose); }

void MenuPopoverView::pointerEntered(std::size_t position) {
    if (position < items().size())
        setHoveredRow(position);
}

void MenuPopoverView::pointerLeft(std::size_t position) {
    if (hoveredRow_ == position)
        setHoveredRow(std::nullopt);
}

void MenuPopoverView::moveHighlight(Step step) {
    typeSelect_.reset();
    if (!items().empty())
        setHoveredRow(rowAfter(step, {.row = hoveredRow_}, items().size(), pageLength));
}

void MenuPopoverView::setFooterHasFocus(bool has) {
    if (footerHasFocus_ == has)
        return;
    objectWillChange.fire();
    footerHasFocus_ = has;
}

void MenuPopoverView::activateHighlighted() const {
    if (const auto highlighted = hoveredRow())
        row(*highlighted).onTap();
}

void MenuPopoverView::typed(std::string_view text) {
    if (text == " " && !typeSelect_.isUnderWay())
        activateHighlighted();
    else if (const auto match = typeSelect_.typed(text, items(), hoveredRow_))
        setHoveredRow(match);
}

void MenuPopoverView::resetHighlight() {
    typeSelect_.reset();
    setHoveredRow(std::nullopt);
}

void MenuPopoverView::setHoveredRow(std::optional<std::size_t> position) {
    if (hoveredRow_ == position)
        return;
    objectWillChange.fire();
    hoveredRow_ = position;
}

} // namespace kestrel
