#pragma once
// The core's texts as the toolkit's, in the user's language.

#include "views/style.h"

#include <QString>

#include <string_view>

namespace kestrel::linux_shell {

/// A localizable text in the user's language, a verbatim one as it stands.
QString textFor(const style::Text& text);
QString toQString(std::string_view utf8);

} // namespace kestrel::linux_shell
