// What the pages of the uncertainty wizard have in common, and the pages.
#pragma once

#include <array>
#include <memory>

#include "dialogs/wizard_win.h"
#include "exposure/time_unit.h"
#include "exposure/uncertainty_study.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

// The pages in the order of the sheet; 107, the report, follows them. `shown` keeps what is typed
// in a page from one time in front to the next. All that is passed outlives the page.
std::unique_ptr<WizardPage> MakeUncertaintyStartPage(Wizard& wizard, AppContext& app,
                                                     UncertaintyStudy& study);
std::unique_ptr<WizardPage> MakeUncertaintyLevelPage(Wizard& wizard, AppContext& app,
                                                     UncertaintyStudy& study, LevelPage& shown);
std::unique_ptr<WizardPage> MakeUncertaintyDayPage(Wizard& wizard, AppContext& app,
                                                   UncertaintyStudy& study, DayPage& shown);
std::unique_ptr<WizardPage> MakeUncertaintyWeekPage(Wizard& wizard, AppContext& app,
                                                    UncertaintyStudy& study, WeekPage& shown);

// Rows that the tables of several pages share.
inline constexpr int kErrorCharacters = 8;

inline constexpr ControlTip kInstrumentErrorTip{
    IDC_INSTRUMENT_ERROR, L"Errore dello strumento, aggiunto a ogni risultato"};
inline constexpr ControlTip kTimeUnitTip{IDC_TIME_UNIT, L"Per scegliere il formato del tempo"};
inline constexpr ControlTip kRememberTip{IDC_REMEMBER,
                                         L"Memorizza il livello e il suo errore ambientale"};
inline constexpr ControlTip kGoOnToDayTip{IDC_GO_ON, L"Prosegue con il calcolo di Lep,d"};

inline constexpr ControlTextLimit kInstrumentErrorLimit{IDC_INSTRUMENT_ERROR, kErrorCharacters};

inline constexpr ControlTextLimit kInstrumentErrorLimits[] = {kInstrumentErrorLimit};

inline constexpr ControlItems kTimeUnits[] = {{IDC_TIME_UNIT, TimeUnitNames}};

inline constexpr ControlHelp kInstrumentErrorHelp{IDC_INSTRUMENT_ERROR, kHelpUncertaintyInstrument};
inline constexpr ControlHelp kEnvironmentalErrorHelp{IDC_LEVEL_ERROR,
                                                     kHelpUncertaintyEnvironmental};
inline constexpr ControlHelp kTotalErrorHelp{IDC_TOTAL_ERROR, kHelpUncertaintyTotal};
inline constexpr ControlHelp kTimeUnitHelp{IDC_TIME_UNIT, kHelpUncertaintyTimeUnit};
inline constexpr ControlHelp kRememberHelp{IDC_REMEMBER, kHelpUncertaintyRemember};
inline constexpr ControlHelp kGoOnHelp{IDC_GO_ON, kHelpUncertaintyGoOn};
inline constexpr ControlHelp kFileHelp{IDC_WIZARD_FILE, kHelpUncertaintyFile};

// The result `level` with its errors.
constexpr std::array<FormField<LevelTexts>, 3> ResultFields(int level) {
    return {{{level, &LevelTexts::level_dba},
             {IDC_LEVEL_ERROR, &LevelTexts::environmental_error_db},
             {IDC_TOTAL_ERROR, &LevelTexts::total_error_db}}};
}

}  // namespace tonvale
