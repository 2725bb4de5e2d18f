#include "shells/linux/launching/installed_applications.h"

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/launching/desktop_entry.h"

#include <gio/gdesktopappinfo.h>

#include <QCollator>
#include <QLocale>
#include <QString>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

namespace kestrel::linux_shell {

namespace {

// GIO does not bear that the program ends while it reads.
constexpr std::chrono::seconds longestEnd{1};

struct ListOfEntries {
    explicit ListOfEntries(GList* list) : first(list) {}
    ~ListOfEntries() { g_list_free_full(first, g_object_unref); }
    ListOfEntries(const ListOfEntries&) = delete;
    ListOfEntries& operator=(const ListOfEntries&) = delete;

    GList* first;
};

void addLine(std::string& lines, const char* line) {
    if (line != nullptr && *line != '\0')
        lines.append(lines.empty() ? "" : "\n").append(line);
}

std::string otherNamesOf(GDesktopAppInfo* entry) {
    std::string lines;
    addLine(lines, g_desktop_app_info_get_generic_name(entry));
    const char* const* keywords = g_desktop_app_info_get_keywords(entry);
    for (; keywords != nullptr && *keywords != nullptr; ++keywords)
        addLine(lines, *keywords);
    if (const char* executable = g_app_info_get_executable(G_APP_INFO(entry))) {
        const GlibText base(g_path_get_basename(executable));
        addLine(lines, base.get());
    }
    return lines;
}

/// Nothing for what the desktop's menus do not show, or has no file or name.
std::optional<InstalledApplication> shownApplication(GAppInfo* info) {
    if (!G_IS_DESKTOP_APP_INFO(info) || !g_app_info_should_show(info))
        return std::nullopt;
    GDesktopAppInfo* const entry = G_DESKTOP_APP_INFO(info);
    const char* const path = g_desktop_app_info_get_filename(entry);
    const char* const name = g_app_info_get_name(info);
    if (path == nullptr || !g_path_is_absolute(path) || name == nullptr || *name == '\0')
        return std::nullopt;
    return InstalledApplication{path, name, otherNamesOf(entry)};
}

void sortByName(std::vector<InstalledApplication>& applications) {
    // The order of a session without a language is that of bytes: all capitals come first there.
    const QLocale locale;
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, InstalledApplication>> keyed;
    keyed.reserve(applications.size());
    for (InstalledApplication& application : applications) {
        QCollatorSortKey key = collator.sortKey(QString::fromStdString(application.name));
        keyed.emplace_back(std::move(key), std::move(application));
    }
    std::ranges::sort(keyed, [](const auto& a, const auto& b) {
        const int order = a.first.compare(b.first);
        return order != 0 ? order < 0 : a.second.path < b.second.path;
    });
    applications.clear();
    for (auto& [key, application] : keyed)
        applications.push_back(std::move(application));
}

} // namespace

std::vector<InstalledApplication> readInstalledApplications() {
    const ListOfEntries entries(g_app_info_get_all());
    std::vector<InstalledApplication> applications;
    for (const GList* at = entries.first; at != nullptr; at = at->next)
        if (auto application = shownApplication(G_APP_INFO(at->data)))
            applications.push_back(*std::move(application));
    sortByName(applications);
    return applications;
}

// Not by an object of GIO's, which there is none of for an entry whose program is not installed.
std::optional<std::string> nameOfEntry(const std::string& path) {
    const GlibKeyFile file(g_key_file_new());
    if (!path.ends_with(".desktop") || !mayBeDesktopEntry(path) ||
        !g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr))
        return std::nullopt;
    const GlibText name(g_key_file_get_locale_string(
        file.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_NAME, nullptr, nullptr));
    if (!name || *name == '\0')
        return std::nullopt;
    return std::string(name.get());
}

/// Shared with the thread that reads, which the disk may hold for longer than all else here lives.
struct InstalledApplications::State {
    std::mutex mutex;
    std::condition_variable hasRead;
    MainQueue* mainQueue = nullptr; ///< none once nobody waits any longer
    bool isReading = false;
    Done done; ///< of the main thread alone

    void deliver(Applications applications, const std::shared_ptr<State>& self) {
        const std::lock_guard lock(mutex);
        isReading = false;
        hasRead.notify_all();
        if (mainQueue == nullptr)
            return;
        mainQueue->async([self, applications = std::move(applications)]() mutable {
            if (const Done call = std::exchange(self->done, nullptr))
                call(std::move(applications));
        });
    }
};

InstalledApplications::InstalledApplications(MainQueue& mainQueue, Read read)
    : read_(std::move(read)), state_(std::make_shared<State>()) {
    state_->mainQueue = &mainQueue;
}

InstalledApplications::~InstalledApplications() {
    state_->done = nullptr;
    std::unique_lock lock(state_->mutex);
    state_->mainQueue = nullptr;
    state_->hasRead.wait_for(lock, longestEnd, [this] { return !state_->isReading; });
}

void InstalledApplications::list(Done done) {
    state_->done = std::move(done);
    {
        const std::lock_guard lock(state_->mutex);
        if (std::exchange(state_->isReading, true))
            return;
    }
    std::thread([state = state_, read = read_] { state->deliver(read(), state); }).detach();
}

} // namespace kestrel::linux_shell
