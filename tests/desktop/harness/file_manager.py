"""A file as the file manager shows it."""

from .waiting import wait_until

MAGENTA = (250, 10, 240)


def is_like(color, other):
    return all(abs(one - two) < 24 for one, two in zip(color, other))


def text_picture(color=MAGENTA, size=128):
    """A picture that is a text as well, so that editors open it and file managers show it."""
    row = '"' + "a" * size + '"'
    fill = "#%02x%02x%02x" % color
    return f'/* XPM */\nstatic char *picture[] = {{\n"{size} {size} 1 1",\n"a c {fill}",\n' + ",\n".join([row] * size) + "\n};\n"


COMMANDS = {"pcmanfm": ["pcmanfm", "--no-desktop"], "thunar": ["thunar"]}


def place_in_file_manager(desktop, folder, color=MAGENTA, manager="pcmanfm"):
    """Shows a folder with a file manager. Answers a point of the display on the file whose picture has that colour."""
    screen = desktop.screen
    desktop.start("files", *COMMANDS[manager], folder)
    window = wait_until(lambda: next(screen.mapped_windows_of_class(manager), None), timeout=30, what="the window")
    return wait_until(lambda: _place_of(screen, window, color), timeout=15, what="the picture is shown")


def _place_of(screen, window, color):
    """A point of the window in the middle of what has that colour."""
    frame = screen.frame(window)
    picture = screen.picture(frame)
    found = [
        (x, y)
        for x in range(0, frame.width, 4)
        for y in range(0, frame.height, 4)
        if is_like(picture.getpixel((x, y)), color)
    ]
    if len(found) < 20:
        return None
    x, y = found[len(found) // 2]
    return frame.x + x, frame.y + y
