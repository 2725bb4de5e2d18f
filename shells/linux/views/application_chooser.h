#pragma once
// The dialog in which the user picks one of the installed applications: a field to find it by
// typing, the list, and a button that leads to the file dialog. It is shown at once and fills when
// the list has been read.

#include "shells/linux/launching/installed_applications.h"
#include "shells/linux/views/application_search.h"
#include "shells/linux/views/file_icon_source.h"
#include "shells/linux/views/kit/choice_list.h"

#include <QDialog>

#include <optional>
#include <vector>

class QLayout;

namespace kestrel::linux_shell {

class PushButton;
class RoundedField;
class TextLabel;

/// Main thread only.
class ApplicationChooser final : public QDialog {
    Q_OBJECT

  public:
    /// Keeps the user from the window of `parent` while it is shown. `fileIcons` outlives it.
    explicit ApplicationChooser(const FileIconSource& fileIcons, QWidget* parent = nullptr);
    ~ApplicationChooser() override;

    /// The list has been read.
    void setApplications(std::vector<InstalledApplication> applications);

    /// Null while none is selected.
    const InstalledApplication* selected() const;

    QSize sizeHint() const override;

    RoundedField& searchField() const { return *search_; }
    ChoiceList& list() const { return *list_; }
    TextLabel& nothingFoundLabel() const { return *nothingFound_; }
    PushButton& otherButton() const { return *other_; }
    PushButton& cancelButton() const { return *cancel_; }
    PushButton& chooseButton() const { return *choose_; }

  Q_SIGNALS:
    /// The user wants something that is not in the list.
    void otherRequested();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    /// The applications that match, as the list asks for them.
    class Rows final : public RowSource {
      public:
        explicit Rows(const FileIconSource& fileIcons) : fileIcons_(fileIcons) {}

        const InstalledApplication& at(int row) const;
        int count() const override { return static_cast<int>(matches.size()); }
        std::optional<int> uniformHeight() const override;
        QString titleOf(int row) const override;
        ListRow* makeRow(QWidget* parent) override;
        void bindRow(ListRow& row, int index) override;

        std::vector<InstalledApplication> applications;
        std::vector<int> matches; ///< positions of applications

      private:
        const FileIconSource& fileIcons_;
    };

    QLayout* makeSearchRow();
    QLayout* makeButtonRow();
    void connectControls();
    void search();
    void selectionChanged();
    void take();

    Rows rows_;
    std::optional<ApplicationSearch> applicationSearch_; ///< none until the list has been read
    RoundedField* search_ = nullptr;
    ChoiceList* list_ = nullptr;
    TextLabel* nothingFound_ = nullptr;
    PushButton* other_ = nullptr;
    PushButton* cancel_ = nullptr;
    PushButton* choose_ = nullptr;
};

} // namespace kestrel::linux_shell
