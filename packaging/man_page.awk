# Makes the manual page tonvale-calc(1) out of what `tonvale-calc --help` says, so that both tell the
# same. Variables: version, date.

function escape(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    gsub(/'/, "\\(aq", text)
    return text ~ /^[.]/ ? "\\&" text : text
}

function end_use() {
    if (use != "") print ".TP\n.B " escape(use)
    use = ""
}

NR == 1 {
    printf ".TH TONVALE\\-CALC 1 %s \"Tonvale %s\" \"Comandi utente\"\n", date, version
    split($0, heading, ": ")
    print ".SH NOME\n" escape(heading[1] " - " heading[2])
    print ".SH SINTASSI\n.B tonvale\\-calc\n.I comando\n.RI [ opzione ...]\n.RI [ argomento ...]"
    print ".SH DESCRIZIONE"
    print "Ricalcola i file di dati di Tonvale, verifica che i risultati conservati in essi siano quelli"
    print "dei loro dati, li disegna e ne fa il registro; prevede le perdite uditive (ISO 1999) e il"
    print "danno. Non ha finestre e non cambia i file di dati."
    print "Ciò che segue \"\\-\\-\" non è mai preso per un'opzione."
    print "Un'opzione si scrive \"\\-\\-nome valore\" oppure \"\\-\\-nome=valore\"."
    print ".SH COMANDI"
    next
}
/^  tonvale-calc/ { end_use(); use = substr($0, 3); next }
use != "" && /^      [[(]/ { use = use " " substr($0, 7); next }
/^      / { end_use(); print escape(substr($0, 7)); next }
/^Codice di uscita: / { print ".SH \"CODICE DI USCITA\""; sub(/^[^:]*: /, "") }
/^[^ ]/ && !/^Uso:/ { print escape($0) }

END {
    print ".SH FILE"
    print "I file di dati sono testi, uno per calcolo:"
    print ".I .lep .lew .leg .err"
    print "(esposizione e incertezza),"
    print ".I .spr .spi .dpi"
    print "(spettri e protettori) e"
    print ".I .ilg"
    print "(audiogrammi). Li scrive il programma Tonvale per Windows."
    print ".SH ESEMPI\n.nf"
    print escape("tonvale-calc calcola giornata.lep")
    print escape("tonvale-calc verifica *.lep *.lew")
    print escape("tonvale-calc classifica --rumore sega.spr cuffie/")
    print ".fi"
}
