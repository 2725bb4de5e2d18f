#include "shells/linux/launching/file_icons.h"

#include "shells/linux/launching/file_icon_info.h"
#include "shells/linux/launching/svg_icon.h"
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

/// The contents of the themes, the table of file types and an image that an entry names by its
/// path are taken to stay as they are.
QIcon iconOf(const FileIconInfo& info) {
    if (!info.imagePath.empty()) {
        const QString image = QFile::decodeName(info.imagePath.c_str());
        return image.endsWith(QStringLiteral(".svg")) ? svgIcon(image) : QIcon(image);
    }
    for (const std::string& name : info.names)
        if (const auto themed = QString::fromStdString(name); QIcon::hasThemeIcon(themed))
            return QIcon::fromTheme(themed);
    const QString builtIn =
        QStringLiteral(":/kestrel/fallback/%1.svg").arg(QString::fromStdString(info.fallback));
    return QFile::exists(builtIn) ? svgIcon(builtIn) : QIcon();
}

} // namespace

/// Shared with threads that the file system holds, which may outlive everything else here.
struct FileIcons::LateAnswers {
    std::mutex mutex;
    std::function<void()> changed;
    std::unordered_set<std::string> awaited; ///< the paths asked for and not answered
    std::vector<std::pair<std::string, FileIconInfo>> arrived;

    void add(const std::string& path, std::optional<FileIconInfo> info) {
        const std::lock_guard lock(mutex);
        awaited.erase(path);
        if (!info)
            return;
        arrived.emplace_back(path, std::move(*info));
        if (changed)
            changed();
    }
};

struct FileIcons::Cache {
    struct Known {
        FileIconInfo info;
        QString theme;
        QIcon icon;
    };
    std::unordered_map<std::string, Known> byPath;
    TimedCall call;

    void add(const std::string& path, FileIconInfo info) {
        if (byPath.size() >= cacheLimit)
            byPath.clear();
        QIcon icon = iconOf(info);
        byPath.insert_or_assign(path, Known{std::move(info), QIcon::themeName(), std::move(icon)});
    }
};

FileIcons::FileIcons(std::function<void()> changed, std::chrono::milliseconds timeout)
    : timeout_(timeout), late_(std::make_shared<LateAnswers>()), cache_(std::make_unique<Cache>()) {
    late_->changed = std::move(changed);
    const QString bare = QStringLiteral("hicolor");
    // Without a theme of any name Qt does not look for the fallback one.
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(bare);
    if (QIcon::themeName() == bare)
        QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
}

FileIcons::~FileIcons() {
    const std::lock_guard lock(late_->mutex);
    late_->changed = nullptr;
}

void FileIcons::ask(const std::string& path) {
    auto timeout = timeout_;
    {
        const std::lock_guard lock(late_->mutex);
        // Rows of one dead mount come together, and their waits would add up.
        if (!late_->awaited.empty())
            timeout /= 10;
        if (!late_->awaited.insert(path).second)
            return;
    }
    std::optional<FileStamp> stamp;
    if (const auto known = cache_->byPath.find(path); known != cache_->byPath.end())
        stamp = known->second.info.stamp;
    const auto info = std::make_shared<std::optional<FileIconInfo>>();
    const bool isInTime =
        cache_->call.run([path, stamp, info] { *info = readFileIconInfo(path, stamp); }, timeout,
                         [path, info, late = late_] { late->add(path, std::move(*info)); });
    if (!isInTime)
        return;
    if (*info)
        cache_->add(path, std::move(**info));
    const std::lock_guard lock(late_->mutex);
    late_->awaited.erase(path);
}

void FileIcons::takeLateAnswers() {
    std::vector<std::pair<std::string, FileIconInfo>> arrived;
    {
        const std::lock_guard lock(late_->mutex);
        arrived.swap(late_->arrived);
    }
    for (auto& [path, info] : arrived)
        cache_->add(path, std::move(info));
}

QIcon FileIcons::iconForFile(const std::string& path) {
    takeLateAnswers();
    ask(path);
    const auto found = cache_->byPath.find(path);
    if (found == cache_->byPath.end())
        return iconOf(*readFileIconInfo(std::string(), std::nullopt));
    Cache::Known& known = found->second;
    if (known.theme != QIcon::themeName()) {
        known.theme = QIcon::themeName();
        known.icon = iconOf(known.info);
    }
    return known.icon;
}

} // namespace kestrel::linux_shell
