#include "frontend/controller/store_messages.h"

#include <cassert>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/controller/messages.h"

namespace vexa::frontend {
namespace {

SystemText textOf(StoreProblem problem) {
    switch (problem) {
        case StoreProblem::none:
            break;
        case StoreProblem::noSuchFile:
            return messages::noSuchFile;
        case StoreProblem::isFolder:
            return messages::fileIsFolder;
        case StoreProblem::cannotRead:
            return messages::cannotRead;
        case StoreProblem::cannotWrite:
            return messages::cannotWrite;
        case StoreProblem::noMemory:
            return messages::noMemory;
        case StoreProblem::tooLarge:
            return messages::fileTooLarge;
        case StoreProblem::notADocument:
            return messages::notADocument;
        case StoreProblem::damaged:
            return messages::damaged;
        case StoreProblem::otherCompression:
            return messages::otherCompression;
        case StoreProblem::newerFormat:
            return messages::newerFormat;
        case StoreProblem::unsafeName:
            return messages::unsafeName;
        case StoreProblem::passwordMissing:
            return messages::passwordMissing;
        case StoreProblem::passwordWrong:
            return messages::passwordWrong;
        case StoreProblem::passwordForm:
            return messages::passwordForm;
        case StoreProblem::beyondLimits:
            return messages::beyondLimits;
        case StoreProblem::tableTooLarge:
            return messages::tableTooLarge;
    }
    assert(false);
    return messages::damaged;
}

/// The folder of a file as the user names both; empty for the current one and the top of all, which are
/// there.
std::string folderNameOf(const std::string& file) {
    const std::size_t end = file.find_last_of("/\\");
    return end == std::string::npos ? std::string() : file.substr(0, end);
}

}  // namespace

StoreMessage describe(const StoreResult& result, const std::string& file) {
    if (result.problem == StoreProblem::cannotWrite) {
        const std::string folder = folderNameOf(file);
        if (!folder.empty() && !FileSystem::current().isFolder(folder)) return {messages::noFolder, folder};
    }
    const SystemText form =
        result.problem == StoreProblem::newerFormat ? messages::withFormat : messages::withDetails;
    return {textOf(result.problem), result.detail.empty() ? file : composed(form, {file, result.detail})};
}

}  // namespace vexa::frontend
