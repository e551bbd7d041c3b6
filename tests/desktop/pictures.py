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
# Left free around what a picture shows.
MARGIN = 48 * SCALE


def desktop():
    return Desktop("openbox", SIZE, fonts="Inter", wallpaper=gradient(SIZE))


def picture_around(screen, frame, height):
    """The bottom of the screen, as wide as the frame and its margins."""
    left, right = int(frame.x - MARGIN), int(frame.right + MARGIN)
    top = screen.size[1] - height
    return screen.picture((left, top, right - left, height))


def bar_alone(path):
    with desktop() as surroundings:
        bar = Bar(surroundings, SETTINGS, SCALE)
        picture_around(surroundings.screen, bar.frame(), 130 * SCALE).save(path, optimize=True)


def bar_with_nudge(path):
    with desktop() as surroundings:
        start_tint2(surroundings)
        bar = Bar(surroundings, SETTINGS, SCALE)
        wait_until(lambda: bar.is_shown(nudge=True), what="the bar makes room for the nudge")
        settled(lambda: surroundings.screen.picture(bar.frame_on_screen()).tobytes())
        picture_around(surroundings.screen, bar.frame(), 160 * SCALE).save(path, optimize=True)


def bar_with_menu(path):
    with desktop() as surroundings:
        bar = Bar(surroundings, SETTINGS, SCALE)
        menu = bar.open_menu()
        settled(lambda: surroundings.screen.picture(menu).tobytes())
        height = surroundings.screen.size[1] - menu.y + 20 * SCALE
        picture_around(surroundings.screen, bar.frame(), height).save(path, optimize=True)


def main(folder):
    folder = Path(folder)
    folder.mkdir(exist_ok=True)
    for name, take in {"bar": bar_alone, "nudge": bar_with_nudge, "menu": bar_with_menu}.items():
        path = folder / f"{name}.png"
        take(path)
        print(path)


if __name__ == "__main__":
    main(sys.argv[1])
