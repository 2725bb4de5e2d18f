#pragma once
// Alt and a letter for each label and button of a form. The letter is chosen from the text that is
// shown, in whatever language, and underlined while Alt is down; the text itself stays as it is.
// Texts of a script that is not typed letter by letter take a letter of their English key, without
// a mark.

#include "views/style.h"

#include <QKeySequence>
#include <QObject>
#include <QPainter>
#include <QString>

#include <functional>
#include <map>
#include <string_view>
#include <vector>

class QShortcut;
class QWidget;

namespace kestrel::linux_shell {

class PushButton;
class TextLabel;

/// Draws `text` in `area`, with the character at `mark` underlined; no mark is -1.
void drawMarked(QPainter& painter, const QRect& area, int flags, const QString& text, int mark);

/// The form is its parent.
class Mnemonics final : public QObject {
    Q_OBJECT

  public:
    /// `texts` is all that the form can ever show: what comes first has the first choice, and no
    /// two share a letter.
    Mnemonics(const std::vector<style::Text>& texts, QWidget& form);

    /// Empty where no letter was left.
    QKeySequence keysOf(const style::Text& text) const;

    /// The keys focus the label's buddy. Bound again when it shows another text.
    void bind(TextLabel& label, const style::Text& text);

    /// The keys press the button.
    void bind(PushButton& button, const style::Text& text);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Choice {
        QChar letter;
        int mark = -1; ///< where the letter stands in the text
    };
    struct Binding {
        QShortcut* shortcut = nullptr;
        int mark = -1;
        std::function<void(int)> setMark;
    };

    static Choice choose(const style::Text& text, const QString& taken);
    template <class Control, class Act>
    void bindTo(Control& control, const style::Text& text, Act act);
    void showMarks(bool show);

    QWidget& form_;
    std::map<std::string_view, Choice> choices_; ///< by the English text
    std::map<QWidget*, Binding> bindings_;
    bool areShown_ = false;
};

} // namespace kestrel::linux_shell
