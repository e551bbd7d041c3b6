"""Start, memory and idle CPU of the bar and of Plank, in one run on one virtual desktop."""

import argparse
import os
import statistics
import sys
import time
from dataclasses import dataclass
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests/desktop"))

from Xlib import X  # noqa: E402

from harness.bar import binary, write_settings  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.programs import installed  # noqa: E402
from harness.waiting import wait_until  # noqa: E402

SETTLING_SECONDS = 5
START_TIME_LIMIT = 20
TICKS_PER_SECOND = os.sysconf("SC_CLK_TCK")


@dataclass
class Program:
    name: str
    window_class: str
    command: list

    def __post_init__(self):
        self.starts = []
        self.private_dirty = 0.0
        self.cpu_percent = 0.0

    @property
    def start(self):
        return statistics.median(self.starts)


def watch_windows(screen):
    screen.root.change_attributes(event_mask=X.SubstructureNotifyMask)
    screen.display.sync()


def forget_events(screen):
    while screen.display.pending_events():
        screen.display.next_event()


def wait_for_window(screen, name):
    """Returns as soon as a window of that class is mapped, told by the server rather than by looking again and again."""
    deadline = time.monotonic() + START_TIME_LIMIT
    while time.monotonic() < deadline:
        event = screen.display.next_event()
        if event.type in (X.MapNotify, X.ReparentNotify) and next(screen.mapped_windows_of_class(name), None):
            return
    raise RuntimeError(f"no window of {name} appeared")


def start(desktop, program):
    """The running program and the seconds from its start to its mapped window."""
    forget_events(desktop.screen)
    began = time.perf_counter()
    process = desktop.start(program.name, *program.command)
    wait_for_window(desktop.screen, program.window_class)
    return process, time.perf_counter() - began


def stop(desktop, program, process):
    process.stop()
    wait_until(
        lambda: not next(desktop.screen.mapped_windows_of_class(program.window_class), None),
        what=f"the window of {program.name} goes",
    )


def measure_starts(desktop, programs, rounds):
    for program in programs:
        # The first start fills caches and wakes services; it is nobody's everyday start.
        process, _ = start(desktop, program)
        time.sleep(SETTLING_SECONDS)
        stop(desktop, program, process)
    for _ in range(rounds):
        for program in programs:
            process, seconds = start(desktop, program)
            program.starts.append(seconds)
            # Long enough for what a program does after it has shown itself not to run into the next start.
            time.sleep(1)
            stop(desktop, program, process)


def private_dirty_megabytes(pid):
    for line in Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Private_Dirty:"):
            return int(line.split()[1]) / 1024
    raise RuntimeError("the kernel tells no private dirty memory")


def cpu_seconds(pid):
    fields = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    user, system = int(fields[11]), int(fields[12])
    return (user + system) / TICKS_PER_SECOND


def measure_rest(desktop, program, seconds):
    process, _ = start(desktop, program)
    time.sleep(SETTLING_SECONDS)
    program.private_dirty = private_dirty_megabytes(process.pid)
    before = cpu_seconds(process.pid)
    time.sleep(seconds)
    program.cpu_percent = 100 * (cpu_seconds(process.pid) - before) / seconds
    stop(desktop, program, process)


def pins_cost_megabytes(desktop, bar):
    """What ten of the system's applications, pinned, add to the private memory of a bar that shows nothing else."""
    entries = sorted(Path("/usr/share/applications").glob("*.desktop"))[:10]
    pins = [installed(entry.stem, entry.stem) for entry in entries]
    figures = []
    for shortcuts in ([], pins):
        write_settings(desktop, {"enabledWidgets": ["clock", "app-shortcut"], "appShortcuts": shortcuts})
        process, _ = start(desktop, bar)
        # Beyond the moment at which the program gives back what the start took.
        time.sleep(2 * SETTLING_SECONDS)
        figures.append(private_dirty_megabytes(process.pid))
        stop(desktop, bar, process)
    return figures[1] - figures[0]


def print_table(bar, plank, seconds):
    rows = [
        ("start to mapped window, median", "ms", bar.start * 1000, plank.start * 1000),
        ("fastest start", "ms", min(bar.starts) * 1000, min(plank.starts) * 1000),
        ("slowest start", "ms", max(bar.starts) * 1000, max(plank.starts) * 1000),
        ("private dirty memory", "MB", bar.private_dirty, plank.private_dirty),
        (f"CPU over {seconds} idle seconds", "% of a core", bar.cpu_percent, plank.cpu_percent),
    ]
    print(f"{'':34}{'Moorline':>10}{'Plank':>10}{'ratio':>8}")
    for name, unit, ours, theirs in rows:
        ratio = f"{ours / theirs:8.2f}" if theirs else f"{'–':>8}"
        print(f"{name:34}{ours:10.2f}{theirs:10.2f}{ratio}  {unit}")


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--starts", type=int, default=12, help="starts of each program (at least 10)")
    options.add_argument("--idle", type=int, default=60, help="seconds of idling to count")
    options = options.parse_args()
    bar = Program("moorline", "moorline", [binary()])
    plank = Program("plank", "plank", ["plank"])
    with Desktop("openbox") as desktop:
        write_settings(desktop, {})
        watch_windows(desktop.screen)
        measure_starts(desktop, [bar, plank], max(options.starts, 10))
        for program in (bar, plank):
            measure_rest(desktop, program, options.idle)
        print_table(bar, plank, options.idle)
        print(f"ten pinned applications: {pins_cost_megabytes(desktop, bar):.2f} MB of private memory")


if __name__ == "__main__":
    main()
