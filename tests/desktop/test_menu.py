"""The bar's own menu, and what it leaves on disk."""

import json
import time

import pytest

from harness.bar import Bar, binary, settings_path
from harness.waiting import wait_until

KEYS = 26


def mode_on_disk(bar):
    return bar.settings()["visibilityMode"]


def test_menu_changes_the_mode_in_the_settings_file(screen, start_bar):
    bar = start_bar(visibilityMode="always")
    bar.choose_mode(automatic=True)
    wait_until(lambda: mode_on_disk(bar) == "auto", what="the mode is written")
    wait_until(lambda: not bar.popups(), what="the menu closes")
    bar.choose_mode(automatic=False)
    wait_until(lambda: mode_on_disk(bar) == "always", what="the mode is written")


def test_menu_opens_inside_the_screen(screen, start_bar):
    bar = start_bar()
    frame = bar.open_menu()
    assert frame.x >= 0 and frame.y >= 0
    assert frame.right <= screen.size[0] and frame.bottom <= screen.size[1]


def test_menu_closes_on_a_click_elsewhere(screen, start_bar):
    bar = start_bar()
    bar.open_menu()
    screen.click(200, 200)
    wait_until(lambda: not bar.popups(), what="the menu closes")


def test_last_entry_of_the_menu_quits(screen, start_bar):
    bar = start_bar()
    frame = bar.open_menu()
    screen.click(frame.center_x, frame.bottom - 12)
    assert bar.process.wait(5) == 0


def test_choosing_the_mode_that_is_set_writes_nothing(screen, start_bar):
    bar = start_bar(visibilityMode="auto")
    before = bar.settings_path.stat()
    bar.choose_mode(automatic=True)
    wait_until(lambda: not bar.popups(), what="the menu closes")
    after = bar.settings_path.stat()
    assert (before.st_mtime_ns, before.st_ino) == (after.st_mtime_ns, after.st_ino)


def test_extra_keys_in_the_file_do_no_harm(start_bar):
    bar = start_bar(bottomGap=7, somethingElse={"a": [1, 2]})
    assert bar.pill_edges(7)[3] == 900 - 7
    assert len(bar.settings()) >= KEYS


@pytest.mark.only_openbox
def test_killed_while_it_starts_it_leaves_a_readable_file(desktop, start_bar):
    """Every start writes the file, so a kill at any moment of it must leave the old or the new one."""
    bar = start_bar(highlightColorHex="#123456")
    bar.process.stop()
    for round_number in range(60):
        process = desktop.start("killed", binary())
        time.sleep(0.004 * round_number)
        process.kill()
        settings = json.loads(settings_path(desktop).read_text())
        assert (len(settings), settings["highlightColorHex"]) == (KEYS, "#123456")


@pytest.mark.only_openbox
def test_killed_in_a_storm_of_changes_it_leaves_a_readable_file(desktop, screen, start_bar):
    bar = start_bar(visibilityMode="always")
    written = set()
    for round_number in range(24):
        automatic = round_number % 2 == 0
        bar.choose_mode(automatic)
        # A little later in each round, across the time the change takes to reach the disk.
        time.sleep(0.001 * round_number)
        bar.process.kill()
        settings = bar.settings()
        assert len(settings) == KEYS
        written.add(settings["visibilityMode"])
        bar = Bar(desktop)
    assert written == {"always", "auto"}, "no change ever reached the disk"


@pytest.mark.only_openbox
@pytest.mark.parametrize("wreck", [b"", b"{", b"[]", b"\xff\xfe\x00", b'{"bottomGap": "wide", "enabledWidgets": 3}'])
def test_unreadable_settings_start_the_bar_with_its_defaults(desktop, wreck):
    path = settings_path(desktop)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(wreck)
    bar = Bar(desktop)
    settings = bar.settings()
    assert settings["bottomGap"] == 2
    assert settings["visibilityMode"] == "always"
    assert len(settings) == KEYS
