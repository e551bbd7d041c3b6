"""The bar's own menu, and what it leaves on disk."""

import json
import time

import pytest

from harness.bar import Bar, binary, settings_path
from harness.desktop import WALLPAPER
from harness.pill import is_pill
from harness.screen import RIGHT_BUTTON
from harness.waiting import settled, wait_until

KEYS = 26
# The fill of the pill without its transparency.
OPAQUE_FILL = (0x14, 0x14, 0x16)
GAP = 6


def corners(frame):
    """The outermost pixels of a window."""
    right, bottom = frame.right - 1, frame.bottom - 1
    return [(frame.x, frame.y), (right, frame.y), (frame.x, bottom), (right, bottom)]


@pytest.fixture
def terminal(desktop, screen):
    """A terminal with the keyboard; answers what was typed into it so far."""
    typed = desktop.directory / "typed"
    desktop.start("terminal", "xterm", "-geometry", "60x10+100+100", "-e", f"stty -icanon; echo >{typed}; cat >>{typed}")
    wait_until(typed.exists, what="the terminal is ready")
    window = wait_until(lambda: next(screen.mapped_windows_of_class("xterm"), None), what="the terminal is mapped")
    screen.ask_window_manager(window, "_NET_ACTIVE_WINDOW", [2, 0, 0])

    def text():
        return typed.read_text().strip()

    def reaches(letter):
        screen.type_key(letter)
        wait_until(lambda: text().endswith(letter), what=f"the letter {letter} reaches the terminal")

    wait_until(lambda: (screen.type_key("a"), time.sleep(0.1), text().endswith("a"))[-1], what="the terminal is typed into")
    return reaches


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


@pytest.mark.parametrize("scale", [1, 2])
def test_menu_stands_clear_of_the_pill(screen, start_bar, scale):
    bar = start_bar(scale)
    _, pill_top, _, _ = bar.pill_edges()
    x, y = bar.pill_center()
    frame = bar.open_menu(x - 40 * scale, y)
    assert frame.bottom == pill_top - GAP * scale
    assert abs(frame.center_x - (x - 40 * scale)) <= scale


def test_menu_has_round_corners_where_a_compositor_runs(screen, start_bar):
    frame = start_bar().open_menu()
    settled(lambda: screen.picture(frame).tobytes())
    for corner in corners(frame):
        assert screen.pixel(*corner) == WALLPAPER
    assert is_pill(screen.pixel(frame.x + 3, frame.center_y))


@pytest.mark.display(compositor=False)
def test_menu_is_square_and_opaque_where_none_runs(screen, start_bar):
    frame = start_bar(visible=False).open_menu()
    settled(lambda: screen.picture(frame).tobytes())
    outline = {screen.pixel(*corner) for corner in corners(frame)}
    # White at a tenth over the fill, and nothing of what lies behind; a corner may carry the line twice.
    assert len(outline) == 1 and all(OPAQUE_FILL[0] < part < 0x50 for part in outline.pop())
    assert screen.pixel(frame.x + 3, frame.center_y) == OPAQUE_FILL


def test_menu_opens_again_where_the_right_button_is_pressed_next(screen, start_bar):
    bar = start_bar()
    x, y = bar.pill_center()
    first = bar.open_menu(x - 40, y)
    screen.click(x + 40, y, RIGHT_BUTTON)
    moved = wait_until(
        lambda: next((screen.frame(popup) for popup in bar.popups() if screen.frame(popup) != first), None),
        what="the menu opens at the other place",
    )
    assert moved.x == first.x + 80


def test_menu_is_walked_through_by_the_keyboard(screen, start_bar):
    bar = start_bar(visibilityMode="always")
    bar.open_menu()
    # The settings have no window yet: the first item that can be chosen is the mode that is set.
    for key in ("Down", "Down", "Return"):
        screen.type_key(key)
    wait_until(lambda: mode_on_disk(bar) == "auto", what="the mode is written")
    wait_until(lambda: not bar.popups(), what="the menu closes")


@pytest.mark.parametrize("closing", ["Escape", "click", "choice"])
def test_a_letter_typed_after_the_menu_reaches_the_terminal(screen, start_bar, terminal, closing):
    bar = start_bar(visibilityMode="always")
    before = screen.active_window()
    bar.open_menu()
    if closing == "Escape":
        screen.type_key("Escape")
    elif closing == "click":
        # On the terminal: where a click on the desktop leads the keyboard is the window manager's affair.
        screen.click(200, 160)
    else:
        screen.type_key("Down")
        screen.type_key("Return")
    wait_until(lambda: not bar.popups(), what="the menu closes")
    terminal("z")
    wait_until(lambda: screen.active_window() == before, what="the window manager knows of it")


def press_for_menu(bar):
    """Opens the menu and leaves the button pressed; answers the menu's frame."""
    screen = bar.screen
    screen.move_pointer(*bar.pill_center())
    screen.press(RIGHT_BUTTON)
    return bar.opened_menu()


def test_menu_is_chosen_from_in_one_gesture(screen, start_bar):
    bar = start_bar(visibilityMode="always")
    frame = press_for_menu(bar)
    plain = settled(lambda: screen.pixel(frame.x + 12, frame.center_y + 10))
    for offset in (-10, 10):
        screen.move_pointer(frame.center_x, frame.center_y + offset)
        wait_until(lambda: screen.pixel(frame.x + 12, frame.center_y + offset) != plain, what="the row is highlighted")
    wait_until(lambda: screen.pixel(frame.x + 12, frame.center_y - 10) == plain, what="the other is not any more")
    screen.release(RIGHT_BUTTON)
    wait_until(lambda: mode_on_disk(bar) == "auto", what="the mode is written")
    wait_until(lambda: not bar.popups(), what="the menu closes")


def test_menu_closes_when_the_gesture_ends_beside_it(screen, start_bar):
    bar = start_bar(visibilityMode="always")
    frame = press_for_menu(bar)
    plain = settled(lambda: screen.pixel(frame.x + 12, frame.center_y + 10))
    screen.move_pointer(frame.center_x, frame.center_y + 10)
    # Of two moves in one moment a program may see the last alone.
    wait_until(lambda: screen.pixel(frame.x + 12, frame.center_y + 10) != plain, what="the row is highlighted")
    screen.move_pointer(300, 300)
    screen.release(RIGHT_BUTTON)
    wait_until(lambda: not bar.popups(), what="the menu closes")
    assert mode_on_disk(bar) == "always"


def test_menu_stays_when_the_button_is_let_go_at_once(screen, start_bar):
    bar = start_bar(visibilityMode="always")
    press_for_menu(bar)
    screen.release(RIGHT_BUTTON)
    # What that led to comes before what the keyboard leads to.
    for key in ("Down", "Down", "Return"):
        screen.type_key(key)
    wait_until(lambda: mode_on_disk(bar) == "auto", what="the mode is written")


def test_menu_opens_again_at_once(screen, start_bar):
    bar = start_bar()
    for _ in range(3):
        bar.open_menu()
        screen.type_key("Escape")
        wait_until(lambda: not bar.popups(), what="the menu closes")


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
@pytest.mark.parametrize("wreck", [b"", b"{", b"[]", b"\xff\xfe\x00"])
def test_an_unreadable_file_is_kept_beside_the_first_that_is_written(desktop, wreck):
    path = settings_path(desktop)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(wreck)
    bar = Bar(desktop)
    assert bar.is_shown()
    assert path.read_bytes() == wreck
    bar.choose_mode(automatic=True)

    def is_written():
        try:
            return path.read_bytes() != wreck and bar.settings()["visibilityMode"] == "auto"
        except FileNotFoundError:
            # The damaged one has gone aside, and the new one is not yet in its place.
            return False

    wait_until(is_written, what="it is written")
    assert len(bar.settings()) == KEYS
    assert (path.parent / "settings.json.damaged").read_bytes() == wreck


@pytest.mark.only_openbox
@pytest.mark.parametrize("wreck", [b'{"bottomGap": "wide", "enabledWidgets": 3}'])
def test_unreadable_settings_start_the_bar_with_its_defaults(desktop, wreck):
    path = settings_path(desktop)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(wreck)
    bar = Bar(desktop)
    settings = bar.settings()
    assert settings["bottomGap"] == 2
    assert settings["visibilityMode"] == "always"
    assert len(settings) == KEYS
