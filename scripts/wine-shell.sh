#!/usr/bin/env bash
# Runs one command in the environment of the tests: their Wine prefix, no display.
#
#   scripts/wine-shell.sh COMMAND [ARGUMENT...]
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

use_test_environment ""
"$ROOT/scripts/wine-prefix.sh" "$WINEPREFIX" --printer "$TONVALE_PRINTER_FILE"
"$@"
