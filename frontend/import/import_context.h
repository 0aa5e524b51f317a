// What an import needs from around it, so that tests can give their own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/document/outline.h"
#include "frontend/import/import_problem.h"
#include "frontend/looks/look_library.h"

namespace vexa::frontend {

class StatisticWords;

/// Both outlive every import.
struct ImportContext {
    LookSource& looks;
    const StatisticWords& words;
};

/// The forms that files come in.
enum class ImportForm : std::uint8_t { json, csv, tsv, html, svg, png, markdown, text };

/// What the user says of the files. Nothing that is said here takes the place of what a file says itself.
struct ImportOptions {
    std::optional<ImportForm> form;  ///< nothing: the file's extension says it
    std::string command;
    std::string subtype;
    std::string label;
    std::string title;
    std::string alternativeText;
    std::optional<std::size_t> headerRows;    ///< of tables in text; nothing: 1, or what HTML says
    std::optional<std::size_t> labelColumns;  ///< likewise
    std::optional<char> separator;            ///< nothing: a comma, a tabulator for tsv
    char decimal = '.';
    std::string encoding;  ///< empty: UTF-8
};

/// What imports add to.
struct Imported {
    Outline outline;
    std::string name;                     ///< the document's, of the first file that has one
    std::vector<ImportProblem> warnings;  ///< what was taken in all the same
};

/// Files above this size are not read.
inline constexpr std::uint64_t maximalImportBytes = std::uint64_t{2} << 30;
/// How deep headers, groups and lists of an imported file may nest.
inline constexpr std::size_t maximalImportDepth = 64;

}  // namespace vexa::frontend
