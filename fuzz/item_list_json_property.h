#pragma once
// What must hold whatever bytes the stores hold. Run by the fuzzer on bytes of its own making and
// by the tests on the corpus.

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// The first property of reading and writing lists that `json` breaks, in words; nothing when all
/// hold.
std::optional<std::string> brokenItemListProperty(std::string_view json);

} // namespace kestrel
