#!/usr/bin/env bash
# Checks that every C++ file of the project is formatted as .clang-format says.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

cd "$ROOT"
say "Checking the formatting"
git ls-files -z '*.h' '*.cpp' | xargs -0 -r -P "$(nproc)" -n 16 clang-format --dry-run -Werror
