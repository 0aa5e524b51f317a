#include <new>
#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/looks/look_reader.h"
#include "frontend/package/deflate.h"
#include "frontend/package/zip_reader.h"
#include "frontend/store/document_file.h"
#include "frontend/store/entry_reader.h"
#include "frontend/store/format1/format1_reader.h"
#include "frontend/store/limits.h"
#include "frontend/store/password.h"

namespace vexa::frontend {
namespace {

StoreResult tooLargeDocument() { return {StoreProblem::tooLarge, "what it unpacks to"_text}; }

/// The entries that a manifest names, in their order.
std::vector<std::string> entriesOf(const Manifest& manifest) {
    std::vector<std::string> names{manifestEntry};
    for (const ManifestLook& look : manifest.looks) names.push_back(look.entry);
    for (const ManifestItem& item : manifest.items) {
        if (!item.entry.empty()) names.push_back(item.entry);
        if (!item.picture.empty()) names.push_back(item.picture);
    }
    return names;
}

/// An entry that stands in the place of another one, or of none.
StoreResult misplaced(SystemText where, std::vector<std::string> arguments, std::string found,
                      std::string expected) {
    PackageResult result(PackageProblem::damaged, where, std::move(arguments));
    result.found = std::move(found);
    result.expected = std::move(expected);
    return fromPackage(result);
}

StoreResult checkEntries(const ZipReader& archive, const Manifest& manifest) {
    const std::vector<std::string> names = entriesOf(manifest);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i >= archive.count()) return {StoreProblem::damaged, composed("the entry ^1"_text, {names[i]})};
        const std::string_view found = archive.entry(i).name;
        if (found != names[i]) {
            return misplaced("the entry ^1"_text, {names[i]}, std::string(found), names[i]);
        }
    }
    if (archive.count() > names.size()) {
        return {StoreProblem::damaged, "entries that the manifest does not name"_text};
    }
    return {};
}

StoreResult readLooks(const ZipReader& archive, const Manifest& manifest, MemoryBudget& budget,
                      std::vector<SharedLook>& looks) {
    for (const ManifestLook& described : manifest.looks) {
        std::string xml;
        if (PackageResult result = readEntry(archive, described.entry, xml); !result)
            return fromPackage(result);
        if (!budget.keep(memoryOfLook(xml.size()))) return tooLargeDocument();
        ReadLook read = readLook(xml);
        if (read.look == nullptr) {
            return {StoreProblem::damaged,
                    composed("the entry ^1"_text, {described.entry}) + "; " + read.problem};
        }
        if (!described.isSource) {
            auto look = std::make_shared<tables::TableLook>(*read.look);
            look->source.clear();
            read.look = std::move(look);
        }
        looks.push_back(std::move(read.look));
    }
    return {};
}

/// Puts the items under each other; false for a model whose shown view is not there.
bool assemble(std::vector<ManifestItem>& items, Outline& outline) {
    std::vector<ItemId> open;
    std::vector<ItemId> models;
    for (ManifestItem& item : items) {
        open.resize(item.depth);
        open.push_back(outline.add(std::move(item.item), open.empty() ? 0 : open.back()));
        if (outline.find(open.back())->item.type() == ItemType::model) models.push_back(open.back());
    }
    for (const ItemId id : models) {
        const OutlineNode& model = *outline.find(id);
        const std::size_t shown = std::get<ModelContent>(model.item.content).shown;
        if (shown >= model.children.size() && shown != 0) return false;
    }
    return true;
}

StoreResult build(const ZipReader& archive, Manifest manifest, MemoryBudget& budget,
                  ViewerDocument& document) {
    if (StoreResult result = checkEntries(archive, manifest); !result) return result;
    std::vector<SharedLook> looks;
    if (StoreResult result = readLooks(archive, manifest, budget, looks); !result) return result;
    if (PackageResult result = readEntries(archive, looks, budget, manifest.items); !result) {
        return fromPackage(result);
    }
    Outline outline;
    if (!assemble(manifest.items, outline)) return {StoreProblem::damaged, "the manifest"_text};
    document.setName(std::move(manifest.name));
    document.edit(std::move(outline));
    document.setLock({manifest.locked, {}});
    document.setModified(false);
    return {};
}

// What was given is tried as the password, then, if it looks like one, as an encrypted form.
StoreResult unsealWith(const std::string& password, const Protection& protection,
                       std::string_view authenticated, std::string_view sealed, std::string& plain) {
    std::string form = encryptedPassword(password);
    if (form.empty()) return StoreProblem::noMemory;
    StoreResult result = unseal(form, protection, authenticated, sealed, plain);
    wipe(form);
    if (result.problem == StoreProblem::passwordWrong && isEncryptedPassword(password)) {
        result = unseal(password, protection, authenticated, sealed, plain);
    }
    return result;
}

/// Opens an archive and reads its manifest, which is its first entry.
StoreResult openArchive(std::string_view bytes, ZipReader& archive, MemoryBudget& budget,
                        ReadManifest& manifest) {
    if (PackageResult result = archive.open(bytes); !result) return fromPackage(result);
    if (!archive.find(manifestEntry)) return StoreProblem::notADocument;
    if (archive.entry(0).name != manifestEntry) {
        return misplaced("the manifest"_text, {}, std::string(archive.entry(0).name), manifestEntry);
    }
    std::string xml;
    if (PackageResult result = readEntry(archive, manifestEntry, xml); !result) return fromPackage(result);
    BorrowedMemory memory(budget);
    return memory.borrow(memoryOfXml(xml)) ? readManifest(std::move(xml), manifest) : tooLargeDocument();
}

StoreResult readPlain(const ZipReader& archive, ReadManifest manifest, MemoryBudget& budget,
                      std::unique_ptr<ViewerDocument>& document) {
    auto built = std::make_unique<ViewerDocument>();
    StoreResult result = manifest.format == 1
                             ? format1::readDocument(archive, std::move(manifest.xml), budget, *built)
                             : build(archive, std::move(manifest.manifest), budget, *built);
    if (result) document = std::move(built);
    return result;
}

StoreResult readInner(std::string_view bytes, const ZipLimits& most,
                      std::unique_ptr<ViewerDocument>& document) {
    ZipReader archive(most);
    MemoryBudget budget(memoryFor(bytes.size()));
    ReadManifest manifest;
    if (StoreResult result = openArchive(bytes, archive, budget, manifest); !result) return result;
    if (manifest.isProtected) return {StoreProblem::damaged, "a protected archive inside another"_text};
    return readPlain(archive, std::move(manifest), budget, document);
}

StoreResult readProtected(const ZipReader& archive, const ReadManifest& manifest, const std::string& password,
                          std::string& plain) {
    const bool whole = archive.count() == 2 && archive.entry(1).name == sealedEntry &&
                       archive.entry(0).method == zipStored && archive.entry(1).method == zipStored &&
                       crcOf(archive.packed(1)) == archive.entry(1).crc;
    if (!whole) return {StoreProblem::damaged, "the protected content"_text};
    if (password.empty()) return StoreProblem::passwordMissing;
    return unsealWith(password, manifest.protection, manifest.xml, archive.packed(1), plain);
}

StoreResult readWhole(std::string_view bytes, const std::string& password, const ZipLimits& most,
                      std::unique_ptr<ViewerDocument>& document) {
    ZipReader archive(most);
    MemoryBudget budget(memoryFor(bytes.size()));
    ReadManifest manifest;
    if (StoreResult result = openArchive(bytes, archive, budget, manifest); !result) return result;
    if (!manifest.isProtected) return readPlain(archive, std::move(manifest), budget, document);
    std::string plain;
    if (StoreResult result = readProtected(archive, manifest, password, plain); !result) return result;
    StoreResult result = readInner(plain, most, document);
    if (document != nullptr) {
        document->setFileProtected(true);
        document->setNeededPassword(true);
    }
    return result;
}

}  // namespace

StoreResult readDocument(std::string_view bytes, const std::string& password,
                         std::unique_ptr<ViewerDocument>& document, const ZipLimits& archive) {
    document.reset();
    try {
        return readWhole(bytes, password, archive, document);
    } catch (const std::bad_alloc&) {
        document.reset();
        return StoreProblem::noMemory;
    }
}

StoreResult openDocument(const std::string& path, const std::string& password,
                         std::unique_ptr<ViewerDocument>& document) {
    document.reset();
    FileSystem& files = FileSystem::current();
    if (files.isFolder(path)) return StoreProblem::isFolder;
    // Before it is read: what is written meanwhile counts as written by others.
    const std::optional<FileState> state = files.state(path);
    std::string bytes;
    if (FileResult read = files.read(path, bytes, limits::fileBytes); !read) {
        return {files.isFile(path) ? StoreProblem::cannotRead : StoreProblem::noSuchFile, shownReason(read)};
    }
    StoreResult result = readDocument(bytes, password, document);
    if (document != nullptr && state) document->setFileContent(state->content);
    return result;
}

bool isForeignFile(const std::string& path) {
    // The header of an archive's first entry, and the entry's name behind it.
    constexpr std::string_view signature = "PK\x03\x04";
    constexpr std::size_t nameOffset = 30;
    FileSystem& files = FileSystem::current();
    std::string beginning;
    const std::size_t wanted = nameOffset + std::string_view(manifestEntry).size();
    if (!files.isFile(path) || !files.readBeginning(path, beginning, wanted) || beginning.empty()) {
        return false;
    }
    return !beginning.starts_with(signature) || beginning.size() < wanted ||
           std::string_view(beginning).substr(nameOffset) != manifestEntry;
}

}  // namespace vexa::frontend
