#include "backend/pivot/fetch_file.h"

#include "backend/paths/file_specification.h"
#include "backend/pivot/bp_text.h"
#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

constexpr BpErrorShow kShow = 2;
constexpr BpErrorLevel kWarning = 2;

FileResult read(const std::string& name, std::string& content) {
    if (name.empty()) return {false, std::string("There is no name"_text)};
    // The system would take the part before the zero byte for the name.
    if (name.find('\0') != std::string::npos)
        return {false, std::string("The name contains a zero byte"_text)};
    return FileSystem::current().read(toUtf8(name), content, FetchFile::kLimit);
}

void warn(const std::string& name, const FileResult& failure) {
    BpComposite message("The file ^1 could not be read: ^2."_text, 1);
    message.Add(BpString(name, 0)).Add(BpString(fromUtf8(shownReason(failure)), 0));
    message.Finish();
    BpError(message, kShow, kWarning);
}

}  // namespace

std::string FetchFile::fetch(std::string_view name, bool resolve, bool quiet) {
    const std::string path = resolve ? wholeFileName(std::string(name)) : std::string(name);
    std::string content;
    const FileResult result = read(path, content);
    if (result) return content;
    if (!quiet) warn(path, result);
    return {};
}

}  // namespace vexa
