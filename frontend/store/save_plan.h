// What is saved of a document: its manifest, and the entries in their order.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "frontend/document/viewer_document.h"
#include "frontend/package/zip_writer.h"
#include "frontend/store/document_file.h"
#include "frontend/store/entry_context.h"
#include "frontend/store/manifest.h"

namespace vexa::frontend {

class SavePlan {
  public:
    /// Both must outlive the plan, and must not change.
    SavePlan(const ViewerDocument& document, const SaveOptions& options);

    /// Adds every entry to an archive, whose bytes `written` counts, and finishes it.
    StoreResult write(ZipWriter& archive, const std::uint64_t& written);

  private:
    friend class SaveSelection;
    struct Entry {
        const ItemContent* content = nullptr;
        bool asGrid = false;
    };

    [[nodiscard]] StoreResult check() const;
    /// The content of an entry; called by any thread.
    PackageResult make(const Entry& entry, std::string& xml);
    /// Adds an entry that is made; of those that may become large one at a time.
    PackageResult addMade(ZipWriter& archive, const std::string& name, const Entry& entry);
    PackageResult addEntries(ZipWriter& archive);
    void keep(std::uint64_t bytes);

    Manifest manifest_;
    LookNumbers looks_;
    std::vector<Entry> entries_;
    bool isTooDeep_ = false;

    std::mutex mutex_;
    // Guarded: what opening will take, as far as entries are written, and the first table that is too large.
    std::uint64_t kept_ = 0;
    std::uint64_t mostBorrowed_ = 0;
    std::string tooLargeTitle_;
    bool isTooLarge_ = false;
};

}  // namespace vexa::frontend
