#include "module/modify/looks.h"

#include "backend/paths/path_factory.h"
#include "backend/pivot/fetch_file.h"

namespace vexa {

namespace {

/// Finds names, looked at from the back end's folder; nothing is reported.
std::string fetch(const std::string& name) { return FetchFile::fetch(name, true, true); }

/// The file in the folder Looks of a path instance.
std::string inLooks(int pathInstance, const std::string& name, std::string_view extension) {
    std::string path = PathFactory::getPathInstance(pathInstance)->getPath();
    if (path.ends_with('\\')) {
        path.pop_back();
    }
    return path.append("\\Looks\\").append(name).append(extension);
}

}  // namespace

bool FindTableLook(std::string& name, std::string_view extension) {
    if (!fetch(name).empty() || extension.empty()) {
        return true;
    }
    for (const int pathInstance : {PathFactory::kLanguage, PathFactory::kInstallation}) {
        std::string candidate = inLooks(pathInstance, name, extension);
        if (!fetch(candidate).empty()) {
            name = std::move(candidate);
            return true;
        }
    }
    return false;
}

std::string fetchFromRoot(const std::string& name, std::string_view root) {
    std::string content = fetch(name);
    const std::size_t begin = content.find(root);
    return begin == std::string::npos ? content : content.substr(begin);
}

}  // namespace vexa
