#pragma once
// The drop-down under the status icon: a borderless window with rounded corners, a hairline and,
// where windows are blended, a shadow. It closes on Escape, on a click elsewhere and when the
// program loses the focus.

#include "platform/popover.h"
#include "shells/linux/desktop/popover_anchor.h"
#include "shells/linux/desktop/popover_input.h"

#include <QElapsedTimer>
#include <QPropertyAnimation>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace kestrel::linux_shell {

/// Main thread only. Its content decides the size that it is prepared at, by its size hint.
class PopoverWindow final : public QWidget, public Popover {
    Q_OBJECT

  public:
    /// The anchor outlives the popover.
    PopoverWindow(std::unique_ptr<QWidget> content, PopoverAnchorSource& anchor);
    ~PopoverWindow() override;
    PopoverWindow(const PopoverWindow&) = delete;
    PopoverWindow& operator=(const PopoverWindow&) = delete;

    bool isShown() const override;
    void show(Size size) override;
    void setContentSize(Size size) override;
    void close() override;

    /// Does ahead of time what the next opening would otherwise spend its time on, at the size that
    /// the content says it wants. Nothing while the popover is shown.
    void prepare();

    /// The content looks different from now on: prepares once nothing has changed for a moment and
    /// the popover is not shown. Comes by itself when the content is set and when the desktop's
    /// looks change.
    void prepareSoon();

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    /// Where content of a size goes on the screen.
    using Placement = std::function<QRect(QSize)>;

    static Placement placementAt(const PopoverAnchor& anchor);
    void showAt(const PopoverAnchor& anchor);
    QMargins margins() const { return {margin_, margin_, margin_, margin_}; }
    void layOut();
    void fillCaches();
    void fadeIn();
    QRect contentRect() const;

    QWidget* content_;
    PopoverAnchorSource& anchor_;
    std::unique_ptr<PopoverInput> input_;
    QSize contentSize_{0, 0};
    Placement placement_; ///< at the icon, as it was found at the last opening
    int margin_ = 0;
    bool pressedOutside_ = false;
    bool isPainted_ = false;  ///< all of it, since it was shown
    bool isPrepared_ = false; ///< the next opening finds everything as it is now
    QTimer preparation_;
    QElapsedTimer sinceShown_;
    QPropertyAnimation fade_;
};

} // namespace kestrel::linux_shell
