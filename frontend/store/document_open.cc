#include <algorithm>
#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/package/zip_reader.h"
#include "frontend/store/document_file.h"
#include "frontend/store/item_xml.h"
#include "frontend/store/limits.h"
#include "frontend/store/password.h"

namespace vexa::frontend {
namespace {

std::size_t countTags(std::string_view xml) {
    return static_cast<std::size_t>(std::count(xml.begin(), xml.end(), '<'));
}

/// Puts a document together from an archive whose manifest has been read.
class Assembly {
  public:
    Assembly(const ZipReader& archive, Manifest manifest)
        : archive_(archive), manifest_(std::move(manifest)) {}

    StoreResult build(ViewerDocument& document) {
        if (StoreResult result = readItems(manifest_.items, items_); !result) {
            return result;
        }
        // The manifest is an entry too.
        if (contents_ + 1 != archive_.count()) {
            return {StoreProblem::damaged, "entries that the manifest does not name"_text};
        }
        document.setName(manifest_.name);
        for (ViewerItem& item : items_) {
            document.add(std::move(item));
        }
        document.setLock({manifest_.locked, false});
        document.setModified(false);
        return {};
    }

  private:
    StoreResult readItems(std::vector<ManifestItem>& described, std::vector<ViewerItem>& items) {
        for (ManifestItem& each : described) {
            ViewerItem& item = items.emplace_back(std::move(each.item));
            auto* heading = std::get_if<HeadingContent>(&item.content);
            StoreResult result = heading != nullptr ? readItems(each.children, heading->children)
                                                    : readContent(each.entry, item.content);
            if (!result) {
                return result;
            }
        }
        return {};
    }

    StoreResult readContent(const std::string& entry, ItemContent& content) {
        // Entries are numbered in the order of the outline, so none is named twice.
        const auto place = archive_.find(entry);
        if (!place || entry != itemEntry(contents_++)) {
            return {StoreProblem::damaged, composed("the entry ^1"_text, {entry})};
        }
        std::string xml;
        if (PackageResult result = archive_.read(*place, xml, limits::entryBytes); !result) {
            return fromPackage(result);
        }
        if ((tags_ += countTags(xml)) > limits::totalTags) {
            return {StoreProblem::tooLarge, "what it unpacks to"_text};
        }
        StoreResult result = readItemXml(static_cast<ItemKind>(content.index()), std::move(xml), content);
        return result ? result : StoreResult(result.problem, composed("the entry ^1"_text, {entry}));
    }

    const ZipReader& archive_;
    Manifest manifest_;
    std::vector<ViewerItem> items_;
    std::size_t contents_ = 0;
    std::size_t tags_ = 0;
};

StoreResult readManifestEntry(const ZipReader& archive, std::string& xml, ReadManifest& manifest) {
    const auto place = archive.find(manifestEntry);
    if (!place) {
        return StoreProblem::notADocument;
    }
    if (PackageResult result = archive.read(*place, xml, limits::entryBytes); !result) {
        return fromPackage(result);
    }
    return readManifest(xml, manifest);
}

// What was given is tried as the password, then, if it looks like one, as an encrypted form.
StoreResult unsealWith(const std::string& password, const Protection& protection,
                       std::string_view authenticated, std::string_view sealed, std::string& plain) {
    std::string form = encryptedPassword(password);
    if (form.empty()) {
        return StoreProblem::noMemory;
    }
    StoreResult result = unseal(form, protection, authenticated, sealed, plain);
    wipe(form);
    if (result.problem == StoreProblem::passwordWrong && isEncryptedPassword(password)) {
        result = unseal(password, protection, authenticated, sealed, plain);
    }
    return result;
}

StoreResult build(const ZipReader& archive, Manifest manifest, std::unique_ptr<ViewerDocument>& document) {
    auto built = std::make_unique<ViewerDocument>();
    StoreResult result = Assembly(archive, std::move(manifest)).build(*built);
    if (result) {
        document = std::move(built);
    }
    return result;
}

/// Opens an archive and reads its manifest, whose XML stays in `xml`.
StoreResult openArchive(std::string_view bytes, ZipReader& archive, std::string& xml,
                        ReadManifest& manifest) {
    if (PackageResult result = archive.open(bytes); !result) {
        return fromPackage(result);
    }
    return readManifestEntry(archive, xml, manifest);
}

StoreResult readInner(std::string_view bytes, std::unique_ptr<ViewerDocument>& document) {
    ZipReader archive(limits::archive);
    std::string xml;
    ReadManifest manifest;
    if (StoreResult result = openArchive(bytes, archive, xml, manifest); !result) {
        return result;
    }
    if (manifest.isProtected) {
        return {StoreProblem::damaged, "a protected archive inside another"_text};
    }
    return build(archive, std::move(manifest.manifest), document);
}

StoreResult readProtected(const ZipReader& archive, const Protection& protection,
                          std::string_view manifestXml, const std::string& password, std::string& plain) {
    const auto place = archive.find(sealedEntry);
    if (!place || archive.count() != 2) {
        return {StoreProblem::damaged, "the protected content"_text};
    }
    if (password.empty()) {
        return StoreProblem::passwordMissing;
    }
    std::string sealed;
    if (PackageResult result = archive.read(*place, sealed); !result) {
        return fromPackage(result);
    }
    return unsealWith(password, protection, manifestXml, sealed, plain);
}

}  // namespace

StoreResult readDocument(std::string_view bytes, const std::string& password,
                         std::unique_ptr<ViewerDocument>& document) {
    document.reset();
    ZipReader archive(limits::archive);
    std::string xml;
    ReadManifest manifest;
    if (StoreResult result = openArchive(bytes, archive, xml, manifest); !result) {
        return result;
    }
    if (!manifest.isProtected) {
        return build(archive, std::move(manifest.manifest), document);
    }
    std::string plain;
    if (StoreResult result = readProtected(archive, manifest.protection, xml, password, plain); !result) {
        return result;
    }
    return readInner(plain, document);
}

StoreResult openDocument(const std::string& path, const std::string& password,
                         std::unique_ptr<ViewerDocument>& document) {
    document.reset();
    FileSystem& files = FileSystem::current();
    if (files.isFolder(path)) {
        return StoreProblem::isFolder;
    }
    std::string bytes;
    if (FileResult read = files.read(path, bytes, limits::fileBytes); !read) {
        return {files.isFile(path) ? StoreProblem::cannotRead : StoreProblem::noSuchFile, shownReason(read)};
    }
    return readDocument(bytes, password, document);
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
