// The calculators that the tests walk over: one row each.
#pragma once

#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

// What a calculator is to its user.
enum class CalculatorForm {
    kDialog,    // works on a data file, with the menu FILE_OPERATION
    kWizard,    // works on a data file, with the buttons on its pages
    kQuestion,  // asks, and shows the answer in the main window
};

struct Calculator {
    const char* name;               // of its tests
    int command;                    // of the main menu
    const char* title;              // of its dialog, or of the first page of its wizard
    unsigned long help;             // what "?" shows
    const char* example = nullptr;  // a data file that it opens, valid as it stands
    CalculatorForm form = CalculatorForm::kDialog;
};

inline constexpr int kDataFileCalculators = 8;  // the first ones

inline constexpr Calculator kCalculators[] = {
    {"DailyExposure", CMD_DAILY_EXPOSURE, "Calcolo Lep,d", kHelpDailyExposure, "giornata.lep"},
    {"WeeklyExposure", CMD_WEEKLY_EXPOSURE, "Calcolo Lep,w", kHelpWeeklyExposure, "settimana.lew"},
    {"GroupExposure", CMD_GROUP_STATISTICS, "Livello equivalente per gruppi di lavoratori",
     kHelpGroupExposure, "carpenteria.leg"},
    {"Uncertainty", CMD_UNCERTAINTY, "Errore di misura", kHelpUncertainty, "fresatura.err",
     CalculatorForm::kWizard},
    {"NoiseSpectrum", CMD_NOISE_SPECTRUM, "Spettro del rumore", kHelpNoiseSpectrum,
     "sega_circolare.spr"},
    {"AttenuationSpectrum", CMD_ATTENUATION_SPECTRUM, "Spettro di attenuazione",
     kHelpAttenuationSpectrum, "cuffia_leggera.spi"},
    {"ProtectorSelection", CMD_PROTECTOR_SELECTION, "Rispondere alle domande",
     kHelpSelectionQuestions, "scelta_cuffia.dpi", CalculatorForm::kWizard},
    {"AudiogramDamage", CMD_AUDIOGRAM_DAMAGE, "Calcolo Danno Uditivo", kHelpAudiogramDamage,
     "audiometria.ilg"},
    {"Nipts", CMD_NIPTS, "Previsioni ISO 1999/90", kHelpNipts, nullptr, CalculatorForm::kQuestion},
    {"Htla", CMD_HTLA, "Previsioni ISO 1999/90", kHelpHtla, nullptr, CalculatorForm::kQuestion},
    {"Htlan", CMD_HTLAN, "Previsioni ISO 1999/90", kHelpHtlan, nullptr, CalculatorForm::kQuestion},
    {"Predictions", CMD_PREDICTIONS, "Previsioni ISO 1999/90", kHelpPredictions, nullptr,
     CalculatorForm::kQuestion},
    {"DamageEvolution", CMD_DAMAGE_EVOLUTION, "Previsioni ISO 1999/90", kHelpEvolution, nullptr,
     CalculatorForm::kQuestion},
    {"Risk", CMD_RISK, "Rischio di danno uditivo", kHelpRisk, nullptr, CalculatorForm::kQuestion},
};

}  // namespace tonvale
