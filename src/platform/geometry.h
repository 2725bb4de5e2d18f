#pragma once
// Sizes and rectangles in points (one point is one device-independent pixel on Linux).

namespace kestrel {

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace kestrel
