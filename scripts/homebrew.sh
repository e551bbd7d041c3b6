# shellcheck shell=bash
# What the program needs on a Mac, and how to get it. To be sourced.
#
# What runs on a Mac keeps to the words of bash 3.2, which is what macOS has.

is_mac() {
    [[ $(uname -s) == Darwin ]]
}

# "a|b" stands for a formula that another one may bring along.
formulas_of() {
    case $1 in
    build) echo cmake ninja 'qtbase|qt' 'qtsvg|qt' 'qttools|qt' qcoro6 ;;
    esac
}

need_formulas() {
    local group formula missing=()
    has_compiler || return
    has_homebrew || return
    for group in "$@"; do
        for formula in $(formulas_of "$group"); do
            is_formula_installed "$formula" || missing+=("${formula%%|*}")
        done
    done
    # CMake looks there for packages wherever Homebrew is.
    CMAKE_PREFIX_PATH=$(brew --prefix)${CMAKE_PREFIX_PATH:+:$CMAKE_PREFIX_PATH}
    export CMAKE_PREFIX_PATH
    ((${#missing[@]} == 0)) || install_formulas "${missing[@]}"
}

has_compiler() {
    xcode-select --print-path >/dev/null 2>&1 && return
    echo "There is no compiler here. This brings it: xcode-select --install" >&2
    return 1
}

has_homebrew() {
    command -v brew >/dev/null && return
    echo "What the program needs comes from Homebrew (https://brew.sh), which is not here. It has: $(all_formulas)" >&2
    return 1
}

all_formulas() {
    local formula names=()
    for formula in $(formulas_of build); do
        names+=("${formula%%|*}")
    done
    echo "${names[*]}"
}

is_formula_installed() {
    local name names
    IFS='|' read -r -a names <<<"$1"
    for name in "${names[@]}"; do
        ! brew list --formula --versions "$name" >/dev/null 2>&1 || return 0
    done
    return 1
}

install_formulas() {
    echo "Installing what is missing: $*" >&2
    brew install --formula "$@" >&2
}
