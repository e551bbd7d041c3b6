"""Takes the pictures of the README: the bar as it runs, at twice the pixels."""

import sys
from datetime import date
from pathlib import Path

import dbus
import dbus.lowlevel

from harness.bar import Bar
from harness.desktop import Desktop
from harness.panels import start_tint2
from harness.waiting import settled, wait_until
from harness.wallpaper import gradient
from harness.weather import WeatherServer

SCALE = 2
SIZE = (1440 * SCALE, 900 * SCALE)
WIDGETS = ["clock", "calendar", "weather", "forecast", "app-shortcut", "recent-apps", "month-counter"]
ENTRIES = Path("/usr/share/applications")
PROGRAMS = {"debian-xterm": "XTerm", "org.xfce.mousepad": "Mousepad", "plank": "Plank"}
SHORTCUTS = [{"path": "/System/Library/CoreServices/Finder.app", "bundleIdentifier": "com.apple.finder", "name": "Finder"}] + [
    {"path": str(ENTRIES / f"{entry}.desktop"), "bundleIdentifier": entry, "name": name} for entry, name in PROGRAMS.items()
]
SETTINGS = {
    "enabledWidgets": WIDGETS,
    "pinnedItemsIntroduced": True,
    "clockFormat": "24h",
    "appShortcuts": SHORTCUTS,
    "hideRecentAppsAlreadyPinned": False,
    "showAppBadges": True,
}
PLACE = {"city": "San Francisco", "region": "California", "country": "United States", "latitude": 37.77, "longitude": -122.42}
# What of the bottom of the screen a picture shows, in points.
PICTURE_WIDTH = 960
# A panel without the days to come is narrower, in points.
WIDTH_WITH_FORECAST = 760
# Left of the middle, so that the menu stands over the pill rather than beside it.
MENU_OFFSET = 110


def desktop():
    return Desktop("openbox", SIZE, fonts="Inter", wallpaper=gradient(SIZE))


def started_bar(surroundings):
    """A running bar with the weather of a mild day."""
    weather = surroundings.own(WeatherServer())
    weather.caller = PLACE
    weather.first_day = date.today()
    # Out of the picture, but in the bar.
    surroundings.start("xterm", "xterm", "-geometry", "60x10+20+20")
    bar = Bar(surroundings, SETTINGS, SCALE, MOORLINE_WEATHER_ORIGIN=weather.origin)
    wait_until(lambda: bar.frame().width > WIDTH_WITH_FORECAST * SCALE, what="the forecast is shown")
    return bar


def bottom_of(screen, height):
    width, height = PICTURE_WIDTH * SCALE, height * SCALE
    return screen.picture(((screen.size[0] - width) // 2, screen.size[1] - height, width, height))


def still_picture(screen, height):
    """The picture once everything in it has come to rest."""
    settled(lambda: bottom_of(screen, height).tobytes())
    return bottom_of(screen, height)


def tell_badge(surroundings, entry, count):
    """A program that has so much to tell, for as long as the desktop lasts."""
    program = dbus.bus.BusConnection(surroundings.environment["DBUS_SESSION_BUS_ADDRESS"])
    wait_until(lambda: program.name_has_owner("com.canonical.Unity"), what="there is a launcher")
    update = dbus.lowlevel.SignalMessage("/note", "com.canonical.Unity.LauncherEntry", "Update")
    told = dbus.Dictionary({"count": dbus.Int64(count), "count-visible": True}, signature="sv")
    update.append(f"application://{entry}.desktop", told, signature="sa{sv}")
    program.send_message(update)
    program.flush()
    return program


def bar_alone():
    with desktop() as surroundings:
        started_bar(surroundings)
        program = tell_badge(surroundings, "org.xfce.mousepad", 3)
        picture = still_picture(surroundings.screen, 120)
        program.close()
        return picture


def bar_with_nudge():
    with desktop() as surroundings:
        start_tint2(surroundings)
        bar = started_bar(surroundings)
        wait_until(lambda: bar.is_shown(nudge=True), what="the bar makes room for the nudge")
        return still_picture(surroundings.screen, 150)


def bar_with_menu():
    with desktop() as surroundings:
        bar = started_bar(surroundings)
        column, row = bar.pill_center()
        bar.open_menu(column - MENU_OFFSET * SCALE, row - 20 * SCALE)
        return still_picture(surroundings.screen, 224)


def main(folder):
    folder = Path(folder)
    folder.mkdir(exist_ok=True)
    for name, take in {"bar": bar_alone, "nudge": bar_with_nudge, "menu": bar_with_menu}.items():
        path = folder / f"{name}.png"
        take().save(path, optimize=True)
        print(path)


if __name__ == "__main__":
    main(sys.argv[1])
