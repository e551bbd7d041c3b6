"""Shows the bar on a virtual desktop once and leaves two pictures: of the panel and of the whole desktop."""

import os
import sys
from pathlib import Path

root = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(root / "tests/desktop"))

from harness.bar import Bar  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.wallpaper import gradient  # noqa: E402

SIZE = (1440, 900)
TIME_LIMIT = 30


def main(binary, panel_picture, desktop_picture):
    os.environ["MOORLINE_BINARY"] = binary
    panel_picture, desktop_picture = (Path(path).absolute() for path in (panel_picture, desktop_picture))
    panel_picture.unlink(missing_ok=True)
    with Desktop("openbox", SIZE, wallpaper=gradient(SIZE)) as desktop:
        # With the real weather, where there is a network.
        bar = Bar(desktop, MOORLINE_SNAPSHOT=panel_picture, MOORLINE_WEATHER_ORIGIN=None)
        print("The bar is on the screen; taking its picture takes some seconds.", flush=True)
        desktop.screen.picture().save(desktop_picture)
        bar.process.wait(TIME_LIMIT)
        if not panel_picture.exists():
            sys.exit(f"The bar ended without a picture:\n{bar.process.output()}")
    print(f"The panel as it is on screen: {panel_picture}")
    print(f"The whole desktop: {desktop_picture}")


if __name__ == "__main__":
    main(*sys.argv[1:])
