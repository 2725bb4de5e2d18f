#pragma once
// The list of items in the settings window: an inset list whose selection is a rounded highlight.

#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/item_row_metrics.h"
#include "shells/linux/views/kit/keyboard_focus.h"
#include "shells/linux/views/kit/row_list.h"
#include "views/settings/settings_view.h"

#include <optional>

namespace kestrel::linux_shell {

/// The rows of a settings view, which outlives this.
class SettingsRows : public RowSource {
  public:
    SettingsRows(SettingsView& view, FileIconSource fileIcons);

    int count() const override;
    std::optional<int> uniformHeight() const override { return std::nullopt; }
    void prepareHeights(int width) override;
    int heightOf(int row, int width) const override;
    QString titleOf(int row) const override;
    ListRow* makeRow(QWidget* parent) override;
    void bindRow(ListRow& row, int index) override;

  private:
    SettingsView& view_;
    FileIconSource fileIcons_;
    std::optional<ItemRowMetrics> metrics_;
};

class SettingsList : public RowList {
    Q_OBJECT

  public:
    /// `rows` outlives the list.
    explicit SettingsList(SettingsRows& rows, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    KeyboardFocus keyboardFocus_;
};

} // namespace kestrel::linux_shell
