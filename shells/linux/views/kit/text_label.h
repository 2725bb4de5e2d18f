#pragma once
// A text of the program's own in one of the core's styles, and a symbol likewise. Both follow the
// desktop's palette and font by themselves.

#include "views/style.h"

#include <QString>
#include <QWidget>

namespace kestrel::linux_shell {

class TextLabel : public QWidget {
    Q_OBJECT

  public:
    TextLabel(const QString& text, const style::TextStyle& textStyle, QWidget* parent = nullptr);

    void setText(const QString& text);
    const QString& text() const { return text_; }

    /// The text wraps there; 0 for one line.
    void setMaximumTextWidth(int pixels);
    void setAlignment(Qt::Alignment alignment);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    int flags() const;

    QString text_;
    style::TextStyle style_;
    Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
    int maximumTextWidth_ = 0;
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
