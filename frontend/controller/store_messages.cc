#include "frontend/controller/store_messages.h"

#include <cassert>

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

}  // namespace

StoreMessage describe(const StoreResult& result, const std::string& file) {
    const SystemText form =
        result.problem == StoreProblem::newerFormat ? messages::withFormat : messages::withDetails;
    return {textOf(result.problem), result.detail.empty() ? file : composed(form, {file, result.detail})};
}

}  // namespace vexa::frontend
