#!/usr/bin/env bash
# Installs, upgrades, uses and removes what ./package.sh has made, under Wine in a fresh prefix:
#
#   tests/package/check_setup.sh
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

VERSION=$(project_version)
SETUP=$ROOT/build/packages/tonvale-$VERSION-setup.exe
OPENER=$ROOT/build/windows/wine/tonvale-open.exe
WORK=$ROOT/build/package-test
C_DRIVE=$WORK/prefix/drive_c
CLASSES='HKCU\Software\Classes'
DATA_KINDS=(lep lew leg ilg spr spi dpi err)
# A PATH longer than the installer's own texts can be.
USER_PATH="%USERPROFILE%\\bin;$(printf 'C:\\Cartella numero %d;' {1..80})D:\\Fine"

complaints=0

complain() {
    say "$*"
    complaints=$((complaints + 1))
}

# Everything that the registry has of the user, and every file; but for what Wine notes for itself,
# and keys without content that Windows has always.
snapshot() {
    wine64 regedit /E "$(windows_path "$WORK/user.reg")" HKEY_CURRENT_USER >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$WORK/user.reg" | tr -d '\r' |
        awk '/^\[/ { skip = /\\Wine|\\Explorer|\\Classes\]|\\Uninstall\]/ } !skip && NF'
    find "$C_DRIVE" -type f ! -path '*/windows/*' ! -path '*/Temp/*' | sort
}

# A value of the registry; nothing when it is not there. $2 empty: the key's own value.
value() {
    local named=(/v "$2")
    [[ -n $2 ]] || named=(/ve)
    wine64 reg query "$1" "${named[@]}" 2>/dev/null | tr -d '\r' |
        sed -n 's/^    .*    REG_[A-Z_]*    //p'
}

expect() {
    local what=$1 wanted=$2 found=$3
    [[ $found == "$wanted" ]] || complain "$what: \"$found\", not \"$wanted\""
}

write_value() {
    wine64 reg add "$@" /f >/dev/null 2>&1
}

# $1: exit status that is expected; $2: the installer; $3: what it is told. The folder comes without
# quotes, blanks and all, as the installer wants it: Wine would put quotes around one word of it.
setup() {
    local wanted=$1 program=$2 words status=0
    read -ra words <<<"${3:-}"
    wine64 "$program" /S ${words+"${words[@]}"} >/dev/null 2>&1 || status=$?
    expect "status of $program ${3:-}" "$wanted" "$status"
}

remove() {
    local folder=$1 patience=60
    wine64 "$folder/uninstall.exe" /S >/dev/null 2>&1 || complain "the uninstaller fails"
    # It goes on in a copy of itself.
    while [[ -e $folder/uninstall.exe && $patience -gt 0 ]]; do
        sleep 0.5
        patience=$((patience - 1))
    done
    sleep 1
}

# An older version: other files, and another version in its name.
make_older_setup() {
    cp -r "$ROOT/build/package-files/setup" "$WORK/older"
    say older >"$WORK/older/tonvale.hlp"
    quietly "$ROOT/build/logs/makensis-older.log" "$ROOT/packaging/make_setup.sh" 0.9.0 \
        "$WORK/older" "$WORK/tonvale-0.9.0-setup.exe"
}

check_registered() {
    local folder=$1 kind number=2 verify
    for kind in "${DATA_KINDS[@]}" tnv; do
        expect ".$kind" "Tonvale.$kind" "$(value "$CLASSES\\.$kind" '')"
        expect "icon of .$kind" "$folder\\tonvale.exe,-$number" \
            "$(value "$CLASSES\\Tonvale.$kind\\DefaultIcon" '')"
        expect "opening .$kind" "\"$folder\\tonvale.exe\" \"%1\"" \
            "$(value "$CLASSES\\Tonvale.$kind\\shell\\open\\command" '')"
        number=$((number + 1))
    done
    verify=$(value "$CLASSES\\Tonvale.err\\shell\\verifica\\command" '')
    [[ $verify == *"\"$folder\\tonvale-calc.exe\" verifica \"%1\" & pause"* ]] ||
        complain "verifying: $verify"
    expect "verifying documents" '' "$(value "$CLASSES\\Tonvale.tnv\\shell\\verifica\\command" '')"
    [[ $(value "$CLASSES\\Directory\\shell\\Tonvale.Registro\\command" '') == \
        *"\"$folder\\tonvale-calc.exe\" registro \"%1\" --apri"* ]] || complain "no register of folders"
    expect "PATH" "$USER_PATH;$folder" "$(value 'HKCU\Environment' Path)"
    expect "version" "$VERSION" \
        "$(value 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tonvale' DisplayVersion)"
}

# Opens a data file whose name has blanks and accents as Explorer does. Wine 8 does not look for
# file types among the user's own: they are copied to those of the machine.
check_opening() {
    local file="$C_DRIVE/Dati di prova/giornata è.lep" texts
    mkdir "${file%/*}"
    cp "$ROOT/examples/giornata.lep" "$file"
    wine64 regedit /E "$(windows_path "$WORK/classes.reg")" 'HKEY_CURRENT_USER\Software\Classes' \
        >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$WORK/classes.reg" |
        sed 's/^\[HKEY_CURRENT_USER/[HKEY_LOCAL_MACHINE/' |
        iconv -f UTF-8 -t UTF-16 >"$WORK/machine.reg"
    wine64 regedit /S "$(windows_path "$WORK/machine.reg")" >/dev/null 2>&1
    texts=$("$ROOT/scripts/wine-run.sh" "$OPENER" open 'C:\Dati di prova\giornata è.lep' \
        'Calcolo Lep,d' | tr -d '\r') || complain "the calculator does not open"
    [[ $texts == *'C:\Dati di prova\giornata è.lep'* && $texts == *88.2* ]] ||
        complain "the calculator does not show the file: $texts"
    # What is in use is not replaced, and stays whole.
    setup 2 "$SETUP"
    cmp -s "$ROOT/build/windows/app/tonvale.exe" "$C_DRIVE/Prova Tonvale/tonvale.exe" ||
        complain "a refused installation has changed files"
    rm -r "${file%/*}"
}

main() {
    [[ -f $SETUP ]] || die "run ./package.sh first"
    quietly "$ROOT/build/logs/tonvale-open.log" \
        cmake --build "$ROOT/build/windows" --target tonvale-open tonvale-keeper
    rm -rf "$WORK"
    mkdir -p "$WORK"
    unset DISPLAY WAYLAND_DISPLAY
    "$ROOT/scripts/wine-prefix.sh" "$WORK/prefix"
    use_wine_prefix "$WORK/prefix"
    trap 'wineserver -k || true' EXIT
    # Keeps Wine's server alive between the programs.
    setsid wine64 "$ROOT/build/windows/wine/tonvale-keeper.exe" </dev/null >/dev/null 2>&1 &
    make_older_setup
    write_value "$CLASSES\\.spr" /ve /d Altro.Spettro
    write_value 'HKCU\Environment' /v Path /t REG_EXPAND_SZ /d "$USER_PATH"
    snapshot >"$WORK/before"

    setup 0 "$WORK/tonvale-0.9.0-setup.exe" '/PERCORSO /D=C:\Vecchia'
    [[ $(cat "$C_DRIVE/Vecchia/tonvale.hlp") == older ]] || complain "the older version is not there"
    setup 0 "$SETUP" '/D=C:\Prova Tonvale'
    [[ ! -e $C_DRIVE/Vecchia ]] || complain "something of the older version is left"
    for file in "$ROOT"/build/package-files/setup/*; do
        cmp -s "$file" "$C_DRIVE/Prova Tonvale/$(basename "$file")" || complain "not installed: $file"
    done
    check_registered 'C:\Prova Tonvale'
    check_opening
    "$ROOT/tests/package/check_libraries.sh" "$C_DRIVE/Prova Tonvale" "$OPENER" ||
        complain "libraries that are not the system's are loaded"

    say mine >"$C_DRIVE/Prova Tonvale/mio.lep"
    remove "$C_DRIVE/Prova Tonvale"
    [[ $(cat "$C_DRIVE/Prova Tonvale/mio.lep") == mine ]] || complain "a user's file is gone"
    rm -rf "$C_DRIVE/Prova Tonvale/mio.lep"
    snapshot >"$WORK/after"
    diff "$WORK/before" "$WORK/after" || complain "not everything is as before the installation"
    [[ $complaints -eq 0 ]]
}

main
