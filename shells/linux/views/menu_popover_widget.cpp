#include "shells/linux/views/menu_popover_widget.h"

#include "shells/linux/desktop/accessible_role.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "shells/linux/views/popover_row.h"
#include "views/accessible_texts.h"
#include "views/popover/menu_popover_style.h"

#include <QEvent>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

namespace kestrel::linux_shell {
namespace {

namespace popover = menu_popover_style;

std::unique_ptr<QWidget> makeEmptyState(QWidget* parent) {
    namespace state = popover::empty_state;
    auto widget = std::make_unique<QWidget>(parent);
    auto* column = new QVBoxLayout(widget.get());
    column->setContentsMargins({});
    column->setSpacing(pixels(state::spacing));
    column->addStretch();
    column->addWidget(new SymbolLabel(state::symbol), 0, Qt::AlignHCenter);
    column->addWidget(new TextLabel(textFor(state::title), state::titleStyle), 0, Qt::AlignHCenter);
    auto* hint = new TextLabel(textFor(state::hint), state::hintStyle);
    hint->setWrapWidth(pixels(state::hintMaximumWidth));
    column->addWidget(hint, 0, Qt::AlignHCenter);
    column->addStretch();
    return widget;
}

} // namespace

int MenuPopoverWidget::Rows::count() const { return static_cast<int>(view_.items().size()); }

std::optional<int> MenuPopoverWidget::Rows::uniformHeight() const {
    return pixels(popover::rowHeight);
}

QString MenuPopoverWidget::Rows::titleOf(int row) const {
    return toQString(view_.items()[static_cast<std::size_t>(row)].title);
}

ListRow* MenuPopoverWidget::Rows::makeRow(QWidget* parent) {
    return new PopoverRow(fileIcons_, parent);
}

void MenuPopoverWidget::Rows::bindRow(ListRow& row, int index) {
    const auto& item = view_.items()[static_cast<std::size_t>(index)];
    static_cast<PopoverRow&>(row).show(toQString(item.title), view_.manager().icon(item));
}

MenuPopoverWidget::MenuPopoverWidget(std::unique_ptr<MenuPopoverView> view,
                                     const FileIconSource& fileIcons)
    : view_(std::move(view)),
      rows_(*view_, fileIcons),
      list_(rows_, marginsFor(popover::listPadding), this),
      emptyState_(makeEmptyState(this)),
      divider_(this),
      settings_(popover::footer::settings, this),
      quit_(popover::footer::quit, this),
      willChange_(view_->objectWillChange.subscribe([this] { redraw_.request(); })) {
    setAccessibleRole(*this, QAccessible::Client);
    list_.setAccessibleName(textFor(accessible_texts::itemList));
    connectList();
    connect(&fileIcons, &FileIconSource::changed, &list_, &MenuList::refresh);
    // Later, so that the button has finished with its click before the popover goes.
    connect(
        &settings_, &QAbstractButton::clicked, this, [this] { view_->settingsClicked(); },
        Qt::QueuedConnection);
    connect(
        &quit_, &QAbstractButton::clicked, this, [this] { view_->quitClicked(); },
        Qt::QueuedConnection);
    settings_.installEventFilter(this);
    quit_.installEventFilter(this);
    updateNow();
}

QSize MenuPopoverWidget::sizeHint() const {
    return sizeFor(popover::contentSize(view_->items().size()));
}

void MenuPopoverWidget::connectList() {
    connect(&list_, &MenuList::rowsChanged, this, &MenuPopoverWidget::contentChanged);
    connect(&list_, &MenuList::activated, this, [this](int row) {
        const auto position = static_cast<std::size_t>(row);
        if (position < view_->items().size())
            view_->row(position).onTap();
    });
    connect(&list_, &MenuList::pointerEntered, this, [this](int row) {
        if (settings_.hasFocus() || quit_.hasFocus())
            list_.setFocus(Qt::MouseFocusReason); // the mark goes where the user acts
        view_->pointerEntered(static_cast<std::size_t>(row));
    });
    connect(&list_, &MenuList::pointerLeft, this,
            [this](int row) { view_->pointerLeft(static_cast<std::size_t>(row)); });
    // At once: the next key may be here already, and it is about the row that this one leads to.
    connect(&list_, &MenuList::stepRequested, this, [this](RowStep step) {
        view_->moveHighlight(step);
        redraw_.catchUp();
    });
    connect(&list_, &MenuList::typed, this, [this](const QString& text) {
        view_->typed(text.toStdString());
        redraw_.catchUp();
    });
}

void MenuPopoverWidget::updateNow() {
    const std::uint64_t revision = view_->items().revision();
    if (std::exchange(shownRevision_, revision) != revision) {
        list_.reload();
        showListOrEmptyState();
    }
    const auto highlighted = view_->hoveredRow();
    list_.setCurrentRow(highlighted ? static_cast<int>(*highlighted) : -1);
}

// The keys go to the list; where there is none, to the button that leads to one.
void MenuPopoverWidget::showListOrEmptyState() {
    const bool empty = view_->items().empty();
    QWidget* const before = focusProxy();
    QWidget* const now = empty ? static_cast<QWidget*>(&settings_) : &list_;
    const bool hadFocus = before != nullptr && before->hasFocus();
    setFocusProxy(now);
    list_.setVisible(!empty);
    emptyState_->setVisible(empty);
    if (hadFocus && before != now)
        now->setFocus(Qt::OtherFocusReason);
}

void MenuPopoverWidget::layOut() {
    const int footerHeight = pixels(popover::footer::height);
    const int dividerHeight = pixels(popover::dividerHeight);
    const QRect content(0, 0, width(), height() - footerHeight - dividerHeight);
    list_.setGeometry(content);
    emptyState_->setGeometry(content);
    divider_.setGeometry(0, content.height(), width(), dividerHeight);

    // The padding ends at the symbol and at the text, not at the buttons' own edges.
    const QMargins padding = marginsFor(popover::footer::padding);
    const int middle = height() - footerHeight / 2;
    const QSize settings = settings_.sizeHint();
    const QSize quit = quit_.sizeHint();
    const int edge = FooterButton::margin;
    const auto place = [this, middle](FooterButton& button, int left, const QSize& size) {
        const QRect area(QPoint(left, middle - size.height() / 2), size);
        button.setGeometry(QStyle::visualRect(layoutDirection(), rect(), area));
    };
    place(settings_, padding.left() - edge, settings);
    place(quit_, width() - padding.right() + edge - quit.width(), quit);
}

// Of the footer's buttons.
bool MenuPopoverWidget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        view_->setFooterHasFocus(event->type() == QEvent::FocusIn);
    return QWidget::eventFilter(watched, event);
}

void MenuPopoverWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void MenuPopoverWidget::showEvent(QShowEvent* event) {
    view_->resetHighlight();
    updateNow();
    QWidget::showEvent(event);
}

void MenuPopoverWidget::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    view_->resetHighlight();
}

} // namespace kestrel::linux_shell
