#pragma once
// What a RowDrag shows in the viewport of its list: the card that is carried, above the rows, and
// the slot that waits for it, below them.

#include <QPixmap>
#include <QWidget>

namespace kestrel::linux_shell {

class RowGhost : public QWidget {
    Q_OBJECT

  public:
    /// `image` is the row's, without a background.
    RowGhost(const QPixmap& image, QWidget* parent);

    /// Where the row's image is, in the parent.
    void moveImage(QPoint topLeft);

    /// Whether letting go now would put the row somewhere; the card pales otherwise.
    void setLands(bool lands);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap image_;
    bool lands_ = true;
};

class RowSlot : public QWidget {
    Q_OBJECT

  public:
    explicit RowSlot(QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrel::linux_shell
