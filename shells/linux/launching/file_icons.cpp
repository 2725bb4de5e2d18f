#include "shells/linux/launching/file_icons.h"

#include "shells/linux/launching/file_icon_info.h"
#include "shells/linux/threading/timed_call.h"

#include <QFile>
#include <QString>

#include <mutex>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kestrel::linux_shell {

namespace {

/// More than any list has rows; emptied when full.
constexpr std::size_t cacheLimit = 512;

/// The contents of the themes, the table of file types and a picture that an entry names by its
/// path are taken to stay as they are.
QIcon iconOf(const FileLook& look) {
    if (!look.picture.empty())
        return QIcon(QFile::decodeName(look.picture.c_str()));
    for (const std::string& name : look.names)
        if (const auto themed = QString::fromStdString(name); QIcon::hasThemeIcon(themed))
            return QIcon::fromTheme(themed);
    const QString builtIn =
        QStringLiteral(":/kestrel/fallback/%1.svg").arg(QString::fromStdString(look.fallback));
    return QFile::exists(builtIn) ? QIcon(builtIn) : QIcon();
}

} // namespace

/// Shared with threads that the file system holds, which may outlive everything else here.
struct FileIcons::Answers {
    std::mutex mutex;
    std::function<void()> changed;
    std::unordered_set<std::string> late; ///< asked for, and nobody waits any longer
    std::vector<std::pair<std::string, std::optional<FileLook>>> arrived;

    void add(const std::string& path, std::optional<FileLook> look) {
        const std::lock_guard lock(mutex);
        const bool news = look.has_value();
        arrived.emplace_back(path, std::move(look));
        if (late.erase(path) > 0 && news && changed)
            changed();
    }

    bool isLate(const std::string& path) {
        const std::lock_guard lock(mutex);
        return late.contains(path);
    }

    bool areAnyLate() {
        const std::lock_guard lock(mutex);
        return !late.empty();
    }
};

struct FileIcons::Cache {
    struct Known {
        FileLook look;
        QString theme;
        QIcon icon;
    };
    std::unordered_map<std::string, Known> byPath;
    PatientThread thread;
};

FileIcons::FileIcons(std::function<void()> changed, std::chrono::milliseconds patience)
    : patience_(patience),
      answers_(std::make_shared<Answers>()),
      cache_(std::make_unique<Cache>()) {
    answers_->changed = std::move(changed);
    const QString bare = QStringLiteral("hicolor");
    // Without a theme of any name Qt does not look for the fallback one.
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(bare);
    if (QIcon::themeName() == bare)
        QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
}

FileIcons::~FileIcons() {
    const std::lock_guard lock(answers_->mutex);
    answers_->changed = nullptr;
}

void FileIcons::ask(const std::string& path) {
    std::optional<FileStamp> stamp;
    if (const auto known = cache_->byPath.find(path); known != cache_->byPath.end())
        stamp = known->second.look.stamp;
    // Rows of one dead mount come together, and their waits would add up.
    const auto patience = answers_->areAnyLate() ? patience_ / 10 : patience_;
    const bool inTime = cache_->thread.run(
        [path, stamp, answers = answers_] { answers->add(path, lookAtFile(path, stamp)); },
        patience);
    if (inTime)
        return;
    const std::lock_guard lock(answers_->mutex);
    // The answer may have come in this very moment.
    for (const auto& [arrived, look] : answers_->arrived)
        if (arrived == path)
            return;
    answers_->late.insert(path);
}

void FileIcons::takeAnswers() {
    std::vector<std::pair<std::string, std::optional<FileLook>>> arrived;
    {
        const std::lock_guard lock(answers_->mutex);
        arrived.swap(answers_->arrived);
    }
    for (auto& [path, look] : arrived) {
        if (!look)
            continue;
        if (cache_->byPath.size() >= cacheLimit)
            cache_->byPath.clear();
        QIcon icon = iconOf(*look);
        cache_->byPath.insert_or_assign(
            path, Cache::Known{std::move(*look), QIcon::themeName(), std::move(icon)});
    }
}

QIcon FileIcons::iconForFile(const std::string& path) {
    if (!answers_->isLate(path))
        ask(path);
    takeAnswers();
    const auto found = cache_->byPath.find(path);
    if (found == cache_->byPath.end())
        return iconOf(*lookAtFile(std::string(), std::nullopt));
    Cache::Known& known = found->second;
    if (known.theme != QIcon::themeName()) {
        known.theme = QIcon::themeName();
        known.icon = iconOf(known.look);
    }
    return known.icon;
}

} // namespace kestrel::linux_shell
