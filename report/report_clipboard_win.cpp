#include "report/report_clipboard_win.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/clipboard_win.h"
#include "report/rich_edit/picture_win.h"
#include "report/rtf/rtf_reader.h"

namespace tonvale {

namespace {

constexpr char kPasteCaption[] = "Impossibile incollare gli appunti";

// In the order in which they are taken.
std::array<UINT, 6> PasteFormats(const ClipboardFormats& formats) {
    return {formats.csv, CF_UNICODETEXT, formats.rich_text, formats.rich_text_objects,
            CF_DIB,      CF_BITMAP};
}

UINT FirstFormat(const ClipboardFormats& formats) {
    const std::array<UINT, 6> candidates = PasteFormats(formats);
    const auto* first = std::find_if(candidates.begin(), candidates.end(), [](UINT format) {
        return format != 0 && IsClipboardFormatAvailable(format);
    });
    return first == candidates.end() ? 0 : *first;
}

class ReadingClipboard {
  public:
    explicit ReadingClipboard(HWND owner) : open_(OpenClipboard(owner)) {}
    ~ReadingClipboard() {
        if (open_) CloseClipboard();
    }
    ReadingClipboard(const ReadingClipboard&) = delete;
    ReadingClipboard& operator=(const ReadingClipboard&) = delete;

    // The bytes in a format; nullopt when there are none.
    std::optional<std::string> Read(UINT format) const {
        HGLOBAL memory = open_ ? GetClipboardData(format) : nullptr;
        const void* content = memory ? GlobalLock(memory) : nullptr;
        if (!content) return std::nullopt;
        std::string bytes(static_cast<const char*>(content), GlobalSize(memory));
        GlobalUnlock(memory);
        return bytes;
    }

  private:
    bool open_;
};

std::optional<std::string> ReadClipboard(HWND owner, UINT format) {
    return ReadingClipboard(owner).Read(format);
}

std::wstring WideText(std::string_view bytes) {
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    text.resize(std::min(text.find(L'\0'), text.size()));
    return text;
}

UserMessage NotSupported() {
    return {kPasteCaption,
            "Il formato dei dati presenti nella Clipboard non è supportato da Tonvale",
            MessageIcon::kInformation};
}

UserMessage NotAvailable() {
    return {kPasteCaption, "Gli appunti sono in uso da un'altra applicazione.",
            MessageIcon::kExclamation};
}

UserMessage TooLong() {
    return {kPasteCaption,
            "Il testo non entra nel documento, che può contenere al massimo " +
                FormatInteger(kMaxReportCharacters) + " caratteri.",
            MessageIcon::kExclamation};
}

UserMessage LineTooLong() {
    return {kPasteCaption, "Una riga del testo è troppo lunga per il documento.",
            MessageIcon::kExclamation};
}

bool HasRoomFor(const RichEdit& edit, std::size_t characters) {
    const CHARRANGE selection = edit.Selection();
    const int kept = edit.TextLength() - static_cast<int>(selection.cpMax - selection.cpMin);
    return characters <= static_cast<std::size_t>(std::max(kMaxReportCharacters - kept, 0));
}

// What the document would not open again.
bool HasTooLongLine(std::wstring_view text, const RichEditGaps& gaps) {
    while (text.size() > MaxParagraphCharacters(gaps)) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        if (end > MaxParagraphCharacters(gaps)) return true;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

std::optional<UserMessage> PasteCsv(const AppContext& app, RichEdit& edit,
                                    const RichEditGaps& gaps) {
    const std::optional<std::string> bytes = ReadClipboard(edit.window(), app.clipboard.csv);
    if (!bytes) return NotAvailable();
    const std::string_view content(*bytes);
    std::wstring text = Widen(Windows1252ToUtf8(content.substr(0, content.find('\0'))));
    if (!HasRoomFor(edit, text.size())) return TooLong();
    if (HasTooLongLine(text, gaps)) return LineTooLong();
    std::replace(text.begin(), text.end(), L';', L'\t');
    edit.InsertText(text);
    return std::nullopt;
}

std::optional<UserMessage> PasteText(const AppContext& app, RichEdit& edit,
                                     const RichEditGaps& gaps) {
    const std::string rtf =
        ReadClipboard(edit.window(), app.clipboard.rich_text).value_or(std::string());
    const std::optional<std::string> plain = ReadClipboard(edit.window(), CF_UNICODETEXT);
    const bool is_read_here = !rtf.empty() && gaps.reads_poorly;
    RichText text = is_read_here || !plain ? ReadReport(rtf) : RichText();
    const std::wstring words = plain ? WideText(*plain) : Widen(PlainTextOf(text));
    if (!HasRoomFor(edit, words.size())) return TooLong();
    if (HasTooLongLine(words, gaps)) return LineTooLong();
    if (is_read_here) {
        ReadReportRtf(edit, gaps, rtf, std::move(text), true);
        edit.SetModified(true);
    } else {
        edit.Send(WM_PASTE);
    }
    return std::nullopt;
}

std::optional<UserMessage> PasteBitmap(RichEdit& edit) {
    if (edit.Send(EM_CANPASTE, CF_DIB)) {
        edit.Send(EM_PASTESPECIAL, CF_DIB);
        return std::nullopt;
    }
    const std::optional<std::string> dib = ReadClipboard(edit.window(), CF_DIB);
    if (!dib) return NotAvailable();
    const std::optional<RichPicture> picture = PictureOfBitmap(*dib);
    if (!picture) return NotSupported();
    if (!HasRoomFor(edit, 1)) return TooLong();
    const CHARRANGE selection = edit.Selection();
    const LONG kept = edit.TextLength() - (selection.cpMax - selection.cpMin);
    edit.ReadRtf(PictureAsRtf(*picture), true);
    if (edit.TextLength() <= kept) {
        edit.Send(EM_UNDO);  // the selection comes back
        return NotSupported();
    }
    edit.SetModified(true);
    return std::nullopt;
}

// `text` with CR LF where the control has a lone CR.
std::wstring WithLineEnds(std::wstring_view text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (text[i] == L'\r' && text.substr(i + 1, 1) != L"\n") result += L'\n';
    }
    return result;
}

bool HasWriterFaults(const RtfWriterFaults& faults) {
    return faults.offsets_in_twips || faults.indents_swapped || faults.negative_line_spacing ||
           faults.confuses_characters;
}

}  // namespace

bool CanPasteInReport(const AppContext& app) {
    return FirstFormat(app.clipboard) != 0;
}

std::optional<UserMessage> PasteInReport(const AppContext& app, RichEdit& edit,
                                         const RichEditGaps& gaps) {
    const UINT format = FirstFormat(app.clipboard);
    if (format == 0) return NotSupported();
    if (format == app.clipboard.csv) return PasteCsv(app, edit, gaps);
    if (format == CF_DIB || format == CF_BITMAP) return PasteBitmap(edit);
    return PasteText(app, edit, gaps);
}

bool CopyFromReport(const AppContext& app, RichEdit& edit, const RichEditGaps& gaps) {
    const CHARRANGE selection = edit.Selection();
    if (selection.cpMin == selection.cpMax) return true;
    // The end of the last paragraph would be a line more wherever it is pasted.
    std::optional<QuietEdit> quiet;
    if (edit.SelectsEndOfText()) {
        quiet.emplace(edit);
        edit.Select(selection);
    }
    if (!HasWriterFaults(gaps.writer)) {
        edit.Send(WM_COPY);
        return true;
    }
    const std::optional<std::string> rtf = WriteReportRtf(edit, gaps, true);
    if (!rtf || !IsWholeRtf(*rtf)) return false;
    const std::wstring text = WithLineEnds(edit.SelectedText());
    OpenedClipboard clipboard(edit.window());
    const std::string_view bytes(reinterpret_cast<const char*>(text.c_str()),
                                 (text.size() + 1) * sizeof(wchar_t));
    return clipboard && clipboard.Put(app.clipboard.rich_text, *rtf + '\0') &&
           clipboard.Put(CF_UNICODETEXT, bytes);
}

}  // namespace tonvale
