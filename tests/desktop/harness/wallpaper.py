"""A wallpaper to be looked at, rather than measured against."""

from PIL import Image

DUSK = ((46, 66, 110), (226, 146, 120), (250, 214, 165))
COARSE = 64


def gradient(size, colors=DUSK):
    """A soft diagonal blend of three colours."""
    coarse = Image.new("RGB", (COARSE, COARSE))
    for x in range(COARSE):
        for y in range(COARSE):
            coarse.putpixel((x, y), _blend(colors, (0.25 * x + 0.75 * y) / (COARSE - 1)))
    return coarse.resize(size, Image.Resampling.BICUBIC)


def _blend(colors, position):
    first, second, share = (colors[0], colors[1], position * 2) if position < 0.5 else (colors[1], colors[2], position * 2 - 1)
    return tuple(round(a + (b - a) * share) for a, b in zip(first, second))
