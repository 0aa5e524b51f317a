#include "backend/paths/path_factory.h"

#include "backend/platform/file_system.h"
#include "backend/text/character_set.h"

namespace vexa {

namespace {

struct Installation {
    std::string folder;  // UTF-8, with backslashes and one at the end; empty until installed
    std::string language;
};

Installation& installation() {
    static Installation paths;
    return paths;
}

class InstallationFolder final : public PathFinder {
  public:
    [[nodiscard]] std::string getPath() const override { return fromUtf8(installation().folder); }
};

class LanguageFolder final : public PathFinder {
  public:
    [[nodiscard]] std::string getPath() const override {
        const Installation& paths = installation();
        if (paths.folder.empty()) {
            return {};
        }
        return fromUtf8(paths.folder + "lang\\" + paths.language + '\\');
    }
};

}  // namespace

const PathFinder* PathFactory::getPathInstance(int instance) {
    static const InstallationFolder installationFolder;
    static const LanguageFolder languageFolder;
    switch (instance) {
        case kInstallation:
            return &installationFolder;
        case kLanguage:
            return &languageFolder;
        default:
            return nullptr;
    }
}

void installPaths(std::string_view installationFolder, std::string_view language) {
    std::string folder = toBackslashPath(installationFolder);
    if (!folder.empty() && folder.back() != '\\') {
        folder.push_back('\\');
    }
    installation() = {std::move(folder), std::string(language)};
}

}  // namespace vexa
