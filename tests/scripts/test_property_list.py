"""What the bundle says of itself on a Mac, which no compiler reads."""

import plistlib

import pytest

from mac import root


@pytest.fixture(scope="module")
def said():
    return plistlib.loads((root / "packaging/Info.plist.in").read_bytes())


def test_the_type_of_a_dragged_icon_is_the_programs_own_and_no_kind_of_another(said):
    [declared] = said["UTExportedTypeDeclarations"]

    assert declared["UTTypeIdentifier"] == said["CFBundleIdentifier"] + ".reorder" == "app.moorline.Moorline.reorder"
    assert "UTTypeConformsTo" not in declared


@pytest.mark.parametrize("purpose", ["AppleEvents", "Location", "LocationWhenInUse"])
def test_what_the_user_is_asked_for_is_explained(said, purpose):
    assert said[f"NS{purpose}UsageDescription"].startswith("Moorline ")


def test_no_place_in_the_dock_is_asked_for(said):
    assert said["LSUIElement"] is True
