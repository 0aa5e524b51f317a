#include "frontend/package/packing_queue.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

#include "backend/platform/thread_work.h"

namespace vexa::frontend {
namespace {

// More threads than this wait for the one that makes the contents.
constexpr std::size_t mostThreads = 16;
// A save of a few small entries is over before a thread has started.
constexpr std::size_t jobsWithoutHelp = 4;

std::size_t helpersFor(unsigned threads) {
    const std::size_t wanted = threads == 0 ? std::thread::hardware_concurrency() : threads;
    return std::clamp(wanted, std::size_t{1}, mostThreads) - 1;
}

}  // namespace

void PackingJob::work(Deflater& deflater) {
    try {
        if (make) {
            result = make(content);
        }
        if (!result) {
            return;
        }
        if (content.size() > limit) {
            result = {PackageProblem::beyondLimits, "the size of one item"_text};
            return;
        }
        const bool smaller = compressed && deflater.pack(content, packed);
        entry.method = smaller ? zipDeflated : zipStored;
        entry.crc = crcOf(content);
        entry.bytes = content.size();
        if (smaller) {
            content = std::string();
        }
        bytes = smaller ? packed : content;
        entry.packedBytes = bytes.size();
    } catch (const std::exception&) {
        result = PackageProblem::noMemory;
    }
}

PackingQueue::PackingQueue(unsigned threads, int level)
    : helpersWanted_(helpersFor(threads)), level_(level), ownDeflater_(level) {}

PackingQueue::~PackingQueue() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        waiting_.clear();
    }
    workCame_.notify_all();
    for (std::thread& helper : helpers_) {
        helper.join();
    }
}

// A thread that the system does not give is none that must be there: the caller works, too.
void PackingQueue::startHelpers() {
    try {
        while (helpers_.size() < helpersWanted_) {
            helpers_.emplace_back([this] { help(); });
        }
    } catch (const std::exception&) {
        helpersWanted_ = helpers_.size();
    }
    // A thread that begins takes memory, which is work as well.
    std::unique_lock lock(mutex_);
    workDone_.wait(lock, [this] { return helpersBegun_ == helpers_.size(); });
}

void PackingQueue::push(std::unique_ptr<PackingJob> job) {
    PackingJob* const added = jobs_.emplace_back(std::move(job)).get();
    if (added->done) {
        return;
    }
    if (jobs_.size() > jobsWithoutHelp && helpers_.size() < helpersWanted_) {
        startHelpers();
    }
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(added);
    }
    workCame_.notify_one();
}

bool PackingQueue::isFrontDone() {
    const std::lock_guard lock(mutex_);
    return !jobs_.empty() && jobs_.front()->done;
}

std::unique_ptr<PackingJob> PackingQueue::pop() {
    {
        std::unique_lock lock(mutex_);
        while (!jobs_.front()->done) {
            if (PackingJob* const job = takeWork(); job != nullptr) {
                workOn(*job, ownDeflater_, lock);
            } else {
                workDone_.wait(lock);
            }
        }
    }
    std::unique_ptr<PackingJob> job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
}

/// The next job that nobody works on, or null. With the lock.
PackingJob* PackingQueue::takeWork() {
    if (waiting_.empty()) {
        return nullptr;
    }
    PackingJob* const job = waiting_.front();
    waiting_.pop_front();
    return job;
}

/// With the lock, which is open during the work.
void PackingQueue::workOn(PackingJob& job, Deflater& deflater, std::unique_lock<std::mutex>& lock) {
    lock.unlock();
    job.work(deflater);
    lock.lock();
    job.done = true;
}

bool PackingQueue::waitForWork() {
    std::unique_lock lock(mutex_);
    workCame_.wait(lock, [this] { return stopping_ || !waiting_.empty(); });
    return !stopping_;
}

void PackingQueue::help() {
    {
        const std::lock_guard lock(mutex_);
        ++helpersBegun_;
    }
    workDone_.notify_one();
    std::optional<Deflater> deflater;
    while (waitForWork()) {
        const ThreadWork work;
        if (!deflater) {
            deflater.emplace(level_);
        }
        std::unique_lock lock(mutex_);
        if (PackingJob* const job = takeWork(); job != nullptr) {
            workOn(*job, *deflater, lock);
            workDone_.notify_one();
        }
    }
}

}  // namespace vexa::frontend
