#!/usr/bin/env bash
# Opens a register of every kind of data file, hostile ones among them, in a real browser and
# looks at what has become of it:
#
#   tests/archive/check_browser.sh TONVALE-CALC DIR
#
# Pictures at the widths of a desktop and a phone, and the page as printed, are left in DIR.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

CALC=$1
DIR=$(realpath -m -- "$2")
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
status=0

complain() {
    echo "check_browser: $*" >&2
    status=1
}

# The browser of the system without a window, its messages in the file $1.
browse() {
    local log=$1
    shift
    timeout 60 chromium --headless --no-sandbox --disable-gpu --no-first-run \
        --user-data-dir="$WORK/profile" --allow-file-access-from-files --hide-scrollbars \
        --enable-logging=stderr --virtual-time-budget=5000 "$@" 2>"$log"
}

# An archive with the examples and with texts that try to become a part of the page.
make_archive() {
    local archive=$WORK/segreto/cliente
    local attack='</script><script>parent.document.title="colpito"</script><img src=x onerror=alert(1)>'
    mkdir -p "$archive/reparto 2" "$archive/reparto 10" "$archive/reparto 1"
    cp "$ROOT"/examples/* "$archive"
    cp "$ROOT"/examples/* "$archive/reparto 1"
    cp "$ROOT/examples/giornata.lep" "$archive/reparto 2/\"><svg onload=alert(2)>.lep"
    sed "s|^1=Addetto.*|1=$attack|; s|^LEPD=.*|LEPD=70.0|; s|^1=92.5|1=75.5|" "$ROOT/examples/giornata.lep" \
        >"$archive/reparto 10/ostile.lep"
    printf 'rotto' >"$archive/reparto 10/rotto.spr"
}

# A page that holds the register $1 in a frame, uses it and tells what it saw as the text of its body.
make_harness() {
    cat >"$WORK/harness.html" <<EOF
<!DOCTYPE html><meta charset="utf-8"><title>intatto</title>
<iframe src="$1" width="1280" height="900"></iframe>
<script>
onload = () => {
    const page = document.querySelector("iframe").contentDocument;
    const table = page.getElementById("registro");
    const column = (index) =>
        Array.from(table.tBodies[0].rows, (row) => row.cells[index].textContent).join("|");
    const facts = { rows: table.tBodies[0].rows.length, sections: page.querySelectorAll(".file").length };
    const click = (index) => table.tHead.rows[0].cells[index].querySelector("[role=button]").click();
    click(1);
    facts.byName = column(1);
    click(5);
    click(5);
    facts.highest = column(1).split("|").slice(0, 2).join("|");
    facts.sorted = table.tHead.rows[0].cells[5].getAttribute("aria-sort");
    facts.attackers = page.querySelectorAll("img, svg[onload], script").length;
    facts.styled = page.defaultView.getComputedStyle(table).borderCollapse;
    facts.overflow = page.documentElement.scrollWidth > 1280;
    document.body.textContent = JSON.stringify(facts) + " " + document.title;
};
</script>
EOF
}

# What the harness saw of the register $1; the browser's complaints are in $WORK/log.
facts_of() {
    make_harness "$1"
    browse "$WORK/log" --dump-dom "file://$WORK/harness.html" |
        sed -n 's/.*<body>\({.*\)<\/body>.*/\1/p'
}

console_errors() {
    grep -E 'CONSOLE' "$WORK/log" || true
}

expect_fact() {
    [[ $facts == *"$1"* ]] || complain "the page does not show $1: $facts"
}

# The page as it is used: read, sorted, and no more than that.
check_page() {
    local facts errors
    facts=$(facts_of registro.html)
    errors=$(console_errors)
    [[ -z $errors ]] || complain "the browser complains: $errors"
    expect_fact "\"rows\":$FILES,\"sections\":$FILES,"
    expect_fact '"byName":"\"&gt;&lt;svg onload=alert(2)&gt;.lep|audiometria.ilg|audiometria.ilg|carpenteria.leg'
    expect_fact '"highest":"sega_circolare.spr|sega_circolare.spr"'
    expect_fact '"sorted":"descending","attackers":1,"styled":"collapse","overflow":false} intatto'
    if grep -q segreto "$WORK/registro.html"; then
        complain "the page tells what lies above the folder"
    fi
}

# The same attack must be seen where nothing guards against it, and be stopped where the policy
# alone does.
check_that_attacks_are_seen() {
    local attack='s|</h1>|</h1><script>parent.document.title="colpito"</script>|'
    sed "$attack" "$WORK/registro.html" >"$WORK/guarded.html"
    sed "$attack; /Content-Security-Policy/d" "$WORK/registro.html" >"$WORK/bare.html"
    [[ $(facts_of bare.html) == *colpito ]] || complain "an attack would not be seen"
    [[ $(facts_of guarded.html) == *intatto ]] || complain "the policy does not stop a script"
    [[ -n $(console_errors) ]] || complain "a script stopped by the policy would not be seen"
}

# For those who want to look at it.
take_pictures() {
    local page=file://$WORK/registro.html heads
    mkdir -p "$DIR"
    # A window cannot be as narrow as a phone.
    printf '<!DOCTYPE html><body style="margin:0"><iframe src="registro.html" width="390" height="6400" %s' \
        'style="border:0"></iframe>' >"$WORK/phone.html"
    browse "$WORK/log" --screenshot="$DIR/register-desktop.png" --window-size=1280,3600 "$page" &&
        browse "$WORK/log" --screenshot="$DIR/register-phone.png" --window-size=500,6400 \
            "file://$WORK/phone.html" &&
        browse "$WORK/log" --no-pdf-header-footer --print-to-pdf="$DIR/register.pdf" "$page" ||
        complain "no pictures"
    # The table reaches a second page, and its head stands there, too.
    heads=$(pdftotext -layout "$DIR/register.pdf" - | grep -c 'Cartella .*File .*Coerente' || true)
    [[ $heads -ge 2 ]] || complain "the printed table has $heads heads"
}

make_archive
FILES=$(find "$WORK/segreto" -type f | wc -l)
# Something is inconsistent there, and something cannot be read.
"$CALC" registro --titolo 'Registro <b>ostile</b>' --uscita "$WORK/registro.html" \
    "$WORK/segreto/cliente" 2>/dev/null && complain "the register tells of no trouble"
check_page
check_that_attacks_are_seen
take_pictures
exit $status
