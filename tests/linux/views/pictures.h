#pragma once
// What tests read off the pixels of a widget.

#include "shells/linux/desktop/appearance/contrast.h"

#include <QImage>

#include <algorithm>

namespace kestrel::linux_shell {

/// That of the pixel that differs most from the background.
inline double greatestContrast(const QImage& image, const QColor& background) {
    double greatest = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            greatest = std::max(greatest, contrastRatio(image.pixelColor(x, y), background));
    return greatest;
}

} // namespace kestrel::linux_shell
