#!/usr/bin/env bash
# Takes the pictures of the manual, docs/bilder/*.png, anew: drives the real
# program on a display of its own. No page comes from further away than the
# loopback interface, whatever its address says.
# "screenshots.sh archive dialogs" takes those of the named scenes only.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
. "$here/common.sh"
. "$here/scenes.sh"

samples=$root/packaging/samples
pictures=$root/docs/bilder
home=/tmp/eva # stands in some of the pictures
program=$home/Tessera
patience=30 # seconds
scenes=(first_start browser page questions windows private downloads lists archive bring_along dialogs overview)

# Decorations of the window manager, in pixels.
border=1
title_bar=20
bottom=5

# find_window PATTERN: waits for a visible window of this caption; its number is
# in $window, its size in $width and $height.
find_window() {
    local end=$((SECONDS + patience)) WINDOW X Y WIDTH HEIGHT SCREEN
    until window=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -n 1) && [[ -n $window ]]; do
        ((SECONDS < end)) || fail "there is no window '$1'"
        sleep 0.1
    done
    eval "$(xdotool getwindowgeometry --shell "$window")"
    width=$WIDTH height=$HEIGHT
}

no_window() {
    local end=$((SECONDS + patience))
    while xdotool search --onlyvisible --name "^$1\$" >/dev/null 2>&1; do
        ((SECONDS < end)) || fail "the window '$1' stays"
        sleep 0.1
    done
}

fail() {
    import -silent -window root "$root/build/screenshots.png" || true
    die "$1; build/screenshots.png shows the display"
}

# place X Y [WIDTH HEIGHT]: puts the window found there and brings it forward.
place() {
    local WINDOW X Y WIDTH HEIGHT SCREEN
    left=$1 top=$2
    if (($# > 2)); then
        width=$3 height=$4
        xdotool windowsize --sync "$window" "$width" "$height"
    fi
    xdotool windowmove --sync "$window" "$left" "$top" windowactivate --sync "$window"
    # Some windows count from their decorations. The tool adds these once too often.
    eval "$(xdotool getwindowgeometry --shell "$window")"
    left=$((X - border)) top=$((Y - title_bar))
}

# Waits until the display is at rest. A blinking cursor makes two pictures.
settle() {
    local end=$((SECONDS + patience)) seen=()
    while ((${#seen[@]} < 6)) || (($(printf '%s\n' "${seen[@]: -6}" | sort -u | wc -l) > 2)); do
        ((SECONDS < end)) || fail "the display does not come to rest"
        seen+=("$(import -silent -window root rgba:- | sha256sum)")
        sleep 0.1
    done
}

# picture NAME X Y WIDTH HEIGHT [OPTION...]: a part of the display. Such as does
# not last is to be taken at once. With $moving set nothing is waited for that may
# never come to rest.
picture() {
    if [[ -n ${moving:-} ]]; then
        sleep 1
    else
        settle
    fi
    take "$@"
}

take() {
    import -silent -window root -crop "$4x$5+$2+$3" +repage png:- |
        convert png:- "${@:6}" +dither -colors 96 -strip -define png:compression-level=9 \
            "PNG8:$pictures/$1.png"
    echo "$1.png: $4 x $5, $(stat -c %s "$pictures/$1.png") bytes"
}

# window_picture NAME [BOTTOM]: the window placed last, with its decorations.
window_picture() {
    picture "$1" $((left - border)) $((top - title_bar)) \
        $((width + 2 * border)) $((height + title_bar + ${2:-$bottom}))
}

# dialog_picture NAME PATTERN [BOTTOM]: a dialog, inside of what lies below it.
# One whose size is fixed has nothing but the border at its bottom.
dialog_picture() {
    find_window "$2"
    place 150 180
    window_picture "$1" "${3:-$bottom}"
}

# wait_for_light X Y: until something is shown where the display was black.
wait_for_light() {
    local end=$((SECONDS + patience))
    until (($(import -silent -window root -crop "1x1+$1+$2" -depth 8 gray:- | od -An -tu1) > 0)); do
        ((SECONDS < end)) || fail "nothing shows at $1, $2"
        sleep 0.1
    done
    sleep 0.5 # the text comes after the ground
}

keys() { xdotool key --delay 250 "$@"; }

enter() {
    xdotool type --delay 10 "$1"
    xdotool key Return
}

click() { xdotool mousemove --sync "$1" "$2" click "${3:-1}"; }

# start [ADDRESS...]: the frame, with a page that fills it.
start() {
    (cd / && exec setpriv --pdeathsig TERM "$program/tessera" "$@") >>"$scratch/program.log" 2>&1 &
    program_pid=$!
    find_window 'Tessera [0-9.]+( - .*)?'
    place 20 30
    settle
}

# end_program [KEY...]: ends it; the keys answer what it asks then.
end_program() {
    kill -TERM "$program_pid"
    if (($# > 0)); then
        find_window Meldung
        keys "$@"
    fi
    wait "$program_pid" || fail "the program ended with an error"
    program_pid=
}

# Another start of the program, which hands a page over to the one that runs.
hand_over() {
    "$program/tessera" "http://www.example.org/$1"
    settle
}

# open ADDRESS TITLE: in the window that fills the frame.
open() {
    keys ctrl+l
    enter "$1"
    find_window "Tessera [0-9.]+ - \\[$2\\]"
    settle
}

prepare() {
    mkdir -m 700 "$home" 2>/dev/null || die "$home is there already"
    trap 'end_all; stop_display' EXIT
    mkdir -p "$program" "$home/Downloads" "$pictures" "$home/.config"
    cp -r "$root"/build/release/bin/{tessera,lib,Lizenz.txt} "$program"
    export HOME=$home XDG_CONFIG_HOME=$home/.config
    mkfifo "$scratch/port"
    setpriv --pdeathsig TERM perl "$samples/server.pl" "$samples" >"$scratch/port" &
    server_pid=$!
    read -r port <"$scratch/port"
    start_tls_server
    export QTWEBENGINE_CHROMIUM_FLAGS="--host-resolver-rules=\"MAP *:443 127.0.0.1:$tls_port,"
    QTWEBENGINE_CHROMIUM_FLAGS+="MAP * 127.0.0.1:$port\""
}

# One with a certificate that nobody vouches for.
start_tls_server() {
    openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=sicher.example.org -days 2 \
        -keyout "$scratch/key.pem" -out "$scratch/certificate.pem" 2>/dev/null
    setpriv --pdeathsig TERM openssl s_server -accept 127.0.0.1:0 -www -key "$scratch/key.pem" \
        -cert "$scratch/certificate.pem" >"$scratch/tls.log" 2>&1 &
    tls_pid=$!
    local end=$((SECONDS + patience))
    until tls_port=$(sed -n 's/^ACCEPT .*:\([0-9]*\)$/\1/p' "$scratch/tls.log") && [[ -n $tls_port ]]; do
        ((SECONDS < end)) || die "the TLS server did not start"
        sleep 0.1
    done
}

end_all() {
    local pid
    for pid in ${program_pid:-} ${server_pid:-} ${tls_pid:-}; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$home"
}

# The program's files as the scenes want them.
fresh_files() {
    rm -f "$program"/*.bkm "$program"/Pref.tsp
    rm -rf "$scratch"/data/* "$scratch"/cache/*
    [[ ${1:-} == none ]] || perl "$samples/records.pl" "$program"
}

require_packages "${program_packages[@]}" "${display_packages[@]}" perl openssl
build release tessera
start_display
prepare
start_private_folders
allow_engine_as_root
settle_locale
for scene in "${@:-${scenes[@]}}"; do
    [[ " ${scenes[*]} " == *" $scene "* ]] || die "there is no scene '$scene'"
    "$scene"
done
