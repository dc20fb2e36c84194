#!/usr/bin/env bash
# on_wayland.sh test [argument...]: runs a test program under a Wayland compositor of its own,
# which draws into memory and takes pointer and keys from a socket. It refuses root: then all of
# it runs as "nobody". Ends with 77 where there is no compositor, or none starts.
set -euo pipefail
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/common.sh"

for tool in sway wayvnc grim wl-paste; do
    command -v "$tool" >/dev/null || exit 77
done
scratch=$(mktemp -d /tmp/tessera.XXXXXX)
pids=()
end() {
    local pid
    trap '' INT TERM HUP
    for pid in "${pids[@]}"; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap end EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# ready pattern: waits for a file that the process started last makes.
ready() {
    local try
    for ((try = 0; try < 300; ++try)); do
        compgen -G "$1" >/dev/null && return
        kill -0 "${pids[-1]}" 2>/dev/null || break
        sleep 0.1
    done
    cat "$scratch"/*.log >&2
    say "The compositor does not start here."
    exit 77
}

mkdir -m 700 "$scratch"/{bin,home,runtime}
programs=$(dirname "$(readlink -f "$1")")
# The build may lie where only root gets.
cp -r "$1" "$programs"/{tessera,lib,Lizenz.txt} "$scratch/bin"
cat >"$scratch/config" <<'END'
xwayland disable
for_window [app_id="tessera"] floating enable, border none
focus_on_window_activation focus
seat * hide_cursor 100
output HEADLESS-1 mode 1280x1024
END
as_user=(setpriv --pdeathsig TERM)
if ((EUID == 0)); then
    chown -R nobody: "$scratch"
    as_user+=(--reuid nobody --regid "$(id -g nobody)" --clear-groups)
fi
settle_locale
unset DISPLAY WAYLAND_DISPLAY XDG_DATA_HOME XDG_CACHE_HOME XDG_CONFIG_HOME DBUS_SESSION_BUS_ADDRESS
export HOME=$scratch/home TMPDIR=$scratch/home XDG_RUNTIME_DIR=$scratch/runtime
export SWAYSOCK=$scratch/runtime/sway QT_QPA_PLATFORM=wayland
export WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman LIBSEAT_BACKEND=noop
# As everywhere in a container that gives ordinary users no namespaces.
if ! "${as_user[@]}" unshare --user --pid --net --fork true 2>/dev/null; then
    say "There are no namespaces here: without the engine's sandbox."
    export QTWEBENGINE_DISABLE_SANDBOX=1
fi

cd "$scratch/home"
"${as_user[@]}" sway --config "$scratch/config" >"$scratch/sway.log" 2>&1 &
pids+=($!)
ready "$SWAYSOCK"
ready "$scratch/runtime/wayland-?"
WAYLAND_DISPLAY=$(compgen -G "$scratch/runtime/wayland-?")
export WAYLAND_DISPLAY
"${as_user[@]}" wayvnc --config=/dev/null --unix-socket "$scratch/runtime/hands" >"$scratch/hands.log" 2>&1 &
pids+=($!)
ready "$scratch/runtime/hands"
status=0
"${as_user[@]}" "$scratch/bin/$(basename "$1")" "${@:2}" || status=$?
[[ ! -d $scratch/bin/failures ]] || cp -r "$scratch/bin/failures" "$programs"
exit "$status"
