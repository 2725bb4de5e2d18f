#pragma once
// A text of the program's own in one of the core's styles, and the same for a symbol. Both follow
// the desktop's palette and font by themselves.

#include "views/style.h"

#include <QLabel>

#include <optional>

namespace kestrel::linux_shell {

/// Draws its text itself: no role of a palette stands for a colour level, and the toolkit's own
/// drawing would fade it while the label is disabled.
class TextLabel : public QLabel {
    Q_OBJECT

  public:
    TextLabel(const QString& text, const style::TextStyle& textStyle, QWidget* parent = nullptr);

    /// The text wraps, centred, into even lines of at most so many pixels.
    void setWrapWidth(int width);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// As a click on the label does; nothing without a buddy.
    void focusBuddy();

    /// Underlines the character at `mark`; -1 for none.
    void setMark(int mark);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    style::TextStyle style_;
    std::optional<int> wrapWidth_;
    int mark_ = -1;
};

class SymbolLabel : public QWidget {
    Q_OBJECT

  public:
    /// `symbol.name` outlives the label.
    explicit SymbolLabel(const style::SymbolStyle& symbol, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    style::SymbolStyle symbol_;
};

} // namespace kestrel::linux_shell
