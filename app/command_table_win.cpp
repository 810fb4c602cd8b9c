#include "app/command_table_win.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

#include "app/main_window.h"
#include "app/page_setup_win.h"
#include "app/result_actions_win.h"
#include "dialogs/dialog_win.h"
#include "dialogs/help_viewer_win.h"
#include "exposure/daily_exposure_dialog.h"
#include "exposure/group_exposure_dialog.h"
#include "exposure/uncertainty_wizard_win.h"
#include "exposure/weekly_exposure_dialog.h"
#include "hearing/audiogram_damage_dialog.h"
#include "hearing/damage_evolution_dialog.h"
#include "hearing/damage_risk_dialog.h"
#include "hearing/loss_comparison_dialog.h"
#include "hearing/loss_prediction_dialog.h"
#include "protectors/attenuation_spectrum_dialog.h"
#include "protectors/noise_spectrum_dialog.h"
#include "protectors/protector_selection_wizard_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

struct CommandEntry {
    int id;
    void (*run)(MainWindow& window, const std::string& path);
    bool (*can_run)(const MainWindow& window) = nullptr;  // nullptr: always
};

// File

void OpenDocument(MainWindow& window, const std::string& path) {
    ReportDocument& document = window.document();
    if (path.empty() ? document.New() : document.Open(path)) window.views().ShowDocument();
}

void OpenAnyFile(MainWindow& window, const std::string&) {
    window.OpenAnyFile();
}

void Save(MainWindow& window, const std::string&) {
    window.document().Save();
}

void SaveAs(MainWindow& window, const std::string&) {
    if (window.views().ShowsDocument()) {
        window.document().SaveAs();
    } else {
        ExportResult(window.context(), window.results(), window.document());
    }
}

void SetUpPage(MainWindow& window, const std::string&) {
    if (PageSetup(window.window())) return;
    ShowMessageBox(window.window(),
                   {"Imposta stampante. Attenzione:",
                    "Per l'impostazione usare Pannello di Controllo!", MessageIcon::kExclamation});
}

void Print(MainWindow& window, const std::string&) {
    if (window.views().ShowsDocument()) {
        window.document().Print();
    } else {
        PrintResult(window.context(), window.state().print_notes, window.results());
    }
}

void Exit(MainWindow& window, const std::string&) {
    window.views().ShowDocument();
    window.Close();
}

// Modifica

void Cut(MainWindow& window, const std::string&) {
    window.document().Cut();
}

bool CanCut(const MainWindow& window) {
    return window.views().ShowsDocument() && window.document().CanCut();
}

void Copy(MainWindow& window, const std::string&) {
    if (window.views().ShowsDocument()) {
        window.document().Copy();
    } else {
        CopyResult(window.context(), window.results());
    }
}

bool CanCopy(const MainWindow& window) {
    return !window.views().ShowsDocument() || window.document().CanCut();
}

void Paste(MainWindow& window, const std::string&) {
    window.document().Paste();
}

bool CanPaste(const MainWindow& window) {
    return window.views().ShowsDocument() && window.document().CanPaste();
}

// Visualizza

template <ViewKind kKind>
void ShowKind(MainWindow& window, const std::string&) {
    window.views().ShowKind(kKind);
}

template <ViewKind kKind>
bool CanShowKind(const MainWindow& window) {
    return window.views().CanShow(kKind);
}

void ShowDocument(MainWindow& window, const std::string&) {
    window.views().ShowDocument();
}

bool CanShowDocument(const MainWindow& window) {
    return !window.views().ShowsDocument();
}

// Calculators

void DailyExposure(MainWindow& window, const std::string& path) {
    OpenDailyExposure(window.context(), window.state().daily_exposure, window.window(), path);
}

void WeeklyExposure(MainWindow& window, const std::string& path) {
    OpenWeeklyExposure(window.context(), window.state().weekly_exposure, window.window(), path);
}

void GroupStatistics(MainWindow& window, const std::string& path) {
    OpenGroupExposure(window.context(), window.state().group_exposure, window.window(), path);
}

void Uncertainty(MainWindow& window, const std::string& path) {
    OpenUncertainty(window.context(), window.state().uncertainty, window.window(), path);
}

void NoiseSpectrum(MainWindow& window, const std::string& path) {
    OpenNoiseSpectrum(window.context(), window.state().noise_spectrum, window.window(), path);
}

void AttenuationSpectrum(MainWindow& window, const std::string& path) {
    OpenAttenuationSpectrum(window.context(), window.state().attenuation_spectrum, window.window(),
                            path);
}

void ProtectorSelection(MainWindow& window, const std::string& path) {
    OpenProtectorSelection(window.context(), window.state().protector_selection, window.window(),
                           path);
}

void AudiogramDamage(MainWindow& window, const std::string& path) {
    OpenAudiogramDamage(window.context(), window.state().audiogram_damage, window.window(), path);
}

// Shows what a hearing-damage dialog has confirmed.
void ShowConfirmed(MainWindow& window, std::optional<ResultView> result) {
    if (result) window.ShowResult(std::move(*result));
}

template <QuantityKind kQuantity>
void PredictLoss(MainWindow& window, const std::string&) {
    ShowConfirmed(window, AskLossPrediction(window.context(), window.window(), kQuantity,
                                            window.state().loss_prediction));
}

// Asks with one of the other hearing-damage dialogs, which keeps `kState`.
template <auto kAsk, auto kState>
void AskResult(MainWindow& window, const std::string&) {
    ShowConfirmed(window, kAsk(window.context(), window.window(), window.state().*kState));
}

// ?

void ShowHelpIndex(MainWindow& window, const std::string&) {
    window.context().help->ShowTopic(window.window(), kHelpIndex);
}

void ShowAbout(MainWindow& window, const std::string&) {
    window.ShowAbout();
}

// A command without a function is one that the program does not have yet.
constexpr CommandEntry kCommands[] = {
    {CMD_NEW_DOCUMENT, OpenDocument},
    {CMD_OPEN, OpenAnyFile},
    {CMD_SAVE, Save},
    {CMD_SAVE_AS, SaveAs},
    {CMD_PAGE_SETUP, SetUpPage},
    {CMD_PRINT, Print},
    {CMD_EXIT, Exit},
    {CMD_CUT, Cut, CanCut},
    {CMD_COPY, Copy, CanCopy},
    {CMD_PASTE, Paste, CanPaste},
    {CMD_VIEW_AUDIOGRAM, ShowKind<ViewKind::kAudiogram>, CanShowKind<ViewKind::kAudiogram>},
    {CMD_VIEW_CHART, ShowKind<ViewKind::kChart>, CanShowKind<ViewKind::kChart>},
    {CMD_VIEW_TABLE, ShowKind<ViewKind::kTable>, CanShowKind<ViewKind::kTable>},
    {CMD_VIEW_DOCUMENT, ShowDocument, CanShowDocument},
    {CMD_DAILY_EXPOSURE, DailyExposure},
    {CMD_WEEKLY_EXPOSURE, WeeklyExposure},
    {CMD_GROUP_STATISTICS, GroupStatistics},
    {CMD_UNCERTAINTY, Uncertainty},
    {CMD_NOISE_SPECTRUM, NoiseSpectrum},
    {CMD_ATTENUATION_SPECTRUM, AttenuationSpectrum},
    {CMD_PROTECTOR_SELECTION, ProtectorSelection},
    {CMD_NIPTS, PredictLoss<QuantityKind::kNipts>},
    {CMD_HTLA, PredictLoss<QuantityKind::kHtla>},
    {CMD_HTLAN, PredictLoss<QuantityKind::kHtlan>},
    {CMD_PREDICTIONS, AskResult<AskLossComparison, &AppState::loss_comparison>},
    {CMD_DAMAGE_EVOLUTION, AskResult<AskDamageEvolution, &AppState::damage_evolution>},
    {CMD_RISK, AskResult<AskDamageRisk, &AppState::damage_risk>},
    {CMD_AUDIOGRAM_DAMAGE, AudiogramDamage},
    {CMD_HELP_INDEX, ShowHelpIndex},
    {CMD_ABOUT, ShowAbout},
};

// The command that opens a file of each kind, in the order of the kinds.
constexpr std::array<int, 9> kCommandsOfKinds = {
    CMD_DAILY_EXPOSURE,      CMD_WEEKLY_EXPOSURE, CMD_GROUP_STATISTICS,
    CMD_AUDIOGRAM_DAMAGE,    CMD_NOISE_SPECTRUM,  CMD_ATTENUATION_SPECTRUM,
    CMD_PROTECTOR_SELECTION, CMD_UNCERTAINTY,     CMD_NEW_DOCUMENT,
};

const CommandEntry* FindCommand(int id) {
    const auto* entry = std::find_if(std::begin(kCommands), std::end(kCommands),
                                     [id](const CommandEntry& row) { return row.id == id; });
    return entry == std::end(kCommands) ? nullptr : entry;
}

}  // namespace

int CommandOfKind(FileKind kind) {
    return kCommandsOfKinds[static_cast<std::size_t>(kind)];
}

void RunCommand(MainWindow& window, int id, const std::string& path) {
    if (CanRunCommand(window, id)) FindCommand(id)->run(window, path);
}

bool CanRunCommand(const MainWindow& window, int id) {
    const CommandEntry* entry = FindCommand(id);
    return entry && (!entry->can_run || entry->can_run(window));
}

}  // namespace tonvale
