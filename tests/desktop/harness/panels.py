"""The desktop's own panels and docks."""

from .waiting import wait_until

PANEL_THICKNESS = 30

TINT2_CONFIGURATION = f"""
panel_monitor = primary
panel_items = T
panel_position = bottom center horizontal
panel_size = 100% {PANEL_THICKNESS}
panel_background_id = 0
panel_layer = top
strut_policy = follow_size
wm_menu = 0
"""


def start_tint2(desktop):
    """A panel that always stands at the bottom edge and reserves it."""
    configuration = desktop.directory / "tint2rc"
    configuration.write_text(TINT2_CONFIGURATION)
    desktop.start("tint2", "tint2", "-c", configuration)
    return _wait_for_window(desktop, "tint2")


def stop_tint2(desktop):
    desktop.stop("tint2")


def start_plank(desktop, hide_mode="none"):
    """Plank at the bottom edge; `hide_mode` is one of its own words, such as "none" or "auto"."""
    keyfile = desktop.config_home / "glib-2.0/settings/keyfile"
    keyfile.parent.mkdir(parents=True, exist_ok=True)
    keyfile.write_text(
        "[net/launchpad/plank]\nenabled-docks=['dock1']\n\n"
        f"[net/launchpad/plank/docks/dock1]\nhide-mode='{hide_mode}'\nposition='bottom'\nunhide-delay=uint32 0\n"
    )
    desktop.start("plank", "plank")
    return _wait_for_window(desktop, "plank")


def _wait_for_window(desktop, name):
    return wait_until(
        lambda: next(desktop.screen.mapped_windows_of_class(name), None), timeout=15, what=f"{name} maps its window"
    )
