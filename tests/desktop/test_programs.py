"""Programs as people have them: of GTK, of Qt, and a lone dialog."""

import pytest

from harness import icons as applications
from harness.file_manager import MAGENTA, place_in_file_manager, text_picture
from harness.icons import RED, Icons
from harness.memory import remembered
from harness.programs import (
    PATIENCE,
    Program,
    bring_forward,
    environment_of,
    installed,
    is_running,
    process_of,
    title,
)
from harness.waiting import assert_holds, wait_until

DIALOG = "zenity --info --text=Hello"


def dialog(desktop):
    return applications.install(desktop, "greeting", RED, DIALOG, StartupWMClass="zenity")


SHORTCUTS = {
    "mousepad": lambda desktop: installed("org.xfce.mousepad", "Mousepad"),
    "featherpad": lambda desktop: installed("featherpad", "FeatherPad"),
    "zenity": dialog,
}


@pytest.fixture
def show(desktop, start_bar):
    """Starts a bar with the icon of one of these programs and no other."""

    def start(name, **settings):
        bar = start_bar(enabledWidgets=["app-shortcut"], appShortcuts=[SHORTCUTS[name](desktop)], **settings)
        return Icons(bar, 1), Program(desktop, name)

    return start


@pytest.mark.parametrize("name", SHORTCUTS)
def test_a_program_is_started_brought_forward_and_quit(screen, show, open_client, name):
    icons, program = show(name)
    assert not icons.has_dot(0)
    icons.click(0)
    window = program.opened()
    wait_until(lambda: screen.active_window() == window.id, what="its window is the active one")
    wait_until(lambda: icons.has_dot(0), what="the dot is there")
    process = process_of(screen, window)
    other = open_client()
    # Long enough for the next click to be no second half of a double click.
    assert_holds(lambda: program.windows() == [window], 1.0, "another one was started")
    icons.click(0)
    wait_until(lambda: screen.active_window() == window.id, what="its window is the active one again")
    wait_until(lambda: not other.is_focused(), what="the other window loses the keyboard")
    assert program.windows() == [window]
    icons.quit(0)
    wait_until(program.is_gone, PATIENCE, "the window closes")
    wait_until(lambda: not is_running(process), PATIENCE, "the program ends")
    wait_until(lambda: not icons.has_dot(0), what="the dot goes")


def test_windows_of_one_program_come_and_go_together(desktop, screen, show, open_client):
    icons, program = show("mousepad")
    icons.click(0)
    first = program.opened()
    # It asks the one that runs for another window.
    desktop.start("again", "mousepad", "--opening-mode=window")
    second = program.opened(2)
    assert process_of(screen, first) == process_of(screen, second)
    cover = open_client((0, 0, 1440, 700))
    icons.click(0)
    wait_until(
        lambda: all(screen.is_above(window, cover.window) for window in (first, second)), what="both windows are on top"
    )
    assert_holds(lambda: len(program.windows()) == 2, 1.0, "another one was started")
    icons.quit(0)
    wait_until(program.is_gone, PATIENCE, "both windows close")
    wait_until(lambda: not icons.has_dot(0), what="the dot goes")


@pytest.mark.parametrize("name", ["mousepad", "featherpad"])
def test_a_file_from_the_file_manager_is_opened_in_the_editor(desktop, screen, show, name):
    icons, program = show(name)
    folder = desktop.home / "texts"
    folder.mkdir()
    file = folder / "a note & more.xpm"
    file.write_text(text_picture(MAGENTA))
    icons.drag_onto(0, place_in_file_manager(desktop, folder))
    window = program.opened()
    wait_until(lambda: file.name in title(screen, window), PATIENCE, "the editor shows the file")
    assert file.read_text() == text_picture(MAGENTA)


def test_a_program_without_an_entry_has_no_icon(desktop, screen, start_bar):
    bar = start_bar(
        enabledWidgets=["recent-apps"], appShortcuts=[], recentAppsMode="running", recentAppCount=5
    )
    desktop.start("stranger", *DIALOG.split())
    bring_forward(screen, Program(desktop, "zenity").opened())
    desktop.start("editor", "mousepad")
    editor = Program(desktop, "mousepad").opened()
    wait_until(lambda: remembered(desktop) == ["org.xfce.mousepad"], what="the editor is remembered, and nobody else")
    one = Icons(bar, 1)
    wait_until(lambda: one.has_dot(0) and one.fills_the_pill(), what="the editor's icon is there")
    bring_forward(screen, Program(desktop, "zenity").opened())
    bring_forward(screen, editor)
    assert_holds(one.fills_the_pill, 1.0, "there is another icon")
    assert remembered(desktop) == ["org.xfce.mousepad"]
    assert bar.process.is_running()


def test_what_is_started_knows_nothing_of_the_bar(desktop, screen, show):
    icons, program = show("featherpad")
    icons.click(0)
    process = process_of(screen, program.opened())
    environment = environment_of(process)
    assert environment.pop("DESKTOP_STARTUP_ID") == environment.pop("XDG_ACTIVATION_TOKEN")
    assert environment.pop("GIO_LAUNCHED_DESKTOP_FILE").endswith("/featherpad.desktop")
    assert environment.pop("GIO_LAUNCHED_DESKTOP_FILE_PID") == str(process)
    # What the watch of these tests sets is its own affair.
    added = {key for key in environment if key not in desktop.environment and not key.startswith("STALL_WATCH_")}
    assert added <= {"QT_FORCE_STDERR_LOGGING"}, "the program got more than the bar was started with"
    assert not [key for key in environment if key.startswith("MOORLINE_")]
