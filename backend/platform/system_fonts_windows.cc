#include <windows.h>

#include "backend/platform/font_entry.h"
#include "backend/platform/system_fonts.h"
#include "backend/platform/windows_text.h"

namespace vexa {

namespace {

constexpr const wchar_t* kFonts = LR"(SOFTWARE\Microsoft\Windows NT\CurrentVersion\Fonts)";

/// A name in the registry has at most 16,383 characters, and a zero behind them.
constexpr DWORD kLongestName = 16384;

/// The fonts of the machine, or those that the user has installed for himself.
void addFonts(HKEY root, std::vector<std::string>& families) {
    HKEY fonts = nullptr;
    if (RegOpenKeyExW(root, kFonts, 0, KEY_QUERY_VALUE, &fonts) != ERROR_SUCCESS) return;
    std::wstring name(kLongestName, L'\0');
    DWORD length = kLongestName;
    for (DWORD i = 0;
         RegEnumValueW(fonts, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i) {
        for (std::string& family :
             familiesOfFontEntry(narrowText(std::wstring_view(name).substr(0, length)))) {
            families.push_back(std::move(family));
        }
        length = kLongestName;
    }
    RegCloseKey(fonts);
}

}  // namespace

std::vector<std::string> systemFonts() {
    std::vector<std::string> families;
    addFonts(HKEY_LOCAL_MACHINE, families);
    addFonts(HKEY_CURRENT_USER, families);
    return families;
}

}  // namespace vexa
