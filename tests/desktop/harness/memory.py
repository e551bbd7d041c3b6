"""What the bar keeps of its own."""

import json

from .bar import APPLICATION


def remembered(desktop):
    """The identifiers of recent applications, the last one first; None where nothing was written yet."""
    path = desktop.home / f".local/state/{APPLICATION}/defaults.json"
    return json.loads(path.read_text()).get("recentAppOrder") if path.exists() else None
