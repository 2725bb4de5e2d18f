#pragma once
// A row of segments of which one is chosen. To the keyboard and to screen readers it is a group of
// radio buttons: Tab stops at the chosen one, the arrow keys choose another.
//
// The segments are as wide as each other while every title has room; else each is as wide as its
// title needs. Where not even that fits, long titles are cut and told by a tooltip.

#include <QStringList>
#include <QWidget>

#include <vector>

class QAbstractButton;

namespace kestrel::linux_shell {

class SegmentedControl : public QWidget {
    Q_OBJECT

  public:
    /// `name` is the group's accessible name.
    SegmentedControl(const QStringList& titles, const QString& name, QWidget* parent = nullptr);

    int currentIndex() const;

    /// Emits nothing.
    void setCurrentIndex(int index);
    QAbstractButton& segment(int index) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// The user chose another segment.
    void chosen(int index);

  protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    class Segment;

    void stopTabAtTheChosen();
    void chooseNext(int step);
    std::vector<int> segmentWidths() const;
    int widthWithPadding(int padding) const;
    void layOut();

    std::vector<Segment*> segments_;
};

} // namespace kestrel::linux_shell
