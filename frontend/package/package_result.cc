#include "frontend/package/package_result.h"

#include "backend/strings/dictionary.h"

namespace vexa::frontend {

PackageResult PackageResult::named(PackageProblem what, std::string detail) {
    PackageResult result(what);
    result.arguments.push_back(std::move(detail));
    return result;
}

PackageResult PackageResult::ofFile(PackageProblem what, const FileResult& result) {
    if (result) {
        return {};
    }
    PackageResult failure(what);
    failure.text = result.reason;
    failure.arguments = result.arguments;
    return failure;
}

std::string PackageResult::shownDetail() const {
    if (text.empty()) {
        return arguments.empty() ? std::string() : arguments.front();
    }
    return replaceMarkers(translated(text), arguments);
}

ByteSink gatherInto(std::string& bytes) {
    return [&bytes](std::string_view piece) {
        bytes += piece;
        return PackageResult();
    };
}

}  // namespace vexa::frontend
