"""Takes the pictures of the README: the bar as it runs, at twice the pixels."""

import sys
from pathlib import Path

from harness.bar import Bar
from harness.desktop import Desktop
from harness.panels import start_tint2
from harness.waiting import settled, wait_until
from harness.wallpaper import gradient

SCALE = 2
SIZE = (1440 * SCALE, 900 * SCALE)
WIDGETS = ["clock", "calendar", "month-counter"]
SETTINGS = {"enabledWidgets": WIDGETS, "pinnedItemsIntroduced": True, "clockFormat": "24h"}
# What of the bottom of the screen a picture shows, in points.
PICTURE_WIDTH = 760
# Left of the middle, so that the menu stands over the pill rather than beside it.
MENU_OFFSET = 110


def desktop():
    return Desktop("openbox", SIZE, fonts="Inter", wallpaper=gradient(SIZE))


def bottom_of(screen, height):
    width, height = PICTURE_WIDTH * SCALE, height * SCALE
    return screen.picture(((screen.size[0] - width) // 2, screen.size[1] - height, width, height))


def still_picture(screen, height):
    """The picture once everything in it has come to rest."""
    settled(lambda: bottom_of(screen, height).tobytes())
    return bottom_of(screen, height)


def bar_alone():
    with desktop() as surroundings:
        Bar(surroundings, SETTINGS, SCALE)
        return still_picture(surroundings.screen, 120)


def bar_with_nudge():
    with desktop() as surroundings:
        start_tint2(surroundings)
        bar = Bar(surroundings, SETTINGS, SCALE)
        wait_until(lambda: bar.is_shown(nudge=True), what="the bar makes room for the nudge")
        return still_picture(surroundings.screen, 150)


def bar_with_menu():
    with desktop() as surroundings:
        bar = Bar(surroundings, SETTINGS, SCALE)
        column, row = bar.pill_center()
        bar.open_menu(column - MENU_OFFSET * SCALE, row - 20 * SCALE)
        return still_picture(surroundings.screen, 200)


def main(folder):
    folder = Path(folder)
    folder.mkdir(exist_ok=True)
    for name, take in {"bar": bar_alone, "nudge": bar_with_nudge, "menu": bar_with_menu}.items():
        path = folder / f"{name}.png"
        take().save(path, optimize=True)
        print(path)


if __name__ == "__main__":
    main(sys.argv[1])
