#include "frontend/store/store_result.h"

namespace vexa::frontend {
namespace {

StoreProblem problemOf(PackageProblem problem) {
    switch (problem) {
        case PackageProblem::none:
            return StoreProblem::none;
        case PackageProblem::cannotWrite:
            return StoreProblem::cannotWrite;
        case PackageProblem::noMemory:
            return StoreProblem::noMemory;
        case PackageProblem::notAnArchive:
            return StoreProblem::notADocument;
        case PackageProblem::damaged:
            return StoreProblem::damaged;
        case PackageProblem::tooLarge:
            return StoreProblem::tooLarge;
        case PackageProblem::otherCompression:
            return StoreProblem::otherCompression;
        case PackageProblem::unsafeName:
            return StoreProblem::unsafeName;
        case PackageProblem::beyondLimits:
            return StoreProblem::beyondLimits;
    }
    return StoreProblem::damaged;
}

}  // namespace

StoreResult fromPackage(const PackageResult& result) {
    return {problemOf(result.problem), result ? std::string() : result.shownDetail()};
}

}  // namespace vexa::frontend
