# Shared by run.sh, test.sh, .ci/run and the scripts beside this file: sourced, never run.
# shellcheck shell=bash

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
# shellcheck disable=SC2034  # the lists are for those who source this file
{
    # To build the program and its companion for Windows, and to run them.
    RUN_PACKAGES=(cmake ninja-build g++-mingw-w64-x86-64-posix wine64 fonts-wine fonts-liberation)
    # To test them as well: sanitizers and fuzzers, GoogleTest, printouts turned into text, a browser.
    TEST_PACKAGES=("${RUN_PACKAGES[@]}" clang libclang-rt-dev googletest ghostscript poppler-utils
        chromium)
    # To measure how fast they are.
    BENCHMARK_PACKAGES=("${RUN_PACKAGES[@]}" g++ libbenchmark-dev)
    # To make what people install, and to test it.
    PACKAGE_PACKAGES=("${RUN_PACKAGES[@]}" g++ nsis zip xz-utils groff-base)
    # To look at how the code, benchmarks included, is written.
    CHECK_PACKAGES=(clang-format clang-tidy libbenchmark-dev)
}

# Wine's programs are not on the PATH of a Debian system. File names are UTF-8 to Wine only where
# the locale says so.
PATH=$PATH:/usr/lib/wine
case ${LC_ALL:-${LC_CTYPE:-${LANG:-}}} in
*[Uu][Tt][Ff]*8*) ;;
*) export LC_ALL=C.UTF-8 ;;
esac

say() {
    printf '%s\n' "$*"
}

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# Runs a command, its output in the file $1; shows the end of that output when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        printf '%s: this failed: %s (see %s)\n' "$(basename "$0")" "$*" "$log" >&2
        return 1
    fi
}

as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "needs root or sudo to run: $*"
    fi
}

# Those of the packages named that are not installed, one a line.
missing_packages() {
    local package
    for package in "$@"; do
        if [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            say "$package"
        fi
    done
}

# Installs those of the packages named that are missing; asks nothing, and does nothing when all
# of them are there.
ensure_packages() {
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    local missing
    command -v dpkg-query >/dev/null || die "runs on Debian 12: dpkg-query is not there"
    mapfile -t missing < <(missing_packages "$@")
    [[ ${#missing[@]} -gt 0 ]] || return 0
    say "Installing ${missing[*]}"
    quietly "$ROOT/build/logs/apt-update.log" as_root "${apt[@]}" update &&
        quietly "$ROOT/build/logs/apt-install.log" \
            as_root "${apt[@]}" install -y --no-install-recommends "${missing[@]}"
}

# The program's version.
project_version() {
    sed -n 's/^project(Tonvale VERSION \([0-9.]*\) .*/\1/p' "$ROOT/CMakeLists.txt"
}

# Makes the Wine commands of this shell work in the prefix $1.
use_wine_prefix() {
    export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=-all
    export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
}

# What the tests run in: a Wine prefix of their own with a printer, and no display. $1 tells apart
# what runs side by side.
use_test_environment() {
    local shard=${1:-}
    unset DISPLAY WAYLAND_DISPLAY
    use_wine_prefix "$ROOT/build/wine/tests${shard:+-$shard}"
    export TONVALE_EXAMPLES=$ROOT/examples TONVALE_SCREENSHOTS=$ROOT/build/screenshots
    export TONVALE_PRINTER_FILE=$ROOT/build/wine/printer${shard:+-$shard}/printer.ps
    export TONVALE_PRINT_DIR=$ROOT/build/print
    mkdir -p "$TONVALE_SCREENSHOTS" "$TONVALE_PRINT_DIR"
}

# The Windows name of a Unix path, which need not exist.
windows_path() {
    local path
    path=$(realpath -m -- "$1")
    say "Z:${path//\//\\}"
}
