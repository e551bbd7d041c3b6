"""What a screen reader is told of the bar, and what it can do there."""

import pytest

from harness.accessibility import SWITCHED_ON, AccessibilityBus
from harness.panels import start_plank
from harness.waiting import wait_until


@pytest.fixture
def accessibility(desktop):
    bus = AccessibilityBus(desktop)
    yield bus
    bus.close()


def plank_hide_mode(desktop):
    keyfile = desktop.config_home / "glib-2.0/settings/keyfile"
    return next(line for line in keyfile.read_text().splitlines() if line.startswith("hide-mode"))


def test_items_are_told_of_from_left_to_right(start_bar, accessibility):
    start_bar(environment=SWITCHED_ON)
    accessibility.item("Clock")
    named = [found.name for found in accessibility.bar().walk() if found.name in ("Clock", "Calendar", "Year Progress")]
    assert named == ["Clock", "Calendar", "Year Progress"]
    assert accessibility.item("Year Progress").description.startswith(tuple("0123456789"))
    assert accessibility.item("Clock").role in ("label", "static", "text")


@pytest.mark.parametrize("scale", [1, 2])
def test_an_item_stands_where_it_is_drawn(desktop, screen, start_bar, accessibility, scale):
    bar = start_bar(scale=scale, environment=SWITCHED_ON)
    left, top, width, height = accessibility.item("Clock").extents
    pill_left, pill_top, _, pill_bottom = bar.pill_edges()
    # The row begins 16 points from the pill's edge.
    assert abs(left - (pill_left + 16 * scale)) <= scale
    assert pill_top < top and top + height < pill_bottom
    # White digits on the pill, and nothing of them beyond the item.
    picture = screen.picture((left, top, width, height)).convert("L")
    bright = picture.point(lambda value: 255 if value > 150 else 0).getbbox()
    assert bright is not None and bright[2] - bright[0] > width * 0.5


def test_the_nudge_is_pressed_without_a_pointer(desktop, start_bar, accessibility):
    start_plank(desktop)
    bar = start_bar(environment=SWITCHED_ON)
    bar.wait_until_shown(nudge=True)
    button = accessibility.item("Hide the desktop’s dock")
    assert button.actions == ["Press"]
    assert button.press()
    wait_until(lambda: plank_hide_mode(desktop) == "hide-mode='auto'", what="Plank hides by itself")
    wait_until(lambda: bar.is_shown(nudge=False), what="the nudge goes")
