// Writes a zip archive. The same entries always give the same bytes, however many cores compress them: every
// entry carries the same time and the same rights.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

#include "frontend/package/package_result.h"
#include "frontend/package/packing_queue.h"
#include "frontend/package/zip_entry.h"

namespace vexa::frontend {

/// Entries are added one after the other, then `finish` is called. Compressing goes on behind the calls; only
/// some megabytes of contents are held at a time. The first failure, of the sink, too, stays the result of
/// every later call. An archive that was not finished is none.
class ZipWriter {
  public:
    /// Contents are made where there is time, by any thread.
    using Maker = std::function<PackageResult(std::string& content)>;

    /// `threads` is how many compress; 0 is one a core. The limits are those that the archive is to be read
    /// with.
    explicit ZipWriter(ByteSink sink, const ZipLimits& limits = {}, unsigned threads = 0,
                       int level = usualDeflateLevel);

    /// An entry to be deflated; one that does not become smaller is stored.
    PackageResult add(std::string name, std::string content);
    /// An entry whose content `maker` gives; it must not depend on when it is called, nor on the thread, and
    /// what it refers to must live until `finish`. It must not use texts that need the dictionary.
    PackageResult addMade(std::string name, Maker maker);
    /// An entry that is stored as it is.
    PackageResult addStored(std::string name, std::string content);
    /// An entry of another archive as it stands there: its bytes, method, time and attributes. `packed` must
    /// live until `finish`.
    PackageResult addPacked(const ZipEntry& entry, std::string_view packed);
    /// Writes what has been added so far, so that nothing is held beside what comes next.
    PackageResult writeWaiting();
    /// Writes what is left and the directory.
    PackageResult finish();

  private:
    PackageResult addJob(std::unique_ptr<PackingJob> job);
    PackageResult checkName(const std::string& name);
    PackageResult writeOldest();
    PackageResult writeEntry(PackingJob& job);
    PackageResult emit(std::string_view bytes);
    PackageResult writeEnd();

    ByteSink sink_;
    ZipLimits limits_;
    PackageResult result_;
    std::unordered_set<std::string> names_;
    std::string directory_;
    std::uint64_t written_ = 0;
    std::uint64_t totalBytes_ = 0;
    std::size_t waitingBytes_ = 0;
    PackingQueue queue_;
};

}  // namespace vexa::frontend
