// What the dialogs share that ask for a hearing-damage prediction (NIPTS, CONFRONTO, RISK and
// PEPPECUR): the fields of noise, person and damage table, their tips and limits, "Ok".
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "dialogs/dialog_win.h"
#include "hearing/damage_table_win.h"
#include "hearing/hearing_fields.h"
#include "resources/resource.h"

namespace tonvale {

// The tips of the fields that several of them have.
inline constexpr ControlTip kFractileTips[] = {
    {IDC_FRACTILE_LIST, L"Valore del frattile della popolazione"},
};
inline constexpr ControlTip kYearsTips[] = {
    {IDC_EXPOSURE_YEARS, L"Numero di anni di esposizione al rumore"},
};
inline constexpr ControlTip kLevelTips[] = {
    {IDC_EXPOSURE_LEVEL, L"Livello di esposizione di calcolo"},
};
inline constexpr ControlTip kSexTips[] = {
    {IDC_MALE, L"Selezionare per riferire il calcolo agli uomini"},
    {IDC_FEMALE, L"Selezionare per riferire il calcolo alle donne"},
};
inline constexpr ControlTip kDamageTableTips[] = {
    kNewTableTip,
    kOldTableTip,
    kBiologicalTableTip,
};
// Those of the buttons that all have.
inline constexpr ControlTip kButtonTips[] = {
    {IDOK, L"Conferma i dati ed esegue il calcolo"},
    {CMD_DIALOG_HELP, L"Richiama la Guida in linea"},
    {IDCANCEL, L"Chiude la finestra senza eseguire il calcolo"},
};

// All tips of one dialog, from its own and those that it shares.
template <std::size_t... kCounts>
constexpr auto JoinTips(const ControlTip (&... parts)[kCounts]) {
    std::array<ControlTip, (kCounts + ...)> tips{};
    auto end = tips.begin();
    ((end = std::copy_n(parts, kCounts, end)), ...);
    return tips;
}

// What is typed; a dialog without the last ones takes the first of them.
inline constexpr int kHearingFieldLimit = static_cast<int>(kMaxHearingFieldCharacters);
inline constexpr std::array<ControlTextLimit, 3> kHearingTextLimits{{
    {IDC_EXPOSURE_LEVEL, kHearingFieldLimit},
    {IDC_AGE, kHearingFieldLimit},
    {IDC_EXPOSURE_YEARS, kHearingFieldLimit},
}};
constexpr std::span<const ControlTextLimit> FirstTextLimits(std::size_t count) {
    return std::span(kHearingTextLimits).first(count);
}

class HearingDialog : public ModalDialog {
  public:
    using ModalDialog::ModalDialog;

  protected:
    bool OnInit() override;
    // "Ok" ends the dialog unless a field is refused, which is then to be typed anew.
    bool OnCommand(int id, int notification) override;
    // Takes over what the dialog holds, or tells what is refused.
    virtual std::optional<HearingRefusal> ConfirmForm() = 0;

    // Controls that the dialog does not have are passed over.
    void ShowFields(const HearingFields& fields);
    void ReadFields(HearingFields& fields) const;
};

}  // namespace tonvale
