"""Runs that make one thing and end, and what they write to the log."""

import json
import re

import pytest
from PIL import Image

from harness.bar import APPLICATION, Bar, binary, write_settings
from harness.desktop import Desktop
from harness.waiting import wait_until

PREVIEW_TOP = (0x2B, 0x3A, 0x4A)
PREVIEW_BOTTOM = (0x1B, 0x24, 0x30)

pytestmark = pytest.mark.only_openbox

NO_DISPLAY = {"DISPLAY": None, "WAYLAND_DISPLAY": None, "DBUS_SESSION_BUS_ADDRESS": None}


def run(desktop, timeout=20, **environment):
    process = desktop.start("mode", binary(), QT_FORCE_STDERR_LOGGING=1, **environment)
    assert process.wait(timeout) == 0, process.output()
    return process.output().splitlines()


def test_preview_needs_no_display(desktop, tmp_path):
    path = tmp_path / "preview.png"
    lines = run(desktop, MOORLINE_RENDER=path, **NO_DISPLAY)
    assert f"Moorline: wrote preview to {path}" in lines
    with Image.open(path) as picture:
        assert (picture.format, picture.size) == ("PNG", (3200, 276))
        corners = [picture.convert("RGB").getpixel(at) for at in ((0, 0), (0, 275))]
    for corner, wanted in zip(corners, (PREVIEW_TOP, PREVIEW_BOTTOM)):
        assert all(abs(a - b) <= 1 for a, b in zip(corner, wanted))


def test_preview_shows_the_bar(desktop, tmp_path):
    path = tmp_path / "preview.png"
    run(desktop, MOORLINE_RENDER=path)
    picture = Image.open(path).convert("RGB")
    assert max(max(picture.getpixel((x, 138))) for x in range(1200, 2000)) > 200, "white text in the middle"


def test_preview_that_cannot_be_written_says_so_and_ends(desktop, tmp_path):
    lines = run(desktop, MOORLINE_RENDER=tmp_path / "missing" / "preview.png")
    assert any(re.match(r"Moorline: could not write preview: .+", line) for line in lines)


def test_import_reports_the_pinned_applications(desktop):
    lines = run(desktop, MOORLINE_IMPORT_DOCK=1, **NO_DISPLAY)
    assert lines[-1] == "total pinned apps now: 1"


def test_import_counts_what_is_pinned(desktop):
    write_settings(desktop, {"appShortcuts": [{"path": f"/a{n}.desktop", "name": "A"} for n in range(3)]})
    assert run(desktop, MOORLINE_IMPORT_DOCK=1)[-1] == "total pinned apps now: 3"


def test_preview_wins_over_import(desktop, tmp_path):
    path = tmp_path / "preview.png"
    lines = run(desktop, MOORLINE_RENDER=path, MOORLINE_IMPORT_DOCK=1)
    assert path.exists()
    assert not any(line.startswith("total pinned apps") for line in lines)


def test_import_wins_over_snapshot(desktop, tmp_path):
    path = tmp_path / "snapshot.png"
    lines = run(desktop, MOORLINE_IMPORT_DOCK=1, MOORLINE_SNAPSHOT=path)
    assert lines[-1] == "total pinned apps now: 1"
    assert not path.exists()


def test_snapshot_shows_the_live_panel_and_ends(desktop, start_bar, tmp_path):
    path = tmp_path / "snapshot.png"
    bar = start_bar(environment={"MOORLINE_SNAPSHOT": path})
    frame = bar.frame()
    assert bar.process.wait(20) == 0
    assert f"Moorline: wrote live snapshot to {path}" in bar.log_lines()
    with Image.open(path) as picture:
        assert (picture.format, picture.size) == ("PNG", (frame.width, frame.height))
        assert picture.getpixel((0, 0))[3] == 0, "transparent outside the pill"


def test_snapshot_that_cannot_be_written_says_so_and_ends(desktop, start_bar, tmp_path):
    bar = start_bar(environment={"MOORLINE_SNAPSHOT": tmp_path / "missing" / "snapshot.png"})
    assert bar.process.wait(20) == 0
    assert any(re.match(r"Moorline: could not write snapshot: .+", line) for line in bar.log_lines())


def test_debug_log_names_every_placement_and_the_frame_each_second(start_bar):
    bar = start_bar()
    wait_until(lambda: sum(line.startswith("Moorline: tick frame=") for line in bar.log_lines()) >= 2)
    lines = bar.log_lines()
    assert any(re.fullmatch(r"Moorline: tick frame=.+ content=.+", line) for line in lines)
    assert any(re.fullmatch(r"Moorline: requested .+ -> actual .+ level \d+", line) for line in lines)


def test_without_debug_the_log_is_silent(desktop, tmp_path):
    path = tmp_path / "snapshot.png"
    assert run(desktop, MOORLINE_SNAPSHOT=path) == [f"Moorline: wrote live snapshot to {path}"]


def test_bar_without_a_display_says_so_and_fails(desktop):
    process = desktop.start("mode", binary(), **NO_DISPLAY)
    assert process.wait(10) != 0
    assert "display" in process.output()


def test_settings_live_under_the_application_identifier(desktop, start_bar):
    start_bar()
    folder = desktop.config_home / APPLICATION
    assert (folder / "settings.json").is_file()
    assert [path.name for path in folder.glob("settings*")] == ["settings.json"], "something was left beside the file"


def test_defaults_are_written_at_the_first_start(desktop):
    bar = Bar(desktop)
    settings = bar.settings()
    assert settings["hideDelaySeconds"] == 0.5
    assert settings["pinnedItemsIntroduced"] is True


def test_a_second_bar_ends_and_leaves_the_first_alone(desktop, start_bar):
    bar = start_bar()
    assert run(desktop) == ["Moorline: already running"]
    assert bar.process.is_running() and bar.is_pill_visible()


def test_a_bar_on_another_display_shares_the_settings_with_the_first(desktop, start_bar):
    bar = start_bar()
    with Desktop("openbox") as other_desktop:
        other = Bar(other_desktop, XDG_CONFIG_HOME=desktop.config_home)
        bar.settings_path.write_text(json.dumps({**bar.settings(), "bottomGap": 40}))
        for each in (bar, other):
            wait_until(lambda: each.frame().y == each.shown_top(gap=40), what="the bar stands higher")
        assert bar.settings()["bottomGap"] == 40


def test_a_damaged_settings_file_is_kept_aside(desktop):
    path = desktop.config_home / APPLICATION / "settings.json"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text('{"bottomGap": 40')
    bar = Bar(desktop)
    damaged = path.with_name("settings.json.damaged")
    wait_until(damaged.is_file, timeout=10, what="the damaged file is kept")
    assert damaged.read_text() == '{"bottomGap": 40'
    wait_until(lambda: path.is_file() and bar.settings()["bottomGap"] == 2, what="the defaults are written")


def test_a_bar_that_was_killed_can_be_started_again(desktop, start_bar):
    start_bar().process.kill()
    assert start_bar().is_pill_visible()
