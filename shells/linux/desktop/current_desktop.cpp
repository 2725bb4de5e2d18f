#include "shells/linux/desktop/current_desktop.h"

#include <QString>
#include <QStringList>

namespace kestrel::linux_shell {

bool currentDesktopIs(QStringView name) {
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP")
        .split(QLatin1Char(':'))
        .contains(name, Qt::CaseInsensitive);
}

} // namespace kestrel::linux_shell
