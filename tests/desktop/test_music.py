"""The player in the bar, from the session bus to the pixels and back."""

import pytest
from PIL import Image

from harness.accessibility import SWITCHED_ON, AccessibilityBus
from harness.file_manager import MAGENTA, is_like
from harness.player import Player
from harness.programs import Program
from harness.waiting import assert_holds, settled, wait_until

WIDGET = "Now Playing"
FIRST = "First tone, A generator"
SECOND = "Second tone, A generator"
# Between two looks whether the widget has its place, and what a busy machine adds.
IDLE_LOOK = 8


@pytest.fixture
def accessibility(desktop):
    bus = AccessibilityBus(desktop)
    yield bus
    bus.close()


@pytest.fixture
def player(desktop):
    return desktop.own(Player(desktop, Image.new("RGB", (64, 64), MAGENTA)))


@pytest.fixture
def start_music(start_bar):
    """Starts a bar with a clock and, while there is music, the player."""

    def start(scale=1, **settings):
        row = {"enabledWidgets": ["clock", "music"], "showAutoHideNudge": False}
        return start_bar(scale=scale, environment=SWITCHED_ON, **row, **settings)

    return start


def width(bar):
    left, _, right, _ = settled(bar.pill_edges)
    return right - left


def middle(accessibility, name):
    """The middle of an item on the screen, once it does not move any more."""
    left, top, wide, high = settled(lambda: accessibility.item(name).extents)
    return left + wide // 2, top + high // 2


def wait_for_track(accessibility, track):
    wait_until(lambda: accessibility.description(WIDGET) == track, timeout=15, what=f"the bar tells of {track}")


def click(bar, accessibility, name):
    bar.screen.click(*middle(accessibility, name))


@pytest.mark.parametrize("scale", [1, 2])
def test_the_player_comes_with_the_music(screen, start_music, accessibility, player, scale):
    bar = start_music(scale=scale)
    accessibility.item("Clock")
    assert accessibility.description(WIDGET) is None
    before = width(bar)
    player.play()
    wait_for_track(accessibility, FIRST)
    # The artwork, a gap and the column beside it, and a gap and the line before the widget.
    wait_until(lambda: width(bar) >= before + (46 + 10 + 232) * scale, what="the pill makes room")
    cover = middle(accessibility, "Open Player")
    wait_until(lambda: is_like(screen.pixel(*cover), MAGENTA), what="the cover is drawn")


def test_a_click_pauses_and_another_one_plays_on(start_music, accessibility, player):
    bar = start_music()
    player.play()
    wait_for_track(accessibility, FIRST)
    click(bar, accessibility, "Pause")
    wait_until(lambda: player.status() == "Paused", what="the player pauses")
    click(bar, accessibility, "Play")
    wait_until(lambda: player.status() == "Playing", what="the player plays on")
    accessibility.item("Pause")


def test_a_click_leads_to_the_next_track_and_back(start_music, accessibility, player):
    bar = start_music()
    player.play()
    wait_for_track(accessibility, FIRST)
    click(bar, accessibility, "Next")
    wait_for_track(accessibility, SECOND)
    click(bar, accessibility, "Previous")
    wait_for_track(accessibility, FIRST)


def test_a_double_click_is_two_clicks(start_music, accessibility, player):
    bar = start_music()
    player.play()
    wait_for_track(accessibility, FIRST)
    place = middle(accessibility, "Pause")
    bar.screen.click(*place)
    # mpv takes two commands that come at once for one. It is done with the first long before a click is no second one.
    wait_until(lambda: player.status() == "Paused", what="the player pauses")
    bar.screen.click(*place)
    wait_until(lambda: player.status() == "Playing", what="the player plays on")


def test_a_click_on_the_cover_brings_the_player_forward(screen, start_music, accessibility, player, open_client):
    bar = start_music()
    player.play(has_window=True)
    window = Program(bar.desktop, "mpv").opened()
    wait_for_track(accessibility, FIRST)
    open_client()
    wait_until(lambda: screen.active_window() != window.id, what="another window has the focus")
    click(bar, accessibility, "Open Player")
    wait_until(lambda: screen.active_window() == window.id, what="the player comes forward")


def test_pausing_for_a_moment_hides_nothing(start_music, accessibility, player):
    bar = start_music()
    player.play()
    wait_for_track(accessibility, FIRST)
    click(bar, accessibility, "Pause")
    accessibility.item("Play")
    assert_holds(lambda: accessibility.description(WIDGET) == FIRST, 5, "the paused track stays")


def test_the_player_goes_once_nothing_has_played_for_long_enough(start_music, accessibility, player):
    # No time at all is long enough.
    bar = start_music(musicIdleTimeoutMinutes=0)
    before = width(bar)
    player.play()
    wait_for_track(accessibility, FIRST)
    assert_holds(lambda: accessibility.description(WIDGET) == FIRST, 5, "what plays stays")
    click(bar, accessibility, "Pause")
    wait_until(lambda: accessibility.description(WIDGET) is None, timeout=IDLE_LOOK, what="the player leaves the row")
    wait_until(lambda: width(bar) == before, what="the pill is as it was")
    assert player.status() == "Paused"


def test_a_player_that_is_killed_takes_its_track_along_and_nothing_else(start_music, accessibility, player):
    bar = start_music()
    player.play()
    wait_for_track(accessibility, FIRST)
    player.kill()
    wait_for_track(accessibility, "Nothing playing")
    assert bar.process.is_running()
    # Nor does it come back by a click.
    click(bar, accessibility, "Play")
    assert_holds(lambda: player.status() is None, 1, "the player came back")
    player.play()
    wait_for_track(accessibility, FIRST)
