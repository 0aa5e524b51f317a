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
    std::string detail =
        text.empty() && !arguments.empty() ? arguments.front() : replaceMarkers(translated(text), arguments);
    if (!entry.empty()) {
        detail = composed("the entry ^1"_text, {entry}) + (detail.empty() ? "" : "; ") + detail;
    }
    if (found.empty()) return detail;
    return composed("^1; found: ^2; expected: ^3"_text, {std::move(detail), found, translated(expected)});
}

ByteSink gatherInto(std::string& bytes) {
    return [&bytes](std::string_view piece) {
        bytes += piece;
        return PackageResult();
    };
}

}  // namespace vexa::frontend
