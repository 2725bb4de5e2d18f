#include "shells/linux/shell.h"

#include "shells/linux/desktop/startup_notification.h"
#include "shells/linux/desktop/x11.h"
#include "shells/linux/launching/launch_environment.h"
#include "shells/linux/storage/data_directory.h"
#include "shells/linux/views/kit/fallback_style.h"

#include <QDBusConnection>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>

#include <chrono>
#include <utility>

// The linker drops a library's resources unless they are called for, outside any namespace.
static void initResources() { Q_INIT_RESOURCE(kestrel); }

namespace kestrel::linux_shell {
namespace {

// What the core stores the list under; the cloud folder is watched for it.
constexpr const char* listKey = "launcherItems";

// A panel that starts with the session may need this long. When none has shown the icon by then,
// the popover shows that the program runs.
constexpr std::chrono::seconds panelTimeout{4};

} // namespace

Shell::Shell(QApplication& application)
    : dataDirectory_(dataDirectoryPath().value_or(std::string())),
      userDefaults_(dataDirectory_),
      cloud_(dataDirectory_, listKey),
      workspace_(launchWorker_, [this] { return activationTokens_.take(); }),
      terminal_(
          launchWorker_, [this] { return activationTokens_.take(); },
          [this] { lateIconsArrived(); }),
      fileIcons_([this] { lateIconsArrived(); }),
      iconSource_([this](const std::string& path) { return fileIcons_.iconForFile(path); }),
      application_(application),
      appearance_(QDBusConnection::sessionBus()),
      openPanel_(mainQueue_, iconSource_),
      desktop_(QDBusConnection::sessionBus(), iconSource_),
      delegate_({.store = {.mainQueue = mainQueue_,
                           .userDefaults = userDefaults_,
                           .cloud = cloud_,
                           .clock = clock_,
                           .workspace = workspace_,
                           .terminal = terminal_},
                 .application = application_,
                 .openPanel = openPanel_,
                 .desktop = desktop_}) {
    initResources();
    forgetOwnStart();
    if (!appearance_.isStyleUsersOwn())
        QApplication::setStyle(new FallbackStyle(x11::isCompositing));
    language_.emplace(QLocale(), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

int Shell::run(const Startup& startup) {
    applicationDidFinishLaunching();
    if (startup.isByHand())
        startedByHand(startup);
    return QApplication::exec();
}

void Shell::reopen(const Startup& startup) {
    completeStartup(startup.id.toStdString());
    showPopover(startup.activationToken);
}

// The popover opens in a later turn of the event loop: the list is there by then.
void Shell::startedByHand(const Startup& startup) {
    completeStartup(startup.id.toStdString());
    auto* item = desktop_.statusItem();
    const auto show = [this, item, token = startup.activationToken] {
        if (item->isWithoutPanel())
            showOnce(token);
    };
    QObject::connect(item, &LinuxStatusItem::panelKnown, item, show, Qt::QueuedConnection);
    QTimer::singleShot(0, item, show);
}

void Shell::applicationDidFinishLaunching() {
    delegate_.applicationDidFinishLaunching();
    auto* item = desktop_.statusItem();
    QObject::connect(item, &LinuxStatusItem::activationTokenProvided, &activationTokens_,
                     &ActivationTokens::provide);
    activationTokens_.setWindow(desktop_.popover());
    const auto follow = [this, item] { item->setColorScheme(appearance_.colorScheme()); };
    QObject::connect(&appearance_, &Appearance::colorSchemeChanged, item, follow);
    follow();
    QTimer::singleShot(panelTimeout, item, [this, item] {
        if (!item->hasBeenShown())
            showOnce({});
    });
}

// On any thread.
void Shell::lateIconsArrived() {
    mainQueue_.async([this] { Q_EMIT iconSource_.changed(); });
}

// On Wayland the toolkit takes the token for the window that it activates next from where a
// launcher puts it. On X11 the popover needs none.
void Shell::showPopover(const QString& activationToken) {
    const bool isNeeded = !activationToken.isEmpty() && !x11::isAvailable();
    if (isNeeded)
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    delegate_.applicationShouldHandleReopen();
    if (isNeeded)
        qunsetenv("XDG_ACTIVATION_TOKEN");
}

void Shell::showOnce(const QString& activationToken) {
    if (!std::exchange(hasShownItself_, true))
        showPopover(activationToken);
}

} // namespace kestrel::linux_shell
