"""Programs that tell docks how much waits in them."""

import dbus
import dbus.bus
import dbus.lowlevel

from .waiting import wait_until


class BadgeSender:
    """What one such program has on the session bus."""

    def __init__(self, desktop):
        self._bus = dbus.bus.BusConnection(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        # Programs wait for this before they tell anything.
        wait_until(lambda: self._bus.name_has_owner("com.canonical.Unity"), timeout=15, what="there is a launcher")

    def tell(self, entry, count):
        """So much waits in the application of this entry, which is named without ".desktop"."""
        update = dbus.lowlevel.SignalMessage("/badge", "com.canonical.Unity.LauncherEntry", "Update")
        told = dbus.Dictionary({"count": dbus.Int64(count), "count-visible": True}, signature="sv")
        update.append(f"application://{entry}.desktop", told, signature="sa{sv}")
        self._bus.send_message(update)
        self._bus.flush()

    def close(self):
        """The program ends."""
        self._bus.close()
