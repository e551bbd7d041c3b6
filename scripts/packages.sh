# shellcheck shell=bash
# What the scripts of this tree need from the system, and how to get it. To be sourced.
#
#   need build desktop ...   makes sure that the packages of these groups are there

source "${BASH_SOURCE[0]%/*}/homebrew.sh"

# The system's own Python: the modules below are installed for that one, not for another that may come first in PATH.
export system_python=/usr/bin/python3

# "a|b" stands for a package that has another name in some releases.
packages_of() {
    case $1 in
    build)
        echo g++ cmake ninja-build pkg-config \
            qt6-base-dev 'qt6-svg-dev|libqt6svg6-dev' qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools libgl-dev \
            qcoro-qt6-dev libglib2.0-dev libgweather-4-dev \
            libxcb1-dev libxcb-randr0-dev libxcb-res0-dev libxcb-shape0-dev libxcb-xfixes0-dev libxcb-xinput-dev libxcb-xtest0-dev
        ;;
    run) echo x11-utils 'libgweather-4-0t64|libgweather-4-0' ;;
    desktop)
        echo xvfb openbox picom 'dbus-daemon|dbus' x11-utils x11-xserver-utils fonts-dejavu-core \
            python3 python3-xlib python3-pil xterm
        ;;
    test)
        echo clang libc++-dev libglib2.0-bin xfwm4 metacity i3-wm pcmanfm mousepad featherpad zenity bindfs plank tint2 mpv mpv-mpris xdotool python3-pytest python3-dbus python3-dbusmock at-spi2-core openssl \
            qt6-gtk-platformtheme
        ;;
    large)
        echo mutter libreoffice-writer libreoffice-calc libreoffice-gtk3 gnome-clocks htop lxterminal freeplane \
            python3-gi gir1.2-unity-7.0 xfce4-panel xfconf thunar tumbler gvfs xdg-desktop-portal
        ;;
    pictures) echo fonts-inter tint2 mousepad featherpad mpv mpv-mpris at-spi2-core python3-dbus ;;
    bench) echo plank ;;
    format) echo clang-format ;;
    tidy) echo clang clang-tidy clang-tools libclang-dev ;;
    releases) echo debootstrap ;;
    esac
}

# Looked for where the package manager is not ours to ask.
commands_of() {
    case $1 in
    build) echo c++ cmake ninja pkg-config ;;
    run) echo xdpyinfo ;;
    desktop) echo Xvfb openbox picom dbus-daemon xprop xrandr xterm "$system_python" ;;
    test) echo clang++ xfwm4 metacity i3 pcmanfm mousepad featherpad zenity bindfs plank tint2 mpv xdotool glib-compile-schemas openssl ;;
    large) echo mutter libreoffice gnome-clocks htop lxterminal freeplane xfce4-panel xfconf-query thunar ;;
    pictures) echo tint2 mousepad featherpad mpv ;;
    bench) echo plank ;;
    format) echo clang-format ;;
    tidy) echo clang++ clang-tidy run-clang-tidy ;;
    releases) echo debootstrap ;;
    esac
}

fedora_packages='gcc-c++ cmake ninja-build pkgconf qt6-qtbase-devel qt6-qtsvg-devel qt6-qttools-devel qcoro-qt6-devel
    libxcb-devel glib2-devel libgweather4-devel clang libcxx-devel clang-tools-extra xorg-x11-server-Xvfb openbox picom xfwm4 metacity i3 pcmanfm mousepad featherpad zenity bindfs xterm plank
    tint2 mpv mpv-mpris xdotool dbus-daemon xprop xdpyinfo xrandr python3-pytest python3-dbus python3-dbusmock at-spi2-core openssl python3-xlib python3-pillow rsms-inter-fonts dejavu-sans-fonts'
arch_packages='base-devel cmake ninja pkgconf qt6-base qt6-svg qt6-tools qcoro libxcb glib2 libgweather-4 clang libc++
    xorg-server-xvfb openbox picom xfwm4 metacity i3-wm pcmanfm mousepad featherpad zenity bindfs xterm plank tint2 mpv mpv-mpris xdotool dbus xorg-xprop xorg-xdpyinfo xorg-xrandr
    python-pytest python-dbusmock python-dbus at-spi2-core openssl python-xlib python-pillow inter-font ttf-dejavu'

need() {
    if is_mac; then
        need_formulas "$@"
    elif command -v apt-get >/dev/null; then
        need_packages "$@"
    else
        need_commands "$@"
    fi
}

need_packages() {
    local group package missing=()
    for group in "$@"; do
        for package in $(packages_of "$group"); do
            is_any_installed "$package" || missing+=("$package")
        done
    done
    ((${#missing[@]} == 0)) || install_packages "${missing[@]}"
}

need_commands() {
    local group name missing=()
    for group in "$@"; do
        for name in $(commands_of "$group"); do
            command -v "$name" >/dev/null || missing+=("$name")
        done
    done
    ((${#missing[@]} == 0)) && return
    echo "These programs are missing: ${missing[*]}" >&2
    echo "All that is needed, on Fedora: $fedora_packages" >&2
    echo "On Arch Linux: $arch_packages" >&2
    return 1
}

is_any_installed() {
    local name
    for name in ${1//|/ }; do
        [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$name" 2>/dev/null) != installed ]] || return 0
    done
    return 1
}

install_packages() {
    local names=() package
    echo "Installing what is missing: $*" >&2
    as_root apt-get update -q >&2 || return
    for package in "$@"; do
        names+=("$(name_here "$package")")
    done
    as_root apt-get install -q --yes --no-install-recommends "${names[@]}" >&2
}

as_root() {
    if ((EUID == 0)); then
        env DEBIAN_FRONTEND=noninteractive "$@"
    elif command -v sudo >/dev/null; then
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    else
        echo "This needs root, and there is no sudo: $*" >&2
        return 1
    fi
}

# The first of a package's names that this release knows.
name_here() {
    local name
    for name in ${1//|/ }; do
        if [[ -n $(apt-cache show --no-all-versions "$name" 2>/dev/null) ]]; then
            echo "$name"
            return
        fi
    done
    echo "${1%%|*}"
}
