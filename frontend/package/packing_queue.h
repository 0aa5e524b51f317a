// Compresses entries on all cores, and gives them back in the order in which they came.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "frontend/package/deflate.h"
#include "frontend/package/package_result.h"
#include "frontend/package/zip_entry.h"

namespace vexa::frontend {

/// One entry on its way into an archive. Any thread may work on it, one at a time.
struct PackingJob {
    ZipEntry entry;
    std::function<PackageResult(std::string& content)> make;  ///< makes the content first; may be empty
    std::string content;
    std::string packed;
    std::string_view bytes;   ///< what goes into the archive; set by the work, or beforehand
    bool compressed = true;   ///< whether the content is to be compressed
    std::uint64_t limit = 0;  ///< of the content, in bytes
    std::size_t held = 0;     ///< what the content took when the job came, in bytes
    PackageResult result;
    bool done = false;  ///< guarded by the queue

    /// Makes, measures and compresses the content.
    void work(Deflater& deflater);
};

class PackingQueue {
  public:
    /// `threads` is how many work in all, the caller's own included; 0 is one a core.
    explicit PackingQueue(unsigned threads, int level = usualDeflateLevel);
    /// Waits for the work that has begun and drops the rest.
    ~PackingQueue();
    PackingQueue(const PackingQueue&) = delete;
    PackingQueue& operator=(const PackingQueue&) = delete;

    [[nodiscard]] std::size_t threads() const { return helpersWanted_ + 1; }
    void push(std::unique_ptr<PackingJob> job);
    [[nodiscard]] bool empty() const { return jobs_.empty(); }
    [[nodiscard]] std::size_t size() const { return jobs_.size(); }
    /// Whether the oldest job is done.
    [[nodiscard]] bool isFrontDone();
    /// The oldest job once it is done; the caller works meanwhile.
    [[nodiscard]] std::unique_ptr<PackingJob> pop();

  private:
    void help();
    /// False when the queue ends.
    bool waitForWork();
    PackingJob* takeWork();
    void workOn(PackingJob& job, Deflater& deflater, std::unique_lock<std::mutex>& lock);
    void startHelpers();

    std::size_t helpersWanted_;
    int level_;
    Deflater ownDeflater_;
    std::vector<std::thread> helpers_;
    std::mutex mutex_;
    std::condition_variable workCame_;
    std::condition_variable workDone_;
    std::deque<std::unique_ptr<PackingJob>> jobs_;  ///< only the caller changes it
    std::deque<PackingJob*> waiting_;               ///< guarded; the jobs that nobody works on
    std::size_t helpersBegun_ = 0;                  ///< guarded
    bool stopping_ = false;                         ///< guarded
};

}  // namespace vexa::frontend
