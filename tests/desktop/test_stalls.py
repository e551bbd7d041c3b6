"""The watch over the main thread that every other test here runs under."""

import signal
import time

import pytest

from harness.waiting import assert_holds, wait_until

pytestmark = pytest.mark.only_openbox


def stop_for(process, seconds):
    process.send(signal.SIGSTOP)
    time.sleep(seconds)
    process.send(signal.SIGCONT)


def test_a_main_thread_that_stands_still_is_noticed(desktop, start_bar):
    bar = start_bar()
    assert desktop.stall_watch.unexpected() == []
    with desktop.stall_watch.expected("it is stopped here"):
        stop_for(bar.process, 0.3)
        assert wait_until(desktop.stall_watch.unexpected, what="the stall is written down")
        assert 190 <= desktop.stall_watch.unexpected()[0].milliseconds <= 1000
    assert desktop.stall_watch.unexpected() == []


def test_a_short_pause_is_no_stall(desktop, start_bar):
    bar = start_bar()
    stop_for(bar.process, 0.04)
    assert_holds(lambda: not desktop.stall_watch.all(), 1.0)
