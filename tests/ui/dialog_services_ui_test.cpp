#include <windows.h>

#include <commctrl.h>
#include <dlgs.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "common/clipboard_win.h"
#include "common/file_dialogs_win.h"
#include "common/gdi_canvas_win.h"
#include "common/printer_win.h"
#include "common/status_bar_win.h"
#include "exposure/daily_exposure_dialog.h"
#include "resources/resource.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Calcolo Lep,d";
constexpr char kOpenTitle[] = "Titolo";
constexpr char kConfirm[] = "Conferma operazione";
constexpr char kFilters[] = "Uno (*.lep)|*.lep|Due (*.csv)|*.csv|";

class DialogServicesUiTest : public DialogTest {
  protected:
    DailyExposureState state_;
};

// The control identifiers of all tools.
std::vector<int> ToolIds(HWND tips) {
    std::vector<int> ids;
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    for (WPARAM i = 0; SendMessageW(tips, TTM_ENUMTOOLSW, i, reinterpret_cast<LPARAM>(&tool));
         ++i) {
        ids.push_back(GetDlgCtrlID(reinterpret_cast<HWND>(tool.uId)));
        EXPECT_EQ(tool.hwnd, GetParent(reinterpret_cast<HWND>(tool.uId)));
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

// The tip of a control as the tool-tip window asks for it.
std::string TipOf(HWND dialog, int control) {
    NMTTDISPINFOW request{};
    HWND window = GetDlgItem(dialog, control);
    request.hdr = {nullptr, reinterpret_cast<UINT_PTR>(window), TTN_GETDISPINFOW};
    request.lpszText = request.szText;
    request.uFlags = TTF_IDISHWND;
    SendMessageW(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&request));
    return Narrow(request.lpszText);
}

TEST_F(DialogServicesUiTest, TipsServeTheTopmostDialog) {
    std::vector<int> outer_tools;
    const auto look = [&](HWND dialog) {
        outer_tools = ToolIds(tips_->window());
        EXPECT_EQ(TipOf(dialog, IDC_ITEM_LIST), "Lista con livelli e tempi d'esposizione");
        EXPECT_EQ(TipOf(dialog, IDC_STATUS_BAR),
                  "Visualizza il nome del file correntemente selezionato");
        EXPECT_EQ(TipOf(dialog, IDC_TOTAL_TIME_LABEL), "");
    };
    UiDriver ui;
    ui.OnWindow(kTitle, look).Click(IDC_ADD);
    ui.OnWindow("Aggiungi",
                [&](HWND dialog) {
                    const std::vector<int> expected = {IDOK, IDCANCEL, IDC_LEVEL_EDIT,
                                                       IDC_TIME_EDIT, IDC_READ_LEVEL};
                    EXPECT_EQ(ToolIds(tips_->window()), expected);
                    EXPECT_EQ(TipOf(dialog, IDOK),
                              "Aggiunge / Modifica / Elimina un elemento della lista");
                })
        .Click(IDCANCEL)
        .WaitClosed("Aggiungi");
    // Back in the outer dialog its own tips are there again.
    ui.OnWindow(kTitle, [&](HWND) { EXPECT_EQ(ToolIds(tips_->window()), outer_tools); });
    ui.Command(IDCANCEL);
    OpenDailyExposure(app_, state_, owner_, "");
    for (int shown : {IDC_ITEM_LIST, IDC_ADD, IDC_TIME_UNIT, IDC_NOTES_EDIT, IDC_STATUS_BAR}) {
        EXPECT_EQ(std::count(outer_tools.begin(), outer_tools.end(), shown), 1) << shown;
    }
    for (int text : {IDC_TOTAL_TIME_LABEL, IDC_TOTAL_TIME, IDC_DAILY_LEVEL}) {
        EXPECT_EQ(std::count(outer_tools.begin(), outer_tools.end(), text), 0) << text;
    }
}

// A mouse move over a child of the served dialog reaches the tip, which asks for its text.
TEST_F(DialogServicesUiTest, TipsFollowTheMouse) {
    UiDriver ui;
    ui.OnWindow(kTitle, [this](HWND dialog) {
        SendMessageW(tips_->window(), TTM_SETDELAYTIME, TTDT_INITIAL, 0);
        RECT area{};
        GetWindowRect(GetDlgItem(dialog, IDC_ADD), &area);
        SetCursorPos(area.left + 5, area.top + 5);
        PostMessageW(GetDlgItem(dialog, IDC_ADD), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    });
    ui.WaitUntil("tip shown", [this] { return IsWindowVisible(tips_->window()) != FALSE; });
    ui.Do([this] {
        wchar_t text[128] = {};
        TTTOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.lpszText = text;
        SendMessageW(tips_->window(), TTM_GETCURRENTTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        EXPECT_EQ(GetDlgCtrlID(reinterpret_cast<HWND>(tool.uId)), IDC_ADD);
    });
    ui.OnWindow(kTitle).Command(IDCANCEL);
    OpenDailyExposure(app_, state_, owner_, "");
}

TEST_F(DialogServicesUiTest, NumericFieldsTakeNumbersOnly) {
    constexpr int kRelaxed = 1567;
    UiDriver ui;
    ui.OnWindow(kTitle, [this](HWND dialog) {
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, dialog,
                        reinterpret_cast<HMENU>(INT_PTR{kRelaxed}), instance_, nullptr);
    });
    ui.Type(kRelaxed, "1.2.-a3\b4").Type(IDC_NOTES_EDIT, "a-1 .b").Click(IDC_ADD);
    ui.OnWindow("Aggiungi").Type(IDC_LEVEL_EDIT, "12.5.3").Type(IDC_TIME_EDIT, "-5");
    ui.OnWindow("Aggiungi",
                [](HWND dialog) {
                    EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "12.53");
                    EXPECT_EQ(TextOf(dialog, IDC_TIME_EDIT), "5");
                })
        .SetText(IDC_LEVEL_EDIT, "")
        .Type(IDC_LEVEL_EDIT,
              "9\x16 x,7e\b.\x03"
              "2");
    // A point beyond the first 15 characters is not looked for.
    ui.Do([] { SendDlgItemMessageW(GetActiveWindow(), IDC_TIME_EDIT, EM_LIMITTEXT, 40, 0); })
        .SetText(IDC_TIME_EDIT, "123456789012345.")
        .Type(IDC_TIME_EDIT, ".");
    ui.OnWindow("Aggiungi",
                [](HWND dialog) {
                    EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "9.2");
                    EXPECT_EQ(TextOf(dialog, IDC_TIME_EDIT).size(), 17u);
                })
        .Click(IDCANCEL)
        .WaitClosed("Aggiungi");
    ui.OnWindow(kTitle, [](HWND dialog) {
          EXPECT_EQ(TextOf(dialog, kRelaxed), "1.2.4");
          EXPECT_EQ(TextOf(dialog, IDC_NOTES_EDIT), "a-1 .b");
      }).Command(IDCANCEL);
    OpenDailyExposure(app_, state_, owner_, "");
}

// The notes panel of a file dialog.
HWND Panel(HWND dialog) {
    HWND panel = FindWindowExW(dialog, nullptr, L"#32770", nullptr);
    while (panel && !GetDlgItem(panel, IDC_NOTES_EDIT)) {
        panel = FindWindowExW(dialog, panel, L"#32770", nullptr);
    }
    return panel;
}

bool IsShown(HWND panel, int control) {
    return (GetWindowLongW(GetDlgItem(panel, control), GWL_STYLE) & WS_VISIBLE) != 0;
}

bool CanModify(HWND panel) {
    return IsWindowEnabled(GetDlgItem(panel, IDC_MODIFY_NOTES));
}

// Selects the file of this name in the list of the file dialog, as a click does.
void SelectFile(HWND dialog, const std::string& name) {
    HWND view = FindWindowExW(dialog, nullptr, L"SHELLDLL_DefView", nullptr);
    if (!view)
        view = FindWindowExW(GetDlgItem(dialog, lst2), nullptr, L"SHELLDLL_DefView", nullptr);
    HWND list = FindWindowExW(view, nullptr, WC_LISTVIEWW, nullptr);
    ASSERT_NE(list, nullptr);
    const std::wstring wide = Widen(name);
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_STRING;
    wanted.psz = wide.c_str();
    const int row = ListView_FindItem(list, -1, &wanted);
    ASSERT_GE(row, 0) << name;
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void ChooseFilter(HWND dialog, int index) {
    HWND filter = GetDlgItem(dialog, cmb1);
    SendMessageW(filter, CB_SETCURSEL, static_cast<WPARAM>(index - 1), 0);
    for (WORD notification : {WORD{CBN_SELENDOK}, WORD{CBN_SELCHANGE}}) {
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(cmb1, notification),
                     reinterpret_cast<LPARAM>(filter));
    }
}

TEST_F(DialogServicesUiTest, OpenDialogShowsAndModifiesNotes) {
    const std::string bytes =
        "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\nNum=2\r\n1=caff\xe8\r\n2=due\r\n";
    WriteFile("con note.lep", bytes);
    WriteFile("senza.lep", "[TONVALE]\r\nTipo=LEPD\r\n");
    WriteFile("tabella.csv", bytes);
    const std::string question = "Volete procedere con la modifica?";
    UiDriver ui;
    ui.OnWindow(kOpenTitle, [](HWND dialog) {
        HWND panel = Panel(dialog);
        ASSERT_NE(panel, nullptr);
        EXPECT_TRUE(IsShown(panel, IDC_NOTES_EDIT) && IsShown(panel, IDC_MODIFY_NOTES));
        EXPECT_EQ(SendDlgItemMessageW(panel, IDC_NOTES_EDIT, EM_GETLIMITTEXT, 0, 0), 512);
        EXPECT_FALSE(CanModify(panel));
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, chx1)));  // the read-only box
        SelectFile(dialog, "con note.lep");
    });
    ui.OnWindow(kOpenTitle, [](HWND dialog) {
          EXPECT_EQ(TextOf(Panel(dialog), IDC_NOTES_EDIT), "caffè\r\ndue");
          EXPECT_FALSE(CanModify(Panel(dialog)));
      }).Screenshot("open_file_notes");
    ui.OnWindow(kOpenTitle, [](HWND dialog) { SelectFile(dialog, "senza.lep"); });
    ui.OnWindow(kOpenTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(Panel(dialog), IDC_NOTES_EDIT), "");
        SelectFile(dialog, "con note.lep");
    });
    // Typing makes the button usable; only Yes writes.
    ui.OnWindow(kOpenTitle, [](HWND dialog) {
        HWND panel = Panel(dialog);
        PostMessageW(GetDlgItem(panel, IDC_NOTES_EDIT), WM_CHAR, L'X', 1);
    });
    for (int answer : {IDNO, IDCANCEL, IDYES}) {
        ui.OnWindow(kOpenTitle, [&, bytes](HWND dialog) {
              EXPECT_TRUE(CanModify(Panel(dialog)));
              EXPECT_EQ(ReadFile("con note.lep"), bytes);
              PostMessageW(GetDlgItem(Panel(dialog), IDC_MODIFY_NOTES), BM_CLICK, 0, 0);
          }).AnswerMessage(kConfirm, question, answer);
    }
    ui.WaitUntil("notes written", [=, this] { return ReadFile("con note.lep") != bytes; });
    ui.OnWindow(kOpenTitle, [](HWND dialog) { SelectFile(dialog, "senza.lep"); });
    ui.OnWindow(kOpenTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(Panel(dialog), IDC_NOTES_EDIT), "");
        EXPECT_FALSE(CanModify(Panel(dialog)));
        ChooseFilter(dialog, 2);
    });
    ui.OnWindow(kOpenTitle, [](HWND dialog) { SelectFile(dialog, "tabella.csv"); });
    ui.OnWindow(kOpenTitle, [](HWND dialog) {
          EXPECT_EQ(TextOf(Panel(dialog), IDC_NOTES_EDIT), "");
          EXPECT_TRUE(IsShown(Panel(dialog), IDC_NOTES_EDIT));
          PostMessageW(dialog, WM_COMMAND, pshHelp, 0);
      }).AnswerMessage("Avviso", "Funzione non implementata", IDOK);
    ui.OnWindow(kOpenTitle).Command(IDOK);
    EXPECT_EQ(ChooseFileToOpen(app_, owner_, kFilters, kOpenTitle), Path("tabella.csv"));
    EXPECT_EQ(ReadFile("con note.lep"),
              "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\nNum=2\r\n1=Xcaff\xe8\r\n2=due\r\n");
}

TEST_F(DialogServicesUiTest, OpenDialogHidesNotesOfTheEighthFilter) {
    UiDriver ui;
    for (int index : {8, 9, 8, 1}) {
        ui.OnWindow("Apri", [index](HWND dialog) {
            ChooseFilter(dialog, index);
            for (int control : {IDC_NOTES_LABEL, IDC_NOTES_EDIT, IDC_MODIFY_NOTES}) {
                EXPECT_EQ(IsShown(Panel(dialog), control), index != 8) << index;
            }
        });
    }
    ui.OnWindow("Apri").Command(IDCANCEL);
    EXPECT_FALSE(ChooseAnyFile(app_, owner_));
}

TEST_F(DialogServicesUiTest, SaveDialogAsksAndCompletesNames) {
    WriteFile("vecchio.lep", "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\nNum=1\r\n1=nota\r\n");
    const auto save = [&](UiDriver& ui, const std::string& filter, bool shows_notes) {
        ui.OnWindow(kOpenTitle, [shows_notes](HWND dialog) {
              EXPECT_EQ(IsShown(Panel(dialog), IDC_NOTES_EDIT), shows_notes);
              EXPECT_FALSE(IsShown(Panel(dialog), IDC_MODIFY_NOTES));
              ChooseFilter(dialog, 1);
              EXPECT_EQ(IsShown(Panel(dialog), IDC_NOTES_EDIT), shows_notes);
          }).Command(IDCANCEL);
        EXPECT_FALSE(ChooseFileToSave(app_, owner_, filter, kOpenTitle)) << filter;
    };
    UiDriver ui;
    save(ui, "Lep,d (*.lep)|*.lep|", true);
    save(ui, "Documento di Tonvale (*.tnv)|*.tnv|", false);
    save(ui, "Immagine bitmap (*.BMP)|*.BMP|", false);
    save(ui, "CSV (*.csv)|*.csv|", false);

    // An existing file is only overwritten after a question, whose wording is the system's.
    ui.OnWindow(kOpenTitle, [](HWND dialog) { SelectFile(dialog, "vecchio.lep"); });
    ui.OnWindow(kOpenTitle,
                [](HWND dialog) { EXPECT_EQ(TextOf(Panel(dialog), IDC_NOTES_EDIT), "nota"); })
        .SetText(cmb13, "vecchio")
        .Command(IDOK);
    ui.OnWindowOfClass("#32770", [](HWND question) {
        EXPECT_NE(TextOf(question, 0xffff), "");
        PostMessageW(question, WM_COMMAND, IDNO, 0);
    });
    ui.OnWindow(kOpenTitle).SetText(cmb13, Path("nuovo.1")).Command(IDCANCEL);
    EXPECT_FALSE(ChooseFileToSave(app_, owner_, "Lep,d (*.lep)|*.lep|", kOpenTitle));

    const std::string path = Path("un nome molto lungo è più di sedici caratteri.lep");
    ui.OnWindow(kOpenTitle).SetText(cmb13, path.substr(0, path.size() - 4)).Command(IDOK);
    ui.AnswerMessage(kConfirm, path + "\r\nIl file non esiste. Crearlo?", IDYES);
    EXPECT_EQ(ChooseFileToSave(app_, owner_, "Lep,d (*.lep)|*.lep|", kOpenTitle), path);
}

TEST_F(DialogServicesUiTest, ReadsLevelsOfOtherCalculators) {
    const std::string daily =
        WriteFile("a.lep", "[TONVALE]\r\nTipo=LEPD\r\nLEPD=1234567890123456\r\n");
    const std::string none = WriteFile("b.spr", "[TONVALE]\r\nTipo=SPR\r\n");
    UiDriver ui;
    ui.OnWindow("Caricamento file di dati").SetText(cmb13, daily).Command(IDOK);
    EXPECT_EQ(ReadDailyLevel(app_, owner_), "123456789012345");
    ui.OnWindow("Caricamento file di dati").SetText(cmb13, none).Command(IDOK);
    EXPECT_FALSE(ReadSpectrumLevel(app_, owner_));
    ui.OnWindow("Caricamento file di dati").Command(IDCANCEL);
    EXPECT_FALSE(ReadSpectrumLevel(app_, owner_));
}

TEST_F(DialogServicesUiTest, TellsWhenTheClipboardIsTaken) {
    std::atomic<bool> taken = false;
    std::atomic<bool> done = false;
    std::thread other([&] {
        HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                      nullptr, nullptr);
        taken = OpenClipboard(window) != FALSE;
        while (taken && !done) Sleep(1);
        CloseClipboard();
        DestroyWindow(window);
        taken = true;
    });
    while (!taken) Sleep(1);
    UiDriver ui;
    ui.AnswerMessage("Attenzione:", "Impossibile copiare negli appunti!", IDOK);
    CopyCsvText(app_, owner_, "a;b");
    done = true;
    other.join();
    EXPECT_TRUE(PutCsvText(owner_, app_.clipboard.csv, "a;\u20ac"));
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_TRUE(IsClipboardFormatAvailable(app_.clipboard.csv));
}

TEST(PrinterPlaceTest, IsTakenApart) {
    const PrinterPlace expected{L"HP Laser 4", L"winspool", L"Ne00:"};
    EXPECT_EQ(ParsePrinterPlace(L"HP Laser 4,winspool, Ne00:"), expected);
    EXPECT_EQ(ParsePrinterPlace(L"HP Laser 4,winspool,Ne00:"), expected);
    for (const wchar_t* incomplete :
         {L"", L"a", L"a,", L"a,b", L"a,b,", L"a,b, ", L",b,c", L"a,,c"}) {
        EXPECT_FALSE(ParsePrinterPlace(incomplete)) << Narrow(incomplete);
    }
}

TEST(GdiCanvasTest, DrawsWhereItIsTold) {
    const UniqueDc dc(CreateCompatibleDC(nullptr));
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 100, -100, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const UniqueBitmap bitmap(CreateDIBSection(dc.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const ScopedSelection selection(dc.get(), bitmap.get());
    const HGDIOBJ font_before = GetCurrentObject(dc.get(), OBJ_FONT);
    {
        GdiCanvas canvas(dc.get());
        canvas.FillRectangle({0, 0, 100, 100}, {255, 255, 255});
        canvas.DrawLine({10, 10}, {20, 10}, {{255, 0, 0}, 1});
        EXPECT_EQ(GetPixel(dc.get(), 10, 10), RGB(255, 0, 0));
        EXPECT_EQ(GetPixel(dc.get(), 20, 10), RGB(255, 0, 0));
        EXPECT_EQ(GetPixel(dc.get(), 21, 10), RGB(255, 255, 255));
        canvas.FrameRectangle({30, 30, 40, 40}, {{0, 0, 255}, 2});
        EXPECT_EQ(GetPixel(dc.get(), 30, 30), RGB(0, 0, 255));
        EXPECT_EQ(GetPixel(dc.get(), 39, 39), RGB(0, 0, 255));
        EXPECT_EQ(GetPixel(dc.get(), 40, 40), RGB(255, 255, 255));
        EXPECT_EQ(GetPixel(dc.get(), 34, 34), RGB(255, 255, 255));

        canvas.SetFont({.face = "Courier New", .character_height = 20});
        TEXTMETRICW metrics{};
        GetTextMetricsW(dc.get(), &metrics);
        EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, 20);
        const Size one = canvas.MeasureText("è");
        EXPECT_EQ(canvas.MeasureText("èèè").width, 3 * one.width);
        EXPECT_EQ(canvas.MeasureWrappedText(4 * one.width, "uno due tre"), 3 * one.height);
        EXPECT_EQ(canvas.MeasureWrappedText(4 * one.width, "uno\r\n\r\ntre"), 3 * one.height);
    }
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_FONT), font_before);
}

TEST_F(DialogServicesUiTest, StatusBarKeepsTheFileNameOfALongPath) {
    HWND bar = CreateStatusBar(instance_, owner_);
    ShowCurrentFile(bar, "");
    EXPECT_EQ(WindowText(bar), "Nessun file selezionato");
    ShowCurrentFile(bar, "C:\\dati\\misura.lep");
    EXPECT_EQ(WindowText(bar), "C:\\dati\\misura.lep");
    for (std::size_t length : {200, 300, 3000}) {
        ShowCurrentFile(bar, "C:\\" + std::string(length, 'x') + "\\misura.lep");
        const std::string shown = WindowText(bar);
        EXPECT_LT(shown.size(), 150u);
        EXPECT_TRUE(shown.ends_with("...\\misura.lep")) << shown;
    }
}

}  // namespace
}  // namespace tonvale
