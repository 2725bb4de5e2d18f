// Feeds the comparison of texts and the reader of ids with bytes that libFuzzer makes up.

#include "fuzz/text_property.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto broken = kestrel::brokenTextProperty(bytes)) {
        std::fprintf(stderr, "broken: %s\n", broken->c_str());
        std::abort();
    }
    return 0;
}
