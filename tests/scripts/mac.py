"""A stand-in for a Mac: a folder of programs that is the whole PATH, and a copy of the tree's scripts."""

import os
import shutil
import subprocess
from dataclasses import dataclass, field
from pathlib import Path

root = Path(__file__).resolve().parents[2]

# What the scripts use of what every Mac has, under the same options.
PROGRAMS_OF_EVERY_SYSTEM = ["bash", "cat", "dirname", "env", "grep", "mkdir", "rm"]

BUNDLE = "build/release/src/app/Moorline.app"

# Every stand-in writes down how it was called, and then does its own.
STAND_IN = """#!/bin/bash
printf '%s\\n' "{name}${{*:+ $*}}" >>"$STAND_INS/calls"
{body}
"""

CMAKE = """
echo "$CMAKE_PREFIX_PATH" >"$STAND_INS/prefix"
[[ $1 != --preset ]] || mkdir -p "build/$2"
[[ ! -e $STAND_INS/build-fails ]] || { echo 'Bar.cpp:1: error'; exit 1; }
[[ $* == '--build --preset release' ]] || exit 0
mkdir -p build/release/src/app/Moorline.app/Contents/MacOS
/bin/cp "$STAND_INS/Moorline" build/release/src/app/Moorline.app/Contents/MacOS
"""

CTEST = """
mkdir -p build/dev/Testing/Temporary
cat "$STAND_INS/results" >build/dev/Testing/Temporary/LastTest.log
! grep -q '^FAIL' "$STAND_INS/results"
"""

BREW = """
case $1 in
--prefix) echo /opt/homebrew ;;
list) [[ " $(cat "$STAND_INS/formulas") " == *" ${*: -1} "* ]] ;;
esac
"""


@dataclass
class Ended:
    """How a script ended."""

    status: int
    output: str
    errors: str
    calls: list[str] = field(default_factory=list)

    def calls_of(self, program: str) -> list[str]:
        return [call for call in self.calls if call.split()[0] == program]


class Mac:
    """One Mac with Homebrew and all that is needed, unless told otherwise."""

    def __init__(self, folder: Path):
        self.tree = folder / "moorline"
        self.programs = folder / "bin"
        self.state = folder / "state"
        for made in (self.tree, self.programs, self.state):
            made.mkdir()
        for name in ("run", "test"):
            shutil.copy(root / name, self.tree)
        shutil.copytree(root / "scripts", self.tree / "scripts")
        for name in PROGRAMS_OF_EVERY_SYSTEM:
            (self.programs / name).symlink_to(shutil.which(name))
        self.install("uname", "echo Darwin")
        self.install("xcode-select", "echo /Library/Developer/CommandLineTools")
        self.install("getconf", "[[ $1 == _NPROCESSORS_ONLN ]] && echo 8")
        self.install("brew", BREW)
        self.install("cmake", CMAKE)
        self.install("ctest", CTEST)
        self.install("open", "")
        self.write("Moorline", STAND_IN.format(name="Moorline", body='echo "$MOORLINE_RENDER"')).chmod(0o755)
        self.has_formulas("cmake", "ninja", "qtbase", "qtsvg", "qttools", "qcoro6")
        self.tests_end_with("PASS   : BarTest::isThere()")

    def install(self, name: str, body: str) -> None:
        program = self.programs / name
        program.write_text(STAND_IN.format(name=name, body=body))
        program.chmod(0o755)

    def remove(self, name: str) -> None:
        (self.programs / name).unlink()

    def has_formulas(self, *names: str) -> None:
        self.write("formulas", " ".join(names))

    def tests_end_with(self, *lines: str) -> None:
        self.write("results", "\n".join(lines) + "\n")

    def build_fails(self) -> None:
        self.write("build-fails", "")

    def write(self, name: str, text: str) -> Path:
        file = self.state / name
        file.write_text(text)
        return file

    @property
    def prefix(self) -> str:
        """Where CMake was told to look for packages."""
        return (self.state / "prefix").read_text().strip()

    def type(self, *command: str, **variables: str) -> Ended:
        """Types a command in the folder of the tree."""
        ended = subprocess.run(
            command,
            cwd=self.tree,
            env={"PATH": str(self.programs), "HOME": "/Users/somebody", "STAND_INS": str(self.state), **variables},
            capture_output=True,
            text=True,
            timeout=60,
            check=False,
        )
        calls = self.state / "calls"
        return Ended(
            ended.returncode, ended.stdout, ended.stderr, calls.read_text().splitlines() if calls.exists() else []
        )
