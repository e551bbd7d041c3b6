"""Applications of the test's own, and their icons in the bar."""

import textwrap

from PIL import Image

from .bar import PILL_HEIGHT
from .waiting import settled, wait_until

ICON = 46
STEP = 52
LEADING = 16
TRAILING = 20
TOP = 10
RED = (220, 30, 30)
GREEN = (30, 200, 30)
BLUE = (40, 60, 230)


def install(desktop, name, color, command, **keys):
    """Writes a desktop entry with an icon of one colour, and answers its shortcut."""
    data_home = desktop.home / ".local/share"
    picture = data_home / f"pictures/{name}.png"
    picture.parent.mkdir(parents=True, exist_ok=True)
    Image.new("RGB", (192, 192), color).save(picture)
    entry = data_home / f"applications/{name}.desktop"
    entry.parent.mkdir(parents=True, exist_ok=True)
    lines = {"Type": "Application", "Name": name.capitalize(), "Exec": command, "Icon": picture, **keys}
    entry.write_text("[Desktop Entry]\n" + "".join(f"{key}={value}\n" for key, value in lines.items()))
    return {"path": str(entry), "bundleIdentifier": name, "name": name.capitalize()}


def script(desktop, name, text):
    """An executable shell script; answers its path."""
    path = desktop.home / f"bin/{name}"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("#!/bin/sh\n" + textwrap.dedent(text))
    path.chmod(0o755)
    return path


class Icons:
    """The icons of a bar that shows nothing but so many of them. Places are pixels of the display."""

    def __init__(self, bar, count):
        self.bar = bar
        self.screen = bar.screen
        self._width = LEADING + count * STEP - (STEP - ICON) + TRAILING

    def place(self, index):
        """The middle of an icon."""
        return self._point(STEP * index + ICON / 2, ICON / 2)

    def color(self, index):
        return self.screen.pixel(*self.place(index))

    def dot_color(self, index):
        return self.screen.pixel(*self._point(STEP * index + ICON / 2 - 0.5, ICON + 4.5))

    def has_dot(self, index):
        return min(self.dot_color(index)) > 120

    def has_badge(self, index):
        """Whether there is something red in the icon's upper right corner and around it; the icon may be red itself."""
        x, y = self._point(STEP * index + ICON, 0)
        beside = self.screen.picture((x + self.bar.scale, y, 6 * self.bar.scale, 8 * self.bar.scale))
        return any(red > 200 and green < 90 and blue < 90 for red, green, blue in beside.getdata())

    def fills_the_pill(self):
        """Whether there are as many icons as were told of, and no more."""
        edges = self.bar.pill_edges()
        return edges is not None and abs(edges[2] - edges[0] - self._width * self.bar.scale) <= 2 * self.bar.scale

    def click(self, index):
        self.screen.click(*self.place(index))

    def quit(self, index):
        """Chooses the last entry of the menu of a running application."""
        self.bar.open_menu(*self.place(index))
        for key in ("Up", "Return"):
            self.screen.type_key(key)
        wait_until(lambda: not self.bar.popups(), what="the menu closes")

    def take(self, index):
        """Presses on an icon and leads it a little way."""
        x, y = self.place(index)
        self.screen.move_pointer(x, y)
        self.screen.press()
        self.lead(x, y, x + 14 * self.bar.scale, y)

    def lead(self, from_x, from_y, to_x, to_y):
        """As a hand does, in steps."""
        for step in range(1, 9):
            self.screen.move_pointer(from_x + (to_x - from_x) * step / 8, from_y + (to_y - from_y) * step / 8)

    def lead_to(self, x, y):
        self.lead(*self.screen.pointer(), x, y)

    def drag_onto(self, index, start):
        """Drags what is at a point of the display to an icon, and lets it go once the icon has answered by growing."""
        x, y = self.place(index)
        half = ICON * self.bar.scale * 5 // 8
        around = (x - half, y - half, 2 * half, 2 * half)
        at_rest = self.screen.picture(around).tobytes()
        self.screen.move_pointer(*start)
        self.screen.press()
        self.lead_to(start[0] + 40, start[1] + 40)
        self.lead_to(x, y)
        wait_until(lambda: self.screen.picture(around).tobytes() != at_rest, what="the icon takes what is held over it")
        settled(lambda: self.screen.picture(around).tobytes(), rounds=10)
        self.screen.release()

    def _point(self, x, y):
        bar = self.bar
        left = bar.frame().center_x - self._width * bar.scale / 2
        top = bar.pill_row() - PILL_HEIGHT / 2 * bar.scale
        return int(left + (LEADING + x) * bar.scale), int(top + (TOP + y) * bar.scale)
