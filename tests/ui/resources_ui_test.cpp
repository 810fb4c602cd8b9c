// What holds for every dialog template, menu and accelerator of the program, those to come
// included: keyboard access, texts that fit, names for those who do not see the screen.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/handles_win.h"
#include "resources/resource.h"
#include "tests/ui/control_layout.h"
#include "tests/ui/main_window_fixture.h"

namespace tonvale {
namespace {

// Access keys that several commands share, because their texts are fixed: the key goes from one to
// the next.
constexpr std::pair<std::string_view, std::string_view> kSharedKeys[] = {
    {"FORMATO", "CDS"}, {"#104", "L"},  // "Sa&lva con nome..." and the noise class "&L"
    {"#115", "I"},                      // "S&i" and "< &Indietro"
    {"#116", "A"},                      // "&Aggiungi" and "&Avanti >"
    {"#117", "A"},
};

// The labels of the octave bands have ids of their own.
constexpr int kOctaveBands = 7;

// Names of colours, which have no access keys.
constexpr std::string_view kMenuWithoutKeys = "COLORI";

std::vector<std::wstring> ResourceNames(LPCWSTR type) {
    std::vector<std::wstring> names;
    const auto collect = [](HMODULE, LPCWSTR, LPWSTR name, LONG_PTR to) -> BOOL {
        reinterpret_cast<std::vector<std::wstring>*>(to)->push_back(
            IS_INTRESOURCE(name) ? L"#" + std::to_wstring(reinterpret_cast<ULONG_PTR>(name))
                                 : std::wstring(name));
        return TRUE;
    };
    EnumResourceNamesW(Instance(), type, collect, reinterpret_cast<LONG_PTR>(&names));
    EXPECT_FALSE(names.empty());
    return names;
}

// The upper-case letter after the "&"; 0 when there is none.
char AccessKey(const std::string& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '&') continue;
        if (text[i + 1] != '&') return static_cast<char>(std::toupper(text[i + 1]));
        ++i;
    }
    return 0;
}

// The access keys of one dialog or menu level, and the texts that hold them.
using KeyRing = std::map<char, std::string>;

void AddKey(KeyRing& keys, const std::string& owner, const std::string& text) {
    const char key = AccessKey(text);
    if (!key) return;
    for (const auto& [sharer, shared] : kSharedKeys) {
        if (owner == sharer && shared.find(key) != shared.npos) return;
    }
    const auto [holder, is_new] = keys.emplace(key, text);
    EXPECT_TRUE(is_new) << owner << ": \"" << text << "\" and \"" << holder->second
                        << "\" have the same access key";
}

// ---- Dialogs

constexpr int kOneScale[] = {96};

void ForEachDialog(std::span<const int> scales,
                   const std::function<void(const TemplateDialog&, int dpi)>& check) {
    for (const std::wstring& name : ResourceNames(RT_DIALOG)) {
        for (const int dpi : scales) {
            const TemplateDialog dialog(name, dpi);
            SCOPED_TRACE(dialog.name() + " at " + std::to_string(dpi) + " dpi");
            check(dialog, dpi);
        }
    }
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
    ForEachDialog(kOneScale, [](const TemplateDialog& dialog, int) {
        KeyRing keys;
        // The keys of the menu bar work in the dialog as well.
        const bool has_menu = (StyleOf(dialog.window()) & WS_CHILD) == 0;
        HMENU menu = has_menu ? GetMenu(dialog.window()) : nullptr;
        for (const auto& item : OpenPopup(nullptr, menu)) AddKey(keys, dialog.name(), item.text);
        // So do those of the sheet that a wizard's page is in, whatever the system's language.
        if (GetDlgItem(dialog.window(), IDC_WIZARD_FILE)) {
            for (const char* text : {"< &Back", "&Next >", "< &Indietro", "&Avanti >", "&Fine"}) {
                AddKey(keys, dialog.name(), text);
            }
        }
        for (HWND control : dialog.Controls()) {
            const ControlKind kind = KindOf(control);
            if (kind == ControlKind::kField || kind == ControlKind::kOther) continue;
            if (kind == ControlKind::kText && (StyleOf(control) & SS_NOPREFIX) != 0) continue;
            AddKey(keys, dialog.name(), WindowText(control));
        }
    });
}

TEST(ResourcesTest, TextsFitTheirControls) {
    ForEachDialog(kScales, [](const TemplateDialog& dialog, int dpi) {
        for (HWND control : dialog.Controls()) {
            const ControlKind kind = KindOf(control);
            if (kind == ControlKind::kField || kind == ControlKind::kOther) continue;
            ExpectTextFits(control, TextOfWindow(control), 1, dpi);
        }
    });
}

TEST(ResourcesTest, ControlsLieInsideTheirDialogAndApart) {
    ForEachDialog(kScales, [](const TemplateDialog& dialog, int) {
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
                EXPECT_TRUE((KindOf(*a) == ControlKind::kGroupBox && Contains(area, other)) ||
                            (KindOf(*b) == ControlKind::kGroupBox && Contains(other, area)))
                    << Describe(*a) << " and " << Describe(*b);
            }
        }
    });
}

// Whether a screen reader can name a field after the control before it: a group box, a label, or a
// choice that belongs to the field ("Assoluto:"). A text that is neither fixed nor ends with a
// colon is a result.
bool IsNameForNext(HWND control) {
    const std::string text = WindowText(control);
    const ControlKind kind = KindOf(control);
    const int id = GetDlgCtrlID(control);
    const bool is_label =
        id == -1 || (id >= IDC_BAND_LABEL_FIRST && id < IDC_BAND_LABEL_FIRST + kOctaveBands);
    const bool is_fixed =
        kind == ControlKind::kGroupBox || (kind == ControlKind::kText && is_label);
    if (is_fixed || kind == ControlKind::kField || kind == ControlKind::kPushButton) {
        return is_fixed && !text.empty();
    }
    return TrimBlanks(text).ends_with(':');
}

TEST(ResourcesTest, EveryControlHasAName) {
    ForEachDialog(kOneScale, [](const TemplateDialog& dialog, int) {
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

// In the order of the Tab key, with all controls enabled.
std::vector<HWND> TabStops(const TemplateDialog& dialog) {
    for (HWND control : dialog.Controls()) EnableWindow(control, TRUE);
    std::vector<HWND> stops;
    HWND stop = GetNextDlgTabItem(dialog.window(), nullptr, FALSE);
    while (std::ranges::count(stops, stop) == 0) {
        stops.push_back(stop);
        stop = GetNextDlgTabItem(dialog.window(), stop, FALSE);
    }
    return stops;
}

// Whether its user has to come to it by the Tab key alone.
bool NeedsTabStop(HWND control) {
    const ControlKind kind = KindOf(control);
    const DWORD style = StyleOf(control);
    if (ClassOf(control) == L"EDIT" && (style & ES_READONLY) != 0) return false;
    if (kind == ControlKind::kCheckBox && (style & BS_TYPEMASK) == BS_CHECKBOX) return false;
    return IsShown(control) && (kind == ControlKind::kPushButton ||
                                kind == ControlKind::kCheckBox || kind == ControlKind::kField);
}

TEST(ResourcesTest, TabKeyReachesEveryControlInReadingOrder) {
    ForEachDialog(kOneScale, [](const TemplateDialog& dialog, int) {
        const std::vector<HWND> stops = TabStops(dialog);
        EXPECT_TRUE(stops.size() == 1 || KindOf(stops[0]) != ControlKind::kPushButton)
            << "the first stop is " << Describe(stops[0]);
        for (std::size_t i = 1; i < stops.size(); ++i) {
            for (HWND before : {stops[0], stops[i - 1]}) {
                EXPECT_TRUE((IsFileCommand(stops[i]) && !IsFileCommand(before)) ||
                            ReadsOn(dialog.AreaOf(before), dialog.AreaOf(stops[i])))
                    << Describe(stops[i]) << " comes after " << Describe(before);
            }
        }
        bool group_has_stop = true;
        for (HWND control : dialog.Controls()) {
            const bool is_stop = std::ranges::count(stops, control) > 0;
            // Radio buttons are one stop together: the arrow keys go from one to the next.
            if (KindOf(control) == ControlKind::kRadioButton) {
                const bool starts_group = (StyleOf(control) & WS_GROUP) != 0;
                group_has_stop = is_stop || (group_has_stop && !starts_group);
                EXPECT_TRUE(group_has_stop) << Describe(control) << " is out of reach";
            } else {
                EXPECT_TRUE(is_stop || !NeedsTabStop(control)) << Describe(control);
            }
        }
    });
}

// ---- Menus and accelerators

using MenuCheck =
    std::function<void(const std::string& name, const std::vector<MenuCommand>& items)>;

void CheckMenu(const std::string& name, HMENU menu, const MenuCheck& check) {
    const std::vector<MenuCommand> items = OpenPopup(nullptr, menu);
    check(name, items);
    for (const MenuCommand& item : items) {
        if (item.submenu) CheckMenu(name, item.submenu, check);
    }
}

// Each level of each menu.
void ForEachMenu(const MenuCheck& check) {
    for (const std::wstring& name : ResourceNames(RT_MENU)) {
        const UniqueMenu menu(LoadMenuW(Instance(), name.c_str()));
        ASSERT_TRUE(menu) << Narrow(name);
        CheckMenu(Narrow(name), menu.get(), check);
    }
}

// As the menus write it: "CTRL+G".
std::string NameOf(const ACCEL& key) {
    constexpr std::pair<WORD, const char*> kNames[] = {
        {VK_DELETE, "CANC"}, {VK_INSERT, "INS"}, {VK_F1, "F1"}, {VK_F4, "F4"}};
    std::string name = key.fVirt & FCONTROL ? "CTRL+" : "";
    if (key.fVirt & FSHIFT) name += "SHIFT+";
    if (key.fVirt & FALT) name += "ALT+";
    for (const auto& [code, text] : kNames) {
        if (key.key == code) return name + text;
    }
    return name + static_cast<char>(key.key);
}

TEST(ResourcesTest, EveryMenuCommandIsInReachOfTheKeyboard) {
    ForEachMenu([](const std::string& name, const std::vector<MenuCommand>& items) {
        KeyRing keys;
        for (const MenuCommand& item : items) {
            AddKey(keys, name, item.text);
            EXPECT_TRUE(AccessKey(item.text) || name == kMenuWithoutKeys)
                << name << ": " << item.text << " has no access key";
        }
    });
}

TEST(ResourcesTest, AcceleratorsAreUniqueAndAsTheMenusTell) {
    std::map<std::string, int> commands;
    for (const std::wstring& name : ResourceNames(RT_ACCELERATOR)) {
        const UniqueAccelerators table(LoadAcceleratorsW(Instance(), name.c_str()));
        std::vector<ACCEL> keys(
            static_cast<std::size_t>(CopyAcceleratorTableW(table.get(), nullptr, 0)));
        CopyAcceleratorTableW(table.get(), keys.data(), static_cast<int>(keys.size()));
        for (const ACCEL& key : keys) {
            EXPECT_TRUE(commands.emplace(NameOf(key), key.cmd).second)
                << Narrow(name) << ": two commands have the key " << NameOf(key);
        }
    }
    ForEachMenu([&](const std::string&, const std::vector<MenuCommand>& items) {
        for (const MenuCommand& item : items) {
            const std::size_t tab = item.text.find('\t');
            if (tab == std::string::npos) continue;
            const auto told = commands.find(item.text.substr(tab + 1));
            ASSERT_NE(told, commands.end()) << item.text;
            EXPECT_EQ(told->second, item.id) << item.text;
        }
    });
}

}  // namespace
}  // namespace tonvale
