"""A panel's bar as its user sees it: where it is, where on it the status icon is, how well that
can be seen, and whether a popover is placed at it as it should be."""
import collections
import time
from typing import NamedTuple

from harness.images import Rect
from harness.processes import DEFAULT_TIMEOUT, wait_for

# A bar has a thin border, and some have a gradient that is fainter than any icon.
RIM = 3
FAINTEST_MARK = 60


class Icon(NamedTuple):
    """`contrast` is the difference between its strongest tone and the bar's, from 0 to 255."""

    rect: Rect
    contrast: int


def _gray(red, green, blue):
    return (red * 299 + green * 587 + blue * 114) // 1000


def drawn(image, rect):
    """What stands out from the background in a part of the screen; None while nothing does."""
    part = image.cut(rect)
    data = part.data
    grays = [_gray(*data[at:at + 3]) for at in range(0, len(data), 3)]
    background = collections.Counter(grays).most_common(1)[0][0]
    marks = [at for at, gray in enumerate(grays) if abs(gray - background) >= FAINTEST_MARK]
    if not marks:
        return None
    columns, rows = [at % part.width for at in marks], [at // part.width for at in marks]
    return Icon(Rect(rect.x + min(columns), rect.y + min(rows),
                     max(columns) - min(columns) + 1, max(rows) - min(rows) + 1),
                max(abs(grays[at] - background) for at in marks))


class Bar(NamedTuple):
    """Along a whole edge of a screen, with nothing on it but the one icon."""

    screen: Rect
    edge: str = "top"
    thickness: int = 30

    @property
    def is_vertical(self):
        return self.edge in ("left", "right")

    @property
    def rect(self):
        x, y, width, height = self.screen
        if self.is_vertical:
            left = x if self.edge == "left" else x + width - self.thickness
            return Rect(left, y, self.thickness, height)
        top = y if self.edge == "top" else y + height - self.thickness
        return Rect(x, top, width, self.thickness)

    def icon(self, image):
        """What stands out from the bar's background; None while nothing does."""
        x, y, width, height = self.rect
        return drawn(image, Rect(x + RIM, y + RIM, width - 2 * RIM, height - 2 * RIM))

    def wait_for_icon(self, desktop, limit=DEFAULT_TIMEOUT):
        """The icon, once it is square and stays where it is and as it is. The pointer must not be
        on the bar."""
        def settled():
            icon = self.icon(desktop.screenshot())
            if icon is None or not 14 <= icon.rect.width <= self.thickness \
                    or abs(icon.rect.width - icon.rect.height) > 2:
                return None
            time.sleep(0.4)     # it is painted again when the program has seen the bar
            return icon if icon == self.icon(desktop.screenshot()) else None
        return wait_for(settled, limit, f"the status icon on the bar at the {self.edge}")

    def misplacement(self, popover, icon, slack=10):
        """What is wrong with where a popover is, or None: it must be on the bar's screen, clear
        of the bar and close to it, and as nearly centred on the icon as the screen lets it, within
        `slack` pixels."""
        where = f"popover {popover}, icon {icon}, bar {self.rect}"
        if not self.screen.contains(popover):
            return f"beyond its screen: {where}"
        x, y, width, height = self.rect
        gap = {"top": popover.y - y - height, "bottom": y - popover.y - popover.height,
               "left": popover.x - x - width, "right": x - popover.x - popover.width}[self.edge]
        if not 0 <= gap <= slack:
            return f"{gap} pixels from the bar: {where}"
        along = 1 if self.is_vertical else 0
        start, length = self.screen[along], self.screen[along + 2]
        wanted = max(start, min(icon.center[along] - popover[along + 2] // 2,
                                start + length - popover[along + 2]))
        if abs(popover[along] - wanted) > slack:
            return f"not at its icon: {where}"
        return None
