#include "shells/linux/launching/file_icons.h"

#include "shells/linux/launching/child_process.h"
#include "shells/linux/launching/glib_ptr.h"

#include <QFile>
#include <QFileInfo>
#include <QString>
#include <sys/stat.h>

#include <initializer_list>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace kestrel::linux_shell {

namespace {

/// More than any list has rows; emptied when full.
constexpr std::size_t cacheLimit = 512;

/// What an icon depends on besides the path. The contents of the themes, the table of file types
/// and a picture that an entry names by its path are taken to stay as they are.
struct Signature {
    QString theme;
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    mode_t mode = 0;
    off_t size = 0;
    time_t seconds = 0;
    long nanoseconds = 0;
    friend bool operator==(const Signature&, const Signature&) = default;
};

Signature signatureOf(const struct stat* status) {
    Signature signature{.theme = QIcon::themeName()};
    if (status == nullptr)
        return signature;
    signature.exists = true;
    signature.device = status->st_dev;
    signature.inode = status->st_ino;
    signature.mode = status->st_mode;
    signature.size = status->st_size;
    signature.seconds = status->st_mtim.tv_sec;
    signature.nanoseconds = status->st_mtim.tv_nsec;
    return signature;
}

QIcon themed(const QString& name) {
    return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : QIcon();
}

QIcon fromPicture(const QString& path) { return QFileInfo(path).isFile() ? QIcon(path) : QIcon(); }

/// The first of a themed icon's names that the theme has. GIO lists symbolic variants among them;
/// those are single-coloured glyphs.
QIcon fromNames(GThemedIcon* icon) {
    const char* const* names = g_themed_icon_get_names(icon);
    for (; *names != nullptr; ++names) {
        if (std::string_view(*names).ends_with("-symbolic"))
            continue;
        if (QIcon found = themed(QString::fromUtf8(*names)); !found.isNull())
            return found;
    }
    return {};
}

QIcon fromGio(GIcon* icon) {
    if (G_IS_THEMED_ICON(icon))
        return fromNames(G_THEMED_ICON(icon));
    if (!G_IS_FILE_ICON(icon))
        return {};
    const GlibText path(g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon))));
    return path ? fromPicture(QFile::decodeName(path.get())) : QIcon();
}

/// The first of `names` that the theme has, otherwise the picture of that name built into the
/// program.
QIcon lastResort(std::initializer_list<const char*> names, const char* picture) {
    for (const char* name : names)
        if (QIcon found = themed(QString::fromLatin1(name)); !found.isNull())
            return found;
    return fromPicture(QStringLiteral(":/kestrel/fallback/%1.svg").arg(QLatin1String(picture)));
}

/// The icon of the file's type, as GIO names it; null when the theme has none for it.
QIcon iconOfType(const std::string& path) {
    const ObjectPtr<GFile> file(g_file_new_for_path(path.c_str()));
    const ObjectPtr<GFileInfo> info(g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_ICON,
                                                      G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    GIcon* icon = info ? g_file_info_get_icon(info.get()) : nullptr;
    return icon == nullptr ? QIcon() : fromGio(icon);
}

std::string entryString(GKeyFile* file, const char* key) {
    const GlibText value(
        g_key_file_get_locale_string(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return value ? std::string(value.get()) : std::string();
}

/// An Icon key is a path or a name in the theme. Some entries add a suffix to the name.
QIcon iconOfKey(std::string name) {
    if (name.starts_with('/'))
        return fromPicture(QFile::decodeName(name.c_str()));
    for (const std::string_view suffix : {".png", ".svg", ".xpm"})
        if (name.ends_with(suffix))
            name.resize(name.size() - suffix.size());
    return name.empty() ? QIcon() : themed(QString::fromStdString(name));
}

/// Nothing for a file that is no desktop entry. Read by hand: GIO has no object for an entry whose
/// program is not installed, and the row still needs its picture.
std::optional<QIcon> iconOfEntry(const std::string& path) {
    const GlibKeyFile file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) ||
        !g_key_file_has_group(file.get(), G_KEY_FILE_DESKTOP_GROUP))
        return std::nullopt;
    if (QIcon icon = iconOfKey(entryString(file.get(), G_KEY_FILE_DESKTOP_KEY_ICON));
        !icon.isNull())
        return icon;
    const std::string categories = entryString(file.get(), G_KEY_FILE_DESKTOP_KEY_CATEGORIES);
    if (categories.find("TerminalEmulator") != std::string::npos)
        return lastResort({"utilities-terminal"}, "terminal");
    return lastResort({"application-x-executable"}, "executable");
}

QIcon iconOfExisting(const std::string& path, const struct stat& status) {
    const bool regular = S_ISREG(status.st_mode);
    // Reading a pipe would wait for its writer.
    if (regular && path.ends_with(".desktop"))
        if (auto icon = iconOfEntry(path))
            return *icon;
    if (QIcon icon = iconOfType(path); !icon.isNull())
        return icon;
    if (S_ISDIR(status.st_mode))
        return lastResort({"folder", "inode-directory"}, "folder");
    if (regular && (status.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0)
        return lastResort({"application-x-executable"}, "executable");
    return lastResort({"text-x-generic", "unknown"}, "document");
}

} // namespace

struct FileIcons::Cache {
    struct Known {
        Signature signature;
        QIcon icon;
    };
    std::unordered_map<std::string, Known> byPath;
};

FileIcons::FileIcons() : cache_(std::make_unique<Cache>()) {
    const QString bare = QStringLiteral("hicolor");
    // Without a theme of any name Qt does not look for the fallback one.
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(bare);
    if (QIcon::themeName() == bare)
        QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
}

FileIcons::~FileIcons() = default;

QIcon FileIcons::iconForFile(const std::string& path) {
    struct stat status {};
    const bool exists = isUsablePath(path) && ::stat(path.c_str(), &status) == 0;
    const Signature signature = signatureOf(exists ? &status : nullptr);
    if (const auto known = cache_->byPath.find(path);
        known != cache_->byPath.end() && known->second.signature == signature)
        return known->second.icon;
    QIcon icon = exists ? iconOfExisting(path, status)
                        : lastResort({"unknown", "text-x-generic"}, "document");
    if (cache_->byPath.size() >= cacheLimit)
        cache_->byPath.clear();
    cache_->byPath.insert_or_assign(path, Cache::Known{signature, icon});
    return icon;
}

} // namespace kestrel::linux_shell
