#pragma once
// Draws MenuPopoverView: the list of items or the hint that there are none, and the footer. What
// the user does goes to the view; what changes there is drawn one turn of the event loop later.

#include "shells/linux/views/footer_button.h"
#include "shells/linux/views/item_icon_pixmap.h"
#include "shells/linux/views/kit/divider.h"
#include "shells/linux/views/kit/menu_list.h"
#include "shells/linux/views/kit/redraw_schedule.h"
#include "views/popover/menu_popover_view.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

namespace kestrel::linux_shell {

/// Main thread only.
class MenuPopoverWidget final : public QWidget {
    Q_OBJECT

  public:
    /// `fileIcons` outlives the widget.
    MenuPopoverWidget(std::unique_ptr<MenuPopoverView> view, const FileIconSource& fileIcons);

    const MenuList& list() const { return list_; }

    /// The size at which the popover shows what the list holds now.
    QSize sizeHint() const override;

  Q_SIGNALS:
    /// The list holds other items, or they look different.
    void contentChanged();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    /// The items as the list asks for them.
    class Rows final : public RowSource {
      public:
        Rows(MenuPopoverView& view, const FileIconSource& fileIcons)
            : view_(view), fileIcons_(fileIcons) {}
        int count() const override;
        std::optional<int> uniformHeight() const override;
        QString titleOf(int row) const override;
        ListRow* makeRow(QWidget* parent) override;
        void bindRow(ListRow& row, int index) override;

      private:
        MenuPopoverView& view_;
        const FileIconSource& fileIcons_;
    };

    void connectList();
    void updateNow();
    void showListOrEmptyState();
    void layOut();

    std::unique_ptr<MenuPopoverView> view_;
    Rows rows_;
    MenuList list_;
    std::unique_ptr<QWidget> emptyState_;
    Divider divider_;
    FooterButton settings_;
    FooterButton quit_;
    RedrawSchedule redraw_{[this] { updateNow(); }};
    std::optional<std::uint64_t> shownRevision_; ///< of the items
    Subscription willChange_;
};

} // namespace kestrel::linux_shell
