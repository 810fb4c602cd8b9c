#!/usr/bin/env bash
# Runs clang-tidy over every C++ file of the project: natively where the native build compiles it,
# as Windows code where only the Windows build does.
#
#   scripts/check-tidy.sh [FILE...]
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

# The project's files that a build compiles, one a line.
compiled_files() {
    sed -n 's/^ *"file": "\(.*\.cpp\)",\{0,1\}$/\1/p' "$ROOT/build/$1/compile_commands.json" |
        grep "^$ROOT/" | grep -v "^$ROOT/build/" | sort -u
}

configure() {
    quietly "$ROOT/build/logs/$1-configure.log" \
        cmake -S "$ROOT" --preset "$1" -DTONVALE_TESTS=ON -DTONVALE_BENCHMARKS=ON
}

# Checks the files named on standard input as the build $1 compiles them, with arguments $2...
tidy() {
    local build=$1
    shift
    xargs -r -d '\n' -P "$(nproc)" -n 2 clang-tidy --quiet -p "$ROOT/build/$build" "$@" 2>&1 |
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
    printf '%s' "$native" | tidy linux-asan || status=1
    printf '%s' "$windows" | tidy windows --extra-arg=--target=x86_64-w64-mingw32 \
        "${includes[@]}" || status=1
    return $status
}

main "$@"
