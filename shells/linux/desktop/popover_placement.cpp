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
    if (outside.length < 0)
        return *std::ranges::find(all, outside.edge, &Distance::edge);
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
    if (!screen.available.intersects(panel))
        return screen;
    QRect left = screen.available;
    // A bar with few icons is about as high as it is wide; most lie along the top or the bottom.
    if (panel.height() > 2 * panel.width())
        if (panel.center().x() < screen.whole.center().x())
            left.setLeft(panel.left() + panel.width());
        else
            left.setRight(panel.left() - 1);
    else if (panel.center().y() < screen.whole.center().y())
        left.setTop(panel.top() + panel.height());
    else
        left.setBottom(panel.top() - 1);
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
    if (!screen.available.contains(pointer))
        return {pointer, QSize(1, 1)};
    const int half = halfOfIcon(panelEdge(pointer, screen).length);
    return {pointer - QPoint(half, half), QSize(2 * half, 2 * half)};
}

QList<QRect> keptFree(const ScreenArea& screen) {
    const QRect& whole = screen.whole;
    const QRect& available = screen.available;
    QRect above = whole;
    above.setBottom(available.top() - 1);
    QRect below = whole;
    below.setTop(available.bottom() + 1);
    QRect before = whole;
    before.setRight(available.left() - 1);
    QRect behind = whole;
    behind.setLeft(available.right() + 1);
    QList<QRect> strips;
    for (const QRect& strip : {above, below, before, behind})
        if (!strip.isEmpty())
            strips.append(strip);
    return strips;
}

QRect iconOnPanel(QPoint pointer, const ScreenArea& screen) {
    const auto panels = keptFree(screen);
    if (panels.isEmpty())
        return iconAround(pointer, screen);
    const auto nearestIn = [pointer](const QRect& panel) {
        return QPoint(std::clamp(pointer.x(), panel.left(), panel.right()),
                      std::clamp(pointer.y(), panel.top(), panel.bottom()));
    };
    const auto distance = [&](const QRect& panel) {
        return (nearestIn(panel) - pointer).manhattanLength();
    };
    return {nearestIn(*std::ranges::min_element(panels, {}, distance)), QSize(1, 1)};
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

QRect placedAtPanelEnd(QSize size, const ScreenArea& screen, Qt::LayoutDirection direction) {
    const QRect& inside = screen.available;
    const int left = inside.left() + gap;
    const int right = inside.left() + inside.width() - gap - size.width();
    const int top = inside.top() + gap;
    const int bottom = inside.top() + inside.height() - gap - size.height();
    const int end = direction == Qt::RightToLeft ? left : right;
    const auto panels = keptFree(screen);
    if (panels.isEmpty())
        return {{end, top}, size};
    switch (nearest(panels.front().center(), screen.whole).edge) {
    case Edge::top:
        return {{end, top}, size};
    case Edge::bottom:
        return {{end, bottom}, size};
    case Edge::left:
        return {{left, bottom}, size};
    case Edge::right:
        return {{right, bottom}, size};
    }
    return {{end, top}, size};
}

} // namespace kestrel::linux_shell
