#!/usr/bin/env bash
# Runs clang-tidy over every C++ file of the project: natively where the native build compiles it,
# as Windows code where only the Windows build does.
#
#   scripts/check-tidy.sh [FILE...]
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

# Compile commands of their own: without precompiled headers, so that a missing include shows.
TIDY=$ROOT/build/tidy
# How far the static analyzer follows one function. Without a bound it takes four fifths of the
# time, most of it for tests, and has never found more.
ANALYSIS=(--extra-arg=-Xclang --extra-arg=-analyzer-config
    --extra-arg=-Xclang --extra-arg=max-nodes=20000)

# The project's files that a build compiles, one a line.
compiled_files() {
    sed -n 's/^ *"file": "\(.*\.cpp\)",\{0,1\}$/\1/p' "$TIDY/$1/compile_commands.json" |
        grep "^$ROOT/" | grep -v "^$ROOT/build/" | sort -u
}

configure() {
    quietly "$ROOT/build/logs/tidy-$1-configure.log" \
        cmake -S "$ROOT" --preset "$1" -B "$TIDY/$1" -DTONVALE_TESTS=ON -DTONVALE_BENCHMARKS=ON \
        -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON
}

# Checks the files of the list $1 (one a line) as the build $2 compiles them, with arguments $3...
tidy() {
    local files=$1 build=$2
    shift 2
    printf '%s' "$files" |
        xargs -r -d '\n' -P "$(nproc)" -n 2 clang-tidy --quiet -p "$TIDY/$build" \
            "${ANALYSIS[@]}" "$@" 2>&1 |
        { grep -Ev '^[0-9]+ warnings? (and [0-9]+ errors? )?generated|^Suppressed |^Use -header' || true; }
}

# Where the cross-compiler has its headers; clang does not find those of Debian's by itself.
mingw_includes() {
    x86_64-w64-mingw32-g++-posix -E -x c++ -v /dev/null 2>&1 >/dev/null |
        sed -n '/^#include </,/^End of search/s/^ \(\/.*\)$/--extra-arg=-isystem\1/p' |
        grep -v '/lib/gcc/.*/include$'
}

main() {
    cd "$ROOT"
    configure linux-asan
    configure windows
    local native windows includes wanted='.' status=0
    [[ $# -eq 0 ]] || wanted=$(realpath -- "$@" | sed 's/[.]/\\./g; s/.*/^&$/')
    native=$(compiled_files linux-asan | grep "$wanted" || true)
    windows=$(comm -13 <(compiled_files linux-asan) <(compiled_files windows) |
        grep "$wanted" || true)
    mapfile -t includes < <(mingw_includes)
    say "Running clang-tidy on $(wc -w <<<"$native") native and $(wc -w <<<"$windows") Windows files"
    tidy "$native" linux-asan || status=1
    tidy "$windows" windows --extra-arg=--target=x86_64-w64-mingw32 "${includes[@]}" || status=1
    return $status
}

main "$@"
