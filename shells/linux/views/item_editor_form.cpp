#include "shells/linux/views/item_editor_form.h"

#include "shells/linux/views/kit/divider.h"
#include "shells/linux/views/kit/mnemonics.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/segmented_control.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "shells/linux/views/kit/text_line.h"
#include "views/settings/add_edit_item_style.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kestrel::linux_shell {

namespace {

namespace form = add_edit_item_style;

constexpr int labelSpacing = 12;  // pixels between a label and its control
constexpr int buttonSpacing = 10; // pixels between the two buttons

/// All labels are as wide as the widest, so that the controls line up whatever the type.
int labelWidth() {
    const QFontMetrics metrics(fontFor(form::label.font));
    int width = 0;
    for (const style::Text& text : {form::titleLabel, form::typeLabel, form::appRow.label,
                                    form::fileRow.label, form::commandRow.label})
        width = std::max(width, metrics.horizontalAdvance(textFor(text)));
    return width;
}

QStringList typeNames() {
    QStringList names;
    for (const ItemType type : allItemTypes)
        names << toQString(rawValue(type));
    return names;
}

} // namespace

ItemEditorForm::ItemEditorForm(std::unique_ptr<AddEditItemView> view, QWidget* parent)
    : QWidget(parent),
      view_(std::move(view)),
      mnemonics_(new Mnemonics({form::titleLabel, form::typeLabel, form::cancel, form::add,
                                form::save, form::browse, form::appRow.label, form::fileRow.label,
                                form::commandRow.label},
                               *this)) {
    setFixedWidth(pixels(form::width));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(marginsFor(form::padding));
    column->setSpacing(0);

    column->addWidget(new TextLabel(textFor(view_->header()), form::header));
    column->addSpacing(pixels(form::spaceBelowHeader));

    const QString titleName = textFor(form::titleLabel);
    title_ = new RoundedField(form::label.font, textFor(form::titlePlaceholder), titleName);
    addRow(*column, makeLabel(form::titleLabel, title_), {title_});

    const QString typeName = textFor(form::typeLabel);
    type_ = new SegmentedControl(typeNames(), typeName);
    addRow(*column, makeLabel(form::typeLabel, type_), {type_});
    makeTypeRow(*column);

    column->addSpacing(pixels(form::spaceAboveDivider));
    column->addWidget(new Divider);
    column->addSpacing(pixels(form::spaceBelowDivider));
    column->addLayout(makeButtonRow());

    connectFields();
    connectButtons();
    willChange_ = view_->objectWillChange.subscribe([this] { redraw_.request(); });
    redraw();
}

ItemEditorForm::~ItemEditorForm() = default;

TextLabel* ItemEditorForm::makeLabel(const style::Text& text, QWidget* buddy) {
    auto* label = new TextLabel(textFor(text), form::label);
    label->setFixedWidth(labelWidth());
    label->setBuddy(buddy);
    mnemonics_->bind(*label, text);
    return label;
}

void ItemEditorForm::addRow(QBoxLayout& column, TextLabel* label, const QList<QWidget*>& controls) {
    auto* row = new QHBoxLayout;
    row->setSpacing(pixels(form::browseSpacing));
    row->addWidget(label);
    row->addSpacing(labelSpacing - row->spacing());
    for (QWidget* control : controls)
        row->addWidget(control);
    column.addLayout(row);
    column.addSpacing(pixels(form::spaceBelowRow));
}

void ItemEditorForm::makeTypeRow(QBoxLayout& column) {
    path_ = new RoundedField(form::appRow.font, {}, {});
    command_ = new RoundedField(form::commandRow.font, textFor(form::commandRow.placeholder),
                                textFor(form::commandRow.label));
    // Paths and commands run from left to right in every language.
    path_->setLayoutDirection(Qt::LeftToRight);
    command_->setLayoutDirection(Qt::LeftToRight);
    browse_ = new PushButton(textFor(form::browse), PushButton::Look::bordered);
    typeRowLabel_ = makeLabel(form::appRow.label, path_);
    mnemonics_->bind(*browse_, form::browse);
    addRow(column, typeRowLabel_, {path_, command_, browse_});
}

QLayout* ItemEditorForm::makeButtonRow() {
    cancel_ = new PushButton(textFor(form::cancel), PushButton::Look::bordered);
    confirm_ = new PushButton(textFor(view_->confirmTitle()), PushButton::Look::prominent);
    mnemonics_->bind(*cancel_, form::cancel);
    mnemonics_->bind(*confirm_, view_->confirmTitle());
    auto* line = new QHBoxLayout;
    line->setSpacing(buttonSpacing);
    line->addStretch(1);
    line->addWidget(cancel_);
    line->addWidget(confirm_);
    return line;
}

void ItemEditorForm::connectFields() {
    // A title runs in its own direction, as in the lists.
    connect(title_, &QLineEdit::textChanged, title_, [this](const QString& text) {
        title_->setLayoutDirection(text.isEmpty() ? layoutDirection() : directionOf(text));
    });
    connect(title_, &RoundedField::edited, this,
            [this](const QString& text) { view_->setTitle(text.toStdString()); });
    connect(path_, &RoundedField::edited, this,
            [this](const QString& text) { view_->setPath(text.toStdString()); });
    connect(command_, &RoundedField::edited, this,
            [this](const QString& text) { view_->setCommand(text.toStdString()); });
    connect(type_, &SegmentedControl::chosen, this,
            [this](int index) { view_->setType(allItemTypes[static_cast<std::size_t>(index)]); });
}

// Nothing may follow a call that can close the form.
void ItemEditorForm::connectButtons() {
    connect(browse_, &QAbstractButton::clicked, this, [this] { view_->browse(); });
    connect(cancel_, &QAbstractButton::clicked, this, [this] { view_->cancel(); });
    connect(confirm_, &QAbstractButton::clicked, this, [this] { view_->commitSave(); });
    for (PushButton* const button : {browse_, cancel_, confirm_})
        button->setReturnKey(ControlButton::ReturnKey::leftToOthers);
    addShortcut(Qt::Key_Escape, *cancel_);
    addShortcut(Qt::CTRL | Qt::Key_Return, *confirm_);
    addShortcut(Qt::CTRL | Qt::Key_Enter, *confirm_); // the keypad's is another key
}

// A button's own shortcut presses it only after an animation.
void ItemEditorForm::addShortcut(QKeyCombination keys, PushButton& button) {
    auto* shortcut = new QShortcut(QKeySequence(keys), this);
    connect(shortcut, &QShortcut::activated, &button, &QAbstractButton::click);
    if (button.toolTip().isEmpty())
        button.setToolTip(shortcut->key().toString(QKeySequence::NativeText));
}

void ItemEditorForm::focusFirstField() { title_->setFocus(Qt::TabFocusReason); }

void ItemEditorForm::redraw() {
    title_->show(toQString(view_->title()));
    type_->setCurrentIndex(
        static_cast<int>(std::ranges::find(allItemTypes, view_->type()) - allItemTypes.begin()));
    redrawTypeRow();
    confirm_->setEnabled(view_->canSave());
}

void ItemEditorForm::redrawTypeRow() {
    const form::TypeRow& row = form::rowOf(view_->type());
    const bool isCommand = usesCommand(view_->type());
    typeRowLabel_->setText(textFor(row.label));
    typeRowLabel_->setBuddy(isCommand ? command_ : path_);
    mnemonics_->bind(*typeRowLabel_, row.label);
    path_->show(toQString(view_->path()));
    command_->show(toQString(view_->command()));
    if (!isCommand) {
        path_->setPlaceholderText(textFor(row.placeholder));
        path_->setAccessibleName(textFor(row.label));
    }
    path_->setVisible(!isCommand);
    command_->setVisible(isCommand);
    browse_->setVisible(!isCommand);
}

} // namespace kestrel::linux_shell
