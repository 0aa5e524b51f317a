// How writing or reading a package ended, and where its bytes go. Every operation of this room that can fail
// answers with this result; nothing is thrown.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "backend/platform/file_system.h"
#include "backend/text/system_text.h"

namespace vexa::frontend {

enum class PackageProblem {
    none,
    // the surroundings
    cannotWrite,  ///< detail: the system's reason
    noMemory,
    // what is read
    notAnArchive,      ///< no zip archive
    damaged,           ///< truncated, changed, or not well formed; detail: where
    tooLarge,          ///< beyond the limits that were given; detail: which
    otherCompression,  ///< an entry is neither stored nor deflated; detail: the method's number
    unsafeName,  ///< an entry name that leaves the archive; in what is written also a second of that name;
                 ///< detail: it
    // what is written
    beyondLimits,  ///< could not be read again within the limits that were given; detail: which
};

/// The detail is a text of the string tables with markers ^1, ^2, ... for the arguments, or words of the
/// system's own; without a text, the first argument is the detail. It is translated where it is shown, so
/// that results can be made by any thread.
struct [[nodiscard]] PackageResult {
    PackageProblem problem = PackageProblem::none;
    std::string text;
    std::vector<std::string> arguments;
    std::string entry{};     ///< of an archive, in which that is; may be empty
    std::string found{};     ///< of what is damaged: what stands there; may be empty
    std::string expected{};  ///< what would fit: a text of the string tables, or words for everybody

    PackageResult() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a problem is a whole result, so that it can be returned
    PackageResult(PackageProblem what) : problem(what) {}
    PackageResult(PackageProblem what, SystemText detail, std::vector<std::string> more = {})
        : problem(what), text(detail.key()), arguments(std::move(more)) {}
    /// With a detail that is nobody's to translate: a name, a number.
    static PackageResult named(PackageProblem what, std::string detail);
    /// `what` for a file operation that failed, with the system's reason.
    static PackageResult ofFile(PackageProblem what, const FileResult& result);

    explicit operator bool() const { return problem == PackageProblem::none; }
    /// The detail in the language of the user; may be empty.
    [[nodiscard]] std::string shownDetail() const;
};

/// Takes bytes piece by piece; a piece is only good during the call. The first failure ends the writing.
using ByteSink = std::function<PackageResult(std::string_view bytes)>;

/// A sink that appends to `bytes`, which must outlive it.
[[nodiscard]] ByteSink gatherInto(std::string& bytes);

}  // namespace vexa::frontend
