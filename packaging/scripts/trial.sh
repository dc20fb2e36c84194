#!/usr/bin/env bash
# trial.sh FOLDER: as the ordinary user who runs this, starts the installed program with a
# page of the loopback interface on a display of its own and looks at what it shows. Says
# that it is running by the file FOLDER/running-USER, waits for FOLDER/go, starts it once
# more and ends it. FOLDER/picture-USER.png and picture-USER-later.png are what was seen.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
. "$here/common.sh"
. "$here/expect.sh"
folder=$1
user=$(id -un)
data=$HOME/.local/share/tessera-program

# The processes that draw pages have numbers of their own in a namespace of the sandbox's.
sandboxed() {
    local process
    for process in $(pgrep -u "$user" QtWebEngine); do
        ! grep -q '^NSpid:.*[0-9].*\s[0-9]' "/proc/$process/status" || return 0
    done
    return 1
}

files_are_here() {
    [[ $(stat -c '%s %U' "$data/Pref.tsp") == "618 $user" && ! -e $data/Lizenz.txt ]]
}

unset XDG_DATA_HOME XDG_CACHE_HOME QTWEBENGINE_DISABLE_SANDBOX
settle_locale
# Qt 6.8 complains of a desktop without a bus.
export QT_LOGGING_RULES='qt.qpa.theme.dbus=false'
# Within a container the kernel may give no namespaces, of which the sandbox is made.
if ! unshare --user true 2>/dev/null; then
    say "The engine's sandbox cannot be tried here."
    export QTWEBENGINE_DISABLE_SANDBOX=1
fi
start_display
XDG_RUNTIME_DIR=$scratch/runtime
export XDG_RUNTIME_DIR
mkdir -m 700 "$XDG_RUNTIME_DIR"
mkdir "$scratch/pages"
echo "<title>Seite von $user</title><h1>Grüße an $user</h1>" >"$scratch/pages/index.html"
mkfifo "$scratch/port"
setpriv --pdeathsig TERM perl "$here/../samples/server.pl" "$scratch/pages" >"$scratch/port" &
read -r port <"$scratch/port"

expect "version with the engine's" grep -q '^Sicherheitskorrekturen bis Chromium [1-9]' <(tessera --version)
tessera "http://127.0.0.1:$port/" >"$scratch/program.log" 2>&1 &
tessera_pid=$!
expect "page in a window" within 60 has_caption "Tessera.*Seite von $user"
sleep 2
import -silent -window root "$folder/picture-$user.png"
[[ -n ${QTWEBENGINE_DISABLE_SANDBOX:-} ]] || expect "engine in its sandbox" sandboxed
expect "files in the user's data folder" files_are_here
tessera "$data\\Lizenz.txt"
expect "licence text beside the program" within 30 has_caption '^Tessera 5.3.5$'
tessera tessera:archiv
expect "archive by a desktop action" within 30 has_caption 'Bookmark Archiv'
expect "archive in the user's data folder" within 10 test -s "$data/1.bkm"

touch "$folder/running-$user"
expect "go" within 300 test -e "$folder/go"
expect "still running" kill -0 "$tessera_pid"
tessera tessera:historie
expect "start after the update" within 30 has_caption 'Historie'
import -silent -window root "$folder/picture-$user-later.png"
expect "end" ended_well "$tessera_pid"
expect "no messages but the engine's" not grep -v '^\[[0-9]*:\|^Xlib: sequence lost\|^$' "$scratch/program.log"
