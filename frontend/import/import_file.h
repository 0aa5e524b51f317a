// Imports one file, whatever its form.
#pragma once

#include <string>
#include <string_view>

#include "frontend/import/import_context.h"

namespace vexa::frontend {

/// The form that the extension of a file's name says; nothing for another extension.
[[nodiscard]] std::optional<ImportForm> formOfFile(std::string_view file);
/// The form of a word: json, csv, tsv, html, svg, png, md, markdown, txt, text; nothing for any other word.
[[nodiscard]] std::optional<ImportForm> formOfWord(std::string_view word);

/// Adds what `file` (UTF-8, either separator; "-" is what `standardInput` holds) says to the end of
/// `imported.outline`. False when anything does not fit; `imported` is then good for nothing more.
///
/// What the options say counts where the file says nothing: the command and the label of items on the top
/// level, the title of every table and grid, the subtype of these, of every chart and tree and of other items
/// on the top level but headers, the alternative text of every chart and tree.
bool importFile(const std::string& file, const ImportOptions& options, const ImportContext& context,
                Imported& imported, ImportProblem& problem, std::string* standardInput = nullptr);

}  // namespace vexa::frontend
