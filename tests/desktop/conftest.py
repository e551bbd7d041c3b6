from pathlib import Path

import pytest

from harness.bar import Bar
from harness.client import Client
from harness.desktop import WINDOW_MANAGERS, Desktop

FAILURES = Path(__file__).parents[2] / "build/desktop-failures"

# The widgets that always have something to show.
CLOCK_ONLY = {"enabledWidgets": ["clock"], "pinnedItemsIntroduced": True}


def pytest_generate_tests(metafunc):
    if "desktop" in metafunc.fixturenames:
        only_openbox = metafunc.definition.get_closest_marker("only_openbox")
        metafunc.parametrize("window_manager", ["openbox"] if only_openbox else list(WINDOW_MANAGERS))


@pytest.fixture
def desktop(request, window_manager):
    marker = request.node.get_closest_marker("display")
    with Desktop(window_manager, **(marker.kwargs if marker else {})) as running:
        yield running


@pytest.fixture
def screen(desktop):
    return desktop.screen


@pytest.fixture
def start_bar(desktop):
    """Starts the bar with a clock alone, and with what else the test wants of the settings."""

    def start(scale=1, visible=True, environment=None, **settings):
        return Bar(desktop, {**CLOCK_ONLY, **settings}, scale, visible, **(environment or {}))

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
