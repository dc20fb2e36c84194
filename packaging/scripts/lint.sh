#!/usr/bin/env bash
# Lints the program's sources with clang-tidy. Needs a finished build of preset
# release.
#
# A source whose text, headers and rules are as they were when it passed is not
# linted again. Nearly all the time goes into the library headers, so several
# sources are joined into one and linted together; where the joint text does not
# pass, or does not compile because two sources use a name of their own twice,
# it is halved until single sources are judged.
set -euo pipefail
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/common.sh"

folder=$root/build/release
work=$root/build/lint
rooms=(launcher base address history bookmarks browser pages engine app resources)
most=12 # sources in one piece

# Lists source and fingerprint: the digest of all project files that the
# compiler read for the source, as the build noted them.
fingerprints() {
    local rules dependencies source
    rules=$(cat "$root/.clang-tidy" "$root/cmake/options.cmake" | sha256sum)
    dependencies=$(ninja -C "$folder" -t deps | awk -v root="$root/" '
        /^[^ ]/ { source = "" }
        /^ / {
            sub(/^ +/, "")
            if (index($0, root) != 1 || index($0, root "build/") == 1)
                next
            name = substr($0, length(root) + 1)
            if (source == "")
                source = name
            print source, name
        }' | sort -u)
    while read -r source; do
        printf '%s %s\n' "$source" "$({
            echo "$rules"
            awk -v source="$source" 'BEGIN { print source } $1 == source { print $2 }' <<<"$dependencies" |
                (cd "$root" && xargs sha256sum)
        } | sha256sum | cut -d ' ' -f 1)"
    done < <(cd "$root" && find "${rooms[@]}" -name '*.cpp' | sort)
}

# Lists the compiler's options (as JSON has them) and source, tab between.
commands() {
    awk -v root="$root/" '
        /^ *"command": / { sub(/^[^:]*: "/, ""); sub(/ -o .*/, ""); sub(/^[^-]*/, ""); options = $0 }
        /^ *"file": / {
            sub(/^[^:]*: "/, ""); sub(/",?$/, "")
            if (index($0, root) == 1)
                print options "\t" substr($0, length(root) + 1)
        }' "$folder/compile_commands.json"
}

fingerprint_of() { awk -v source="$1" '$1 == source { print $2 }' "$work/fingerprints"; }

passed_before() { [[ $(cat "$work/$1.stamp" 2>/dev/null) == "$(fingerprint_of "$1")" ]]; }

lint_single() {
    clang-tidy-14 --quiet -p "$folder" "$root/$1" 2>/dev/null
}

# An include that an earlier source has made is left out; one that a source
# makes twice stays and is found.
lint_joint() {
    local options piece=$work/piece.$$
    mkdir -p "$piece"
    (cd "$root" && awk 'FNR == 1 { ++file }
        /^#include/ { if (($0 in seen) && seen[$0] != file) next; seen[$0] = file }
        { print }' "$@") >"$piece/joint.cpp"
    options=$(commands | awk -F '\t' -v source="$1" '$2 == source { print $1; exit }')
    printf '[{ "directory": "%s", "file": "%s", "command": "c++ %s -c %s" }]\n' \
        "$folder" "$piece/joint.cpp" "$options" "$piece/joint.cpp" >"$piece/compile_commands.json"
    clang-tidy-14 --quiet -p "$piece" "$piece/joint.cpp" >"$piece/output" 2>&1
}

lint() {
    local source
    if (($# == 1)); then
        lint_single "$1" || return 1
    elif ! lint_joint "$@"; then
        local half=$(($# / 2)) outcome=0
        lint "${@:1:half}" || outcome=1
        lint "${@:half+1}" || outcome=1
        return "$outcome"
    fi
    for source in "$@"; do
        fingerprint_of "$source" >"$work/$source.stamp"
        echo "passed $source"
    done
}

# Prints the sources of one piece per line: such as have not passed yet and are
# compiled with the same options.
pieces() {
    local source options line=() size last=''
    local -A options_of=()
    while IFS=$'\t' read -r options source; do
        options_of[$source]=$options
    done < <(commands)
    size=$(((${#due[@]} + $(nproc) - 1) / $(nproc)))
    ((size <= most)) || size=$most
    for source in "${due[@]}"; do
        printf '%s\t%s\n' "${options_of[$source]:-}" "$source"
    done | sort | {
        while IFS=$'\t' read -r options source; do
            if ((${#line[@]} >= size)) || [[ $options != "$last" && ${#line[@]} -gt 0 ]]; then
                echo "${line[@]}"
                line=()
            fi
            last=$options
            line+=("$source")
        done
        echo "${line[@]}"
    }
}

if [[ ${1:-} == --piece ]]; then
    shift
    trap 'rm -rf "$work/piece.$$"' EXIT
    lint "$@"
    exit
fi

mkdir -p "$work"
fingerprints >"$work/fingerprints"
while read -r source _; do # each leaves its mark beside its like
    mkdir -p "$work/$(dirname "$source")"
done <"$work/fingerprints"
due=()
while read -r source _; do
    passed_before "$source" || due+=("$source")
done <"$work/fingerprints"
echo "${#due[@]} of $(wc -l <"$work/fingerprints") sources to lint"
if ((${#due[@]} > 0)); then
    pieces | xargs -P "$(nproc)" -L 1 "$0" --piece
fi
