"""What a screen reader is told of the bar, and what it can do there."""

import pytest

from harness import icons as applications
from harness.accessibility import SWITCHED_ON, AccessibilityBus
from harness.badges import BadgeSender
from harness.icons import GREEN, RED, Icons
from harness.panels import start_plank
from harness.programs import Program
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


@pytest.fixture
def note_and_tally(desktop, start_bar):
    """Starts a bar with the icons of two applications and no other."""

    def start(**options):
        note = applications.install(desktop, "note", RED, "xterm -name note -class note", StartupWMClass="note")
        tally = applications.install(desktop, "tally", GREEN, "true")
        shortcuts = {"enabledWidgets": ["app-shortcut"], "appShortcuts": [note, tally], "showAppBadges": True}
        return Icons(start_bar(environment=SWITCHED_ON, **shortcuts, **options), 2)

    return start


@pytest.mark.parametrize("scale", [1, 2])
def test_icons_are_told_of_as_they_are_drawn(screen, note_and_tally, accessibility, scale):
    icons = note_and_tally(scale=scale)
    row = accessibility.item("App Shortcuts")
    assert [icon.name for icon in row.children] == ["Note", "Tally"]
    for index, (icon, color) in enumerate(zip(row.children, (RED, GREEN))):
        assert icon.role in ("push button", "button")
        assert icon.states == {"enabled", "sensitive", "showing", "visible"}
        left, top, width, height = icon.extents
        # The icon, and its dot below.
        assert (width, height) == (applications.ICON * scale, (applications.ICON + 6) * scale)
        x, y = icons.place(index)
        assert abs(left + width / 2 - x) <= scale and abs(top + applications.ICON * scale / 2 - y) <= scale
        wait_until(lambda: screen.pixel(left + 2 * scale, top + 2 * scale) == color, what="the icon is drawn there")


def test_an_icon_tells_that_it_runs_and_what_waits_for_it(desktop, note_and_tally, accessibility):
    note_and_tally()
    assert (accessibility.item("Note").description, accessibility.item("Tally").description) == ("", "")
    sender = desktop.own(BadgeSender(desktop))
    sender.tell("note", 7)
    wait_until(lambda: accessibility.item("Note").description == "7", what="the badge is told of")
    desktop.start("terminal", "xterm", "-name", "note", "-class", "note")
    wait_until(lambda: accessibility.item("Note").description == "Running, 7", what="that it runs is told as well")
    assert accessibility.item("Tally").description == ""


def test_an_icon_is_pressed_without_a_pointer(desktop, note_and_tally, accessibility):
    icons = note_and_tally()
    assert accessibility.item("Note").press()
    window = Program(desktop, "note").opened()
    wait_until(lambda: desktop.screen.active_window() == window.id, what="its window is the active one")
    wait_until(lambda: icons.has_dot(0), what="the dot is there")
    assert not icons.has_dot(1)


def test_the_menu_of_an_icon_is_opened_without_a_pointer(note_and_tally, accessibility):
    icons = note_and_tally()
    assert accessibility.item("Tally").show_menu()
    frame = icons.bar.opened_menu()
    assert abs(frame.center_x - icons.place(1)[0]) <= 2
