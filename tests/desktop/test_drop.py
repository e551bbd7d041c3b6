"""Files dropped on the bar, and what happens to the file of settings when the program dies while they rain."""

import json
import threading

import pytest

from harness.bar import Bar
from harness.drop import FileDrag, TargetGone
from harness.waiting import wait_until

KEYS = 26
ROUNDS = 12


def drag_onto(desktop, bar):
    return desktop.own(FileDrag(desktop, bar.process))


def pinned(bar):
    return [item["path"] for item in bar.settings()["pinnedItems"]]


def test_files_dropped_on_the_pill_are_pinned(desktop, start_bar):
    bar = start_bar()
    files = [desktop.home / name for name in ("first.txt", "second file.txt")]
    for file in files:
        file.touch()
    drag_onto(desktop, bar).drop([file.as_uri() for file in files], bar.window, *bar.pill_center())
    wait_until(lambda: pinned(bar) == [str(file) for file in files], what="the files are pinned")


def test_a_file_dropped_twice_is_pinned_once(desktop, start_bar):
    bar = start_bar()
    file = desktop.home / "file.txt"
    file.touch()
    drag = drag_onto(desktop, bar)
    for _ in range(2):
        drag.drop([file.as_uri()], bar.window, *bar.pill_center())
    wait_until(lambda: pinned(bar) == [str(file)], what="the file is pinned once")


@pytest.mark.only_openbox
def test_killed_in_a_rain_of_files_it_leaves_a_readable_file_of_settings(desktop, start_bar):
    bar = start_bar()
    file_number = 0
    for round_number in range(ROUNDS):
        drag = drag_onto(desktop, bar)
        center = bar.pill_center()
        killer = threading.Timer(0.25 + 0.017 * round_number, bar.process.kill)
        killer.start()
        try:
            while True:
                file_number += 1
                drag.drop([f"file:///tmp/moorline/file-{file_number:05}"], bar.window, *center)
        except TargetGone:
            killer.join()
        settings = json.loads(bar.settings_path.read_text())
        assert len(settings) == KEYS
        bar = Bar(desktop)
    items = pinned(bar)
    assert len(items) > ROUNDS
    assert items == sorted(items), "every file that is pinned stands where it was dropped"
