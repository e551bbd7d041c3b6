"""Finds the bar's pill by its colour."""

# The pill is near black at nine tenths over a light wallpaper, its outline a little lighter; wallpaper stays brighter than
# this even in the middle of the pill's shadow.
DARKEST_WALLPAPER = 92


def is_pill(color):
    return max(color) < DARKEST_WALLPAPER


def edges(picture, column, row):
    """Left, top, right and bottom of the pill in a picture: the first and one past the last dark pixel along a row and a
    column that cross it. None when it is not there."""
    width, height = picture.size
    across = [x for x in range(width) if is_pill(picture.getpixel((x, row)))]
    down = [y for y in range(height) if is_pill(picture.getpixel((column, y)))]
    if not across or not down:
        return None
    return across[0], down[0], across[-1] + 1, down[-1] + 1


def brightness(color):
    return sum(color) / 3
