"""What the panel's window says of itself, and where it stands among the others."""

from Xlib import X

from harness.screen import LEFT_BUTTON
from harness.waiting import assert_holds, settled, wait_until

STANDING_STATES = {
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_STICKY",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STATE_SKIP_PAGER",
}
ALL_DESKTOPS = 0xFFFFFFFF


def xprop(desktop, bar, name):
    return desktop.run("xprop", "-id", hex(bar.window.id), name)


def test_panel_is_a_dock_to_the_window_manager(desktop, start_bar):
    bar = start_bar()
    assert "_NET_WM_WINDOW_TYPE_DOCK" in xprop(desktop, bar, "_NET_WM_WINDOW_TYPE")


def test_panel_stands_above_on_all_desktops_and_in_no_taskbar(desktop, start_bar):
    bar = start_bar()
    states = xprop(desktop, bar, "_NET_WM_STATE")
    assert {state for state in STANDING_STATES if state in states} == STANDING_STATES
    assert str(ALL_DESKTOPS) in xprop(desktop, bar, "_NET_WM_DESKTOP")


def test_panel_carries_its_process_id(desktop, start_bar):
    bar = start_bar()
    assert xprop(desktop, bar, "_NET_WM_PID").split()[-1] == str(bar.process.pid)


def test_panel_reserves_no_screen_space(screen, start_bar):
    bar = start_bar()
    assert not any(screen.property_values(bar.window, "_NET_WM_STRUT_PARTIAL") or [])


def test_showing_the_panel_takes_no_focus(screen, start_bar, open_client):
    client = open_client()
    client.forget()
    start_bar()
    assert client.is_focused()
    assert not client.events(X.FocusOut)


def test_a_click_on_the_bar_leaves_the_focused_window_focused(screen, start_bar, open_client):
    client = open_client()
    bar = start_bar()
    client.forget()
    active = screen.active_window()
    screen.click(*bar.pill_center(), LEFT_BUTTON)
    assert_holds(lambda: screen.active_window() == active, 0.4, "the active window changed")
    assert not client.presses()
    assert client.is_focused()


def test_the_menu_gives_the_focus_back_to_the_window_that_had_it(screen, start_bar, open_client):
    client = open_client()
    bar = start_bar()
    client.forget()
    bar.open_menu()
    screen.type_key("Escape")
    wait_until(lambda: not bar.popups(), what="the menu closes")
    wait_until(client.is_focused, what="the window has the focus again")
    assert not client.presses()


def test_a_click_on_the_transparent_margin_reaches_the_window_below(screen, start_bar, open_client):
    client = open_client((100, 400, 1200, 480))
    bar = start_bar()
    frame = bar.frame()
    client.forget()
    screen.click(frame.center_x, frame.y + 4)
    wait_until(lambda: len(client.presses()) == 1, what="the client gets the click")


def test_a_click_on_the_pill_does_not_reach_the_window_below(screen, start_bar, open_client):
    client = open_client((100, 400, 1200, 480))
    bar = start_bar()
    client.forget()
    screen.click(*bar.pill_center())
    assert_holds(lambda: not client.presses(), 0.3, "the click fell through the pill")


def test_input_region_is_the_pill(screen, start_bar):
    bar = start_bar()
    frame = bar.frame()
    top = min(y for _, y, _, _ in screen.input_rectangles(bar.window))
    bottom = max(y + height for _, y, _, height in screen.input_rectangles(bar.window))
    left = min(x for x, _, _, _ in screen.input_rectangles(bar.window))
    right = max(x + width for x, _, width, _ in screen.input_rectangles(bar.window))
    assert (left, top, right, bottom) == (0, 13, frame.width, 85)


def test_a_window_raised_over_the_place_of_the_bar_stays_below_it(screen, start_bar, open_client):
    bar = start_bar()
    client = open_client((300, 500, 900, 380))
    client.raise_to_top()
    client.activate()
    wait_until(lambda: screen.is_above(bar.window, client.window), what="the bar is above")
    # The compositor shows it with its next frame.
    assert settled(bar.is_pill_visible, timeout=1.0, rounds=10), "the bar comes back within a second"
    assert_holds(lambda: bar.is_pill_visible(), 0.5, "the raised window covers the bar")
    assert screen.is_above(bar.window, client.window)


def test_bar_stays_above_a_window_that_opens_later_and_asks_to_be_above(screen, start_bar, open_client):
    bar = start_bar()
    client = open_client((300, 500, 900, 380))
    screen.ask_window_manager(client.window, "_NET_WM_STATE", [1, screen.atom("_NET_WM_STATE_ABOVE"), 0, 1])
    wait_until(lambda: "_NET_WM_STATE_ABOVE" in screen.atom_names(client.window, "_NET_WM_STATE"))
    # The window manager raises it after that, the bar follows, and the compositor shows it.
    assert settled(bar.is_pill_visible, timeout=1.0, rounds=10), "the bar comes back within a second"
    assert_holds(lambda: bar.is_pill_visible(), 0.5, "the raised window covers the bar")
