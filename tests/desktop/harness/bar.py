"""The program under test, as it runs on a desktop."""

import json
import os
from contextlib import nullcontext
from pathlib import Path

from . import pill
from .screen import RIGHT_BUTTON
from .waiting import settled, wait_until

ROOT = Path(__file__).resolve().parents[3]

APPLICATION = "app.moorline.Moorline"
PANEL_HEIGHT = 98
PANEL_HEIGHT_WITH_NUDGE = 132
PILL_HEIGHT = 72
MARGIN = 13


def binary():
    """The program that is tested: $MOORLINE_BINARY, else the release build of this tree."""
    default = ROOT / "build/release/src/app/moorline"
    path = Path(os.environ.get("MOORLINE_BINARY", default)).absolute()
    if not path.exists():
        raise RuntimeError(f"there is no program at {path}; build it or set MOORLINE_BINARY")
    return path


class Bar:
    """A running bar. Frames are in pixels, from the top left corner of the display. `command` is what it is started by,
    where that is not the program itself."""

    def __init__(self, desktop, settings=None, scale=1, visible=True, command=None, **environment):
        self.desktop = desktop
        self.screen = desktop.screen
        self.scale = scale
        if settings is not None:
            write_settings(desktop, settings)
        if scale != 1:
            environment["QT_SCALE_FACTOR"] = scale
        with desktop.stall_watch.expected("the program starts") if desktop.stall_watch else nullcontext():
            environment = {"QT_FORCE_STDERR_LOGGING": 1, "MOORLINE_DEBUG": 1, **environment}
            self.process = desktop.start_bar(*(command or [binary()]), **environment)
            self.window = wait_until(self._find_window, timeout=10, what="the bar maps its window")
        settled(self.frame)
        if visible:
            wait_until(lambda: self.pill_edges() and self._is_see_through(), what="the pill is drawn")

    # Window

    def frame(self):
        frame = self.screen.frame(self.window)
        assert frame, f"the panel is gone; exit status {self.process.exit_status}: {self.process.output()}"
        return frame

    def shown_top(self, nudge=False, gap=2):
        """Where the panel's top edge belongs while it shows."""
        height = PANEL_HEIGHT_WITH_NUDGE if nudge else PANEL_HEIGHT
        return self._screen_height() - (gap - MARGIN + height) * self.scale

    def hidden_top(self):
        return self._screen_height() + 4 * self.scale

    def is_hidden(self):
        return self.frame().y == self.hidden_top()

    def is_shown(self, nudge=False):
        return self.frame().y == self.shown_top(nudge)

    def wait_until_hidden(self, timeout=6.0):
        wait_until(self.is_hidden, timeout, "the bar slides out")

    def wait_until_shown(self, nudge=False, timeout=6.0):
        wait_until(lambda: self.is_shown(nudge), timeout, "the bar slides in")

    # Pixels

    def pill_row(self, gap=2):
        """The row of pixels through the middle of the pill."""
        return self._screen_height() - (gap + PILL_HEIGHT // 2) * self.scale

    def pill_center(self):
        return int(self.frame().center_x), self.pill_row()

    def pill_edges(self, gap=2):
        """Left, top, right and bottom of the pill on screen, or None while it is not to be seen."""
        column = self._column()
        top = self._screen_height() - (gap + PILL_HEIGHT + MARGIN - 1) * self.scale
        area = (0, top, self.screen.size[0], self._screen_height() - top)
        found = pill.edges(self.screen.picture(area), column, self.pill_row(gap) - top)
        if found is None:
            return None
        left, upper, right, lower = found
        return left, upper + top, right, lower + top

    def is_pill_visible(self):
        """Looks just inside the pill's upper edge, where no widget draws."""
        top = self._screen_height() - (2 + PILL_HEIGHT) * self.scale
        return pill.is_pill(self.screen.pixel(self._column(), top + 5 * self.scale))

    def _is_see_through(self):
        """A compositor that had nothing to do needs a moment to take up its work, in which the whole panel is black."""
        frame = self.frame()
        return not pill.is_pill(self.screen.pixel(max(frame.x, 0) + 1, frame.y + 1))

    def _column(self):
        """The column of pixels through the middle of the panel, as far as it is on the display."""
        return min(max(int(self.frame().center_x), 0), self.screen.size[0] - 1)

    # Settings and commands

    @property
    def settings_path(self):
        return settings_path(self.desktop)

    def settings(self):
        return json.loads(self.settings_path.read_text())

    def popups(self):
        own = self.screen.mapped_windows_of_class("moorline")
        return [window for window in own if window != self.window and self.screen.is_popup(window)]

    def open_menu(self, x=None, y=None):
        """Opens the menu at a point of the pill, or at its middle, and answers the menu's frame."""
        self.screen.click(*((x, y) if x else self.pill_center()), RIGHT_BUTTON)
        return self.opened_menu()

    def opened_menu(self):
        """Waits for the menu and answers its frame. What is typed before it has the keyboard goes elsewhere."""
        popup = wait_until(lambda: next(iter(self.popups()), None), what="the menu opens")
        wait_until(lambda: self.screen.focused_window() == popup.id, what="the menu has the keyboard")
        return settled(lambda: self.screen.frame(popup))

    def choose_mode(self, automatic):
        """Chooses the upper or the lower of the two entries that meet in the middle of the menu."""
        frame = self.open_menu()
        offset = (10 if automatic else -10) * self.scale
        self.screen.click(frame.center_x, frame.center_y + offset)
        # A press that comes while it closes is taken for one outside the menu.
        wait_until(lambda: not self.popups(), what="the menu closes")

    def log_lines(self):
        return self.process.output().splitlines()

    def _find_window(self):
        assert self.process.is_running(), f"the bar ended: {self.process.output()}"
        for window in self.screen.mapped_windows_of_class("moorline"):
            if "_NET_WM_WINDOW_TYPE_DOCK" in self.screen.atom_names(window, "_NET_WM_WINDOW_TYPE"):
                return window
        return None

    def _screen_height(self):
        return self.screen.size[1]


def settings_path(desktop):
    return desktop.config_home / APPLICATION / "settings.json"


def write_settings(desktop, settings):
    path = settings_path(desktop)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps(settings))
