#!/usr/bin/env bash
# Installs the release build for a user of its own, starts, updates and removes
# it, packs and unpacks it, and does the same with a package of Debian's in a folder
# that stands for the root of a system.
set -euo pipefail
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/common.sh"
. "$root/packaging/scripts/expect.sh"

is_hardened() {
    local dynamic segments
    dynamic=$(readelf -dW "$1") && segments=$(readelf -lW "$1")
    grep -q BIND_NOW <<<"$dynamic" && grep -q GNU_RELRO <<<"$segments" &&
        grep -q 'GNU_STACK.* RW ' <<<"$segments" && not grep -q '\.symtab' <(readelf -SW "$1")
}

# Versions before 0.27 know neither the key nor the version of desktop files that has it.
valid_desktop_file() {
    if desktop-file-validate "$1" >/dev/null; then
        return
    fi
    sed '/^SingleMainWindow=/d; s/^Version=1.5/Version=1.1/' "$1" >"$scratch/older.desktop"
    desktop-file-validate "$scratch/older.desktop"
}

is_pie() { readelf -dW "$1" | grep -q 'FLAGS_1.*PIE'; }

user_files_kept() {
    diff <(printf '%s\n' archive kept note) <(cat "$program"/{1.bkm,1.bkm.alt,Notiz.txt}) &&
        [[ $(stat -c %s "$program/Pref.tsp") == 618 ]]
}

files_of_home() { (cd "$HOME" && find . ! -type d ! -name '*.cache' | sort); }

# What has come since the installation may be anybody's: desktops keep files of their own.
nothing_is_left() { [[ -z $(comm -12 "$scratch/installed" <(files_of_home)) ]]; }

start_display
allow_engine_as_root
settle_locale
export HOME="$scratch/Jörgs \"Ordner\" \$x" XDG_RUNTIME_DIR=$scratch/runtime
mkdir -m 700 "$HOME" "$XDG_RUNTIME_DIR"
export XDG_DATA_HOME="$HOME/Däten \`a\`" XDG_CACHE_HOME=$HOME/cache
program=$XDG_DATA_HOME/tessera-program
desktop=$XDG_DATA_HOME/applications/tessera.desktop
start=$HOME/.local/bin/tessera

expect "wrong use is refused" not "$root/install" --nonsense
expect "what is not installed cannot be removed" not "$root/install" --remove
expect "installation" "$root/install"
files_of_home >"$scratch/installed"
expect "installed files" test -s "$scratch/installed"
expect "desktop file" valid_desktop_file "$desktop"
expect "metainfo" appstreamcli validate --no-net "$XDG_DATA_HOME"/metainfo/*.xml
expect "hardened launcher" is_hardened "$program/tessera"
expect "hardened shell" is_hardened "$program/lib/tessera-shell.so"
expect "position-independent launcher" is_pie "$program/tessera"
expect "version" grep -qx 'Tessera 5.3.5' <("$start" --version)
expect "manual page" zgrep -q 'im Internet' "$XDG_DATA_HOME"/man/de/man1/tessera.1.gz
expect "German texts" test -s "$program/translations/qtbase_de.qm"
expect "icon picture" test -s "$XDG_DATA_HOME/icons/hicolor/16x16/apps/tessera.png"

echo '<title>Paket</title>Straße' >"$HOME/Größe.html"
"$start" "$HOME/Größe.html" >"$scratch/program.log" 2>&1 &
tessera_pid=$!
expect "page in a window" within 30 has_caption 'Tessera.*Paket'
expect "window's class" xdotool search --onlyvisible --class \
    "^$(sed -n 's/^StartupWMClass=//p' "$desktop")\$"

printf 'archive\n' >"$program/1.bkm"
printf 'kept\n' >"$program/1.bkm.alt"
printf 'note\n' >"$program/Notiz.txt"
printf 'old\n' | tee "$program/translations/old.qm" >"$program/Lizenz.txt"
echo tessera-program/translations/old.qm >>"$program/.installed"
expect "update under the running program" "$root/install"
expect "still running" kill -0 "$tessera_pid"
expect "renewed file" cmp "$program/Lizenz.txt" "$root/resources/Lizenz.txt"
expect "file of an older version gone" not test -e "$program/translations/old.qm"
expect "data not removed under the running program" not "$root/install" --remove --with-data
echo 'Tür' >"$HOME/Tür.html"
expect "start from the desktop" gio launch "$desktop" "$HOME/Tür.html"
expect "page taken up beside the first" within 30 has_caption '^Tessera 5.3.5$'
expect "end" ended_well "$tessera_pid"
expect "user's files after the update" user_files_kept

expect "removal" "$root/install" --remove
expect "user's files after the removal" user_files_kept
expect "nothing else is left" nothing_is_left
expect "removal with the data" "$root/install" --remove --with-data
expect "foreign file kept" test -e "$program/Notiz.txt"
expect "archive gone" not compgen -G "$program/*.bkm*"

expect "package" cpack --config "$root/build/release/CPackConfig.cmake" -B "$scratch/pack"
mkdir "$scratch/unpacked"
expect "unpacking" tar -C "$scratch/unpacked" --strip-components 1 -xf "$scratch"/pack/*.tar.gz
expect "packed program" grep -qx 'Tessera 5.3.5' <("$scratch/unpacked/tessera" --version)
expect "packed desktop file" test -s "$scratch/unpacked/share/applications/tessera.desktop"

mkdir "$scratch/unpacked/Pref.tsp" # so that it cannot be written
"$scratch/unpacked/tessera" "$HOME/Größe.html" >"$scratch/program.log" 2>&1 &
tessera_pid=$!
expect "packed program's page" within 30 has_caption 'Tessera.*Paket'
expect "end without preferences" ended_well "$tessera_pid"

# The package is installed without what it depends on, which this system has. An ordinary
# user starts it, who cannot write into its folder.
system=$scratch/system
as_user=()
if ((EUID == 0)); then
    as_user=(setpriv --reuid 65534 --regid 65534 --clear-groups)
fi

dpkg_there() {
    dpkg --root="$system" --force-depends,not-root,bad-path --log=/dev/null "$@"
}

make_system() {
    mkdir -p "$system"/var/lib/dpkg/{info,updates,triggers} "$scratch/trial" "$scratch/user"
    touch "$system"/var/lib/dpkg/{status,available}
    chmod a+rx "$scratch"
    cp -r "$root/packaging" "$scratch/"
    ((EUID != 0)) || chown 65534:65534 "$scratch/trial" "$scratch/user"
}

within_system() {
    ((EUID == 0)) || chmod a-w "$system/usr/lib/tessera"
    "${as_user[@]}" env HOME="$scratch/user" PATH="$system/usr/bin:$PATH" \
        bash "$scratch/packaging/scripts/trial.sh" "$scratch/trial"
}

trial_runs() { compgen -G "$scratch/trial/running-*" || not kill -0 "$trial_pid" 2>/dev/null; }

check_debian_package() {
    local pack=(cpack -G DEB --config "$root/build/release/CPackConfig.cmake")
    expect "Debian package" "${pack[@]}" -B "$scratch/deb"
    expect "its successor" "${pack[@]}" -R 5.3.6 -B "$scratch/deb"
    make_system
    expect "installing it" dpkg_there -i "$scratch"/deb/tessera_5.3.5_*.deb
    within_system &
    trial_pid=$!
    expect "its use" within 120 trial_runs
    ((EUID == 0)) || chmod u+w "$system/usr/lib/tessera"
    expect "updating it" dpkg_there -i "$scratch"/deb/tessera_5.3.6_*.deb
    ((EUID == 0)) || chmod a-w "$system/usr/lib/tessera"
    touch "$scratch/trial/go"
    wait "$trial_pid" || die "failed: the use of the Debian package"
    ((EUID == 0)) || chmod u+w "$system/usr/lib/tessera"
    expect "purging it" dpkg_there -P tessera
    expect "its folder is gone" not test -e "$system/usr/lib/tessera"
    expect "user's files after purging it" test -s "$scratch/user/.local/share/tessera-program/Book.bkm"
}

if command -v dpkg-shlibdeps >/dev/null; then
    check_debian_package
else
    echo "Skipped: there are no tools for packages of Debian's."
fi
