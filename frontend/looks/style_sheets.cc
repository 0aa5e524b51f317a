#include "frontend/looks/style_sheets.h"

#include "backend/platform/file_system.h"
#include "frontend/looks/look_names.h"

namespace vexa::frontend {

std::string styleSheetFile(const std::vector<std::string>& folders, const std::string& name) {
    if (!isPlainLookName(name)) return {};
    for (const std::string& folder : folders) {
        for (const std::string& spelling : {name, smallLookName(name)}) {
            for (const char* const extension : {"", ".css"}) {
                std::string file = inLookFolder(folder, spelling).append(extension);
                if (FileSystem::current().isFile(file)) return file;
            }
        }
    }
    return {};
}

}  // namespace vexa::frontend
