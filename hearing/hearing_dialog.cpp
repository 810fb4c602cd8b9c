#include "hearing/hearing_dialog.h"

#include "dialogs/status_bar_win.h"

namespace tonvale {

namespace {

constexpr FormField<HearingFields> kFields[] = {
    {IDC_EXPOSURE_YEARS, &HearingFields::years},
    {IDC_EXPOSURE_LEVEL, &HearingFields::level_dba},
    {IDC_AGE, &HearingFields::age},
};

// In the order of HearingField.
constexpr int kControls[] = {IDC_EXPOSURE_YEARS, IDC_EXPOSURE_LEVEL, IDC_AGE, IDC_AGE,
                             IDC_CRITERION_LIST};

}  // namespace

bool HearingDialog::OnInit() {
    CreateStatusBar(app().instance, window());
    return true;
}

bool HearingDialog::OnCommand(int id, int notification) {
    if (id != IDOK) return ModalDialog::OnCommand(id, notification);
    if (const std::optional<HearingRefusal> refusal = ConfirmForm()) {
        Refuse(refusal->message, kControls[static_cast<std::size_t>(refusal->field)]);
    } else {
        End(IDOK);
    }
    return true;
}

void HearingDialog::ShowFields(const HearingFields& fields) {
    FillFields<HearingFields>(fields, kFields);
    CheckRadioButton(window(), IDC_TABLE_NEW, IDC_TABLE_BIOLOGICAL, static_cast<int>(fields.table));
    CheckRadioButton(window(), IDC_MALE, IDC_FEMALE, fields.sex == kMale ? IDC_MALE : IDC_FEMALE);
}

void HearingDialog::ReadFields(HearingFields& fields) const {
    ModalDialog::ReadFields<HearingFields>(fields, kFields);
    fields.sex = IsChecked(IDC_MALE) ? kMale : kFemale;
    for (int button = IDC_TABLE_NEW; button <= IDC_TABLE_BIOLOGICAL; ++button) {
        if (IsChecked(button)) fields.table = static_cast<DamageTable>(button);
    }
}

}  // namespace tonvale
