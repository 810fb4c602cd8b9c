#include "exposure/exposure_item_dialog.h"

#include <optional>
#include <string>

#include "exposure/level_item_dialog.h"
#include "exposure/time_unit.h"
#include "exposure/typed_value.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_TIME_EDIT, L"Tempo d'esposizione"},
    {IDC_LEVEL_EDIT, L"Livello equivalente"},
    kReadLevelTip,
    kConfirmItemTip,
    kCancelTip,
};

constexpr ControlTextLimit kTextLimits[] = {
    kLevelLimit,
    {IDC_TIME_EDIT, kMaxValueCharacters},
};

constexpr ControlHelp kHelp[] = {
    {IDC_LEVEL_EDIT, kHelpExposureItemLevel}, {IDC_TIME_LABEL, kHelpExposureItemTime},
    {IDC_TIME_EDIT, kHelpExposureItemTime},   {IDC_READ_LEVEL, kHelpExposureItemReadLevel},
    {IDOK, kHelpExposureItemConfirm},         {IDCANCEL, kHelpExposureItemCancel},
};

constexpr DialogDescription kDescription = {
    .template_name = L"ADD_LEPD",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpExposureItem,
    .help_file = nullptr,
    .accepts_files = true,
};

constexpr int kTimeControls[] = {IDC_TIME_LABEL, IDC_TIME_EDIT};
constexpr int kButtons[] = {IDOK, IDCANCEL};
constexpr int kTimeHeight = 31;  // in dialog units: how far its controls keep the buttons away

class ExposureItemDialog : public ListItemDialog {
  public:
    // Without a time unit the item is a level only.
    ExposureItemDialog(AppContext& app, ItemAction action, std::optional<int> time_unit,
                       ExposureItem& item)
        : ListItemDialog(app, kDescription, kLevelOfSpectrum, action),
          time_unit_(time_unit),
          item_(item) {}

  protected:
    void ShowItem() override;
    bool TakeItem() override;

  private:
    void LeaveTimeOut();

    std::optional<int> time_unit_;
    ExposureItem& item_;
};

void ExposureItemDialog::ShowItem() {
    SetControlText(IDC_LEVEL_EDIT, item_.level_dba);
    if (!time_unit_) {
        LeaveTimeOut();
        return;
    }
    SetControlText(IDC_TIME_LABEL, "Esposizione " + std::string(TimeUnitAt(*time_unit_).suffix));
    SetControlText(IDC_TIME_EDIT, item_.duration);
}

// Hides the time and closes the gap.
void ExposureItemDialog::LeaveTimeOut() {
    Show(kTimeControls, false);
    RECT gap{0, 0, 0, kTimeHeight};
    MapDialogRect(window(), &gap);
    for (const int button : kButtons) {
        RECT area{};
        GetWindowRect(Control(button), &area);
        MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&area), 2);
        SetWindowPos(Control(button), nullptr, area.left, area.top - gap.bottom, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    RECT frame{};
    GetWindowRect(window(), &frame);
    SetWindowPos(window(), nullptr, 0, 0, frame.right - frame.left,
                 frame.bottom - frame.top - gap.bottom, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Place();
}

bool ExposureItemDialog::TakeItem() {
    const ExposureItem typed{FieldText(IDC_LEVEL_EDIT), FieldText(IDC_TIME_EDIT)};
    const std::optional<UserMessage> level_refusal = CheckTypedLevel(typed.level_dba);
    const std::optional<UserMessage> refusal =
        level_refusal || !time_unit_ ? level_refusal : CheckExposureItem(typed);
    if (refusal) {
        Refuse(*refusal, level_refusal ? IDC_LEVEL_EDIT : IDC_TIME_EDIT);
        return false;
    }
    item_ = typed;
    return true;
}

}  // namespace

bool EditExposureItem(AppContext& app, HWND owner, ItemAction action, int time_unit,
                      ExposureItem& item) {
    return ExposureItemDialog(app, action, time_unit, item).RunModal(owner) == IDOK;
}

bool EditLevelItem(AppContext& app, HWND owner, ItemAction action, std::string& level_dba) {
    ExposureItem item{level_dba, {}};
    if (ExposureItemDialog(app, action, std::nullopt, item).RunModal(owner) != IDOK) return false;
    level_dba = item.level_dba;
    return true;
}

}  // namespace tonvale
