"""Programs as they are installed on the machine, and what the window manager and the system know of them."""

import os
import signal
from pathlib import Path

from .waiting import settled, wait_until

ENTRIES = Path("/usr/share/applications")
# What a large program may take to show itself on a busy machine, in seconds.
PATIENCE = 180


def installed(entry, name):
    """The shortcut of a program by its desktop entry."""
    path = ENTRIES / f"{entry}.desktop"
    assert path.exists(), f"{name} is not installed"
    return {"path": str(path), "bundleIdentifier": entry, "name": name}


class Program:
    """What is to be seen of one program, by the class of its windows."""

    def __init__(self, desktop, window_class):
        self.screen = desktop.screen
        self.window_class = window_class

    def windows(self):
        """Those that the window manager manages, oldest first."""
        listed = self.screen.property_values(self.screen.root, "_NET_CLIENT_LIST") or []
        return [window for window in map(self.screen.window, listed) if self._is_own(window)]

    def opened(self, count=1):
        """Waits for so many windows and answers the last one."""
        wait_until(lambda: self._shown() >= count, PATIENCE, f"{count} of the windows of {self.window_class} are there")
        # What the program does with them at the start, it has done.
        return settled(self.windows, timeout=PATIENCE, rounds=10)[-1]

    def is_gone(self):
        return not self.windows()

    def _shown(self):
        return sum(self.screen.is_mapped(window) for window in self.windows())

    def _is_own(self, window):
        names = self.screen.window_class(window) or ()
        return self.window_class.lower() in (name.lower() for name in names)


def title(screen, window):
    values = screen.property_values(window, "_NET_WM_NAME") or []
    return bytes(values).decode()


def process_of(screen, window):
    return screen.property_values(window, "_NET_WM_PID")[0]


def is_running(process):
    """Whether there is such a process that has not ended."""
    try:
        return Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[0] not in "ZX"
    except (FileNotFoundError, ProcessLookupError):
        return False


def environment_of(process):
    fields = Path(f"/proc/{process}/environ").read_bytes().split(b"\0")
    return dict(field.decode(errors="replace").split("=", 1) for field in fields if b"=" in field)


def end(process):
    try:
        os.kill(process, signal.SIGKILL)
    except ProcessLookupError:
        pass


def bring_forward(screen, window):
    """Makes a window the active one, as a pager does."""
    screen.ask_window_manager(window, "_NET_ACTIVE_WINDOW", [2, 0, 0])
    wait_until(lambda: screen.active_window() == window.id, what="the window is the active one")
    # A focus that the window manager gives after that would count more than what a click asks for.
    settled(lambda: (screen.active_window(), screen.focused_window()), rounds=15)
