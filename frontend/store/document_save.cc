#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/document/flat_table.h"
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

    [[nodiscard]] ZipPlan zip() const {
        ZipPlan zip;
        zip.names.emplace_back(manifestEntry);
        for (std::size_t index = 0; index < contents_.size(); ++index) {
            zip.names.push_back(itemEntry(index));
        }
        zip.content = [this](std::size_t index, std::string& content) {
            if (index > 0) {
                return writeContent(*contents_[index - 1], content);
            }
            content = writeManifest(manifest_);
            return StoreResult();
        };
        return zip;
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

StoreResult writeProtected(const ZipPlan& inner, const SaveOptions& options, const ByteSink& sink) {
    std::string plain;
    const ByteSink gather = [&plain](std::string_view bytes) {
        plain += bytes;
        return StoreResult();
    };
    if (StoreResult result = writeZip(inner, gather); !result) {
        return result;
    }
    const Protection protection = makeProtection(options.keyCost);
    const std::string manifest = writeProtectedManifest(protection);
    ZipPlan outer{{manifestEntry, sealedEntry}, nullptr, false};
    outer.content = [&](std::size_t index, std::string& content) {
        if (index > 0) {
            return seal(options.passwordForm, protection, manifest, plain, content);
        }
        content = manifest;
        return StoreResult();
    };
    return writeZip(outer, sink);
}

StoreResult fromFileResult(const FileResult& result) {
    return result ? StoreResult() : StoreResult(StoreProblem::cannotWrite, shownReason(result));
}

}  // namespace

StoreResult writeDocument(const ViewerDocument& document, const SaveOptions& options, const ByteSink& sink) {
    const Plan plan(document, options);
    if (StoreResult result = plan.check(); !result) {
        return result;
    }
    return options.passwordForm.empty() ? writeZip(plan.zip(), sink)
                                        : writeProtected(plan.zip(), options, sink);
}

StoreResult saveDocument(const ViewerDocument& document, const std::string& path,
                         const SaveOptions& options) {
    FileSystem& files = FileSystem::current();
    if (files.isFolder(path)) {
        return StoreProblem::isFolder;
    }
    std::string temporary;
    if (FileResult made = files.createTemporary(path, temporary); !made) {
        return fromFileResult(made);
    }
    StoreResult result = writeDocument(document, options, [&](std::string_view bytes) {
        return fromFileResult(files.append(temporary, bytes));
    });
    if (result) {
        result = fromFileResult(files.flush(temporary));
    }
    if (result) {
        result = fromFileResult(files.replace(temporary, path));
    }
    if (!result) {
        // What made the save fail is what matters; a temporary file that stays behind harms nobody.
        static_cast<void>(files.remove(temporary));
    }
    return result;
}

}  // namespace vexa::frontend
