"""An application window that writes down what happens to it."""

from Xlib import X, Xutil, display

from .waiting import wait_until

STATE_REMOVE = 0
STATE_ADD = 1
SOURCE_PAGER = 2


class Client:
    """One plain window with its own connection to the display."""

    def __init__(self, desktop, frame, color=(230, 230, 230), title="Client"):
        self.screen = desktop.screen
        self.color = color
        self._display = display.Display(desktop.environment["DISPLAY"])
        self._display.set_error_handler(lambda *_: None)
        self._events = []
        self._own_window = self._create(frame, title)
        self._own_window.map()
        self._display.sync()
        self.window = self.screen.window(self._own_window.id)
        wait_until(lambda: self.screen.is_mapped(self.window), timeout=30, what=f"{title} is mapped")

    def close(self):
        if self._display:
            self._display.close()
            self._display = None

    # What it does

    def activate(self):
        self.screen.ask_window_manager(self.window, "_NET_ACTIVE_WINDOW", [SOURCE_PAGER, X.CurrentTime, 0])
        wait_until(self.is_focused, timeout=30, what="the client is focused")

    def raise_to_top(self):
        self._own_window.configure(stack_mode=X.Above)
        self._display.sync()

    def set_full_screen(self, full_screen):
        state = self.screen.atom("_NET_WM_STATE_FULLSCREEN")
        action = STATE_ADD if full_screen else STATE_REMOVE
        self.screen.ask_window_manager(self.window, "_NET_WM_STATE", [action, state, 0, 1])
        wait_until(
            lambda: ("_NET_WM_STATE_FULLSCREEN" in self.screen.atom_names(self.window, "_NET_WM_STATE")) == full_screen,
            what="the client changes its full-screen state",
        )

    # What it saw

    def is_focused(self):
        return self.screen.focused_window() == self.window.id

    def events(self, kind):
        """Every event of that kind since the window was made, or since forget()."""
        self._display.sync()
        while self._display.pending_events():
            self._events.append(self._display.next_event())
        return [event for event in self._events if event.type == kind]

    def forget(self):
        self.events(None)
        self._events.clear()

    def presses(self):
        return self.events(X.ButtonPress)

    def _create(self, frame, title):
        x, y, width, height = frame
        screen = self._display.screen()
        red, green, blue = self.color
        window = screen.root.create_window(
            x, y, width, height, 0, screen.root_depth,
            background_pixel=red << 16 | green << 8 | blue,
            event_mask=X.ButtonPressMask | X.FocusChangeMask | X.StructureNotifyMask,
        )
        window.set_wm_name(title)
        window.set_wm_class("client", "Client")
        window.set_wm_hints(flags=Xutil.InputHint, input=1)
        window.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.USSize, min_width=1, min_height=1)
        return window
