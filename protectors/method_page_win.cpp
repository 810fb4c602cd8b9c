#include "protectors/method_page_win.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "dialogs/file_dialogs_win.h"
#include "protectors/band_tips_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

// A method's page has some of these.
constexpr auto kMethodPageTips = Joined(
    Joined(Joined(kWizardFileTips, kNoiseBandTips),
           Joined(AttenuationBandTips(IDC_PROTECTOR_BAND_FIRST), kRatingTips)),
    std::to_array<ControlTip>({
        {IDC_NOISE_A_LEVEL, L"Inserire il valore del livello equivalente pesato A"},
        {IDC_NOISE_C_LEVEL, L"Inserire il valore del livello equivalente pesato C"},
        {IDC_CLASS_HM, L"La differenza tra i livelli pesati C e A non supera 5 dB"},
        {IDC_CLASS_L, L"La differenza tra i livelli pesati C e A supera 5 dB"},
        {IDC_IMPORT_NOISE, L"Carica i dati del rumore da un file di spettro"},
        {IDC_IMPORT_PROTECTOR, L"Carica i dati del DPI da un file di spettro di attenuazione"},
    }));

constexpr auto MakeMethodPageHelp() {
    constexpr auto kNamed =
        Joined(kWizardFileHelp, std::to_array<ControlHelp>({
                                    {IDC_NOISE_A_LEVEL, kHelpSelectionLaeq},
                                    {IDC_NOISE_C_LEVEL, kHelpSelectionLceq},
                                    {IDC_CLASS_HM, kHelpSelectionNoiseClass},
                                    {IDC_CLASS_L, kHelpSelectionNoiseClass},
                                    {IDC_RATING_H, kHelpSelectionHml},
                                    {IDC_RATING_M, kHelpSelectionHml},
                                    {IDC_RATING_L, kHelpSelectionHml},
                                    {IDC_RATING_SNR, kHelpSelectionSnr},
                                    {IDC_IMPORT_NOISE, kHelpSelectionImportNoise},
                                    {IDC_IMPORT_PROTECTOR, kHelpSelectionImportProtector},
                                }));
    std::array<ControlHelp, 2 * kOctaveBandCount> bands{};
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        const int band = static_cast<int>(i);
        bands[i] = {IDC_BAND_FIRST + band, kHelpSelectionNoiseBands};
        bands[kOctaveBandCount + i] = {IDC_PROTECTOR_BAND_FIRST + band,
                                       kHelpSelectionProtectorBands};
    }
    return Joined(kNamed, bands);
}
constexpr auto kMethodPageHelp = MakeMethodPageHelp();

constexpr MethodPageRow Row(CheckMethod method, int page, const wchar_t* title,
                            unsigned long topic) {
    return {method,
            {page, title},
            {.template_name = nullptr,
             .tips = kMethodPageTips,
             .help = kMethodPageHelp,
             .main_help_context = topic,
             .accepts_files = true}};
}

// In the order of the sheet.
constexpr std::array<MethodPageRow, kCheckMethodCount> kMethodPages{{
    Row(CheckMethod::kSnr, IDD_SNR_PAGE, L"Metodo SNR", kHelpSelectionSnrMethod),
    Row(CheckMethod::kCorrectedSnr, IDD_CORRECTED_SNR_PAGE, L"Metodo SNR corretto",
        kHelpSelectionCorrectedSnrMethod),
    Row(CheckMethod::kOctaveBand, IDD_OCTAVE_BAND_PAGE, L"Metodo banda d'ottava",
        kHelpSelectionOctaveBandMethod),
    Row(CheckMethod::kHmlCheck, IDD_HML_CHECK_PAGE, L"Controllo HML", kHelpSelectionHmlCheckMethod),
    Row(CheckMethod::kHml, IDD_HML_PAGE, L"Metodo HML", kHelpSelectionHmlMethod),
}};

// The fields behind the two spectra, in the order of CheckField.
constexpr std::array<int, kCheckFieldCount - 2 * kOctaveBandCount> kNumberFields{
    IDC_NOISE_A_LEVEL, IDC_NOISE_C_LEVEL, IDC_RATING_H, IDC_RATING_M, IDC_RATING_L, IDC_RATING_SNR};

int ControlOf(CheckField field) {
    const auto place = static_cast<std::size_t>(field);
    constexpr auto kBands = 2 * kOctaveBandCount;
    static_assert(IDC_PROTECTOR_BAND_FIRST == IDC_BAND_FIRST + static_cast<int>(kOctaveBandCount));
    return place < kBands ? IDC_BAND_FIRST + static_cast<int>(place)
                          : kNumberFields.at(place - kBands);
}

}  // namespace

const std::array<MethodPageRow, kCheckMethodCount>& MethodPages() {
    return kMethodPages;
}

int PageOf(const CheckMethodInfo* method) {
    const auto* row = std::find_if(
        kMethodPages.begin(), kMethodPages.end(),
        [&](const MethodPageRow& page) { return method && page.method == method->method; });
    return row == kMethodPages.end() ? IDD_METHOD_CHOICE_PAGE : row->page.id;
}

void MethodPage::ShowState() {
    for (const CheckField field : method_.fields) {
        SetControlText(ControlOf(field), form_.texts[field]);
    }
    CheckRadioButton(window(), IDC_CLASS_HM, IDC_CLASS_L,
                     form_.is_class_l ? IDC_CLASS_L : IDC_CLASS_HM);
}

void MethodPage::StoreState() {
    for (const CheckField field : method_.fields) {
        form_.texts[field] = ControlText(ControlOf(field));
    }
    if (Control(IDC_CLASS_L)) form_.is_class_l = IsChecked(IDC_CLASS_L);
}

bool MethodPage::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_IMPORT_NOISE:
            Import(FileKind::kSpr, ImportNoise);
            return true;
        case IDC_IMPORT_PROTECTOR:
            Import(FileKind::kSpi, ImportProtector);
            return true;
        default:
            return WizardPage::OnCommand(id, notification);
    }
}

void MethodPage::Import(FileKind kind, ImportFunction import) {
    const std::optional<std::string> path =
        ChooseFileToOpen(app(), wizard().window(), InfoOf(kind).filter_text, kOpenDataTitle);
    if (!path) return;
    StoreState();
    const std::optional<ProfileFile> file = ReadDataFile(*app().files, *path, kind);
    if (file && import(*file, form_)) ShowState();
}

int MethodPage::NextPage() {
    const MethodRun run = RunMethod(method_, form_, state_);
    for (const FieldRefusal& refusal : run.field_refusals) {
        const int field = ControlOf(refusal.field);
        ShowMessage(refusal.message);
        SetControlText(field, refusal.cut_text);
        FocusBehindText(field);
    }
    if (!run.refusal) return IDD_RESULTS_PAGE;
    ShowMessage(*run.refusal);
    return kStay;
}

}  // namespace tonvale
