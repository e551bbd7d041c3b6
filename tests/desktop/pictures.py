"""Takes the pictures of the README: the bar as it runs, at twice the pixels."""

import sys
import time
from datetime import date
from pathlib import Path

from PIL import Image, ImageDraw

from harness.accessibility import SWITCHED_ON, AccessibilityBus
from harness.badges import BadgeSender
from harness.bar import Bar
from harness.desktop import Desktop
from harness.panels import start_tint2
from harness.player import Player
from harness.programs import Program, installed
from harness.waiting import settled, wait_until
from harness.wallpaper import gradient
from harness.weather import WeatherServer

SCALE = 2
SIZE = (1440 * SCALE, 900 * SCALE)
WIDGETS = ["clock", "calendar", "weather", "forecast", "app-shortcut", "recent-apps", "month-counter"]
EDITOR = "org.xfce.mousepad"
FILE_MANAGER = {"path": "/System/Library/CoreServices/Finder.app", "bundleIdentifier": "com.apple.finder", "name": "Finder"}
SHORTCUTS = [FILE_MANAGER, installed(EDITOR, "Mousepad"), installed("featherpad", "FeatherPad")]
SETTINGS = {
    "enabledWidgets": WIDGETS,
    "pinnedItemsIntroduced": True,
    "clockFormat": "24h",
    "appShortcuts": SHORTCUTS,
    "showAppBadges": True,
}
PLACE = {"city": "San Francisco", "region": "California", "country": "United States", "latitude": 37.77, "longitude": -122.42}
DOWNLOADS = {
    "tide tables 2026.pdf": b"%PDF-1.4\n",
    "crew list.csv": b"name,role\n",
    "engine manual.zip": b"PK\x05\x06" + bytes(18),
    "letter to the harbour master.txt": b"Dear Sir or Madam,\n",
}
# What of the bottom of the screen a picture shows, in points.
PICTURE_WIDTH = 960
# A panel without the days to come is narrower, in points.
WIDTH_WITH_FORECAST = 760
# Left of the middle, so that the menu stands over the pill rather than beside it.
MENU_OFFSET = 110


def desktop():
    return Desktop("openbox", SIZE, fonts="Inter", wallpaper=gradient(SIZE))


def started_bar(surroundings):
    """A running bar with the weather of a mild day, and two programs: one is pinned, the other is not."""
    weather = surroundings.own(WeatherServer())
    weather.caller = PLACE
    weather.first_day = date.today()
    bar = Bar(surroundings, SETTINGS, SCALE, MOORLINE_WEATHER_ORIGIN=weather.origin, **SWITCHED_ON)
    # Out of the picture, but in the bar.
    surroundings.start("terminal", "xterm", "-geometry", "60x10+20+20")
    Program(surroundings, "xterm").opened()
    surroundings.start("editor", "mousepad")
    Program(surroundings, "mousepad").opened()
    surroundings.own(BadgeSender(surroundings)).tell(EDITOR, 3)
    bar.items = surroundings.own(AccessibilityBus(surroundings))
    for name, told in {"Mousepad": "Running, 3", "XTerm": "Running"}.items():
        wait_until(lambda: bar.items.item(name).description == told, timeout=30, what=f"{name} is there")
    wait_until(lambda: bar.frame().width > WIDTH_WITH_FORECAST * SCALE, timeout=30, what="the forecast is shown")
    return bar


def bottom_of(screen, height):
    width, height = PICTURE_WIDTH * SCALE, height * SCALE
    return screen.picture(((screen.size[0] - width) // 2, screen.size[1] - height, width, height))


def still_picture(screen, height):
    """The picture once everything in it has come to rest."""
    settled(lambda: bottom_of(screen, height).tobytes())
    return bottom_of(screen, height)


def bar_alone():
    with desktop() as surroundings:
        started_bar(surroundings)
        return still_picture(surroundings.screen, 120)


def bar_with_nudge():
    with desktop() as surroundings:
        start_tint2(surroundings, has_tasks=False)
        bar = started_bar(surroundings)
        wait_until(lambda: bar.is_shown(nudge=True), what="the bar makes room for the nudge")
        return still_picture(surroundings.screen, 150)


def bar_with_menu():
    with desktop() as surroundings:
        bar = started_bar(surroundings)
        column, row = bar.pill_center()
        bar.open_menu(column - MENU_OFFSET * SCALE, row - 20 * SCALE)
        return still_picture(surroundings.screen, 224)


def bar_with_menu_of_icon():
    with desktop() as surroundings:
        bar = started_bar(surroundings)
        left, top, width, height = bar.items.item("Mousepad").extents
        menu = bar.open_menu(left + width // 2, top + height // 2)
        # Where a hand would be, about to choose; the icon comes to rest without it.
        surroundings.screen.move_pointer(menu.center_x, menu.y + 22 * SCALE)
        return still_picture(surroundings.screen, 224)


def write_files(home):
    """What somebody's home may hold, its Downloads among it; answers what of it is pinned."""
    Path(home / "Projects").mkdir()
    (home / "Notes.txt").write_text("Milk, bread, and the tide table.\n")
    downloads = home / "Downloads"
    downloads.mkdir(exist_ok=True)
    Image.new("RGB", (64, 64), (90, 140, 200)).save(downloads / "harbour at dusk.png")
    for name, content in DOWNLOADS.items():
        # Files that come in the same tick of the file system's clock have no order.
        time.sleep(0.02)
        (downloads / name).write_bytes(content)
    return [{"path": str(home / name), "name": name} for name in ("Projects", "Notes.txt")]


def bar_with_downloads():
    with desktop() as surroundings:
        settings = SETTINGS | {
            "enabledWidgets": ["clock", "calendar", "app-shortcut", "pinned-items", "month-counter"],
            "pinnedItems": write_files(surroundings.home),
        }
        bar = Bar(surroundings, settings, SCALE, **SWITCHED_ON)
        items = surroundings.own(AccessibilityBus(surroundings))
        left, top, width, height = items.item("Downloads").extents
        surroundings.screen.click(left + width // 2, top + height // 2)
        wait_until(lambda: bar.popups(), what="the Downloads are listed")
        return still_picture(surroundings.screen, 330)


def cover():
    """What a record may look like: a sun over the sea."""
    picture = gradient((300, 300))
    draw = ImageDraw.Draw(picture)
    draw.ellipse((90, 60, 210, 180), fill=(255, 214, 140))
    draw.rectangle((0, 170, 300, 300), fill=(24, 52, 96))
    return picture


def bar_with_music(style):
    with desktop() as surroundings:
        settings = SETTINGS | {"enabledWidgets": ["clock", "calendar", "app-shortcut", "music", "month-counter"], "musicStyle": style}
        bar = Bar(surroundings, settings, SCALE, **SWITCHED_ON)
        items = surroundings.own(AccessibilityBus(surroundings))
        player = surroundings.own(Player(surroundings, cover(), ("Harbour Lights", "Ebb"), "The Mooring Lines"))
        player.play()
        wait_until(lambda: items.description("Now Playing") == "Harbour Lights, The Mooring Lines", timeout=15, what="the music plays")
        # Far enough for the bar to show it.
        time.sleep(12)
        wait_until(lambda: bar.is_shown(), what="the bar is there")
        return bottom_of(surroundings.screen, 120)


def main(folder):
    folder = Path(folder)
    folder.mkdir(exist_ok=True)
    pictures = {
        "bar": bar_alone,
        "nudge": bar_with_nudge,
        "menu": bar_with_menu,
        "applications": bar_with_menu_of_icon,
        "downloads": bar_with_downloads,
        "music": lambda: bar_with_music("player"),
        "music-compact": lambda: bar_with_music("compact"),
    }
    for name, take in pictures.items():
        path = folder / f"{name}.png"
        take().save(path, optimize=True)
        print(path)


if __name__ == "__main__":
    main(sys.argv[1])
