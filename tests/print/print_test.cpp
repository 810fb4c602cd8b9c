// Prints through the real default printer, which has to be one that writes into the file named by
// the environment variable TONVALE_PRINTER_FILE. What is printed goes into the folder that
// TONVALE_PRINT_DIR names, where check_print.sh compares it with what it has to be.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "app/app_state.h"
#include "common/file_system.h"
#include "common/numbers.h"
#include "common/print_frame.h"
#include "common/profile_file.h"
#include "common/unicode_win.h"
#include "dialogs/printer_win.h"
#include "exposure/daily_exposure.h"
#include "exposure/group_exposure.h"
#include "exposure/uncertainty_report.h"
#include "exposure/weekly_exposure.h"
#include "hearing/audiogram_damage.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/noise_spectrum.h"
#include "protectors/protector_selection.h"
#include "report/report_format_win.h"
#include "report/report_printing_win.h"
#include "report/rich_edit/rich_edit_gaps_win.h"
#include "report/rich_edit/rich_edit_win.h"

namespace tonvale {
namespace {

std::filesystem::path PathFromEnvironment(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value ? value : L"";
}

// A wizard has a state instead of a form.
bool LoadForm(const ProfileFile& file, SelectionState& state) {
    return LoadState(file, state);
}

class PrintTest : public testing::Test {
  protected:
    void SetUp() override {
        printer_file_ = PathFromEnvironment(L"TONVALE_PRINTER_FILE");
        folder_ = PathFromEnvironment(L"TONVALE_PRINT_DIR");
        if (printer_file_.empty() || folder_.empty()) GTEST_SKIP() << "run by test.sh only";
        std::filesystem::remove(printer_file_);
    }

    // Moves what the printer has put out to NAME.ps.
    void KeepPrintout(const std::string& name) {
        ASSERT_TRUE(std::filesystem::exists(printer_file_)) << "nothing was printed";
        std::filesystem::rename(printer_file_, folder_ / (name + ".ps"));
    }

    void PrintAndKeep(const Printout& printout, const std::string& name) {
        const std::unique_ptr<Printer> printer = OpenDefaultPrinter();
        ASSERT_NE(printer, nullptr);
        PrintPages(*printer, printout);
        KeepPrintout(name);
    }

    static ProfileFile ReadExample(const std::string& name) {
        const auto path = PathFromEnvironment(L"TONVALE_EXAMPLES") / name;
        ProfileFile file;
        ProfileFile::Read(SystemFiles(), Narrow(path.wstring()), file);
        return file;
    }

    // Prints the file of the examples that is named NAME and `extension`, loaded into `form`.
    template <typename Form>
    void PrintExample(const std::string& name, const std::string& extension, Form form) {
        ASSERT_TRUE(LoadForm(ReadExample(name + extension), form));
        PrintAndKeep(MakePrintout(form), name);
    }

    std::filesystem::path printer_file_;
    std::filesystem::path folder_;
};

TEST_F(PrintTest, ReportsOfTheExamples) {
    PrintExample("giornata", ".lep", DailyExposureForm());
    PrintExample("settimana", ".lew", WeeklyExposureForm());
    PrintExample("sega_circolare", ".spr", SpectrumForm(NoiseSpectrumKind()));
    PrintExample("cuffia_leggera", ".spi", SpectrumForm(AttenuationSpectrumKind()));
    PrintExample("scelta_cuffia", ".dpi", SelectionState());
    PrintExample("audiometria", ".ilg", AudiogramDamageForm());
    // What these print is not in their files.
    PrintAndKeep(AssessGroupExposure(ReadExample("carpenteria.leg")).printout, "carpenteria");
    PrintAndKeep(AssessUncertainty(ReadExample("stampaggio.err")).printout, "stampaggio");
}

// Items 1 to 200, and notes with accents in lines that have to be wrapped.
TEST_F(PrintTest, DailyExposureOnSeveralPages) {
    DailyExposureForm form;
    form.time_unit = 0;
    for (int i = 1; i <= 200; ++i) {
        form.items.push_back({FormatFixed(70 + i % 31 + 0.1 * (i % 10), 0, 1), FormatInteger(i)});
    }
    form.notes = "Perché così: l'attività è più rumorosa là dove c'è la pressa.\r\n";
    for (int i = 1; i <= 60; ++i) form.notes += "nota" + FormatInteger(i) + " ";
    DailyExposureState state;
    ASSERT_FALSE(Recompute(form, state));
    PrintAndKeep(MakePrintout(form), "pagine");
}

TEST_F(PrintTest, ViewWithNotesAtTheFoot) {
    const std::unique_ptr<Printer> printer = OpenDefaultPrinter();
    ASSERT_NE(printer, nullptr);
    const auto draw = [](Canvas& canvas, const Rect& page, bool) {
        canvas.DrawTextAt({page.right / 2, page.bottom / 4}, "Quadro");
        canvas.FillRectangle({0, page.bottom / 2, page.right, page.bottom / 2 + 600}, kGrey);
    };
    ASSERT_TRUE(PrintWithFrame(*printer, "Quadro", "Una nota in calce", draw));
    KeepPrintout("quadro");
}

// Tables and charts of hearing loss, of the values that the program starts with.
TEST_F(PrintTest, HearingViews) {
    AppState state;
    const ResultView prediction = MakeResultView(state.loss_prediction.confirmed);
    const ResultView comparison = MakeResultView(state.loss_comparison);
    const auto print = [this](const ResultView& view, ViewKind kind, const char* name) {
        const std::unique_ptr<Printer> printer = OpenDefaultPrinter();
        ASSERT_NE(printer, nullptr);
        const auto draw = [&](Canvas& canvas, const Rect& page, bool use_color) {
            view.Page(kind)->draw(canvas, page, {.use_color = use_color});
        };
        ASSERT_TRUE(PrintWithFrame(*printer, name, "", draw));
        KeepPrintout(name);
    };
    print(prediction, ViewKind::kTable, "perdite_tabella");
    print(prediction, ViewKind::kChart, "perdite_grafico");
    print(prediction, ViewKind::kAudiogram, "perdite_audiogramma");
    const ResultView risk = MakeResultView(state.damage_risk);
    print(risk, ViewKind::kTable, "rischio_tabella");
    print(risk, ViewKind::kChart, "rischio_grafico");
    const ResultView evolution = MakeResultView(state.damage_evolution.confirmed);
    print(evolution, ViewKind::kTable, "evoluzione_tabella");
    print(evolution, ViewKind::kChart, "evoluzione_grafico");
    print(comparison, ViewKind::kTable, "previsioni_tabella");
    print(comparison, ViewKind::kChart, "previsioni_tempo");
    print(comparison, ViewKind::kAudiogram, "previsioni_livello");
}

// A report of three pages: formats, tabs, bullets, lowered text, accents.
constexpr char kReportHead[] =
    "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}"
    "{\\colortbl;\\red255\\green0\\blue0;}\\f0\\fs20"
    "\\pard\\qc{\\b\\fs32 Relazione sull'esposizione}\\par"
    "\\pard L\\dn5\\fs15 ep,d\\up0\\fs20  = {\\ul 87.3} dB, perch\\'e9 {\\i cos\\'ec}\\u8230?\\par"
    "\\pard\\tx2000\\tx4000 Mansione\\tab Durata\\tab Livello\\par"
    "{\\f1 Pressa\\tab 8.00\\tab 92.4}\\par"
    "\\pard\\qr{\\cf1 a destra}\\par"
    "\\pard{\\*\\pn\\pnlvlblt{\\pntxtb\\'b7}}primo punto\\par\\pard ";

class ReportPrintTest : public PrintTest {
  protected:
    void SetUp() override {
        PrintTest::SetUp();
        LoadLibraryW(L"RICHED32.DLL");
        parent_ = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 400, 300, nullptr, nullptr,
                                  nullptr, nullptr);
        ASSERT_TRUE(edit_.Create(nullptr, parent_, 1, 0, 0));
        SetDefaultFormats(edit_);
        gaps_ = FindRichEditGaps(nullptr, parent_);
    }
    void TearDown() override { DestroyWindow(parent_); }

    bool Show(const std::string& rtf) {
        return ReadReportRtf(edit_, gaps_, rtf, ReadReport(rtf), false) == ReadOutcome::kWhole;
    }

    HWND parent_ = nullptr;
    RichEdit edit_;
    RichEditGaps gaps_;
};

TEST_F(ReportPrintTest, SeveralPages) {
    std::string rtf = kReportHead;
    for (int i = 1; i <= 150; ++i) rtf += "riga " + FormatInteger(i) + "\\par ";
    for (int i = 1; i <= 60; ++i) rtf += "parola" + FormatInteger(i) + " ";
    ASSERT_TRUE(Show(rtf + "}"));
    AppContext app;
    app.open_printer = OpenDefaultPrinter;
    PrintReportDocument(app, edit_, gaps_, "Relazione");
    KeepPrintout("relazione");
}

// check_other_program.sh has a text processor tell what it makes of this file.
TEST_F(ReportPrintTest, DocumentForOtherPrograms) {
    std::string rtf = kReportHead;
    rtf +=
        "\\pard\\li720\\fi-360 m\\up6\\fs15 2\\up0\\fs20  \\u946? \\u8364? \\u1064?\\par"
        "\\pard {\\pict\\pngblip\\picwgoal300\\pichgoal150 "
        "89504e470d0a1a0a0000000d49484452000000010000000108060000001f15c4890000000d4944415478"
        "9c63606060f80f0001040100e221bc330000000049454e44ae426082} figura\\par";
    ASSERT_TRUE(Show(rtf + "}"));
    const std::optional<std::string> written = WriteReportRtf(edit_, gaps_, false);
    ASSERT_TRUE(written);
    std::ofstream(folder_ / "formati.tnv", std::ios::binary) << *written;
}

TEST_F(PrintTest, DefaultPrinterIsTheOneOfTheProfile) {
    std::array<wchar_t, 1024> device{};
    GetProfileStringW(L"windows", L"device", L"", device.data(), static_cast<DWORD>(device.size()));
    WriteProfileStringW(L"windows", L"device", nullptr);
    EXPECT_EQ(OpenDefaultPrinter(), nullptr);
    WriteProfileStringW(L"windows", L"device", device.data());
    const std::unique_ptr<Printer> printer = OpenDefaultPrinter();
    ASSERT_NE(printer, nullptr);
    EXPECT_EQ(printer->PageSize(), (Size{4658, 6716}));  // A4 less its margins, at 600 dpi
    EXPECT_FALSE(std::filesystem::exists(printer_file_));
}

}  // namespace
}  // namespace tonvale
