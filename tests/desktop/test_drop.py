"""Files dropped on the bar, and what happens to the file of settings when the program dies while they rain."""

import json
import threading
import time

import pytest

from harness.bar import Bar
from harness.drop import FileDrag, TargetGone
from harness.waiting import wait_until

KEYS = 26
ROUNDS = 12
PATIENCE = 10


def drag_onto(desktop, bar, **options):
    return desktop.own(FileDrag(desktop, bar.process, **options))


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
    file, other = desktop.home / "file.txt", desktop.home / "other.txt"
    drag = drag_onto(desktop, bar)
    for dropped in (file, file, other):
        dropped.touch()
        drag.drop([dropped.as_uri()], bar.window, *bar.pill_center())
    wait_until(lambda: str(other) in pinned(bar), what="the last one is pinned")
    assert pinned(bar) == [str(file), str(other)]


def test_what_is_held_over_the_pill_is_not_read(desktop, start_bar):
    bar = start_bar()
    drag = drag_onto(desktop, bar)
    assert drag.hold(["file:///tmp/a"], bar.window, *bar.pill_center())
    assert drag.times_asked == 0
    for formats in (["text/x-moz-url", "text/plain"], ["XdndDirectSave0"], ["text/plain"]):
        drag.leave(bar.window)
        assert not drag.hold(["file:///tmp/a"], bar.window, *bar.pill_center(), formats=formats)
    assert drag.times_asked == 0


def test_a_program_that_never_gives_what_it_lets_go_stops_nothing(desktop, start_bar):
    bar = start_bar()
    center = bar.pill_center()
    silent = drag_onto(desktop, bar, is_silent=True)
    assert silent.hold(["file:///tmp/silent"], bar.window, *center)
    began = time.monotonic()
    silent.let_go_unanswered(bar.window)
    bar.choose_mode(automatic=True)
    wait_until(lambda: bar.settings()["visibilityMode"] == "auto", what="the menu does what it says")
    file = desktop.home / "file.txt"
    file.touch()
    drag_onto(desktop, bar).drop([file.as_uri()], bar.window, *center)
    wait_until(lambda: pinned(bar) == [str(file)], what="another program's file is pinned")
    assert time.monotonic() - began < PATIENCE, "all this while the other is waited for"
    assert not silent.wait_until_finished(timeout=PATIENCE + 3)
    assert PATIENCE - 0.1 <= time.monotonic() - began <= PATIENCE + 3
    assert pinned(bar) == [str(file)]


def test_a_thousand_files_at_once_are_pinned_in_their_order(desktop, start_bar):
    bar = start_bar()
    strange = ["100%.txt", "a b.txt", '"quoted" and \'quoted\'.txt', "two\nlines.txt", "ä%41#?.txt"]
    names = strange + [f"file {number:03}.txt" for number in range(1000 - len(strange))]
    files = [desktop.home / name for name in names]
    for file in files:
        file.touch()
    urls = [file.as_uri() for file in files]
    # The settings hold text; the neighbours of what is none are pinned.
    urls.insert(500, desktop.home.as_uri() + "/caf%E9.txt")
    drag_onto(desktop, bar).drop(urls, bar.window, *bar.pill_center())
    wait_until(lambda: len(pinned(bar)) == 1000, what="the files are pinned")
    assert pinned(bar) == [str(file) for file in files]


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
