#include "shells/linux/launching/file_icon_info.h"

#include "shells/linux/glib/glib_ptr.h"
#include "shells/linux/launching/command_file.h"
#include "shells/linux/launching/desktop_entry.h"

#include <sys/stat.h>

#include <fstream>
#include <initializer_list>
#include <string_view>

namespace kestrel::linux_shell {

namespace {

FileStamp stampOf(const struct stat& status) {
    return {.exists = true,
            .device = status.st_dev,
            .inode = status.st_ino,
            .mode = status.st_mode,
            .size = status.st_size,
            .seconds = status.st_mtim.tv_sec,
            .nanoseconds = status.st_mtim.tv_nsec};
}

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

void addImage(FileIconInfo& info, const std::string& path) {
    if (isRegularFile(path))
        info.imagePath = path;
}

/// What to show where the theme has none of the icon's own names.
void addFallback(FileIconInfo& info, std::initializer_list<const char*> names, const char* icon) {
    info.names.insert(info.names.end(), names.begin(), names.end());
    info.fallback = icon;
}

/// GIO lists symbolic variants among the names; those are single-coloured glyphs.
void addThemed(FileIconInfo& info, GThemedIcon* icon) {
    for (const char* const* name = g_themed_icon_get_names(icon); *name != nullptr; ++name)
        if (!std::string_view(*name).ends_with("-symbolic"))
            info.names.emplace_back(*name);
}

/// As many as tell what a file is; none of a file that cannot be read.
std::string firstBytesOf(const std::string& path) {
    constexpr std::size_t telling = 4096;
    std::string bytes(telling, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

/// What a file is by its name and, where that leaves a doubt, by its first bytes. Asking GIO for a
/// file's information would say the same and load all modules for other file systems.
GlibText typeOfFile(const std::string& path) {
    gboolean isUncertain = FALSE;
    GlibText type(g_content_type_guess(path.c_str(), nullptr, 0, &isUncertain));
    const std::string bytes = isUncertain != FALSE ? firstBytesOf(path) : std::string();
    if (!bytes.empty())
        type.reset(g_content_type_guess(path.c_str(), reinterpret_cast<const guchar*>(bytes.data()),
                                        bytes.size(), nullptr));
    return type;
}

ObjectPtr<GIcon> iconByGio(const std::string& path) {
    const ObjectPtr<GFile> file(g_file_new_for_path(path.c_str()));
    const ObjectPtr<GFileInfo> answer(g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_ICON,
                                                        G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    GIcon* icon = answer ? g_file_info_get_icon(answer.get()) : nullptr;
    return ObjectPtr<GIcon>(icon != nullptr ? G_ICON(g_object_ref(icon)) : nullptr);
}

ObjectPtr<GIcon> iconOfFile(const std::string& path) {
    return ObjectPtr<GIcon>(g_content_type_get_icon(typeOfFile(path).get()));
}

/// GIO knows the icons of special folders, and of what is no regular file. What an empty file is
/// depends on its version.
void addIconOfType(FileIconInfo& info, const std::string& path) {
    const bool hasContents = S_ISREG(info.stamp.mode) && info.stamp.size > 0;
    const auto icon = hasContents ? iconOfFile(path) : iconByGio(path);
    if (icon != nullptr && G_IS_THEMED_ICON(icon.get())) {
        addThemed(info, G_THEMED_ICON(icon.get()));
    } else if (icon != nullptr && G_IS_FILE_ICON(icon.get())) {
        const GlibText image(g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon.get()))));
        if (image)
            addImage(info, image.get());
    }
}

std::string entryString(GKeyFile* file, const char* key) {
    const GlibText value(
        g_key_file_get_locale_string(file, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return value ? std::string(value.get()) : std::string();
}

/// An Icon key is a path or a name in the theme. Some entries add a suffix to the name.
void addIconOfKey(FileIconInfo& info, std::string name) {
    if (name.starts_with('/')) {
        addImage(info, name);
        return;
    }
    for (const std::string_view suffix : {".png", ".svg", ".xpm"})
        if (name.ends_with(suffix))
            name.resize(name.size() - suffix.size());
    if (!name.empty())
        info.names.push_back(name);
}

/// False for a file that is no desktop entry. Not read through GIO, which has no object for an
/// entry whose program is not installed, and the row still needs its icon.
bool addIconOfEntry(FileIconInfo& info, const std::string& path) {
    if (!mayBeDesktopEntry(path))
        return false;
    const GlibKeyFile file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) ||
        !g_key_file_has_group(file.get(), G_KEY_FILE_DESKTOP_GROUP))
        return false;
    addIconOfKey(info, entryString(file.get(), G_KEY_FILE_DESKTOP_KEY_ICON));
    const std::string categories = entryString(file.get(), G_KEY_FILE_DESKTOP_KEY_CATEGORIES);
    if (categories.find("TerminalEmulator") != std::string::npos)
        addFallback(info, {"utilities-terminal"}, "terminal");
    else
        addFallback(info, {"application-x-executable"}, "executable");
    return true;
}

void addIconOfExisting(FileIconInfo& info, const std::string& path) {
    const mode_t mode = info.stamp.mode;
    if (path.ends_with(".desktop") && addIconOfEntry(info, path))
        return;
    addIconOfType(info, path);
    if (S_ISDIR(mode))
        addFallback(info, {"folder", "inode-directory"}, "folder");
    else if (S_ISREG(mode) && (mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0)
        addFallback(info, {"application-x-executable"}, "executable");
    else
        addFallback(info, {"text-x-generic", "unknown"}, "document");
}

} // namespace

std::optional<FileIconInfo> readFileIconInfo(const std::string& path,
                                             const std::optional<FileStamp>& known) {
    FileIconInfo info;
    struct stat status {};
    if (isUsablePath(path) && ::stat(path.c_str(), &status) == 0)
        info.stamp = stampOf(status);
    if (known && *known == info.stamp)
        return std::nullopt;
    if (info.stamp.exists)
        addIconOfExisting(info, path);
    else
        addFallback(info, {"unknown", "text-x-generic"}, "document");
    return info;
}

} // namespace kestrel::linux_shell
