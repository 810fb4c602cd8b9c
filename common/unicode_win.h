// Text at the edge between the UTF-8 core and the wide functions of Windows.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tonvale {

std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view wide);

// The text of a window or control, whatever its length.
std::string WindowText(HWND window);
void SetWindowTextUtf8(HWND window, std::string_view text);

}  // namespace tonvale
