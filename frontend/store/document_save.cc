#include <new>
#include <utility>

#include "backend/platform/file_system.h"
#include "frontend/package/output_files.h"
#include "frontend/store/document_file.h"
#include "frontend/store/limits.h"
#include "frontend/store/save_plan.h"

namespace vexa::frontend {
namespace {

StoreResult writePlain(SavePlan& plan, const ByteSink& sink) {
    std::uint64_t written = 0;
    ZipWriter archive(
        [&](std::string_view bytes) {
            written += bytes.size();
            return sink(bytes);
        },
        limits::archive);
    return plan.write(archive, written);
}

StoreResult writeProtected(SavePlan& plan, const SaveOptions& options, const ByteSink& sink) {
    std::string plain;
    if (StoreResult result = writePlain(plan, gatherInto(plain)); !result) return result;
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

}  // namespace

StoreResult writeDocument(const ViewerDocument& document, const SaveOptions& options, const ByteSink& sink) {
    try {
        SavePlan plan(document, options);
        return options.passwordForm.empty() ? writePlain(plan, sink) : writeProtected(plan, options, sink);
    } catch (const std::bad_alloc&) {
        return StoreProblem::noMemory;
    }
}

StoreResult saveDocument(const ViewerDocument& document, const std::string& path,
                         const SaveOptions& options) {
    if (FileSystem::current().isFolder(path)) return StoreProblem::isFolder;
    OutputFiles files;
    std::size_t file = 0;
    // What can be opened with a password only is nobody else's to copy.
    const auto rights = options.passwordForm.empty() ? NewFileRights::usual : NewFileRights::ownerOnly;
    if (PackageResult begun = files.begin(path, file, rights); !begun) return fromPackage(begun);
    StoreResult result = writeDocument(document, options, files.sink(file));
    return result ? fromPackage(files.commit()) : result;
}

}  // namespace vexa::frontend
