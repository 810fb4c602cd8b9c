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

// The fields that start empty: what is not the same all over the selection.
DWORD EmptyFields(const CHARFORMAT2W& format) {
    constexpr DWORD kStyle = CFM_BOLD | CFM_ITALIC;
    DWORD flags = 0;
    if ((format.dwMask & CFM_FACE) == 0) flags |= CF_NOFACESEL;
    if ((format.dwMask & CFM_SIZE) == 0) flags |= CF_NOSIZESEL;
    if ((format.dwMask & kStyle) != kStyle) flags |= CF_NOSTYLESEL;
    return flags;
}

// The fields of the font dialog.
struct FontField {
    DWORD flag;  // of CHOOSEFONT: starts empty
    int control;
    DWORD attributes;  // that it stands for
};
constexpr std::array<FontField, 3> kFontFields = {{{CF_NOFACESEL, cmb1, CFM_FACE | CFM_CHARSET},
                                                   {CF_NOSTYLESEL, cmb2, CFM_BOLD | CFM_ITALIC},
                                                   {CF_NOSIZESEL, cmb3, CFM_SIZE}}};
constexpr wchar_t kChoiceProperty[] = L"Tonvale font choice";

// What the user chooses in the font dialog: not what stands in fields that stay as they were. The
// dialog rounds sizes, so that to set these would change them.
struct FontChoice {
    DWORD attributes = CFM_FACE | CFM_SIZE | CFM_COLOR | CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE |
                       CFM_STRIKEOUT | CFM_CHARSET;
    std::array<std::string, kFontFields.size()> first_texts;
};

// Not every system's dialog leaves the fields empty by itself.
void EmptyMixedFields(HWND dialog, DWORD flags) {
    for (const FontField& field : kFontFields) {
        if ((flags & field.flag) == 0) continue;
        SendDlgItemMessageW(dialog, field.control, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        SetDlgItemTextW(dialog, field.control, L"");
    }
}

std::string FieldText(HWND dialog, const FontField& field) {
    return WindowText(GetDlgItem(dialog, field.control));
}

void NoteFirstTexts(HWND dialog, FontChoice& choice) {
    for (std::size_t i = 0; i < kFontFields.size(); ++i) {
        choice.first_texts.at(i) = FieldText(dialog, kFontFields.at(i));
    }
}

void LeaveOutWhatIsNotChosen(HWND dialog, FontChoice& choice) {
    for (std::size_t i = 0; i < kFontFields.size(); ++i) {
        const std::string text = FieldText(dialog, kFontFields.at(i));
        const bool is_chosen = !text.empty() && text != choice.first_texts.at(i);
        if (!is_chosen) choice.attributes &= ~kFontFields.at(i).attributes;
    }
}

// Of the font dialog, whose lCustData points to the FontChoice.
UINT_PTR CALLBACK FontHook(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        const auto& request = *reinterpret_cast<const CHOOSEFONTW*>(lparam);
        SetPropW(dialog, kChoiceProperty, reinterpret_cast<HANDLE>(request.lCustData));
        EmptyMixedFields(dialog, request.Flags);
        NoteFirstTexts(dialog, *reinterpret_cast<FontChoice*>(request.lCustData));
    }
    if (message == WM_COMMAND && LOWORD(wparam) == IDOK) {
        LeaveOutWhatIsNotChosen(dialog,
                                *static_cast<FontChoice*>(GetPropW(dialog, kChoiceProperty)));
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
    dialog.lpfnHook = FontHook;
    dialog.lCustData = reinterpret_cast<LPARAM>(&choice);
    dialog.Flags = CF_SCREENFONTS | CF_NOVERTFONTS | CF_NOSCRIPTSEL | CF_FORCEFONTEXIST |
                   CF_EFFECTS | CF_ENABLEHOOK | CF_INITTOLOGFONTSTRUCT | EmptyFields(format);
    const bool has_color = (format.dwEffects & CFE_AUTOCOLOR) == 0;
    dialog.rgbColors = has_color ? format.crTextColor : GetSysColor(COLOR_WINDOWTEXT);
    if (!ChooseFontW(&dialog)) return;
    CHARFORMAT2W chosen = FormatOf(dialog);
    chosen.dwMask = choice.attributes;
    edit.SetCharacterFormat(chosen);
}

}  // namespace tonvale
