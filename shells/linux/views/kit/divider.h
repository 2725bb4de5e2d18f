#pragma once
// A horizontal line of one point.

#include <QWidget>

namespace kestrel::linux_shell {

class Divider : public QWidget {
    Q_OBJECT

  public:
    explicit Divider(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrel::linux_shell
