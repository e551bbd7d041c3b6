"""Applications in the bar, touched by a real pointer."""

import time

import pytest
from PIL import Image
from Xlib import X

from harness import icons as applications
from harness.drop import DropWindow, FileDrag
from harness.file_manager import MAGENTA, is_like, place_in_file_manager
from harness.icons import BLUE, GREEN, RED, Icons
from harness.waiting import wait_until

REORDER = "app.moorline.Moorline.reorder"


@pytest.fixture
def show_icons(desktop, start_bar):
    """Starts a bar of nothing but these shortcuts."""

    def start(*shortcuts, widgets=("app-shortcut",), count=None, **options):
        bar = start_bar(enabledWidgets=list(widgets), appShortcuts=list(shortcuts), **options)
        icons = Icons(bar, len(shortcuts) if count is None else count)
        return bar, icons

    return start


@pytest.fixture
def three(desktop, show_icons):
    """A red, a green and a blue application that do nothing."""

    def start(**options):
        colors = {"red": RED, "green": GREEN, "blue": BLUE}
        shortcuts = [applications.install(desktop, name, color, "/bin/true %F") for name, color in colors.items()]
        bar, icons = show_icons(*shortcuts, **options)
        wait_until(lambda: order_on_screen(icons) == [RED, GREEN, BLUE], what="the icons are drawn")
        return bar, icons

    return start


def order_on_screen(icons, count=3):
    seen = [icons.color(index) for index in range(count)]
    return [next((known for known in (RED, GREEN, BLUE) if is_like(color, known)), None) for color in seen]


def pinned(bar):
    return [shortcut["name"] for shortcut in bar.settings()["appShortcuts"]]


def terminals(screen):
    return list(screen.mapped_windows_of_class("xterm"))


@pytest.mark.parametrize("scale", [1, 2])
def test_icons_are_drawn_in_their_own_size(three, scale):
    bar, icons = three(scale=scale)
    x, y = icons.place(1)
    half = applications.ICON * scale // 2
    for dx, dy in ((-half, 0), (half - 1, 0), (0, -half), (0, half - 1)):
        assert is_like(bar.screen.pixel(x + dx, y + dy), GREEN)
    for dx, dy in ((-half - 1, 0), (half, 0), (0, -half - 1), (0, half)):
        assert max(bar.screen.pixel(x + dx, y + dy)) < 92


def test_a_double_click_starts_the_program_once_and_its_dot_comes_and_goes(desktop, screen, show_icons):
    xterm = applications.install(desktop, "xterm", RED, "xterm", StartupWMClass="XTerm")
    _, icons = show_icons(xterm)
    wait_until(lambda: is_like(icons.color(0), RED), what="the icon is drawn")
    assert max(icons.dot_color(0)) < 92
    for _ in range(2):
        icons.click(0)
    window = wait_until(lambda: terminals(screen), timeout=10, what="the terminal is there")[0]
    wait_until(lambda: min(icons.dot_color(0)) > 120, what="the dot is there")
    time.sleep(1.5)
    assert len(terminals(screen)) == 1
    screen.ask_window_manager(window, "_NET_CLOSE_WINDOW", [X.CurrentTime, 2])
    wait_until(lambda: not terminals(screen), what="the terminal closes")
    wait_until(lambda: max(icons.dot_color(0)) < 92, timeout=6, what="the dot goes")


def test_a_click_on_what_runs_brings_it_forward(desktop, screen, show_icons, open_client):
    xterm = applications.install(desktop, "xterm", RED, "xterm", StartupWMClass="XTerm")
    _, icons = show_icons(xterm)
    icons.click(0)
    window = wait_until(lambda: terminals(screen), timeout=10, what="the terminal is there")[0]
    wait_until(lambda: min(icons.dot_color(0)) > 120, what="the dot is there")
    other = open_client()
    # Sooner it would be the second half of a double click.
    time.sleep(0.6)
    icons.click(0)
    wait_until(lambda: screen.active_window() == window.id, what="the terminal is the active window")
    wait_until(lambda: not other.is_focused(), what="the other window loses the keyboard")
    assert len(terminals(screen)) == 1


def test_the_menu_removes_the_icon(screen, three):
    bar, icons = three()
    frame = bar.open_menu(*icons.place(1))
    assert abs(frame.center_x - icons.place(1)[0]) <= 1
    for key in ("Down", "Down", "Return"):
        screen.type_key(key)
    wait_until(lambda: pinned(bar) == ["Red", "Blue"], what="the application is unpinned")
    two = Icons(bar, 2)
    wait_until(lambda: order_on_screen(two, 2) == [RED, BLUE], what="its icon is gone")


def test_a_running_application_quits_from_its_menu(desktop, screen, show_icons):
    xterm = applications.install(desktop, "xterm", RED, "xterm", StartupWMClass="XTerm")
    bar, icons = show_icons(xterm)
    icons.click(0)
    wait_until(lambda: terminals(screen), timeout=10, what="the terminal is there")
    wait_until(lambda: min(icons.dot_color(0)) > 120, what="the dot is there")
    bar.open_menu(*icons.place(0))
    for key in ("Up", "Return"):
        screen.type_key(key)
    wait_until(lambda: not terminals(screen), what="the terminal quits")


def test_an_application_is_pinned_from_the_menu_of_its_recent_icon(desktop, screen, show_icons):
    applications.install(desktop, "xterm", RED, "xterm", StartupWMClass="XTerm")
    bar, icons = show_icons(widgets=("app-shortcut", "recent-apps"), count=1)
    desktop.start("terminal", "xterm")
    window = wait_until(lambda: terminals(screen), timeout=10, what="the terminal is there")[0]
    screen.ask_window_manager(window, "_NET_ACTIVE_WINDOW", [2, 0, 0])
    wait_until(lambda: is_like(icons.color(0), RED), timeout=10, what="its icon is among the recent ones")
    bar.open_menu(*icons.place(0))
    for key in ("Down", "Down", "Return"):
        screen.type_key(key)
    wait_until(lambda: pinned(bar) == ["Xterm"], what="the application is pinned")
    wait_until(lambda: is_like(icons.color(0), RED), what="its icon stands among the pinned ones")


@pytest.mark.parametrize("scale", [1, 2])
def test_an_icon_that_is_dragged_over_another_takes_its_place(screen, three, scale):
    bar, icons = three(scale=scale)
    icons.take(0)
    icons.lead_to(*icons.place(2))
    # The green and the blue one made room; the red one is carried, and faint where it belongs.
    wait_until(lambda: order_on_screen(icons)[:2] == [GREEN, BLUE], what="the others make room")
    wait_until(lambda: pinned(bar) == ["Green", "Blue", "Red"], what="the order is written")
    screen.release()
    wait_until(lambda: order_on_screen(icons) == [GREEN, BLUE, RED], what="the icons are in order")
    assert not bar.popups()


def test_an_icon_that_is_dragged_off_the_bar_is_gone(screen, three):
    bar, icons = three()
    icons.take(1)
    icons.lead_to(icons.place(1)[0], bar.shown_top() - 70)
    screen.release()
    wait_until(lambda: pinned(bar) == ["Red", "Blue"], what="the application is unpinned")
    two = Icons(bar, 2)
    wait_until(lambda: order_on_screen(two, 2) == [RED, BLUE], what="its icon is gone")


def test_an_icon_that_is_let_go_just_above_the_bar_stays(screen, three):
    bar, icons = three()
    icons.take(1)
    icons.lead_to(icons.place(1)[0], bar.shown_top() - 50)
    screen.release()
    time.sleep(0.5)
    assert pinned(bar) == ["Red", "Green", "Blue"]
    assert order_on_screen(icons) == [RED, GREEN, BLUE]


@pytest.mark.parametrize("off_the_bar", [False, True])
def test_escape_puts_everything_back_wherever_the_button_is_let_go(screen, three, open_client, off_the_bar):
    bar, icons = three()
    client = open_client()
    icons.take(0)
    icons.lead_to(*icons.place(2))
    wait_until(lambda: order_on_screen(icons)[:2] == [GREEN, BLUE], what="the others make room")
    wait_until(lambda: pinned(bar) == ["Green", "Blue", "Red"], what="the order is written")
    screen.type_key("Escape")
    wait_until(lambda: order_on_screen(icons) == [RED, GREEN, BLUE], what="everything is where it was")
    if off_the_bar:
        icons.lead_to(icons.place(1)[0], bar.shown_top() - 200)
    screen.release()
    time.sleep(0.5)
    assert pinned(bar) == ["Red", "Green", "Blue"]
    assert order_on_screen(icons) == [RED, GREEN, BLUE]
    assert client.is_focused()


def test_other_programs_learn_nothing_of_an_icon_that_is_dragged(desktop, screen, three):
    bar, icons = three()
    other = desktop.own(DropWindow(desktop, (300, 200, 200, 150)))
    icons.take(0)
    icons.lead_to(400, 275)
    assert other.offered() == [REORDER]
    assert other.data(REORDER) == b""
    screen.release()
    # It is off the bar all the same.
    wait_until(lambda: pinned(bar) == ["Green", "Blue"], what="the application is unpinned")


def test_files_dropped_on_an_icon_are_opened_there(desktop, show_icons):
    opened = desktop.home / "opened"
    editor = applications.script(desktop, "editor", f"""\
        for name in "$@"; do printf '%s\\0' "$name"; done >{opened}.part
        mv {opened}.part {opened}
    """)
    bar, icons = show_icons(applications.install(desktop, "editor", RED, f"{editor} %F"))
    wait_until(lambda: is_like(icons.color(0), RED), what="the icon is drawn")
    names = [b"plain.txt", b"with a space", b"100%", b"two\nlines", b"caf\xe9"]
    folder = bytes(desktop.home)
    for name in names:
        open(folder + b"/" + name, "w").close()
    urls = ["file://" + "".join(f"%{byte:02X}" for byte in folder + b"/" + name).replace("%2F", "/") for name in names]
    desktop.own(FileDrag(desktop, bar.process)).drop(urls, bar.window, *icons.place(0))
    wait_until(opened.exists, what="the editor is started")
    assert opened.read_bytes().split(b"\0")[:-1] == [folder + b"/" + name for name in names]
    assert not bar.settings()["pinnedItems"]


def test_a_file_from_the_file_manager_is_opened_where_it_is_dropped(desktop, show_icons):
    opened = desktop.home / "opened"
    viewer = applications.script(desktop, "viewer", f"""\
        printf '%s' "$*" >{opened}.part
        mv {opened}.part {opened}
    """)
    _, icons = show_icons(applications.install(desktop, "viewer", RED, f"{viewer} %F"))
    wait_until(lambda: is_like(icons.color(0), RED), what="the icon is drawn")
    folder = desktop.home / "pictures"
    folder.mkdir()
    # Its own picture tells where it is to be seen in the window.
    Image.new("RGB", (128, 128), MAGENTA).save(folder / "a picture.png")
    icons.drag_onto(0, place_in_file_manager(desktop, folder))
    wait_until(opened.exists, what="the viewer is started")
    assert opened.read_text() == str(folder / "a picture.png")
    assert (folder / "a picture.png").exists()


def test_an_application_that_takes_no_files_refuses_them(desktop, show_icons):
    started = desktop.home / "started"
    program = applications.script(desktop, "program", f"touch {started}")
    bar, icons = show_icons(applications.install(desktop, "program", RED, program))
    wait_until(lambda: is_like(icons.color(0), RED), what="the icon is drawn")
    (desktop.home / "file").touch()
    drag = desktop.own(FileDrag(desktop, bar.process))
    assert not drag.hold([(desktop.home / "file").as_uri()], bar.window, *icons.place(0))
    drag.let_go(bar.window)
    wait_until(
        lambda: any("Moorline: Program refused the drop: " in line for line in bar.log_lines()), what="that is logged"
    )
    assert not started.exists()
    assert not bar.settings()["pinnedItems"]
