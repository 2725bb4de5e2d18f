#include "shells/linux/views/kit/mnemonics.h"

#include "shells/linux/desktop/appearance/texts.h"
#include "shells/linux/views/kit/push_button.h"
#include "shells/linux/views/kit/text_label.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <QStyle>

#include <utility>

namespace kestrel::linux_shell {
namespace {

/// Where the first letter stands that is a key of its own and not among `taken`; -1 for nowhere.
int freeLetter(const QString& text, const QString& taken) {
    for (int i = 0; i < text.size(); ++i) {
        const QChar letter = text.at(i).toUpper();
        if (letter != text.at(i).toLower() && !taken.contains(letter))
            return i;
    }
    return -1;
}

} // namespace

void drawMarked(QPainter& painter, const QRect& area, int flags, const QString& text, int mark) {
    if (mark < 0) {
        painter.drawText(area, flags, text);
        return;
    }
    QString before = text.left(mark);
    QString after = text.mid(mark);
    before.replace(u'&', QStringLiteral("&&"));
    after.replace(u'&', QStringLiteral("&&"));
    painter.drawText(area, flags | Qt::TextShowMnemonic, before + u'&' + after);
}

Mnemonics::Mnemonics(const std::vector<style::Text>& texts, QWidget& form)
    : QObject(&form), form_(form) {
    QString taken;
    for (const style::Text& text : texts) {
        const Choice choice = choose(text, taken);
        choices_.emplace(text.english, choice);
        if (!choice.letter.isNull())
            taken += choice.letter;
    }
    QCoreApplication::instance()->installEventFilter(this);
}

Mnemonics::Choice Mnemonics::choose(const style::Text& text, const QString& taken) {
    const QString shown = textFor(text);
    if (const int mark = freeLetter(shown, taken); mark >= 0)
        return {.letter = shown.at(mark).toUpper(), .mark = mark};
    const QString english = toQString(text.english);
    if (const int place = freeLetter(english, taken); place >= 0)
        return {.letter = english.at(place).toUpper()};
    return {};
}

QKeySequence Mnemonics::keysOf(const style::Text& text) const {
    const auto found = choices_.find(text.english);
    if (found == choices_.end() || found->second.letter.isNull())
        return {};
    return {Qt::ALT | static_cast<Qt::Key>(found->second.letter.unicode())};
}

template <class Control, class Act>
void Mnemonics::bindTo(Control& control, const style::Text& text, Act act) {
    Binding& binding = bindings_[&control];
    if (binding.shortcut == nullptr) {
        binding.shortcut = new QShortcut(&control);
        binding.setMark = [&control](int mark) { control.setMark(mark); };
        connect(binding.shortcut, &QShortcut::activated, &control, act);
    }
    binding.shortcut->setKey(keysOf(text));
    const auto found = choices_.find(text.english);
    binding.mark = found == choices_.end() ? -1 : found->second.mark;
    binding.setMark(areShown_ ? binding.mark : -1);
}

void Mnemonics::bind(TextLabel& label, const style::Text& text) {
    bindTo(label, text, [&label] { label.focusBuddy(); });
}

void Mnemonics::bind(PushButton& button, const style::Text& text) {
    bindTo(button, text, [&button] { button.click(); });
}

void Mnemonics::showMarks(bool show) {
    const bool wanted =
        show && form_.style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, &form_) != 0;
    if (std::exchange(areShown_, wanted) == wanted)
        return;
    for (const auto& [control, binding] : bindings_)
        binding.setMark(areShown_ ? binding.mark : -1);
}

bool Mnemonics::eventFilter(QObject* watched, QEvent* event) {
    const auto isAlt = [event] { return static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt; };
    if (event->type() == QEvent::KeyPress && isAlt())
        showMarks(true);
    else if (event->type() == QEvent::WindowDeactivate ||
             (event->type() == QEvent::KeyRelease && isAlt()))
        showMarks(false);
    return QObject::eventFilter(watched, event);
}

} // namespace kestrel::linux_shell
