// Prints through the real default printer, which has to be one that writes into the file named by
// the environment variable TONVALE_PRINTER_FILE. What is printed goes into the folder that
// TONVALE_PRINT_DIR names, where check_print.sh compares it with what it has to be.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "calc/assessment_table.h"
#include "common/numbers.h"
#include "common/print_frame.h"
#include "dialogs/printer_win.h"
#include "report/report_format_win.h"
#include "report/report_printing_win.h"
#include "report/rich_edit/rich_edit_gaps_win.h"
#include "report/rich_edit/rich_edit_win.h"
#include "tests/exposure/example_file.h"

namespace tonvale {
namespace {

std::filesystem::path PathFromEnvironment(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value ? value : L"";
}

class PrintTest : public testing::Test {
  protected:
    void SetUp() override {
        if (printer_file_.empty() || folder_.empty()) GTEST_SKIP() << "run by test.sh only";
        std::filesystem::remove(printer_file_);
    }

    // Has `print` use the default printer, and moves what that has put out to NAME.ps.
    void Keep(const std::string& name, const std::function<void(Printer&)>& print) const {
        const std::unique_ptr<Printer> printer = OpenDefaultPrinter();
        ASSERT_NE(printer, nullptr);
        print(*printer);
        ASSERT_TRUE(std::filesystem::exists(printer_file_)) << "nothing was printed";
        std::filesystem::rename(printer_file_, folder_ / (name + ".ps"));
    }
    void KeepPrintout(const std::string& name, const Printout& printout) const {
        Keep(name, [&](Printer& printer) { PrintPages(printer, printout); });
    }
    void KeepView(const std::string& name, const PageFunction& draw) const {
        Keep(name, [&](Printer& printer) {
            EXPECT_TRUE(PrintWithFrame(printer, "Vista", "Una nota in calce", draw));
        });
    }

    const std::filesystem::path printer_file_ = PathFromEnvironment(L"TONVALE_PRINTER_FILE");
    const std::filesystem::path folder_ = PathFromEnvironment(L"TONVALE_PRINT_DIR");
};

TEST_F(PrintTest, AnExampleOfEachKind) {
    for (const char* name :
         {"giornata.lep", "settimana.lew", "carpenteria.leg", "stampaggio.err",
          "sega_circolare.spr", "cuffia_leggera.spi", "scelta_cuffia.dpi", "audiometria.ilg"}) {
        const ProfileFile file = ProfileFile::Parse(ExampleBytes(name));
        KeepPrintout(name, AssessedKindOf(file)->assess(file).printout);
    }
}

// Lines of two columns, and notes with accents in lines that have to be wrapped.
TEST_F(PrintTest, SeveralPages) {
    Printout printout{.document_name = "Prova", .lines = {}};
    for (int i = 1; i <= 200; ++i) {
        printout.lines.push_back({"riga " + FormatInteger(i), FormatInteger(7 * i)});
    }
    printout.notes = "Perché così: l'attività è più rumorosa là dove c'è la pressa.\r\n";
    for (int i = 1; i <= 60; ++i) printout.notes += "nota" + FormatInteger(i) + " ";
    KeepPrintout("pagine", printout);
}

// Tables and charts of hearing loss, of the values that the program starts with.
TEST_F(PrintTest, Views) {
    KeepView("quadro", [](Canvas& canvas, const Rect& page, bool) {
        canvas.DrawTextAt({page.right / 2, page.bottom / 4}, "Quadro");
        canvas.FillRectangle({0, page.bottom / 2, page.right, page.bottom / 2 + 600}, kGrey);
    });
    AppState state;
    const std::pair<std::string, ResultView> results[] = {
        {"perdite", MakeResultView(state.loss_prediction.confirmed)},
        {"previsioni", MakeResultView(state.loss_comparison)},
        {"rischio", MakeResultView(state.damage_risk)},
        {"evoluzione", MakeResultView(state.damage_evolution.confirmed)}};
    constexpr std::array<const char*, kViewKindCount> kKindNames = {"_tabella", "_grafico",
                                                                    "_audiogramma"};
    for (const auto& [name, result] : results) {
        for (const ResultPage& page : result.pages) {
            const std::string kind = kKindNames.at(static_cast<std::size_t>(page.kind));
            KeepView(name + kind, [&page](Canvas& canvas, const Rect& area, bool use_color) {
                page.draw(canvas, area, {.use_color = use_color});
            });
        }
    }
}

// Formats, tabs, bullets, raised and lowered text, accents, a picture.
constexpr char kReportHead[] =
    "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}"
    "{\\colortbl;\\red255\\green0\\blue0;}\\f0\\fs20"
    "\\pard\\qc{\\b\\fs32 Relazione sull'esposizione}\\par"
    "\\pard L\\dn5\\fs15 ep,d\\up0\\fs20  = {\\ul 87.3} dB, perch\\'e9 {\\i cos\\'ec}\\u8230?\\par"
    "\\pard\\tx2000\\tx4000 Mansione\\tab Durata\\tab Livello\\par"
    "{\\f1 Pressa\\tab 8.00\\tab 92.4}\\par"
    "\\pard\\qr{\\cf1 a destra}\\par"
    "\\pard{\\*\\pn\\pnlvlblt{\\pntxtb\\'b7}}primo punto\\par"
    "\\pard\\li720\\fi-360 m\\up6\\fs15 2\\up0\\fs20  \\u946? \\u8364? \\u1064?\\par"
    "\\pard {\\pict\\pngblip\\picwgoal300\\pichgoal150 "
    "89504e470d0a1a0a0000000d49484452000000010000000108060000001f15c4890000000d4944415478"
    "9c63606060f80f0001040100e221bc330000000049454e44ae426082} figura\\par ";

// Three pages. check_other_program.sh has a text processor tell what it makes of the same document.
TEST_F(PrintTest, ReportDocument) {
    LoadLibraryW(L"RICHED32.DLL");
    HWND parent = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 400, 300, nullptr, nullptr,
                                  nullptr, nullptr);
    RichEdit edit;
    ASSERT_TRUE(edit.Create(nullptr, parent, 1, 0, 0));
    SetDefaultFormats(edit);
    const RichEditGaps gaps = FindRichEditGaps(nullptr, parent);
    std::string rtf = kReportHead;
    for (int i = 1; i <= 150; ++i) rtf += "riga " + FormatInteger(i) + "\\par ";
    for (int i = 1; i <= 60; ++i) rtf += "parola" + FormatInteger(i) + " ";
    rtf += '}';
    EXPECT_EQ(ReadReportRtf(edit, gaps, rtf, ReadReport(rtf), false), ReadOutcome::kWhole);
    const std::optional<std::string> written = WriteReportRtf(edit, gaps, false);
    ASSERT_TRUE(written);
    std::ofstream(folder_ / "relazione.tnv", std::ios::binary) << *written;
    AppContext app;
    app.open_printer = OpenDefaultPrinter;
    Keep("relazione", [&](Printer&) { PrintReportDocument(app, edit, gaps, "Relazione"); });
    DestroyWindow(parent);
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
