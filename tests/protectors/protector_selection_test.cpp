#include "protectors/protector_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char* kNotAllNumbers =
    "Attenzione: non tutte le caselle di testo contengono un valore numerico.";

using FieldTexts = std::vector<std::pair<CheckField, std::string>>;

MethodPageForm PageOf(const FieldTexts& texts, bool is_class_l = false) {
    MethodPageForm form;
    for (const auto& [field, text] : texts) form.texts[field] = text;
    form.is_class_l = is_class_l;
    return form;
}

MethodPageForm OctavePage() {
    MethodPageForm form;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        form.texts[BandField(CheckField::kNoiseBands, i)] = "95.0";
        form.texts[BandField(CheckField::kProtectorBands, i)] = "20";
    }
    return form;
}

// One page of each method that is accepted, in the order of the methods.
std::vector<MethodPageForm> GoodPages() {
    return {PageOf({{CheckField::kLaeq, "95"}, {CheckField::kSnr, "20"}}),
            PageOf({{CheckField::kLceq, "100"}, {CheckField::kSnr, " 25"}}),
            PageOf({{CheckField::kLaeq, "100"},
                    {CheckField::kH, "20"},
                    {CheckField::kM, "10"},
                    {CheckField::kL, "12.5"}},
                   true),
            PageOf({{CheckField::kLaeq, "90.3"},
                    {CheckField::kLceq, "92.3"},
                    {CheckField::kH, "30"},
                    {CheckField::kM, "25"},
                    {CheckField::kL, "20"}}),
            OctavePage()};
}

std::string TextOf(const SelectionState& state) {
    std::string text;
    for (const PrintoutLine& line : MakePrintout(state).lines) text += line.left + "\n";
    return text;
}

TEST(ProtectorSelection, NextRunsTheMethodOfThePage) {
    const std::vector<double> levels{82, 75, 88, 65.3, 82};
    std::vector<MethodPageForm> pages = GoodPages();
    for (std::size_t i = 0; i < kCheckMethodCount; ++i) {
        SelectionState state;
        const CheckMethodInfo& method = CheckMethods()[i];
        const MethodRun run = RunMethod(method, pages[i], state);
        EXPECT_FALSE(run.refusal) << method.name;
        EXPECT_DOUBLE_EQ(state.effective_level_dba, levels[i]) << method.name;
        EXPECT_EQ(state.method, static_cast<int>(method.method));
        EXPECT_NE(state.inputs.values[method.fields.back()], 0);
        EXPECT_EQ(state.inputs.is_class_l, method.method == CheckMethod::kHmlCheck);
        // Any empty field, or one of 0, keeps the wizard on the page and the state as it was.
        for (const CheckField field : method.fields) {
            for (const char* bad : {"", "  0", "   ", "."}) {
                MethodPageForm form = pages[i];
                form.texts[field] = bad;
                SelectionState untouched;
                const auto refusal = RunMethod(method, form, untouched).refusal;
                ASSERT_TRUE(refusal);
                EXPECT_EQ(refusal->text,
                          *bad == '\0' ? kNotAllNumbers : "Inserire valori numerici!");
                EXPECT_EQ(untouched.effective_level_dba, 0);
                EXPECT_EQ(untouched.inputs.values[method.fields.front()], 0);
            }
        }
    }
}

TEST(ProtectorSelection, CutsATextAtItsFirstBadCharacter) {
    const auto cut = [](const char* text) {
        const auto refusal = CheckTypedField(CheckField::kSnr, text);
        return refusal ? "<" + refusal->cut_text + ">" : "ok";
    };
    EXPECT_EQ(cut("25,5"), "<25>");
    EXPECT_EQ(cut("-5"), "<>");
    EXPECT_EQ(cut("12 3é4"), "<12 3>");
    EXPECT_EQ(cut("123456x"), "<123456>");
    EXPECT_EQ(cut("1234567x"), "ok");  // beyond the seventh character
    EXPECT_EQ(cut(" 1.2.3"), "ok");
    EXPECT_EQ(cut(""), "ok");

    MethodPageForm form = PageOf({{CheckField::kLceq, "1OO"}, {CheckField::kSnr, "2\xC3\xA8"}});
    SelectionState state;
    const MethodRun run = RunMethod(InfoOf(CheckMethod::kSnr), form, state);
    ASSERT_THAT(run.field_refusals, SizeIs(2));
    EXPECT_EQ(run.field_refusals[0].field, CheckField::kLceq);
    EXPECT_EQ(run.field_refusals[1].message.text,
              "Inserire solo numeri, utilizzando il punto come separatore decimale.");
    EXPECT_EQ(run.field_refusals[1].message.caption, "Errore nell'inserimento dei dati!");
    EXPECT_EQ(form.texts[CheckField::kLceq] + form.texts[CheckField::kSnr], "12");
    EXPECT_EQ(run.refusal->text, kNotAllNumbers);
    EXPECT_EQ(run.refusal->icon, MessageIcon::kExclamation);
}

TEST(ProtectorSelection, AnUndecidedHmlCheckKeepsItsLevelAlone) {
    SelectionState state;
    MethodPageForm form = GoodPages()[2];
    form.is_class_l = false;
    const auto refusal = RunMethod(InfoOf(CheckMethod::kHmlCheck), form, state).refusal;
    EXPECT_EQ(refusal->caption, "Attenzione: non è possibile valutare la protezione offerta!");
    EXPECT_EQ(state.effective_level_dba, 80);
    EXPECT_EQ(state.method, -1);
    EXPECT_EQ(state.inputs.values[CheckField::kLaeq], 0);
}

TEST(ProtectorSelection, TheInformationMayTakeTheMethodAway) {
    SelectionState state;
    EXPECT_EQ(ActionLevelPlace(state), 1U);
    EXPECT_FALSE(state.has_answers);
    state.method = 4;
    EXPECT_EQ(AllowedMethod(state), nullptr);
    SetInformation({.has_lceq = true, .has_laeq = true}, state);
    EXPECT_EQ(AllowedMethod(state), &InfoOf(CheckMethod::kHml));
    SetInformation({.has_laeq = true}, state);
    EXPECT_EQ(state.method, -1);
}

TEST(ProtectorSelection, AnotherMethodInTheFileIsTold) {
    SelectionState loaded;
    for (const auto& [shown, ending] : std::vector<std::pair<CheckMethod, std::string>>{
             {CheckMethod::kSnr, "dal Metodo SNR."},
             {CheckMethod::kCorrectedSnr, "dal Metodo SNR corretto."},
             {CheckMethod::kOctaveBand, "dal Metodo banda d'ottava."},
             {CheckMethod::kHmlCheck, "dal Controllo HML."},
             {CheckMethod::kHml, "dal Metodo HML."}}) {
        loaded.method = shown == CheckMethod::kSnr ? 5 : 2;
        const auto message = MethodChange(InfoOf(shown), loaded);
        ASSERT_TRUE(message);
        EXPECT_EQ(message->caption, "Attenzione: il metodo verrà cambiato.");
        EXPECT_EQ(message->text,
                  "Il file aperto fa riferimento ad un metodo di calcolo diverso " + ending);
        for (const int same_or_none : {static_cast<int>(shown), 0, 99}) {
            loaded.method = same_or_none;
            EXPECT_FALSE(MethodChange(InfoOf(shown), loaded));
        }
    }
}

TEST(ProtectorSelection, ImportsTheValuesOfSpectra) {
    MethodPageForm form = PageOf({{CheckField::kLaeq, "77"}, {CheckField::kSnr, "12"}});
    const ProfileFile noise =
        ProfileFile::Parse("[TONVALE]\nTipo=SPR\nLCEQ= 101.25\n[SPECTRUM]\n125=abc\n8000=9\n");
    EXPECT_FALSE(ImportProtector(noise, form));
    EXPECT_TRUE(ImportNoise(noise, form));
    EXPECT_EQ(form.texts[CheckField::kLaeq], "77");  // no key: as it was
    EXPECT_EQ(form.texts[CheckField::kLceq], "101.3");
    EXPECT_EQ(form.texts[BandField(CheckField::kNoiseBands, 0)], "  0.0");
    EXPECT_EQ(form.texts[BandField(CheckField::kNoiseBands, 6)], "  9.0");
    const ProfileFile protector = ProfileFile::Parse(
        "[TONVALE]\nTipo=spi\nH=30\nM=25.0\nL=8\n[SPECTRUM]\n250=1e400\n8000=9\n");
    EXPECT_FALSE(ImportNoise(protector, form));
    EXPECT_TRUE(ImportProtector(protector, form));
    EXPECT_EQ(form.texts[CheckField::kH] + form.texts[CheckField::kM] + form.texts[CheckField::kL] +
                  form.texts[CheckField::kSnr],
              "30.025.0 8.012");
    EXPECT_EQ(form.texts[BandField(CheckField::kProtectorBands, 1)], " inf");
    EXPECT_EQ(form.texts[BandField(CheckField::kProtectorBands, 6)], " 9.0");
}

TEST(ProtectorSelection, StoresItsStateInTheOrderOfTheFile) {
    SelectionState state;
    MethodPageForm octave = OctavePage();
    RunMethod(InfoOf(CheckMethod::kOctaveBand), octave, state);
    MethodPageForm hml = GoodPages()[3];
    RunMethod(InfoOf(CheckMethod::kHml), hml, state);
    state.information = {.has_spectrum = true, .has_laeq = true};
    state.repetitive_short_noises = false;
    state.inputs.is_class_l = true;
    state.inputs.values[CheckField::kSnr] = 9;
    state.notes = "nota";
    ProfileFile file;
    StoreState(state, file);
    const std::string bytes = file.Serialize();
    EXPECT_EQ(bytes,
              "[TONVALE]\r\nTipo=DPI\r\n[SETTINGS]\r\nLACT=85.0\r\nLIVEFF= 65.3\r\nR1=1\r\nR2=0\r\n"
              "LAEQ=1\r\nLCEQ=0\r\nBDO=1\r\nMETODO=4\r\n[NOISE]\r\n125= 95.0\r\n250= 95.0\r\n"
              "500= 95.0\r\n1000= 95.0\r\n2000= 95.0\r\n4000= 95.0\r\n8000= 95.0\r\nA= 90.3\r\n"
              "C= 92.3\r\nCLASSE=1\r\n[ATT]\r\n125=20.0\r\n250=20.0\r\n500=20.0\r\n1000=20.0\r\n"
              "2000=20.0\r\n4000=20.0\r\n8000=20.0\r\nH=30.0\r\nM=25.0\r\nL=20.0\r\nSNR= 9.0\r\n"
              "[NOTE]\r\n1=nota\r\nNum=1\r\n");
    SelectionState loaded;
    ASSERT_TRUE(LoadState(ProfileFile::Parse(bytes), loaded));
    EXPECT_TRUE(loaded.has_answers);
    ProfileFile again;
    StoreState(loaded, again);
    EXPECT_EQ(again.Serialize(), bytes);
}

TEST(ProtectorSelection, WhatAFileLacksIsZero) {
    SelectionState state;
    state.method = 2;
    EXPECT_FALSE(
        LoadState(ProfileFile::Parse("[TONVALE]\nTipo=SPI\n[SETTINGS]\nLACT=80\n"), state));
    EXPECT_EQ(state.method, 2);
    state.inputs.values[CheckField::kH] = 30;
    ASSERT_TRUE(
        LoadState(ProfileFile::Parse("[TONVALE]\nTipo=dpi\n[SETTINGS]\nMETODO=-1\n"), state));
    EXPECT_EQ(state.method, 0);
    EXPECT_EQ(state.action_level_dba, 0);
    EXPECT_FALSE(ActionLevelPlace(state));
    EXPECT_FALSE(state.unfavourable_conditions || state.repetitive_short_noises);
    EXPECT_EQ(FormFromState(state).texts[CheckField::kH], " 0.0");
    EXPECT_EQ(FormFromState(state).texts[CheckField::kLaeq], "  0.0");
}

TEST(ProtectorSelection, PrintsTheCheckOfEachMethod) {
    const std::vector<std::string> details{
        "    Laeq = 95.0 dBA\nCaratteristiche del DPI:\n    SNR = 20.0 dB\n",
        "    Lceq = 100.0 dBC\nCaratteristiche del DPI:\n    SNR = 25.0 dB\n",
        ("    Laeq = 100.0 dBA  Classe di rumore L\nCaratteristiche del DPI:\n"
         "    H = 20.0 dB   M = 10.0 dB   L = 12.5 dB\n"),
        "    Laeq = 90.3 dBA  Lceq = 92.3 dBC\nCaratteristiche del DPI:\n"
        "    H = 30.0 dB   M = 25.0 dB   L = 20.0 dB\n",
        "    125 Hz   250 Hz   500 Hz   1 kHz    2 kHz    4 kHz    8 kHz\n"
        "    95.0 dB  95.0 dB  95.0 dB  95.0 dB  95.0 dB  95.0 dB  95.0 dB\n"
        "Caratteristiche del DPI:\n"
        "    20.0 dB  20.0 dB  20.0 dB  20.0 dB  20.0 dB  20.0 dB  20.0 dB\n"};
    const std::vector<std::string> names{"SNR corretto.", "SNR.", "Controllo HML.", "HML.",
                                         "Banda d'ottava."};
    std::vector<MethodPageForm> pages = GoodPages();
    for (std::size_t i = 0; i < kCheckMethodCount; ++i) {
        SelectionState state;
        RunMethod(CheckMethods()[i], pages[i], state);
        EXPECT_THAT(TextOf(state), HasSubstr("Metodo di calcolo utilizzato: " + names[i] +
                                             "\nCaratteristiche del rumore:\n" + details[i]));
    }
    SelectionState state;
    RunMethod(CheckMethods()[1], pages[1], state);
    state.unfavourable_conditions = false;
    state.information = {.has_spectrum = true, .has_lceq = true, .has_laeq = true};
    EXPECT_EQ(TextOf(state).substr(0, TextOf(state).find("Metodo")),
              "Il lavoro si svolge in condizioni ambientali sfavorevoli? NO\n"
              "Il lavoro si svolge con esposizione ripetitiva a rumori di breve durata? SI\n"
              "Tipologie consigliate di otoprotettore:\n    Cuffie\n    Inserti con archetto\n"
              "Informazioni disponibili sul rumore:\n    Livello equivalente pesato A.\n"
              "    Livello equivalente pesato C.\n    Spettro di frequenza in banda d'ottava.\n");
    EXPECT_THAT(TextOf(state),
                EndsWith("Il livello di pressione sonora equivalente \n"
                         "risultante all'orecchio del lavoratore è pari a: 75.0 dBA\n"
                         "Il livello d'azione è: 85.0 dBA\n"
                         "La protezione offerta dal DPI è da ritenersi ACCETTABILE.\n"));
    EXPECT_THAT(TextOf({}), EndsWith("\nMetodo di calcolo utilizzato: \n"));
}

TEST(ProtectorSelection, AssessesAFileAsNextWould) {
    const auto assess = [](const std::string& settings) {
        return AssessProtectorSelection(ProfileFile::Parse(
            "[TONVALE]\nTipo=DPI\n[NOISE]\nA=100.04\nC=98\n[ATT]\nH=20\nM=10\nL=12\nSNR=25\n"
            "[SETTINGS]\nLACT=85\nR1=1\n" +
            settings));
    };
    const Assessment snr = assess("METODO=2\nLIVEFF= 73.0\n");
    EXPECT_TRUE(snr.computed && !snr.message);
    EXPECT_EQ(snr.results[0].shown, " 73.0");
    EXPECT_EQ(std::get<std::string>(snr.details[1].value), "ACCETTABILE.");
    EXPECT_EQ(std::get<double>(snr.details[0].value), 2);
    EXPECT_THAT(std::get<std::vector<std::string>>(snr.details[3].value),
                ElementsAre("Cuffie con cuscinetti ricoperti o imbottiti", "Inserti monouso"));
    const Assessment hml = assess("METODO=4\n");  // the page shows an LAeq of 100.0
    EXPECT_EQ(hml.results[0].shown, " 80.0");
    const Assessment undecided = assess("METODO=3\n");
    EXPECT_TRUE(undecided.message && !undecided.computed);
    EXPECT_TRUE(std::holds_alternative<std::nullptr_t>(undecided.details[1].value));
    EXPECT_EQ(assess("METODO=5\n").message->text, "Inserire valori numerici!");
    for (const char* none : {"", "METODO=0\n", "METODO=99\n"}) {
        const Assessment assessment = assess(none);
        EXPECT_FALSE(assessment.computed || assessment.message);
        EXPECT_TRUE(std::holds_alternative<std::nullptr_t>(assessment.details[0].value));
        EXPECT_THAT(assessment.summarize(";"), Not(IsEmpty()));
    }
}

}  // namespace
}  // namespace tonvale
