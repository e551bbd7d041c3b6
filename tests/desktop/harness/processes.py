"""Child processes that never outlive the desktop they belong to."""

import os
import signal
import subprocess


class Process:
    """One program in a session of its own, its output in a file."""

    def __init__(self, arguments, environment, log, pass_fds=()):
        self.log = log
        with open(log, "ab") as output:
            self._child = subprocess.Popen(
                [str(argument) for argument in arguments],
                env=environment,
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=subprocess.STDOUT,
                start_new_session=True,
                pass_fds=pass_fds,
            )

    @property
    def pid(self):
        return self._child.pid

    @property
    def exit_status(self):
        """None while it runs."""
        return self._child.poll()

    def is_running(self):
        return self.exit_status is None

    def wait(self, timeout):
        return self._child.wait(timeout)

    def send(self, number):
        """A signal to the program alone, not to those it started."""
        self._child.send_signal(number)

    def kill(self):
        self._signal(signal.SIGKILL)
        self._child.wait()

    def stop(self, patience=3.0):
        self._signal(signal.SIGTERM)
        try:
            self._child.wait(patience)
        except subprocess.TimeoutExpired:
            self.kill()
        self._signal(signal.SIGKILL)

    def output(self):
        return self.log.read_text(errors="replace")

    def _signal(self, number):
        try:
            os.killpg(self._child.pid, number)
        except ProcessLookupError:
            pass
