"""One connection to the X server: what is on the screen, and a hand on the pointer."""

from PIL import Image
from Xlib import X, XK, display, error
from Xlib.ext import shape, xtest
from Xlib.protocol import event

from .waiting import wait_until

LEFT_BUTTON = 1
RIGHT_BUTTON = 3


class Frame(tuple):
    """x, y, width, height in pixels of the root window, from its top left corner."""

    def __new__(cls, x, y, width, height):
        return super().__new__(cls, (x, y, width, height))

    x = property(lambda self: self[0])
    y = property(lambda self: self[1])
    width = property(lambda self: self[2])
    height = property(lambda self: self[3])
    right = property(lambda self: self[0] + self[2])
    bottom = property(lambda self: self[1] + self[3])
    center_x = property(lambda self: self[0] + self[2] / 2)
    center_y = property(lambda self: self[1] + self[3] / 2)


def _gone_is(absent):
    """Windows come and go while they are looked at; one that went answers `absent`."""

    def decorate(method):
        def guarded(*arguments, **named):
            try:
                return method(*arguments, **named)
            except (error.BadWindow, error.BadDrawable, error.BadMatch):
                return absent

        return guarded

    return decorate


class Screen:
    def __init__(self, name):
        self.display = display.Display(name)
        self.display.set_error_handler(lambda *_: None)
        self.root = self.display.screen().root
        self._retained = []

    def close(self):
        self.display.close()

    def atom(self, name):
        return self.display.intern_atom(name)

    @property
    def size(self):
        geometry = self.root.get_geometry()
        return geometry.width, geometry.height

    # Windows

    @_gone_is([])
    def children(self, window):
        return list(window.query_tree().children)

    def window(self, identifier):
        return self.display.create_resource_object("window", identifier)

    def windows(self):
        """Every window there is, parents before children."""
        pending = self.children(self.root)
        while pending:
            window = pending.pop(0)
            yield window
            pending.extend(self.children(window))

    @_gone_is(None)
    def window_class(self, window):
        return window.get_wm_class()

    @_gone_is(None)
    def property_values(self, window, name):
        """The values of a property, or None when the window has none of that name."""
        answer = window.get_full_property(self.atom(name), X.AnyPropertyType)
        return None if answer is None else list(answer.value)

    def atom_names(self, window, name):
        values = self.property_values(window, name) or []
        return [self.display.get_atom_name(value) for value in values]

    @_gone_is(False)
    def is_mapped(self, window):
        return window.get_attributes().map_state == X.IsViewable

    @_gone_is(False)
    def is_popup(self, window):
        attributes = window.get_attributes()
        # An icon that a tray has taken in is none.
        is_outermost = window.query_tree().parent == self.root
        return is_outermost and attributes.override_redirect and attributes.win_class == X.InputOutput

    @_gone_is(None)
    def frame(self, window):
        geometry = window.get_geometry()
        origin = self.root.translate_coords(window, 0, 0)
        return Frame(origin.x, origin.y, geometry.width, geometry.height)

    @_gone_is(None)
    def outermost(self, window):
        """The child of the root window that holds this window: its frame, or itself."""
        while True:
            parent = window.query_tree().parent
            if parent == self.root:
                return window
            window = parent

    def is_above(self, upper, lower):
        stack = [window.id for window in self.children(self.root)]
        return stack.index(self.outermost(upper).id) > stack.index(self.outermost(lower).id)

    def mapped_windows_of_class(self, name):
        for window in self.windows():
            names = self.window_class(window)
            if names and name.lower() in (part.lower() for part in names) and self.is_mapped(window):
                yield window

    def shape_rectangles(self, window, kind):
        """The rectangles of a window's shape, as (x, y, width, height)."""
        answer = window.shape_get_rectangles(kind)
        return [(r.x, r.y, r.width, r.height) for r in answer.rectangles]

    def input_rectangles(self, window):
        return self.shape_rectangles(window, shape.SK.Input)

    def bounding_rectangles(self, window):
        return self.shape_rectangles(window, shape.SK.Bounding)

    def active_window(self):
        values = self.property_values(self.root, "_NET_ACTIVE_WINDOW")
        return values[0] if values else None

    def focused_window(self):
        focus = self.display.get_input_focus().focus
        return focus.id if hasattr(focus, "id") else focus

    def ask_window_manager(self, window, message, values):
        """Sends a client message about `window` to the root window, as pagers and applications do."""
        data = (list(values) + [0] * 5)[:5]
        note = event.ClientMessage(window=window, client_type=self.atom(message), data=(32, data))
        self.root.send_event(note, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.flush()

    # Pixels

    def picture(self, frame=None):
        """What is to be seen of a part of the screen, as an RGB image."""
        x, y, width, height = frame or (0, 0, *self.size)
        raw = self.root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF)
        return Image.frombytes("RGB", (width, height), raw.data, "raw", "BGRX")

    def pixel(self, x, y):
        return self.picture((int(x), int(y), 1, 1)).getpixel((0, 0))

    def set_wallpaper(self, image):
        """Paints the root window and announces the pixmap the way compositors look for it."""
        width, height = image.size
        pixmap = self.root.create_pixmap(width, height, self.display.screen().root_depth)
        context = pixmap.create_gc()
        pixmap.put_pil_image(context, 0, 0, image)
        self.root.change_attributes(background_pixmap=pixmap)
        self.root.clear_area()
        for name in ("_XROOTPMAP_ID", "ESETROOT_PMAP_ID"):
            self.root.change_property(self.atom(name), self.atom("PIXMAP"), 32, [pixmap.id])
        self.display.sync()
        self._retained.append(pixmap)

    # Pointer and keyboard

    def move_pointer(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=int(x), y=int(y))
        self.display.sync()
        wait_until(lambda: self.pointer() == (int(x), int(y)), what="the pointer arrives")

    def pointer(self):
        answer = self.root.query_pointer()
        return answer.root_x, answer.root_y

    def press(self, button=LEFT_BUTTON):
        xtest.fake_input(self.display, X.ButtonPress, button)
        self.display.sync()

    def release(self, button=LEFT_BUTTON):
        xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    def click(self, x, y, button=LEFT_BUTTON):
        self.move_pointer(x, y)
        self.press(button)
        self.release(button)

    def type_key(self, *names):
        """Presses keys by the names of their symbols, such as "x", "Escape" or "Control_L", one after the other, and
        lets them go in the other order."""
        codes = [self.display.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
        for code in codes:
            xtest.fake_input(self.display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()
