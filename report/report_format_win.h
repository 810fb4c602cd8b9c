// The formats of the report's text and paragraphs: what the formatting commands do to the
// selection, and what is shown of it.
#pragma once

#include <optional>

#include "dialogs/app_context_win.h"
#include "report/rich_edit/rich_edit_win.h"

namespace tonvale {

enum class Alignment { kLeft, kCenter, kRight };

// What the buttons and menu items show of the selection. A mixed attribute counts as not set.
struct FormatState {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool superscript = false;
    bool subscript = false;
    bool bullets = false;
    std::optional<Alignment> alignment;
};

FormatState ReadFormatState(const RichEdit& edit);

// Italian text in Arial 10 pt in the automatic colour, and a tab stop every 1000 twips, for the
// whole text and for what will be typed.
void SetDefaultFormats(RichEdit& edit);

void ToggleBold(RichEdit& edit);
void ToggleItalic(RichEdit& edit);
void ToggleUnderline(RichEdit& edit);
// Raises the text by 50 twips, or puts it back on its line when it is raised; likewise lowers it.
// Either sets its size too: 10 pt on the line, 7.5 pt off it.
void ToggleSuperscript(RichEdit& edit);
void ToggleSubscript(RichEdit& edit);
void ToggleBullets(RichEdit& edit);
void SetAlignment(RichEdit& edit, Alignment alignment);
void SetTextColor(RichEdit& edit, COLORREF color);
void SetAutomaticColor(RichEdit& edit);

// Lets the user choose the font in the system's dialog.
void ChooseTextFont(RichEdit& edit, HWND owner);

}  // namespace tonvale
