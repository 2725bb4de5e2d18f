#pragma once
// The form in which an item is added or edited, drawn from its AddEditItemView, which it owns.

#include "shells/linux/views/kit/redraw_schedule.h"
#include "store/will_change_signal.h"
#include "views/settings/add_edit_item_view.h"

#include <QWidget>

#include <memory>

class QBoxLayout;

namespace kestrel::linux_shell {

class Mnemonics;
class PushButton;
class RoundedField;
class SegmentedControl;
class TextLabel;

class ItemEditorForm : public QWidget {
    Q_OBJECT

  public:
    explicit ItemEditorForm(std::unique_ptr<AddEditItemView> view, QWidget* parent = nullptr);
    ~ItemEditorForm() override;

    AddEditItemView& view() { return *view_; }

    /// Where the keyboard focus goes when the form appears.
    void focusFirstField();

    RoundedField& titleField() const { return *title_; }
    SegmentedControl& typeControl() const { return *type_; }
    RoundedField& pathField() const { return *path_; }
    RoundedField& commandField() const { return *command_; }
    PushButton& browseButton() const { return *browse_; }
    PushButton& cancelButton() const { return *cancel_; }
    PushButton& confirmButton() const { return *confirm_; }

  private:
    static void addRow(QBoxLayout& column, TextLabel* label, const QList<QWidget*>& controls);
    void makeTypeRow(QBoxLayout& column);
    QLayout* makeButtonRow();
    TextLabel* makeLabel(const style::Text& text, QWidget* buddy);
    void connectFields();
    void connectButtons();
    void addShortcut(QKeyCombination keys, PushButton& button);
    void redraw();
    void redrawTypeRow();

    std::unique_ptr<AddEditItemView> view_;
    Mnemonics* mnemonics_ = nullptr;
    TextLabel* typeRowLabel_ = nullptr;
    RoundedField* title_ = nullptr;
    SegmentedControl* type_ = nullptr;
    RoundedField* path_ = nullptr;
    RoundedField* command_ = nullptr;
    PushButton* browse_ = nullptr;
    PushButton* cancel_ = nullptr;
    PushButton* confirm_ = nullptr;
    RedrawSchedule redraw_{[this] { redraw(); }};
    Subscription willChange_;
};

} // namespace kestrel::linux_shell
