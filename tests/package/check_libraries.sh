#!/usr/bin/env bash
# Checks that the programs in FOLDER load no library that lies beside them or in the current folder
# in place of one of the system's:
#
#   tests/package/check_libraries.sh FOLDER TONVALE_OPEN
#
# Not to be seen under Wine: libraries that Wine's own user32, shell32 and comdlg32 bring along at a
# program's start (imm32, msimg32, version, uxtheme, winspool), for which Windows looks in its own folder.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

LIBRARIES=(comctl32 dwmapi gdiplus mlang msls31 oleacc propsys riched20 riched32 usp10
    windowscodecs winmm)
TITLE='Tonvale - Esposizione al rumore e danno uditivo'

folder=$(realpath -- "$1")
opener=$(realpath -- "$2")
source=$ROOT/tests/package/planted_library.c
work=$ROOT/build/planted
compiler=x86_64-w64-mingw32-gcc-posix

plant() {
    local library
    for library in "${LIBRARIES[@]}"; do
        cp "$work/planted.dll" "$1/$library.dll"
    done
}

# Runs a command in the folder $1; says which libraries planted in the folder $2 it has loaded.
loaded() {
    local current=$1 planted=$2
    shift 2
    rm -f "$planted"/*.loaded
    (cd "$current" && "$ROOT/scripts/wine-run.sh" "$@" >"$work/output" 2>&1) || true
    wineserver -k || true
    find "$planted" -name '*.loaded' -printf '%f '
}

# The program's window, and the companion's answer, have to come, and nothing else.
check() {
    local name=$1 programs=$2 planted=$3 found
    found=$(loaded "$planted" "$planted" "$opener" open "$(windows_path "$programs/tonvale.exe")" \
        "$TITLE")
    grep -q 'Nessun file selezionato' "$work/output" || die "$name: the program does not start"
    found+=$(loaded "$planted" "$planted" "$programs/tonvale-calc.exe" verifica \
        "$(windows_path "$ROOT/examples/giornata.lep")")
    grep -q 'non coerenti: 0' "$work/output" || die "$name: the companion does not work"
    [[ -z $found ]] || die "$name: loaded $found"
}

rm -rf "$work"
mkdir -p "$work/beside" "$work/current"
$compiler -shared -s "$source" -o "$work/planted.dll"
$compiler -DCONTROL -s "$source" -o "$work/beside/control.exe" -lwinmm
cp "$folder"/tonvale*.* "$work/beside"
plant "$work/beside"
plant "$work/current"
# Libraries that are not Wine's own come first, as on Windows.
WINEDLLOVERRIDES+=";winedbg.exe=d;$(IFS=, && say "${LIBRARIES[*]}")=n,b"
wineserver -k || true
[[ -n $(loaded "$work/beside" "$work/beside" "$work/beside/control.exe") ]] ||
    die "a program that takes no care does not load them either"
check "beside the program" "$work/beside" "$work/beside"
check "in the current folder" "$folder" "$work/current"
