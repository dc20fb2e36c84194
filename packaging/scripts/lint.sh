#!/usr/bin/env bash
# Lints the program's sources with clang-tidy, several at a time. A source whose
# text, headers and rules are as they were when it passed is not linted again.
# Needs a finished build of preset release.
set -euo pipefail
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/common.sh"

folder=$root/build/release
stamps=$root/build/lint
rooms=(base app browser history bookmarks)

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
            awk -v source="$source" '$1 == source { print $2 }' <<<"$dependencies" |
                (cd "$root" && xargs -r sha256sum)
        } | sha256sum | cut -d ' ' -f 1)"
    done < <(cd "$root" && find "${rooms[@]}" -name '*.cpp' | sort)
}

lint_one() {
    local source=$1 fingerprint=$2 stamp=$stamps/$1.stamp
    [[ $(cat "$stamp" 2>/dev/null) != "$fingerprint" ]] || return 0
    echo "lint $source"
    clang-tidy-14 --quiet -p "$folder" "$root/$source" 2>"$stamp.log" || {
        cat "$stamp.log"
        return 1
    }
    echo "$fingerprint" >"$stamp"
}

if [[ ${1:-} == --one ]]; then
    lint_one "$2" "$3"
    exit
fi
for room in "${rooms[@]}"; do
    mkdir -p "$stamps/$room"
done
fingerprints | xargs -r -P "$(nproc)" -L 1 "$0" --one
