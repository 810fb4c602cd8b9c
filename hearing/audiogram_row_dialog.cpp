#include "hearing/audiogram_row_dialog.h"

#include <string>
#include <vector>

#include "common/numbers.h"
#include "common/text.h"
#include "dialogs/dialog_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr int kMaxLossCharacters = 3;

constexpr ControlTip kTips[] = {
    {IDC_LEFT_LOSS, L"Valore della perdita per l'orecchio sinistro"},
    {IDC_RIGHT_LOSS, L"Valore della perdita per l'orecchio destro"},
    {IDC_SYMMETRIC, L"L'orecchio sinistro vale per entrambi, a tutte le frequenze"},
    {IDOK, L"Modifica un elemento della lista"},
    {IDC_DELETE, L"Azzera un elemento della lista"},
    kCancelTip,
};

constexpr ControlTextLimit kTextLimits[] = {{IDC_LEFT_LOSS, kMaxLossCharacters},
                                            {IDC_RIGHT_LOSS, kMaxLossCharacters}};

const std::vector<std::string>& OfferedLosses() {
    static const std::vector<std::string> losses = [] {
        std::vector<std::string> texts;
        for (int loss_db = -10; loss_db <= 120; loss_db += 5) {
            texts.push_back(FormatInteger(loss_db));
        }
        return texts;
    }();
    return losses;
}

constexpr ControlItems kItems[] = {{IDC_LEFT_LOSS, OfferedLosses}, {IDC_RIGHT_LOSS, OfferedLosses}};

constexpr ControlHelp kHelp[] = {
    {IDC_LOSS_FREQUENCY, kHelpLossFrequency},
    {IDC_LEFT_LOSS, kHelpLossLeft},
    {IDC_RIGHT_LOSS, kHelpLossRight},
    {IDC_SYMMETRIC, kHelpLossSymmetric},
    {IDOK, kHelpLossConfirm},
    {IDC_DELETE, kHelpLossDelete},
    {IDCANCEL, kHelpLossCancel},
};

constexpr DialogDescription kDescription = {
    .template_name = L"EDIT_ILG",
    .tips = kTips,
    .text_limits = kTextLimits,
    .items = kItems,
    .help = kHelp,
    .main_help_context = kHelpLoss,
};

constexpr int kRightEarControls[] = {IDC_RIGHT_LOSS_LABEL, IDC_RIGHT_LOSS};

class AudiogramRowDialog : public ModalDialog {
  public:
    AudiogramRowDialog(AppContext& app, int frequency_hz, AudiogramRow& row, bool& is_symmetric)
        : ModalDialog(app, kDescription),
          frequency_hz_(frequency_hz),
          row_(row),
          is_symmetric_(is_symmetric) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;

  private:
    void ShowLoss(int field, const std::string& loss_db);
    void ShowSymmetry();
    void Confirm();
    void Delete();
    void Finish(const AudiogramRow& row);

    int frequency_hz_;
    AudiogramRow& row_;
    bool& is_symmetric_;
};

bool AudiogramRowDialog::OnInit() {
    SetControlText(IDC_LOSS_FREQUENCY, FormatInteger(frequency_hz_));
    ShowLoss(IDC_LEFT_LOSS, row_.left_db);
    ShowLoss(IDC_RIGHT_LOSS, row_.right_db);
    Check(IDC_SYMMETRIC, is_symmetric_);
    ShowSymmetry();
    SetFocus(Control(IDC_LEFT_LOSS));  // which selects its text
    return false;
}

bool AudiogramRowDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_SYMMETRIC:
            ShowSymmetry();
            return true;
        case IDOK:
            Confirm();
            return true;
        case IDC_DELETE:
            Delete();
            return true;
        default:
            return ModalDialog::OnCommand(id, notification);
    }
}

void AudiogramRowDialog::ShowLoss(int field, const std::string& loss_db) {
    SetControlText(field, TrimBlanks(ShownLoss(loss_db)));
}

void AudiogramRowDialog::ShowSymmetry() {
    Enable(kRightEarControls, !IsChecked(IDC_SYMMETRIC));
}

void AudiogramRowDialog::Confirm() {
    Finish(EnteredRow(row_, ControlText(IDC_LEFT_LOSS), ControlText(IDC_RIGHT_LOSS),
                      IsChecked(IDC_SYMMETRIC)));
}

void AudiogramRowDialog::Delete() {
    if (ConfirmsDeletion()) Finish({std::string(kNoLoss), std::string(kNoLoss)});
}

void AudiogramRowDialog::Finish(const AudiogramRow& row) {
    row_ = row;
    is_symmetric_ = IsChecked(IDC_SYMMETRIC);
    End(IDOK);
}

}  // namespace

bool EditAudiogramRow(AppContext& app, HWND owner, int frequency_hz, AudiogramRow& row,
                      bool& is_symmetric) {
    return AudiogramRowDialog(app, frequency_hz, row, is_symmetric).RunModal(owner) == IDOK;
}

}  // namespace tonvale
