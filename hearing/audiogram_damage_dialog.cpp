#include "hearing/audiogram_damage_dialog.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "common/numbers.h"
#include "dialogs/drawing_area_win.h"
#include "dialogs/form_dialog_win.h"
#include "dialogs/item_list_win.h"
#include "hearing/audiogram_chart.h"
#include "hearing/audiogram_row_dialog.h"
#include "hearing/damage_table_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_ITEM_LIST, L"Lista delle perdite uditive per le frequenze audiometriche"},
    kModifyItemTip,
    kNewTableTip,
    kOldTableTip,
    kBiologicalTableTip,
    {IDC_FORMULA_AGRICULTURE, L"Seleziona la formula di calcolo per l'agricoltura"},
    {IDC_FORMULA_INDUSTRY, L"Seleziona la formula di calcolo per l'industria"},
    {IDC_DAMAGE, L"Valore percentuale del danno lavorativo indennizzabile"},
    kStatusBarTip,
    kNotesTip,
};

constexpr ControlTextLimit kTextLimits[] = {{IDC_NOTES_EDIT, kMaxKeptNotesCharacters}};

constexpr ControlHelp kHelp[] = {
    {IDC_ITEM_LIST, kHelpAudiogramLosses},
    {IDC_MODIFY, kHelpAudiogramModify},
    {IDC_SYMMETRIC, kHelpAudiogramSymmetric},
    {IDC_TABLE_NEW, kHelpAudiogramTable},
    {IDC_TABLE_OLD, kHelpAudiogramTable},
    {IDC_TABLE_BIOLOGICAL, kHelpAudiogramTable},
    {IDC_FORMULA_AGRICULTURE, kHelpAudiogramFormula},
    {IDC_FORMULA_INDUSTRY, kHelpAudiogramFormula},
    {IDC_DAMAGE, kHelpAudiogramResult},
    {IDC_NOTES_EDIT, kHelpAudiogramNotes},
    {IDC_STATUS_BAR, kHelpAudiogramStatusBar},
};

constexpr DialogDescription kDescription = {
    .template_name = L"CALCOLOILG",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpAudiogramDamage,
    .help_file = "DEANNO.HLP",
    .accepts_files = true,
};

// The buttons have the codes of what they select.
static_assert(static_cast<int>(DamageFormula::kIndustry) == IDC_FORMULA_INDUSTRY &&
              static_cast<int>(DamageFormula::kAgriculture) == IDC_FORMULA_AGRICULTURE);

constexpr int kFormulaControls[] = {IDC_FORMULA_GROUP, IDC_FORMULA_AGRICULTURE,
                                    IDC_FORMULA_INDUSTRY};

constexpr ItemListColumn kColumns[] = {{L"Frequenza (Hz)", 2}, {L"Sx (dB)", 1}, {L"Dx (dB)", 1}};

constexpr Color kPaper{255, 255, 255};

class AudiogramDamageDialog : public FormDialog<AudiogramDamageForm, AudiogramDamageState>,
                              private ItemListClient {
  public:
    AudiogramDamageDialog(AppContext& app, AudiogramDamageState& state, const std::string& path)
        : FormDialog(app, kDescription, FileKind::kIlg, path, state) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    void ShowFields() override;
    void RecomputeResults() override;

  private:
    std::size_t ItemCount() const override { return form().rows.size(); }
    std::string ItemText(std::size_t item, std::size_t column) const override;
    bool ModifyItem(std::size_t item) override;
    void OnItemsChanged() override;

    void Draw(Canvas& canvas, const Rect& area) const;

    ItemList list_{*this, ItemList::Items::kFixed};
    DrawingArea chart_{
        [this](Canvas& canvas, const Rect& area, Color /*ground*/) { Draw(canvas, area); }};
};

bool AudiogramDamageDialog::OnInit() {
    list_.TakeControl(Control(IDC_ITEM_LIST), kColumns);
    Attach(list_);
    chart_.TakeControl(Control(IDC_DRAWING));
    Attach(chart_);
    return FormDialog::OnInit();
}

bool AudiogramDamageDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_SYMMETRIC:
            form().is_symmetric = IsChecked(id);
            break;
        case IDC_TABLE_NEW:
        case IDC_TABLE_OLD:
        case IDC_TABLE_BIOLOGICAL:
            form().table = static_cast<DamageTable>(id);
            break;
        case IDC_FORMULA_INDUSTRY:
        case IDC_FORMULA_AGRICULTURE:
            form().formula = static_cast<DamageFormula>(id);
            break;
        default:
            return FormDialog::OnCommand(id, notification);
    }
    RecomputeResults();
    return true;
}

void AudiogramDamageDialog::ShowFields() {
    list_.RefreshItems();
    Check(IDC_SYMMETRIC, form().is_symmetric);
    CheckRadioButton(window(), IDC_TABLE_NEW, IDC_TABLE_BIOLOGICAL, static_cast<int>(form().table));
    CheckRadioButton(window(), IDC_FORMULA_INDUSTRY, IDC_FORMULA_AGRICULTURE,
                     static_cast<int>(form().formula));
    Enable(kFormulaControls, UsesFormula(form()));
    SetControlText(IDC_DAMAGE, form().damage_percent);
    chart_.Redraw();
}

void AudiogramDamageDialog::RecomputeResults() {
    Recompute(form());
    ShowFields();
}

std::string AudiogramDamageDialog::ItemText(std::size_t item, std::size_t column) const {
    const AudiogramRow& row = form().rows[item];
    if (column == 0) return FormatInteger(kAudiometricFrequenciesHz[item]);
    return column == 1 ? row.left_db : RightLoss(form(), row);
}

bool AudiogramDamageDialog::ModifyItem(std::size_t item) {
    return EditAudiogramRow(app(), window(), kAudiometricFrequenciesHz[item], form().rows[item],
                            form().is_symmetric);
}

// The next row is selected, so that a whole audiogram is typed with Enter and Tab.
void AudiogramDamageDialog::OnItemsChanged() {
    RecomputeResults();
    const std::size_t next = list_.SelectedItem().value_or(0) + 1;
    list_.Select(std::min(next, ItemCount() - 1));
}

void AudiogramDamageDialog::Draw(Canvas& canvas, const Rect& area) const {
    canvas.FillRectangle(area, kPaper);
    canvas.FrameRectangle(area, {kGrey, canvas.Scaled(1)});
    // The legend stays clear of the frame.
    const Rect inside{area.left, area.top + canvas.Scaled(4), area.right, area.bottom};
    DrawAudiogram(canvas, inside, AudiogramOf(form()), true);
}

}  // namespace

void OpenAudiogramDamage(AppContext& app, AudiogramDamageState& state, HWND owner,
                         const std::string& path) {
    AudiogramDamageDialog(app, state, path).RunModal(owner);
}

}  // namespace tonvale
