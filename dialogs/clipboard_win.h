// Putting texts and pictures on the clipboard.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "dialogs/app_context_win.h"
#include "dialogs/handles_win.h"

namespace tonvale {

// The clipboard, open and empty. Another program may hold it for a moment: it is tried again for
// a fifth of a second.
class OpenedClipboard {
  public:
    explicit OpenedClipboard(HWND owner);
    ~OpenedClipboard();
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    explicit operator bool() const { return open_; }

    // The bytes become the clipboard's content in this format, beside what is there in others.
    bool Put(UINT format, std::string_view bytes);
    // The clipboard takes the picture over.
    bool PutPicture(UniqueBitmap picture);

  private:
    bool open_ = false;
};

// Puts `text` (UTF-8) on the clipboard: as "Csv" in Windows-1252, with a NUL at its end, and as
// plain text for programs that do not know that format. False when the clipboard cannot be had.
bool PutCsvText(HWND owner, UINT csv_format, std::string_view text);

// The same, and tells the user when it fails.
void CopyCsvText(const AppContext& app, HWND owner, std::string_view text);

// Tells the user that nothing could be copied.
void ShowCopyFailure(HWND owner);

// The list separator of the user's locale, at most 7 characters; ";" in place of a comma, which is
// the decimal sign of the numbers that it would part.
std::string ListSeparator();

}  // namespace tonvale
