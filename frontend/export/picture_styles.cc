#include "frontend/export/picture_styles.h"

#include <cstdint>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/looks/style_sheets.h"

namespace vexa::frontend {

namespace {

constexpr std::uint64_t largestStyleSheet = 4'000'000;

}  // namespace

PictureStyles::Sheet& PictureStyles::sheet(const std::string& name) {
    const auto [found, isNew] = sheets_.try_emplace(name);
    Sheet& sheet = found->second;
    if (!isNew || name.empty()) return sheet;
    const std::string file = styleSheetFile(folders_, name);
    sheet.isMissed = file.empty() || !FileSystem::current().read(file, sheet.text, largestStyleSheet);
    return sheet;
}

const std::string& PictureStyles::find(const std::string& name, const ExportedItem& item) {
    const Sheet& found = sheet(name);
    if (found.isMissed) {
        report_.note(composed("Item ^1 (^2): there is no style sheet ^3 in the folders Looks."_text,
                              {std::to_string(item.number), item.shortLabel(), name}));
    }
    return found.text;
}

}  // namespace vexa::frontend
