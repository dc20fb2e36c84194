# Shared by ./run, ./install, ./test, .ci/run and the scripts in bench/: packages,
# builds, virtual displays.
# To be sourced by bash scripts that run with "set -euo pipefail".
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# What the program needs to be built and to run. Recommended packages are not
# installed, so what Qt only recommends is named here.
program_packages=(
    g++ cmake ninja-build
    qt6-base-dev qt6-webengine-dev qt6-svg-dev libxcb1-dev
    qt6-qpa-plugins qt6-wayland qt6-translations-l10n
    fonts-dejavu-core fonts-liberation
)
# A display where there is none, a window manager that activates windows, and
# tools that look at the picture.
display_packages=(xvfb openbox xdotool x11-utils imagemagick)
# A Wayland compositor and tools that use it, where the tests that need them have been
# tried. They are skipped without.
wayland_packages=()
# What the checks need besides. Their results differ from version to version, so
# the format and lint tools are only wanted where version 14 is to be had.
check_packages=(git clang libclang-rt-dev desktop-file-utils appstream libglib2.0-bin dpkg-dev)

suite=$(. /etc/os-release 2>/dev/null && echo "${VERSION_CODENAME:-}") || suite=
case $suite in
bookworm)
    check_packages+=(clang-format-14 clang-tidy-14)
    wayland_packages+=(sway wayvnc grim wl-clipboard)
    ;;
esac

say() { printf '==> %s\n' "$*"; }

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# What Fedora and Arch call these packages; "-" where another one has it.
other_names='
    g++                   gcc-c++                  gcc
    cmake                 cmake                    cmake
    ninja-build           ninja-build              ninja
    qt6-base-dev          qt6-qtbase-devel         qt6-base
    qt6-webengine-dev     qt6-qtwebengine-devel    qt6-webengine
    qt6-svg-dev           qt6-qtsvg-devel          qt6-svg
    libxcb1-dev           libxcb-devel             libxcb
    qt6-qpa-plugins       qt6-qtbase-gui           -
    qt6-wayland           qt6-qtwayland            qt6-wayland
    qt6-translations-l10n qt6-qttranslations       qt6-translations
    fonts-dejavu-core     dejavu-sans-fonts        ttf-dejavu
    fonts-liberation      liberation-fonts         ttf-liberation
    xvfb                  xorg-x11-server-Xvfb     xorg-server-xvfb
    openbox               openbox                  openbox
    xdotool               xdotool                  xdotool
    x11-utils             xprop                    xorg-xprop
    imagemagick           ImageMagick              imagemagick
    sway                  sway                     sway
    wayvnc                wayvnc                   wayvnc
    grim                  grim                     grim
    wl-clipboard          wl-clipboard             wl-clipboard
    git                   git                      git
    clang                 clang                    clang
    libclang-rt-dev       compiler-rt              compiler-rt
    desktop-file-utils    desktop-file-utils       desktop-file-utils
    appstream             appstream                appstream
    libglib2.0-bin        glib2                    glib2
    dpkg-dev              dpkg-dev                 dpkg
'

# names_of column name...: what the column of the table above says of these packages.
names_of() {
    awk -v column="$1" -v names="${*:2}" '
        BEGIN { split(names, list); for (i in list) wanted[list[i]] }
        $1 in wanted && $column != "-" { print $column }' <<<"$other_names"
}

# need_packages name...: on a system without apt, says what is missing, as far as it can be
# found out, and ends; goes on when all is there.
need_packages() {
    local names missing install
    if command -v rpm >/dev/null; then
        names=$(names_of 2 "$@") install='dnf install'
        # shellcheck disable=SC2086
        missing=$(for name in $names; do rpm -q --quiet --whatprovides "$name" || echo "$name"; done)
    elif command -v pacman >/dev/null; then
        names=$(names_of 3 "$@") install='pacman -S'
        # shellcheck disable=SC2086
        missing=$(pacman -T $names) || true
    else
        say "This system has neither apt nor rpm nor pacman. Needed is what these packages hold:"
        printf '    Debian: %s\n    Fedora: %s\n    Arch:   %s\n' "$*" \
            "$(names_of 2 "$@" | xargs)" "$(names_of 3 "$@" | xargs)"
        return
    fi
    [[ -z $missing ]] || die "packages are missing; as root run: $install $(xargs <<<"$missing")"
}

# require_packages name...: installs those that are missing.
require_packages() {
    if ! command -v apt-get >/dev/null; then
        need_packages "$@"
        return
    fi
    local present name missing=()
    present=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null) || true
    for name in "$@"; do
        grep -qxF "installed $name" <<<"$present" || missing+=("$name")
    done
    if ((${#missing[@]} == 0)); then
        return
    fi

    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null ||
            die "packages are missing and there is no sudo; as root run: apt-get install --no-install-recommends ${missing[*]}"
        as_root=(sudo)
    fi
    say "Installing Debian packages: ${missing[*]}"
    "${as_root[@]}" apt-get -q update || say "The package lists could not be renewed; trying with those that are there."
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 \
        --no-install-recommends install "${missing[@]}" ||
        die "these packages could not be installed: ${missing[*]}"
}

# build preset [target...]: configures when that was not done yet, then builds.
# Later changes of the CMake files are seen by the build itself, a change of
# the presets is not.
build() {
    local preset=$1 folder=$root/build/$1 targets=()
    shift
    (($# == 0)) || targets=(--target "$@")
    if [[ -e $folder/CMakeCache.txt ]] &&
        ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        say "The source tree has moved: building preset $preset anew."
        rm -rf "$folder"
    fi
    if [[ ! -e $folder/build.ninja || ! -e $folder/configured || $root/CMakePresets.json -nt $folder/configured ]]; then
        say "Configuring preset $preset"
        (cd "$root" && cmake --preset "$preset") || die "configuring preset $preset failed"
        touch "$folder/configured"
    fi
    cmake --build "$folder" "${targets[@]}" || die "building preset $preset failed"
}

# The engine refuses to run as root with its sandbox.
allow_engine_as_root() {
    if ((EUID == 0)); then
        export QTWEBENGINE_DISABLE_SANDBOX=1
    fi
}

# Without any locale set the C locale would turn umlauts into question marks.
settle_locale() {
    [[ -n ${LC_ALL:-}${LC_CTYPE:-}${LANG:-} ]] || export LANG=C.UTF-8
}

# Starts a display of our own with a window manager and points the environment
# at it. It goes when the script ends, whichever way. `display_size` (WxH), when
# set before, is its size.
start_display() {
    scratch=$(mktemp -d)
    trap stop_display EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    mkfifo "$scratch/number"
    # A display begins anew when its last client has gone: a tool that looks for the window
    # manager would take away the connection that this is about to make.
    setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 "${display_size:-1280x1024}x24" -noreset -nolisten tcp \
        3>"$scratch/number" >"$scratch/xvfb.log" 2>&1 &
    xvfb_pid=$!
    local number
    if ! read -r -t 30 number <"$scratch/number"; then
        cat "$scratch/xvfb.log" >&2
        die "the virtual display did not start"
    fi
    export DISPLAY=:$number QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
    setpriv --pdeathsig TERM openbox --sm-disable >"$scratch/openbox.log" 2>&1 &
    openbox_pid=$!
    local try
    for ((try = 0; try < 100; ++try)); do
        xdotool get_num_desktops >/dev/null 2>&1 && return
        sleep 0.1
    done
    cat "$scratch/openbox.log" >&2
    die "the window manager did not start"
}

stop_display() {
    trap '' INT TERM HUP
    local pid
    for pid in ${openbox_pid:-} ${xvfb_pid:-}; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$scratch"
}

# Keeps what is started on our display apart from a copy that the user has
# running: that would take up the address, and would share the engine's profile.
start_private_folders() {
    mkdir -m 700 "$scratch/runtime" "$scratch/data" "$scratch/cache"
    export XDG_RUNTIME_DIR=$scratch/runtime XDG_DATA_HOME=$scratch/data XDG_CACHE_HOME=$scratch/cache
}

# run_tests preset [ctest argument...]: as many at a time as there are processors, at
# most four. Tests with windows bring a display of their own.
run_tests() {
    local folder=$root/build/$1 processors
    shift
    processors=$(nproc)
    (
        settle_locale
        ctest --test-dir "$folder" --output-on-failure --no-tests=error \
            -j $((processors < 4 ? processors : 4)) "$@"
    )
}
