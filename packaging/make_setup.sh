#!/usr/bin/env bash
# Makes the installer OUTPUT of the files in FOLDER:
#
#   packaging/make_setup.sh VERSION FOLDER OUTPUT
set -euo pipefail
version=$1 folder=$(realpath -- "$2") output=$(realpath -m -- "$3")
cd "$(dirname "${BASH_SOURCE[0]}")"
makensis -V2 -WX -INPUTCHARSET UTF8 -DVERSION="$version" -DFOLDER="$folder" -DOUTPUT="$output" \
    -DICON=../resources/tonvale.ico tonvale.nsi
