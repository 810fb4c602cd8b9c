#!/usr/bin/env bash
# Checks that Windows programs are built as a release has to be: at a random address over the whole
# address space, data never executed, the libraries of the system alone, and of those at the start
# only such as no file can take the place of; a manifest.
#
#   scripts/check-executables.sh PROGRAM...
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

FLAGS=(HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT)
# Windows loads these from its own folder whatever else lies around (HKLM\System\CurrentControlSet\
# Control\Session Manager\KnownDLLs). All others are to be loaded later: cmake/delay_load.cmake.
KNOWN_LIBRARIES='ADVAPI32|COMDLG32|GDI32|KERNEL32|MSVCRT|OLE32|SHELL32|SHLWAPI|USER32'
# Texts of the manifest.
MANIFEST=('level="asInvoker"' '>true</longPathAware>' '>PerMonitorV2, PerMonitor</dpiAwareness>'
    'version="6.0.0.0"')

complaints=0

complain() {
    say "$1: $2"
    complaints=$((complaints + 1))
}

check() {
    local program=$1 headers flag text libraries
    headers=$(x86_64-w64-mingw32-objdump -p "$program")
    for flag in "${FLAGS[@]}"; do
        grep -qw "$flag" <<<"$headers" || complain "$program" "without $flag"
    done
    grep -Eq '^Entry 5 [0-9a-f]+ 0*[1-9a-f][0-9a-f]* Base Relocation' <<<"$headers" ||
        complain "$program" "cannot be moved in memory: no relocations"
    if grep -q '^Time/Date.*20[0-9][0-9]' <<<"$headers"; then
        complain "$program" "tells when it was built"
    fi
    libraries=$(sed -n 's/^\tDLL Name: //p' <<<"$headers")
    [[ -n $libraries ]] || complain "$program" "imports could not be read"
    libraries=$(grep -Eivx "($KNOWN_LIBRARIES)\.dll" <<<"$libraries" || true)
    [[ -z $libraries ]] || complain "$program" "loads at its start: ${libraries//$'\n'/ }"
    for text in "${MANIFEST[@]}"; do
        grep -qaF "$text" "$program" || complain "$program" "manifest without $text"
    done
    grep -qaF SetDefaultDllDirectories "$program" ||
        complain "$program" "does not limit where libraries are looked for"
}

[[ $# -gt 0 ]] || die "no program named"
for program in "$@"; do
    check "$program"
done
[[ $complaints -eq 0 ]]
