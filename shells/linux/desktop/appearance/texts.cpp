#include "shells/linux/desktop/appearance/texts.h"

#include <QCoreApplication>

#include <string>

namespace kestrel::linux_shell {

QString textFor(const style::Text& text) {
    if (text.lookup == style::Text::Lookup::verbatim)
        return toQString(text.english);
    const std::string key(text.english);
    return QCoreApplication::translate("kestrel::style::Text", key.c_str());
}

QString toQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace kestrel::linux_shell
