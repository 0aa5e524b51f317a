#include "frontend/export/picture_styles.h"

#include <cstdint>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"

namespace vexa::frontend {

namespace {

constexpr std::uint64_t largestStyleSheet = 4'000'000;

bool isFileName(const std::string& name) {
    return !name.empty() && name.find_first_of("/\\:") == std::string::npos && !name.starts_with('.');
}

}  // namespace

PictureStyles::Sheet& PictureStyles::sheet(const std::string& name) {
    const auto [found, isNew] = sheets_.try_emplace(name);
    if (!isNew || name.empty()) return found->second;
    for (const std::string& folder : folders_) {
        if (!isFileName(name)) break;
        for (const char* const extension : {"", ".css"}) {
            const std::string file = std::string(folder).append("/").append(name).append(extension);
            if (FileSystem::current().isFile(file) &&
                FileSystem::current().read(file, found->second.text, largestStyleSheet)) {
                return found->second;
            }
        }
    }
    found->second.isMissed = true;
    return found->second;
}

const std::string& PictureStyles::find(const std::string& name, const ExportedItem& item) {
    Sheet& found = sheet(name);
    if (std::exchange(found.isMissed, false)) {
        report_.note(composed("Item ^1 (^2): there is no style sheet ^3 in the folders Looks."_text,
                              {std::to_string(item.number), item.label, name}));
    }
    return found.text;
}

}  // namespace vexa::frontend
