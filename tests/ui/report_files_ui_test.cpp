// The files of the report document: its own, damaged ones, those of other programs.
#include <windows.h>

#include <gtest/gtest.h>
#include <richedit.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "report/rich_edit/rich_edit_gaps_win.h"
#include "report/rtf/rtf_reader.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

constexpr char kModifiedQuestion[] = "Il documento è stato modificato. Salvare le modifiche?";

TEST_F(ReportTest, RaisedTextAndIndentsComeBack) {
    Type("Lep,d = 85.0 dB\rrientro");
    Select(1, 5);
    Command(CMD_SUBSCRIPT);
    Select(13, 15);
    Command(CMD_SUPERSCRIPT);
    Command(CMD_ITALIC);
    Select(18, 18);
    PARAFORMAT hanging{};
    hanging.cbSize = sizeof(hanging);
    hanging.dwMask = PFM_STARTINDENT | PFM_OFFSET;
    hanging.dxStartIndent = 360;
    hanging.dxOffset = 300;
    Send(EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&hanging));
    const std::string rtf = SavedAs("apice.tnv");
    EXPECT_NE(rtf.find("\\dn5"), std::string::npos) << rtf;
    EXPECT_NE(rtf.find("\\up5"), std::string::npos);
    EXPECT_EQ(rtf.find("\\up50"), std::string::npos);
    EXPECT_NE(rtf.find("\\li660\\fi-300"), std::string::npos) << rtf;
    EXPECT_NE(rtf.find("\\lang1040"), std::string::npos) << rtf;
    EXPECT_FALSE(host_->document.IsModified());
    const std::string text = Text();
    SaveScreenshot(host_->window, "report_raised");

    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(host_->document.Open(Path("apice.tnv")));
        EXPECT_EQ(Text(), text);
        EXPECT_EQ(Format(1, 5).yOffset, -50);
        EXPECT_EQ(Format(1, 5).yHeight, 150);
        EXPECT_EQ(Format(13, 15).yOffset, 50);
        EXPECT_NE(Format(13, 15).dwEffects & CFE_ITALIC, 0U);
        EXPECT_EQ(Format(6, 12).yOffset, 0);
        EXPECT_EQ(ParagraphFormat(0).cTabCount, 8);
        const PARAFORMAT read = ParagraphFormat(18);
        EXPECT_EQ(read.dxStartIndent, 360);
        EXPECT_EQ(read.dxOffset, 300);
        EXPECT_FALSE(host_->document.IsModified());
        ASSERT_TRUE(host_->document.Save());
        EXPECT_EQ(ReadFile("apice.tnv"), rtf) << round;
    }
}

TEST_F(ReportTest, AsksBeforeADocumentIsLost) {
    Type("importante");
    UiDriver ui;
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDCANCEL);
    EXPECT_FALSE(host_->document.New());
    EXPECT_EQ(Text(), "importante");

    WriteFile("altro.tnv", "{\\rtf1 altro}");
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDCANCEL);
    EXPECT_FALSE(host_->document.Open(Path("altro.tnv")));
    EXPECT_EQ(Text(), "importante");

    // Yes, but then no name is given: still modified, so still here.
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDYES);
    ui.OnWindow(kSaveTitle).Command(IDCANCEL);
    EXPECT_FALSE(host_->document.MayDiscard());
    EXPECT_TRUE(host_->document.IsModified());

    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDYES);
    TypeUnsuitableName(ui, Path("foglio.csv"), "\".tnv\"");
    SaveNewFile(ui, Path("salvato.tnv"));
    EXPECT_TRUE(host_->document.New());
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(host_->document.path(), "");
    EXPECT_EQ(PlainTextOf(ReadRichText(ReadFile("salvato.tnv"))), "importante\n");

    Type("niente");
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDNO);
    EXPECT_TRUE(host_->document.Open(Path("altro.tnv")));
    EXPECT_EQ(Text(), "altro");
    EXPECT_EQ(host_->document.path(), Path("altro.tnv"));
    ui.Finish();
}

TEST_F(ReportTest, TellsOfAFileInUse) {
    WriteFile("occupato.tnv", "{\\rtf1 vecchio}");
    const std::string path = Path("occupato.tnv");
    Type("nuovo");
    Send(EM_SETMODIFY, FALSE);
    UiDriver ui;
    {
        const HeldFile held(path, GENERIC_READ, FILE_SHARE_READ);
        ui.AnswerMessage(path, "File bloccato da un'altra applicazione. Impossibile aprire!", IDOK);
        EXPECT_FALSE(host_->document.Open(path));
        EXPECT_EQ(Text(), "nuovo");
    }
    ASSERT_TRUE(host_->document.Open(path));
    Select(0, 0);
    Type("molto ");
    for (const DWORD more_sharing : {DWORD{0}, DWORD{FILE_SHARE_DELETE}}) {
        const HeldFile held(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | more_sharing);
        ui.AnswerMessage(path, "File bloccato da un'altra applicazione. Impossibile salvare!",
                         IDOK);
        EXPECT_FALSE(host_->document.Save());
    }
    EXPECT_TRUE(host_->document.IsModified());
    EXPECT_EQ(ReadFile("occupato.tnv"), "{\\rtf1 vecchio}");

    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY);
    ui.AnswerMessage(path,
                     "File bloccato da un'altra applicazione. Impossibile salvare!\r\n"
                     "Motivo: il file è di sola lettura.",
                     IDOK);
    EXPECT_FALSE(host_->document.Save());
    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_NORMAL);

    disk_.is_full = true;
    ui.AnswerMessage(path, "Impossibile salvare: il disco è pieno.", IDOK);
    EXPECT_FALSE(host_->document.Save());
    EXPECT_EQ(ReadFile("occupato.tnv"), "{\\rtf1 vecchio}");
    EXPECT_TRUE(host_->document.IsModified());
    disk_.is_full = false;
    EXPECT_TRUE(host_->document.Save());
    ui.AnswerMessage(Path("manca.tnv"),
                     "File bloccato da un'altra applicazione. Impossibile aprire!", IDOK);
    EXPECT_FALSE(host_->document.Open(Path("manca.tnv")));
    ui.Finish();
}

TEST_F(ReportTest, RefusesWhatIsNoDocument) {
    constexpr char kTooLong[] =
        "Il testo del file è troppo lungo per il documento. Impossibile aprire!";
    const std::pair<std::string, std::string> refused[] = {
        {std::string("MZ\0\1\2{\\rtf1", 11),
         "Il file non è un documento di Tonvale. Impossibile aprire!"},
        {"{\\rtf1 " + std::string(100 << 20, 'x') + "}", kTooLong},
        // So long a paragraph takes some controls minutes.
        {"{\\rtf1 " + std::string(1 << 20, 'x') + "}", kTooLong},
    };
    Type("resta");
    Send(EM_SETMODIFY, FALSE);
    UiDriver ui;
    for (const auto& [bytes, message] : refused) {
        const std::string path = WriteFile("strano.tnv", bytes);
        ui.AnswerMessage(path, message, IDOK);
        EXPECT_FALSE(host_->document.Open(path));
    }
    EXPECT_EQ(Text(), "resta");
    EXPECT_EQ(host_->document.path(), "");
    // Of a torn file, what is there is shown; the file is not written over unasked.
    ui.AnswerMessage(WriteFile("tronco.tnv", "{\\rtf1 uno\\par {\\b due"),
                     "Il file è incompleto o danneggiato: viene aperto ciò che si può leggere, "
                     "come documento senza titolo. Il file resta com'è.",
                     IDOK);
    EXPECT_TRUE(host_->document.Open(Path("tronco.tnv")));
    EXPECT_EQ(Text(), "uno\r\ndue");
    EXPECT_EQ(host_->document.path(), "");
    EXPECT_TRUE(host_->document.IsModified());
    ui.Finish();
    Send(EM_SETMODIFY, FALSE);
    EXPECT_TRUE(host_->document.Open(WriteFile("vuoto.tnv", "")));
    EXPECT_EQ(Text(), "");
}

// Documents at which controls are known to crash or to hang, and such as cannot be shown whole: of
// these the file is not written over unasked.
TEST_F(ReportTest, ReadsWhatItCanOfAnyDocument) {
    const auto repeated = [](const char* text, int count) {
        std::string result;
        for (int i = 0; i < count; ++i) result += text;
        return result;
    };
    const struct {
        std::string rtf;
        std::string text;
        bool is_whole;
    } documents[] = {
        {repeated("{", 1000) + "a" + repeated("}", 1000), "a", true},
        {"\\trowd" + repeated("\\cellx-1073741824", 500) + "\\intbl a\\cell b\\cell\\row", "a\tb",
         true},
        {repeated("\\tx-1073741824", 500) + " a\\f-1\\fs-9\\cf99999 b", "ab", true},
        {"{\\pict\\emfblip 00}{\\pict\\pngblip\\bin4 \x89PNG}{\\pict\\wbitmap0 00}a", "a", false},
        {"{\\pict\\pngblip 89504e470d0a1a0a0c008ce30d49444154}a", "a", false},
        {"{\\object\\objemb{\\*\\objdata }{\\result a}}b", "ab", true},
        {"{\\object\\objemb{\\*\\objdata 0105}{\\result a}}b", "ab", false},
        {"{\\header\\pard\\par }a{\\*\\footnote }", "a", true},
        {"{\\header\\pard x\\par }a", "a", false},
        {"a{\\*\\footnote nota}", "a", false},
        {repeated("\\up6 a\\dn6 b", 50), repeated("ab", 50), true},
    };
    UiDriver ui;
    for (const auto& document : documents) {
        const std::string path = WriteFile("strano.tnv", "{\\rtf1" + document.rtf + "}");
        if (!document.is_whole) {
            ui.AnswerMessage(
                path,
                "Tonvale non può mostrare tutto ciò che il file contiene (per esempio "
                "oggetti, note, intestazioni, certe immagini o troppi apici e pedici). "
                "Il resto viene aperto come documento senza titolo; il file rimane "
                "com'è.",
                IDOK);
        }
        ASSERT_TRUE(host_->document.Open(path));
        EXPECT_EQ(Text(), document.text);
        EXPECT_EQ(host_->document.path(), document.is_whole ? path : "") << document.rtf;
        EXPECT_EQ(host_->document.IsModified(), !document.is_whole);
        EXPECT_TRUE(!document.is_whole || host_->document.Save());
        if (document.is_whole) {  // no message has taken the focus to the window
            EXPECT_EQ(GetFocus(), host_->editor());
        }
        Send(EM_SETMODIFY, FALSE);
        host_->document.SetFocus();
    }
    ui.Finish();
}

TEST_F(ReportTest, RaisesNoMoreTextThanTheControlHasTimeFor) {
    RichEdit edit;
    ASSERT_TRUE(edit.Create(instance_, owner_, 0, WS_CHILD, 0));
    RichEditGaps gaps = FindRichEditGaps(instance_, owner_);
    gaps.reads_poorly = true;
    gaps.max_offsets = 4;
    gaps.max_offset_characters = 60;
    const std::pair<const char*, ReadOutcome> documents[] = {
        {"{\\rtf1 a\\up6 b\\up0 c\\up6 d\\par e\\up6 f\\dn6 g}", ReadOutcome::kWhole},
        {"{\\rtf1 a\\up6 b\\up0 c\\up6 d\\par e\\up6 f\\dn6 g\\up6 h}", ReadOutcome::kLeftOut},
        {"{\\rtf1 a longer paragraph with one piece: a\\up6 b}", ReadOutcome::kWhole},
        {"{\\rtf1 a longer paragraph with two pieces: a\\up6 b\\dn6 c}", ReadOutcome::kLeftOut},
    };
    for (const auto& [rtf, outcome] : documents) {
        EXPECT_EQ(ReadReportRtf(edit, gaps, rtf, ReadReport(rtf), false), outcome) << rtf;
    }
}

struct OtherDocument {
    const wchar_t* name;
    std::vector<std::string> texts;
};

// Documents saved by a text processor: nothing of their text is lost on the way in and out.
TEST_F(ReportTest, KeepsTheTextOfOtherPrograms) {
    const OtherDocument documents[] = {
        {L"testo.rtf",
         {"Relazione fonometrica del reparto presse", "Leq = 10-12 W/m², 87,3 dB(A)",
          "Accenti: àèéìòù ÀÈÌ €; greco: αβγ Δ; cirillico: Шум; simboli: ≥ ≤ → ½", "primo punto",
          "secondo punto", "Colonne:\tuna\tdue"}},
        {L"tabella.rtf",
         {"Prima della tabella\nMansione\tDurata (h)\tLep,d\nAddetto pressa\t6,50\t91,2\n"
          "Manutentore\t1,25\t84,0\nDopo la tabella"}},
        {L"immagine.rtf", {"Prima ", " dopo l'immagine"}}};
    for (const OtherDocument& document : documents) {
        const std::filesystem::path copy =
            folder_ / std::filesystem::path(document.name).replace_extension(L".tnv");
        std::filesystem::copy_file(std::filesystem::path(TONVALE_FIXTURE_FOLDER) / document.name,
                                   copy);
        const std::string path = Narrow(copy.wstring());
        ASSERT_TRUE(host_->document.Open(path)) << path;
        EXPECT_EQ(host_->document.path(), path);
        EXPECT_EQ(Format(0, 1).yHeight, 240);
        const std::string text = Text();
        ASSERT_TRUE(host_->document.Save());
        const std::string written =
            PlainTextOf(ReadRichText(ReadFile(Narrow(copy.filename().wstring()))));
        ASSERT_TRUE(host_->document.Open(path));
        EXPECT_EQ(Text(), text);
        for (const std::string& part : document.texts) {
            EXPECT_NE(written.find(part), std::string::npos) << part << " in\n" << written;
        }
        UpdateWindow(host_->editor());
        SaveScreenshot(host_->window, "report_" + Narrow(copy.stem().wstring()));
    }
    EXPECT_NE(ReadFile("immagine.tnv").find("\\emfblip"), std::string::npos);
}

}  // namespace
}  // namespace tonvale
