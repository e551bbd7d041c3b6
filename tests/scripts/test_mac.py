"""What ./run and ./test do on a Mac, tried with stand-ins for what a Mac has."""

import re

import pytest

from mac import BUNDLE, root


def opened(mac):
    return f"open -g -n {mac.tree / BUNDLE} --args"


def test_run_builds_the_bundle_and_opens_it_behind_the_application_in_use(mac):
    ended = mac.type("./run")

    assert (ended.status, ended.errors) == (0, "")
    assert ended.calls_of("open") == [opened(mac)]
    assert ended.calls_of("cmake") == ["cmake --preset release -DMOORLINE_WERROR=OFF", "cmake --build --preset release"]
    assert ended.calls[-1] == opened(mac)


def test_arguments_reach_the_program(mac):
    assert mac.type("./run", "-style", "fusion").calls[-1] == f"{opened(mac)} -style fusion"


def test_a_run_with_another_purpose_prints_where_it_was_typed(mac):
    ended = mac.type("./run", MOORLINE_RENDER="preview.png")

    assert ended.calls_of("open") == []
    assert ended.calls[-1] == "Moorline"
    assert ended.output.splitlines()[-1] == "preview.png"


def test_nothing_is_installed_where_nothing_is_missing(mac):
    assert [call for call in mac.type("./run").calls_of("brew") if "install" in call] == []


def test_what_is_missing_is_said_and_installed(mac):
    mac.has_formulas("cmake", "qtbase", "qttools")

    ended = mac.type("./run")

    assert ended.errors == "Installing what is missing: ninja qtsvg qcoro6\n"
    installed = ended.calls.index("brew install --formula ninja qtsvg qcoro6")
    assert installed < ended.calls.index("cmake --build --preset release")


def test_qt_as_one_formula_is_all_of_qt(mac):
    mac.has_formulas("cmake", "ninja", "qt", "qcoro6")

    assert mac.type("./run").errors == ""


def test_an_installation_that_fails_ends_it(mac):
    mac.has_formulas()
    mac.install("brew", "[[ $1 == --prefix ]]")

    ended = mac.type("./run")

    assert ended.status != 0
    assert ended.calls_of("cmake") == []


@pytest.mark.parametrize("script", ["./run", "./test"])
def test_without_homebrew_it_says_what_is_needed(mac, script):
    mac.remove("brew")

    ended = mac.type(script)

    assert ended.status != 0
    assert ended.errors == (
        "What the program needs comes from Homebrew (https://brew.sh), which is not here. "
        "It has: cmake ninja qtbase qtsvg qttools qcoro6\n"
    )
    assert ended.calls_of("cmake") == []


def test_without_a_compiler_it_says_how_to_get_one(mac):
    mac.install("xcode-select", "exit 2")

    ended = mac.type("./run")

    assert ended.status != 0
    assert ended.errors == "There is no compiler here. This brings it: xcode-select --install\n"
    assert ended.calls_of("cmake") == []


def test_packages_are_looked_for_where_homebrew_is(mac):
    mac.type("./run")
    assert mac.prefix == "/opt/homebrew"

    mac.type("./run", CMAKE_PREFIX_PATH="/opt/qt")
    assert mac.prefix == "/opt/homebrew:/opt/qt"


def test_a_build_that_fails_opens_nothing(mac):
    mac.build_fails()

    ended = mac.type("./run")

    assert ended.status != 0
    assert "Bar.cpp:1: error" in ended.output
    assert ended.calls_of("open") == []


def test_test_runs_the_first_ring_with_as_many_at_a_time_as_there_are_cores(mac):
    mac.tests_end_with("PASS   : BarTest::initTestCase()", "PASS   : BarTest::isThere()", "PASS   : BarTest::isOne()")

    ended = mac.type("./test")

    assert (ended.status, ended.errors) == (0, "")
    assert ended.output.splitlines()[-1] == "2 passed, 0 failed"
    assert ended.calls_of("ctest") == [
        "ctest --test-dir build/dev --label-regex ^unit$ --no-tests=error --output-on-failure -j 8"
    ]
    assert ended.calls_of("cmake") == ["cmake --preset dev -DMOORLINE_WERROR=OFF", "cmake --build --preset dev"]


def test_a_test_that_fails_is_counted(mac):
    mac.tests_end_with("PASS   : BarTest::isThere()", "FAIL!  : BarTest::isOne() There are two")

    ended = mac.type("./test")

    assert ended.status == 1
    assert ended.output.splitlines()[-1] == "1 passed, 1 failed"


def test_a_build_that_fails_is_a_failure_of_the_tests(mac):
    mac.build_fails()

    ended = mac.type("./test")

    assert ended.status == 1
    assert ended.output.splitlines()[-1] == "0 passed, 1 failed"
    assert ended.calls_of("ctest") == []


def test_elsewhere_homebrew_is_not_asked(mac):
    mac.install("uname", "echo Linux")

    ended = mac.type("./run")

    # There is neither apt-get nor a compiler in this folder.
    assert ended.status != 0
    assert ended.errors.startswith("These programs are missing: c++")
    assert ended.calls_of("brew") == []


# Of bash 4 and later, while macOS has 3.2.
LATER_WORDS = [
    r"\b(declare|local|typeset) -\w*[Angu]",
    r"\b(mapfile|readarray|coproc)\b",
    r"\bwait -n\b",
    r"\[\[ -v\b",
    r"\$\{\w+(\[[@*]\])?(\^|,|@[A-Za-z])",
    r"\[-\d+\]",
    r"&>>|\|&|;;?&",
    r"\bprintf -v \w+\[|%\(",
    r"\b(EPOCH\w+|BASHPID)\b",
    r"\bshopt .*(globstar|lastpipe|inherit_errexit)",
]


RUN_ON_A_MAC = ["run", "test", *(f"scripts/{name}.sh" for name in ("build", "homebrew", "packages", "rings"))]


@pytest.mark.parametrize("script", RUN_ON_A_MAC)
def test_what_runs_on_a_mac_keeps_to_the_words_of_its_shell(script):
    lines = (root / script).read_text().splitlines()
    assert [line for line in lines for word in LATER_WORDS if re.search(word, line)] == []


def test_the_later_words_are_known():
    later = [
        "declare -A a", "local -n b=$1", "mapfile -t c", "wait -n", "[[ -v d ]]", 'echo "${e,,}"', 'echo "${f[@]^}"',
        'echo "${g@Q}"', 'echo "${h[-1]}"', "i &>>log", "j |& k", "shopt -s globstar", "echo $EPOCHSECONDS",
        "printf '%(%s)T'",
    ]  # fmt: skip
    assert [line for line in later if not any(re.search(word, line) for word in LATER_WORDS)] == []
