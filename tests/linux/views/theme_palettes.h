#pragma once
// The colours that programs get on the desktops that people use, for tests that hold them all.

#include "shells/linux/desktop/appearance/palettes.h"

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <memory>
#include <vector>

namespace kestrel::linux_shell {

struct NamedPalette {
    const char* name;
    QPalette palette;
};

/// A palette as a platform theme makes it from a few colours, with nothing of this program's own.
inline QPalette themePalette(QRgb window, QRgb windowText, QRgb base, QRgb text, QRgb highlight,
                             QRgb highlightedText) {
    QPalette palette{QColor(window), QColor(window)};
    palette.setColor(QPalette::WindowText, QColor(windowText));
    palette.setColor(QPalette::ButtonText, QColor(windowText));
    palette.setColor(QPalette::Base, QColor(base));
    palette.setColor(QPalette::Text, QColor(text));
    palette.setColor(QPalette::Highlight, QColor(highlight));
    palette.setColor(QPalette::HighlightedText, QColor(highlightedText));
    return palette;
}

inline std::vector<NamedPalette> themePalettes() {
    using enum ColorScheme;
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    return {
        {"the toolkit's own", fusion->standardPalette()},
        {"light", paletteFor(light, Contrast::normal)},
        {"dark", paletteFor(dark, Contrast::normal)},
        {"light, high contrast", paletteFor(light, Contrast::high)},
        {"dark, high contrast", paletteFor(dark, Contrast::high)},
        {"Breeze", themePalette(0xEFF0F1, 0x232629, 0xFFFFFF, 0x232629, 0x3DAEE9, 0xFFFFFF)},
        {"Breeze Classic",
         themePalette(0xEFF0F1, 0x31363B, 0xFCFCFC, 0x31363B, 0x93CEE9, 0x31363B)},
        {"Breeze Dark", themePalette(0x2A2E32, 0xFCFCFC, 0x1B1E20, 0xFCFCFC, 0x3DAEE9, 0xFCFCFC)},
        {"Adwaita", themePalette(0xF6F5F4, 0x2E3436, 0xFFFFFF, 0x000000, 0x3584E4, 0xFFFFFF)},
        {"Adwaita Dark", themePalette(0x353535, 0xEEEEEC, 0x2D2D2D, 0xFFFFFF, 0x15539E, 0xFFFFFF)},
        {"GTK's high contrast",
         themePalette(0xFDFDFD, 0x272C2E, 0xFFFFFF, 0x000000, 0x0F3B71, 0xFFFFFF)},
        {"GTK's inverse high contrast",
         themePalette(0x000000, 0xFFFFFF, 0x000000, 0xFFFFFF, 0x1A6FD8, 0xFFFFFF)},
    };
}

} // namespace kestrel::linux_shell
