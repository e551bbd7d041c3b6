"""The session bus may end before the session does."""

import pytest

from harness.waiting import assert_holds, wait_until


@pytest.mark.only_openbox
def test_the_bar_outlives_the_session_bus(desktop, start_bar):
    # As on most desktops, where the settings of other programs are asked over the bus.
    bar = start_bar(environment={"GSETTINGS_BACKEND": "dconf"})
    assert_holds(bar.process.is_running, 1.5, "the bar ended by itself")
    desktop.stop("bus")
    assert_holds(bar.process.is_running, 1.5, "the bar ended with its bus")
    bar.choose_mode(automatic=True)
    wait_until(lambda: bar.settings()["visibilityMode"] == "auto", what="the bar takes a command")
