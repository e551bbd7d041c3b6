import signal
from pathlib import Path

import pytest

from harness.bar import Bar
from harness.client import Client
from harness.desktop import WINDOW_MANAGERS, Desktop
from harness.stalls import StallWatch

FAILURES = Path(__file__).parents[2] / "build/desktop-failures"

# Widgets that always have something to show, and more of them than the narrowest panel holds.
ROW = {"enabledWidgets": ["clock", "calendar", "month-counter"], "pinnedItemsIntroduced": True}


def pytest_configure():
    # Asked to end, the run takes its desktops down first.
    signal.signal(signal.SIGTERM, signal.default_int_handler)


def pytest_addoption(parser):
    parser.addoption("--window-manager", choices=WINDOW_MANAGERS, help="run only what runs under this one")


def pytest_generate_tests(metafunc):
    if "desktop" in metafunc.fixturenames:
        only_openbox = metafunc.definition.get_closest_marker("only_openbox")
        metafunc.parametrize("window_manager", ["openbox"] if only_openbox else list(WINDOW_MANAGERS))


def pytest_collection_modifyitems(config, items):
    wanted = config.getoption("--window-manager")
    if wanted:
        items[:] = [item for item in items if item.callspec.params["window_manager"] == wanted]


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
