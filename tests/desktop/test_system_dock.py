"""Beside the desktop's own dock or panel: the nudge, and making way for it."""

import time

import pytest

from harness import pill
from harness.panels import start_plank, start_tint2, stop_tint2
from harness.waiting import assert_holds, wait_until

BOTTOM = 899
HIDE_DELAY = 1.0
# The edge is looked at every 0.1 s and the slide takes 0.18 s; the rest is for a busy machine.
LATENESS = 1.5
AUTOMATIC = {"visibilityMode": "auto", "hideDelaySeconds": HIDE_DELAY}


@pytest.fixture
def tint2(desktop):
    return start_tint2(desktop)


def rest_at_edge(screen):
    screen.move_pointer(720, BOTTOM)


def start_beside_panel(start_bar, screen, **settings):
    screen.move_pointer(720, 300)
    bar = start_bar(**{**AUTOMATIC, **settings})
    bar.wait_until_shown(nudge=bar.settings()["showAutoHideNudge"])
    return bar


def is_nudge_visible(screen, bar):
    """Looks just inside the strip's upper edge, above its text."""
    return pill.is_pill(screen.pixel(bar.frame().center_x, bar.shown_top(nudge=True) + 13 + 3))


def test_nudge_stands_eight_points_above_the_pill(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen)
    frame = bar.frame()
    assert frame.height == 132
    column = screen.picture((int(frame.center_x), frame.y, 1, 100))
    dark = [pill.is_pill(column.getpixel((0, y))) for y in range(column.height)]
    strip = [y for y in range(13, 13 + 26) if dark[y]]
    assert (strip[0], strip[-1]) == (13, 38)
    assert not any(dark[:13]) and not any(dark[39:47])
    assert dark[48]


def test_no_nudge_where_no_dock_is_in_the_way(screen, start_bar):
    bar = start_bar(**AUTOMATIC)
    assert bar.frame().height == 98


def test_no_nudge_when_it_is_switched_off(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen, showAutoHideNudge=False)
    assert bar.frame().height == 98


def test_nudge_follows_a_panel_that_comes_and_goes(desktop, screen, start_bar):
    bar = start_bar(**AUTOMATIC)
    start_tint2(desktop)
    wait_until(lambda: is_nudge_visible(screen, bar), what="the nudge shows")
    wait_until(lambda: bar.is_shown(nudge=True), what="the panel makes room")
    stop_tint2(desktop)
    wait_until(lambda: not is_nudge_visible(screen, bar), what="the nudge goes")


def test_plank_calls_for_the_nudge_too(desktop, screen, start_bar):
    start_plank(desktop)
    bar = start_beside_panel(start_bar, screen)
    assert bar.frame().height == 132


def test_plank_that_hides_by_itself_needs_no_nudge(desktop, screen, start_bar):
    start_plank(desktop, hide_mode="auto")
    bar = start_bar(**AUTOMATIC)
    assert bar.frame().height == 98


def test_bar_stands_above_the_panel(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen)
    assert screen.is_above(bar.window, tint2)


def test_bar_makes_way_after_the_delay_at_the_edge(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen)
    rest_at_edge(screen)
    arrived = time.monotonic()
    wait_until(lambda: not bar.is_shown(nudge=True), what="the bar begins to slide")
    assert HIDE_DELAY - 0.05 <= time.monotonic() - arrived <= HIDE_DELAY + LATENESS
    bar.wait_until_hidden()


def test_hidden_bar_stays_hidden_near_the_edge_and_returns_beyond_96_points(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen, hideDelaySeconds=0.2)
    rest_at_edge(screen)
    bar.wait_until_hidden()
    screen.move_pointer(720, BOTTOM - 90)
    assert_holds(bar.is_hidden, 0.6, "the bar came back within 96 points")
    screen.move_pointer(720, BOTTOM - 100)
    bar.wait_until_shown(nudge=True)


def test_leaving_the_edge_early_resets_the_clock(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen)
    rest_at_edge(screen)
    assert_holds(lambda: bar.is_shown(nudge=True), HIDE_DELAY * 0.6, "the bar slid before the delay")
    screen.move_pointer(720, BOTTOM - 20)
    assert_holds(lambda: bar.is_shown(nudge=True), HIDE_DELAY * 0.6, "the bar slid away from the edge")
    rest_at_edge(screen)
    assert_holds(lambda: bar.is_shown(nudge=True), HIDE_DELAY * 0.8, "the clock went on from before")
    bar.wait_until_hidden()


def test_always_visible_bar_ignores_the_edge(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen, visibilityMode="always", hideDelaySeconds=0.2)
    rest_at_edge(screen)
    assert_holds(lambda: bar.is_shown(nudge=True), 1.0, "the bar made way")


def test_bar_stays_at_the_edge_where_there_is_no_dock(screen, start_bar):
    bar = start_bar(**{**AUTOMATIC, "hideDelaySeconds": 0.2})
    rest_at_edge(screen)
    assert_holds(bar.is_shown, 1.0, "the bar made way for nothing")


def test_hidden_bar_leaves_the_edge_to_the_panel(screen, start_bar, tint2):
    bar = start_beside_panel(start_bar, screen, hideDelaySeconds=0.2)
    rest_at_edge(screen)
    bar.wait_until_hidden()
    wait_until(lambda: not pill.is_pill(screen.pixel(*bar.pill_center())), what="nothing of the pill is to be seen")


def test_click_beside_the_nudge_reaches_the_window_below(screen, start_bar, open_client, tint2):
    client = open_client((100, 400, 1200, 400))
    bar = start_beside_panel(start_bar, screen)
    client.forget()
    screen.click(bar.frame().center_x, bar.frame().y + 5)
    wait_until(lambda: len(client.presses()) == 1, what="the client gets the click")
