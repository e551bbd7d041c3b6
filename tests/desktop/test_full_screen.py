"""Out of the way of full-screen windows, with a peek for who touches the edge."""

import pytest


from harness.waiting import assert_holds, wait_until

BOTTOM = 899
FILM = (200, 240, 200)


@pytest.fixture
def film(screen, open_client):
    screen.move_pointer(720, 300)
    return open_client(color=FILM, title="Film")


def covers_screen(screen, bar):
    """The full-screen window is to be seen where the pill would be."""
    return screen.pixel(*bar.pill_center()) == FILM and screen.pixel(3, BOTTOM - 1) == FILM


def enter_full_screen(screen, bar, film):
    film.set_full_screen(True)
    bar.wait_until_hidden()
    wait_until(lambda: covers_screen(screen, bar), what="the film covers the screen")


def test_full_screen_window_slides_the_bar_out(screen, start_bar, film):
    bar = start_bar()
    enter_full_screen(screen, bar, film)


def test_touching_the_bottom_edge_peeks_the_bar_above_the_full_screen_window(screen, start_bar, film):
    bar = start_bar()
    enter_full_screen(screen, bar, film)
    screen.move_pointer(720, BOTTOM)
    bar.wait_until_shown()
    wait_until(bar.is_pill_visible, what="the pill shows above the film")
    assert film.is_focused()
    assert screen.is_above(bar.window, film.window)


def test_peeking_bar_takes_clicks_and_leaves_the_film_focused(screen, start_bar, film):
    bar = start_bar()
    enter_full_screen(screen, bar, film)
    screen.move_pointer(720, BOTTOM)
    bar.wait_until_shown()
    wait_until(bar.is_pill_visible, what="the pill shows above the film")
    film.forget()
    screen.click(*bar.pill_center())
    assert_holds(lambda: film.is_focused() and not film.presses(), 0.3, "the click went to the film")


def test_peeking_bar_stays_within_102_points_and_hides_beyond(screen, start_bar, film):
    bar = start_bar()
    enter_full_screen(screen, bar, film)
    screen.move_pointer(720, BOTTOM)
    bar.wait_until_shown()
    screen.move_pointer(720, BOTTOM - 95)
    assert_holds(bar.is_shown, 0.6, "the bar hid within 102 points")
    screen.move_pointer(720, BOTTOM - 108)
    bar.wait_until_hidden()
    wait_until(lambda: covers_screen(screen, bar), what="the film covers the screen again")


def test_bar_returns_when_the_window_leaves_full_screen(screen, start_bar, film):
    bar = start_bar()
    enter_full_screen(screen, bar, film)
    film.set_full_screen(False)
    bar.wait_until_shown()
    wait_until(bar.is_pill_visible, what="the pill is to be seen")
    wait_until(lambda: screen.is_above(bar.window, film.window), what="the bar is above")


def test_bar_returns_when_the_full_screen_window_closes(screen, start_bar, film):
    bar = start_bar()
    enter_full_screen(screen, bar, film)
    film.close()
    bar.wait_until_shown()


def test_bar_started_under_a_full_screen_window_stays_out_of_sight(screen, start_bar, film):
    film.set_full_screen(True)
    bar = start_bar(visible=False)
    bar.wait_until_hidden()
    assert covers_screen(screen, bar)


def test_bar_that_shows_over_full_screen_apps_stays_above_them(screen, start_bar, film):
    bar = start_bar(showOverFullScreenApps=True)
    film.set_full_screen(True)
    wait_until(lambda: screen.pixel(3, BOTTOM - 1) == FILM, what="the film covers the rest of the screen")
    wait_until(bar.is_pill_visible, what="the pill shows above the film")
    assert_holds(lambda: bar.is_shown() and bar.is_pill_visible(), 2.5, "the bar left the film alone")
    assert film.is_focused()
    assert screen.is_above(bar.window, film.window)


def test_bar_over_a_full_screen_window_is_still_a_dock_with_its_process_id(screen, start_bar, film):
    bar = start_bar(showOverFullScreenApps=True)
    film.set_full_screen(True)
    wait_until(lambda: screen.is_above(bar.window, film.window) and bar.is_pill_visible())
    assert screen.atom_names(bar.window, "_NET_WM_WINDOW_TYPE")[0] == "_NET_WM_WINDOW_TYPE_DOCK"
    assert screen.property_values(bar.window, "_NET_WM_PID") == [bar.process.pid]


def test_maximised_window_is_no_reason_to_hide(screen, start_bar, film):
    bar = start_bar()
    names = ("_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_MAXIMIZED_VERT")
    screen.ask_window_manager(film.window, "_NET_WM_STATE", [1, *(screen.atom(name) for name in names), 1])
    wait_until(lambda: screen.frame(film.window).width >= 1430, what="the window is maximised")
    assert_holds(lambda: bar.is_shown() and bar.is_pill_visible(), 2.0, "the bar hid for a maximised window")
