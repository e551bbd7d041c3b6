import signal
from pathlib import Path

import pytest

from harness.bar import Bar
from harness.client import Client
from harness.desktop import EVERYDAY_WINDOW_MANAGERS, WINDOW_MANAGERS, Desktop
from harness.stalls import StallWatch

FAILURES = Path(__file__).parents[2] / "build/desktop-failures"

# Widgets that always have something to show, and more of them than the narrowest panel holds.
ROW = {"enabledWidgets": ["clock", "calendar", "month-counter"], "pinnedItemsIntroduced": True}


def pytest_configure():
    # Asked to end, the run takes its desktops down first.
    signal.signal(signal.SIGTERM, signal.default_int_handler)


def pytest_addoption(parser):
    parser.addoption("--window-manager", choices=WINDOW_MANAGERS, help="run only what runs under this one")
    parser.addoption("--large", action="store_true", help="also run what needs programs too large for every run")


def pytest_generate_tests(metafunc):
    if "desktop" in metafunc.fixturenames:
        only = [name for name in WINDOW_MANAGERS if metafunc.definition.get_closest_marker(f"only_{name}")]
        metafunc.parametrize("window_manager", only or list(EVERYDAY_WINDOW_MANAGERS))


def pytest_collection_modifyitems(config, items):
    wanted = config.getoption("--window-manager")
    large = config.getoption("--large")
    left_out = [
        item
        for item in items
        if (wanted and item.callspec.params["window_manager"] != wanted)
        or (not large and item.get_closest_marker("large"))
    ]
    items[:] = [item for item in items if item not in left_out]
    config.hook.pytest_deselected(items=left_out)


@pytest.fixture
def desktop(request, window_manager):
    marker = request.node.get_closest_marker("display")
    with Desktop(window_manager, **(marker.kwargs if marker else {})) as running:
        running.stall_watch = StallWatch(running.directory)
        yield running
        stalls = running.stall_watch.unexpected()
        assert not stalls, "; ".join(map(str, stalls))


@pytest.fixture
def screen(desktop):
    return desktop.screen


@pytest.fixture
def start_bar(desktop):
    """Starts the bar with a short row of widgets, and what else the test wants of the settings."""

    def start(scale=1, visible=True, environment=None, **settings):
        return Bar(desktop, {**ROW, **settings}, scale, visible, **(environment or {}))

    return start


@pytest.fixture
def open_client(desktop):
    """Opens a plain window at a frame and gives it the focus."""

    def open_at(frame=(300, 200, 600, 300), **options):
        client = desktop.own(Client(desktop, frame, **options))
        client.activate()
        return client

    return open_at


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    report = outcome.get_result()
    desktop = item.funcargs.get("desktop") if hasattr(item, "funcargs") else None
    if report.when != "call" or not report.failed or desktop is None or desktop.screen is None:
        return
    FAILURES.mkdir(parents=True, exist_ok=True)
    picture = FAILURES / f"{item.name.replace('/', '-')}.png"
    desktop.screen.picture().save(picture)
    report.sections.append(("screen", str(picture)))
    for name, text in desktop.logs().items():
        report.sections.append((name, "\n".join(text.splitlines()[-40:])))
