#pragma once
// What must hold of the comparison of texts and of ids whatever bytes they are. Run by the fuzzer
// on bytes of its own making and by the tests on the corpus.

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// The first property that two texts break, in words; nothing when all hold. `bytes` are the two,
/// parted by the first line break.
std::optional<std::string> brokenTextProperty(std::string_view bytes);

} // namespace kestrel
