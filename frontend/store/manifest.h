// The manifest: the first entry of a document file, its outline, and which entry holds what.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frontend/document/item.h"
#include "frontend/store/entry_context.h"
#include "frontend/store/protection.h"
#include "frontend/store/store_result.h"

namespace vexa::frontend {

inline constexpr int currentFormat = 2;
inline constexpr char manifestEntry[] = "manifest.xml";
/// The entry of a protected file that holds the sealed inner archive.
inline constexpr char sealedEntry[] = "content";

/// The whole document, or the copy for readers.
enum class DocumentFileType { document, reader };

/// One item of the outline, its content empty unless the manifest holds it.
struct ManifestItem {
    Item item;
    std::size_t depth = 0;  ///< 0 on the top level
    std::string entry;      ///< the entry that holds the content; empty where the manifest does
    std::string picture;    ///< the entry with a picture's bytes; empty for none
};

struct ManifestLook {
    std::string entry;
    bool isSource = false;  ///< see `LookEntry`
};

struct Manifest {
    DocumentFileType type = DocumentFileType::document;
    bool locked = false;
    bool dataModel = true;  ///< whether tables are stored with their data model
    std::string name;
    std::vector<ManifestLook> looks;
    std::vector<ManifestItem> items;  ///< in the order of the outline
};

/// The entry of the item that is the `index`-th, from 0, of those that have an entry; `extension` as `.xml`.
[[nodiscard]] std::string itemEntry(std::size_t index, std::string_view extension);
/// The entry of the `index`-th look, from 0.
[[nodiscard]] std::string lookEntry(std::size_t index);
[[nodiscard]] std::string_view pictureExtension(PictureForm form);
/// What is kept of an unknown item is XML by all appearance, or is not.
[[nodiscard]] std::string_view rawExtension(std::string_view raw);

[[nodiscard]] std::string writeManifest(const Manifest& manifest);
/// The manifest of a protected file: it says how the key is made and nothing of the content.
[[nodiscard]] std::string writeProtectedManifest(const Protection& protection);

/// What a manifest turned out to be.
struct ReadManifest {
    bool isProtected = false;
    int format = currentFormat;
    Protection protection;  ///< of a protected file
    Manifest manifest;      ///< of any other that has the current format
    std::string xml;        ///< the text as it came
};

/// Refuses formats that are not known, costs of a key beyond the limits, and outlines that are too deep. Of a
/// file of format 1 without protection nothing more is read.
StoreResult readManifest(std::string xml, ReadManifest& manifest);

}  // namespace vexa::frontend
