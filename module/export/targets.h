// Where an export goes: the file of a document, the root of image files.
#pragma once

#include <optional>
#include <string>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/parser_message.h"
#include "backend/viewerxml/export_spec.h"

namespace vexa {

/// The file that DOCUMENTFILE names.
struct DocumentFile {
    std::string path;     ///< whole, with backslashes, in the back end's character set, not escaped
    bool exists = false;  ///< it is there already
    bool valid = false;   ///< it may be written
};

/// Reads DOCUMENTFILE, which must be there and name a file that may be written; the path, escaped, goes to
/// `format`. A file that was refused, which has been reported, is not valid; its path is there as far as it
/// could be read. The spreadsheet formats complete their extension.
[[nodiscard]] DocumentFile readDocumentFile(const SubComObj& given, ParserMessage& messages,
                                            DocumentFileSetting& format);

/// The same for a format that needs no more than the path, which is left as it is when the file was refused.
[[nodiscard]] bool readFileInto(std::string& path, const SubComObj& given, ParserMessage& messages,
                                DocumentFileSetting& format);

/// Reads IMAGEROOT; the expanded root goes to `format`. One that is missing though `required`, or no text, is
/// reported, which does not fail the subcommand.
void readImageRoot(const SubComObj& given, bool required, ParserMessage& messages, ImageRootSetting& format);

}  // namespace vexa
