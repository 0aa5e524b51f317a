#include "module/stbprint/base_folder.h"

#include "backend/text/character_set.h"

namespace vexa {

namespace {

/// Cuts before the last backslash, or slash where `slashes` is true; a trail byte of a character is neither.
void cutAtLastSeparator(std::string& path, bool slashes) {
    const char* last = nullptr;
    for (const char* at = path.c_str(); *at != '\0';) {
        const int length = VEXAMBmbclen_A(at);
        if (length == 1 && (*at == '\\' || (slashes && *at == '/'))) {
            last = at;
        }
        at += length > 0 ? length : 1;
    }
    if (last != nullptr) {
        path.resize(static_cast<std::size_t>(last - path.c_str()));
    }
}

}  // namespace

std::string baseFolder(std::string languagePath) {
    cutAtLastSeparator(languagePath, true);
    cutAtLastSeparator(languagePath, false);
    return languagePath;
}

}  // namespace vexa
