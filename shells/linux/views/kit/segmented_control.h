#pragma once
// A row of segments of which one is chosen. To the keyboard and to screen readers it is a group of
// radio buttons: one stop for Tab, the arrow keys move.

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
    QAbstractButton& segment(int index) const {
        return *segments_[static_cast<std::size_t>(index)];
    }

  Q_SIGNALS:
    /// The user chose another segment.
    void chosen(int index);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<QAbstractButton*> segments_;
};

} // namespace kestrel::linux_shell
