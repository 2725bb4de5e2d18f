#include "shells/linux/desktop/appearance/contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrel::linux_shell {
namespace {

using Channels = std::array<double, 3>;

// Pixels have whole numbers, and a blend may lose one of them on the way.
constexpr double roundingMargin = 1.02;

Channels channelsOf(const QColor& color) { return {color.redF(), color.greenF(), color.blueF()}; }

/// The share of light that a colour sends back, from 0 to 1.
double luminance(const Channels& color) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color[0]) + 0.7152 * linear(color[1]) + 0.0722 * linear(color[2]);
}

double ratioOf(double one, double other) {
    const auto [darker, lighter] = std::minmax(one, other);
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

double contrastRatio(const QColor& one, const QColor& other) {
    return ratioOf(luminance(channelsOf(one)), luminance(channelsOf(other)));
}

double leastShare(const QColor& under, const QColor& over, const QColor& against, double ratio) {
    const Channels from = channelsOf(under);
    const Channels to = channelsOf(over);
    const double other = luminance(channelsOf(against));
    const auto isEnough = [&](double share) {
        Channels mixture = from;
        for (std::size_t i = 0; i < mixture.size(); ++i)
            mixture[i] += (to[i] - from[i]) * share;
        return ratioOf(luminance(mixture), other) >= ratio * roundingMargin;
    };
    if (isEnough(0))
        return 0;
    double least = 0;
    double enough = 1;
    constexpr int steps = 10; // as fine as a pixel's channel
    for (int step = 0; step < steps; ++step) {
        const double middle = (least + enough) / 2;
        (isEnough(middle) ? enough : least) = middle;
    }
    return enough;
}

} // namespace kestrel::linux_shell
