"""Trays: one that programs tell of their items over the session bus, and one that takes their windows in."""

import sys
from dataclasses import dataclass, field

import dbus
import dbus.bus

from .waiting import wait_until

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
ITEM_PATH = "/StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
MOCK = "org.freedesktop.DBus.Mock"

TINT2_CONFIGURATION = """
panel_monitor = primary
panel_items = S
panel_position = top left horizontal
panel_size = 200 30
panel_background_id = 0
panel_layer = top
systray_icon_size = 20
systray_padding = 4 4 4
wm_menu = 0
"""


@dataclass
class MenuLine:
    identifier: int
    properties: dict
    children: list = field(default_factory=list)

    @property
    def label(self):
        return "-" if self.properties.get("type") == "separator" else str(self.properties["label"])

    @property
    def is_checked(self):
        return bool(self.properties["toggle-state"])


class StatusNotifierTray:
    """A desktop's panel, as far as it has to do with items: the watcher and the host of the session bus."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._bus = dbus.bus.BusConnection(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        desktop.own(self)
        self.start()

    def close(self):
        self._bus.close()

    def start(self):
        command = (sys.executable, "-m", "dbusmock", "--session", WATCHER, WATCHER_PATH, WATCHER)
        self._desktop.start("tray", *command)
        wait_until(lambda: self._bus.name_has_owner(WATCHER), timeout=10, what="the tray is on the bus")
        self._mock("AddProperties", WATCHER, {"IsStatusNotifierHostRegistered": True})
        self._mock("AddMethod", WATCHER, "RegisterStatusNotifierItem", "s", "", "")
        # Whoever saw the name before it had all of this asks again now.
        self._mock("EmitSignal", WATCHER, "StatusNotifierHostRegistered", "", dbus.Array([], signature="v"))

    def stop(self):
        self._desktop.stop("tray")

    def item(self):
        """The one item that the tray was told of."""
        return TrayItem(self._bus, wait_until(self._names, what="the tray is told of an item")[-1])

    def _names(self):
        calls = self._mock("GetMethodCalls", "RegisterStatusNotifierItem")
        return [str(arguments[0]) for _, arguments in calls]

    def _mock(self, method, *arguments):
        watcher = self._bus.get_object(WATCHER, WATCHER_PATH, introspect=False)
        return watcher.get_dbus_method(method, MOCK)(*arguments)


class TrayItem:
    def __init__(self, bus, name):
        self._bus = bus
        self._name = name

    def properties(self):
        return self._object(ITEM_PATH).GetAll(ITEM, dbus_interface=dbus.PROPERTIES_IFACE)

    def activate(self):
        self._object(ITEM_PATH).Activate(dbus.Int32(0), dbus.Int32(0), dbus_interface=ITEM)

    def menu(self):
        """The lines of the menu as they are when it opens."""
        self._menu().AboutToShow(dbus.Int32(0), dbus_interface=MENU)
        _, layout = self._menu().GetLayout(
            dbus.Int32(0), dbus.Int32(-1), dbus.Array([], signature="s"), dbus_interface=MENU
        )
        return _line(layout).children

    def line(self, label):
        return next(line for line in self.menu() if line.label == label)

    def click(self, label):
        line = self.line(label)
        data = dbus.String("", variant_level=1)
        event = (dbus.Int32(line.identifier), "clicked", data, dbus.UInt32(0))
        self._menu().Event(*event, dbus_interface=MENU)

    def _menu(self):
        return self._object(str(self.properties()["Menu"]))

    def _object(self, path):
        return self._bus.get_object(self._name, path, introspect=False)


def _line(layout):
    identifier, properties, children = layout
    return MenuLine(int(identifier), dict(properties), [_line(child) for child in children])


def start_older_tray(desktop):
    """tint2 with nothing but the tray of the X server, in the upper left corner."""
    configuration = desktop.directory / "traytint2rc"
    configuration.write_text(TINT2_CONFIGURATION)
    desktop.start("older-tray", "tint2", "-c", configuration)
    wait_until(lambda: _tray_owner(desktop.screen), timeout=15, what="tint2 is the tray")


def _tray_owner(screen):
    return screen.display.get_selection_owner(screen.atom("_NET_SYSTEM_TRAY_S0"))


def older_tray_icons(screen):
    """The windows of programs that tint2 has taken in."""
    panels = list(screen.mapped_windows_of_class("tint2"))
    inside = [window for panel in panels for window in _descendants(screen, panel)]
    return [window for window in inside if screen.property_values(window, "_XEMBED_INFO") and screen.is_mapped(window)]


def _descendants(screen, window):
    for child in screen.children(window):
        yield child
        yield from _descendants(screen, child)
