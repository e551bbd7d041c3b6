"""A whole desktop in a box: display, session bus, window manager, compositor, home directory."""

import os
import shutil
import subprocess
import tempfile
from contextlib import ExitStack, contextmanager
from pathlib import Path

from PIL import Image
from Xlib import X

from .processes import Process
from .screen import Screen
from .waiting import wait_until

WALLPAPER = (96, 176, 255)

WINDOW_MANAGERS = {
    "openbox": ["openbox"],
    # Compositing is the compositor's business, so that both window managers are looked at through the same one.
    "xfwm4": ["xfwm4", "--compositor=off"],
    # Its own compositor and wallpaper, which cannot be switched off.
    "mutter": ["mutter", "--x11"],
}
# What every test runs under that asks for no other.
BUS_WITHOUT_SERVICES = Path(__file__).resolve().parents[2] / "harness" / "bus.conf"

EVERYDAY_WINDOW_MANAGERS = ("openbox", "xfwm4")

# What a child must not inherit from the desktop the tests are started on.
FOREIGN_PREFIXES = ("QT_", "XDG_", "GTK_", "GDK_", "DBUS_", "MOORLINE_", "GSETTINGS_", "DESKTOP_", "SESSION_")
FOREIGN_NAMES = ("DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "LANGUAGE", "LS_COLORS", "WINDOWID")

PICOM_CONFIGURATION = """
backend = "xrender";
vsync = false;
shadow = false;
fading = false;
use-damage = false;
unredir-if-possible = false;
"""


class Desktop:
    """Starts empty of programs but for the window manager; use it as a context manager."""

    def __init__(self, window_manager="openbox", size=(1440, 900), compositor=True, fonts=None, wallpaper=WALLPAPER, services=True):
        self.window_manager = window_manager
        self.wallpaper = wallpaper
        self._size = size
        self._has_compositor = compositor
        self._fonts = fonts
        self._bus_configuration = "--session" if services else f"--config-file={BUS_WITHOUT_SERVICES}"
        self._processes = []
        self._clients = []
        self._monitors = {}
        self._monitor_count = 0
        self.screen = None
        # Set by who wants the bars of this desktop watched.
        self.stall_watch = None

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self._stop()
            raise
        return self

    def __exit__(self, *_):
        self._stop()

    # Programs

    def start(self, name, *arguments, pass_fds=(), **environment):
        """A program on this desktop, with additions to its environment; a value of None takes a name away."""
        surroundings = {**self.environment, **environment}
        surroundings = {key: str(value) for key, value in surroundings.items() if value is not None}
        process = Process(arguments, surroundings, self.directory / f"{name}.log", pass_fds)
        self._processes.append((name, process))
        return process

    def start_bar(self, *command, **environment):
        """The program under test, watched where this desktop has a watch."""
        if self.stall_watch:
            # The window manager and the compositor keep the display to themselves while they look at its windows.
            names = ("display", "bus", "window-manager", "compositor")
            servers = [process for name, process in self._processes if name in names]
            environment = {**self.stall_watch.environment(servers), **environment}
        return self.start("bar", *command, **environment)

    def stop(self, name):
        """Ends every program that was started under that name."""
        for started, process in self._processes:
            if started == name:
                process.stop()

    def run(self, *arguments):
        return subprocess.run(arguments, env=self.environment, check=True, capture_output=True, text=True).stdout

    def own(self, client):
        """Closes a client together with the desktop."""
        self._clients.append(client)
        return client

    def logs(self):
        return {log.name: log.read_text(errors="replace") for log in sorted(self.directory.glob("*.log"))}

    # Places

    @property
    def home(self):
        return self.directory / "home"

    @property
    def config_home(self):
        return self.home / ".config"

    # Screens

    def set_monitors(self, *frames, primary=0):
        """Divides the display into screens, as if outputs were plugged and unplugged."""
        kept = {}
        for index, frame in enumerate(frames):
            is_primary = index == primary
            name = self._monitor_at(frame, is_primary) or self._add_monitor(frame, is_primary, has_output=index == 0)
            kept[name] = (frame, is_primary)
        for name in self._monitor_names():
            if name not in kept:
                self.run("xrandr", "--delmonitor", name)
        self._monitors = kept

    def _monitor_at(self, frame, is_primary):
        """A monitor that can stay as it is: another one that becomes the primary takes that away by itself."""
        for name, (present, was_primary) in self._monitors.items():
            if present == frame and (was_primary or not is_primary):
                return name
        return None

    def _add_monitor(self, frame, is_primary, has_output):
        # A name is never used twice: the server refuses to change a monitor in place.
        self._monitor_count += 1
        name = f"monitor-{self._monitor_count}"
        x, y, width, height = frame
        place = f"{width}/{width // 4}x{height}/{height // 4}+{x}+{y}"
        self.run("xrandr", "--setmonitor", f"*{name}" if is_primary else name, place, "screen" if has_output else "none")
        return name

    def _monitor_names(self):
        lines = self.run("xrandr", "--listmonitors").splitlines()[1:]
        return [line.split()[1].lstrip("+*") for line in lines]

    # Life

    def _start(self):
        self.directory = Path(tempfile.mkdtemp(prefix="moorline-"))
        self.environment = self._clean_environment()
        self._start_display()
        self.screen = Screen(self.environment["DISPLAY"])
        self.screen.set_wallpaper(self._wallpaper_image())
        self._start_bus()
        if self.window_manager:
            self._start_window_manager()
        if self._has_compositor:
            self._start_compositor()

    def _stop(self):
        with ExitStack() as last_things:
            last_things.callback(shutil.rmtree, self.directory, ignore_errors=True)
            for _, process in self._processes:
                last_things.callback(process.stop)
            if self.screen:
                last_things.callback(self.screen.close)
            for client in self._clients:
                last_things.callback(client.close)

    def _clean_environment(self):
        kept = {
            name: value
            for name, value in os.environ.items()
            if not name.startswith(FOREIGN_PREFIXES) and name not in FOREIGN_NAMES
        }
        runtime = self.directory / "runtime"
        runtime.mkdir(mode=0o700)
        for folder in (".config", ".cache", ".local/share", ".local/state"):
            (self.home / folder).mkdir(parents=True)
        surroundings = {
            "HOME": self.home,
            "LC_ALL": "C.UTF-8",
            "TZ": "UTC",
            "XDG_CONFIG_HOME": self.config_home,
            "XDG_CACHE_HOME": self.home / ".cache",
            "XDG_DATA_HOME": self.home / ".local/share",
            "XDG_STATE_HOME": self.home / ".local/state",
            "XDG_RUNTIME_DIR": runtime,
            "XDG_SESSION_TYPE": "x11",
            "GSETTINGS_BACKEND": "keyfile",
            "GIO_USE_VFS": "local",
            "NO_AT_BRIDGE": "1",
            # Nobody answers there: no test may ask the real services.
            "MOORLINE_WEATHER_ORIGIN": "http://127.0.0.1:9",
        }
        if self._fonts:
            surroundings["FONTCONFIG_FILE"] = self._font_configuration()
        return {**kept, **{name: str(value) for name, value in surroundings.items()}}

    def _font_configuration(self):
        path = self.directory / "fonts.conf"
        path.write_text(
            '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig>'
            '<include ignore_missing="yes">/etc/fonts/fonts.conf</include>'
            '<match target="pattern"><test name="family" compare="eq"><string>sans-serif</string></test>'
            f'<edit name="family" mode="prepend" binding="strong"><string>{self._fonts}</string></edit></match>'
            "</fontconfig>"
        )
        return path

    def _wallpaper_image(self):
        if isinstance(self.wallpaper, tuple):
            return Image.new("RGB", self._size, self.wallpaper)
        return self.wallpaper

    def _start_display(self):
        width, height = self._size
        with _pipe() as (read, write):
            arguments = ["Xvfb", "-displayfd", write, "-screen", 0, f"{width}x{height}x24", "-nolisten", "tcp", "-noreset"]
            self.start("display", *arguments, pass_fds=(write,))
            os.close(write)
            self.environment["DISPLAY"] = ":" + _line(read)

    def _start_bus(self):
        with _pipe() as (read, write):
            arguments = ["dbus-daemon", self._bus_configuration, "--nofork", "--nopidfile", f"--print-address={write}"]
            self.start("bus", *arguments, pass_fds=(write,))
            os.close(write)
            address = _line(read)
            # The machine's own system bus has nothing to say here either.
            self.environment |= {"DBUS_SESSION_BUS_ADDRESS": address, "DBUS_SYSTEM_BUS_ADDRESS": address}

    def restart_bus(self):
        """Ends the session bus and starts another at the same address."""
        self.stop("bus")
        # The address of the one before names its identity, which no other has.
        address = self.environment["DBUS_SESSION_BUS_ADDRESS"].split(",")[0]
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        Path(address.removeprefix("unix:path=")).unlink(missing_ok=True)
        with _pipe() as (read, write):
            arguments = ["dbus-daemon", self._bus_configuration, "--nofork", "--nopidfile", f"--address={address}"]
            self.start("bus", *arguments, f"--print-address={write}", pass_fds=(write,))
            os.close(write)
            _line(read)

    def _start_window_manager(self):
        self.start("window-manager", *WINDOW_MANAGERS[self.window_manager])
        # The check window comes first, long before windows are managed; the work area is published when they are.
        wait_until(
            lambda: self.screen.property_values(self.screen.root, "_NET_WORKAREA"),
            timeout=60,
            what=f"{self.window_manager} manages the display",
        )
        # The last thing it does: whoever had the keyboard before would lose it to that.
        wait_until(
            lambda: self.screen.focused_window() != X.PointerRoot,
            timeout=60,
            what=f"{self.window_manager} has led the keyboard somewhere",
        )

    def _start_compositor(self):
        configuration = self.directory / "picom.conf"
        configuration.write_text(PICOM_CONFIGURATION)
        self.start("compositor", "picom", "--config", configuration)
        selection = self.screen.atom("_NET_WM_CM_S0")
        wait_until(
            lambda: self.screen.display.get_selection_owner(selection) != X.NONE, what="picom composites the display"
        )


@contextmanager
def _pipe():
    read, write = os.pipe()
    try:
        yield read, write
    finally:
        os.close(read)


def _line(descriptor):
    with os.fdopen(os.dup(descriptor)) as stream:
        line = stream.readline().strip()
    if not line:
        raise RuntimeError("the program ended before it was ready")
    return line
