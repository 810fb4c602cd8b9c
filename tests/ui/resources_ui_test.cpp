// What holds for every dialog template, menu and accelerator of the program, those to come
// included: keyboard access, texts that fit, names for those who do not see the screen.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/handles_win.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

constexpr int kScales[] = {96, 120, 144, 192};  // dots per inch

// Texts that come into their controls at run time: the longest of each. A list's column titles
// have an equal share of its width.
struct RunTimeText {
    std::string_view dialog;
    int control;
    int columns;
    const wchar_t* text;
};
constexpr RunTimeText kRunTimeTexts[] = {
    {"LEPD", IDC_ITEM_LIST, 2, L"Livelli equivalenti"},
    {"LEPD", IDC_ITEM_LIST, 2, L"Tempi esposizione"},
    {"LEPD", IDC_TIME_UNIT, 1, L"secondi"},
    {"LEPD", IDC_TOTAL_TIME_LABEL, 1, L"Tempo esposizione (m):"},
    {"LEPD", IDC_EQUIVALENT_LEVEL, 1, L"-100.0"},
    {"LEPD", IDC_TOTAL_TIME, 1, L"1000000.00"},
    {"LEPD", IDC_DAILY_LEVEL, 1, L"-100.0"},
    {"ADD_LEPD", IDC_TIME_LABEL, 1, L"Esposizione (m):"},
    {"ADD_LEPD", IDOK, 1, L"Modifica"},
    {"LEPW", IDC_ITEM_LIST, 2, L"Mercoledi"},
    {"LEPW", IDC_ITEM_LIST, 3, L"Lep,d"},
    {"LEPW", IDC_WEEKLY_LEVEL, 1, L"-100.0"},
    {"EDIT_LEPW", IDC_DAY_NAME, 1, L"Mercoledi"},
};

// Access keys that several commands share, because their texts are fixed: the key goes from one to
// the next.
constexpr std::string_view kMenuWithSharedKeys = "FORMATO";
constexpr std::wstring_view kSharedKeys = L"CDS";

// Names of colours, which have no access keys.
constexpr std::string_view kMenuWithoutKeys = "COLORI";

HINSTANCE Instance() {
    return GetModuleHandleW(nullptr);
}

std::vector<std::wstring> ResourceNames(LPCWSTR type) {
    std::vector<std::wstring> names;
    const auto collect = [](HMODULE, LPCWSTR, LPWSTR name, LONG_PTR to) -> BOOL {
        auto& all = *reinterpret_cast<std::vector<std::wstring>*>(to);
        all.push_back(IS_INTRESOURCE(name)
                          ? L"#" + std::to_wstring(reinterpret_cast<ULONG_PTR>(name))
                          : std::wstring(name));
        return TRUE;
    };
    EnumResourceNamesW(Instance(), type, collect, reinterpret_cast<LONG_PTR>(&names));
    return names;
}

std::wstring TextOfWindow(HWND window) {
    return Widen(WindowText(window));
}

// The upper-case letter after the "&"; 0 when there is none.
wchar_t AccessKey(const std::wstring& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'&') continue;
        if (text[i + 1] != L'&') return static_cast<wchar_t>(std::towupper(text[i + 1]));
        ++i;
    }
    return 0;
}

// The access keys of one dialog or menu level, and the texts that hold them.
using KeyRing = std::map<wchar_t, std::wstring>;

void AddKey(KeyRing& keys, const std::string& owner, const std::wstring& text) {
    const wchar_t key = AccessKey(text);
    if (!key || (owner == kMenuWithSharedKeys && kSharedKeys.find(key) != kSharedKeys.npos)) return;
    const auto [holder, is_new] = keys.emplace(key, text);
    EXPECT_TRUE(is_new) << owner << ": \"" << Narrow(text) << "\" and \"" << Narrow(holder->second)
                        << "\" have the same access key";
}

struct MenuItem {
    int id;  // of a submenu: -1
    std::wstring text;
    HMENU submenu;
};

// All items but separators.
std::vector<MenuItem> ItemsOf(HMENU menu) {
    std::vector<MenuItem> items;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t text[64] = {};
        GetMenuStringW(menu, static_cast<UINT>(i), text, static_cast<int>(std::size(text)),
                       MF_BYPOSITION);
        if (!*text) continue;
        items.push_back({static_cast<int>(GetMenuItemID(menu, i)), text, GetSubMenu(menu, i)});
    }
    return items;
}

// ---- Dialogs

enum class ControlKind { kText, kPushButton, kCheckBox, kRadioButton, kGroupBox, kField, kOther };

std::wstring ClassOf(HWND control) {
    wchar_t name[64] = {};
    GetClassNameW(control, name, static_cast<int>(std::size(name)));
    std::transform(name, name + std::size(name), name, std::towupper);
    return name;
}

DWORD StyleOf(HWND control) {
    return static_cast<DWORD>(GetWindowLongW(control, GWL_STYLE));
}

// What the button says of itself to its dialog.
ControlKind ButtonKind(HWND button) {
    const LRESULT code = SendMessageW(button, WM_GETDLGCODE, 0, 0);
    if (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) return ControlKind::kPushButton;
    if (code & DLGC_RADIOBUTTON) return ControlKind::kRadioButton;
    return code & DLGC_STATIC ? ControlKind::kGroupBox : ControlKind::kCheckBox;
}

ControlKind KindOf(HWND control) {
    const std::wstring name = ClassOf(control);
    const DWORD style = StyleOf(control);
    if (name == L"BUTTON") return ButtonKind(control);
    if (name == L"STATIC") {
        const DWORD type = style & SS_TYPEMASK;
        const bool is_text = type <= SS_RIGHT || type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP;
        return is_text ? ControlKind::kText : ControlKind::kOther;
    }
    // What only decorates a field, or reports.
    for (const wchar_t* no_field :
         {L"MSCTLS_UPDOWN32", L"MSCTLS_PROGRESS32", L"MSCTLS_STATUSBAR32", L"TOOLBARWINDOW32"}) {
        if (name == no_field) return ControlKind::kOther;
    }
    return ControlKind::kField;
}

// As the control itself will be, once its dialog is shown.
bool IsShown(HWND control) {
    return (StyleOf(control) & WS_VISIBLE) != 0;
}

bool IsTabStop(HWND control) {
    return IsShown(control) && (StyleOf(control) & WS_TABSTOP) != 0;
}

std::string Describe(HWND control) {
    return Narrow(ClassOf(control)) + " " + std::to_string(GetDlgCtrlID(control)) + " \"" +
           WindowText(control) + "\"";
}

// The dialog of a template as it is laid out at a scale, hidden and without its procedure. What a
// scale changes is the font, in which all of a template is measured: a larger font at the
// resolution of this system is the same font at a higher resolution.
class TemplateDialog {
  public:
    TemplateDialog(const std::wstring& name, int dpi) : name_(Narrow(name)) {
        // A number is written "#107".
        const LPCWSTR id =
            name.front() == L'#' ? MAKEINTRESOURCEW(std::stoi(name.substr(1))) : name.c_str();
        HRSRC resource = FindResourceW(Instance(), id, RT_DIALOG);
        const auto* bytes =
            static_cast<const BYTE*>(LockResource(LoadResource(Instance(), resource)));
        std::vector<BYTE> copy(bytes, bytes + SizeofResource(Instance(), resource));
        copy.resize((copy.size() + 3) & ~std::size_t{3});
        Adapt(copy, dpi);
        owner_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                 Instance(), nullptr);
        window_ = CreateDialogIndirectParamW(
            Instance(), reinterpret_cast<const DLGTEMPLATE*>(copy.data()), owner_,
            [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
        EXPECT_NE(window_, nullptr) << name_ << " cannot be created";
    }
    ~TemplateDialog() {
        if (window_) DestroyWindow(window_);
        DestroyWindow(owner_);
    }
    TemplateDialog(const TemplateDialog&) = delete;
    TemplateDialog& operator=(const TemplateDialog&) = delete;

    HWND window() const { return window_; }
    const std::string& name() const { return name_; }

    // In the order of the template.
    std::vector<HWND> Controls() const {
        std::vector<HWND> controls;
        for (HWND child = window_ ? GetWindow(window_, GW_CHILD) : nullptr; child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            controls.push_back(child);
        }
        return controls;
    }

    RECT AreaOf(HWND control) const {
        RECT area{};
        GetWindowRect(control, &area);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&area), 2);
        return area;
    }

  private:
    // Hides the dialog of an extended template and sets the size of its font.
    static void Adapt(std::vector<BYTE>& bytes, int dpi) {
        auto* words = reinterpret_cast<WORD*>(bytes.data());
        constexpr std::size_t kStyle = 6, kMenu = 13;  // positions of words
        ASSERT_EQ(words[1], 0xffff) << "not an extended template";
        DWORD style = MAKELONG(words[kStyle], words[kStyle + 1]);
        ASSERT_NE(style & DS_SETFONT, 0u) << "a template without a font";
        style &= ~WS_VISIBLE;
        words[kStyle + 1] = HIWORD(style);
        WORD* field = words + kMenu;
        for (int i = 0; i < 3; ++i) {  // menu, window class, title
            if (*field == 0xffff) {
                field += 2;
            } else {
                while (*field++) {
                }
            }
        }
        const WindowDc screen(nullptr);
        *field = static_cast<WORD>(MulDiv(*field, dpi, GetDeviceCaps(screen.get(), LOGPIXELSY)));
    }

    std::string name_;
    HWND owner_ = nullptr;
    HWND window_ = nullptr;
};

void ForEachDialog(const std::function<void(const TemplateDialog&)>& check, int dpi = 96) {
    const std::vector<std::wstring> names = ResourceNames(RT_DIALOG);
    EXPECT_GE(names.size(), 3u);
    for (const std::wstring& name : names) {
        const TemplateDialog dialog(name, dpi);
        SCOPED_TRACE(dialog.name() + " at " + std::to_string(dpi) + " dpi");
        check(dialog);
    }
}

// What a text needs in the control's font; a text of several words may be broken into lines no
// wider than `width`.
SIZE RoomNeeded(HWND control, const std::wstring& text, LONG width) {
    const ControlKind kind = KindOf(control);
    const DWORD style = StyleOf(control);
    UINT format = DT_CALCRECT | DT_EXPANDTABS;
    const bool breaks_lines = kind == ControlKind::kText
                                  ? (style & SS_TYPEMASK) <= SS_RIGHT
                                  : kind != ControlKind::kGroupBox && kind != ControlKind::kField &&
                                        (style & BS_MULTILINE) != 0;
    format |= breaks_lines ? DT_WORDBREAK : DT_SINGLELINE;
    if (kind == ControlKind::kField || (kind == ControlKind::kText && (style & SS_NOPREFIX) != 0)) {
        format |= DT_NOPREFIX;
    }
    const WindowDc dc(control);
    const ScopedSelection font(dc.get(),
                               reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT area{0, 0, width, 0};
    DrawTextW(dc.get(), text.c_str(), static_cast<int>(text.size()), &area, format);
    return {area.right, area.bottom};
}

// What the control has for its text, less frames, margins, check marks and arrows, which grow with
// the scale.
SIZE RoomOffered(HWND control, int columns, int dpi) {
    constexpr std::pair<ControlKind, SIZE> kTaken[] = {
        {ControlKind::kPushButton, {8, 4}},   {ControlKind::kCheckBox, {18, 0}},
        {ControlKind::kRadioButton, {18, 0}}, {ControlKind::kGroupBox, {18, 0}},
        {ControlKind::kField, {24, 0}},
    };
    RECT area{};
    GetClientRect(control, &area);
    SIZE room{area.right / columns, area.bottom};
    for (const auto& [kind, taken] : kTaken) {
        if (kind != KindOf(control)) continue;
        room.cx -= MulDiv(taken.cx, dpi, 96);
        room.cy -= MulDiv(taken.cy, dpi, 96);
    }
    return room;
}

void ExpectTextFits(HWND control, const std::wstring& text, int columns, int dpi) {
    const SIZE offered = RoomOffered(control, columns, dpi);
    const SIZE needed = RoomNeeded(control, text, offered.cx);
    EXPECT_LE(needed.cx, offered.cx) << Describe(control) << ": " << Narrow(text);
    EXPECT_LE(needed.cy, offered.cy) << Describe(control) << ": " << Narrow(text);
}

bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

// The commands of a wizard's data file stand above its pages' fields, and come after them.
bool IsFileCommand(HWND control) {
    const int id = GetDlgCtrlID(control);
    return id == CMD_FILE_OPEN || id == CMD_FILE_SAVE || id == CMD_FILE_SAVE_AS ||
           id == IDC_WIZARD_PRINT;
}

// Reading goes to the right or downwards; a new column may start higher up.
bool ReadsOn(const RECT& from, const RECT& to) {
    return to.left >= from.right || to.top > from.top;
}

TEST(ResourcesTest, AccessKeysOfADialogAreUnique) {
    ForEachDialog([](const TemplateDialog& dialog) {
        KeyRing keys;
        // The keys of the menu bar work in the dialog as well.
        const bool has_menu = (StyleOf(dialog.window()) & WS_CHILD) == 0;
        HMENU menu = has_menu ? GetMenu(dialog.window()) : nullptr;
        for (const MenuItem& item : ItemsOf(menu)) AddKey(keys, dialog.name(), item.text);
        for (HWND control : dialog.Controls()) {
            const ControlKind kind = KindOf(control);
            if (kind == ControlKind::kField || kind == ControlKind::kOther) continue;
            if (kind == ControlKind::kText && (StyleOf(control) & SS_NOPREFIX) != 0) continue;
            AddKey(keys, dialog.name(), TextOfWindow(control));
        }
    });
}

TEST(ResourcesTest, TextsFitTheirControlsAtEveryScale) {
    for (int dpi : kScales) {
        std::size_t run_time_texts = 0;
        ForEachDialog(
            [&](const TemplateDialog& dialog) {
                for (HWND control : dialog.Controls()) {
                    const ControlKind kind = KindOf(control);
                    if (kind == ControlKind::kField || kind == ControlKind::kOther) continue;
                    ExpectTextFits(control, TextOfWindow(control), 1, dpi);
                }
                for (const RunTimeText& text : kRunTimeTexts) {
                    if (text.dialog != dialog.name()) continue;
                    HWND control = GetDlgItem(dialog.window(), text.control);
                    ASSERT_NE(control, nullptr) << text.control;
                    ExpectTextFits(control, text.text, text.columns, dpi);
                    ++run_time_texts;
                }
            },
            dpi);
        EXPECT_EQ(run_time_texts, std::size(kRunTimeTexts))
            << "texts of a dialog that is not there";
    }
}

TEST(ResourcesTest, ControlsLieInsideTheirDialogAndApart) {
    for (int dpi : kScales) {
        ForEachDialog(
            [](const TemplateDialog& dialog) {
                RECT client{};
                GetClientRect(dialog.window(), &client);
                const std::vector<HWND> controls = dialog.Controls();
                for (auto a = controls.begin(); a != controls.end(); ++a) {
                    const RECT area = dialog.AreaOf(*a);
                    EXPECT_TRUE(Contains(client, area)) << Describe(*a);
                    for (auto b = a + 1; b != controls.end(); ++b) {
                        const RECT other = dialog.AreaOf(*b);
                        RECT common{};
                        if (!IntersectRect(&common, &area, &other)) continue;
                        if (!IsShown(*a) || !IsShown(*b)) continue;
                        // An up-down control may lie in its field; a group box holds others.
                        if (ClassOf(*b) == L"MSCTLS_UPDOWN32") continue;
                        EXPECT_TRUE(
                            (KindOf(*a) == ControlKind::kGroupBox && Contains(area, other)) ||
                            (KindOf(*b) == ControlKind::kGroupBox && Contains(other, area)))
                            << Describe(*a) << " and " << Describe(*b);
                    }
                }
            },
            dpi);
    }
}

// Whether a screen reader can name a field after the control before it: a group box, a label, or a
// choice that belongs to the field ("Assoluto:"). A text that is neither fixed nor ends with a
// colon is a result.
bool IsNameForNext(HWND control) {
    const std::string text = WindowText(control);
    const ControlKind kind = KindOf(control);
    const bool is_fixed = kind == ControlKind::kGroupBox ||
                          (kind == ControlKind::kText && GetDlgCtrlID(control) == -1);
    if (is_fixed || kind == ControlKind::kField || kind == ControlKind::kPushButton) {
        return is_fixed && !text.empty();
    }
    return TrimBlanks(text).ends_with(':');
}

TEST(ResourcesTest, EveryControlHasAName) {
    ForEachDialog([](const TemplateDialog& dialog) {
        for (HWND control : dialog.Controls()) {
            const ControlKind kind = KindOf(control);
            if (GetDlgCtrlID(control) == IDC_WIZARD_FILE) continue;  // says what it is
            if (kind == ControlKind::kField) {
                HWND label = GetWindow(control, GW_HWNDPREV);
                while (label && !IsShown(label)) label = GetWindow(label, GW_HWNDPREV);
                EXPECT_TRUE(label && IsNameForNext(label))
                    << Describe(control) << " follows " << (label ? Describe(label) : "nothing");
            } else if (kind != ControlKind::kText && kind != ControlKind::kOther) {
                EXPECT_NE(WindowText(control), "") << Describe(control);
            }
        }
    });
}

TEST(ResourcesTest, TabKeyReachesEveryControlInReadingOrder) {
    ForEachDialog([](const TemplateDialog& dialog) {
        std::set<HWND> unreached;
        bool group_has_stop = true;
        for (HWND control : dialog.Controls()) {
            EnableWindow(control, TRUE);  // some are disabled at first
            const ControlKind kind = KindOf(control);
            const bool read_only =
                ClassOf(control) == L"EDIT" && (StyleOf(control) & ES_READONLY) != 0;
            if (IsTabStop(control)) unreached.insert(control);
            // Radio buttons are one stop together: the arrow keys go from one to the next.
            if (kind == ControlKind::kRadioButton) {
                const bool starts_group = (StyleOf(control) & WS_GROUP) != 0;
                group_has_stop = IsTabStop(control) || (group_has_stop && !starts_group);
                EXPECT_TRUE(group_has_stop) << Describe(control) << " is out of reach";
            } else if (IsShown(control) && !read_only &&
                       (kind == ControlKind::kPushButton || kind == ControlKind::kCheckBox ||
                        kind == ControlKind::kField)) {
                EXPECT_TRUE(IsTabStop(control)) << Describe(control) << " is out of reach";
            }
        }
        ASSERT_FALSE(unreached.empty());
        const std::set<HWND> stops = unreached;
        HWND const first = GetNextDlgTabItem(dialog.window(), nullptr, FALSE);
        EXPECT_TRUE(stops.size() == 1 || KindOf(first) != ControlKind::kPushButton)
            << "the first stop is " << Describe(first);
        for (HWND other : stops) {
            EXPECT_TRUE(other == first || IsFileCommand(other) ||
                        ReadsOn(dialog.AreaOf(first), dialog.AreaOf(other)))
                << Describe(other) << " lies before the first stop, " << Describe(first);
        }
        HWND stop = first;
        while (unreached.erase(stop) > 0) {
            HWND next = GetNextDlgTabItem(dialog.window(), stop, FALSE);
            EXPECT_TRUE(next == first || (IsFileCommand(next) && !IsFileCommand(stop)) ||
                        ReadsOn(dialog.AreaOf(stop), dialog.AreaOf(next)))
                << Describe(stop) << " is followed by " << Describe(next);
            stop = next;
        }
        for (HWND control : unreached) ADD_FAILURE() << Describe(control) << " is never reached";
    });
}

// ---- Menus and accelerators

void ForEachCommand(HMENU menu, const std::function<void(const MenuItem&)>& action) {
    for (const MenuItem& item : ItemsOf(menu)) {
        if (item.submenu) {
            ForEachCommand(item.submenu, action);
        } else {
            action(item);
        }
    }
}

// As the menus write it: "CTRL+G".
std::wstring NameOf(const ACCEL& key) {
    constexpr std::pair<WORD, const wchar_t*> kNames[] = {
        {VK_DELETE, L"CANC"}, {VK_INSERT, L"INS"}, {VK_F1, L"F1"}, {VK_F4, L"F4"}};
    std::wstring name = key.fVirt & FCONTROL ? L"CTRL+" : L"";
    if (key.fVirt & FSHIFT) name += L"SHIFT+";
    if (key.fVirt & FALT) name += L"ALT+";
    for (const auto& [code, text] : kNames) {
        if (key.key == code) return name + text;
    }
    return name + static_cast<wchar_t>(key.key);
}

std::vector<ACCEL> Accelerators(const std::wstring& name) {
    HACCEL table = LoadAcceleratorsW(Instance(), name.c_str());
    std::vector<ACCEL> keys(static_cast<std::size_t>(CopyAcceleratorTableW(table, nullptr, 0)));
    CopyAcceleratorTableW(table, keys.data(), static_cast<int>(keys.size()));
    DestroyAcceleratorTable(table);
    return keys;
}

void CheckMenuKeys(const std::string& name, HMENU menu) {
    KeyRing keys;
    for (const MenuItem& item : ItemsOf(menu)) {
        AddKey(keys, name, item.text);
        EXPECT_TRUE(AccessKey(item.text) || name == kMenuWithoutKeys)
            << name << ": " << Narrow(item.text) << " has no access key";
        if (item.submenu) CheckMenuKeys(name, item.submenu);
    }
}

TEST(ResourcesTest, EveryMenuCommandIsInReachOfTheKeyboard) {
    const std::vector<std::wstring> names = ResourceNames(RT_MENU);
    EXPECT_GE(names.size(), 2u);
    for (const std::wstring& name : names) {
        const UniqueMenu menu(LoadMenuW(Instance(), name.c_str()));
        ASSERT_TRUE(menu) << Narrow(name);
        CheckMenuKeys(Narrow(name), menu.get());
    }
}

TEST(ResourcesTest, AcceleratorsAreUniqueAndAsTheMenusTell) {
    const std::vector<std::wstring> names = ResourceNames(RT_ACCELERATOR);
    EXPECT_FALSE(names.empty());
    std::map<std::wstring, int> commands;
    for (const std::wstring& name : names) {
        std::set<std::wstring> seen;
        for (const ACCEL& key : Accelerators(name)) {
            EXPECT_TRUE(seen.insert(NameOf(key)).second)
                << Narrow(name) << ": two commands have the key " << Narrow(NameOf(key));
            commands[NameOf(key)] = key.cmd;
        }
    }
    for (const std::wstring& name : ResourceNames(RT_MENU)) {
        const UniqueMenu menu(LoadMenuW(Instance(), name.c_str()));
        ForEachCommand(menu.get(), [&](const MenuItem& item) {
            const std::size_t tab = item.text.find(L'\t');
            if (tab == std::wstring::npos) return;
            const auto told = commands.find(item.text.substr(tab + 1));
            ASSERT_NE(told, commands.end()) << Narrow(item.text);
            EXPECT_EQ(told->second, item.id) << Narrow(item.text);
        });
    }
}

}  // namespace
}  // namespace tonvale
