#include "shells/linux/views/settings_widget.h"

#include "shells/linux/views/item_editor_form.h"
#include "shells/linux/views/item_row_widget.h"
#include "shells/linux/views/kit/announcer.h"
#include "shells/linux/views/kit/divider.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/sheet.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "shells/linux/views/settings_list.h"
#include "shells/linux/views/toolbar_button.h"
#include "views/accessible_texts.h"
#include "views/settings/settings_style.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

namespace kestrel::linux_shell {

SettingsWidget::SettingsWidget(std::unique_ptr<SettingsView> view, const FileIconSource& fileIcons,
                               QWidget* parent)
    : QWidget(parent),
      view_(std::move(view)),
      rows_(std::make_unique<SettingsRows>(*view_, fileIcons)) {
    setMinimumSize(sizeFor(settings_style::minimumSize));
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    content_ = new QWidget;
    whole->addWidget(content_);

    auto* column = new QVBoxLayout(content_);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(makeToolbar());
    column->addWidget(new Divider);
    list_ = new SettingsList(*rows_);
    list_->setAccessibleName(textFor(accessible_texts::itemList));
    column->addWidget(list_, 1);
    announcer_ = new Announcer(*this);
    placeholder_ = makePlaceholder();
    column->addWidget(placeholder_, 1);

    connectList();
    connect(&fileIcons, &FileIconSource::changed, list_, &SettingsList::refresh);
    willChange_ = view_->objectWillChange.subscribe([this] { redraw_.request(); });
    redraw();
}

SettingsWidget::~SettingsWidget() {
    // The rows and the form refer to what the view owns.
    delete sheet_;
    delete content_;
}

QWidget* SettingsWidget::makeToolbar() {
    auto* strip = new QWidget;
    auto* line = new QHBoxLayout(strip);
    line->setContentsMargins(marginsFor(settings_style::toolbar::padding));
    line->setSpacing(0);
    std::size_t index = 0;
    for (const kestrel::ToolbarButton& description : view_->toolbarButtons()) {
        auto* button =
            new ToolbarButton(toQString(description.label), std::string(description.icon));
        connect(button, &QAbstractButton::clicked, this,
                [this, index] { view_->toolbarButtons().at(index).action(); });
        line->addWidget(button);
        toolbarButtons_.push_back(button);
        ++index;
    }
    line->addStretch(1);
    return strip;
}

QWidget* SettingsWidget::makePlaceholder() {
    namespace style_of = settings_style::empty_placeholder;
    auto* area = new QWidget;
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins({});
    column->setSpacing(pixels(style_of::spacing));
    column->addStretch(1);
    column->addWidget(new SymbolLabel(style_of::symbol), 0, Qt::AlignHCenter);
    column->addWidget(new TextLabel(textFor(style_of::title), style_of::titleStyle), 0,
                      Qt::AlignHCenter);
    auto* hint = new TextLabel(textFor(style_of::hint), style_of::hintStyle);
    hint->setWrapWidth(pixels(style_of::hintMaximumWidth));
    column->addWidget(hint, 0, Qt::AlignHCenter);
    column->addSpacing(pixels(style_of::buttonTopPadding));
    auto* button = new PushButton(textFor(style_of::button), PushButton::Look::prominent);
    button->setAccessibleDescription(hint->text());
    connect(button, &QAbstractButton::clicked, this, [this] { view_->addClicked(); });
    column->addWidget(button, 0, Qt::AlignHCenter);
    column->addStretch(1);
    placeholderButton_ = button;
    return area;
}

void SettingsWidget::connectList() {
    connect(list_, &SettingsList::rowPicked, this,
            [this](int row) { view_->setSelectedID(idAt(row)); });
    connect(list_, &SettingsList::activated, this, [this](int row) {
        if (row < rows_->count()) {
            view_->editItem(LauncherItem(view_->items()[static_cast<std::size_t>(row)]));
        }
    });
    connect(list_, &SettingsList::moveRequested, this, [this](int row, int destination) {
        view_->moveRows({static_cast<std::size_t>(row)}, static_cast<std::size_t>(destination));
    });
    connect(list_, &SettingsList::moveByOneRequested, this,
            [this](int row, RowDirection direction) {
                view_->moveRow(static_cast<std::size_t>(row), direction);
            });
    connectKeys();
    connect(list_, &SettingsList::contextMenuRequested, this, &SettingsWidget::showContextMenu);
}

// Each is drawn at once: the next key may be here already, and it is about the row that this one
// leads to.
void SettingsWidget::connectKeys() {
    connect(list_, &SettingsList::typed, this, [this](const QString& text) {
        view_->typed(text.toStdString());
        redraw_.catchUp();
    });
    connect(list_, &SettingsList::stepRequested, this, [this](RowStep step, int page) {
        view_->moveSelection(step, static_cast<std::size_t>(page));
        redraw_.catchUp();
    });
    connect(list_, &SettingsList::moveCurrentRequested, this, [this](RowDirection direction) {
        view_->moveSelectedRow(direction);
        redraw_.catchUp();
    });
    connect(list_, &SettingsList::deleteCurrentRequested, this, [this] {
        view_->deleteSelectedRow();
        redraw_.catchUp();
    });
}

std::optional<Uuid> SettingsWidget::idAt(int row) const {
    if (row < 0 || row >= rows_->count())
        return std::nullopt;
    return view_->items()[static_cast<std::size_t>(row)].id;
}

int SettingsWidget::selectedRow() const {
    const auto& id = view_->selectedID();
    const auto position = id ? view_->items().positionOf(*id) : std::nullopt;
    return position ? static_cast<int>(*position) : -1;
}

void SettingsWidget::showContextMenu(int row, QPoint globalPosition) {
    if (auto* widget = qobject_cast<ItemRowWidget*>(list_->realisedRow(row)))
        widget->popUpMenu(globalPosition);
}

void SettingsWidget::redraw() {
    redrawToolbar();
    redrawList();
    showAddedRow();
    if (auto form = view_->nextSheet())
        present(std::move(form));
    if (const auto announcement = view_->nextAnnouncement())
        announcer_->announce(*announcement);
}

void SettingsWidget::redrawToolbar() {
    const auto descriptions = view_->toolbarButtons();
    for (std::size_t index = 0; index < descriptions.size(); ++index)
        toolbarButtons_[index]->setEnabled(descriptions.at(index).enabled);
}

void SettingsWidget::redrawList() {
    const std::uint64_t revision = view_->items().revision();
    if (std::exchange(shownRevision_, revision) != revision)
        list_->reload();
    else
        list_->refresh();
    list_->setCurrentRow(selectedRow());
    const bool empty = view_->items().empty();
    if (list_->isHidden() == empty && placeholder_->isHidden() != empty)
        return;
    const bool hadFocus = content_->isAncestorOf(QApplication::focusWidget());
    list_->setVisible(!empty);
    placeholder_->setVisible(empty);
    if (hadFocus)
        focusContent();
}

// After the list has the size that it keeps, which its first row brings it.
void SettingsWidget::showAddedRow() {
    if (const auto row = view_->nextRowToShow())
        list_->ensureVisible(static_cast<int>(*row));
}

void SettingsWidget::present(std::unique_ptr<AddEditItemView> form) {
    form->dismiss = [this] { dismiss(); };
    const QString name = textFor(form->header());
    auto* content = new ItemEditorForm(std::move(form));
    sheet_ = new Sheet(*content, name, *content_, *this);
    content->focusFirstField();
}

// The sheet goes at once, so that no further key reaches a form that is done.
void SettingsWidget::dismiss() {
    if (Sheet* sheet = std::exchange(sheet_, nullptr).data())
        sheet->close();
    view_->sheetClosed();
}

ItemEditorForm* SettingsWidget::form() const {
    const Sheet* sheet = sheet_.data();
    return sheet == nullptr ? nullptr : qobject_cast<ItemEditorForm*>(&sheet->content());
}

void SettingsWidget::focusContent() {
    if (ItemEditorForm* open = form())
        open->focusFirstField();
    else
        (view_->items().empty() ? placeholderButton_ : list_)->setFocus(Qt::OtherFocusReason);
}

// A focus proxy would make the whole widget one more stop for Tab.
void SettingsWidget::focusInEvent(QFocusEvent* /*event*/) { focusContent(); }

void SettingsWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!isAncestorOf(QApplication::focusWidget()))
        focusContent();
}

} // namespace kestrel::linux_shell
