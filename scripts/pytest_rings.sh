# shellcheck shell=bash
# Runs rings of tests that are written in Python. To be sourced after rings.sh, from the root of the tree.

declare -A pytest_processes

# Runs a folder of pytest files in the background; wait_for_pytest says how it went.
start_pytest() {
    local name=$1
    shift
    rm -f "build/$name.xml"
    "${system_python:?}" -m pytest -q --tb=short --junitxml="build/$name.xml" "$@" >"build/$name.log" 2>&1 &
    pytest_processes[$name]=$!
    trap 'kill "${pytest_processes[@]}"; exit 130' INT TERM
}

wait_for_pytest() {
    local name=$1 status=0 ring_passed=0 ring_failed=0
    wait "${pytest_processes[$name]}" || status=$?
    ((status == 0)) || cat "build/$name.log"
    if [[ -f build/$name.xml ]]; then
        read -r ring_passed ring_failed < <("$system_python" scripts/junit_counts.py "build/$name.xml")
    fi
    count "$name" "$ring_passed" "$ring_failed" "$status"
}
