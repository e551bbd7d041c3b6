"""Screens that come and go."""

import pytest

from harness.waiting import assert_holds, wait_until

LEFT = (0, 0, 1440, 900)
RIGHT = (1440, 0, 1440, 900)

pytestmark = pytest.mark.display(size=(2880, 900))


@pytest.fixture
def bar(desktop, start_bar):
    desktop.set_monitors(LEFT)
    return start_bar()


def stands_on(bar, screen_frame):
    x, y, width, height = screen_frame
    frame = bar.frame()
    return abs(frame.center_x - (x + width / 2)) <= 1 and frame.bottom == y + height + 11


def test_bar_stands_on_the_primary_screen(desktop, start_bar):
    desktop.set_monitors(LEFT, RIGHT, primary=1)
    bar = start_bar()
    wait_until(lambda: stands_on(bar, RIGHT), what="the bar is on the primary screen")


def test_second_screen_coming_and_going_leaves_the_bar_in_its_place(desktop, bar):
    assert stands_on(bar, LEFT)
    desktop.set_monitors(LEFT, RIGHT)
    assert_holds(lambda: stands_on(bar, LEFT), 0.8, "the bar moved when a screen came")
    desktop.set_monitors(LEFT)
    assert_holds(lambda: stands_on(bar, LEFT), 0.8, "the bar moved when a screen went")
    assert bar.is_pill_visible()


def test_bar_follows_the_primary_screen_and_comes_back(desktop, bar):
    desktop.set_monitors(LEFT, RIGHT, primary=1)
    wait_until(lambda: stands_on(bar, RIGHT), what="the bar goes to the new primary screen")
    desktop.set_monitors(LEFT)
    wait_until(lambda: stands_on(bar, LEFT), what="the bar comes back")
    wait_until(bar.is_pill_visible, what="the pill is to be seen")
    assert bar.process.is_running()


def test_settings_are_not_written_for_screens(desktop, bar):
    before = bar.settings_path.stat()
    desktop.set_monitors(LEFT, RIGHT, primary=1)
    wait_until(lambda: stands_on(bar, RIGHT))
    desktop.set_monitors(LEFT)
    wait_until(lambda: stands_on(bar, LEFT))
    after = bar.settings_path.stat()
    assert (before.st_mtime_ns, before.st_ino) == (after.st_mtime_ns, after.st_ino)


# xfwm4 does not see a monitor without an output, the only kind that a virtual display can add.
@pytest.mark.only_openbox
def test_full_screen_on_another_screen_leaves_the_bar_alone(desktop, bar, open_client):
    desktop.set_monitors(LEFT, RIGHT)
    client = open_client((1600, 200, 600, 400))
    client.set_full_screen(True)
    wait_until(lambda: tuple(desktop.screen.frame(client.window)) == RIGHT, what="the window fills the other screen")
    assert_holds(lambda: stands_on(bar, LEFT) and bar.is_pill_visible(), 2.0, "the bar hid for another screen")


def test_bar_moves_to_the_screen_that_is_left(desktop, bar):
    desktop.set_monitors(LEFT, RIGHT)
    desktop.set_monitors(RIGHT)
    wait_until(lambda: stands_on(bar, RIGHT), what="the bar stands on the screen that is left")
    wait_until(bar.is_pill_visible, what="the pill is to be seen")
