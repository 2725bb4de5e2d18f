// Starts Kestrel, or brings the popover of the one that runs.

#include "shells/linux/desktop/application.h"
#include "shells/linux/desktop/single_instance.h"
#include "shells/linux/desktop/startup.h"
#include "shells/linux/desktop/toolkit_start.h"
#include "shells/linux/shell.h"

#include <QApplication>
#include <QDBusConnection>

#include <optional>
#include <utility>

#include <malloc.h>

int main(int argc, char** argv) {
    using namespace kestrel::linux_shell;
    // Its threads mostly wait, so they can share what each would keep of memory for itself.
    mallopt(M_ARENA_MAX, 1);
    const Startup startup = startupOfThisProcess();
    ToolkitArguments arguments(argc > 0 ? argv[0] : "kestrel");
    std::optional<ToolkitStart> start(std::in_place);
    QApplication application(arguments.count(), arguments.values());
    start.reset();
    SingleInstance instance(QDBusConnection::sessionBus(), startup);
    if (instance.claim() == SingleInstance::Role::second)
        return 0;
    Shell shell(application);
    QObject::connect(&instance, &SingleInstance::activated, &application,
                     [&shell](const Startup& again) { shell.reopen(again); });
    QObject::connect(&instance, &SingleInstance::startedByHand, &application,
                     [&shell](const Startup& own) { shell.startedByHand(own); });
    return shell.run(startup);
}
