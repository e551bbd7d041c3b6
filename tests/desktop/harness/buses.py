"""The session bus of a desktop."""

# A session bus that starts nobody.
BUS_WITHOUT_SERVICES = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def bus_configuration(folder, has_services):
    """What a bus is started with; without services it starts nobody."""
    if has_services:
        return "--session"
    path = folder / "bus.conf"
    path.write_text(BUS_WITHOUT_SERVICES)
    return f"--config-file={path}"
