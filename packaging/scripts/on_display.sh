#!/usr/bin/env bash
# on_display.sh command...: runs a test on a display and in folders of its own, so that
# tests that work with real keys and clicks can run beside each other.
set -euo pipefail
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/common.sh"

start_display
allow_engine_as_root
start_private_folders
settle_locale
# The test must not outlive this script when its time is over.
setpriv --pdeathsig KILL "$@"
