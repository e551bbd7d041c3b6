"""What the program takes into its process."""

import os
import subprocess
import time
from pathlib import Path

import pytest

from harness import stalls
from harness.waiting import wait_until

pytestmark = pytest.mark.only_openbox


def mapped_files(pid):
    lines = Path(f"/proc/{pid}/maps").read_text().splitlines()
    return {Path(line.split(maxsplit=5)[5]) for line in lines if "/" in line}


@pytest.mark.parametrize("session", ["XFCE", "GNOME", "ubuntu:GNOME", "X-Cinnamon", "KDE"])
def test_the_theme_of_another_toolkit_stays_out(start_bar, session):
    bar = start_bar(environment={"XDG_CURRENT_DESKTOP": session, "DESKTOP_SESSION": session.lower()})
    files = mapped_files(bar.process.pid)
    plugins = next(file for file in files if file.name == "libqxcb.so").parents[1]
    assert (plugins / "platformthemes/libqgtk3.so").exists(), "there is no plug-in here that could come"
    foreign = [file for file in files if file.parent.name == "platformthemes" or file.name.startswith("libgtk-")]
    assert not foreign


@pytest.fixture
def stuck_library(desktop):
    library = desktop.directory / "stuck_library.so"
    source = Path(stalls.__file__).with_name("stuck_library.cpp")
    compiler = os.environ.get("CXX", "c++")
    subprocess.run([compiler, "-std=c++20", "-fPIC", "-shared", "-o", library, source, "-ldl"], check=True)
    return library


@pytest.mark.parametrize("call", ["proxy", "resolver"])
def test_a_call_that_never_returns_does_not_hold_the_end_up(desktop, start_bar, stuck_library, call):
    mark = desktop.directory / "stuck"
    bar = start_bar(
        environment={
            "LD_PRELOAD": f"{stalls.library()}:{stuck_library}",
            "STUCK_CALL": call,
            "STUCK_MARK": mark,
            "MOORLINE_WEATHER_ORIGIN": "http://weather.invalid",
        },
        enabledWidgets=["clock", "weather"],
    )
    wait_until(mark.exists, timeout=10, what=f"the bar waits for the {call}")
    menu = bar.open_menu()
    bar.screen.move_pointer(menu.center_x, menu.bottom - 17)
    with desktop.stall_watch.expected("the program ends"):
        began = time.monotonic()
        bar.screen.click(menu.center_x, menu.bottom - 17)
        assert bar.process.wait(timeout=10) == 0
        assert time.monotonic() - began < 2
