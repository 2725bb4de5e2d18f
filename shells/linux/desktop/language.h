#pragma once
// The user's language: the program's texts, the toolkit's own in menus and dialogs, and the
// direction in which the windows are laid out. The shell makes it before the first window.

#include <QLocale>
#include <QString>
#include <QTranslator>

namespace kestrel::linux_shell {

/// Main thread only; the application outlives it.
class Language {
  public:
    /// A language without a translation shows the English texts, laid out in its own direction.
    /// `toolkitFolder` holds the toolkit's translations and need not exist.
    Language(const QLocale& locale, const QString& toolkitFolder);

    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;
    ~Language() = default;

  private:
    QTranslator toolkit_;
    QTranslator program_;
};

} // namespace kestrel::linux_shell
