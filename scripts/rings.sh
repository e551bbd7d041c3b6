# shellcheck shell=bash
# Runs rings of tests and keeps the count. To be sourced after packages.sh, from the root of the tree.

passed=0
failed=0

# How many seconds the step took that ends here: since the end of the step before.
lap_began=0
lap() {
    echo "$((SECONDS - lap_began))"
}

# Adds a ring to the count: its name, how many passed and failed, and the exit status of what ran it. A ring that breaks
# without naming a failed test, or that runs none, is a failure too.
count() {
    local name=$1 ring_passed=$2 ring_failed=$3 status=$4
    if ((ring_failed == 0 && status != 0)); then
        echo "$name: ended with status $status"
        ring_failed=1
    elif ((ring_passed + ring_failed == 0)); then
        echo "$name: ran no test"
        ring_failed=1
    fi
    echo "$name: $ring_passed passed, $ring_failed failed ($(lap) s)"
    passed=$((passed + ring_passed))
    failed=$((failed + ring_failed))
    lap_began=$SECONDS
}

# What Qt's test programs wrote into a log: how many functions and rows passed, not counting the frame around each class.
qt_passed() {
    grep -cE '^PASS   : ' <(grep -vE '::(init|cleanup)TestCase\(\)' "$1") || true
}

# How many did not: a skipped test has proved nothing either.
qt_failed() {
    grep -cE '^(FAIL!|SKIP|XPASS|BFAIL) ' "$1" || true
}

# Runs the tests of one label in a build folder with so many at a time.
qt_ring() {
    local name=$1 label=$2 folder=$3 jobs=$4 status=0
    local log=$folder/$label.log output=$folder/Testing/Temporary/LastTest.log
    rm -f "$output"
    ctest --test-dir "$folder" --label-regex "^$label\$" --no-tests=error --output-on-failure -j "$jobs" \
        >"$log" 2>&1 || status=$?
    ((status == 0)) || cat "$log"
    if [[ -f $output ]]; then
        count "$name" "$(qt_passed "$output")" "$(qt_failed "$output")" "$status"
    else
        count "$name" 0 0 "$status"
    fi
}

# Runs a command that prints a line beginning with PASS or FAIL for everything it looks at.
checked_ring() {
    local name=$1 status=0
    local log="build/$1.log"
    shift
    "$@" >"$log" 2>&1 || status=$?
    if ((status != 0)) || grep -q '^FAIL ' "$log"; then
        grep -v '^PASS ' "$log" || true
    fi
    count "$name" "$(grep -c '^PASS ' "$log" || true)" "$(grep -c '^FAIL ' "$log" || true)" "$status"
}
