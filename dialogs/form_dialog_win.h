// The dialogs of the calculators whose core module is a form, a kept state and free functions over
// them: FormFromState, KeepForm, LoadForm, StoreForm, Summary, MakePrintout.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "dialogs/calculator_dialog_win.h"
#include "resources/resource.h"

namespace tonvale {

template <typename Form, typename State>
class FormDialog : public CalculatorDialog {
  public:
    // `state` outlives the dialog.
    FormDialog(AppContext& app, const DialogDescription& description, FileKind kind,
               std::string path, State& state)
        : CalculatorDialog(app, description, kind, std::move(path)),
          state_(state),
          form_(FormFromState(state)) {}

  protected:
    // Shows all of the form but its notes.
    virtual void ShowFields() = 0;

    Form& form() { return form_; }
    const Form& form() const { return form_; }
    State& state() { return state_; }
    const State& state() const { return state_; }

    void ShowKeptState() override { ShowForm(); }
    bool LoadFrom(const ProfileFile& file) override {
        if (!LoadForm(file, form_)) return false;
        ShowForm();
        return true;
    }
    void StoreTo(ProfileFile& file) override { StoreForm(ReadForm(), file); }
    std::string CurrentSummary(std::string_view list_separator) override {
        return Summary(ReadForm(), list_separator);
    }
    Printout CurrentPrintout() override { return MakePrintout(ReadForm()); }
    void KeepState() override { KeepForm(ReadForm(), state_); }

  private:
    // The form with the notes as they are now.
    const Form& ReadForm() {
        form_.notes = ControlText(IDC_NOTES_EDIT);
        return form_;
    }
    void ShowForm() {
        ShowFields();
        SetControlText(IDC_NOTES_EDIT, form_.notes);
    }

    State& state_;
    Form form_;
};

}  // namespace tonvale
