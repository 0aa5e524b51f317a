// The manifest: the first entry of a document file, its outline, and which entry holds which item.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frontend/document/viewer_item.h"
#include "frontend/store/protection.h"
#include "frontend/store/store_result.h"

namespace vexa::frontend {

inline constexpr int currentFormat = 1;
inline constexpr char manifestEntry[] = "manifest.xml";
/// The entry of a protected file that holds the sealed inner archive.
inline constexpr char sealedEntry[] = "content";

/// The whole document, or the copy for readers.
enum class DocumentFileType { document, reader };

/// One item of the outline without its content.
struct ManifestItem {
    ViewerItem item;                     ///< a heading has no children here; every other kind is empty
    std::string entry;                   ///< the entry that holds the content; empty for a heading
    std::vector<ManifestItem> children;  ///< of a heading
};

struct Manifest {
    DocumentFileType type = DocumentFileType::document;
    bool locked = false;
    bool dataModel = true;  ///< whether tables are stored with their data model
    std::string name;
    std::vector<ManifestItem> items;
};

/// The entry of the item that is the `index`-th, from 0, of those that have content.
[[nodiscard]] std::string itemEntry(std::size_t index);

[[nodiscard]] std::string writeManifest(const Manifest& manifest);
/// The manifest of a protected file: it says how the key is made and nothing of the content.
[[nodiscard]] std::string writeProtectedManifest(const Protection& protection);

/// What a manifest turned out to be.
struct ReadManifest {
    bool isProtected = false;
    Protection protection;  ///< of a protected file
    Manifest manifest;      ///< of any other
};

/// Refuses other formats, costs of a key beyond the limits, and outlines that are too deep.
StoreResult readManifest(std::string xml, ReadManifest& manifest);

}  // namespace vexa::frontend
