"""The desktop's own panels and docks."""

from xml.etree import ElementTree

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

# One panel at the bottom edge, with nothing in it yet.
XFCE_CONFIGURATION = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=720;y=880"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="plugin-ids" type="array"/>
    </property>
  </property>
</channel>
"""


def start_tint2(desktop, has_tasks=True):
    """A panel that always stands at the bottom edge and reserves it. Without tasks there is nothing to be seen of it."""
    configuration = desktop.directory / "tint2rc"
    configuration.write_text(TINT2_CONFIGURATION.replace("panel_items = T", f"panel_items = {'T' if has_tasks else 'F'}"))
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


def start_xfce_panel(desktop):
    """The panel of XFCE at the bottom edge."""
    _xfce_channel(desktop).parent.mkdir(parents=True, exist_ok=True)
    _xfce_channel(desktop).write_text(XFCE_CONFIGURATION)
    desktop.start("xfce-panel", "xfce4-panel", "--disable-wm-check")
    return _wait_for_window(desktop, "xfce4-panel")


def add_xfce_launcher(desktop, entry):
    """Has the panel take a desktop entry in, and waits until that is on disk."""
    before = len(_xfce_items(desktop))
    desktop.run("xfce4-panel", "--add=launcher", entry)
    wait_until(lambda: len(_xfce_items(desktop)) > before, timeout=30, what="the panel has written its launchers")


def _xfce_channel(desktop):
    return desktop.config_home / "xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"


def _xfce_items(desktop):
    return ElementTree.parse(_xfce_channel(desktop)).findall(".//property[@name='items']/value")


def _wait_for_window(desktop, name):
    return wait_until(
        lambda: next(desktop.screen.mapped_windows_of_class(name), None), timeout=15, what=f"{name} maps its window"
    )
