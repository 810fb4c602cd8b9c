#!/usr/bin/env bash
# Uses the whole program at random: keys, mouse, menu commands, dialogs, dropped files.
#
#   scripts/monkey.sh SEED EVENTS
#
# The program is that of build/windows, built with its tests. It runs in a Wine prefix that sees
# nothing of this machine's files, whatever is saved or deleted there. A crash, a program that does
# not answer and a window that does not close end the run; then the last things done are printed. All
# of them are in build/logs/monkey-SEED.log.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

TESTS=$ROOT/build/windows/tests/ui
PREFIX=$ROOT/build/wine/monkey
FOLDER=$PREFIX/drive_c/monkey  # the monkey's own
SECONDS_AN_EVENT=1             # many times what one takes

# Drive Z: is the root of this machine, and only there while the prefix is made.
prepare_prefix() {
    export HOME=$PREFIX.home
    [[ ! -d $PREFIX/dosdevices ]] || ln -sfn / "$PREFIX/dosdevices/z:"
    "$ROOT/scripts/wine-prefix.sh" "$PREFIX" --printer "$PREFIX.home/printer.ps" 9>&-
    rm -f "$PREFIX/dosdevices/z:"
    rm -rf "$FOLDER"
    mkdir -p "$FOLDER/files"
    cp "$TESTS"/tonvale_ui_tests.exe "$TESTS"/tonvale.hlp "$FOLDER"
    cp "$ROOT"/examples/* "$ROOT"/tests/report/fixtures/*.rtf "$FOLDER/files"
    cp "$ROOT/tests/report/fixtures/testo.rtf" "$FOLDER/files/testo.tnv"
}

main() {
    [[ $# -eq 2 && $1 =~ ^[0-9]+$ && $2 =~ ^[0-9]+$ ]] || die "Usage: $0 SEED EVENTS"
    [[ -f $TESTS/tonvale_ui_tests.exe ]] || die "build/windows has no tonvale_ui_tests.exe: see ./test.sh"
    unset DISPLAY WAYLAND_DISPLAY
    mkdir -p "$PREFIX.home"
    exec 9>"$PREFIX.home/lock"
    flock --nonblock 9 || die "another monkey is about"
    prepare_prefix
    use_wine_prefix "$PREFIX"
    trap 'wineserver -k || true' EXIT
    cd "$FOLDER"
    local log=$ROOT/build/logs/monkey-$1.log
    mkdir -p "$(dirname "$log")"
    if ! TONVALE_MONKEY="$1 $2" timeout $(($2 * SECONDS_AN_EVENT + 300)) \
        wine64 'C:\monkey\tonvale_ui_tests.exe' --gtest_filter='ProgramMonkeyTest.*' \
        </dev/null >"$log" 2>&1 9>&-; then
        { grep -am 1 -B 30 -A 80 -E 'Unhandled|Assertion' "$log" || tail -n 40 "$log"; } >&2
        die "seed $1 failed: see $log"
    fi
    tail -n 1 "$log"
}

main "$@"
