"""Files in the bar: pinned ones, the Downloads and the Trash, touched by a real pointer."""

import os
import time

import dbus
import dbus.bus
import pytest
from PIL import Image

from harness import icons as applications
from harness.drop import DropWindow, FileDrag
from harness.file_manager import MAGENTA, is_like, place_in_file_manager
from harness.icons import BLUE, GREEN, RED, Icons
from harness.waiting import assert_holds, settled, wait_until

# What the session's theme has for what the tests look at.
THEME = ".local/share/icons/Adwaita"
PICTURES = {"places/user-trash": RED, "places/user-trash-full": BLUE, "mimetypes/text-x-generic": GREEN}
FILE_MANAGERS = ["pcmanfm", pytest.param("thunar", marks=pytest.mark.large)]
ROW_HEIGHT = 30
PADDING = 12
GAP = 6


@pytest.fixture
def show_files(desktop, start_bar):
    """Starts a bar of nothing but files: those that are pinned, then the Downloads and the Trash."""

    for name, color in PICTURES.items():
        for size in (22, 48, 96):
            path = desktop.home / f"{THEME}/{size}x{size}/{name}.png"
            path.parent.mkdir(parents=True, exist_ok=True)
            Image.new("RGB", (size, size), color).save(path)
    folders = [f"{size}x{size}/{kind}" for size in (22, 48, 96) for kind in ("places", "mimetypes")]
    groups = "".join(f"[{folder}]\nSize={folder.split('x')[0]}\nType=Fixed\n" for folder in folders)
    (desktop.home / f"{THEME}/index.theme").write_text(
        f"[Icon Theme]\nName=Test\nInherits=hicolor\nDirectories={','.join(folders)}\n{groups}"
    )

    def start(pinned=(), downloads=False, trash=False, **options):
        bar = start_bar(
            enabledWidgets=["pinned-items"],
            pinnedItems=[{"path": str(path), "name": path.name} for path in pinned],
            showDownloadsFolder=downloads,
            showTrash=trash,
            **options,
        )
        icons = Icons(bar, len(pinned) + downloads + trash)
        wait_until(icons.fills_the_pill, what="the row is laid out")
        return bar, icons

    return start


def pins(bar):
    return [item["path"] for item in bar.settings()["pinnedItems"]]


def download(desktop, *names):
    """Puts files into the Downloads, the last one the newest."""
    folder = desktop.home / "Downloads"
    folder.mkdir(exist_ok=True)
    for name in names:
        (folder / name).write_text("words")
        # Files that come in the same tick of the file system's clock have no order.
        time.sleep(0.02)
    return folder


def open_stack(bar, icons, index=0):
    icons.click(index)
    popup = wait_until(lambda: next(iter(bar.popups()), None), what="the stack opens")
    wait_until(lambda: bar.screen.focused_window() == popup.id, what="the stack has the keyboard")
    return settled(lambda: bar.screen.frame(popup))


def row_place(frame, index, scale=1):
    return int(frame.center_x), int(frame.y + (PADDING + ROW_HEIGHT * (index + 0.5)) * scale)


def carry_first_download(bar, icons, place, patience=0):
    """Takes the newest of the Downloads, holds it for a while in its place, and leads it to a point of the display."""
    x, y = row_place(open_stack(bar, icons), 0)
    bar.screen.move_pointer(x, y)
    bar.screen.press()
    time.sleep(patience)
    icons.lead(x, y, x + 14, y)
    icons.lead_to(*place)


def opener(desktop):
    """A program that opens texts; answers where it says which."""
    opened = desktop.home / "opened"
    program = applications.script(desktop, "reader", f"""\
        printf '%s' "$*" >{opened}.part
        mv {opened}.part {opened}
    """)
    applications.install(desktop, "reader", BLUE, f"{program} %F", MimeType="text/plain;")
    choose(desktop, "text/plain", "reader")
    return opened


def choose(desktop, kind, entry):
    """Makes an application the user's own choice, whatever else is installed."""
    (desktop.config_home / "mimeapps.list").write_text(f"[Default Applications]\n{kind}={entry}.desktop\n")


def is_trashed(desktop, name):
    trash = desktop.home / ".local/share/Trash"
    return (trash / "files" / name).exists() and (trash / f"info/{name}.trashinfo").exists()


def test_a_click_opens_a_pinned_file(desktop, show_files):
    opened = opener(desktop)
    file = desktop.home / "a letter.txt"
    file.write_text("words")
    _, icons = show_files([file])
    wait_until(lambda: is_like(icons.color(0), GREEN), what="the icon is drawn")
    icons.click(0)
    wait_until(opened.exists, what="the file is opened")
    assert opened.read_text() == str(file)


def test_a_pinned_file_that_comes_back_comes_alive(desktop, show_files):
    place = desktop.home / "folder/picture.png"
    bar, icons = show_files([place])
    wait_until(lambda: is_like(icons.color(0), GREEN), what="the plain icon is drawn")
    picture = desktop.home / f"{THEME}/48x48/mimetypes/image-x-generic.png"
    Image.new("RGB", (48, 48), BLUE).save(picture)
    place.parent.mkdir()
    Image.new("RGB", (8, 8)).save(place)
    wait_until(lambda: is_like(icons.color(0), BLUE), timeout=10, what="the icon is that of a picture")
    assert pins(bar) == [str(place)]


def test_a_pinned_file_that_is_dragged_over_another_takes_its_place(desktop, show_files):
    files = [desktop.home / name for name in ("1", "2", "3")]
    bar, icons = show_files(files)
    icons.take(0)
    icons.lead_to(*icons.place(2))
    wait_until(lambda: pins(bar) == [str(files[1]), str(files[2]), str(files[0])], what="the order is written")
    icons.screen.release()
    assert_holds(lambda: pins(bar) == [str(files[1]), str(files[2]), str(files[0])], 0.3, "the order stays")


def test_files_dropped_on_a_pinned_one_are_pinned(desktop, show_files):
    first, second = desktop.home / "first", desktop.home / "100% second"
    second.touch()
    bar, icons = show_files([first])
    desktop.own(FileDrag(desktop, bar.process)).drop([second.as_uri()], bar.window, *icons.place(0))
    wait_until(lambda: pins(bar) == [str(first), str(second)], what="the file is pinned")
    assert second.exists()


@pytest.mark.parametrize("scale", [1, 2])
def test_the_downloads_are_listed(desktop, screen, show_files, scale):
    download(desktop, "older.txt", "newer.txt")
    bar, icons = show_files(downloads=True, trash=True, scale=scale)
    _, pill_top, _, _ = bar.pill_edges()
    frame = open_stack(bar, icons)
    assert frame.bottom == pill_top - GAP * scale
    for index in range(2):
        x = frame.x + (PADDING + 6 + 11) * scale
        y = row_place(frame, index, scale)[1]
        wait_until(lambda: is_like(screen.pixel(x, y), GREEN), what="the icons of the files are drawn")
    # Two rows, a line and the way into the folder.
    assert frame.height < 140 * scale
    screen.type_key("Escape")
    wait_until(lambda: not bar.popups(), what="the stack closes")


def test_the_newest_download_is_opened_by_the_keyboard(desktop, screen, show_files):
    opened = opener(desktop)
    folder = download(desktop, "older.txt", "newer.txt")
    bar, icons = show_files(downloads=True)
    open_stack(bar, icons)
    for key in ("Down", "Return"):
        screen.type_key(key)
    wait_until(opened.exists, what="the file is opened")
    assert opened.read_text() == str(folder / "newer.txt")
    wait_until(lambda: not bar.popups(), what="the stack closes")


def test_a_download_is_opened_by_a_click(desktop, screen, show_files):
    opened = opener(desktop)
    folder = download(desktop, "older.txt", "newer.txt")
    bar, icons = show_files(downloads=True)
    frame = open_stack(bar, icons)
    screen.click(*row_place(frame, 1))
    wait_until(opened.exists, what="the file is opened")
    assert opened.read_text() == str(folder / "older.txt")
    wait_until(lambda: not bar.popups(), what="the stack closes")


def test_a_click_elsewhere_closes_the_stack(desktop, screen, show_files, open_client):
    download(desktop, "a.txt")
    client = open_client()
    bar, icons = show_files(downloads=True)
    open_stack(bar, icons)
    screen.click(400, 300)
    wait_until(lambda: not bar.popups(), what="the stack closes")
    wait_until(client.is_focused, what="the window has the keyboard")
    # Sooner it would be the second half of a double click.
    time.sleep(0.6)
    open_stack(bar, icons)
    # A second click on its icon closes it as well.
    time.sleep(0.6)
    icons.click(0)
    wait_until(lambda: not bar.popups(), what="the stack closes")


def test_a_download_is_carried_into_another_program_and_stays(desktop, screen, show_files):
    folder = download(desktop, "caf\udce9 100%.txt")
    bar, icons = show_files(downloads=True)
    other = desktop.own(DropWindow(desktop, (300, 200, 200, 150)))
    carry_first_download(bar, icons, (400, 275))
    assert "text/uri-list" in other.offered()
    uri = other.data("text/uri-list").decode().strip()
    assert uri == "file://" + str(folder).replace(" ", "%20") + "/caf%E9%20100%25.txt"
    screen.release()
    assert os.listdir(os.fsencode(folder)) == [b"caf\xe9 100%.txt"]
    assert bar.process.is_running()


@pytest.mark.large
def test_a_program_in_a_sandbox_gets_a_download_from_the_portal(desktop, screen, show_files):
    folder = download(desktop, "a.txt")
    bar, icons = show_files(downloads=True)
    other = desktop.own(DropWindow(desktop, (300, 200, 200, 150)))
    # The portal is started by the question.
    carry_first_download(bar, icons, (400, 275), patience=2)
    assert "application/vnd.portal.filetransfer" in other.offered()
    key = other.data("application/vnd.portal.filetransfer").decode()
    connection = dbus.bus.BusConnection(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
    portal = connection.get_object("org.freedesktop.portal.Documents", "/org/freedesktop/portal/documents")
    retrieve = dbus.Interface(portal, "org.freedesktop.portal.FileTransfer").RetrieveFiles
    # Once as it is held over a program, and once as it is let go there.
    for _ in range(2):
        assert list(retrieve(key, dbus.Dictionary(signature="sv"))) == [str(folder / "a.txt")]
    screen.release()
    connection.close()


def test_a_target_that_says_it_moved_what_it_was_offered_to_copy_moves_nothing(desktop, screen, show_files):
    folder = download(desktop, "a.txt")
    bar, icons = show_files(downloads=True)
    other = desktop.own(DropWindow(desktop, (300, 200, 200, 150), action="XdndActionMove"))
    carry_first_download(bar, icons, (400, 275))
    assert "text/uri-list" in other.offered()
    other.wait_until_accepted(screen)
    screen.release()
    assert other.taken("text/uri-list").decode().strip() == (folder / "a.txt").as_uri()
    assert_holds((folder / "a.txt").exists, 1.0, "the file is gone")
    assert bar.process.is_running()


@pytest.mark.parametrize("manager", FILE_MANAGERS)
def test_a_download_is_carried_into_the_file_manager_as_a_copy(desktop, screen, show_files, manager):
    folder = download(desktop, "a.txt")
    target = desktop.home / "target"
    target.mkdir()
    Image.new("RGB", (128, 128), MAGENTA).save(target / "mark.png")
    place = place_in_file_manager(desktop, target, manager=manager)
    bar, icons = show_files(downloads=True)
    x, y = row_place(open_stack(bar, icons), 0)
    screen.move_pointer(x, y)
    screen.press()
    icons.lead(x, y, x + 14, y)
    # It asks what is held over it, and says what it does with that at the next movement.
    for step in range(5):
        icons.lead_to(place[0] + 200 + 4 * step, place[1] + 120)
        time.sleep(0.2)
    screen.release()
    wait_until((target / "a.txt").exists, timeout=10, what="the file is copied")
    assert (folder / "a.txt").exists()


def test_the_trash_is_full_once_something_is_in_it(desktop, show_files):
    bar, icons = show_files(trash=True)
    wait_until(lambda: is_like(icons.color(0), RED), what="the trash is empty")
    file = desktop.home / "letter"
    file.write_text("words")
    desktop.own(FileDrag(desktop, bar.process)).drop([file.as_uri()], bar.window, *icons.place(0))
    wait_until(lambda: is_like(icons.color(0), BLUE), timeout=3, what="the trash is full")
    assert not file.exists()
    assert is_trashed(desktop, "letter")
    assert not pins(bar)
    # What another program does is seen at the next look.
    (desktop.home / ".local/share/Trash/files/letter").unlink()
    wait_until(lambda: is_like(icons.color(0), RED), timeout=8, what="the trash is empty")


@pytest.mark.parametrize("manager", FILE_MANAGERS)
def test_a_file_from_the_file_manager_is_thrown_away_where_it_is_dropped(desktop, show_files, manager):
    _, icons = show_files(trash=True)
    wait_until(lambda: is_like(icons.color(0), RED), what="the trash is empty")
    folder = desktop.home / "pictures"
    folder.mkdir()
    Image.new("RGB", (128, 128), MAGENTA).save(folder / "a picture.png")
    icons.drag_onto(0, place_in_file_manager(desktop, folder, manager=manager))
    wait_until(lambda: is_trashed(desktop, "a picture.png"), what="the picture is thrown away")
    assert not (folder / "a picture.png").exists()
    wait_until(lambda: is_like(icons.color(0), BLUE), what="the trash is full")


def manager(desktop):
    """A file manager; answers where it says what it was to show."""
    shown = desktop.home / "shown"
    program = applications.script(desktop, "manager", f"""\
        printf '%s' "$*" >{shown}.part
        mv {shown}.part {shown}
    """)
    applications.install(desktop, "manager", BLUE, f"{program} %U", MimeType="inode/directory;", Categories="FileManager;")
    choose(desktop, "inode/directory", "manager")
    return shown


def test_a_click_on_the_trash_shows_what_is_in_it(desktop, show_files):
    shown = manager(desktop)
    _, icons = show_files(trash=True)
    icons.click(0)
    wait_until(shown.exists, what="the file manager is started")
    assert shown.read_text().removeprefix("file://") == str(desktop.home / ".local/share/Trash/files")


@pytest.mark.large
def test_where_the_desktop_serves_the_trash_of_all_volumes_that_is_shown(desktop, show_files):
    shown = manager(desktop)
    bar, icons = show_files(trash=True, environment={"GIO_USE_VFS": None})
    wait_until(lambda: is_like(icons.color(0), RED), what="the trash is empty")
    file = desktop.home / "letter"
    file.write_text("words")
    desktop.own(FileDrag(desktop, bar.process)).drop([file.as_uri()], bar.window, *icons.place(0))
    wait_until(lambda: is_like(icons.color(0), BLUE), timeout=6, what="the trash is full")
    assert is_trashed(desktop, "letter")
    icons.click(0)
    wait_until(shown.exists, what="the file manager is started")
    assert shown.read_text() == "trash:///"


def test_a_thousand_files_are_pinned_at_once(desktop, show_files):
    bar, icons = show_files([desktop.home / "first"])
    files = [desktop.home / f"file {number}" for number in range(1000)]
    desktop.own(FileDrag(desktop, bar.process)).drop([file.as_uri() for file in files], bar.window, *icons.place(0))
    wait_until(lambda: len(pins(bar)) == 1001, timeout=10, what="all of them are pinned")
    assert bar.process.is_running()
