#!/usr/bin/env bash
# in_root.sh [--alone] FOLDER command...: runs a command as root in a system that lies
# in FOLDER, with processes and mounts of its own that end with it. With --alone there
# is no network but the loopback interface. Needs root.
#
# The folder becomes the root by pivot_root: behind a mere chroot the kernel gives
# ordinary users no namespaces, and the engine's sandbox is made of these.
set -euo pipefail

alone=()
if [[ ${1:-} == --alone ]]; then
    alone=(--net)
    shift
fi
(($# >= 2)) || { sed -n '2,4s/^# //p' "$0" >&2 && exit 2; }

enter='
    set -e
    folder=$1
    shift
    if [ -n "$alone" ]; then ip link set lo up; fi
    mount --bind "$folder" "$folder"
    mount -t proc proc "$folder/proc"
    mount -t sysfs sysfs "$folder/sys"
    mount -t tmpfs -o mode=1777 tmpfs "$folder/dev/shm"
    mkdir -p "$folder/.outside"
    cd "$folder"
    pivot_root . .outside
    umount -l /.outside
    exec "$@"
'
alone=${alone[*]} exec unshare --mount --pid --fork --kill-child "${alone[@]}" bash -c "$enter" bash "$1" \
    env -i HOME=/root LANG=C.UTF-8 TERM=dumb DEBIAN_FRONTEND=noninteractive \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "${@:2}"
