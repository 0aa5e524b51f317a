#include "backend/platform/user_languages.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "backend/platform/system_languages.h"

namespace vexa {

namespace {

/// A variable of the environment; one that is empty counts as not set.
std::string_view variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

/// The locale of messages, by the first of these variables that is set.
std::string_view messageLocale() {
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const std::string_view value = variable(name); !value.empty()) {
            return value;
        }
    }
    return {};
}

/// "de_DE" of "de_DE.UTF-8@euro"; empty for the locales without a language.
std::string_view languageOf(std::string_view locale) {
    const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
    return name == "C" || name == "POSIX" ? std::string_view() : name;
}

}  // namespace

std::vector<std::string> userLanguages() {
    std::vector<std::string> languages;
    const auto add = [&languages](std::string_view locale) {
        const std::string language(languageOf(locale));
        const bool known = std::find(languages.begin(), languages.end(), language) != languages.end();
        if (!language.empty() && !known) {
            languages.push_back(language);
        }
    };
    const std::string_view locale = messageLocale();
    if (locale.empty()) {
        return systemLanguages();
    }
    if (languageOf(locale).empty()) {
        return languages;  // LANGUAGE does not count then
    }
    for (std::string_view list = variable("LANGUAGE"); !list.empty();) {
        const std::size_t end = std::min(list.find(':'), list.size());
        add(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    add(locale);
    return languages;
}

}  // namespace vexa
