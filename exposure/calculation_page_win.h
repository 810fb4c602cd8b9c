// The pages of the uncertainty wizard that compute: rows, settings, results.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/item_list_win.h"
#include "dialogs/wizard_win.h"
#include "exposure/time_unit.h"
#include "exposure/uncertainty_study.h"
#include "resources/resource.h"

namespace tonvale {

template <typename Shown>
using RowOf = typename decltype(Shown::rows)::value_type;

// What a page consists of. `Shown` is LevelPage, DayPage or WeekPage.
template <typename Shown>
struct CalculationPageParts {
    WizardPageInfo info;
    const DialogDescription* description;
    std::span<const ItemListColumn> columns;
    ItemList::Items items;
    std::span<const FormField<Shown>> settings;
    std::span<const FormField<LevelTexts>> results;
    Shown (*show)(const UncertaintyStudy& study);
};

// `Client` is what edits the list's items: ItemListClient or one made from it.
template <typename Shown, typename Client>
class CalculationPage : public WizardPage, protected Client {
  public:
    // `shown` keeps the page's texts from one time in front to the next.
    CalculationPage(Wizard& wizard, AppContext& app, const CalculationPageParts<Shown>& parts,
                    UncertaintyStudy& study, Shown& shown)
        : WizardPage(wizard, app, parts.info, *parts.description),
          parts_(parts),
          study_(study),
          shown_(shown),
          list_(*this, parts.items) {}

    // The results are those of the settings as they are now, which other pages share.
    void ShowState() override {
        ActivatePage(page(), study_);
        std::vector<RowOf<Shown>> rows = std::move(shown_.rows);
        shown_ = parts_.show(study_);
        shown_.rows = std::move(rows);
        list_.ShowItems();
        ShowSettings();
        ComputeResults();
    }
    void StoreState() override {
        ReadSettings();
        KeepPage(shown_, study_);
    }

  protected:
    // Computes from the page as it is shown; gives what there is to tell.
    virtual std::optional<UserMessage> Compute() = 0;
    virtual void ShowSettings() { FillFields<Shown>(shown_, parts_.settings); }
    virtual void ReadSettings() { ReadFields<Shown>(shown_, parts_.settings); }
    virtual void ShowResults() { FillFields<LevelTexts>(shown_.results, parts_.results); }

    void ComputeAndTell() {
        if (const auto message = ComputeResults()) ShowMessage(*message);
    }

    bool OnInit() override {
        list_.TakeControl(Control(IDC_ITEM_LIST), parts_.columns);
        Attach(list_);
        return WizardPage::OnInit();
    }
    // What there is to tell of a number still being typed waits for "Avanti".
    void OnEdited(int /*control*/) override { ComputeResults(); }
    void OnItemsChanged() override { ComputeAndTell(); }
    int NextPage() override {
        ComputeAndTell();
        return static_cast<int>(tonvale::NextPage(study_));
    }
    int PreviousPage() override { return static_cast<int>(tonvale::PreviousPage(page(), study_)); }
    DWORD Buttons() const override { return PSWIZB_BACK | PSWIZB_NEXT; }
    std::size_t ItemCount() const override { return shown_.rows.size(); }

    UncertaintyPage page() const { return static_cast<UncertaintyPage>(id()); }
    UncertaintyStudy& study() { return study_; }
    Shown& shown() { return shown_; }
    const Shown& shown() const { return shown_; }

  private:
    std::optional<UserMessage> ComputeResults() {
        ReadSettings();
        std::optional<UserMessage> message = Compute();
        ShowResults();
        return message;
    }

    const CalculationPageParts<Shown>& parts_;
    UncertaintyStudy& study_;
    Shown& shown_;
    ItemList list_;
};

// What a page with times has besides.
template <typename Shown>
struct TimedPageParts {
    std::span<std::string RowOf<Shown>::*const> cells;  // in the order of the columns
    std::string Shown::*total_time;
    const char* total_time_name;  // what its label says before the unit
    UserMessage (*remember)(UncertaintyStudy& study);
};

// The pages whose rows have times, whose result "M+" keeps, and from which it goes on or ends.
template <typename Shown>
class TimedPage : public CalculationPage<Shown, ItemVectorClient<RowOf<Shown>>> {
    using Base = CalculationPage<Shown, ItemVectorClient<RowOf<Shown>>>;

  public:
    TimedPage(Wizard& wizard, AppContext& app, const CalculationPageParts<Shown>& parts,
              const TimedPageParts<Shown>& timed, UncertaintyStudy& study, Shown& kept)
        : Base(wizard, app, parts, study, kept), timed_(timed) {}

  protected:
    using Base::shown;

    // Shows the time unit in the labels.
    virtual void ShowUnit(const std::string& suffix) {
        this->SetControlText(IDC_TOTAL_TIME_LABEL, timed_.total_time_name + suffix);
    }

    void ShowSettings() override {
        Base::ShowSettings();
        this->Check(IDC_GO_ON, shown().goes_on);
        this->ChooseItem(IDC_TIME_UNIT, shown().time_unit);
        ShowUnit(Suffix());
    }
    void ReadSettings() override {
        Base::ReadSettings();
        shown().goes_on = this->IsChecked(IDC_GO_ON);
    }
    void ShowResults() override {
        Base::ShowResults();
        this->SetControlText(IDC_TOTAL_TIME, shown().*timed_.total_time);
    }
    bool OnCommand(int id, int notification) override {
        if (id != IDC_REMEMBER) return Base::OnCommand(id, notification);
        this->ShowMessage(timed_.remember(this->study()));
        return true;
    }
    void OnItemChosen(int control) override {
        shown().time_unit = this->ChosenItem(control);
        ShowUnit(Suffix());
        this->ComputeAndTell();
    }

    const std::vector<RowOf<Shown>>& Items() const override { return shown().rows; }
    std::string ItemText(std::size_t item, std::size_t column) const override {
        return shown().rows[item].*timed_.cells[column];
    }
    // Like the last one, of which often one number only is different.
    RowOf<Shown> NewItem() const override {
        return shown().rows.empty() ? RowOf<Shown>() : shown().rows.back();
    }

  private:
    std::string Suffix() const { return std::string(TimeUnitAt(shown().time_unit).suffix); }

    const TimedPageParts<Shown>& timed_;
};

}  // namespace tonvale
