#!/usr/bin/env bash
# Has LibreOffice read the document relazione.tnv in a folder, which the tests have written, and
# compares the text and the formats of its first lines with what they have to be:
#
#   tests/report/check_other_program.sh FOLDER
set -euo pipefail

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0

convert() {
    soffice "-env:UserInstallation=file://$work/profile" --headless --convert-to "$1" \
        --outdir "$work" "$2" >"$work/log" 2>&1
}

expected_text() {
    printf '%s\n' "Relazione sull'esposizione" 'Lep,d = 87.3 dB, perché così…' \
        $'Mansione\tDurata\tLivello' $'Pressa\t8.00\t92.4' 'a destra' '• primo punto' 'm2 β € Ш' \
        'figura'
}

# Looks for a pattern in a text.
expect() {
    grep -Eq -- "$2" <<<"$1" && return
    printf 'the text processor does not show: %s\n' "$2" >&2
    status=1
}

main() {
    local html structure
    convert txt:Text "$1/relazione.tnv"
    convert html "$1/relazione.tnv"
    diff -u --label expected --label read <(expected_text) \
        <(sed 's/^\xEF\xBB\xBF//; s/\r$//; s/^ *//; 8q' "$work/relazione.txt") >&2 || status=1

    html=$(tr -s '\n\t ' ' ' <"$work/relazione.html")
    expect "$html" 'font-size: 16pt"><span lang="[^"]*"><b>Relazione'
    expect "$html" 'face="Courier New[^>]*>(<[^>]*>)*Pressa'
    expect "$html" 'color="#ff0000">(<[^>]*>)*a destra'

    # Without fonts, colours and the styles of characters.
    structure=$(sed -E 's/<\/?(font|span)[^>]*>//g; s/> +/>/g' <<<"$html")
    expect "$structure" '<p align="center"[^>]*><b>Relazione sull.esposizione</b>'
    expect "$structure" 'L<sub>ep,d</sub>= <u>87\.3</u>dB, perché <i>così</i>…'
    expect "$structure" '<p align="right"[^>]*>a destra'
    expect "$structure" '<ul><li><p[^>]*>primo punto'
    expect "$structure" 'margin-left: 0\.5in; text-indent: -0\.25in[^>]*>m<sup>2</sup>β € Ш'
    expect "$structure" '<img [^>]*width="20" height="10"[^>]*>figura'
    exit $status
}

main "$@"
