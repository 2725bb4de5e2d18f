#include "shells/linux/desktop/icon_index/icon_index.h"

#include <QIcon>
#include <QStringList>

namespace kestrel::linux_shell {

// Of a theme that is in several folders, the first folder's index counts.
void installIconIndex() {
    QIcon::setThemeSearchPaths(QStringList{QStringLiteral(":/kestrel/themes")} +
                               QIcon::themeSearchPaths());
}

} // namespace kestrel::linux_shell
