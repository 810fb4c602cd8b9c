#include "dialogs/numeric_fields_win.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "resources/resource.h"

namespace tonvale {

namespace {

struct IdRange {
    int first;
    int last;
};

// The fields that take digits, one point and backspace.
constexpr IdRange kNumericFields[] = {
    {IDC_LEFT_LOSS, IDC_LEFT_LOSS},
    {IDC_RIGHT_LOSS, IDC_RIGHT_LOSS},
    {IDC_NOISE_C_LEVEL, IDC_NOISE_C_LEVEL},
    {IDC_NOISE_A_LEVEL, IDC_NOISE_A_LEVEL},
    {IDC_RATING_H, IDC_RATING_SNR},
    {IDC_A_WEIGHTED_LEVEL, IDC_C_WEIGHTED_LEVEL},
    {IDC_DAILY_LEVEL, IDC_DAILY_LEVEL},
    {IDC_LEVEL_EDIT, IDC_LEVEL_EDIT},
    {IDC_TIME_EDIT, IDC_DURATION_ERROR},
    {IDC_EXPOSURE_YEARS, IDC_AGE},
    {IDC_BAND_FIRST, IDC_PROTECTOR_BAND_LAST},
    {IDC_FIXED_VALUE, IDC_FIXED_VALUE},
    {IDC_INSTRUMENT_ERROR, IDC_INSTRUMENT_ERROR},
    {IDC_SAMPLED_TOTAL_TIME, IDC_LEVEL_ERROR},
    {IDC_ERROR_PERCENT, IDC_ERROR_PERCENT},
    {IDC_ERROR_MINIMUM, IDC_ERROR_MINIMUM},
};
// The field that takes any number of points.
constexpr int kRelaxedField = IDC_TOTAL_WORKERS;

bool IsNumericField(int id) {
    return std::any_of(
        std::begin(kNumericFields), std::end(kNumericFields),
        [id](const IdRange& range) { return id >= range.first && id <= range.last; });
}

bool HasClass(HWND window, const wchar_t* name) {
    std::array<wchar_t, 64> class_name{};
    GetClassNameW(window, class_name.data(), static_cast<int>(class_name.size()));
    return lstrcmpiW(class_name.data(), name) == 0;
}

// The identifier of an edit control, or of the combo box that it is a part of.
int FieldOf(HWND edit) {
    HWND parent = GetParent(edit);
    return GetDlgCtrlID(HasClass(parent, L"COMBOBOX") ? parent : edit);
}

bool HoldsPoint(HWND field) {
    std::array<wchar_t, 16> text{};
    const int length = GetWindowTextW(field, text.data(), static_cast<int>(text.size()));
    const std::wstring_view shown(text.data(), static_cast<std::size_t>(length));
    return shown.find(L'.') != std::wstring_view::npos;
}

bool IsDiscarded(const MSG& message) {
    if (message.message != WM_CHAR || !HasClass(message.hwnd, L"EDIT")) return false;
    const int id = FieldOf(message.hwnd);
    const bool relaxed = id == kRelaxedField;
    if (!relaxed && !IsNumericField(id)) return false;
    const WPARAM character = message.wParam;
    if ((character >= L'0' && character <= L'9') || character == L'\b') return false;
    if (character == L'.') return !relaxed && HoldsPoint(message.hwnd);
    return true;
}

LRESULT CALLBACK FilterKeystroke(int code, WPARAM wparam, LPARAM lparam) {
    if (code == MSGF_DIALOGBOX && IsDiscarded(*reinterpret_cast<const MSG*>(lparam))) return TRUE;
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

}  // namespace

NumericKeystrokeFilter::NumericKeystrokeFilter()
    : hook_(SetWindowsHookExW(WH_MSGFILTER, FilterKeystroke, nullptr, GetCurrentThreadId())) {}

NumericKeystrokeFilter::~NumericKeystrokeFilter() {
    if (hook_) UnhookWindowsHookEx(hook_);
}

}  // namespace tonvale
