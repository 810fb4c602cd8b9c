#include "report/rich_edit/code_pages_win.h"

#include <windows.h>

#include "common/text.h"
#include "common/unicode_win.h"

namespace tonvale {

std::string DecodeCodePage(std::string_view bytes, int code_page) {
    const auto page = static_cast<UINT>(code_page);
    const auto size = static_cast<int>(bytes.size());
    const int count = MultiByteToWideChar(page, 0, bytes.data(), size, nullptr, 0);
    if (count <= 0) return Windows1252ToUtf8(bytes);
    std::wstring wide(static_cast<std::size_t>(count), L'\0');
    MultiByteToWideChar(page, 0, bytes.data(), size, wide.data(), count);
    return Narrow(wide);
}

}  // namespace tonvale
