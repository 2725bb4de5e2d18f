#pragma once
// The list of items in the settings window: an inset list whose selection is a rounded highlight.

#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/kit/keyboard_focus.h"
#include "shells/linux/views/kit/selection_list.h"
#include "views/settings/settings_view.h"

#include <vector>

namespace kestrel::linux_shell {

/// The rows of a settings view, which outlives this as `fileIcons` does.
class SettingsRows : public RowSource {
  public:
    SettingsRows(SettingsView& view, const FileIconSource& fileIcons);

    int count() const override;
    std::vector<int> heights(int width) const override;
    QString titleOf(int row) const override;
    ListRow* makeRow(QWidget* parent) override;
    void bindRow(ListRow& row, int index) override;

  private:
    SettingsView& view_;
    const FileIconSource& fileIcons_;
};

class SettingsList : public SelectionList {
    Q_OBJECT

  public:
    /// `rows` outlives the list.
    explicit SettingsList(SettingsRows& rows, QWidget* parent = nullptr);
    ~SettingsList() override;

  protected:
    bool hasKeys() const override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    KeyboardFocus keyboardFocus_;
};

} // namespace kestrel::linux_shell
