// Saves documents to files and opens them again; docs/formats/document-file.md describes the files.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "backend/platform/clock.h"
#include "frontend/document/viewer_document.h"
#include "frontend/package/package_result.h"
#include "frontend/store/limits.h"
#include "frontend/store/manifest.h"
#include "frontend/store/protection.h"
#include "frontend/store/store_result.h"

namespace vexa::frontend {

struct SaveOptions {
    DocumentFileType type = DocumentFileType::document;
    bool locked = false;       ///< the mark in the file
    bool dataModel = true;     ///< store tables with their data model
    std::string passwordForm;  ///< the encrypted form of the password; empty for a file without protection
    KeyCost keyCost{};         ///< of a protected file
    ZipLimits archive = limits::archive;
};

/// What a user should know of the file whose place a save has taken.
struct ReplacedFile {
    bool lostRights = false;      ///< its owner, group or rights could not be kept
    bool staysElsewhere = false;  ///< it stays as it was under another name (a hard link)
};

/// Saves `document` to the file `path` (UTF-8, either separator): the file holds its old or its new content
/// at every moment, and its old content when the result is a problem. `replaced`, where it is given, tells of
/// the file that was there.
StoreResult saveDocument(const ViewerDocument& document, const std::string& path, const SaveOptions& options,
                         ReplacedFile* replaced = nullptr);
/// The same, into a sink.
StoreResult writeDocument(const ViewerDocument& document, const SaveOptions& options, const ByteSink& sink);

/// Opens the file `path`. `password` (UTF-8) is the password or its encrypted form, empty for none; a file
/// without protection opens with any. `document` is null when the result is a problem. Its lock mark is that
/// of the file, it has the name that was saved with it, no file and no modification; it knows whether the
/// file is protected, and what the file was.
StoreResult openDocument(const std::string& path, const std::string& password,
                         std::unique_ptr<ViewerDocument>& document);
/// When somebody else has written the file `path`, which is the document's, since the document was opened
/// from it or last saved to it; nothing when nobody has.
[[nodiscard]] std::optional<LocalTime> changedByOthers(const ViewerDocument& document,
                                                       const std::string& path);
/// From now on the file `path`, as it is now, is the one that the document has.
void rememberFile(ViewerDocument& document, const std::string& path);
/// True when `path` is an existing file that no save of ours can have made: not empty, and it does not begin
/// as a document file does. A save must not replace it.
[[nodiscard]] bool isForeignFile(const std::string& path);
/// The same as opening, from the bytes of a file.
StoreResult readDocument(std::string_view bytes, const std::string& password,
                         std::unique_ptr<ViewerDocument>& document,
                         const ZipLimits& archive = limits::archive);

}  // namespace vexa::frontend
