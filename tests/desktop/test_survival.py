"""What was started from the bar goes on when the bar ends, however it ends."""

import os
import shutil
from pathlib import Path

import pytest

from harness import icons as applications
from harness.bar import ROOT, Bar, binary
from harness.icons import RED, Icons
from harness.programs import Program, bring_forward, installed, is_running, process_of
from harness.waiting import assert_holds, wait_until

TERMINAL = "xterm -name note -class note -geometry 50x12+600+100"


@pytest.fixture
def note(desktop):
    """A terminal with an entry of its own."""
    return applications.install(desktop, "note", RED, TERMINAL, StartupWMClass="note")


def settings(shortcut):
    return {"enabledWidgets": ["app-shortcut"], "appShortcuts": [shortcut], "pinnedItemsIntroduced": True}


def started_from(bar, name):
    """Clicks the one icon. Answers the window and the process of what that started."""
    icons = Icons(bar, 1)
    icons.click(0)
    window = Program(bar.desktop, name).opened()
    wait_until(lambda: icons.has_dot(0), what="the dot is there")
    return window, process_of(bar.screen, window)


def assert_goes_on(screen, window, process):
    assert_holds(lambda: is_running(process) and screen.is_mapped(window), 1.5, "it ended with the bar")


@pytest.mark.parametrize("name", ["note", "featherpad"])
def test_a_killed_bar_leaves_it_running(desktop, screen, start_bar, note, name):
    shortcut = note if name == "note" else installed("featherpad", "FeatherPad")
    bar = start_bar(**settings(shortcut))
    window, process = started_from(bar, name)
    assert os.getsid(process) != os.getsid(bar.process.pid)
    # The whole process group, as a session does that will not wait.
    bar.process.kill()
    assert_goes_on(screen, window, process)
    icons = Icons(start_bar(**settings(shortcut)), 1)
    wait_until(lambda: icons.has_dot(0), what="the next bar knows that it runs")


def test_what_ended_leaves_no_zombie(screen, start_bar, note):
    bar = start_bar(**settings(note))
    window, process = started_from(bar, "note")
    Icons(bar, 1).quit(0)
    wait_until(lambda: not Path(f"/proc/{process}").exists(), what="nothing is left of the process")


def tree_without_building(desktop):
    """A copy of what `./run` is made of, around the program that is tested."""
    tree = desktop.home / "moorline"
    shutil.copytree(ROOT / "scripts", tree / "scripts")
    shutil.copy(ROOT / "run", tree)
    built = tree / "build/release/src/app/moorline"
    built.parent.mkdir(parents=True)
    built.symlink_to(binary())
    applications.script(desktop, "cmake", "exit 0")
    return tree


def test_control_c_in_the_terminal_of_the_bar_leaves_it_running(desktop, screen, note):
    tree = tree_without_building(desktop)
    command = ["xterm", "-name", "shell", "-class", "shell", "-geometry", "80x10+20+20", "-e", tree / "run"]
    path = f"{desktop.home / 'bin'}:{desktop.environment['PATH']}"
    bar = Bar(desktop, settings(note), command=command, PATH=path)
    own = process_of(screen, bar.window)
    window, process = started_from(bar, "note")
    bring_forward(screen, Program(desktop, "shell").opened())
    screen.type_key("Control_L", "c")
    wait_until(lambda: not is_running(own), what="the bar ends")
    # The terminal closes with what ran in it, and hangs up on whoever is left there.
    wait_until(lambda: not bar.process.is_running(), what="the terminal closes")
    assert_goes_on(screen, window, process)
