# shellcheck shell=bash
# Building a preset without flooding the terminal. To be sourced from the root of the tree.

build_preset() {
    local preset=$1 log=build/$1.log began=$SECONDS
    mkdir -p build
    echo "Building ($preset)…"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
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
