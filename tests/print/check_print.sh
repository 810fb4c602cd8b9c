#!/usr/bin/env bash
# Compares the printouts of tonvale_print_tests, PostScript in the folder named, with what has to
# stand on their pages, place by place:
#
#   tests/print/check_print.sh DIR
set -euo pipefail

HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
REPORT_NAME='Livello di esposizione personale quotidiano (Lep,d)'
GROUP_REPORT_NAME='Livello equivalente per gruppi di lavoratori (Leq,gruppo)'
WEEK_REPORT_NAME='Livello di esposizione personale settimanale (Lep,w)'
LINES_PER_PAGE=66  # of the tests' printer: 6716 pixels / 99 of a line - 1
status=0

complain() {
    echo "check_print: $*" >&2
    status=1
}

# The words of a PDF, "PAGE TOP LEFT RIGHT WORD" each, in reading order. Places are in points. A
# semicolon comes out as the Greek question mark, which looks the same.
words_of() {
    pdftotext -bbox "$1" - | awk '
        function attribute(name) {
            match($0, name "=\"[0-9.]*\"")
            return substr($0, RSTART + length(name) + 2, RLENGTH - length(name) - 3)
        }
        /<page / { page++ }
        /<word / {
            word = $0
            sub(/^[^>]*>/, "", word)
            sub(/<\/word>.*/, "", word)
            print page, attribute("yMin"), attribute("xMin"), attribute("xMax"), word
        }' | LC_ALL=C sed "s/&apos;\|&#39;/'/g; s/&quot;/\"/g; s/&amp;/\&/g; s/\xCD\xBE/;/g" |
        LC_ALL=C sort -k1,1n -k2,2n -k3,3n
}

# The lines of a PDF, "PAGE LINE TEXT" each, a second column after "|" with the blanks before it.
# A column that starts left of the page's middle has none.
# LINE is the distance from the top of the printable area in line heights. The printer of the tests
# has margins of 18 points, 4658 pixels across at 600 dpi and a default font 99 pixels high, for
# which a character of the report is 5.976 points wide.
lines_of() {
    words_of "$1" | LC_ALL=C awk '
        BEGIN { margin = 18; line_height = 99 * 72 / 600; middle = margin + 2329 * 72 / 600 }
        function flush_line() {
            if (text != "") printf "%d %d %s\n", page, (top - margin) / line_height + 0.25, text
        }
        {
            word = $5
            if (NR == 1 || $1 != page || $2 - top > 1) {
                flush_line()
                page = $1; top = $2
                text = word
            } else if ($3 - right > 10) {
                blanks = int(($3 - middle) / 5.976 + 0.5)
                text = text "|" sprintf("%*s", blanks > 0 ? blanks : 0, "") word
            } else {
                text = text " " word
            }
            right = $4
        }
        END { flush_line() }'
}

# The report of 200 items, its results computed here once more, and its notes four lines below,
# wrapped to the page, which is 93 characters wide.
long_report() {
    local note='Perché così: l'\''attività è più rumorosa là dove c'\''è la pressa.' i words=''
    for ((i = 1; i <= 60; i++)); do words+="nota$i "; done
    {
        LC_ALL=C awk 'BEGIN {
            print "Livello di esposizione personale settimanale (Lep,w)"
            print "Livelli sonori equivalenti (dBA):|Tempi di esposizione (s):"
            for (i = 1; i <= 200; i++) {
                level = 70 + i % 31 + 0.1 * (i % 10)
                energy += i * 10 ^ (level / 10)
                time += i
                printf "%.1f|%d\n", level, i
            }
            printf "Livello equivalente (dBA):|%.1f\n", 10 * log(energy / time) / log(10)
            printf "Tempo d\047esposizione totale (s):|%6d\n", time
            printf "Lep,d (dBA):|%.1f\n\n\n\n", 10 * log(energy / 28800) / log(10)
        }'
        echo "$note"
        fold -s -w 93 <<<"$words" | sed 's/ *$//'
    } | awk -v last="$LINES_PER_PAGE" '
        BEGIN { page = 1; line = 2 }
        {
            if ($0 != "") print page, line, $0
            if (++line > last) { line = 1; page++ }
        }'
}

# Compares a printout with the lines on standard input and with its document's name.
check() {
    local name=$1 document_name=$2
    if [[ ! -s $name.ps ]] || ! ps2pdf "$name.ps" "$name.pdf"; then
        complain "$name was not printed"
        return
    fi
    lines_of "$name.pdf" >"$name.lines"
    diff -u --label expected --label "$name" - "$name.lines" >&2 ||
        complain "$name is not printed as it has to be"
    pdfinfo "$name.pdf" | grep -Fqx "Title:           $document_name" ||
        complain "$name has another name in the printer's queue than $document_name"
}

# The grey of a pixel, 0 to 255, on the first page of a PDF drawn at 72 dpi.
grey_at() {
    local pdf=$1 x=$2 y=$3
    pdftoppm -r 72 -gray -f 1 -singlefile "$pdf" "${pdf%.pdf}"
    tail -c $((595 * 842)) "${pdf%.pdf}.pgm" | od -An -tu1 -j $((595 * y + x)) -N 1 | tr -d ' '
}

# The lines of a report document, "PAGE TEXT" each, in reading order.
report_lines_of() {
    local page pages
    pages=$(pdfinfo "$1" | awk '/^Pages:/ { print $2 }')
    for ((page = 1; page <= pages; page++)); do
        pdftotext -raw -f "$page" -l "$page" "$1" - | sed "/^\f*$/d; s/^/$page /"
    done
}

# What has to stand on the report document's pages: 648 points high, 5 inches wide.
report_document() {
    local i words=''
    for ((i = 1; i <= 60; i++)); do words+="parola$i "; done
    {
        printf '%s\n' "Relazione sull'esposizione" 'Lep,d = 87.3 dB, perché così…' \
            'Mansione Durata Livello' 'Pressa 8.00 92.4' 'a destra' '• primo punto'
        for ((i = 1; i <= 150; i++)); do echo "riga $i"; done
    } | awk '{ print (NR <= 57 ? 1 : NR <= 115 ? 2 : 3), $0 }'
    fold -s -w 72 <<<"$words" | sed 's/ *$//; s/^/3 /'
}

check_report_document() {
    local name=relazione
    if [[ ! -s $name.ps ]] || ! ps2pdf "$name.ps" "$name.pdf"; then
        complain "$name was not printed"
        return
    fi
    report_lines_of "$name.pdf" >"$name.lines"
    diff -u --label expected --label "$name" <(report_document) "$name.lines" >&2 ||
        complain "$name is not printed as it has to be"
    pdfinfo "$name.pdf" | grep -Fqx 'Title:           Relazione' ||
        complain "$name has another name in the printer's queue than Relazione"
}

# Looks for a line, given as a pattern, in the text of a view's one page.
check_view() {
    local name=$1 pattern=$2
    if [[ ! -s $name.ps ]] || ! ps2pdf "$name.ps" "$name.pdf"; then
        complain "$name was not printed"
        return
    fi
    # A picture to look at.
    pdftoppm -r 60 -png -singlefile "$name.pdf" "$name"
    pdftotext -layout "$name.pdf" - | grep -Eq -- "$pattern" ||
        complain "$name lacks a line like $pattern"
}

# The table rows are those of the help's worked examples, computed apart from the program.
check_hearing_views() {
    local b='[[:blank:]]+'
    check_view perdite_tabella "10${b}17.5${b}19.1${b}35.7${b}53.9${b}65.7${b}69.2${b}13.7 \\*"
    check_view perdite_grafico "5${b}10${b}15${b}20.*90${b}95"
    check_view perdite_audiogramma "500${b}1000${b}2000${b}3000${b}4000${b}6000"
    check_view previsioni_tabella "20${b}13.3${b}17.8${b}.*49.3"
    check_view previsioni_tempo "2${b}4${b}6${b}8.*38${b}40"
    check_view previsioni_livello "88${b}89${b}90.*99${b}100"
    check_view rischio_tabella "rischio causato all'esposizione a rumore:${b}14.0"
    check_view rischio_grafico "non esposti${b}esposti${b}rischio"
    check_view evoluzione_tabella "40${b}17.0${b}0.9${b}0.0${b}8.5"
    check_view evoluzione_grafico "2${b}4${b}6${b}8.*38${b}40${b}Y"
}

# The chart's scale and the bands' names are texts of the page too.
check_spectra() {
    check sega_circolare 'Spettro rumore' <"$HERE/sega_circolare.expected"
    check cuffia_leggera 'Spettro DPI' <"$HERE/cuffia_leggera.expected"
    # The first bar, of 84.0 dB, is white on grey and ends 347 points below the page's top.
    [[ $(grey_at sega_circolare.pdf 110 352) -eq 255 && $(grey_at sega_circolare.pdf 110 341) -eq 240 ]] ||
        complain "the bar of 125 Hz of sega_circolare does not end where it has to"
}

# The losses stand below their frequencies, and the picture above the notes.
check_audiogram() {
    local b='[[:blank:]]+'
    check_view audiometria "^Orecchio Dx \\(dB\\):${b}25${b}30${b}40${b}60${b}65${b}60$"
    check_view audiometria "500${b}1000${b}2000${b}3000${b}4000${b}6000${b}f \\(Hz\\)"
    check_view audiometria '^Audiometria tonale per via aerea, media di tre prove.$'
}

main() {
    cd "$1"
    check_spectra
    check_audiogram
    check_hearing_views
    check giornata "$REPORT_NAME" <"$HERE/giornata.expected"
    check settimana "$WEEK_REPORT_NAME" <"$HERE/settimana.expected"
    check carpenteria "$GROUP_REPORT_NAME" <"$HERE/carpenteria.expected"
    check stampaggio 'Errore di misura' <"$HERE/stampaggio.expected"
    check scelta_cuffia 'Scelta DPI' <"$HERE/scelta_cuffia.expected"
    check pagine "$REPORT_NAME" < <(long_report)
    check_report_document
    check quadro Quadro < <(printf '1 17 Quadro\n1 63 Una nota in calce\n')
    # A filled rectangle, 600 pixels high from the middle of the page down.
    [[ $(grey_at quadro.pdf 300 440) -eq 128 && $(grey_at quadro.pdf 300 400) -eq 255 ]] ||
        complain "the filled rectangle of quadro is not where it has to be"
    exit $status
}

main "$@"
