// Dialog templates as they are laid out at every scale, and whether a text fits its control.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace tonvale {

inline constexpr int kScales[] = {96, 120, 144, 192};  // dots per inch

enum class ControlKind { kText, kPushButton, kCheckBox, kRadioButton, kGroupBox, kField, kOther };

inline HINSTANCE Instance() {
    return GetModuleHandleW(nullptr);
}

ControlKind KindOf(HWND control);
std::wstring ClassOf(HWND control);  // in upper case
DWORD StyleOf(HWND control);
std::wstring TextOfWindow(HWND window);
// As the control itself will be, once its dialog is shown.
bool IsShown(HWND control);
std::string Describe(HWND control);

// The dialog of a template as it is laid out at a scale, hidden and without its procedure. What a
// scale changes is the font, in which all of a template is measured: a larger font at the
// resolution of this system is the same font at a higher resolution.
class TemplateDialog {
  public:
    // A number is named "#107".
    TemplateDialog(const std::wstring& name, int dpi);
    ~TemplateDialog();
    TemplateDialog(const TemplateDialog&) = delete;
    TemplateDialog& operator=(const TemplateDialog&) = delete;

    HWND window() const { return window_; }
    const std::string& name() const { return name_; }
    // In the order of the template.
    std::vector<HWND> Controls() const;
    RECT AreaOf(HWND control) const;

  private:
    std::string name_;
    HWND window_ = nullptr;
};

// `share`: which part of the control's width the text has.
void ExpectTextFits(HWND control, const std::wstring& text, double share, int dpi);

}  // namespace tonvale
