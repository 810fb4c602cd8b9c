#!/usr/bin/env bash
# Compares the printouts of tonvale_print_tests, PostScript in the folder named, with what has to
# stand on their pages:
#
#   tests/print/check_print.sh DIR
set -euo pipefail

GOLDEN=$(cd "$(dirname "${BASH_SOURCE[0]}")/../golden" && pwd -P)
LINES_PER_PAGE=66  # of the tests' printer: 6716 pixels / 99 of a line - 1
status=0

complain() {
    echo "check_print: $*" >&2
    status=1
}

# Makes NAME.pdf of the printout NAME.ps, which the printer's queue has to have shown as $2.
convert() {
    if [[ ! -s $1.ps ]] || ! ps2pdf "$1.ps" "$1.pdf"; then
        complain "$1 was not printed"
        return 1
    fi
    grep -Fqx "Title:           $2" < <(pdfinfo "$1.pdf") ||
        complain "$1 has another name in the printer's queue than $2"
}

# The lines of a PDF, "PAGE TEXT" each, with one blank where there are more. A semicolon comes out
# as the Greek question mark, which looks the same. $2 is the order in which texts are read.
lines_of() {
    pdftotext "${2:--layout}" "$1.pdf" - | LC_ALL=C sed 's/\xCD\xBE/;/g' |
        awk 'BEGIN { page = 1 } { page += gsub(/\f/, "") } NF { $1 = $1; print page, $0 }'
}

# What the companion tells of an example stands on the one page of its printout, line by line;
# charts have texts besides.
check_example() {
    convert "$1" "$2" || return 0
    lines_of "$1" >"$1.lines"
    awk '/^\$/ && NR > 1 { exit } NF && !/^[[$]/ { $1 = $1; print 1, $0 }' "$GOLDEN/$1.golden" |
        grep -Fvx -f "$1.lines" >&2 && complain "$1 lacks these lines"
    grep -Eq 'Pages: +1$' < <(pdfinfo "$1.pdf") || complain "$1 is not on one page"
}

# Compares all lines of a printout with standard input; $3 is the order in which they are read.
check_lines() {
    convert "$1" "$2" || return 0
    lines_of "$1" "${3:-}" >"$1.lines"
    diff -u --label expected --label "$1" - "$1.lines" >&2 ||
        complain "$1 is not printed as it has to be"
}

# Looks for a line, given as a pattern, in the text of a view's one page.
check_view() {
    convert "$1" Vista || return 0
    grep -Eq -- "$2" < <(lines_of "$1") || complain "$1 lacks a line like $2"
}

# Expects a word of a PDF at its place, in whole points from the left and from the top.
check_place() {
    grep -Eq "xMin=\"$3\..*yMin=\"$4\..*>$2</word>" < <(pdftotext -bbox "$1.pdf" -) ||
        complain "\"$2\" of $1 is not at $3, $4"
}

# Expects a grey, 0 to 255, at a place of the first page of a PDF drawn at 72 dpi.
check_grey() {
    pdftoppm -r 72 -gray -f 1 -singlefile "$1.pdf" "$1"
    local grey
    grey=$(od -An -tu1 -j $((595 * $3 + $2)) -N 1 < <(tail -c $((595 * 842)) "$1.pgm"))
    [[ $grey -eq $4 ]] || complain "$1 has grey $grey at $2, $3 instead of $4"
}

# The words "$1 1" to "$1 60", wrapped to lines of $2 characters.
wrapped_words() {
    local i words=''
    for ((i = 1; i <= 60; i++)); do words+="$1$i "; done
    fold -s -w "$2" <<<"$words" | sed 's/ *$//'
}

# 200 lines from the second of the first page on, and notes below them, wrapped to the page, which
# is 93 characters wide.
long_printout() {
    local i
    for ((i = 1; i <= 200; i++)); do
        echo "$((i / LINES_PER_PAGE + 1)) riga $i $((7 * i))"
    done
    echo "4 Perché così: l'attività è più rumorosa là dove c'è la pressa."
    wrapped_words nota 93 | sed 's/^/4 /'
}

# The pages of the report document are 648 points high, 5 inches wide.
report_document() {
    {
        printf '%s\n' "Relazione sull'esposizione" 'Lep,d = 87.3 dB, perché così…' \
            'Mansione Durata Livello' 'Pressa 8.00 92.4' 'a destra' '• primo punto' 'm2 β € Ш' figura
        printf 'riga %d\n' {1..150}
    } | awk '{ print (NR <= 57 ? 1 : NR <= 115 ? 2 : 3), $0 }'
    wrapped_words parola 72 | sed 's/^/3 /'
}

# The table rows are those of the help's worked examples, computed apart from the program.
check_views() {
    check_view perdite_tabella '10 17.5 19.1 35.7 53.9 65.7 69.2 13.7 \*'
    check_view perdite_grafico '5 10 15 20 .*90 95'
    check_view perdite_audiogramma '500 1000 2000 3000 4000 6000'
    check_view previsioni_tabella '20 13.3 17.8 .*49.3'
    check_view previsioni_grafico '2 4 6 8 .*38 40'
    check_view previsioni_audiogramma '88 89 90 .*99 100'
    check_view rischio_tabella "rischio causato all'esposizione a rumore: 14.0"
    check_view rischio_grafico 'non esposti esposti rischio'
    check_view evoluzione_tabella '40 17.0 0.9 0.0 8.5'
    check_view evoluzione_grafico '2 4 6 8 .*38 40 Y'
    check_view quadro Quadro
    check_view quadro 'Una nota in calce'
}

# Columns and lines, notes, a bar of a chart, a filled rectangle. The printer of the tests has margins
# of 18 points and a line height of 11.88.
check_places() {
    check_place giornata.lep '88\.2' 297 137
    check_place giornata.lep Addetto 18 185
    check_place settimana.lew '85\.4' 297 149
    check_place carpenteria.leg '1\.3' 396 197
    check_place sega_circolare.spr '99\.8' 396 149
    check_place stampaggio.err '86\.7' 370 66
    check_place quadro Quadro 297 220
    check_place quadro Una 18 774
    # The first bar, of 84.0 dB, is white on grey and ends 347 points below the page's top.
    check_grey sega_circolare.spr 110 352 255
    check_grey sega_circolare.spr 110 341 240
    # 600 pixels high from the middle of the page down.
    check_grey quadro 300 440 128
    check_grey quadro 300 400 255
}

main() {
    cd "$1"
    check_example giornata.lep 'Livello di esposizione personale quotidiano (Lep,d)'
    check_example settimana.lew 'Livello di esposizione personale settimanale (Lep,w)'
    check_example carpenteria.leg 'Livello equivalente per gruppi di lavoratori (Leq,gruppo)'
    check_example stampaggio.err 'Errore di misura'
    check_example sega_circolare.spr 'Spettro rumore'
    check_example cuffia_leggera.spi 'Spettro DPI'
    check_example scelta_cuffia.dpi 'Scelta DPI'
    check_example audiometria.ilg 'Calcolo del danno uditivo'
    check_views
    check_lines pagine Prova < <(long_printout)
    check_lines relazione Relazione -raw < <(report_document)
    check_places
    exit $status
}

main "$@"
