#include "apps/vexa/installation.h"

#include <algorithm>
#include <string_view>

#include "backend/paths/path_factory.h"
#include "backend/platform/dynamic_library.h"
#include "backend/platform/file_system.h"

namespace vexa::program {

namespace {

constexpr const char* kAboveTheProgram = "/..";
constexpr const char* kEnglish = "en";

bool isLetter(char character) { return (character | 0x20) >= 'a' && (character | 0x20) <= 'z'; }
bool isLetterOrDigit(char character) { return isLetter(character) || (character >= '0' && character <= '9'); }

/// A code is two or three letters, and may go on with a region: "en", "pt_BR".
bool isLanguageCode(std::string_view code) {
    const std::string_view language = code.substr(0, code.find_first_of("_-"));
    const std::string_view region = code.substr(std::min(language.size() + 1, code.size()));
    return (language.size() == 2 || language.size() == 3) &&
           std::all_of(language.begin(), language.end(), isLetter) &&
           std::all_of(region.begin(), region.end(), isLetterOrDigit) &&
           (language.size() == code.size() || (region.size() >= 2 && region.size() <= 4));
}

bool hasTables(const std::string& installation, const std::string& language) {
    return FileSystem::current().isFolder(installation + "/lang/" + language);
}

/// The language to take, of those that have tables.
std::string chooseLanguage(const std::string& installation, const std::string& wanted,
                           std::vector<std::string>& warnings) {
    const bool there = hasTables(installation, wanted);
    if (wanted != kEnglish) {
        warnings.push_back(there ? "Messages are not translated; of the language " + wanted +
                                       " only month names are used."
                                 : "The installation has no texts in the language " + wanted +
                                       " (no folder lang/" + wanted + "); English is used.");
    }
    if (there) {
        return wanted;
    }
    if (!hasTables(installation, kEnglish)) {
        warnings.emplace_back(
            "The installation has no English texts (no folder lang/en); a date shows the key of its month.");
    }
    return kEnglish;
}

}  // namespace

bool openInstallation(const SessionChoices& choices, std::vector<std::string>& warnings,
                      std::string& problem) {
    if (!isLanguageCode(choices.language)) {
        problem = "There is no language '" + choices.language + "'. Use a code such as en or de.";
        return false;
    }
    FileSystem& files = FileSystem::current();
    const std::string& own = choices.installationFolder;
    if (!own.empty() && !files.isFolder(own)) {
        problem = "The installation " + own +
                  " is no folder. Name the folder that holds lang and Looks, or leave --installation out.";
        return false;
    }
    // A whole path: CD changes what a relative one means.
    const std::string folder = files.canonicalPath(own.empty() ? programFolder() + kAboveTheProgram : own);
    installPaths(folder, chooseLanguage(folder, choices.language, warnings));
    return true;
}

}  // namespace vexa::program
