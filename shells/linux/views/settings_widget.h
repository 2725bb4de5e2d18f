#pragma once
// The whole content of the settings window: toolbar strip, list or placeholder, and the sheet. It
// draws a SettingsView, which it owns, and hands every intent of the user to it.

#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/kit/redraw_schedule.h"
#include "store/will_change_signal.h"
#include "views/settings/settings_view.h"

#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace kestrel::linux_shell {

class ItemEditorForm;
class SettingsList;
class SettingsRows;
class Sheet;
class ToolbarButton;

class SettingsWidget : public QWidget {
    Q_OBJECT

  public:
    /// `fileIcons` outlives the widget.
    SettingsWidget(std::unique_ptr<SettingsView> view, const FileIconSource& fileIcons,
                   QWidget* parent = nullptr);
    ~SettingsWidget() override;

    SettingsView& view() { return *view_; }
    SettingsList& list() const { return *list_; }

    /// Shown instead of the list while there are no items.
    QWidget& placeholder() const { return *placeholder_; }

    /// "Add", "Edit" and "Delete".
    const std::vector<ToolbarButton*>& toolbarButtons() const { return toolbarButtons_; }

    /// The form of the open sheet; null while none is open.
    ItemEditorForm* form() const;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    QWidget* makeToolbar();
    QWidget* makePlaceholder();
    void connectList();
    void connectKeys();
    std::optional<Uuid> idAt(int row) const;
    int selectedRow() const;
    void showContextMenu(int row, QPoint globalPosition);
    void redraw();
    void redrawToolbar();
    void redrawList();
    void showAddedRow();
    void present(std::unique_ptr<AddEditItemView> form);
    void dismiss();
    void focusContent();

    std::unique_ptr<SettingsView> view_;
    std::unique_ptr<SettingsRows> rows_;
    QWidget* content_ = nullptr; ///< all but the sheet
    std::vector<ToolbarButton*> toolbarButtons_;
    SettingsList* list_ = nullptr;
    QWidget* placeholder_ = nullptr;
    QWidget* placeholderButton_ = nullptr;
    QPointer<Sheet> sheet_;
    RedrawSchedule redraw_{[this] { redraw(); }};
    std::optional<std::uint64_t> shownRevision_; ///< of the items
    Subscription willChange_;
};

} // namespace kestrel::linux_shell
