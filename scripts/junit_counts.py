"""Prints how many tests of a JUnit file passed, and how many failed, broke or were skipped."""

import sys
from xml.etree import ElementTree

cases = ElementTree.parse(sys.argv[1]).getroot().iter("testcase")
verdicts = [all(case.find(tag) is None for tag in ("failure", "error", "skipped")) for case in cases]
print(verdicts.count(True), verdicts.count(False))
