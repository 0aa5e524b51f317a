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
    const std::string_view language = code.substr(0, code.find_first_of("_-"));
    const std::string_view region = code.substr(std::min(language.size() + 1, code.size()));
    return (language.size() == 2 || language.size() == 3) &&
           std::all_of(language.begin(), language.end(), isLetter) &&
           std::all_of(region.begin(), region.end(), isLetterOrDigit) &&
           (language.size() == code.size() || (region.size() >= 2 && region.size() <= 4));
}

std::vector<std::string> languageFolders(std::string_view code) {
    std::vector<std::string> folders;
    const std::string usual = usualSpelling(code);
    const std::string language = usual.substr(0, usual.find('_'));
    for (std::string& each :
         std::vector{std::string(code), usual, wayOfWriting(usual), language, wayOfWriting(language)}) {
        if (!each.empty() && std::find(folders.begin(), folders.end(), each) == folders.end()) {
            folders.push_back(std::move(each));
        }
    }
    return folders;
}

}  // namespace vexa::program
