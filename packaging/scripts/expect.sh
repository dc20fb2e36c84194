# Shared by the scripts that check the installed program: what has to succeed, and what
# a display shows. To be sourced after common.sh.
# shellcheck shell=bash

# expect what command...: the command has to succeed.
expect() {
    local what=$1
    shift
    "$@" >"$scratch/output" 2>&1 || { cat "$scratch/output" >&2 && die "failed: $what"; }
    echo "passed: $what"
}

not() { ! "$@"; }

has_caption() { xdotool search --onlyvisible --name "$1" >/dev/null 2>&1; }

# within seconds command...: tries until it succeeds.
within() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < end)) || return 1
        sleep 0.1
    done
}

# ended_well pid: ends the program, a child of this shell, as the desktop would.
ended_well() {
    kill -TERM "$1"
    within 20 not kill -0 "$1" 2>/dev/null && wait "$1"
}
