"""What the program takes into its process."""

from pathlib import Path

import pytest

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
