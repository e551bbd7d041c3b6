"""A login service that tells of sleep and waking."""

import subprocess
import sys

from .waiting import wait_until

NAME = "org.freedesktop.login1"
PATH = "/org/freedesktop/login1"
INTERFACE = "org.freedesktop.login1.Manager"


class Logind:
    def __init__(self, desktop):
        self._desktop = desktop
        desktop.start("logind", sys.executable, "-m", "dbusmock", "--system", NAME, PATH, INTERFACE)
        wait_until(self._is_there, timeout=10, what="the login service is on the bus")

    def sleep_and_wake(self):
        for begins in ("true", "false"):
            self._call("org.freedesktop.DBus.Mock.EmitSignal", INTERFACE, "PrepareForSleep", "b", f"[<{begins}>]")

    def _call(self, *call):
        target = ("--dest", NAME, "--object-path", PATH, "--method")
        return self._desktop.run("gdbus", "call", "--session", *target, *call)

    def _is_there(self):
        try:
            self._call("org.freedesktop.DBus.Peer.Ping")
        except subprocess.CalledProcessError:
            return False
        return True
