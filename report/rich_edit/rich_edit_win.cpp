#include "report/rich_edit/rich_edit_win.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace tonvale {

namespace {

constexpr UINT kUnicodeCodePage = 1200;
constexpr DWORD kFailed = 1;

DWORD CALLBACK AppendToString(DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* done) {
    try {
        reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<const char*>(bytes),
                                                       static_cast<std::size_t>(count));
    } catch (const std::bad_alloc&) {
        return kFailed;
    }
    *done = count;
    return 0;
}

DWORD CALLBACK TakeFromView(DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* done) {
    auto& rest = *reinterpret_cast<std::string_view*>(cookie);
    const std::size_t taken = std::min(rest.size(), static_cast<std::size_t>(count));
    std::memcpy(bytes, rest.data(), taken);
    rest.remove_prefix(taken);
    *done = static_cast<LONG>(taken);
    return 0;
}

}  // namespace

bool RichEdit::Create(HINSTANCE instance, HWND parent, int id, DWORD style, DWORD extended_style) {
    window_ = CreateWindowExW(extended_style, L"RichEdit", nullptr, style | WS_CHILD | ES_MULTILINE,
                              0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                              instance, nullptr);
    return window_ != nullptr;
}

std::optional<std::string> RichEdit::WriteRtf(bool selection_only, bool as_utf8) const {
    std::string rtf;
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rtf), 0, AppendToString};
    constexpr WPARAM kAsUtf8 = SF_USECODEPAGE | (WPARAM{CP_UTF8} << 16);
    Send(EM_STREAMOUT, SF_RTF | (selection_only ? SFF_SELECTION : 0U) | (as_utf8 ? kAsUtf8 : 0U),
         reinterpret_cast<LPARAM>(&stream));
    if (stream.dwError != 0) return std::nullopt;
    return rtf;
}

bool RichEdit::ReadRtf(std::string_view rtf, bool selection_only) {
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rtf), 0, TakeFromView};
    Send(EM_STREAMIN, SF_RTF | (selection_only ? SFF_SELECTION : 0U),
         reinterpret_cast<LPARAM>(&stream));
    return stream.dwError == 0;
}

void RichEdit::InsertText(std::wstring_view text) {
    const std::wstring terminated(text);
    SETTEXTEX options{ST_SELECTION | ST_KEEPUNDO, kUnicodeCodePage};
    Send(EM_SETTEXTEX, reinterpret_cast<WPARAM>(&options),
         reinterpret_cast<LPARAM>(terminated.c_str()));
}

void RichEdit::Clear() {
    SetWindowTextW(window_, L"");
}

int RichEdit::TextLength() const {
    GETTEXTLENGTHEX options{GTL_NUMCHARS | GTL_PRECISE, kUnicodeCodePage};
    return static_cast<int>(Send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&options)));
}

std::wstring RichEdit::SelectedText() const {
    const CHARRANGE range = Selection();
    // Room for two units wherever the control counts a line end as one.
    std::wstring text(2 * static_cast<std::size_t>(range.cpMax - range.cpMin) + 1, L'\0');
    GETTEXTEX options{static_cast<DWORD>(text.size() * sizeof(wchar_t)), GT_SELECTION,
                      kUnicodeCodePage, nullptr, nullptr};
    const LRESULT count = Send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&options),
                               reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::min(static_cast<std::size_t>(count), text.size()));
    return text;
}

CHARRANGE RichEdit::Selection() const {
    CHARRANGE range{};
    Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    const LONG length = TextLength();
    return {std::min(range.cpMin, length), std::min(range.cpMax, length)};
}

bool RichEdit::SelectsEndOfText() const {
    CHARRANGE range{};
    Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return range.cpMax > TextLength();
}

void RichEdit::Select(CHARRANGE range) {
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

void RichEdit::ScrollToTop() {
    POINT top{};
    Send(EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&top));
}

CHARFORMAT2W RichEdit::CharacterFormat() const {
    CHARFORMAT2W format{};
    format.cbSize = sizeof(format);
    Send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    return format;
}

void RichEdit::SetCharacterFormat(CHARFORMAT2W& format, WPARAM range) {
    format.cbSize = sizeof(format);
    // Some controls draw an offset only with this bit as an effect; for the others it is none.
    if ((format.dwMask & CFM_OFFSET) != 0 && format.yOffset != 0) format.dwEffects |= CFM_OFFSET;
    Send(EM_SETCHARFORMAT, range, reinterpret_cast<LPARAM>(&format));
}

PARAFORMAT RichEdit::ParagraphFormat() const {
    PARAFORMAT format{};
    format.cbSize = sizeof(format);
    Send(EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
    return format;
}

void RichEdit::SetParagraphFormat(PARAFORMAT& format) {
    format.cbSize = sizeof(format);
    Send(EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
}

void RichEdit::SetWordWrap(bool on) {
    // To no device: 0 wraps at the edge of the window, any other width not at all.
    Send(EM_SETTARGETDEVICE, 0, on ? 0 : 1);
}

bool RichEdit::IsModified() const {
    return Send(EM_GETMODIFY) != 0;
}

void RichEdit::SetModified(bool modified) {
    Send(EM_SETMODIFY, modified);
}

QuietEdit::QuietEdit(RichEdit& edit)
    : edit_(edit), selection_(edit.Selection()), event_mask_(edit.Send(EM_SETEVENTMASK)) {
    edit_.Send(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled_));
    edit_.Send(WM_SETREDRAW, FALSE);
}

QuietEdit::~QuietEdit() {
    edit_.Select(selection_);
    edit_.Send(EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled_));
    edit_.Send(EM_SETEVENTMASK, 0, event_mask_);
    edit_.Send(WM_SETREDRAW, TRUE);
    InvalidateRect(edit_.window(), nullptr, TRUE);
}

}  // namespace tonvale
