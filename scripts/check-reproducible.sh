#!/usr/bin/env bash
# Checks that the commit gives the same packages, byte by byte, when it is built once more elsewhere:
#
#   scripts/check-reproducible.sh
#
# ./package.sh has to have run, in a folder without changes. Settings count: GCC compiles a few files
# otherwise when there are no precompiled headers.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

PACKAGES=$ROOT/build/packages
[[ -f $PACKAGES/SHA256SUMS ]] || die "run ./package.sh first"
[[ -z $(git -C "$ROOT" status --porcelain --untracked-files=no) ]] || die "there are changes that are in no commit"

# Nothing of the other folder may be found again in what is built in it: neither its name nor its
# depth.
elsewhere=$(mktemp -d)
trap 'rm -rf "$elsewhere"' EXIT
copy=$elsewhere/altra/copia
mkdir -p "$copy"
git -C "$ROOT" archive HEAD | tar -C "$copy" -x
SOURCE_DATE_EPOCH=$(git -C "$ROOT" log -1 --format=%ct)
export SOURCE_DATE_EPOCH
say "Building the packages once more"
quietly "$ROOT/build/logs/reproducible.log" "$copy/package.sh"
diff "$PACKAGES/SHA256SUMS" "$copy/build/packages/SHA256SUMS" ||
    die "the same commit has given other packages"
