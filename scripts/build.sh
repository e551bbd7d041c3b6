# shellcheck shell=bash
# Building a preset without flooding the terminal. To be sourced after packages.sh, from the root of the tree.

# How many things can be done at a time.
cores() {
    getconf _NPROCESSORS_ONLN
}

configure() {
    if is_mac; then
        # What the compilers of macOS warn of is not known here, and shall not stop whoever builds there.
        cmake --preset "$1" -DMOORLINE_WERROR=OFF
    else
        cmake --preset "$1"
    fi
}

build_preset() {
    local preset=$1 log=build/$1.log began=$SECONDS
    mkdir -p build
    echo "Building ($preset)…"
    if ! { configure "$preset" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
        # All but the progress.
        grep -vE '^(-- |\[[0-9]+/[0-9]+\] )' "$log" || true
        echo "The build failed ($preset)." >&2
        return 1
    fi
    echo "Built ($preset) in $((SECONDS - began)) s."
    # A ring counts its own time.
    # shellcheck disable=SC2034
    lap_began=$SECONDS
}
