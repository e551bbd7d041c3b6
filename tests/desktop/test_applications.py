"""Applications that run: their dots, how they come to the front, and how they are asked to quit."""

import pytest
from Xlib import X

from harness.badges import BadgeSender
from harness.pill import brightness
from harness.screen import RIGHT_BUTTON
from harness.waiting import assert_holds, settled, wait_until

# Of icons that have all the room they want, in points.
ICON_SIZE = 46
ICON_GAP = 6
DOT_OFFSET = 25
ITEM_HEIGHT = 24

ENTRY = """[Desktop Entry]
Type=Application
Name={name}
Exec={command}
StartupWMClass={window_class}
"""


class Icons:
    """The icons of a row that has nothing else in it."""

    def __init__(self, bar, count):
        self.bar = bar
        self.screen = bar.screen
        self._count = count

    def center(self, index):
        width = self._count * ICON_SIZE + (self._count - 1) * ICON_GAP
        left = self.bar.frame().center_x - width / 2
        x = int(left + index * (ICON_SIZE + ICON_GAP) + ICON_SIZE / 2)
        return x, self.bar.pill_row()

    def has_dot(self, index):
        x, y = self.center(index)
        picture = self.screen.picture((x - 2, y + DOT_OFFSET - 3, 5, 6))
        return max(brightness(color) for color in picture.getdata()) > 100

    def click(self, index):
        self.screen.click(*self.center(index))

    def choose_last(self, index):
        """The last entry of the icon's own menu."""
        self.screen.click(*self.center(index), RIGHT_BUTTON)
        frame = self.bar.opened_menu()
        self.screen.click(frame.center_x, frame.bottom - ITEM_HEIGHT)
        wait_until(lambda: not self.bar.popups(), what="the menu closes")


class Applications:
    """Terminals that are known by entries of their own."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.screen = desktop.screen

    def install(self, name, command=None):
        folder = self.desktop.home / ".local/share/applications"
        folder.mkdir(parents=True, exist_ok=True)
        path = folder / f"{name}.desktop"
        path.write_text(ENTRY.format(name=name.title(), command=command or f"xterm -name {name} -class {name}", window_class=name))
        return {"path": str(path), "bundleIdentifier": name, "name": name.title()}

    def open(self, name, geometry="50x12+100+100"):
        """Answers the window, once it has the keyboard."""
        before = {window.id for window in self.screen.mapped_windows_of_class(name)}
        self.desktop.start(f"terminal-{name}", "xterm", "-name", name, "-class", name, "-geometry", geometry, "-e", "sleep 1000")
        window = wait_until(
            lambda: next((w for w in self.screen.mapped_windows_of_class(name) if w.id not in before), None),
            what=f"{name} is mapped",
        )
        self.activate(window)
        return window

    def activate(self, window):
        self.screen.ask_window_manager(window, "_NET_ACTIVE_WINDOW", [2, 0, 0])
        wait_until(lambda: self.is_active(window), what="the window is the active one")
        # A focus that the window manager gives after a click counts more than what the click asks for.
        settled(lambda: (self.screen.active_window(), self.screen.focused_window()), rounds=15)

    def is_active(self, window):
        return self.screen.active_window() == window.id

    def minimise(self, window):
        self.screen.ask_window_manager(window, "WM_CHANGE_STATE", [3])
        wait_until(lambda: not self.screen.is_mapped(window), what="the window is minimised")

    def windows(self, name):
        return list(self.screen.mapped_windows_of_class(name))

    def switch_to(self, number):
        self.screen.ask_window_manager(self.screen.root, "_NET_CURRENT_DESKTOP", [number, 0])
        wait_until(lambda: self.current_desktop() == number, what="the other desktop shows")

    def current_desktop(self):
        return self.screen.property_values(self.screen.root, "_NET_CURRENT_DESKTOP")[0]

    def listed(self):
        return list(self.screen.property_values(self.screen.root, "_NET_CLIENT_LIST") or [])


@pytest.fixture
def applications(desktop):
    return Applications(desktop)


@pytest.fixture
def icons(applications, start_bar):
    """Two pinned applications, "note" and "tally"."""
    pins = [applications.install("note"), applications.install("tally")]
    return Icons(start_bar(enabledWidgets=["app-shortcut"], appShortcuts=pins), len(pins))


def test_a_dot_shows_while_an_application_runs(applications, icons, desktop):
    assert not icons.has_dot(0)
    applications.open("note")
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    assert not icons.has_dot(1)
    desktop.stop("terminal-note")
    wait_until(lambda: not icons.has_dot(0), what="the dot goes")


def test_what_ran_before_the_bar_runs(applications, start_bar):
    pin = applications.install("note")
    applications.open("note")
    icons = Icons(start_bar(enabledWidgets=["app-shortcut"], appShortcuts=[pin]), 1)
    wait_until(lambda: icons.has_dot(0), what="the dot shows")


def test_a_program_without_an_entry_does_no_harm(applications, icons):
    applications.open("stranger")
    applications.open("note")
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    assert not icons.has_dot(1)
    assert icons.bar.process.is_running()


def test_a_click_brings_all_windows_forward_and_starts_nothing(applications, icons, screen):
    first = applications.open("note", "50x12+100+100")
    second = applications.open("note", "50x12+160+140")
    cover = applications.open("tally", "70x20+90+90")
    wait_until(lambda: icons.has_dot(0) and icons.has_dot(1), what="both run")
    icons.click(0)
    wait_until(lambda: applications.is_active(second), what="the last active window is active again")
    wait_until(lambda: screen.is_above(second, cover) and screen.is_above(first, cover), what="both are on top")
    assert screen.is_above(second, first)
    assert_holds(lambda: len(applications.windows("note")) == 2, 1.0, "another one was started")


def test_a_click_switches_to_the_desktop_of_the_window(applications, icons):
    window = applications.open("note")
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    applications.switch_to(1)
    icons.click(0)
    wait_until(lambda: applications.current_desktop() == 0, what="its desktop shows")
    wait_until(lambda: applications.is_active(window), what="the window is active")


def test_minimised_windows_stay_so_while_another_is_open(applications, icons, screen):
    minimised = applications.open("note", "50x12+100+100")
    opened = applications.open("note", "50x12+160+140")
    applications.minimise(minimised)
    applications.open("tally")
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    icons.click(0)
    wait_until(lambda: applications.is_active(opened), what="the open window is active")
    assert_holds(lambda: not screen.is_mapped(minimised), 0.5, "the minimised window returned")


def test_the_last_window_returns_where_all_are_minimised(applications, icons, screen):
    other = applications.open("note", "50x12+100+100")
    last = applications.open("note", "50x12+160+140")
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    settled(screen.active_window)
    applications.minimise(other)
    applications.minimise(last)
    icons.click(0)
    wait_until(lambda: applications.is_active(last), what="the last window is active")
    assert_holds(lambda: not screen.is_mapped(other), 0.5, "the other window returned as well")


def test_quit_closes_the_windows_of_all_desktops(applications, icons, screen):
    far = applications.open("note", "50x12+100+100")
    screen.ask_window_manager(far, "_NET_WM_DESKTOP", [1, 2])
    wait_until(lambda: not screen.is_mapped(far), what="the window is on another desktop")
    applications.open("note", "50x12+160+140")
    stays = applications.open("tally")
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    icons.choose_last(0)
    wait_until(lambda: applications.listed() == [stays.id], what="both windows are closed")
    wait_until(lambda: not icons.has_dot(0), what="the dot goes")
    assert icons.has_dot(1)


def test_quit_is_a_question(applications, icons, open_client, screen):
    client = open_client()
    window = client._own_window
    window.set_wm_class("note", "Note")
    window.set_wm_protocols([client._display.intern_atom("WM_DELETE_WINDOW")])
    client._display.sync()
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    icons.choose_last(0)
    wait_until(lambda: client.events(X.ClientMessage), what="the program is asked")
    assert_holds(lambda: screen.is_mapped(client.window), 1.0, "the window was closed")
    assert icons.has_dot(0)
    assert len(client.events(X.ClientMessage)) == 1


def test_two_programs_of_one_process_are_two_applications(applications, icons, open_client):
    writer = open_client()
    writer._own_window.set_wm_class("note", "Note")
    writer._display.sync()
    wait_until(lambda: icons.has_dot(0), what="the first dot shows")
    counter = open_client((500, 300, 300, 200))
    counter._own_window.set_wm_class("tally", "Tally")
    counter._display.sync()
    wait_until(lambda: icons.has_dot(1), what="the second dot shows")
    writer.close()
    wait_until(lambda: not icons.has_dot(0), what="the first dot goes")
    assert icons.has_dot(1)


def test_the_file_manager_comes_forward_or_opens_the_home_folder(applications, start_bar, desktop, screen):
    finder = {"path": "/System/Library/CoreServices/Finder.app", "bundleIdentifier": "com.apple.finder", "name": "Finder"}
    config = desktop.config_home
    config.mkdir(parents=True, exist_ok=True)
    (config / "mimeapps.list").write_text("[Default Applications]\ninode/directory=pcmanfm.desktop\n")
    icons = Icons(start_bar(enabledWidgets=["app-shortcut"], appShortcuts=[finder]), 1)
    icons.click(0)
    window = wait_until(lambda: next(iter(applications.windows("pcmanfm")), None), timeout=15, what="a window opens")
    wait_until(lambda: icons.has_dot(0), what="the dot shows")
    applications.open("tally", "120x40+50+50")
    icons.click(0)
    wait_until(lambda: screen.active_window() == window.id, what="the window is active")
    assert_holds(lambda: len(applications.windows("pcmanfm")) == 1, 1.0, "another window opened")


def test_a_badge_shows_as_long_as_its_program_is_there(applications, start_bar, desktop, screen):
    pin = applications.install("note")
    bar = start_bar(enabledWidgets=["app-shortcut"], appShortcuts=[pin], showAppBadges=True)
    x, y = Icons(bar, 1).center(0)

    def has_badge():
        picture = screen.picture((x, y - ICON_SIZE // 2 - 8, ICON_SIZE // 2 + 8, ICON_SIZE // 2))
        return any(red > 200 and green < 90 and blue < 90 for red, green, blue in picture.getdata())

    assert not has_badge()
    program = BadgeSender(desktop)
    program.tell("note", 7)
    wait_until(has_badge, what="the badge shows")
    program.close()
    wait_until(lambda: not has_badge(), what="the badge goes")
