// The files of the report document: its own, damaged ones, those of other programs.
#include <windows.h>

#include <gtest/gtest.h>
#include <richedit.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "report/rich_edit/rich_edit_gaps_win.h"
#include "report/rtf/rtf_reader.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

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
    for (const char* words : {"\\dn5", "\\up5", "\\li660\\fi-300", "\\lang1040"}) {
        EXPECT_NE(rtf.find(words), std::string::npos) << words << " in " << rtf;
    }
    EXPECT_EQ(rtf.find("\\up50"), std::string::npos);
    EXPECT_FALSE(document_.IsModified());

    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(document_.Open(Path("apice.tnv")));
        EXPECT_EQ(Text(), "Lep,d = 85.0 dB\r\nrientro");
        EXPECT_EQ(Format(1, 5).yOffset, -50);
        EXPECT_EQ(Format(1, 5).yHeight, 150);
        EXPECT_EQ(Format(13, 15).yOffset, 50);
        EXPECT_NE(Format(13, 15).dwEffects & CFE_ITALIC, 0U);
        EXPECT_EQ(Format(6, 12).yOffset, 0);
        EXPECT_EQ(ParagraphFormat(0).cTabCount, 8);
        EXPECT_EQ(ParagraphFormat(18).dxStartIndent, 360);
        EXPECT_EQ(ParagraphFormat(18).dxOffset, 300);
        EXPECT_FALSE(document_.IsModified());
        ASSERT_TRUE(document_.Save());
        EXPECT_EQ(ReadFile("apice.tnv"), rtf) << round;
    }
}

TEST_F(ReportTest, AsksBeforeADocumentIsLost) {
    UiDriver ui;
    const auto answer = [&ui](int button) {
        ui.AnswerMessage("Attenzione", "Il documento è stato modificato. Salvare le modifiche?",
                         button);
    };
    const std::string other = WriteFile("altro.tnv", "{\\rtf1 altro}");
    Type("importante");
    answer(IDCANCEL);
    EXPECT_FALSE(document_.New());
    answer(IDCANCEL);
    EXPECT_FALSE(document_.Open(other));
    // Yes, but then no name is given: still modified, so still here.
    answer(IDYES);
    ui.OnWindow(kSaveTitle).Command(IDCANCEL);
    EXPECT_FALSE(document_.MayDiscard());
    EXPECT_TRUE(document_.IsModified());
    EXPECT_EQ(Text(), "importante");

    answer(IDYES);
    TypeUnsuitableName(ui, Path("foglio.csv"), "\".tnv\"");
    SaveNewFile(ui, Path("salvato.tnv"));
    EXPECT_TRUE(document_.New());
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(document_.path(), "");
    EXPECT_EQ(PlainTextOf(ReadRichText(ReadFile("salvato.tnv"))), "importante\n");

    Type("niente");
    answer(IDNO);
    EXPECT_TRUE(document_.Open(other));
    EXPECT_EQ(Text(), "altro");
    EXPECT_EQ(document_.path(), other);
    ui.Finish();
}

TEST_F(ReportTest, TellsOfAFileInUse) {
    constexpr char kNotOpened[] = "File bloccato da un'altra applicazione. Impossibile aprire!";
    const std::string not_saved = "File bloccato da un'altra applicazione. Impossibile salvare!";
    const std::string path = WriteFile("occupato.tnv", "{\\rtf1 vecchio}");
    Type("nuovo");
    Send(EM_SETMODIFY, FALSE);
    UiDriver ui;
    std::optional<HeldFile> held;
    held.emplace(path, GENERIC_READ, FILE_SHARE_READ);
    for (const std::string& unreadable : {path, Path("manca.tnv")}) {
        ui.AnswerMessage(unreadable, kNotOpened, IDOK);
        EXPECT_FALSE(document_.Open(unreadable));
        EXPECT_EQ(Text(), "nuovo");
    }
    held.reset();
    ASSERT_TRUE(document_.Open(path));
    Type("molto ");
    const auto expect_not_saved = [&](const std::string& message) {
        ui.AnswerMessage(path, message, IDOK);
        EXPECT_FALSE(document_.Save());
        EXPECT_TRUE(document_.IsModified());
    };
    for (const DWORD more_sharing : {DWORD{0}, DWORD{FILE_SHARE_DELETE}}) {
        held.emplace(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | more_sharing);
        expect_not_saved(not_saved);
        held.reset();
    }
    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY);
    expect_not_saved(not_saved + "\r\nMotivo: il file è di sola lettura.");
    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    disk_.is_full = true;
    expect_not_saved("Impossibile salvare: il disco è pieno.");
    EXPECT_EQ(ReadFile("occupato.tnv"), "{\\rtf1 vecchio}");
    disk_.is_full = false;
    EXPECT_TRUE(document_.Save());
    ui.Finish();
}

constexpr char kNoReport[] = "Il file non è un documento di Tonvale. Impossibile aprire!";
constexpr char kTooLong[] =
    "Il testo del file è troppo lungo per il documento. Impossibile aprire!";
constexpr char kDamaged[] =
    "Il file è incompleto o danneggiato: viene aperto ciò che si può leggere, come documento senza "
    "titolo. Il file resta com'è.";
constexpr char kLeftOut[] =
    "Tonvale non può mostrare tutto ciò che il file contiene (per esempio oggetti, note, "
    "intestazioni, certe immagini o troppi apici e pedici). Il resto viene aperto come documento "
    "senza titolo; il file rimane com'è.";

std::string Repeated(const char* text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

// No documents, documents at which controls are known to crash or to hang, and such as cannot be
// shown whole: of these the file is not written over unasked.
TEST_F(ReportTest, ReadsWhatItCanOfAnyDocument) {
    const struct {
        std::string bytes;
        std::optional<std::string> text;  // none: it is refused
        const char* message = nullptr;    // where it is not whole
    } documents[] = {
        {std::string("MZ\0\1\2{\\rtf1", 11), {}, kNoReport},
        {"{\\rtf1 " + std::string(100 << 20, 'x') + "}", {}, kTooLong},
        // So long a paragraph takes some controls minutes.
        {"{\\rtf1 " + std::string(1 << 20, 'x') + "}", {}, kTooLong},
        {"", ""},
        {"{\\rtf1 uno\\par {\\b due", "uno\r\ndue", kDamaged},
        {"{\\rtf1" + Repeated("{", 1000) + "a" + Repeated("}", 1001), "a"},
        {"{\\rtf1\\trowd" + Repeated("\\cellx-1073741824", 500) + "\\intbl a\\cell b\\cell\\row}",
         "a\tb"},
        {"{\\rtf1" + Repeated("\\tx-1073741824", 500) + " a\\f-1\\fs-9\\cf99999 b}", "ab"},
        {"{\\rtf1{\\pict\\emfblip 00}{\\pict\\pngblip\\bin4 \x89PNG}{\\pict\\wbitmap0 00}a}", "a",
         kLeftOut},
        {"{\\rtf1{\\pict\\pngblip 89504e470d0a1a0a0c008ce30d49444154}a}", "a", kLeftOut},
        {"{\\rtf1{\\object\\objemb{\\*\\objdata }{\\result a}}b}", "ab"},
        {"{\\rtf1{\\object\\objemb{\\*\\objdata 0105}{\\result a}}b}", "ab", kLeftOut},
        {"{\\rtf1{\\header\\pard\\par }a{\\*\\footnote }}", "a"},
        {"{\\rtf1{\\header\\pard x\\par }a}", "a", kLeftOut},
        {"{\\rtf1 a{\\*\\footnote nota}}", "a", kLeftOut},
        {"{\\rtf1" + Repeated("\\up6 a\\dn6 b", 50) + "}", Repeated("ab", 50)},
    };
    Type("resta");
    Send(EM_SETMODIFY, FALSE);
    UiDriver ui;
    for (const auto& [bytes, text, message] : documents) {
        const bool is_whole = !message;
        const std::string path = WriteFile("strano.tnv", bytes);
        const std::string before = Text();
        if (message) ui.AnswerMessage(path, message, IDOK);
        document_.SetFocus();
        EXPECT_EQ(document_.Open(path), text.has_value());
        EXPECT_EQ(Text(), text.value_or(before));
        EXPECT_EQ(document_.path(), is_whole ? path : "") << bytes.substr(0, 100);
        EXPECT_EQ(document_.IsModified(), text && !is_whole);
        if (is_whole) {  // no message has taken the focus to the window
            EXPECT_EQ(GetFocus(), Editor());
            EXPECT_TRUE(document_.Save());
        }
        Send(EM_SETMODIFY, FALSE);
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

// Documents saved by a text processor: nothing of their text is lost on the way in and out.
TEST_F(ReportTest, KeepsTheTextOfOtherPrograms) {
    const std::pair<std::string, const char*> documents[] = {
        {"testo", "Accenti: àèéìòù ÀÈÌ €; greco: αβγ Δ; cirillico: Шум; simboli: ≥ ≤ → ½\n"},
        {"tabella",
         "Prima della tabella\nMansione\tDurata (h)\tLep,d\nAddetto pressa\t6,50\t91,2\n"
         "Manutentore\t1,25\t84,0\nDopo la tabella\n"},
        {"immagine", " dopo l'immagine\n"}};
    for (const auto& [name, part] : documents) {
        const std::string file = name + ".tnv";
        const std::string path = Path(file);
        std::filesystem::copy_file(std::filesystem::path(TONVALE_FIXTURE_FOLDER) / (name + ".rtf"),
                                   folder_ / file);
        const auto text_of_file = [&] { return PlainTextOf(ReadReport(ReadFile(file))); };
        const std::string in_file = text_of_file();
        EXPECT_NE(in_file.find(part), std::string::npos) << in_file;
        ASSERT_TRUE(document_.Open(path));
        EXPECT_EQ(document_.path(), path);
        EXPECT_EQ(Format(0, 1).yHeight, 240);
        const std::string text = Text();
        ASSERT_TRUE(document_.Save());
        EXPECT_EQ(text_of_file(), in_file);
        ASSERT_TRUE(document_.Open(path));
        EXPECT_EQ(Text(), text);
        UpdateWindow(Editor());
        SaveScreenshot(host_.window(), "report_" + name);
    }
    EXPECT_NE(ReadFile("immagine.tnv").find("\\emfblip"), std::string::npos);
}

}  // namespace
}  // namespace tonvale
