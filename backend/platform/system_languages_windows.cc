#include <windows.h>

#include <algorithm>

#include "backend/platform/system_languages.h"
#include "backend/platform/windows_text.h"

namespace vexa {

std::vector<std::string> systemLanguages() {
    ULONG count = 0;
    ULONG length = 0;
    if (GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &length) == 0) return {};
    std::wstring names(length, L'\0');
    if (GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, names.data(), &length) == 0) return {};
    std::vector<std::string> languages;
    // Each name ends in a zero, and the last one in two.
    for (std::size_t at = 0; at < names.size() && names[at] != L'\0';) {
        const std::size_t end = names.find(L'\0', at);
        std::string name = narrowText(std::wstring_view(names).substr(at, end - at));
        std::replace(name.begin(), name.end(), '-', '_');
        if (std::find(languages.begin(), languages.end(), name) == languages.end()) languages.push_back(name);
        at = std::min(end, names.size() - 1) + 1;
    }
    return languages;
}

}  // namespace vexa
