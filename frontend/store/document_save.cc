#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/document/flat_table.h"
#include "frontend/package/output_files.h"
#include "frontend/package/zip_writer.h"
#include "frontend/store/document_file.h"
#include "frontend/store/item_xml.h"
#include "frontend/store/limits.h"

namespace vexa::frontend {
namespace {

bool isForReaders(const ViewerItem& item) {
    return item.visible && item.kind() != ItemKind::message && item.kind() != ItemKind::notes;
}

/// What is saved of a document: its manifest, and the items whose contents become entries, in their order.
class Plan {
  public:
    Plan(const ViewerDocument& document, const SaveOptions& options) : options_(options) {
        manifest_.type = options.type;
        manifest_.locked = options.locked;
        manifest_.dataModel = options.dataModel;
        manifest_.name = document.name();
        addItems(document.items(), 1, manifest_.items);
    }

    [[nodiscard]] StoreResult check() const {
        if (contents_.size() >= limits::entries) {
            return {StoreProblem::beyondLimits, "the number of items"_text};
        }
        if (depth_ > limits::outlineDepth) {
            return {StoreProblem::beyondLimits, "the depth of the outline"_text};
        }
        return {};
    }

    /// Adds every entry to an archive and finishes it.
    StoreResult write(ZipWriter& archive) const {
        PackageResult added = archive.add(manifestEntry, writeManifest(manifest_));
        for (std::size_t index = 0; added && index < contents_.size(); ++index) {
            std::string content;
            if (StoreResult result = writeContent(*contents_[index], content); !result) {
                return result;
            }
            added = archive.add(itemEntry(index), std::move(content));
        }
        return fromPackage(added ? archive.finish() : added);
    }

  private:
    void addItems(const std::vector<ViewerItem>& items, int depth, std::vector<ManifestItem>& out) {
        depth_ = items.empty() ? depth_ : std::max(depth_, depth);
        for (const ViewerItem& item : items) {
            if (options_.type == DocumentFileType::reader && !isForReaders(item)) {
                continue;
            }
            ManifestItem& added = out.emplace_back(describe(item));
            if (const auto* heading = std::get_if<HeadingContent>(&item.content)) {
                addItems(heading->children, depth + 1, added.children);
                // A reader has no use for a heading with nothing left under it.
                if (options_.type == DocumentFileType::reader && added.children.empty()) {
                    out.pop_back();
                }
            }
        }
    }

    ManifestItem describe(const ViewerItem& item) {
        ManifestItem described;
        described.item.label = item.label;
        described.item.visible = item.visible;
        described.item.command = item.command;
        described.item.subtype = item.subtype;
        if (item.kind() == ItemKind::heading) {
            return described;
        }
        described.entry = itemEntry(contents_.size());
        contents_.push_back(&item.content);
        const bool isGrid = item.kind() == ItemKind::table && !options_.dataModel;
        described.item.content = emptyContent(isGrid ? ItemKind::flatTable : item.kind());
        return described;
    }

    [[nodiscard]] StoreResult writeContent(const ItemContent& content, std::string& xml) const {
        const auto* table = std::get_if<TableContent>(&content);
        if (table == nullptr || options_.dataModel) {
            return writeItemXml(content, xml);
        }
        std::optional<FlatTable> flat = flatten(*table->table);
        if (!flat) {
            return {StoreProblem::tableTooLarge, table->table->title};
        }
        return writeItemXml(FlatTableContent{std::make_shared<const FlatTable>(*std::move(flat))}, xml);
    }

    const SaveOptions& options_;
    Manifest manifest_;
    std::vector<const ItemContent*> contents_;
    int depth_ = 0;
};

StoreResult writeProtected(const Plan& plan, const SaveOptions& options, const ByteSink& sink) {
    std::string plain;
    ZipWriter inner(gatherInto(plain), limits::archive);
    if (StoreResult result = plan.write(inner); !result) {
        return result;
    }
    const Protection protection = makeProtection(options.keyCost);
    std::string manifest = writeProtectedManifest(protection);
    std::string sealed;
    if (StoreResult result = seal(options.passwordForm, protection, manifest, plain, sealed); !result) {
        return result;
    }
    ZipWriter outer(sink, limits::archive, 1);
    PackageResult added = outer.addStored(manifestEntry, std::move(manifest));
    added = added ? outer.addStored(sealedEntry, std::move(sealed)) : added;
    return fromPackage(added ? outer.finish() : added);
}

StoreResult writePlain(const Plan& plan, const ByteSink& sink) {
    ZipWriter archive(sink, limits::archive);
    return plan.write(archive);
}

}  // namespace

StoreResult writeDocument(const ViewerDocument& document, const SaveOptions& options, const ByteSink& sink) {
    const Plan plan(document, options);
    if (StoreResult result = plan.check(); !result) {
        return result;
    }
    try {
        return options.passwordForm.empty() ? writePlain(plan, sink) : writeProtected(plan, options, sink);
    } catch (const std::bad_alloc&) {
        return StoreProblem::noMemory;
    }
}

StoreResult saveDocument(const ViewerDocument& document, const std::string& path,
                         const SaveOptions& options) {
    if (FileSystem::current().isFolder(path)) {
        return StoreProblem::isFolder;
    }
    OutputFiles files;
    std::size_t file = 0;
    // What can be opened with a password only is nobody else's to copy.
    const auto rights = options.passwordForm.empty() ? NewFileRights::usual : NewFileRights::ownerOnly;
    if (PackageResult begun = files.begin(path, file, rights); !begun) {
        return fromPackage(begun);
    }
    StoreResult result = writeDocument(document, options, files.sink(file));
    return result ? fromPackage(files.commit()) : result;
}

}  // namespace vexa::frontend
