"""Drags files from an application of its own and drops them on the bar, by the XDND protocol."""

from Xlib import X, Xatom, display
from Xlib.protocol import event

from .waiting import wait_until

VERSION = 5


class TargetGone(Exception):
    """The program that was dropped on ended in the middle of the drag."""


class FileDrag:
    """The source side of one drag after another, onto windows of one process."""

    def __init__(self, desktop, process):
        self._process = process
        self._display = display.Display(desktop.environment["DISPLAY"])
        self._display.set_error_handler(lambda *_: None)
        screen = self._display.screen()
        self._window = screen.root.create_window(-10, -10, 1, 1, 0, screen.root_depth, override_redirect=True)
        self._data = b""
        self._messages = []

    def close(self):
        self._display.close()

    def drop(self, urls, target, x, y):
        """Drops the URLs on a window at a point of the display. Returns once the target has taken them."""
        self._data = "".join(f"{url}\r\n" for url in urls).encode()
        self._messages.clear()
        self._window.set_selection_owner(self._atom("XdndSelection"), X.CurrentTime)
        self._send(target, "XdndEnter", [VERSION << 24, self._atom("text/uri-list"), 0, 0])
        action = self._atom("XdndActionCopy")
        self._send(target, "XdndPosition", [0, x << 16 | y, X.CurrentTime, action])
        status = self._wait_for("XdndStatus")
        assert status[1] & 1, "the window takes no files here"
        self._send(target, "XdndDrop", [0, X.CurrentTime, 0, 0])
        self._wait_for("XdndFinished")

    def _atom(self, name):
        return self._display.intern_atom(name)

    def _send(self, target, name, values):
        data = [self._window.id, *values]
        message = event.ClientMessage(window=target, client_type=self._atom(name), data=(32, data))
        self._display.send_event(target, message)
        self._display.flush()

    def _wait_for(self, name):
        kind = self._atom(name)

        def arrived():
            self._serve()
            if not self._process.is_running():
                raise TargetGone
            return next((message.data[1] for message in self._messages if message.client_type == kind), None)

        return wait_until(arrived, what=f"the target answers with {name}")

    def _serve(self):
        self._display.sync()
        while self._display.pending_events():
            received = self._display.next_event()
            if received.type == X.ClientMessage:
                self._messages.append(received)
            elif received.type == X.SelectionRequest:
                self._answer(received)

    def _answer(self, request):
        uri_list = self._atom("text/uri-list")
        if request.target == uri_list:
            request.requestor.change_property(request.property, uri_list, 8, self._data)
        elif request.target == self._atom("TARGETS"):
            request.requestor.change_property(request.property, Xatom.ATOM, 32, [uri_list])
        else:
            request.property = X.NONE
        note = event.SelectionNotify(
            time=request.time,
            requestor=request.requestor,
            selection=request.selection,
            target=request.target,
            property=request.property,
        )
        self._display.send_event(request.requestor, note)
        self._display.flush()
