#!/usr/bin/env bash
# Tries the program with the services of a desktop, on a display and a bus of its own: first
# without any service; then with stand-ins for the one of notifications and for the portal, which
# holds a session that is about to end and shows file dialogs; then in a network that goes and
# comes back, also while the program sleeps. No page comes from further away than this computer.
# build/check_desktop.png shows the display after a failure.
set -euo pipefail
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/common.sh"
. "$root/packaging/scripts/expect.sh"
patience=30 # seconds
pids=()
tessera_pid=
portal=org.freedesktop.portal
portal_path=/org/freedesktop/portal/desktop

# start LOG command...: runs it beside this script; its number is in $started.
start() {
    setpriv --pdeathsig TERM "${@:2}" >"$scratch/$1.log" 2>&1 &
    started=$!
    pids+=("$started")
}

end_all() {
    local status=$? pid
    ((status == 0)) || import -silent -window root "$root/build/check_desktop.png" || true
    # It might ask about its downloads.
    [[ -z $tessera_pid ]] || { kill -KILL "$tessera_pid" && wait "$tessera_pid"; } 2>/dev/null || true
    for pid in "${pids[@]}"; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    stop_display
}

says() { grep -qs "$2" "$scratch/$1.log"; }

has_let_go() { [[ $(grep -c ' Close' "$scratch/portal.log") == "$1" ]]; }

is_active() { [[ $(xdotool getactivewindow getwindowname 2>/dev/null) =~ $1 ]]; }

is_in_front() {
    is_active "$1" || return 1
    [[ $(xprop -root -notype _NET_CLIENT_LIST_STACKING) == *", $(printf '0x%x' "$(xdotool getactivewindow)")" ]]
}

activated() {
    xdotool search --onlyvisible --name "$1" windowactivate >/dev/null 2>&1
    is_active "$1"
}

# It starts no service by itself, whatever this computer has.
start_bus() {
    cat >"$scratch/bus.conf" <<END
<busconfig><type>session</type><listen>unix:dir=$scratch/runtime</listen><auth>EXTERNAL</auth>
<policy context="default">
<allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
</policy></busconfig>
END
    start bus dbus-daemon --nofork --print-address --config-file="$scratch/bus.conf"
    expect "bus" within "$patience" says bus '^unix:'
    DBUS_SESSION_BUS_ADDRESS=$(grep '^unix:' "$scratch/bus.log")
    export DBUS_SESSION_BUS_ADDRESS
    expect "bus answers" gdbus introspect --session -d org.freedesktop.DBus -o /
}

# stand_in LOG NAME argument...: starts one and waits until it has its name on the bus.
stand_in() {
    start "$1" /usr/bin/python3 -m dbusmock --session "${@:3}"
    expect "stand-in for $2" gdbus wait --session --timeout "$patience" "$2"
}

# tell NAME PATH METHOD argument...: has the stand-in do something.
tell() { gdbus call --session -d "$1" -o "$2" -m "org.freedesktop.DBus.Mock.$3" "${@:4}"; }

# open WHAT CAPTION ADDRESS [COMMAND...]: starts the program with new files.
open() {
    rm -rf "${scratch:?}"/{program,home,data,cache}
    mkdir -p "$scratch"/{program,home,data,cache}
    cp -r "$root"/build/release/bin/{tessera,lib,Lizenz.txt} "$scratch/program"
    perl "$root/packaging/samples/records.pl" "$scratch/program"
    "${@:4}" setpriv --pdeathsig TERM "$scratch/program/tessera" "$3" >"$scratch/program.log" 2>&1 &
    tessera_pid=$!
    expect "$1" within "$patience" has_caption "^Tessera.*$2"
}

# open_more ADDRESS: hands it over to the program that runs.
open_more() { expect "second start" "$scratch/program/tessera" "$1"; }

end() {
    expect "end" ended_well "$tessera_pid"
    tessera_pid=
    expect "no messages but the engine's" not grep -v \
        '^\[[0-9]*:\|^Sandboxing disabled\|^Xlib: sequence lost\|^$' "$scratch/program.log"
}

# A page that has just come up drops clicks.
asks_after_click() {
    xdotool mousemove --window "$(xdotool search --onlyvisible --name '^Tessera.*Glocke')" 40 300 click 1
    within 2 is_active '^Erlaubnis$'
}

let_page_notify() {
    open "page" Glocke "$site/glocke.html"
    expect "page asks whether it may notify" within "$patience" asks_after_click
    xdotool key --delay 100 Tab Return
    expect "user has agreed by key" within "$patience" not has_caption '^Erlaubnis$'
}

# A window of the width that the program gives it, in the corner of the display.
# Not by grep -q, which leaves xwininfo with nobody to write to.
corner_shows_it() { xwininfo -root -tree | grep '"Tessera".* 320x[0-9]*+948+' >/dev/null; }

begin_download() {
    open_more "$site/karten.zip"
    expect "question for the place of a download" within "$patience" activated '^Datei speichern unter$'
    xdotool key Return
    expect "list of downloads" within "$patience" has_caption '^Downloads$'
    expect "download under way" compgen -G "$HOME/karten*"
}

cancel_download() {
    expect "list of downloads active" within "$patience" activated '^Downloads$'
    xdotool key alt+a
    expect "download cancelled" within "$patience" not compgen -G "$HOME/karten*"
}

without_services() {
    let_page_notify
    expect "without a service: notification in the corner" within "$patience" corner_shows_it
    begin_download
    cancel_download
    end
}

start_stand_ins() {
    stand_in notes org.freedesktop.Notifications --template notification_daemon \
        --parameters '{"capabilities": "body body-markup actions"}'
    stand_in portal "$portal.Desktop" "$portal.Desktop" "$portal_path" "$portal.Inhibit"
    portal_pid=$started
    expect "its method" tell "$portal.Desktop" "$portal_path" \
        AddMethod '' Inhibit 'sua{sv}' o "ret = '$portal_path/request/1'"
    expect "its file dialogs" tell "$portal.Desktop" "$portal_path" \
        AddProperty "$portal.FileChooser" version '<uint32 3>'
    expect "its dialog for saving" tell "$portal.Desktop" "$portal_path" AddMethod \
        "$portal.FileChooser" SaveFile 'ssa{sv}' o "ret = '$portal_path/request/1'"
    expect "its answer" tell "$portal.Desktop" "$portal_path" \
        AddObject "$portal_path/request/1" "$portal.Request" '{}' "[('Close', '', '', '')]"
}

try_notification() {
    let_page_notify
    expect "service gets the notification, with the site" within "$patience" says notes "Notify .*Abfahrt.*$site"
    expect "no markup of the page's in it" says notes 'Um &lt;neun&gt;'
    expect "and nothing is in the corner" not corner_shows_it
    start cover xev -geometry 1280x1024+0+0 -name Decke
    expect "frame covered" within "$patience" is_in_front '^Decke$'
    expect "click on the notification" tell org.freedesktop.Notifications /org/freedesktop/Notifications \
        EmitSignal '' ActionInvoked us "[<uint32 1>, <'default'>]"
    expect "frame in front" within "$patience" is_in_front '^Tessera.*Glocke'
}

try_logging_out() {
    begin_download
    expect "session held for a download" within "$patience" \
        says portal 'Inhibit .* 1 .*Ein Download ist noch nicht fertig\.'
    expect "not let go yet" has_let_go 0
    cancel_download
    expect "session let go" within "$patience" has_let_go 1
    open_more tessera:archiv
    expect "archive" within "$patience" activated '^Bookmark Archiv$'
    xdotool key --delay 100 Down Down F2
    xdotool type --delay 20 Neu
    xdotool key Return
    expect "session held for the archive" within "$patience" \
        says portal 'Inhibit .* 1 .*Änderungen am Archiv sind nicht gespeichert\.'
    expect "not let go yet" has_let_go 1
    xdotool key ctrl+s
    expect "session let go after saving" within "$patience" has_let_go 2
}

asked_times() { [[ $(grep -c ' SaveFile ' "$scratch/portal.log") == "$1" ]]; }

# offer_file N: has the program ask the portal for the Nth time.
offer_file() {
    open_more "$site/karten.zip"
    expect "portal asked for a place" within "$patience" asked_times "$1"
}

# answer_dialog CODE RESULTS: as the portal does when the user has closed its dialog.
answer_dialog() {
    expect "portal's answer" tell "$portal.Desktop" "$portal_path/request/1" \
        EmitSignal "$portal.Request" Response 'ua{sv}' "[<uint32 $1>, <$2>]"
}

# The portal's dialogs are only played: of what it would ask the user there is nothing to see.
try_file_dialogs() {
    export QT_QPA_PLATFORMTHEME=xdgdesktopportal
    open "page, with the portal's dialogs" Glocke "$site/glocke.html"
    offer_file 1
    expect "asked over the frame" says portal \
        "SaveFile \"x11:$(printf %x "$(xdotool search --onlyvisible --name '^Tessera.*')")\" \"Datei speichern unter\""
    expect "with a name and the kinds of files" says portal 'current_name": "karten.zip".*ZIP-Dateien.*Alle Dateien'
    expect "no dialog of the program's" not has_caption '^Datei speichern unter$'
    answer_dialog 1 '@a{sv} {}'
    expect "after a cancel nothing is left" within "$patience" not compgen -G "$HOME/karten*"
    offer_file 2
    echo alt >"$HOME/Übung %1.txt"
    answer_dialog 0 "{'uris': <['file://$HOME/%C3%9Cbung%20%251.txt']>}"
    expect "after a choice: list of downloads" within "$patience" has_caption '^Downloads$'
    expect "download under way" compgen -G "$HOME/karten*"
    cancel_download
    expect "what was there before is still there" grep -qx alt "$HOME/Übung %1.txt"
    offer_file 3
    end
    open "page once more" Glocke "$site/glocke.html"
    offer_file 4
    kill "$portal_pid"
    expect "portal gone: the program asks by itself" within "$patience" activated '^Datei speichern unter$'
    xdotool key Escape
    expect "and goes on" within "$patience" not has_caption '^Datei speichern unter$'
    end
    unset QT_QPA_PLATFORMTHEME
}

network_decided() { says network ready || not kill -0 "$started" 2>/dev/null; }

# Starts a network that has no way out, and lasts as long as the process that keeps it. What is
# run by $inside is in it; the display has to be reached from there.
start_network() {
    local apart=(unshare --net)
    inside=(nsenter --net)
    if ((EUID != 0)); then
        apart+=(--map-root-user)
        inside+=(--user --preserve-credentials)
    fi
    start network "${apart[@]}" sh -c \
        'ip link set lo up && ip link add out type veth peer name far && echo ready && exec sleep infinity'
    inside+=(--target "$started")
    within "$patience" network_decided && says network ready &&
        "${inside[@]}" xdotool get_num_desktops >"$scratch/output" 2>&1
}

# processes PID: it and all that come of it.
processes() {
    local pid
    echo "$1"
    for pid in $(pgrep -P "$1"); do
        processes "$pid"
    done
}

has_asked_since() { (($(grep -c 'GET /wieder.html?' "$scratch/web.log") > $1)); }

# A suspend is imitated: all processes of the program are stopped, and lose their network. In a
# real one the clock that timers go by stands still; here it goes on, and all timers are overdue.
try_sleeping() {
    local all asked
    open_more http://10.9.8.7/wach.html
    expect "page that keeps asking its server" within "$patience" says web 'GET /wieder.html?3'
    mapfile -t all < <(processes "$tessera_pid")
    expect "asleep" kill -STOP "${all[@]}"
    expect "network gone" "${inside[@]}" sh -c 'ip address flush dev out && ip link set out down'
    sleep 12
    asked=$(grep -c 'GET /wieder.html?' "$scratch/web.log")
    expect "awake" kill -CONT "${all[@]}"
    open_more http://10.9.8.7/spaet.html
    sleep 3
    expect "neither page can reach the server" not has_asked_since "$asked"
    expect "network back" "${inside[@]}" sh -c \
        'ip link set out up && ip address add 10.9.8.7/24 dev out && ip route add default dev out'
    expect "the page from before goes on" within "$patience" has_asked_since "$asked"
    expect "the one from without a network comes" within "$patience" says web 'GET /spaet.html .* 200'
}

try_network() {
    if ! start_network; then
        echo "Left out: there is no network of one's own to be had here."
        return
    fi
    # Within, everybody is root. The bus does not know him.
    open "engine's page about the missing network" '\[10\.9\.8\.7\]' http://10.9.8.7/wieder.html \
        "${inside[@]}" env QTWEBENGINE_DISABLE_SANDBOX=1 DBUS_SESSION_BUS_ADDRESS=disabled:
    expect "address" "${inside[@]}" sh -c \
        'ip link set far up && ip link set out up && ip address add 10.9.8.7/24 dev out'
    start web "${inside[@]}" /usr/bin/python3 -u -m http.server --bind 10.9.8.7 --directory "$scratch/pages" 80
    expect "server there" within "$patience" says web '^Serving'
    expect "way out" "${inside[@]}" ip route add default dev out
    expect "page comes by itself" within "$patience" has_caption '^Tessera.*Wieder da'
    try_sleeping
    end
}

require_packages "${program_packages[@]}" "${display_packages[@]}" \
    perl dbus libglib2.0-bin python3-dbusmock iproute2 procps qt6-xdgdesktopportal-platformtheme
build release tessera
start_display
trap end_all EXIT
start_private_folders
allow_engine_as_root
# Within a container the kernel may give no namespaces, of which the sandbox is made.
unshare --user true 2>/dev/null || export QTWEBENGINE_DISABLE_SANDBOX=1
settle_locale
# Qt 6.8 complains of a desktop without a bus.
export HOME=$scratch/home QT_LOGGING_RULES=qt.qpa.theme.dbus=false
unset QT_QPA_PLATFORMTHEME XDG_CONFIG_HOME
mkdir "$scratch/pages"
echo '<title>Wieder da</title>' >"$scratch/pages/wieder.html"
echo '<title>Spät</title>' >"$scratch/pages/spaet.html"
echo '<script>let n = 0; setInterval(() => fetch("wieder.html?" + n++), 500)</script>' >"$scratch/pages/wach.html"
cat >"$scratch/pages/glocke.html" <<'END'
<title>Glocke</title>
<script>
document.addEventListener('click', async () => {
    await Notification.requestPermission()
    new Notification('Abfahrt', { body: 'Um <neun>' })
}, { once: true })
</script>
END
start server perl "$root/packaging/samples/server.pl" "$scratch/pages"
expect "server" within "$patience" says server '^[0-9]'
site=http://127.0.0.1:$(<"$scratch/server.log")
start_bus
without_services
start_stand_ins
try_notification
try_logging_out
end
try_file_dialogs
try_network
