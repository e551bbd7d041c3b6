"""Where the pill stands and how wide it is, by pixels."""

import pytest

from harness import pill
from harness.waiting import settled, wait_until


@pytest.mark.parametrize("gap", [0, 2, 11])
def test_lower_edge_of_the_pill_is_the_bottom_gap_above_the_screen_edge(screen, start_bar, gap):
    bar = start_bar(bottomGap=gap)
    _, top, _, bottom = bar.pill_edges(gap)
    assert bottom == screen.size[1] - gap
    assert top == bottom - 72


def test_pill_is_centred(screen, start_bar):
    bar = start_bar()
    left, _, right, _ = bar.pill_edges()
    assert abs((left + right) - screen.size[0]) <= 1


def test_panel_is_the_pill_with_its_margins(start_bar):
    bar = start_bar()
    left, top, right, bottom = bar.pill_edges()
    frame = bar.frame()
    assert (frame.y, frame.bottom) == (top - 13, bottom + 13)
    assert abs(frame.x - left) <= 1 and abs(frame.right - right) <= 1


def test_width_follows_the_content(desktop, start_bar):
    widths = []
    for kinds in (["clock"], ["clock", "calendar"], ["clock", "calendar", "month-counter"]):
        bar = start_bar(enabledWidgets=kinds)
        widths.append(bar.frame().width)
        bar.process.stop()
    assert widths == sorted(set(widths)), "each widget makes the bar wider"


def test_panel_is_never_narrower_than_160_points(start_bar):
    bar = start_bar(enabledWidgets=["calendar"])
    assert bar.frame().width == 160


@pytest.mark.display(size=(250, 500))
def test_panel_leaves_16_points_of_a_narrow_screen(screen, start_bar):
    bar = start_bar(enabledWidgets=["clock", "calendar", "month-counter"])
    frame = bar.frame()
    assert frame.width == screen.size[0] - 16
    assert frame.x == 8


@pytest.mark.display(size=(150, 400))
def test_on_the_narrowest_screens_the_upper_clamp_wins(screen, start_bar):
    bar = start_bar(visible=False)
    assert bar.frame().width == screen.size[0] - 16


@pytest.mark.only_openbox
@pytest.mark.display(compositor=False)
def test_without_a_compositor_no_box_shows_around_the_pill(desktop, screen, start_bar):
    bar = start_bar()
    frame = bar.frame()
    surroundings = [
        (frame.center_x, frame.y + 3),
        (frame.x, frame.y + 1),
        (frame.right - 1, frame.y + 1),
        # Outside the round corners.
        (frame.x + 1, frame.y + 14),
        (frame.right - 2, frame.y + 14),
        (frame.center_x, screen.size[1] - 1),
    ]
    assert {screen.pixel(x, y) for x, y in surroundings} == {desktop.wallpaper}
    assert bar.is_pill_visible()


@pytest.mark.only_openbox
@pytest.mark.display(size=(2880, 1800))
def test_at_scale_two_the_panel_is_twice_as_large(start_bar):
    bar = start_bar(scale=2)
    frame = bar.frame()
    assert frame.height == 196
    assert frame.bottom == 1800 + 22
    left, top, right, bottom = bar.pill_edges()
    assert (top, bottom) == (1800 - 148, 1800 - 4)
    assert abs((left + right) - 2880) <= 2


@pytest.mark.only_openbox
@pytest.mark.display(size=(2880, 1800))
def test_at_scale_two_the_edge_of_the_pill_is_one_pixel_sharp(screen, start_bar):
    bar = start_bar(scale=2)
    frame = bar.frame()
    _, top, _, bottom = bar.pill_edges()
    column = screen.picture((int(frame.x) + 80, top - 6, 1, bottom - top + 10))
    levels = [pill.brightness(column.getpixel((0, y))) for y in range(column.height)]
    upper, lower = 6, 6 + bottom - top
    outline_and_fill = levels[upper : upper + 4]
    # The outline is two equal rows, then the fill begins at once; outside, only the soft shadow.
    assert outline_and_fill[0] == outline_and_fill[1] > outline_and_fill[2] == outline_and_fill[3]
    assert levels[upper - 1] - levels[upper] > 3 * abs(levels[upper - 2] - levels[upper - 1]) + 10
    assert levels[lower - 1] == levels[lower - 2]
    assert levels[lower] - levels[lower - 1] > 3 * abs(levels[lower + 1] - levels[lower]) + 10


@pytest.mark.only_openbox
@pytest.mark.display(size=(2880, 1800))
def test_at_scale_two_text_is_drawn_with_twice_the_pixels(screen, start_bar):
    """A picture that was drawn small and blown up repeats every pixel in both directions."""
    bar = start_bar(scale=2)
    left, top, right, bottom = bar.pill_edges()
    picture = screen.picture((left + 40, top + 20, right - left - 80, bottom - top - 40))
    blown_up = picture.resize((picture.width // 2, picture.height // 2), 0).resize(picture.size, 0)
    differing = sum(a != b for a, b in zip(picture.getdata(), blown_up.getdata()))
    assert differing > picture.width


def test_bar_follows_a_resized_screen(desktop, screen, start_bar):
    desktop.set_monitors((0, 0, 1440, 900))
    bar = start_bar()
    desktop.set_monitors((0, 0, 1000, 900))
    wait_until(lambda: abs(bar.frame().center_x - 500) <= 1, what="the bar is centred on the narrower screen")
    settled(bar.frame)
    assert bar.frame().y == bar.shown_top()
