#include "apps/vexa/installation.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "apps/vexa/language_choice.h"
#include "backend/paths/path_factory.h"
#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"
#include "backend/platform/user_languages.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

constexpr const char* kAboveTheProgram = "/..";
constexpr const char* kEnglish = "en";

bool hasTables(const std::string& installation, const std::string& folder) {
    return FileSystem::current().isFolder(installation + "/lang/" + folder);
}

/// The folder of the language `code`; nothing where the installation lacks it.
std::optional<std::string> findLanguage(const std::string& installation, std::string_view code) {
    for (std::string& folder : languageFolders(code)) {
        if (hasTables(installation, folder)) {
            return std::move(folder);
        }
    }
    return std::nullopt;
}

/// The first of the user's languages that the installation has; nothing where it has none of them.
std::optional<std::string> languageOfUser(const std::string& installation) {
    for (const std::string& code : userLanguages()) {
        std::optional<std::string> found =
            isLanguageCode(code) ? findLanguage(installation, code) : std::nullopt;
        if (found) {
            return found;
        }
    }
    return std::nullopt;
}

/// Opens the user's texts of the program's own installation, for complaints about the choices that follow.
void openTextsOfUser() {
    const std::string folder = programFolder() + kAboveTheProgram;
    StringDictionary::current().open(folder + "/lang/" + languageOfUser(folder).value_or(kEnglish));
}

/// The folder of the language to take; English where the wanted one is not there.
std::string chooseLanguage(const std::string& installation, const std::optional<std::string>& wanted,
                           std::vector<std::string>& warnings) {
    const std::optional<std::string> found =
        wanted ? findLanguage(installation, *wanted) : languageOfUser(installation);
    if (found) {
        return *found;
    }
    if (wanted && *wanted != kEnglish) {
        warnings.push_back(composed(
            "The installation has no texts in the language ^1 (no folder lang/^1); English is used instead."_text,
            {*wanted}));
    }
    if (!hasTables(installation, kEnglish)) {
        warnings.push_back(
            translated("The installation has no English texts (no folder lang/en); messages and "
                       "dates may show keys in place of texts."_text));
    }
    return kEnglish;
}

}  // namespace

bool openInstallation(const SessionChoices& choices, std::vector<std::string>& warnings,
                      std::string& problem) {
    openTextsOfUser();
    if (choices.language && !isLanguageCode(*choices.language)) {
        problem =
            composed("There is no language '^1'. Use a code such as en or de."_text, {*choices.language});
        return false;
    }
    FileSystem& files = FileSystem::current();
    const std::string& own = choices.installationFolder;
    if (!own.empty() && !files.isFolder(own)) {
        problem = composed(
            "The installation ^1 is not a folder. Name the folder that holds lang and Looks, or leave out --installation."_text,
            {own});
        return false;
    }
    // A whole path: CD changes what a relative one means.
    const std::string folder = files.canonicalPath(own.empty() ? programFolder() + kAboveTheProgram : own);
    const std::string language = chooseLanguage(folder, choices.language, warnings);
    installPaths(folder, language);
    StringDictionary::current().open(folder + "/lang/" + language);
    return true;
}

std::string languageCode() {
    const PathFinder* const finder = PathFactory::getPathInstance(PathFactory::kLanguage);
    std::string folder = finder == nullptr ? std::string() : toUtf8(finder->getPath());
    while (!folder.empty() && (folder.back() == '\\' || folder.back() == '/')) folder.pop_back();
    std::string code = folder.substr(folder.find_last_of("\\/") + 1);
    std::replace(code.begin(), code.end(), '_', '-');
    return code.empty() ? "en" : code;
}

}  // namespace vexa::program
