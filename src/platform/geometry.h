#pragma once
// Sizes in points (one point is one device-independent pixel on Linux).

namespace kestrel {

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

} // namespace kestrel
