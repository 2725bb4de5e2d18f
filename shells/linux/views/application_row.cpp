#include "shells/linux/views/application_row.h"

#include "shells/linux/views/kit/cut_text.h"
#include "shells/linux/views/kit/style_bridge.h"
#include "views/settings/application_chooser_style.h"

namespace kestrel::linux_shell {
namespace {

namespace chooser_row_style = application_chooser_style::row;

} // namespace

ApplicationRow::ApplicationRow(const FileIconSource& fileIcons, QWidget* parent)
    : IconTitleRow({.padding = chooser_row_style::padding,
                    .iconSize = chooser_row_style::iconSize,
                    .spacing = chooser_row_style::spacing,
                    .title = chooser_row_style::title},
                   fileIcons, parent) {}

void ApplicationRow::show(const InstalledApplication& application) {
    path_ = toQString(application.path);
    IconTitleRow::show(toQString(application.name), FileIcon{application.path});
}

// Two applications may have one name.
QString ApplicationRow::tooltip() const {
    return IconTitleRow::tooltip() + tooltipOf(path_, Qt::LeftToRight);
}

} // namespace kestrel::linux_shell
