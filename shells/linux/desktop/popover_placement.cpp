#include "shells/linux/desktop/popover_placement.h"

#include <algorithm>
#include <array>

namespace kestrel::linux_shell {
namespace {

// Air between the popover and the icon or the edge of the screen.
constexpr int gap = 4;

// Half the side of an icon that the desktop tells nothing about; panels are about 32 to 80 high.
constexpr int smallestHalf = 16;
constexpr int largestHalf = 40;

enum class Edge { top, bottom, left, right };

struct Distance {
    int length;
    Edge edge;
};

std::array<Distance, 4> distances(QPoint point, const QRect& area) {
    return {{{point.y() - area.top(), Edge::top},
             {area.bottom() - point.y(), Edge::bottom},
             {point.x() - area.left(), Edge::left},
             {area.right() - point.x(), Edge::right}}};
}

Distance nearest(QPoint point, const QRect& area) {
    const auto all = distances(point, area);
    return *std::ranges::min_element(all, {}, &Distance::length);
}

// The panel lies where the available area ends before the icon. Without such an edge it is a near
// one of the screen; in a corner a bar along the top or the bottom, as most are.
Distance panelEdge(QPoint icon, const ScreenArea& screen) {
    const auto outside = nearest(icon, screen.available);
    const auto all = distances(icon, screen.whole);
    if (outside.length < 0) {
        return *std::ranges::find(all, outside.edge, &Distance::edge);
    }
    const auto close = std::ranges::find_if(
        all, [](int length) { return length <= largestHalf; }, &Distance::length);
    return close != all.end() ? *close : nearest(icon, screen.whole);
}

/// Half the side of an icon whose middle is so far from the edge that its bar lies along.
int halfOfIcon(int distance) { return std::clamp(distance + 2, smallestHalf, largestHalf); }

int fitted(int position, int length, int low, int high) {
    return std::max(low, std::min(position, high - length));
}

} // namespace

ScreenArea withoutPanel(const ScreenArea& screen, const QRect& panel) {
    if (!screen.available.intersects(panel)) {
        return screen;
    }
    QRect left = screen.available;
    // A bar with few icons is about as high as it is wide; most lie along the top or the bottom.
    if (panel.height() > 2 * panel.width()) {
        if (panel.center().x() < screen.whole.center().x()) {
            left.setLeft(panel.left() + panel.width());
        } else {
            left.setRight(panel.left() - 1);
        }
    } else if (panel.center().y() < screen.whole.center().y()) {
        left.setTop(panel.top() + panel.height());
    } else {
        left.setBottom(panel.top() - 1);
    }
    return {screen.whole, left};
}

ScreenArea withoutBarsAround(QPoint pointer, const ScreenArea& screen) {
    const auto bar = [](int distance) {
        return distance <= largestHalf ? distance + halfOfIcon(distance) : 0;
    };
    const QRect inside = screen.whole.adjusted(
        bar(pointer.x() - screen.whole.left()), bar(pointer.y() - screen.whole.top()),
        -bar(screen.whole.right() - pointer.x()), -bar(screen.whole.bottom() - pointer.y()));
    return {screen.whole, screen.available.intersected(inside)};
}

QRect iconAround(QPoint pointer, const ScreenArea& screen) {
    if (!screen.available.contains(pointer)) {
        return {pointer, QSize(1, 1)};
    }
    const int half = halfOfIcon(panelEdge(pointer, screen).length);
    return {pointer - QPoint(half, half), QSize(2 * half, 2 * half)};
}

QRect placedAtIcon(const QRect& icon, QSize size, const ScreenArea& screen) {
    const QPoint center = icon.center();
    int x = center.x() - size.width() / 2;
    int y = center.y() - size.height() / 2;
    switch (panelEdge(center, screen).edge) {
    case Edge::top:
        y = std::max(icon.top() + icon.height(), screen.available.top()) + gap;
        break;
    case Edge::bottom:
        y = std::min(icon.top(), screen.available.top() + screen.available.height()) - gap -
            size.height();
        break;
    case Edge::left:
        x = std::max(icon.left() + icon.width(), screen.available.left()) + gap;
        break;
    case Edge::right:
        x = std::min(icon.left(), screen.available.left() + screen.available.width()) - gap -
            size.width();
        break;
    }
    const QRect inside = screen.available;
    return {
        QPoint(fitted(x, size.width(), inside.left() + gap, inside.left() + inside.width() - gap),
               fitted(y, size.height(), inside.top() + gap, inside.top() + inside.height() - gap)),
        size};
}

QRect placedInCorner(QSize size, const ScreenArea& screen) {
    const QRect inside = screen.available;
    return {QPoint(inside.left() + inside.width() - gap - size.width(), inside.top() + gap), size};
}

} // namespace kestrel::linux_shell
