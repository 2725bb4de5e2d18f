#pragma once
// Private folders that hold what a new terminal window is to run: one word on the terminal's
// command line names a script in it, so no terminal can split, expand or refuse the user's text.

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::linux_shell {

struct ScratchFile {
    std::string_view name;
    std::string_view bytes;
    bool executable = false;
};

/// The folders in which a scratch folder may be made, best first: $XDG_RUNTIME_DIR, $TMPDIR, /tmp,
/// the user's cache folder.
std::vector<std::string> scratchBases();

/// Makes a new folder (mode 0700) with `files` in it under the first of `bases` that is suitable
/// and returns its path, which consists of characters that no shell and no terminal gives a
/// meaning. A base is suitable when it is an absolute path of such characters, is a folder in which
/// nobody else can replace ours, and allows programs to be run. Nothing, and nothing left behind,
/// when none will do.
std::optional<std::string> makeScratchFolder(std::span<const std::string> bases,
                                             std::span<const ScratchFile> files);

/// Removes a scratch folder and the files of the names that this program puts there.
void removeScratchFolder(const std::string& folder);

/// Removes scratch folders under `bases` that nothing has touched for `age`: a terminal that failed
/// to start leaves one, and one that is still starting must keep its own.
void sweepScratchFolders(std::span<const std::string> bases, std::chrono::seconds age);

} // namespace kestrel::linux_shell
