#include "protectors/protector_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tonvale {
namespace {

using ::testing::SizeIs;

constexpr const char* kNotAllNumbers =
    "Attenzione: non tutte le caselle di testo contengono un valore numerico.";

using FieldTexts = std::vector<std::pair<CheckField, std::string>>;

MethodPageForm PageOf(const FieldTexts& texts) {
    MethodPageForm form;
    for (const auto& [field, text] : texts) form.texts[field] = text;
    return form;
}

// A page that the method accepts.
MethodPageForm GoodPage(const CheckMethodInfo& method) {
    MethodPageForm form;
    for (const CheckField field : method.fields) form.texts[field] = " 95.5";
    form.is_class_l = method.method == CheckMethod::kHmlCheck;
    return form;
}

TEST(ProtectorSelection, NextRunsTheMethodOfThePage) {
    for (const CheckMethodInfo& method : CheckMethods()) {
        SelectionState state;
        MethodPageForm accepted = GoodPage(method);
        EXPECT_FALSE(RunMethod(method, accepted, state).refusal) << method.name;
        EXPECT_EQ(state.method, static_cast<int>(method.method));
        EXPECT_NE(state.inputs.values[method.fields.back()], 0);
        EXPECT_EQ(state.inputs.is_class_l, method.method == CheckMethod::kHmlCheck);
        // Any empty field, or one of 0, keeps the wizard on the page and the state as it was.
        for (const CheckField field : method.fields) {
            for (const char* bad : {"", "  0", "   ", "."}) {
                MethodPageForm form = GoodPage(method);
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
    MethodPageForm form = PageOf({{CheckField::kLaeq, "100"},
                                  {CheckField::kH, "20"},
                                  {CheckField::kM, "10"},
                                  {CheckField::kL, "12.5"}});
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

}  // namespace

}  // namespace tonvale
