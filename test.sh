#!/usr/bin/env bash
# Builds and runs every test, installing packages that are missing first:
#
#   ./test.sh
#
# The last line is "N passed, N failed"; the exit status is 0 when nothing failed. No display is
# needed or used.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/lib.sh"

NATIVE=$ROOT/build/linux-asan
WINDOWS=$ROOT/build/windows
RESULTS=$ROOT/build/results
FUZZ_SECONDS=20  # of all fuzzers together
WINDOWS_SHARDS=2  # run side by side; programs and Wine's server wait for each other a lot

passed=0
failed=0

# Counts one check, named $1: the command that follows.
check() {
    local name=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        say "FAILED: $name"
    fi
}

# Builds everything for a preset; $2... are further settings.
build() {
    local preset=$1
    shift
    say "Building for $preset"
    quietly "$ROOT/build/logs/$preset-configure.log" \
        cmake -S "$ROOT" --preset "$preset" -DTONVALE_TESTS=ON "$@" &&
        quietly "$ROOT/build/logs/$preset-build.log" cmake --build "$ROOT/build/$preset"
}

# Runs the tests of a build folder; $2 is the folder for their results, $3 how the tests have to
# name it.
run_ctest() {
    local folder=$1 results=$2 results_name=$3
    rm -rf "$results"
    mkdir -p "$results"
    GTEST_OUTPUT="xml:$results_name" ctest --test-dir "$folder" --output-on-failure \
        --no-tests=error --output-junit "$results/ctest.xml" || true
}

# Adds up what the tests said whose results are in the folder $1.
tally() {
    local counts
    read -r -a counts < <("$ROOT/scripts/tally-tests.sh" "$1/ctest.xml" "$1")
    passed=$((passed + counts[0]))
    failed=$((failed + counts[1]))
}

native_tests() {
    say "Running the tests of linux-asan"
    GTEST_BRIEF=1 run_ctest "$NATIVE" "$RESULTS/linux-asan" "$RESULTS/linux-asan/"
    tally "$RESULTS/linux-asan"
}

# One of the shards of the Windows tests, in the prefix of its own, with a program that keeps
# Wine's server alive meanwhile.
windows_shard() {
    local shard=$1
    local results=$RESULTS/windows-$shard
    use_test_environment "$shard"
    trap 'wineserver -k || true' EXIT
    setsid wine64 "$WINDOWS/wine/tonvale-keeper.exe" </dev/null >/dev/null 2>&1 &
    GTEST_TOTAL_SHARDS=$WINDOWS_SHARDS GTEST_SHARD_INDEX=$((shard - 1)) \
        run_ctest "$WINDOWS" "$results" "$(windows_path "$results")\\"
}

# The programs under Wine. Every shard has desktop, focus and clipboard for itself.
windows_tests() {
    local shard shards=()
    say "Running the tests of windows ($WINDOWS_SHARDS shards)"
    for ((shard = 1; shard <= WINDOWS_SHARDS; ++shard)); do
        (windows_shard "$shard") >"$ROOT/build/logs/windows-$shard.log" 2>&1 &
        shards+=($!)
    done
    wait "${shards[@]}" || true
    for ((shard = 1; shard <= WINDOWS_SHARDS; ++shard)); do
        cat "$ROOT/build/logs/windows-$shard.log"
        tally "$RESULTS/windows-$shard"
    done
    check "executables" "$ROOT/scripts/check-executables.sh" "$WINDOWS/app/tonvale.exe" \
        "$WINDOWS/calc/tonvale-calc.exe"
    check "printed reports" "$ROOT/tests/print/check_print.sh" "$TONVALE_PRINT_DIR"
    # Where there is such a program.
    if command -v soffice >/dev/null; then
        check "report in another program" "$ROOT/tests/report/check_other_program.sh" \
            "$TONVALE_PRINT_DIR"
    fi
}

browser_test() {
    say "Opening a register in a browser"
    check "register in a browser" \
        "$ROOT/tests/archive/check_browser.sh" "$NATIVE/calc/tonvale-calc" "$ROOT/build/screenshots"
}

run_fuzzer() {
    local fuzzer=$1 seconds=$2 name work
    name=$(basename "$fuzzer")
    work=$ROOT/build/fuzz/$name
    mkdir -p "$work/corpus"
    (
        cd "$work"
        quietly "$ROOT/build/logs/$name.log" "$fuzzer" -max_total_time="$seconds" -timeout=10 \
            -rss_limit_mb=1024 -print_final_stats=1 corpus "$ROOT/examples"
    ) && grep -Eq 'number_of_executed_units: [1-9]' "$ROOT/build/logs/$name.log"
}

fuzzers() {
    local list fuzzer
    mapfile -t list < <(find "$NATIVE/tests/fuzz" -maxdepth 1 -type f -name '*_fuzzer' | sort)
    check "there are fuzzers" test "${#list[@]}" -gt 0
    [[ ${#list[@]} -gt 0 ]] || return 0
    say "Running the fuzzers (${#list[@]})"
    for fuzzer in "${list[@]}"; do
        check "$(basename "$fuzzer")" \
            run_fuzzer "$fuzzer" $((FUZZ_SECONDS / ${#list[@]} > 0 ? FUZZ_SECONDS / ${#list[@]} : 1))
    done
}

prepare() {
    local shard
    ensure_packages "${TEST_PACKAGES[@]}" || return 1
    for ((shard = 1; shard <= WINDOWS_SHARDS; ++shard)); do
        (
            use_test_environment "$shard"
            "$ROOT/scripts/wine-prefix.sh" "$WINEPREFIX" --printer "$TONVALE_PRINTER_FILE"
        ) || return 1
    done
}

# Builds count as tests only when they fail.
run_everything() {
    check "version" "$ROOT/scripts/check-version.sh"
    if build linux-asan; then
        native_tests
        browser_test
        fuzzers
    else
        failed=$((failed + 1))
    fi
    if build windows -DTONVALE_BENCHMARKS=ON; then
        windows_tests
    else
        failed=$((failed + 1))
    fi
}

main() {
    cd "$ROOT"
    rm -rf build/print build/screenshots
    use_test_environment
    if prepare; then
        run_everything
    else
        failed=1
    fi
    say "$passed passed, $failed failed"
    [[ $failed -eq 0 ]]
}

main "$@"
