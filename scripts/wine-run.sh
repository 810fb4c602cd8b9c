#!/usr/bin/env bash
# Runs a Windows program under Wine and prints what it prints, as it comes:
#
#   scripts/wine-run.sh PROGRAM [ARGUMENT...]
#
# The program writes to a file: on a terminal Wine would draw a console of its own, and a pipe would
# be inherited by the services that Wine starts with its first program, so that whoever reads it
# waits for those services to end.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

output=$(mktemp)
trap 'rm -f "$output"' EXIT
wine64 "$@" </dev/null >"$output" 2>&1 &
program=$!
tail --lines=+1 --follow --sleep-interval=0.05 --pid="$program" "$output"
wait "$program"
