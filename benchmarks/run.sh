#!/usr/bin/env bash
# Builds and runs every benchmark and prints what comes out, a ratio a line:
#
#   benchmarks/run.sh
#
# Packages that are missing are installed first. No display is needed or used. The figures of a
# busy machine scatter: run it alone.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/lib.sh"

NATIVE=$ROOT/build/linux
WINDOWS=$ROOT/build/windows

build() {
    local preset=$1
    shift
    quietly "$ROOT/build/logs/$preset-configure.log" \
        cmake -S "$ROOT" --preset "$preset" -DTONVALE_TESTS=OFF -DTONVALE_BENCHMARKS=ON &&
        quietly "$ROOT/build/logs/$preset-build.log" \
            cmake --build "$ROOT/build/$preset" --target "$@"
}

# Time per run; for the folders of files its ratio to reading their bytes alone, for the risk that to
# one threshold.
native_benchmarks() {
    local results=$ROOT/build/results/benchmarks.csv
    mkdir -p "$(dirname "$results")"
    quietly "$ROOT/build/logs/benchmarks.log" "$NATIVE/benchmarks/tonvale_benchmarks" \
        --benchmark_out="$results" --benchmark_out_format=csv
    awk -F, '
        /^"/ {
            gsub(/"/, "", $1)
            if ($7 == "true" || $7 == "false") { print $1 ": failed: " $8; failed = 1; next }
            if ($1 == "ReadBytes") bytes = $3
            # Milliseconds for 1,000 files: microseconds for one.
            if ($1 == "ReadProtectors") bytes = file = $3
            ratio = ""
            if ($1 ~ /^(Calcola|Classifica|Registro)/ && bytes) ratio = sprintf(", %.1f times reading the bytes", $3 / bytes)
            if ($1 ~ /^(RecomputeRatings|DrawSpectrum)$/ && file) ratio = sprintf(", %.2f times reading one protector\047s file", $3 / file)
            if ($1 == "OneThreshold") threshold_us = $3 / 1000
            if ($1 ~ /^(OneRisk|WholeRiskGrid)$/ && threshold_us) ratio = sprintf(", %.0f times one threshold", $3 / threshold_us)
            printf "%s: %.4g %s%s\n", $1, $3, $5, ratio
        }
        END { exit failed }' "$results"
}

# The programs under Wine, with one that keeps Wine's server alive meanwhile.
windows_benchmarks() {
    wineserver -k || true
    trap 'wineserver -k || true' EXIT
    setsid wine64 "$WINDOWS/wine/tonvale-keeper.exe" </dev/null >/dev/null 2>&1 &
    scripts/wine-run.sh "$WINDOWS/benchmarks/profile_functions_benchmark.exe"
    local benchmark
    for benchmark in start_up report_document; do
        scripts/wine-run.sh "$WINDOWS/benchmarks/${benchmark}_benchmark.exe" \
            "$(windows_path "$WINDOWS/app/tonvale.exe")"
    done
}

program_size() {
    local stripped=$ROOT/build/results/tonvale-stripped.exe
    x86_64-w64-mingw32-strip -o "$stripped" "$WINDOWS/app/tonvale.exe"
    say "tonvale.exe, stripped: $(stat -c %s "$stripped") bytes"
    rm "$stripped"
}

main() {
    cd "$ROOT"
    ensure_packages "${BENCHMARK_PACKAGES[@]}"
    say "Building"
    build linux tonvale_benchmarks
    build windows tonvale tonvale-keeper \
        profile_functions_benchmark start_up_benchmark report_document_benchmark
    "$ROOT/scripts/wine-prefix.sh" "$ROOT/build/wine/benchmarks"
    native_benchmarks
    use_wine_prefix "$ROOT/build/wine/benchmarks"
    windows_benchmarks
    program_size
}

main "$@"
