#!/usr/bin/env bash
# Builds Tonvale and starts it under Wine, with a data file or report document if one is given:
#
#   ./run.sh [FILE]
#
# Packages that are missing are installed first. Without a display the program opens FILE
# (examples/giornata.lep when none is given) all the same: what tonvale-calc computes for it is
# printed, and a picture of the windows is saved as build/tonvale.png.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/lib.sh"

BUILD=$ROOT/build/windows

build() {
    # A configuration that tests have made already serves as well, and is left as it is.
    if [[ ! -f $BUILD/build.ninja ]]; then
        quietly "$ROOT/build/logs/run-configure.log" \
            cmake -S "$ROOT" --preset windows -DTONVALE_TESTS=OFF -DTONVALE_BENCHMARKS=OFF
    fi
    quietly "$ROOT/build/logs/run-build.log" \
        cmake --build "$BUILD" --target tonvale tonvale-calc tonvale-shot
}

# Prints what the file's calculator computes; report documents have none.
compute() {
    local file=$1
    [[ ${file,,} =~ \.(lep|lew|leg|err|spr|spi|dpi|ilg)$ ]] || return 0
    local status=0
    scripts/wine-run.sh "$BUILD/calc/tonvale-calc.exe" calcola "$(windows_path "$file")" ||
        status=$?
    # 1 means values that the calculator refuses, which it has said; the program opens them.
    [[ $status -le 1 ]] || die "tonvale-calc could not compute $file"
}

take_picture() {
    local file=$1 picture=$ROOT/build/tonvale.png
    rm -f "$picture"
    scripts/wine-run.sh "$BUILD/wine/tonvale-shot.exe" "$(windows_path "$picture")" \
        "$(windows_path "$BUILD/app/tonvale.exe")" "$(windows_path "$file")" ||
        die "tonvale.exe did not show $file"
    [[ -s $picture ]] || die "no picture was saved"
    say "No display: the window showing $(basename "$file") is saved as build/tonvale.png"
}

main() {
    [[ $# -le 1 && ${1:-} != -* ]] || {
        say "Usage: ./run.sh [FILE]" >&2
        exit 2
    }
    local file=''
    if [[ $# -eq 1 ]]; then
        [[ -f $1 && -r $1 ]] || die "there is no file $1"
        file=$(realpath -- "$1")
    fi
    cd "$ROOT"
    ensure_packages "${RUN_PACKAGES[@]}"
    say "Building tonvale.exe"
    build
    # Wine shows windows through X only (a Wayland desktop has Xwayland for that).
    local prefix=$ROOT/build/wine/run
    "$ROOT/scripts/wine-prefix.sh" "$prefix"
    use_wine_prefix "$prefix"
    if [[ -n ${DISPLAY:-} ]]; then
        say "Starting tonvale.exe"
        wine64 "$BUILD/app/tonvale.exe" ${file:+"$(windows_path "$file")"} ||
            die "tonvale.exe ended with an error; can windows be shown on display $DISPLAY?"
        return
    fi
    # Nothing of an earlier start may be left, and nothing is left behind.
    wineserver -k || true
    trap 'wineserver -k || true' EXIT
    file=${file:-$ROOT/examples/giornata.lep}
    compute "$file"
    take_picture "$file"
}

main "$@"
