// How saving or opening a document ended.
#pragma once

#include <string>
#include <utility>

#include "backend/strings/dictionary.h"
#include "frontend/package/package_result.h"

namespace vexa::frontend {

enum class StoreProblem {
    none,
    // the surroundings
    noSuchFile,
    isFolder,
    cannotRead,   ///< detail: the system's reason
    cannotWrite,  ///< detail: the system's reason
    noMemory,
    // the file
    tooLarge,          ///< the file, or what it unpacks to, is beyond the limits of limits.h; detail: which
    notADocument,      ///< no zip archive, or one with another purpose
    damaged,           ///< truncated or changed; detail: where
    otherCompression,  ///< an entry is neither stored nor deflated; detail: the method's number
    newerFormat,       ///< detail: its format version
    unsafeName,        ///< an entry name that leaves the archive; detail: the name
    passwordMissing,
    passwordWrong,
    // the document to be saved
    passwordForm,   ///< what was given is no encrypted form of a password
    beyondLimits,   ///< the document could not be opened again; detail: which limit
    tableTooLarge,  ///< to be stored as a grid of texts; detail: the table's title
};

struct [[nodiscard]] StoreResult {
    StoreProblem problem = StoreProblem::none;
    std::string detail;  ///< as shown; UTF-8, may be empty

    StoreResult() = default;
    // A problem is a whole result, so that it can be returned as one.
    // NOLINTNEXTLINE(google-explicit-constructor): the conversion is meant, for that reason
    StoreResult(StoreProblem what, std::string more = {}) : problem(what), detail(std::move(more)) {}

    StoreResult(StoreProblem what, SystemText more) : StoreResult(what, translated(more)) {}

    explicit operator bool() const { return problem == StoreProblem::none; }
};

/// The same of what went on below.
StoreResult fromPackage(const PackageResult& result);

}  // namespace vexa::frontend
