#include "help/help_text_view.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

namespace tonvale {

namespace {

constexpr int kMargin = 10;  // left and right of the text, in pixels of 96 dpi; half of it above

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

// The keys that scroll, wherever the caret stands, which is not seen.
struct ScrollKey {
    WPARAM key;
    WPARAM request;
};

constexpr ScrollKey kScrollKeys[] = {
    {VK_UP, SB_LINEUP},     {VK_DOWN, SB_LINEDOWN}, {VK_PRIOR, SB_PAGEUP},
    {VK_NEXT, SB_PAGEDOWN}, {VK_HOME, SB_TOP},      {VK_END, SB_BOTTOM},
};

// A tinge of the selection's color: text keeps its own on it, also with dark windows.
COLORREF MarkColor() {
    constexpr int kTingePercent = 16;
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
    const auto mix = [](int base, int tinge) {
        return static_cast<BYTE>(base + (tinge - base) * kTingePercent / 100);
    };
    return RGB(mix(GetRValue(window), GetRValue(highlight)),
               mix(GetGValue(window), GetGValue(highlight)),
               mix(GetBValue(window), GetBValue(highlight)));
}

// Hands the rich text over piece by piece.
DWORD CALLBACK ReadRtf(DWORD_PTR cookie, BYTE* buffer, LONG wanted, LONG* given) {
    auto& rest = *reinterpret_cast<std::string_view*>(cookie);
    const std::size_t count = std::min(rest.size(), static_cast<std::size_t>(wanted));
    std::memcpy(buffer, rest.data(), count);
    rest.remove_prefix(count);
    *given = static_cast<LONG>(count);
    return 0;
}

}  // namespace

HelpTextView::HelpTextView() : library_(LoadLibraryW(L"RICHED20.DLL")) {}

bool HelpTextView::Create(HINSTANCE instance, HWND parent, int id) {
    window_ = CreateWindowExW(
        WS_EX_CLIENTEDGE, RICHEDIT_CLASSW, nullptr,
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY, 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(INT_PTR{id}), instance, nullptr);
    if (!window_) return false;
    SendMessageW(window_, EM_SETEVENTMASK, 0, ENM_LINK);
    return SetWindowSubclass(window_, Subclass, 0, reinterpret_cast<DWORD_PTR>(this)) != FALSE;
}

void HelpTextView::SetDpi(UINT dpi) {
    // The control itself scales to the resolution that the system had when the user logged on.
    const UINT system_dpi = GetDpiForSystem();
    const bool scales_itself = dpi == system_dpi;
    SendMessageW(window_, EM_SETZOOM, scales_itself ? 0 : dpi, scales_itself ? 0 : system_dpi);
    margin_ = MulDiv(kMargin, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI);
    FitMargins();
}

void HelpTextView::FitMargins() {
    RECT area{};
    GetClientRect(window_, &area);
    InflateRect(&area, -margin_, -margin_ / 2);
    SendMessageW(window_, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&area));
}

void HelpTextView::Show(const HelpTopic& topic, std::optional<std::size_t> block) {
    shown_ = MakeHelpRtf(topic);
    SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    Load(shown_.rtf);
    MarkLinks();
    if (block && *block < shown_.block_starts.size()) {
        MarkBlock(*block);
    } else {
        Select(0, 0);
        ScrollTo(0);
    }
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(window_, nullptr, nullptr, RDW_ERASE | RDW_FRAME | RDW_INVALIDATE);
}

void HelpTextView::Load(const std::string& rtf) {
    std::string_view rest = rtf;
    EDITSTREAM stream{};
    stream.dwCookie = reinterpret_cast<DWORD_PTR>(&rest);
    stream.pfnCallback = ReadRtf;
    SendMessageW(window_, EM_EXLIMITTEXT, 0, static_cast<LPARAM>(rtf.size()));
    SendMessageW(window_, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
}

void HelpTextView::MarkLinks() {
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_LINK;
    format.dwEffects = CFE_LINK;
    for (const HelpLinkRange& link : shown_.links) {
        Select(static_cast<LONG>(link.start), static_cast<LONG>(link.end));
        SendMessageW(window_, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    }
}

void HelpTextView::MarkBlock(std::size_t block) {
    const std::vector<std::size_t>& starts = shown_.block_starts;
    const auto start = static_cast<LONG>(starts[block]);
    const auto end = block + 1 < starts.size()
                         ? static_cast<LONG>(starts[block + 1])
                         : static_cast<LONG>(SendMessageW(window_, WM_GETTEXTLENGTH, 0, 0));
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_BACKCOLOR;
    format.crBackColor = MarkColor();
    Select(start, end);
    SendMessageW(window_, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    ScrollTo(start);
    Select(start, start);
}

LONG HelpTextView::ScrollPosition() const {
    POINTL corner{margin_, margin_ / 2};
    return static_cast<LONG>(
        SendMessageW(window_, EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&corner)));
}

void HelpTextView::ScrollTo(LONG position) {
    POINTL place{};
    POINT scroll{};
    SendMessageW(window_, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), position);
    SendMessageW(window_, EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scroll));
    scroll.y = std::max<LONG>(scroll.y + place.y - margin_ / 2, 0);
    SendMessageW(window_, EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scroll));
}

void HelpTextView::Select(LONG start, LONG end) {
    CHARRANGE range{start, end};
    SendMessageW(window_, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

CHARRANGE HelpTextView::Selection() const {
    CHARRANGE range{};
    SendMessageW(window_, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return range;
}

// The link behind the selection, or the one before it; nullptr when there is none.
const HelpLinkRange* HelpTextView::NeighbourLink(bool backwards) const {
    const CHARRANGE selection = Selection();
    const auto start = static_cast<std::size_t>(selection.cpMin);
    const auto end = static_cast<std::size_t>(selection.cpMax);
    const std::vector<HelpLinkRange>& links = shown_.links;
    if (backwards) {
        const auto link = std::find_if(links.rbegin(), links.rend(),
                                       [&](const auto& range) { return range.end <= start; });
        return link == links.rend() ? nullptr : &*link;
    }
    const auto link = std::find_if(links.begin(), links.end(),
                                   [&](const auto& range) { return range.start >= end; });
    return link == links.end() ? nullptr : &*link;
}

std::optional<unsigned long> HelpTextView::SelectedLink() const {
    return LinkAt(shown_, static_cast<std::size_t>(Selection().cpMin));
}

void HelpTextView::Follow(unsigned long context) const {
    // The text must not change while the control is still busy with the click.
    PostMessageW(GetParent(window_), kFollowLink, 0, static_cast<LPARAM>(context));
}

void HelpTextView::OnLink(const ENLINK& link) {
    const CHARRANGE selection = Selection();
    // A selection that ends over a link is no click.
    if (link.msg != WM_LBUTTONUP || selection.cpMin != selection.cpMax) return;
    const auto context = LinkAt(shown_, static_cast<std::size_t>(link.chrg.cpMin));
    if (context) Follow(*context);
}

// True for the keys that move among the links; the others are for moving among the controls.
bool HelpTextView::TakesKey(const MSG& message) const {
    if (message.message != WM_KEYDOWN) return false;
    if (message.wParam == VK_TAB) return NeighbourLink(IsDown(VK_SHIFT)) != nullptr;
    return message.wParam == VK_RETURN && SelectedLink();
}

bool HelpTextView::OnKey(WPARAM key) {
    if (key == VK_RETURN) {
        if (const auto context = SelectedLink()) Follow(*context);
        return true;
    }
    if (key == VK_TAB) {
        if (const HelpLinkRange* link = NeighbourLink(IsDown(VK_SHIFT))) {
            Select(static_cast<LONG>(link->start), static_cast<LONG>(link->end));
            SendMessageW(window_, EM_SCROLLCARET, 0, 0);
        }
        return true;
    }
    // With Shift they select.
    const auto* scroll = std::find_if(std::begin(kScrollKeys), std::end(kScrollKeys),
                                      [key](const ScrollKey& row) { return row.key == key; });
    if (scroll == std::end(kScrollKeys) || IsDown(VK_SHIFT)) return false;
    SendMessageW(window_, WM_VSCROLL, scroll->request, 0);
    return true;
}

LRESULT CALLBACK HelpTextView::Subclass(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR id, DWORD_PTR self) {
    auto& view = *reinterpret_cast<HelpTextView*>(self);
    switch (message) {
        case WM_GETDLGCODE: {
            const auto* key = reinterpret_cast<const MSG*>(lparam);
            const bool takes_key = key && view.TakesKey(*key);
            return DLGC_WANTARROWS | DLGC_WANTCHARS | (takes_key ? DLGC_WANTMESSAGE : 0);
        }
        case WM_KEYDOWN:
            if (view.OnKey(wparam)) return 0;
            break;
        case WM_CHAR:
            if (wparam == L'\t' || wparam == L'\r') return 0;
            break;
        case WM_SIZE: {
            const LRESULT result = DefSubclassProc(window, message, wparam, lparam);
            view.FitMargins();
            return result;
        }
        case WM_PAINT:
        case WM_SETFOCUS: {
            const LRESULT result = DefSubclassProc(window, message, wparam, lparam);
            HideCaret(window);
            return result;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, Subclass, id);
            view.window_ = nullptr;
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wparam, lparam);
}

}  // namespace tonvale
