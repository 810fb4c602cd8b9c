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
#include "tests/ui/control_layout.h"

namespace tonvale {
namespace {

// Access keys that several commands share, because their texts are fixed: the key goes from one to
// the next.
constexpr std::pair<std::string_view, std::wstring_view> kSharedKeys[] = {
    {"FORMATO", L"CDS"}, {"#104", L"L"},  // "Sa&lva con nome..." and the noise class "&L"
    {"#115", L"I"},                       // "S&i" and "< &Indietro"
    {"#116", L"A"},                       // "&Aggiungi" and "&Avanti >"
    {"#117", L"A"},
};

// The labels of the octave bands have ids of their own.
constexpr int kOctaveBands = 7;

// Names of colours, which have no access keys.
constexpr std::string_view kMenuWithoutKeys = "COLORI";

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
    if (!key) return;
    for (const auto& [sharer, shared] : kSharedKeys) {
        if (owner == sharer && shared.find(key) != shared.npos) return;
    }
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

void ForEachDialog(const std::function<void(const TemplateDialog&)>& check, int dpi = 96) {
    const std::vector<std::wstring> names = ResourceNames(RT_DIALOG);
    EXPECT_GE(names.size(), 3u);
    for (const std::wstring& name : names) {
        const TemplateDialog dialog(name, dpi);
        SCOPED_TRACE(dialog.name() + " at " + std::to_string(dpi) + " dpi");
        check(dialog);
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
    ForEachDialog([](const TemplateDialog& dialog) {
        KeyRing keys;
        // The keys of the menu bar work in the dialog as well.
        const bool has_menu = (StyleOf(dialog.window()) & WS_CHILD) == 0;
        HMENU menu = has_menu ? GetMenu(dialog.window()) : nullptr;
        for (const MenuItem& item : ItemsOf(menu)) AddKey(keys, dialog.name(), item.text);
        // So do those of the sheet that a wizard's page is in, whatever the system's language.
        if (GetDlgItem(dialog.window(), IDC_WIZARD_FILE)) {
            for (const wchar_t* text :
                 {L"< &Back", L"&Next >", L"< &Indietro", L"&Avanti >", L"&Fine"}) {
                AddKey(keys, dialog.name(), text);
            }
        }
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
        ForEachDialog(
            [dpi](const TemplateDialog& dialog) {
                for (HWND control : dialog.Controls()) {
                    const ControlKind kind = KindOf(control);
                    if (kind == ControlKind::kField || kind == ControlKind::kOther) continue;
                    ExpectTextFits(control, TextOfWindow(control), 1, dpi);
                }
            },
            dpi);
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
            const bool read_only = ClassOf(control) == L"EDIT"
                                       ? (StyleOf(control) & ES_READONLY) != 0
                                       : kind == ControlKind::kCheckBox &&
                                             (StyleOf(control) & BS_TYPEMASK) == BS_CHECKBOX;
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
