#pragma once
// A borderless button with a menu of its own behind a symbol. It can be invisible and keeps its
// place then; the keyboard focus and an open menu always show it.

#include "views/style.h"

#include <QToolButton>

namespace kestrel::linux_shell {

class EllipsisButton : public QToolButton {
    Q_OBJECT

  public:
    /// `symbol.name` outlives the button; `name` is the accessible name.
    EllipsisButton(const style::SymbolStyle& symbol, const QString& name,
                   QWidget* parent = nullptr);

    /// 0 or 1.
    void setOpacity(double opacity);

    /// What is drawn now: 1 also while the focus or the menu needs it.
    double shownOpacity() const;

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    style::SymbolStyle symbol_;
    double opacity_ = 1;
};

} // namespace kestrel::linux_shell
