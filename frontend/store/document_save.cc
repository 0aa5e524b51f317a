#include <new>
#include <utility>

#include "backend/platform/file_system.h"
#include "frontend/document/walk.h"
#include "frontend/package/output_files.h"
#include "frontend/store/document_file.h"
#include "frontend/store/limits.h"
#include "frontend/store/memory_budget.h"
#include "frontend/store/save_plan.h"

namespace vexa::frontend {
namespace {

/// Whether a document has a table whose values may be so much alike that it packs into next to nothing.
bool hasLargeTable(const Outline& outline) {
    struct Finder : OutlineVisitor {
        bool enter(const WalkPlace& place) override {
            constexpr std::uint64_t large = 8ULL << 20;
            const auto* const table = std::get_if<TableContent>(&place.item().content);
            const tables::TableData* const data = table == nullptr ? nullptr : table->table.data.get();
            found =
                found || (data != nullptr && memoryOfCells(data->placeCount(), data->filledCount()) > large);
            return !found;
        }
        bool found = false;
    } finder;
    walk(outline, finder);
    return finder.found;
}

StoreResult writePlain(SavePlan& plan, int level, const SaveOptions& options, const ByteSink& sink) {
    std::uint64_t written = 0;
    ZipWriter archive(
        [&](std::string_view bytes) {
            written += bytes.size();
            return sink(bytes);
        },
        options.archive, 0, level);
    return plan.write(archive, written);
}

/// Small files may not become large documents, so what packs too well is not packed.
int levelFor(const ViewerDocument& document, const SaveOptions& options) {
    if (!hasLargeTable(document.outline())) return quickDeflateLevel;
    SavePlan trial(document, options);
    const StoreResult result =
        writePlain(trial, quickDeflateLevel, options, [](std::string_view) { return PackageResult(); });
    return result.problem == StoreProblem::beyondLimits ? noDeflateLevel : quickDeflateLevel;
}

StoreResult writeProtected(SavePlan& plan, int level, const SaveOptions& options, const ByteSink& sink) {
    std::string plain;
    if (StoreResult result = writePlain(plan, level, options, gatherInto(plain)); !result) return result;
    const Protection protection = makeProtection(options.keyCost);
    std::string manifest = writeProtectedManifest(protection);
    std::string sealed;
    if (StoreResult result = seal(options.passwordForm, protection, manifest, plain, sealed); !result) {
        return result;
    }
    ZipWriter outer(sink, options.archive, 1);
    PackageResult added = outer.addStored(manifestEntry, std::move(manifest));
    added = added ? outer.addStored(sealedEntry, std::move(sealed)) : added;
    return fromPackage(added ? outer.finish() : added);
}

}  // namespace

StoreResult writeDocument(const ViewerDocument& document, const SaveOptions& options, const ByteSink& sink) {
    try {
        const int level = levelFor(document, options);
        SavePlan plan(document, options);
        return options.passwordForm.empty() ? writePlain(plan, level, options, sink)
                                            : writeProtected(plan, level, options, sink);
    } catch (const std::bad_alloc&) {
        return StoreProblem::noMemory;
    }
}

StoreResult saveDocument(const ViewerDocument& document, const std::string& path, const SaveOptions& options,
                         ReplacedFile* replaced) {
    if (FileSystem::current().isFolder(path)) return StoreProblem::isFolder;
    OutputFiles files;
    std::size_t file = 0;
    // What can be opened with a password only is nobody else's to copy.
    const auto rights = options.passwordForm.empty() ? NewFileRights::usual : NewFileRights::ownerOnly;
    if (PackageResult begun = files.begin(path, file, rights); !begun) return fromPackage(begun);
    StoreResult result = writeDocument(document, options, files.sink(file));
    result = result ? fromPackage(files.commit()) : result;
    if (replaced != nullptr) {
        *replaced = {!files.withOtherRights().empty(), !files.withOtherNames().empty()};
    }
    return result;
}

std::optional<LocalTime> changedByOthers(const ViewerDocument& document, const std::string& path) {
    const std::optional<FileState> now = FileSystem::current().state(path);
    const bool isAnother = now && !document.fileContent().empty() && now->content != document.fileContent();
    return isAnother ? std::optional(now->changed) : std::nullopt;
}

void rememberFile(ViewerDocument& document, const std::string& path) {
    const std::optional<FileState> now = FileSystem::current().state(path);
    document.setFileContent(now ? now->content : std::string());
}

}  // namespace vexa::frontend
