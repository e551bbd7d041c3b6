"""Notices when the bar's main thread does not turn its loop for longer than a person may feel."""

import os
import subprocess
import tempfile
import time
from contextlib import contextmanager
from dataclasses import dataclass
from functools import cache
from pathlib import Path

LIMIT = 100
SOURCE = Path(__file__).with_name("stall_watch.cpp")
FOLDER = Path(__file__).parents[3] / "build"


@dataclass(frozen=True)
class Stall:
    began: float
    ended: float
    milliseconds: int
    on_processor: int

    def __str__(self):
        return f"the main thread stood still for {self.milliseconds} ms, {self.on_processor} of them at work"


class StallWatch:
    """Watches every bar of a desktop. Times are those of time.monotonic()."""

    def __init__(self, directory):
        self._log = directory / "stalls"
        self._reasons = []

    def environment(self, servers):
        """What a bar is started with; `servers` are the processes it may wait for."""
        return {
            "LD_PRELOAD": library(),
            "STALL_WATCH_LOG": self._log,
            "STALL_WATCH_LIMIT": LIMIT,
            "STALL_WATCH_SERVERS": " ".join(str(process.pid) for process in servers),
        }

    @contextmanager
    def expected(self, reason):
        """Stalls meanwhile are all right, for the reason given."""
        assert reason, "a stall needs a reason"
        began = time.monotonic()
        try:
            yield
        finally:
            self._reasons.append((began, time.monotonic()))

    def all(self):
        lines = self._log.read_text().splitlines() if self._log.exists() else []
        fields = (line.split() for line in lines)
        return [Stall(float(began), float(ended), int(took), int(work)) for began, ended, took, work in fields]

    def unexpected(self):
        return [stall for stall in self.all() if not any(self._overlaps(stall, reason) for reason in self._reasons)]

    @staticmethod
    def _overlaps(stall, reason):
        began, ended = reason
        return stall.began < ended and stall.ended > began


@cache
def library():
    """The watch as a library for the dynamic linker, made anew by each run of the tests."""
    FOLDER.mkdir(exist_ok=True)
    handle, path = tempfile.mkstemp(suffix=".so", dir=FOLDER)
    os.close(handle)
    compiler = os.environ.get("CXX", "c++")
    subprocess.run([compiler, "-std=c++20", "-O1", "-fPIC", "-shared", "-o", path, SOURCE, "-ldl"], check=True)
    final = FOLDER / "stall_watch.so"
    os.replace(path, final)
    return final
