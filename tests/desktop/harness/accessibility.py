"""The bar as a screen reader finds it, over the accessibility bus."""

import dbus
import dbus.bus

from .waiting import wait_until

ACCESSIBLE = "org.a11y.atspi.Accessible"
ACTION = "org.a11y.atspi.Action"
COMPONENT = "org.a11y.atspi.Component"
REGISTRY = "org.a11y.atspi.Registry"
ROOT = "/org/a11y/atspi/accessible/root"
# Those of the states that are told of here, by their number.
STATES = {8: "enabled", 24: "sensitive", 25: "showing", 30: "visible"}
OF_THE_SCREEN = dbus.UInt32(0)
# What Qt goes by in place of a desktop that says that assistive technology is used.
SWITCHED_ON = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": 1}


class Accessible:
    def __init__(self, bus, name, path):
        self._bus = bus
        self._object = bus.get_object(name, path, introspect=False)

    @property
    def name(self):
        return self._property(ACCESSIBLE, "Name")

    @property
    def description(self):
        return self._property(ACCESSIBLE, "Description")

    @property
    def role(self):
        return str(self._object.GetRoleName(dbus_interface=ACCESSIBLE))

    @property
    def states(self):
        low, high = (int(word) for word in self._object.GetState(dbus_interface=ACCESSIBLE))
        return {name for number, name in STATES.items() if (low | high << 32) >> number & 1}

    @property
    def children(self):
        return [Accessible(self._bus, *child) for child in self._object.GetChildren(dbus_interface=ACCESSIBLE)]

    @property
    def extents(self):
        """Left, top, width and height in pixels of the screen."""
        return tuple(int(value) for value in self._object.GetExtents(OF_THE_SCREEN, dbus_interface=COMPONENT))

    @property
    def actions(self):
        return [str(action[0]) for action in self._object.GetActions(dbus_interface=ACTION)]

    def press(self):
        return self._act("Press")

    def show_menu(self):
        return self._act("ShowMenu")

    def _act(self, action):
        return bool(self._object.DoAction(dbus.Int32(self.actions.index(action)), dbus_interface=ACTION))

    def walk(self):
        yield self
        for child in self.children:
            yield from child.walk()

    def _property(self, interface, name):
        return str(self._object.Get(interface, name, dbus_interface=dbus.PROPERTIES_IFACE))


class AccessibilityBus:
    def __init__(self, desktop):
        session = dbus.bus.BusConnection(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        service = session.get_object("org.a11y.Bus", "/org/a11y/bus", introspect=False)
        self._bus = dbus.bus.BusConnection(str(service.GetAddress(dbus_interface="org.a11y.Bus")))
        session.close()

    def bar(self):
        """The panel of the running bar."""
        return wait_until(self._find_bar, timeout=10, what="the bar is on the accessibility bus")

    def item(self, name):
        return wait_until(lambda: self._find_item(name), what=f"{name} is told of")

    def description(self, name):
        """What is told of an item at this moment; None while it is not there."""
        found = self._find_item(name)
        try:
            return found.description if found else None
        except dbus.DBusException:
            return None

    def close(self):
        self._bus.close()

    def _find_bar(self):
        desktop = Accessible(self._bus, REGISTRY, ROOT)
        applications = [found for found in desktop.children if found.name == "Moorline"]
        return next((window for found in applications for window in found.children), None)

    def _find_item(self, name):
        try:
            return next((found for found in self.bar().walk() if found.name == name), None)
        except dbus.DBusException:
            # The tree changed while it was read.
            return None
