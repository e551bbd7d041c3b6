"""Programs too large for every run, each for what it does unlike any other. Run with --large."""

import signal
import sys

import pytest

from harness import icons as applications
from harness.bar import binary, settings_path, write_settings
from harness.icons import RED, Icons
from harness.memory import remembered
from harness.panels import add_xfce_launcher, start_xfce_panel
from harness.programs import (
    PATIENCE,
    Program,
    bring_forward,
    end,
    environment_of,
    installed,
    is_running,
    process_of,
    title,
)
from harness.waiting import assert_holds, wait_until

pytestmark = pytest.mark.large

# Tells of five things that wait, as programs do that are written for this library.
SENDER = """
import gi
gi.require_version("Unity", "7.0")
from gi.repository import GLib, Unity
entry = Unity.LauncherEntry.get_for_desktop_id("note.desktop")
entry.set_property("count", 5)
entry.set_property("count_visible", True)
GLib.MainLoop().run()
"""


@pytest.fixture
def show(start_bar):
    """Starts a bar with the icons of these applications and no other."""

    def start(*shortcuts, widgets=("app-shortcut",), **options):
        return Icons(start_bar(enabledWidgets=list(widgets), appShortcuts=list(shortcuts), **options), len(shortcuts))

    return start


@pytest.mark.only_mutter
@pytest.mark.display(compositor=False)
def test_under_mutter_a_program_that_tells_nothing_of_its_start_gets_the_keyboard(desktop, screen, show, open_client):
    # There the wallpaper is too dark to tell the pill from it.
    icons = show(installed("featherpad", "FeatherPad"), visible=False)
    other = open_client((700, 100, 500, 300))
    icons.click(0)
    window = Program(desktop, "featherpad").opened()
    wait_until(lambda: screen.active_window() == window.id, what="its window is the active one")
    wait_until(lambda: screen.focused_window() == window.id and not other.is_focused(), what="it has the keyboard")
    wait_until(lambda: icons.has_dot(0), what="the dot is there")
    process = process_of(screen, window)
    environment = environment_of(process)
    assert environment["DESKTOP_STARTUP_ID"].rpartition("_TIME")[2].isdigit()
    assert "QT_QPA_PLATFORM" not in environment
    assert not [key for key in environment if key.startswith("MOORLINE_")]
    icons.bar.process.kill()
    assert_holds(lambda: is_running(process) and screen.is_mapped(window), 1.5, "it ended with the bar")


def test_two_programs_of_one_suite_have_two_dots_and_quit_alone(desktop, screen, show):
    icons = show(*(installed(f"libreoffice-{name}", f"LibreOffice {name.title()}") for name in ("writer", "calc")))
    writer, calc = (Program(desktop, f"libreoffice-{name}") for name in ("writer", "calc"))
    icons.click(0)
    process = process_of(screen, writer.opened())
    wait_until(lambda: icons.has_dot(0), what="the dot of the word processor is there")
    assert not icons.has_dot(1)
    icons.click(1)
    assert process_of(screen, calc.opened()) == process
    wait_until(lambda: icons.has_dot(1), what="the dot of the spreadsheet is there")
    assert icons.has_dot(0)
    icons.quit(0)
    wait_until(writer.is_gone, PATIENCE, "the word processor quits")
    wait_until(lambda: not icons.has_dot(0), what="its dot goes")
    assert_holds(lambda: icons.has_dot(1) and calc.windows(), 1.5, "the spreadsheet quit too")
    icons.quit(1)
    wait_until(calc.is_gone, PATIENCE, "the spreadsheet quits")
    wait_until(lambda: not is_running(process), PATIENCE, "the suite ends")


def clocks_that_count(desktop):
    """The environment in which whoever runs the clocks' command adds a line to a file, and that file."""
    count = desktop.home / "runs"
    count.touch()
    applications.script(desktop, "gnome-clocks", f'echo run >>{count}\nexec /usr/bin/gnome-clocks "$@"')
    return {"PATH": f"{desktop.home / 'bin'}:{desktop.environment['PATH']}"}, count


def start_clocks(desktop, show):
    environment, count = clocks_that_count(desktop)
    icons = show(installed("org.gnome.clocks", "Clocks"), environment=environment)
    icons.click(0)
    clocks = Program(desktop, "org.gnome.clocks")
    clocks.opened()
    wait_until(lambda: icons.has_dot(0), what="the dot is there")
    assert_holds(lambda: len(clocks.windows()) == 1, 1.5, "it was started twice")
    return icons, clocks, count.read_text().split()


@pytest.mark.display(services=False)
def test_a_service_that_nobody_provides_is_run_by_its_command_once(desktop, show):
    icons, clocks, runs = start_clocks(desktop, show)
    assert runs == ["run"]
    icons.quit(0)
    wait_until(clocks.is_gone, PATIENCE, "the clocks quit")
    wait_until(lambda: not icons.has_dot(0), what="the dot goes")


def test_a_service_that_the_bus_provides_is_not_run_by_its_command(desktop, show):
    _, _, runs = start_clocks(desktop, show)
    assert runs == []


def test_what_runs_in_a_terminal_counts_as_the_terminal(desktop, screen, show):
    programs = desktop.home / "bin"
    programs.mkdir()
    # The only terminal there is, and the name that it has then.
    for name, target in {"lxterminal": "lxterminal", "x-terminal-emulator": "lxterminal", "htop": "htop", "sh": "sh"}.items():
        (programs / name).symlink_to(f"/usr/bin/{target}")
    shortcuts = installed("htop", "Htop"), installed("lxterminal", "LXTerminal")
    icons = show(*shortcuts, environment={"PATH": programs})
    icons.click(0)
    # Its windows have the name that it was called by.
    terminal = Program(desktop, "x-terminal-emulator")
    window = terminal.opened()
    wait_until(lambda: "htop" in title(screen, window), PATIENCE, "it runs in the terminal")
    wait_until(lambda: icons.has_dot(1), what="the terminal's dot is there")
    assert_holds(lambda: not icons.has_dot(0), 1.5, "the window counts as another's than the terminal's")
    assert terminal.windows() == [window]
    icons.quit(1)
    wait_until(terminal.is_gone, PATIENCE, "the terminal closes")
    wait_until(lambda: not icons.has_dot(1), what="the dot goes")


def window_of_map(screen, program):
    """Its main window; before that one it shows a splash."""
    return next((window for window in program.windows() if "Mind map mode" in title(screen, window)), None)


def test_a_program_in_java_has_one_icon_and_one_dot(desktop, screen, show):
    icons = show(installed("freeplane", "Freeplane"), widgets=("app-shortcut", "recent-apps"), recentAppsMode="running")
    icons.click(0)
    # The name of whatever in it asks for a window first.
    program = Program(desktop, "org-knopflerfish-framework-BundleThread")
    window = wait_until(lambda: window_of_map(screen, program), timeout=2 * PATIENCE, what="its main window is there")
    process = process_of(screen, window)
    wait_until(lambda: icons.has_dot(0), what="the dot is there")
    bring_forward(screen, window)
    wait_until(lambda: remembered(desktop) == ["freeplane"], what="it is remembered as itself")
    assert_holds(icons.fills_the_pill, 1.5, "there is another icon")
    end(process)
    wait_until(lambda: not icons.has_dot(0), what="the dot goes")


def test_a_badge_by_the_library_that_programs_use(desktop, show):
    icons = show(applications.install(desktop, "note", RED, "true"), showAppBadges=True)
    assert not icons.has_badge(0)
    sender = desktop.start("sender", sys.executable, "-c", SENDER)
    wait_until(lambda: icons.has_badge(0), PATIENCE, "the badge is there")
    sender.send(signal.SIGTERM)
    wait_until(lambda: not icons.has_badge(0), PATIENCE, "the badge goes")


def test_what_is_in_the_panel_of_xfce_is_imported(desktop):
    start_xfce_panel(desktop)
    pinned = [installed("org.xfce.mousepad", "Mousepad"), installed("featherpad", "FeatherPad")]
    for shortcut in pinned:
        add_xfce_launcher(desktop, shortcut["path"])
    write_settings(desktop, {"appShortcuts": []})
    run = desktop.start("import", binary(), MOORLINE_IMPORT_DOCK=1)
    assert run.wait(PATIENCE) == 0, run.output()
    assert run.output().splitlines() == [
        *(f"imported: {shortcut['name']} — {shortcut['path']}" for shortcut in pinned),
        "total pinned apps now: 2",
    ]
    assert settings_path(desktop).exists()
