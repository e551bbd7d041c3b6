"""The program's item in the desktop's tray, of the kind on the session bus and of the older kind."""

import socket
import time

import pytest

from harness.bar import Bar
from harness.tray import StatusNotifierTray, older_tray_icons, start_older_tray
from harness.waiting import assert_holds, settled, wait_until

pytestmark = pytest.mark.only_openbox

GREY = (166, 166, 166)
LABELS = ["Dock Settings…", "-", "Always Visible", "-", "Quit Moorline"]
# What a bar takes that waits for nobody, and a machine that is busy besides.
START_LIMIT = 3


def has_ended_well(bar):
    return not bar.process.is_running() and bar.process.exit_status == 0


def is_greyish(color):
    return max(color) - min(color) <= 12 and min(color) > 110


def icon_area(screen):
    """The frame of the one icon in the older tray, once it stays where it is."""
    icon = wait_until(lambda: next(iter(older_tray_icons(screen)), None), what="the tray takes the icon in")
    return settled(lambda: screen.frame(icon))


def grey_pixels(screen, frame):
    picture = screen.picture(frame)
    return sum(is_greyish(color) for color in picture.getdata())


def test_a_tray_shows_the_icon_and_the_menu(desktop, start_bar):
    tray = StatusNotifierTray(desktop)
    start_bar()
    item = tray.item()
    properties = item.properties()
    assert properties["Title"] == "Moorline"
    assert properties["Category"] == "ApplicationStatus"
    assert properties["Status"] == "Active"
    assert properties["IconName"] == ""
    assert properties["ItemIsMenu"]
    assert properties["ToolTip"][2] == "Moorline"
    sides = [int(width) for width, height, _ in properties["IconPixmap"]]
    assert sides == [16, 18, 22, 24, 32, 48, 64]
    for width, height, data in properties["IconPixmap"]:
        pixels = [bytes(data)[at : at + 4] for at in range(0, len(data), 4)]
        assert len(pixels) == width * height
        assert bytes((255, *GREY)) in pixels, "grey lines"
        assert pixels[0][0] == 0, "on nothing"
    assert [line.label for line in item.menu()] == LABELS
    assert item.line("Quit Moorline").properties["shortcut"] == [["Control", "Q"]]
    assert not item.line("Dock Settings…").properties.get("enabled", True)


def test_the_menu_of_a_tray_does_what_it_says(desktop, start_bar):
    tray = StatusNotifierTray(desktop)
    bar = start_bar()
    item = tray.item()
    assert item.line("Always Visible").is_checked
    item.click("Always Visible")
    wait_until(lambda: bar.settings()["visibilityMode"] == "auto", what="the mode changes")
    assert not item.line("Always Visible").is_checked
    bar.choose_mode(automatic=False)
    wait_until(lambda: item.line("Always Visible").is_checked, what="the mark follows what was changed elsewhere")
    item.click("Quit Moorline")
    wait_until(lambda: has_ended_well(bar), what="the bar ends")


def test_the_item_is_in_a_tray_that_comes_late_and_comes_again(desktop, start_bar):
    start_bar()
    tray = StatusNotifierTray(desktop)
    assert tray.item().properties()["Title"] == "Moorline"
    tray.stop()
    tray.start()
    assert tray.item().properties()["Title"] == "Moorline"


def test_a_tray_without_menus_is_given_one(desktop, start_bar):
    tray = StatusNotifierTray(desktop)
    bar = start_bar()
    bar.screen.move_pointer(300, 300)
    tray.item().activate()
    popup = wait_until(lambda: next(iter(bar.popups()), None), what="the menu opens")
    frame = settled(lambda: bar.screen.frame(popup))
    assert frame.x <= 300 <= frame.right and frame.y <= 300 <= frame.bottom + 1
    bar.screen.click(frame.center_x, frame.bottom - 12)
    wait_until(lambda: has_ended_well(bar), what="the bar ends")


def test_the_older_tray_shows_the_icon(desktop, screen, start_bar):
    start_older_tray(desktop)
    start_bar()
    frame = icon_area(screen)
    assert frame.width == frame.height == 20
    wait_until(lambda: grey_pixels(screen, frame) > 30, what="the icon is drawn")
    corner = screen.pixel(frame.x, frame.y)
    assert not is_greyish(corner), "on the panel's own background"


@pytest.mark.display(compositor=False)
def test_the_older_tray_shows_through_without_a_compositor(desktop, screen, start_bar):
    start_older_tray(desktop)
    start_bar(visible=False)
    frame = icon_area(screen)
    wait_until(lambda: grey_pixels(screen, frame) > 30, what="the icon is drawn")
    beside = screen.pixel(frame.right + 20, frame.center_y)
    assert screen.pixel(frame.x, frame.y) == beside, "on the panel's own background"


def test_the_icon_of_the_older_tray_opens_the_menu(desktop, screen, start_bar):
    start_older_tray(desktop)
    bar = start_bar()
    frame = icon_area(screen)
    screen.click(frame.center_x, frame.center_y)
    popup = wait_until(lambda: next(iter(bar.popups()), None), what="the menu opens")
    menu = settled(lambda: screen.frame(popup))
    screen.click(menu.center_x, menu.center_y)
    wait_until(lambda: bar.settings()["visibilityMode"] == "auto", what="the mode changes")
    wait_until(lambda: not bar.popups(), what="the menu closes")
    screen.click(frame.center_x, frame.center_y)
    menu = settled(lambda: screen.frame(wait_until(lambda: next(iter(bar.popups()), None), what="the menu opens")))
    screen.click(menu.center_x, menu.bottom - 12)
    wait_until(lambda: has_ended_well(bar), what="the bar ends")


def test_the_icon_of_the_older_tray_tells_its_name(desktop, screen, start_bar):
    start_older_tray(desktop)
    bar = start_bar()
    frame = icon_area(screen)
    screen.move_pointer(frame.center_x, frame.center_y)
    wait_until(bar.popups, what="the tooltip opens")
    screen.move_pointer(700, 450)
    wait_until(lambda: not bar.popups(), what="the tooltip closes")


def test_an_older_tray_that_comes_again_shows_the_icon_again(desktop, screen, start_bar):
    bar = start_bar()
    start_older_tray(desktop)
    icon_area(screen)
    desktop.stop("older-tray")
    wait_until(lambda: not older_tray_icons(screen), what="the icon goes with its tray")
    start_older_tray(desktop)
    frame = icon_area(screen)
    wait_until(lambda: grey_pixels(screen, frame) > 30, what="the icon is drawn")
    assert bar.process.is_running()


def test_the_item_is_shown_once_where_there_are_two_trays(desktop, screen, start_bar):
    start_older_tray(desktop)
    tray = StatusNotifierTray(desktop)
    start_bar()
    tray.item()
    assert_holds(lambda: not older_tray_icons(screen), 2.5, "the item is in both trays")
    tray.stop()
    icon_area(screen)
    tray.start()
    wait_until(lambda: not older_tray_icons(screen), what="the icon leaves the older tray")


def test_the_item_is_back_when_the_session_bus_is(desktop, start_bar):
    # As systemd gives it, without the identity of the bus.
    address = desktop.environment["DBUS_SESSION_BUS_ADDRESS"].split(",")[0]
    bar = start_bar(environment={"DBUS_SESSION_BUS_ADDRESS": address})
    tray = StatusNotifierTray(desktop)
    tray.item()
    tray.stop()
    desktop.restart_bus()
    tray = StatusNotifierTray(desktop)
    assert tray.item().properties()["Title"] == "Moorline"
    assert bar.process.is_running()


@pytest.mark.parametrize("settings", ["keyfile", "dconf"])
def test_a_session_bus_that_hangs_holds_nothing_up(desktop, settings):
    path = desktop.directory / "silent-bus"
    with socket.socket(socket.AF_UNIX) as bus:
        bus.bind(str(path))
        bus.listen()
        began = time.monotonic()
        bar = Bar(
            desktop,
            {"enabledWidgets": ["clock"], "pinnedItemsIntroduced": True},
            DBUS_SESSION_BUS_ADDRESS=f"unix:path={path}",
            GSETTINGS_BACKEND=settings,
        )
        assert time.monotonic() - began < START_LIMIT
        bus.settimeout(10)
        caller, _ = bus.accept()
        bar.choose_mode(automatic=True)
        wait_until(lambda: bar.settings()["visibilityMode"] == "auto", what="the bar takes a command")
        caller.close()
