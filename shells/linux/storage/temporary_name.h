#pragma once
// The names of the temporary files that writes go through: hidden, and recognisable as made by this
// program, on this machine, by this process. A folder that a synchroniser shares may hold temporary
// files of the synchroniser and of other machines; neither is ever taken for one of ours.

#include <string>
#include <string_view>

namespace kestrel::linux_shell {

/// A name next to the file `target`, never given before in this process. Any thread may ask.
std::string nextTemporaryName(std::string_view target);

/// Whether `name` is a temporary of `target` that this machine made, now or in an earlier run.
bool isTemporaryOfThisMachine(std::string_view name, std::string_view target);

/// Whether `name` is a temporary, of whatever file, that this process made.
bool isTemporaryOfThisProcess(std::string_view name);

} // namespace kestrel::linux_shell
