#include "calc/companion.h"

#include <algorithm>
#include <array>
#include <span>

#include "calc/data_files.h"
#include "calc/hearing_commands.h"
#include "calc/ranking_command.h"
#include "calc/register_command.h"
#include "generated/version.h"

namespace tonvale {

namespace {

constexpr std::string_view kHelp =
    "tonvale-calc: i calcoli di Tonvale e i suoi file di dati, senza finestre\n"
    "\n"
    "Uso:\n"
    "  tonvale-calc calcola [--formato testo|csv|json] [--separatore S] [--dettagli]\n"
    "      (FILE | CARTELLA)...\n"
    "      Ricalcola ogni file dai suoi dati. testo (predefinito): le righe della stampa e, con\n"
    "      --dettagli, la quota di ogni esposizione di un .lep nel rumore della giornata;\n"
    "      csv: il riepilogo degli appunti, con i campi separati da S (predefinito \";\");\n"
    "      json: un oggetto per riga; nel nome del file ogni byte che non è UTF-8 valido, e il\n"
    "      carattere U+FFFD stesso, è scritto come U+FFFD e due cifre esadecimali.\n"
    "      Di una cartella si prendono tutti i file di dati che contiene, anche più in basso:\n"
    "      prima le cartelle, poi i file, in ordine di nome (\"2\" prima di \"10\"); i\n"
    "      collegamenti non si seguono, e di ciò che non si può leggere si dà notizia. Vale per\n"
    "      tutti i comandi.\n"
    "  tonvale-calc verifica (FILE | CARTELLA)...\n"
    "      Elenca i file i cui risultati salvati non corrispondono ai dati e gli spettri di\n"
    "      attenuazione (.spi) i cui H, M, L o SNR dichiarati distano più di 1 dB dai valori\n"
    "      calcolati.\n"
    "  tonvale-calc grafico FILE [--svg USCITA]\n"
    "      Disegna in SVG il grafico di un file di dati (le bande di uno spettro .spr o .spi,\n"
    "      l'audiogramma di un .ilg), sullo standard output se manca USCITA.\n"
    "  tonvale-calc classifica (--rumore FILE.spr | --laeq N [--lceq N]) [--azione 80|85|90]\n"
    "      [--metodo snr-corretto|snr|hml-controllo|hml|ottava|tutti] [--formato ...]\n"
    "      [--separatore S] (FILE.spi | CARTELLA)...\n"
    "      I DPI migliori per un rumore: livello all'orecchio e giudizio secondo ogni metodo che\n"
    "      le informazioni sul rumore consentono. Ordina il metodo indicato o, con tutti\n"
    "      (predefinito), il primo possibile fra ottava, hml, snr e snr-corretto: prima BUONA,\n"
    "      poi ACCETTABILE sopra e sotto di essa, TROPPO ALTA, INSUFFICIENTE; a pari giudizio il\n"
    "      livello più vicino a 7.5 dB sotto il livello d'azione (85 dBA se manca --azione).\n"
    "      Senza LCeq il rumore vale come di classe HM. Le avvertenze dicono dei valori\n"
    "      dichiarati che distano più di 1 dB dallo spettro e dei metodi che discordano per più\n"
    "      di un giudizio. json: un vettore di {\"file\", \"ratings\": H, M, L e SNR dichiarati,\n"
    "      \"methods\": per ogni metodo {\"level\", \"rating\"} o null, \"warnings\"}.\n"
    "  tonvale-calc registro CARTELLA... [--formato html|csv|json] [--uscita FILE] [--titolo T]\n"
    "      [--separatore S] [--apri]\n"
    "      Il registro dei file di dati delle cartelle, sullo standard output se manca --uscita.\n"
    "      Una riga per file: cartella, nome, tipo, prima riga delle note, data, risultati\n"
    "      ricalcolati, fascia di un Lep,d o Lep,w secondo la direttiva 2003/10/CE, coerenza dei\n"
    "      risultati salvati. Le fasce: <80, 80-85, 85-87, >87 dBA; un valore di confine sta in\n"
    "      quella superiore; 87 dBA è il valore limite e si riferisce all'orecchio, tenuto conto\n"
    "      dei protettori indossati. html (predefinito): una pagina completa, da leggere con il\n"
    "      browser o da stampare, con i livelli, i rapporti e i grafici dei file e le quote di\n"
    "      ogni esposizione; csv: una riga per file, campi separati da S (predefinito \";\"), con\n"
    "      il segno UTF-8 in testa se va in un file e un apostrofo davanti ai testi che un foglio\n"
    "      di calcolo prenderebbe per formule; json: {\"title\", \"rows\": [{\"folder\",\n"
    "      \"file\", \"kind\", \"note\", \"date\", \"results\": {nome: testo}, \"band\":\n"
    "      \"<80\", \"80-85\", \"85-87\", \">87\" o null, \"consistent\": true, false o null se\n"
    "      non c'è nulla da confrontare, \"message\": un testo o null}]}. --apri apre il file\n"
    "      scritto; senza --uscita questo è registro.html nella prima cartella. Se nessun file di\n"
    "      dati si legge, non si scrive nulla.\n"
    "  tonvale-calc CARTELLA...\n"
    "      Come registro --apri CARTELLA... (su Windows basta trascinare la cartella sull'icona).\n"
    "  tonvale-calc nipts [--quantita NIPTS|HTLA|HTLAN] [--anni N] [--livello N] [--eta N]\n"
    "      [--sesso M|F] [--tabella nuova|vecchia|biologico]\n"
    "      [--svg FILE [--vista grafico|audiogramma|tabella]] [--formato ...] [--separatore S]\n"
    "      Perdite uditive previste (ISO 1999) per 19 frattili e sei frequenze; i valori non\n"
    "      indicati sono quelli iniziali della finestra (HTLAN, 35 anni, 90 dBA, 60 anni di\n"
    "      età, M, nuova). testo: la tabella; csv: le sue celle; json: {\"title\", "
    "\"parameters\",\n"
    "      \"rows\": [{\"q\", \"fractile\", \"values\": le sei perdite, \"damage\": il\n"
    "      danno in % o null, \"flag\": vero se indennizzabile}]}. --svg disegna anche la vista.\n"
    "  tonvale-calc previsioni [--frequenza HZ] [--frattile P] [--livello L]\n"
    "      [--svg FILE [--vista tempo|livello|tabella]] [--formato ...] [--separatore S]\n"
    "      NIPTS per 2, 4, ... 40 anni e per i livelli L, L + 2, ... L + 12 dBA (4000 Hz, 10 %\n"
    "      e 88 dBA se non indicati). json: {\"levels\", \"years\", \"values\"}: una riga per\n"
    "      durata, e in essa un valore per livello.\n"
    "  tonvale-calc rischio [--anni N] [--livello N] [--eta N] [--sesso M|F] [--criterio 1..8]\n"
    "      [--griglia] [--svg FILE [--vista grafico|tabella]] [--formato ...] [--separatore S]\n"
    "      Quota della popolazione che raggiunge un criterio di danno senza e con il rumore, e la\n"
    "      differenza (35 anni, 90 dBA, 60 anni di età, M, criterio 1 se non indicati). Criteri:\n"
    "      1 ISO 1999/90, 2 ISO 1999/75, 3 INAIL Nuova Tabella, 4 INAIL Vecchia Tabella; danno\n"
    "      biologico: 5 indennizzabile, 6 minimo, 7 maggiore di zero, 8 medio > 25 dB.\n"
    "      json: {\"title\", \"parameters\", \"shown\" e \"values\": {\"unexposed\", "
    "\"exposed\",\n"
    "      \"risk\"}}, come mostrati e in frazioni di 1. --griglia: il rischio per 5, 10, ... 40\n"
    "      anni e 80, 85, ... 100 dBA, a quell'età alla fine dell'esposizione; json: {\"title\",\n"
    "      \"parameters\", \"years\", \"levels\", \"values\": una riga per durata}; \"-\" o null "
    "dove\n"
    "      l'esposizione comincerebbe prima dei 18 anni.\n"
    "  tonvale-calc evoluzione [--livello N] [--eta N] [--sesso M|F]\n"
    "      [--tabella nuova|vecchia|biologico] [--frattile P] [--svg FILE\n"
    "      [--vista grafico|tabella]] [--formato ...] [--separatore S]\n"
    "      Danno dopo 2, 4, ... 40 anni di esposizione cominciata all'età indicata, fino ai 70\n"
    "      anni, per i frattili 5, 50, 95 % e P, da 10 a 90 di 5 in 5 (90 dBA, 18 anni di età, M,\n"
    "      nuova, 15 % se non indicati). json: {\"title\", \"parameters\", \"fractiles\", "
    "\"rows\":\n"
    "      [{\"years\", \"values\": i quattro danni in %, \"shown\": gli stessi come "
    "mostrati}]}.\n"
    "  tonvale-calc --version\n"
    "      Mostra la versione.\n"
    "  tonvale-calc --help\n"
    "      Mostra questo testo.\n"
    "\n"
    "Codice di uscita: 0 tutto bene; 1 un file non coerente o con valori rifiutati;\n"
    "2 un file che non si legge o di tipo sconosciuto, o una riga di comando errata;\n"
    "130 interrotto con Ctrl+C.\n";

struct Command {
    std::string_view name;
    int (*run)(std::span<const std::string> arguments, FileSystem& files, Console& console);
};

constexpr std::array<Command, 9> kCommands{{
    {"calcola", RunCalcola},
    {"verifica", RunVerifica},
    {"grafico", RunGrafico},
    {"classifica", RunClassifica},
    {"registro", RunRegistro},
    {"nipts", RunNipts},
    {"previsioni", RunPrevisioni},
    {"rischio", RunRischio},
    {"evoluzione", RunEvoluzione},
}};

bool IsFolder(const std::string& path, FileSystem& files) {
    FolderContents contents;
    return files.ReadFolder(path, contents) == FileError::kNone;
}

// Folders dropped on the program's icon are all of its command line.
int OpenRegister(const std::vector<std::string>& folders, FileSystem& files, Console& console) {
    std::vector<std::string> arguments{"--apri", "--"};
    arguments.insert(arguments.end(), folders.begin(), folders.end());
    return RunRegistro(arguments, files, console);
}

}  // namespace

int WrongCommandLine(Console& console, std::string_view error) {
    console.WriteError(std::string("tonvale-calc: ").append(error).append(" (vedere --help)\n"));
    return kExitFailure;
}

int Interrupted(Console& console) {
    console.WriteError("tonvale-calc: interrotto\n");
    return kExitInterrupted;
}

int RunCompanion(const std::vector<std::string>& arguments, FileSystem& files, Console& console) {
    // A file may be called "--help" too, but only after "--".
    const auto options_end = std::find(arguments.begin(), arguments.end(), "--");
    if (std::find(arguments.begin(), options_end, "--help") != options_end) {
        console.Write(kHelp);
        return kExitSuccess;
    }
    if (arguments.size() == 1 && arguments.front() == "--version") {
        console.Write("tonvale-calc " TONVALE_VERSION "\n");
        return kExitSuccess;
    }
    if (arguments.empty()) {
        console.WriteError(kHelp);
        return kExitFailure;
    }
    const auto* command = std::find_if(kCommands.begin(), kCommands.end(), [&](const Command& row) {
        return row.name == arguments.front();
    });
    if (command == kCommands.end() && IsFolder(arguments.front(), files)) {
        return OpenRegister(arguments, files, console);
    }
    if (command == kCommands.end()) {
        return WrongCommandLine(console, "comando sconosciuto: " + arguments.front());
    }
    return command->run(std::span(arguments).subspan(1), files, console);
}

}  // namespace tonvale
