#include "shells/linux/desktop/toolkit_start.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <utility>
#include <vector>

#include <unistd.h>

namespace kestrel::linux_shell {
namespace {

// Distributions package the toolkit's part for Wayland apart from the toolkit.
bool isWaylandPossible() {
    const QStringList folders = QCoreApplication::libraryPaths();
    return std::ranges::any_of(folders, [](const QString& folder) {
        return !QDir(folder + QStringLiteral("/platforms"))
                    .entryList({QStringLiteral("libqwayland*")})
                    .isEmpty();
    });
}

QString variable(const char* name) { return qEnvironmentVariable(name).simplified(); }

/// The toolkit's names of the ways that it has tried: those that the user has chosen, or else those
/// that have a variable.
QStringList triedPlatforms() {
    const QString chosen = variable("QT_QPA_PLATFORM");
    if (!chosen.isEmpty())
        return chosen.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QStringList platforms;
    if (!variable("DISPLAY").isEmpty())
        platforms.append(QStringLiteral("xcb"));
    if (!variable("WAYLAND_DISPLAY").isEmpty())
        platforms.append(QStringLiteral("wayland"));
    return platforms;
}

QString noAnswer(const QString& who, const char* name) {
    const QString place = variable(name);
    return place.isEmpty() ? QStringLiteral("%1 is not set").arg(QLatin1String(name))
                           : QStringLiteral("the %1 \"%2\" (%3) cannot be reached")
                                 .arg(who, place, QLatin1String(name));
}

QString missingFor(const QString& platform) {
    if (platform.startsWith(QLatin1String("xcb")))
        return noAnswer(QStringLiteral("X server"), "DISPLAY");
    if (!platform.startsWith(QLatin1String("wayland")))
        return QStringLiteral("the platform \"%1\" (QT_QPA_PLATFORM) does not start").arg(platform);
    if (!isWaylandPossible())
        return QStringLiteral("Qt's plugin for Wayland is not installed (qt6-wayland)");
    return noAnswer(QStringLiteral("compositor"), "WAYLAND_DISPLAY");
}

struct Message {
    QtMsgType type;
    QByteArray category;
    QString text;
};

/// What waits to be said. It outlives every thread that the toolkit starts.
struct WaitingMessages {
    std::mutex mutex;
    std::vector<Message> messages;
};

WaitingMessages& waiting() {
    static auto& instance = *new WaitingMessages;
    return instance;
}

// On any thread. A plugin that failed may be unloaded before its message is said, so nothing of it
// is kept by address.
void hear(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "kestrel: %s.\n", qPrintable(missingDisplay()));
        // Half of an application object is not to be taken apart.
        ::_exit(1);
    }
    const std::lock_guard lock(waiting().mutex);
    waiting().messages.push_back({type, context.category, text});
}

} // namespace

ToolkitStart::ToolkitStart() : before_(qInstallMessageHandler(hear)) {}

ToolkitStart::~ToolkitStart() {
    qInstallMessageHandler(before_);
    const std::lock_guard lock(waiting().mutex);
    for (const auto& message : std::exchange(waiting().messages, {})) {
        const QMessageLogContext context(nullptr, 0, nullptr, message.category.constData());
        before_(message.type, context, message.text);
    }
}

QString missingDisplay() {
    QStringList reasons;
    for (const auto& platform : triedPlatforms())
        reasons.append(missingFor(platform));
    if (reasons.isEmpty())
        reasons.append(QStringLiteral("neither DISPLAY nor WAYLAND_DISPLAY is set"));
    return QStringLiteral("there is no display: ") + reasons.join(QStringLiteral(", and "));
}

} // namespace kestrel::linux_shell
