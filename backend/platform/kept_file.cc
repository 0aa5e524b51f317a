#include "backend/platform/kept_file.h"

#include "backend/platform/file_system.h"

namespace vexa {

namespace {

std::string& kept() {
    static std::string path;
    return path;
}

}  // namespace

void keepFile(const std::string& path) { kept() = path; }

bool isKept(const std::string& path) {
    return !kept().empty() && FileSystem::current().isSameFile(path, kept());
}

}  // namespace vexa
