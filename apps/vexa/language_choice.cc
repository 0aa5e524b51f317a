#include "apps/vexa/language_choice.h"

#include <algorithm>

namespace vexa::program {

namespace {

bool isLetter(char character) { return (character | 0x20) >= 'a' && (character | 0x20) <= 'z'; }
bool isLetterOrDigit(char character) { return isLetter(character) || (character >= '0' && character <= '9'); }

/// A code in the usual spelling: "pt_BR".
std::string usualSpelling(std::string_view code) {
    std::string result(code);
    bool region = false;
    for (char& each : result) {
        if (each == '-' || each == '_') {
            region = true;
            each = '_';
        } else if (isLetter(each)) {
            each = static_cast<char>(region ? each & ~0x20 : each | 0x20);
        }
    }
    return result;
}

/// Where a language is written in several ways: whose way a language or a region goes.
constexpr struct {
    std::string_view code;
    std::string_view taken;
} kWaysOfWriting[] = {
    {"pt", "pt_BR"},    {"zh", "zh_CN"},    {"zh_SG", "zh_CN"},   {"zh_HANS", "zh_CN"},
    {"zh_HK", "zh_TW"}, {"zh_MO", "zh_TW"}, {"zh_HANT", "zh_TW"},
};

std::string wayOfWriting(std::string_view code) {
    for (const auto& each : kWaysOfWriting) {
        if (each.code == code) {
            return std::string(each.taken);
        }
    }
    return {};
}

}  // namespace

bool isLanguageCode(std::string_view code) {
    constexpr std::size_t kMostParts = 3;  // language, way of writing, region
    std::size_t parts = 0;
    for (std::string_view rest = code; parts == 0 || !rest.empty(); ++parts) {
        const std::size_t end = std::min(rest.find_first_of("_-"), rest.size());
        const std::string_view part = rest.substr(0, end);
        const bool letters = std::all_of(part.begin(), part.end(), isLetter);
        const bool fits = parts == 0 ? letters && (part.size() == 2 || part.size() == 3)
                                     : std::all_of(part.begin(), part.end(), isLetterOrDigit) &&
                                           part.size() >= 2 && part.size() <= 4;
        if (!fits || parts == kMostParts || end + 1 == rest.size()) {
            return false;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

std::string_view languageOfLocale(std::string_view locale) {
    const std::string_view language = locale.substr(0, locale.find_first_of(".@"));
    return isLanguageCode(language) ? language : locale;
}

std::vector<std::string> languageFolders(std::string_view code) {
    std::vector<std::string> folders;
    const std::string usual = usualSpelling(code);
    const std::string language = usual.substr(0, usual.find('_'));
    // "zh_HANT" of "zh_HANT_TW"; nothing of "zh_TW"
    const std::string script = usual.substr(0, usual.find('_') == usual.rfind('_') ? 0 : usual.rfind('_'));
    for (std::string& each : std::vector{std::string(code), usual, wayOfWriting(usual), wayOfWriting(script),
                                         language, wayOfWriting(language)}) {
        if (!each.empty() && std::find(folders.begin(), folders.end(), each) == folders.end()) {
            folders.push_back(std::move(each));
        }
    }
    return folders;
}

}  // namespace vexa::program
