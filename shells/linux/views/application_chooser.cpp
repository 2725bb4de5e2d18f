#include "shells/linux/views/application_chooser.h"

#include "shells/linux/views/application_row.h"
#include "shells/linux/views/kit/divider.h"
#include "shells/linux/views/kit/list_keys.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/rounded_field.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "shells/linux/views/kit/text_label.h"
#include "views/settings/application_chooser_style.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <cstddef>
#include <utility>

namespace kestrel::linux_shell {

namespace {

namespace chooser = application_chooser_style;

/// Home and End are the field's own.
std::optional<RowStep> stepBeside(const QKeyEvent& event) {
    const std::optional<RowStep> step = rowStepOf(event);
    return step == RowStep::first || step == RowStep::last ? std::nullopt : step;
}

} // namespace

const InstalledApplication& ApplicationChooser::Rows::at(int row) const {
    const int position = matches[static_cast<std::size_t>(row)];
    return applications[static_cast<std::size_t>(position)];
}

std::optional<int> ApplicationChooser::Rows::uniformHeight() const {
    return pixels(chooser::row::height);
}

QString ApplicationChooser::Rows::titleOf(int row) const { return toQString(at(row).name); }

ListRow* ApplicationChooser::Rows::makeRow(QWidget* parent) {
    return new ApplicationRow(fileIcons_, parent);
}

void ApplicationChooser::Rows::bindRow(ListRow& row, int index) {
    static_cast<ApplicationRow&>(row).show(at(index));
}

ApplicationChooser::ApplicationChooser(const FileIconSource& fileIcons, QWidget* parent)
    : QDialog(parent), rows_(fileIcons) {
    setWindowTitle(textFor(chooser::title));
    setWindowRole(QStringLiteral("application-chooser"));
    setWindowModality(Qt::WindowModal);
    setMinimumSize(sizeFor(chooser::minimumSize));

    list_ = new ChoiceList(rows_, marginsFor(chooser::listPadding));
    list_->setAccessibleName(textFor(chooser::list));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addLayout(makeSearchRow());
    column->addWidget(new Divider);
    column->addWidget(list_, 1);
    column->addWidget(new Divider);
    column->addLayout(makeButtonRow());

    // Not in the list, of which a screen reader sees the rows alone.
    nothingFound_ = new TextLabel(textFor(chooser::nothingFound), chooser::nothingFoundStyle, this);
    nothingFound_->setAlignment(Qt::AlignCenter);
    nothingFound_->hide();

    connectControls();
    connect(&fileIcons, &FileIconSource::changed, list_, &ChoiceList::refresh);
    search_->setFocus(Qt::OtherFocusReason);
    selectionChanged();
}

ApplicationChooser::~ApplicationChooser() = default;

QSize ApplicationChooser::sizeHint() const { return sizeFor(chooser::size); }

QLayout* ApplicationChooser::makeSearchRow() {
    const QString name = textFor(chooser::search);
    search_ = new RoundedField(chooser::searchFont, name, name);
    auto* line = new QHBoxLayout;
    line->setContentsMargins(marginsFor(chooser::searchPadding));
    line->addWidget(search_);
    return line;
}

QLayout* ApplicationChooser::makeButtonRow() {
    other_ = new PushButton(textFor(chooser::other), PushButton::Look::bordered);
    cancel_ = new PushButton(textFor(chooser::cancel), PushButton::Look::bordered);
    choose_ = new PushButton(textFor(chooser::choose), PushButton::Look::prominent);
    auto* line = new QHBoxLayout;
    line->setContentsMargins(marginsFor(chooser::buttonPadding));
    line->setSpacing(pixels(chooser::buttonSpacing));
    line->addWidget(other_);
    line->addStretch(1);
    line->addWidget(cancel_);
    line->addWidget(choose_);
    return line;
}

void ApplicationChooser::connectControls() {
    connect(search_, &RoundedField::edited, this, &ApplicationChooser::search);
    connect(list_, &ChoiceList::rowPicked, this, &ApplicationChooser::selectionChanged);
    connect(list_, &ChoiceList::activated, this, &ApplicationChooser::take);
    // The list has the keys only where an assistive program gave them to it.
    connect(list_, &ChoiceList::typed, this, [this](const QString& text) {
        search_->setFocus(Qt::OtherFocusReason);
        search_->insert(text);
    });
    connect(cancel_, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(choose_, &QAbstractButton::clicked, this, &ApplicationChooser::take);
    // Later, because the dialog may be gone when the other one closes.
    connect(
        other_, &QAbstractButton::clicked, this, [this] { Q_EMIT otherRequested(); },
        Qt::QueuedConnection);
}

void ApplicationChooser::setApplications(std::vector<InstalledApplication> applications) {
    rows_.applications = std::move(applications);
    applicationSearch_.emplace(rows_.applications);
    search();
}

void ApplicationChooser::search() {
    if (!applicationSearch_)
        return;
    rows_.matches = applicationSearch_->find(search_->text());
    list_->reload();
    nothingFound_->setVisible(rows_.matches.empty());
    // Return takes what was sought; it must not take an application that nobody has pointed out.
    if (search_->text().trimmed().isEmpty())
        list_->setCurrentRow(-1);
    else
        list_->selectFirst();
    selectionChanged();
}

// The keys stay with the field, so that is where a screen reader has to tell what they select.
void ApplicationChooser::selectionChanged() {
    const InstalledApplication* const application = selected();
    choose_->setEnabled(application != nullptr);
    search_->setAccessibleDescription(application != nullptr      ? toQString(application->name)
                                      : nothingFound_->isHidden() ? QString()
                                                                  : nothingFound_->text());
}

const InstalledApplication* ApplicationChooser::selected() const {
    const int row = list_->currentRow();
    return row >= 0 && row < rows_.count() ? &rows_.at(row) : nullptr;
}

void ApplicationChooser::take() {
    if (selected() != nullptr)
        accept();
}

void ApplicationChooser::keyPressEvent(QKeyEvent* event) {
    auto* const button = qobject_cast<PushButton*>(focusWidget());
    if (const auto step = stepBeside(*event))
        list_->step(*step);
    else if (!isPlainReturn(*event))
        QDialog::keyPressEvent(event);
    else if (button != nullptr)
        button->click();
    else
        take();
}

void ApplicationChooser::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layout()->activate();
    nothingFound_->setGeometry(list_->geometry());
}

} // namespace kestrel::linux_shell
