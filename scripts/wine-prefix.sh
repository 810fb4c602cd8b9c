#!/usr/bin/env bash
# Prepares a Wine prefix in which Tonvale and its tests run.
#
#   scripts/wine-prefix.sh DIR [--printer PSFILE] [--dpi N]
#
# DIR is made where it is missing. With --printer the default printer is a PostScript printer that
# leaves what it prints in PSFILE; without, there is no printer. --dpi sets the resolution that
# windows are laid out for (96). Windows are shown on the display of this shell (DISPLAY); without
# one they exist in memory only. All of it may be changed by calling the script again.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

usage() {
    say "Usage: $0 DIR [--printer PSFILE] [--dpi N]" >&2
    exit 2
}

# Makes the prefix beside its place first, so that an interruption leaves no half-made one.
create_prefix() {
    local prefix=$1
    rm -rf "$prefix.new"
    use_wine_prefix "$prefix.new"
    mkdir -p "$prefix.new"
    wine64 wineboot -i </dev/null >/dev/null 2>&1 || true
    wineserver -k || true
    [[ -f $prefix.new/system.reg ]] || die "Wine could not make its folder $prefix"
    cp /usr/share/wine/fonts/*.{ttf,fon} "$prefix.new/drive_c/windows/Fonts/"
    mv "$prefix.new" "$prefix"
}

# A text between the quotes of a registry file.
registry_text() {
    local text=${1//\\/\\\\}
    say "${text//\"/\\\"}"
}

printer_settings() {
    local print_keys='HKEY_LOCAL_MACHINE\System\CurrentControlSet\Control\Print'
    local user_keys='HKEY_CURRENT_USER\Software\Microsoft\Windows NT\CurrentVersion'
    local port
    if [[ -z $1 ]]; then
        printf '[-%s\\Printers\\Tonvale Test]\n\n' "$print_keys"
        printf '[%s\\Windows]\n"device"=-\n\n' "$user_keys"
        printf '[%s\\Devices]\n"Tonvale Test"=-\n' "$user_keys"
        return
    fi
    port=$(registry_text "$1")
    cat <<EOF
[$print_keys\\Environments\\Windows x64\\Drivers\\Version-3\\Tonvale PS]
"Configuration File"="wineps.drv"
"Data File"="postscript.ppd"
"Datatype"="RAW"
"Driver"="wineps.drv"
"Version"=dword:3

[$print_keys\\Printers\\Tonvale Test]
"Attributes"=dword:0
"Datatype"="RAW"
"Name"="Tonvale Test"
"Port"="$port"
"Print Processor"="WinPrint"
"Printer Driver"="Tonvale PS"
"Status"=dword:0

[$user_keys\\Windows]
"device"="Tonvale Test,wineps.drv,$port"

[$user_keys\\Devices]
"Tonvale Test"="wineps.drv,$port"
EOF
}

# All settings, as the text of a registry file: $1 the printer's file, $2 the resolution.
settings() {
    local graphics='-'
    [[ -n ${DISPLAY:-} ]] || graphics='"null"'
    cat <<EOF
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\\Software\\Wine\\Drivers]
"Graphics"=$graphics

[HKEY_CURRENT_USER\\Software\\Wine\\WineDbg]
"ShowCrashDialog"=dword:0

[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]
"Arial"="Liberation Sans"
"Times New Roman"="Liberation Serif"
"Courier New"="Liberation Mono"

[HKEY_CURRENT_USER\\Control Panel\\Desktop]
"LogPixels"=dword:$(printf '%08x' "$2")

EOF
    printer_settings "$1"
}

apply_settings() {
    local prefix=$1 file=$2
    local drivers=$prefix/drive_c/windows/system32/spool/drivers/x64/3
    mkdir -p "$drivers"
    cp "$ROOT/wine/postscript.ppd" "$drivers/"
    use_wine_prefix "$prefix"
    wineserver -k || true
    wine64 regedit /S "$(windows_path "$file")" </dev/null >/dev/null 2>&1 ||
        die "Wine did not take the settings of $file"
    wineserver -k || true
}

main() {
    [[ $# -ge 1 && $1 != -* ]] || usage
    local prefix printer='' dpi=96
    prefix=$(realpath -m -- "$1")
    shift
    while [[ $# -ge 2 ]]; do
        case $1 in
        --printer) printer=$(realpath -m -- "$2") ;;
        --dpi) dpi=$2 ;;
        *) usage ;;
        esac
        shift 2
    done
    [[ $# -eq 0 && $dpi =~ ^[0-9]+$ ]] || usage

    mkdir -p "$(dirname "$prefix")"
    [[ -f $prefix/system.reg ]] || create_prefix "$prefix"
    local wanted=$prefix/tonvale-wanted.reg applied=$prefix/tonvale-applied.reg
    # Registry files of this version are UTF-16.
    { printf '\xff\xfe' && settings "$printer" "$dpi" | iconv -f UTF-8 -t UTF-16LE; } >"$wanted"
    if ! cmp -s "$wanted" "$applied"; then
        apply_settings "$prefix" "$wanted"
        mv "$wanted" "$applied"
    fi
    [[ -z $printer ]] || mkdir -p "$(dirname "$printer")"
}

main "$@"
