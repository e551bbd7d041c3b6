"""What the bar keeps of applications from one run to the next, and what it takes over from the desktop's dock."""

import json

import pytest

from harness.bar import binary, settings_path, write_settings
from harness.icons import BLUE, GREEN, RED, Icons, install
from harness.memory import remembered
from harness.panels import start_plank
from harness.waiting import assert_holds, wait_until

pytestmark = pytest.mark.only_openbox

RECENT = {"enabledWidgets": ["recent-apps"], "recentAppsMode": "any", "recentAppCount": 5, "appShortcuts": []}


def open_terminal(desktop, name):
    """Answers when its window is the active one."""
    screen = desktop.screen
    desktop.start(f"terminal-{name}", "xterm", "-name", name, "-class", name, "-geometry", "50x12+100+100", "-e", "sleep 1000")
    window = wait_until(lambda: next(screen.mapped_windows_of_class(name), None), what=f"{name} is mapped")
    screen.ask_window_manager(window, "_NET_ACTIVE_WINDOW", [2, 0, 0])
    wait_until(lambda: screen.active_window() == window.id, what=f"{name} is active")
    return window


def test_the_order_of_recent_applications_survives_a_restart(desktop, start_bar):
    # By name they would stand the other way round.
    for name, color in (("alpha", RED), ("omega", GREEN)):
        install(desktop, name, color, f"xterm -name {name} -class {name}", StartupWMClass=name)
    bar = start_bar(**RECENT)
    for name in ("alpha", "omega"):
        open_terminal(desktop, name)
        wait_until(lambda: (remembered(desktop) or [None])[0] == name, what=f"{name} is remembered as the last one")
    icons = Icons(bar, 2)
    wait_until(lambda: (icons.color(0), icons.color(1)) == (GREEN, RED), what="the last one stands first")
    desktop.stop("bar")
    for name in ("alpha", "omega"):
        desktop.stop(f"terminal-{name}")
    assert remembered(desktop) == ["omega", "alpha"]
    icons = Icons(start_bar(**RECENT), 2)
    wait_until(lambda: (icons.color(0), icons.color(1)) == (GREEN, RED), what="the order is the same")
    assert remembered(desktop) == ["omega", "alpha"]


def pin_to_plank(desktop, *names):
    """Has a Plank show these applications in this order, and waits until it does."""
    folder = desktop.config_home / "plank/dock1/launchers"
    folder.mkdir(parents=True)
    for name in names:
        entry = desktop.home / f".local/share/applications/{name}.desktop"
        (folder / f"{name}.dockitem").write_text(f"[PlankDockItemPreferences]\nLauncher=file://{entry}\n")
    start_plank(desktop)
    keyfile = desktop.config_home / "glib-2.0/settings/keyfile"
    wait_until(lambda: "dock-items=" in keyfile.read_text(), timeout=15, what="Plank has taken its items up")
    schema = "net.launchpad.plank.dock.settings:/net/launchpad/plank/docks/dock1/"
    items = [f"{name}.dockitem" for name in names]
    desktop.run("gsettings", "set", schema, "dock-items", str(items))
    assert_holds(lambda: f"dock-items={items}" in keyfile.read_text(), 1.0, "Plank has another order")


def import_dock(desktop, run):
    """Answers what is printed."""
    process = desktop.start(f"import-{run}", binary(), MOORLINE_IMPORT_DOCK=1)
    assert process.wait(20) == 0, process.output()
    return process.output().splitlines()


def test_what_is_pinned_in_plank_is_imported_once(desktop):
    colors = {"alpha": RED, "omega": GREEN, "own": BLUE}
    alpha, omega, own = (install(desktop, name, color, "true") for name, color in colors.items())
    pin_to_plank(desktop, "omega", "alpha")
    write_settings(desktop, {"appShortcuts": [own]})
    assert import_dock(desktop, "first") == [
        f"imported: Omega — {omega['path']}",
        f"imported: Alpha — {alpha['path']}",
        "total pinned apps now: 3",
    ]
    assert json.loads(settings_path(desktop).read_text())["appShortcuts"] == [own, omega, alpha]
    assert import_dock(desktop, "second") == ["total pinned apps now: 3"]
    assert json.loads(settings_path(desktop).read_text())["appShortcuts"] == [own, omega, alpha]
