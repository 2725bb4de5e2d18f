#pragma once
// A text field with a rounded border that turns into a ring while it has the focus.

#include "views/style.h"

#include <QLineEdit>

namespace kestrel::linux_shell {

class RoundedField : public QLineEdit {
    Q_OBJECT

  public:
    /// `name` is the accessible name.
    RoundedField(const style::Font& font, const QString& placeholder, const QString& name,
                 QWidget* parent = nullptr);

    /// The field shows `text`, of any length; the cursor stays where it is when nothing differs.
    /// Is no edit.
    void show(const QString& text);
    using QLineEdit::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// The user changed the text: by the keyboard, or through assistive technology, which the
    /// toolkit's own signal for edits leaves out.
    void edited(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void setOwnColors();

    bool isShowing_ = false;
};

} // namespace kestrel::linux_shell
