"""A wallpaper to be looked at, rather than measured against."""

from PIL import Image

DUSK = ((46, 66, 110), (226, 146, 120), (250, 214, 165))


def gradient(size, colors=DUSK):
    """A soft blend of three colours from the top of the screen to its bottom."""
    width, height = size
    column = Image.new("RGB", (1, height))
    for y in range(height):
        column.putpixel((0, y), _blend(colors, y / (height - 1)))
    return column.resize((width, height))


def _blend(colors, position):
    upper = position < 0.5
    first, second = colors[:2] if upper else colors[1:]
    share = position * 2 if upper else position * 2 - 1
    return tuple(round(a + (b - a) * share) for a, b in zip(first, second))
