#include "dialogs/clipboard_win.h"

#include <array>
#include <cstring>

#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/dialog_win.h"
#include "dialogs/handles_win.h"

namespace tonvale {

namespace {

constexpr int kAttempts = 10;
constexpr DWORD kWaitMs = 20;

}  // namespace

OpenedClipboard::OpenedClipboard(HWND owner) {
    for (int attempt = 0; attempt < kAttempts && !open_; ++attempt) {
        if (attempt > 0) Sleep(kWaitMs);
        open_ = OpenClipboard(owner);
    }
    if (open_) EmptyClipboard();
}

OpenedClipboard::~OpenedClipboard() {
    if (open_) CloseClipboard();
}

bool OpenedClipboard::Put(UINT format, std::string_view bytes) {
    UniqueGlobal memory(GlobalAlloc(GMEM_MOVEABLE, bytes.size()));
    void* content = memory ? GlobalLock(memory.get()) : nullptr;
    if (!content) return false;
    std::memcpy(content, bytes.data(), bytes.size());
    GlobalUnlock(memory.get());
    if (!SetClipboardData(format, memory.get())) return false;
    // The system owns it from now on.
    static_cast<void>(memory.release());
    return true;
}

bool OpenedClipboard::PutPicture(UniqueBitmap picture) {
    if (!SetClipboardData(CF_BITMAP, picture.get())) return false;
    static_cast<void>(picture.release());
    return true;
}

bool PutCsvText(HWND owner, UINT csv_format, std::string_view text) {
    const std::string csv = Utf8ToWindows1252Lossy(text) + '\0';
    const std::string plain = Utf8ToUtf16Le(text) + std::string(sizeof(wchar_t), '\0');
    OpenedClipboard clipboard(owner);
    return clipboard && clipboard.Put(csv_format, csv) && clipboard.Put(CF_UNICODETEXT, plain);
}

void CopyCsvText(const AppContext& app, HWND owner, std::string_view text) {
    if (!PutCsvText(owner, app.clipboard.csv, text)) ShowCopyFailure(owner);
}

void ShowCopyFailure(HWND owner) {
    ShowMessageBox(
        owner, {"Attenzione:", "Impossibile copiare negli appunti!", MessageIcon::kExclamation});
}

std::string ListSeparator() {
    std::array<wchar_t, 8> separator{};
    const int units = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SLIST, separator.data(),
                                      static_cast<int>(separator.size()));
    const std::string text = units > 0 ? Narrow(separator.data()) : std::string();
    return text.empty() || text == "," ? ";" : text;
}

}  // namespace tonvale
