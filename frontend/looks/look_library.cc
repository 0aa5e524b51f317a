#include "frontend/looks/look_library.h"

#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "backend/text/system_text.h"
#include "frontend/looks/look_names.h"
#include "frontend/looks/style_sheets.h"

namespace vexa::frontend {

namespace {

constexpr std::uint64_t largestFile = 1U << 20;
constexpr std::string_view extension = ".tlk";

/// The name as the file has it, where file names are found without regard to case; a look has one name.
std::string ownSpelling(const std::string& file, const std::string& typed) {
    std::string own = FileSystem::current().canonicalPath(file);
    own.erase(0, own.find_last_of("/\\") + 1);
    if (smallLookName(own) != smallLookName(typed) + std::string(extension)) return typed;
    return own.substr(0, typed.size());
}

/// A look that was read from the folders is known by its name from then on.
ReadLook named(ReadLook look, const std::string& name, const std::string& file) {
    if (look.look == nullptr) {
        look.problem = file + ": " + look.problem;
        return look;
    }
    tables::TableLook known = *look.look;
    known.name = name;
    known.source.clear();
    return {std::make_shared<const tables::TableLook>(std::move(known)), {}};
}

}  // namespace

ReadLook LookLibrary::find(std::string_view name) {
    const auto known = found_.find(name);
    if (known != found_.end()) return known->second;
    ReadLook look = read(name);
    found_.emplace(name, look);
    return look;
}

ReadLook LookLibrary::read(std::string_view name) const {
    const std::string small = smallLookName(name);
    if (small == tables::plainLook()->name) return {tables::plainLook(), {}};
    for (const std::string& folder : folders_) {
        for (const std::string& spelling : {std::string(name), small}) {
            const std::string file = inLookFolder(folder, spelling).append(extension);
            std::string content;
            if (!isPlainLookName(name) || !FileSystem::current().read(file, content, largestFile)) continue;
            return named(readLook(content), ownSpelling(file, spelling), file);
        }
    }
    return {nullptr,
            composed("There is no table look named ^1 in the folders Looks."_text, {std::string(name)})};
}

bool LookLibrary::hasStyleSheet(const std::string& name) const {
    return !styleSheetFile(folders_, name).empty();
}

}  // namespace vexa::frontend
