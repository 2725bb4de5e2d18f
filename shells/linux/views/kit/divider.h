#pragma once
// A horizontal line of one point. No QFrame: the desktop's style would choose its colour and look,
// and assistive technology would take it for a border.

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
