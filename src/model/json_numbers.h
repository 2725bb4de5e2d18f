#pragma once
// Help for reading JSON whose numbers do not matter. The parser refuses numbers that no 64-bit
// integer or double can hold (1e400, 123456789012345678901234567890), although they are valid JSON
// and may stand under a key that the reader ignores.

#include <string>
#include <string_view>

namespace kestrel {

/// `json` with every well-formed number outside strings replaced by 0. What is malformed stays
/// malformed, so the result is valid JSON exactly when `json` is.
std::string withNumbersZeroed(std::string_view json);

} // namespace kestrel
