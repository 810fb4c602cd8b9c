#!/usr/bin/env bash
# Counts what a run of ctest has passed and failed: prints the two numbers.
#
#   scripts/tally-tests.sh JUNIT_XML GTEST_DIR
#
# JUNIT_XML is what `ctest --output-junit` has written; GTEST_DIR holds NAME.xml, written by
# GoogleTest, for each entry NAME of it that is a whole test program. Such an entry counts with
# the tests in it, any other entry as one. An entry counts as a failure of its own when it has
# failed although no test in it has, when it ran no test, and when it is a test program ("..._tests")
# that left no NAME.xml, as after a crash. Skipped tests do not count.
set -euo pipefail

# The entries of a junit file, "NAME STATUS" each: status is "run" for those that passed.
entries() {
    sed -n 's/^[[:space:]]*<testcase .*name="\([^"]*\)" classname.* status="\([^"]*\)".*/\1 \2/p' "$1"
}

# Passed and failed tests of one GoogleTest file.
count_gtest() {
    awk '
        function value(name,    text) {
            if (!match($0, " " name "=\"[0-9]+\"")) return 0
            text = substr($0, RSTART, RLENGTH)
            gsub(/[^0-9]/, "", text)
            return text + 0
        }
        /<testsuites / { tests = value("tests"); failed = value("failures") + value("errors")
                         left_out = value("disabled") }
        /<testsuite / { left_out += value("skipped") }
        END { print tests - failed - left_out, failed + 0 }' "$1"
}

main() {
    local junit=$1 folder=$2 name status ran failed total_passed=0 total_failed=0
    [[ -s $junit ]] || {
        echo "0 1"
        return
    }
    while read -r name status; do
        ran=0 failed=0
        if [[ -s $folder/$name.xml ]]; then
            read -r ran failed < <(count_gtest "$folder/$name.xml")
            ((ran + failed > 0)) || failed=1
            [[ $status == run || $failed -gt 0 ]] || failed=1
        elif [[ $status == run && $name != *_tests ]]; then
            ran=1
        else
            failed=1
        fi
        ((total_passed += ran, total_failed += failed)) || true
    done < <(entries "$junit")
    ((total_passed + total_failed > 0)) || total_failed=1
    echo "$total_passed $total_failed"
}

main "$@"
