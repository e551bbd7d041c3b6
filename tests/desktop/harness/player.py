"""A music player as it is installed, with music to play."""

import io
import math
import struct

import dbus
import dbus.bus

NAME = "org.mpris.MediaPlayer2.mpv"
PATH = "/org/mpris/MediaPlayer2"
INTERFACE = "org.mpris.MediaPlayer2.Player"

SECONDS = 60
RATE = 8000


def _chunk(name, content):
    """Of RIFF: begins at an even place."""
    return name + struct.pack("<I", len(content)) + content + b"\0" * (len(content) % 2)


def _frame(name, content):
    """Of ID3v2.3."""
    return name + struct.pack(">IH", len(content), 0) + content


def _text(name, text):
    return _frame(name, b"\0" + text.encode("latin-1"))


def _tag(title, artist, album, picture):
    cover = _frame(b"APIC", b"\0image/png\0\3\0" + picture)
    frames = _text(b"TIT2", title) + _text(b"TPE1", artist) + _text(b"TALB", album) + cover
    size = bytes(len(frames) >> shift & 0x7F for shift in (21, 14, 7, 0))
    return b"ID3\3\0\0" + size + frames


def tone_file(title, artist, album, picture):
    """A WAV file of a tone that says what it is."""
    samples = (int(8000 * math.sin(2 * math.pi * 440 * index / RATE)) for index in range(SECONDS * RATE))
    sound = struct.pack(f"<{SECONDS * RATE}h", *samples)
    chunks = _chunk(b"fmt ", struct.pack("<HHIIHH", 1, 1, RATE, RATE * 2, 2, 16))
    chunks += _chunk(b"id3 ", _tag(title, artist, album, picture)) + _chunk(b"data", sound)
    return _chunk(b"RIFF", b"WAVE" + chunks)


class Player:
    """mpv, with two tones to play that are not heard. Their cover is a picture."""

    def __init__(self, desktop, cover, titles=("First tone", "Second tone"), artist="A generator"):
        self._desktop = desktop
        self._bus = dbus.bus.BusConnection(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        self._process = None
        folder = desktop.home / "Music"
        folder.mkdir()
        picture = io.BytesIO()
        cover.save(picture, "png")
        # Which of the two a player tells of depends on how old it is.
        (folder / "cover.png").write_bytes(picture.getvalue())
        self._tones = []
        for title in titles:
            self._tones.append(folder / f"{title}.wav")
            self._tones[-1].write_bytes(tone_file(title, artist, "Tones", picture.getvalue()))

    def play(self, has_window=False):
        output = ["--vo=x11", "--force-window=yes"] if has_window else ["--vo=null"]
        self._process = self._desktop.start("player", "mpv", "--ao=null", *output, "--no-terminal", *self._tones)

    def kill(self):
        self._process.kill()

    def status(self):
        """None while it is not on the bus."""
        try:
            player = self._bus.get_object(NAME, PATH, introspect=False)
            return str(player.Get(INTERFACE, "PlaybackStatus", dbus_interface=dbus.PROPERTIES_IFACE))
        except dbus.DBusException:
            return None

    def close(self):
        self._bus.close()
