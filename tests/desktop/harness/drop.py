"""Both sides of a drag between the bar and an application of the test's own, by the XDND protocol."""

import itertools

from Xlib import X, Xatom, display
from Xlib.protocol import event

from .waiting import wait_until

VERSION = 5


class TargetGone(Exception):
    """The program that was dropped on ended in the middle of the drag."""


class FileDrag:
    """The source side of one drag after another, onto windows of one process. A silent one never gives what it has."""

    def __init__(self, desktop, process, is_silent=False):
        self._process = process
        self._is_silent = is_silent
        self._display = display.Display(desktop.environment["DISPLAY"])
        self._display.set_error_handler(lambda *_: None)
        screen = self._display.screen()
        self._window = screen.root.create_window(-10, -10, 1, 1, 0, screen.root_depth, override_redirect=True)
        self._data = b""
        self._is_taken = False
        self._messages = []
        self.times_asked = 0

    def close(self):
        self._display.close()

    def drop(self, urls, target, x, y):
        """Drops the URLs on a window at a point of the display. Returns once the target has taken them."""
        assert self.hold(urls, target, x, y), "the window takes no files here"
        self.let_go(target)

    def hold(self, urls, target, x, y, formats=("text/uri-list",)):
        """Holds the URLs over a point of the display. Returns whether the window there says that it takes them."""
        self._data = "".join(f"{url}\r\n" for url in urls).encode()
        self._messages.clear()
        self._window.set_selection_owner(self._atom("XdndSelection"), X.CurrentTime)
        types = [self._atom(name) for name in formats]
        assert len(types) <= 3, "more would have to be in a property"
        self._send(target, "XdndEnter", [VERSION << 24, *types, *[0] * (3 - len(types))])
        action = self._atom("XdndActionCopy")
        self._send(target, "XdndPosition", [0, x << 16 | y, X.CurrentTime, action])
        status = self._wait_for("XdndStatus")
        self._is_taken = bool(status[1] & 1)
        return self._is_taken

    def let_go(self, target):
        """Lets go of what is held over a window. Returns once that has dealt with it; where it refused, nothing is
        dropped, and the source just leaves."""
        if self._is_taken:
            self.let_go_unanswered(target)
            self.wait_until_finished()
        else:
            self.leave(target)

    def leave(self, target):
        """Leaves the window with what is held over it."""
        self._send(target, "XdndLeave", [0, 0, 0, 0])

    def let_go_unanswered(self, target):
        """Lets go without waiting for what the target says."""
        self._send(target, "XdndDrop", [0, X.CurrentTime, 0, 0])

    def wait_until_finished(self, timeout=6.0):
        """Whether the target says that it took what was let go."""
        return bool(self._wait_for("XdndFinished", timeout)[1] & 1)

    def _atom(self, name):
        return self._display.intern_atom(name)

    def _send(self, target, name, values):
        data = [self._window.id, *values]
        message = event.ClientMessage(window=target, client_type=self._atom(name), data=(32, data))
        self._display.send_event(target, message)
        self._display.flush()

    def _wait_for(self, name, timeout=6.0):
        kind = self._atom(name)

        def arrived():
            self._serve()
            if not self._process.is_running():
                raise TargetGone
            return next((message.data[1] for message in self._messages if message.client_type == kind), None)

        return wait_until(arrived, timeout, f"the target answers with {name}")

    def _serve(self):
        self._display.sync()
        while self._display.pending_events():
            received = self._display.next_event()
            if received.type == X.ClientMessage:
                self._messages.append(received)
            elif received.type == X.SelectionRequest:
                self._answer(received)

    def _answer(self, request):
        self.times_asked += 1
        if self._is_silent:
            return
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


class DropWindow:
    """A window that things are dragged over, and that takes down what it is told of them. With an action it takes them,
    and says that this is what it did with them."""

    def __init__(self, desktop, frame, action=None):
        self._action = action
        self._display = display.Display(desktop.environment["DISPLAY"])
        self._display.set_error_handler(lambda *_: None)
        screen = self._display.screen()
        self._window = screen.root.create_window(*frame, 0, screen.root_depth, override_redirect=True)
        self._window.change_property(self._atom("XdndAware"), Xatom.ATOM, 32, [VERSION])
        self._window.map()
        self._display.sync()
        self._time = None
        self._entered = None
        self._positions = 0
        self._notes = []
        self._dropped_by = None

    def close(self):
        self._display.close()

    def offered(self):
        """The types of what is held over the window."""

        def is_known():
            self._read()
            return self._entered and self._time is not None

        wait_until(is_known, what="something is held over the window")
        atoms = self._entered[2:5]
        if self._entered[1] & 1:
            # More than three are in a property of the source.
            source = self._display.create_resource_object("window", self._entered[0])
            atoms = source.get_full_property(self._atom("XdndTypeList"), X.AnyPropertyType).value
        return [self._display.get_atom_name(atom) for atom in atoms if atom]

    def wait_until_accepted(self, screen):
        """Waits until the source knows that what is held over the window is taken. It tells of a movement only once it
        has read the answer to the one before, so the pointer moves a little."""
        x, y = screen.pointer()
        nudges = itertools.cycle((1, 0))
        self._read()
        told = self._positions

        def is_known():
            screen.move_pointer(x + next(nudges), y)
            self._read()
            # The first may have been on its way already.
            return self._positions >= told + 2

        wait_until(is_known, what="the answer is read")

    def taken(self, target):
        """What was let go over the window, once it was; its source is told what was done with it."""

        def is_dropped():
            self._read()
            return self._dropped_by

        source = wait_until(is_dropped, what="it is let go over the window")
        data = self.data(target)
        self._tell(source, "XdndFinished", [1, self._atom(self._action), 0, 0])
        return data

    def data(self, target):
        """What is given of a type, which may be nothing."""
        place = self._atom("MOORLINE_TEST")
        self._notes.clear()
        self._window.convert_selection(self._atom("XdndSelection"), self._atom(target), place, self._time)

        def is_answered():
            self._read()
            return self._notes

        answer = wait_until(is_answered, what="the source answers")[0]
        read = self._window.get_full_property(place, X.AnyPropertyType) if answer.property else None
        return bytes(read.value) if read else b""

    def _atom(self, name):
        return self._display.intern_atom(name)

    def _tell(self, source, name, values):
        window = self._display.create_resource_object("window", source)
        data = [self._window.id, *values]
        message = event.ClientMessage(window=window, client_type=self._atom(name), data=(32, data))
        self._display.send_event(window, message)
        self._display.flush()

    def _read(self):
        self._display.sync()
        while self._display.pending_events():
            received = self._display.next_event()
            if received.type == X.SelectionNotify:
                self._notes.append(received)
            elif received.type == X.ClientMessage and received.client_type == self._atom("XdndEnter"):
                self._entered = received.data[1]
            elif received.type == X.ClientMessage and received.client_type == self._atom("XdndPosition"):
                self._time = received.data[1][3]
                self._positions += 1
                if self._action:
                    # Accepted, and every move is to be told of.
                    self._tell(received.data[1][0], "XdndStatus", [3, 0, 0, self._atom(self._action)])
            elif received.type == X.ClientMessage and received.client_type == self._atom("XdndDrop"):
                self._dropped_by = received.data[1][0]
                self._time = received.data[1][2]
