#include "report/report_format_win.h"

#include <commdlg.h>
#include <dlgs.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <utility>

#include "common/unicode_win.h"
#include "report/rtf/rich_text.h"

namespace tonvale {

namespace {

constexpr wchar_t kDefaultFace[] = L"Arial";
constexpr LONG kDefaultSize = 200;  // twips
constexpr LONG kRise = 50;          // twips, of raised and lowered text
constexpr LONG kTabDistance = 1000;
constexpr int kTabCount = 8;
// Between a height of the font dialog and a size in twips: the program's own scale.
constexpr LONG kTwipsPerHeight = 10;

constexpr std::array<std::pair<Alignment, WORD>, 3> kAlignments = {
    {{Alignment::kLeft, PFA_LEFT},
     {Alignment::kCenter, PFA_CENTER},
     {Alignment::kRight, PFA_RIGHT}}};

bool IsSet(const CHARFORMAT2W& format, DWORD effect) {
    return (format.dwMask & format.dwEffects & effect) != 0;
}

// Above 0 for raised text, however it was raised, below 0 for lowered text.
LONG Offset(const CHARFORMAT2W& format) {
    if (IsSet(format, CFE_SUPERSCRIPT)) return kRise;
    if (IsSet(format, CFE_SUBSCRIPT)) return -kRise;
    return (format.dwMask & CFM_OFFSET) != 0 ? format.yOffset : 0;
}

bool HasBullets(const PARAFORMAT& format) {
    return (format.dwMask & PFM_NUMBERING) != 0 && format.wNumbering == PFN_BULLET;
}

void ToggleEffect(RichEdit& edit, DWORD effect) {
    CHARFORMAT2W format{};
    format.dwMask = effect;
    format.dwEffects = IsSet(edit.CharacterFormat(), effect) ? 0 : effect;
    edit.SetCharacterFormat(format);
}

void SetOffset(RichEdit& edit, LONG offset) {
    CHARFORMAT2W format{};
    // The effects go: a text from elsewhere may have been raised by one.
    format.dwMask = CFM_OFFSET | CFM_SIZE | CFM_SUPERSCRIPT;
    format.yOffset = offset;
    format.yHeight = kDefaultSize - std::abs(offset);
    edit.SetCharacterFormat(format);
}

// What the font dialog starts with, from the format of the selection.
LOGFONTW InitialFont(const CHARFORMAT2W& format) {
    LOGFONTW font{};
    font.lfHeight = -(format.yHeight / kTwipsPerHeight);
    font.lfWeight = IsSet(format, CFE_BOLD) ? FW_BOLD : FW_NORMAL;
    font.lfItalic = IsSet(format, CFE_ITALIC);
    font.lfUnderline = IsSet(format, CFE_UNDERLINE);
    font.lfStrikeOut = IsSet(format, CFE_STRIKEOUT);
    font.lfCharSet = DEFAULT_CHARSET;
    std::copy_n(format.szFaceName, LF_FACESIZE, font.lfFaceName);
    return font;
}

// The fields of the font dialog.
struct FontField {
    int control;
    bool is_check_box;
    DWORD attributes;  // that it stands for
    DWORD empty_flag;  // of CHOOSEFONT; 0 where there is none
};
constexpr std::array<FontField, 6> kFontFields = {
    {{cmb1, false, CFM_FACE, CF_NOFACESEL},
     {cmb2, false, CFM_BOLD | CFM_ITALIC, CF_NOSTYLESEL},
     {cmb3, false, CFM_SIZE, CF_NOSIZESEL},
     {cmb4, false, CFM_COLOR, 0},
     {chx1, true, CFM_STRIKEOUT, 0},
     {chx2, true, CFM_UNDERLINE, 0}}};
constexpr wchar_t kChoiceProperty[] = L"Tonvale font choice";

struct FieldState {
    std::string text;
    LRESULT check = BST_UNCHECKED;
    bool operator==(const FieldState&) const = default;
};

// What the user chooses in the font dialog: not what stands in fields that stay as they were. The
// dialog rounds sizes and knows no automatic colour, so that to set these would change them.
struct FontChoice {
    DWORD same_all_over = 0;  // attributes
    DWORD chosen = 0;         // attributes
    std::array<FieldState, kFontFields.size()> first_states;
};

bool IsMixed(const FontField& field, DWORD same_all_over) {
    return (same_all_over & field.attributes) != field.attributes;
}

DWORD EmptyFields(DWORD same_all_over) {
    DWORD flags = 0;
    for (const FontField& field : kFontFields) {
        if (IsMixed(field, same_all_over)) flags |= field.empty_flag;
    }
    return flags;
}

// Not every system's dialog leaves fields empty by itself.
void MakeEmpty(HWND dialog, const FontField& field) {
    if (field.is_check_box) {
        SendDlgItemMessageW(dialog, field.control, BM_SETSTYLE, BS_AUTO3STATE, TRUE);
        CheckDlgButton(dialog, field.control, BST_INDETERMINATE);
    } else {
        SendDlgItemMessageW(dialog, field.control, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        SetDlgItemTextW(dialog, field.control, L"");
    }
}

FieldState StateOf(HWND dialog, const FontField& field) {
    HWND control = GetDlgItem(dialog, field.control);
    return {WindowText(control), field.is_check_box ? SendMessageW(control, BM_GETCHECK, 0, 0) : 0};
}

void StartFontChoice(HWND dialog, FontChoice& choice) {
    for (std::size_t i = 0; i < kFontFields.size(); ++i) {
        const FontField& field = kFontFields.at(i);
        if (IsMixed(field, choice.same_all_over)) MakeEmpty(dialog, field);
        choice.first_states.at(i) = StateOf(dialog, field);
    }
}

void EndFontChoice(HWND dialog, FontChoice& choice) {
    choice.chosen = 0;
    for (std::size_t i = 0; i < kFontFields.size(); ++i) {
        const FontField& field = kFontFields.at(i);
        const FieldState state = StateOf(dialog, field);
        const bool is_chosen = !state.text.empty() && state != choice.first_states.at(i);
        if (is_chosen) choice.chosen |= field.attributes;
    }
    if ((choice.chosen & CFM_FACE) != 0) choice.chosen |= CFM_CHARSET;
}

// Of the font dialog, whose lCustData points to the FontChoice.
UINT_PTR CALLBACK FontHook(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        const auto& request = *reinterpret_cast<const CHOOSEFONTW*>(lparam);
        SetPropW(dialog, kChoiceProperty, reinterpret_cast<HANDLE>(request.lCustData));
        StartFontChoice(dialog, *reinterpret_cast<FontChoice*>(request.lCustData));
    }
    if (message == WM_COMMAND && LOWORD(wparam) == IDOK) {
        EndFontChoice(dialog, *static_cast<FontChoice*>(GetPropW(dialog, kChoiceProperty)));
    }
    if (message == WM_DESTROY) RemovePropW(dialog, kChoiceProperty);
    return 0;
}

CHARFORMAT2W FormatOf(const CHOOSEFONTW& chosen) {
    const LOGFONTW& font = *chosen.lpLogFont;
    CHARFORMAT2W format{};
    format.yHeight = -kTwipsPerHeight * font.lfHeight;
    format.crTextColor = chosen.rgbColors;
    if (chosen.nFontType & BOLD_FONTTYPE) format.dwEffects |= CFE_BOLD;
    if (chosen.nFontType & ITALIC_FONTTYPE) format.dwEffects |= CFE_ITALIC;
    if (font.lfUnderline) format.dwEffects |= CFE_UNDERLINE;
    if (font.lfStrikeOut) format.dwEffects |= CFE_STRIKEOUT;
    format.bCharSet = font.lfCharSet;
    std::copy_n(font.lfFaceName, LF_FACESIZE, format.szFaceName);
    return format;
}

}  // namespace

FormatState ReadFormatState(const RichEdit& edit) {
    const CHARFORMAT2W text = edit.CharacterFormat();
    const PARAFORMAT paragraph = edit.ParagraphFormat();
    FormatState state;
    state.bold = IsSet(text, CFE_BOLD);
    state.italic = IsSet(text, CFE_ITALIC);
    state.underline = IsSet(text, CFE_UNDERLINE);
    state.superscript = Offset(text) > 0;
    state.subscript = Offset(text) < 0;
    state.bullets = HasBullets(paragraph);
    for (const auto& [alignment, value] : kAlignments) {
        const bool is_same_all_over = (paragraph.dwMask & PFM_ALIGNMENT) != 0;
        if (is_same_all_over && paragraph.wAlignment == value) state.alignment = alignment;
    }
    return state;
}

void SetDefaultFormats(RichEdit& edit) {
    CHARFORMAT2W text{};
    text.dwMask = CFM_FACE | CFM_SIZE | CFM_COLOR | CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE |
                  CFM_STRIKEOUT | CFM_OFFSET | CFM_SUPERSCRIPT | CFM_LCID;
    text.dwEffects = CFE_AUTOCOLOR;
    text.lcid = kItalian;
    text.yHeight = kDefaultSize;
    std::copy(std::begin(kDefaultFace), std::end(kDefaultFace), text.szFaceName);
    edit.SetCharacterFormat(text, SCF_DEFAULT);
    edit.SetCharacterFormat(text, SCF_ALL);

    PARAFORMAT paragraph{};
    paragraph.dwMask = PFM_ALIGNMENT | PFM_NUMBERING | PFM_STARTINDENT | PFM_RIGHTINDENT |
                       PFM_OFFSET | PFM_TABSTOPS;
    paragraph.wAlignment = PFA_LEFT;
    paragraph.cTabCount = kTabCount;
    for (int i = 0; i < kTabCount; ++i) paragraph.rgxTabs[i] = i * kTabDistance;
    edit.SetParagraphFormat(paragraph);
}

void ToggleBold(RichEdit& edit) {
    ToggleEffect(edit, CFE_BOLD);
}

void ToggleItalic(RichEdit& edit) {
    ToggleEffect(edit, CFE_ITALIC);
}

void ToggleUnderline(RichEdit& edit) {
    ToggleEffect(edit, CFE_UNDERLINE);
}

void ToggleSuperscript(RichEdit& edit) {
    SetOffset(edit, Offset(edit.CharacterFormat()) > 0 ? 0 : kRise);
}

void ToggleSubscript(RichEdit& edit) {
    SetOffset(edit, Offset(edit.CharacterFormat()) < 0 ? 0 : -kRise);
}

void ToggleBullets(RichEdit& edit) {
    PARAFORMAT format{};
    format.dwMask = PFM_NUMBERING;
    format.wNumbering = HasBullets(edit.ParagraphFormat()) ? WORD{0} : WORD{PFN_BULLET};
    edit.SetParagraphFormat(format);
    edit.SetModified(true);  // not every control does
}

void SetAlignment(RichEdit& edit, Alignment alignment) {
    PARAFORMAT format{};
    format.dwMask = PFM_ALIGNMENT;
    format.wAlignment = kAlignments.at(static_cast<std::size_t>(alignment)).second;
    edit.SetParagraphFormat(format);
    edit.SetModified(true);
}

void SetTextColor(RichEdit& edit, COLORREF color) {
    CHARFORMAT2W format{};
    format.dwMask = CFM_COLOR;
    format.crTextColor = color;
    edit.SetCharacterFormat(format);
}

void SetAutomaticColor(RichEdit& edit) {
    CHARFORMAT2W format{};
    format.dwMask = CFM_COLOR;
    format.dwEffects = CFE_AUTOCOLOR;
    edit.SetCharacterFormat(format);
}

void ChooseTextFont(RichEdit& edit, HWND owner) {
    const CHARFORMAT2W format = edit.CharacterFormat();
    LOGFONTW font = InitialFont(format);
    CHOOSEFONTW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = owner;
    dialog.lpLogFont = &font;
    FontChoice choice;
    choice.same_all_over = format.dwMask;
    dialog.lpfnHook = FontHook;
    dialog.lCustData = reinterpret_cast<LPARAM>(&choice);
    dialog.Flags = CF_SCREENFONTS | CF_NOVERTFONTS | CF_NOSCRIPTSEL | CF_FORCEFONTEXIST |
                   CF_EFFECTS | CF_ENABLEHOOK | CF_INITTOLOGFONTSTRUCT | EmptyFields(format.dwMask);
    const bool has_color = (format.dwEffects & CFE_AUTOCOLOR) == 0;
    dialog.rgbColors = has_color ? format.crTextColor : GetSysColor(COLOR_WINDOWTEXT);
    if (!ChooseFontW(&dialog)) return;
    CHARFORMAT2W chosen = FormatOf(dialog);
    chosen.dwMask = choice.chosen;
    edit.SetCharacterFormat(chosen);
}

}  // namespace tonvale
