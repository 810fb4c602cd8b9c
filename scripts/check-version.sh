#!/usr/bin/env bash
# Checks that the version of CMakeLists.txt is that of the changelog's first entry, and is written
# nowhere else where programs and packages have it from.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

cd "$ROOT"
version=$(project_version)
[[ $version =~ ^[0-9]+[.][0-9]+[.][0-9]+$ ]] || die "CMakeLists.txt has no version"
# "[VERSION] - DATE", or "[Unreleased] - VERSION" until then.
first=$(grep -m 1 '^## ' CHANGELOG.md)
[[ $first == "## [$version] - "* || $first == "## [Unreleased] - $version" ]] ||
    die "the version is $version, and the changelog begins with: $first"
written=$(git ls-files '*.sh' '*.cpp' '*.h' '*.rc' '*.in' '*.nsi' '*.txt' '*.awk' |
    grep -v '^tests/' | xargs grep -nF "$version" | grep -v '^CMakeLists.txt:.*project(' || true)
[[ -z $written ]] || die "the version is written elsewhere as well: $written"
