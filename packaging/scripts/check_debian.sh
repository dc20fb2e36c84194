#!/usr/bin/env bash
# check_debian.sh SUITE FOLDER [PACKAGE]: tries the package in a fresh Debian system of the
# suite (bookworm, trixie). Makes a system to build in, FOLDER/builder, and builds the package
# there from this tree, unless one is given; installs it into another, FOLDER/user, for two
# ordinary users, updates it while both have it running, and removes it.
# Needs root, the network, and debootstrap; takes as long as a whole build when it is run
# first. FOLDER can be removed as it is: nothing in it stays mounted.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
. "$here/common.sh"
suite=${1:?which suite} folder=$(realpath -m "${2:?which folder}") package=${3:-}
mirror=${DEBIAN_MIRROR:-http://deb.debian.org}
in_root=$here/in_root.sh

install_in() {
    local system=$1
    shift
    "$in_root" "$folder/$system" apt-get -q -y --no-install-recommends install "$@"
}

make_fresh() {
    [[ ! -e $folder/is-fresh ]] || return 0
    mkdir -p "$folder"
    debootstrap --variant=minbase "$suite" "$folder/fresh" "$mirror/debian"
    printf "deb $mirror/%s main\n" "debian $suite" "debian $suite-updates" \
        "debian-security $suite-security" >"$folder/fresh/etc/apt/sources.list"
    cp /etc/resolv.conf "$folder/fresh/etc/"
    "$in_root" "$folder/fresh" apt-get -q update
    touch "$folder/is-fresh"
}

# What has changed gets the present time: a file of another commit may be older than what
# was built of the one before.
copy_changes() {
    local file
    mkdir -p "$1"
    cd "$root"
    while IFS= read -r -d '' file; do
        cmp -s "$file" "$1/$file" || cp --parents "$file" "$1/"
    done < <(git ls-files -z --cached --others --exclude-standard)
}

build_package() {
    if [[ ! -e $folder/builder ]]; then
        cp -a "$folder/fresh" "$folder/builder"
        install_in builder "${program_packages[@]}" lintian appstream desktop-file-utils dpkg-dev file
    fi
    copy_changes "$folder/builder/src"
    "$in_root" "$folder/builder" bash -c 'cd /src && . packaging/scripts/common.sh && build release tessera &&
        cd build/release && cpack -G DEB -B deb >/dev/null && cpack -G DEB -B later -R 5.3.6 >/dev/null'
    "$in_root" "$folder/builder" lintian --fail-on error --info /src/build/release/deb/tessera_5.3.5_amd64.deb
    # The validator of Debian 12 does not know the desktop file's version.
    "$in_root" "$folder/builder" bash -c 'cd /src/resources && desktop-file-validate tessera.desktop &&
        appstreamcli validate --pedantic --no-net *.metainfo.xml' || [[ $suite == bookworm ]]
    packages=("$folder"/builder/src/build/release/{deb/tessera_5.3.5,later/tessera_5.3.6}_amd64.deb)
}

# A package given instead: its successor is the same with another number.
take_package() {
    dpkg-deb -R "$package" "$folder/unpacked"
    sed -i 's/^Version: .*/Version: 5.3.6/' "$folder/unpacked/DEBIAN/control"
    dpkg-deb -b --root-owner-group "$folder/unpacked" "$folder/tessera_5.3.6_amd64.deb" >/dev/null
    rm -r "$folder/unpacked"
    packages=("$package" "$folder/tessera_5.3.6_amd64.deb")
}

install_package() {
    # What was fetched for the last time need not be fetched again.
    mv "$folder"/user/var/cache/apt/archives/*.deb "$folder/fresh/var/cache/apt/archives/" 2>/dev/null || true
    rm -rf "$folder/user"
    cp -a "$folder/fresh" "$folder/user"
    cp "${packages[@]}" "$folder/user/srv/"
    "$in_root" "$folder/user" apt-get -q -y install /srv/tessera_5.3.5_amd64.deb
    if "$in_root" "$folder/user" bash -c 'command -v c++ g++ cc gcc clang'; then
        die "there is a compiler"
    fi
    install_in user xvfb openbox xdotool imagemagick perl-base procps
    cp -r "$root/packaging" "$folder/user/opt/"
}

# Runs in the system, without a network.
try_package() {
    set -euo pipefail
    useradd -m eva
    useradd -m jan
    mkdir -m 1777 /tmp/trial
    local user pids=() pid
    for user in eva jan; do
        runuser -u "$user" -- env HOME="/home/$user" bash /opt/packaging/scripts/trial.sh /tmp/trial &
        pids+=($!)
    done
    while [[ ! -e /tmp/trial/running-eva || ! -e /tmp/trial/running-jan ]]; do
        kill -0 "${pids[@]}"
        sleep 0.2
    done
    apt-get -q -y install /srv/tessera_5.3.6_amd64.deb
    touch /tmp/trial/go
    for pid in "${pids[@]}"; do
        wait "$pid"
    done
    apt-get -q -y purge tessera
    [[ ! -e /usr/lib/tessera && ! -e /usr/bin/tessera ]]
    for user in eva jan; do
        [[ -s /home/$user/.local/share/tessera-program/Pref.tsp ]]
        [[ -s /home/$user/.local/share/tessera-program/Book.bkm ]]
    done
    echo "Installed, used by two users at once, updated under them and removed; their files are kept."
}

make_fresh
if [[ -n $package ]]; then
    take_package
else
    build_package
fi
install_package
"$in_root" --alone "$folder/user" bash -c "$(declare -f try_package); try_package"
cp "$folder"/user/tmp/trial/picture-*.png "$folder/"
