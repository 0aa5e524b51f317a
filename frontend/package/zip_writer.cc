#include "frontend/package/zip_writer.h"

#include <algorithm>
#include <utility>

#include "frontend/package/zip_format.h"

namespace vexa::frontend {

namespace {

using zipformat::centralSignature;
using zipformat::endSignature;
using zipformat::flagUtf8;
using zipformat::localSignature;
using zipformat::RecordWriter;
using zipformat::seeWide16;
using zipformat::seeWide32;
using zipformat::wideEndBytes;
using zipformat::wideEndSignature;
using zipformat::wideLocatorSignature;

// What waits to be compressed, for each thread: enough that none is idle, little beside the document.
constexpr std::size_t waitingBytesOfAThread = 2U << 20U;
constexpr std::size_t waitingJobsOfAThread = 256;
constexpr std::uint16_t versionNeeded = 20;
constexpr std::uint16_t versionWide = 45;
constexpr std::uint16_t madeOnUnix = 3U << 8U;

std::uint16_t flagsOf(const ZipEntry& entry) {
    const bool ascii = std::all_of(entry.name.begin(), entry.name.end(),
                                   [](char byte) { return static_cast<unsigned char>(byte) < 0x80U; });
    return ascii ? 0 : flagUtf8;
}

/// What the header of an entry and its record in the directory have in common.
void describe(const ZipEntry& entry, RecordWriter& record) {
    record.two(versionNeeded).two(flagsOf(entry)).two(entry.method).two(entry.time).two(entry.date);
    record.four(entry.crc).four(entry.packedBytes).four(entry.bytes);
    record.two(entry.name.size()).two(0);
}

std::unique_ptr<PackingJob> makeJob(std::string name, const ZipLimits& limits) {
    auto job = std::make_unique<PackingJob>();
    job->entry.name = std::move(name);
    job->limit = std::min<std::uint64_t>(limits.entryBytes, seeWide32 - 1);
    return job;
}

}  // namespace

ZipWriter::ZipWriter(ByteSink sink, const ZipLimits& limits, unsigned threads, int level)
    : sink_(std::move(sink)), limits_(limits), queue_(threads, level) {
    limits_.nameBytes = std::min<std::size_t>(limits_.nameBytes, seeWide16);
    limits_.fileBytes = std::min<std::uint64_t>(limits_.fileBytes, seeWide32 - 1);
}

PackageResult ZipWriter::add(std::string name, std::string content) {
    auto job = makeJob(std::move(name), limits_);
    job->content = std::move(content);
    return addJob(std::move(job));
}

PackageResult ZipWriter::addMade(std::string name, Maker maker) {
    auto job = makeJob(std::move(name), limits_);
    job->make = std::move(maker);
    return addJob(std::move(job));
}

PackageResult ZipWriter::addStored(std::string name, std::string content) {
    auto job = makeJob(std::move(name), limits_);
    job->content = std::move(content);
    job->compressed = false;
    return addJob(std::move(job));
}

PackageResult ZipWriter::addPacked(const ZipEntry& entry, std::string_view packed) {
    auto job = makeJob(entry.name, limits_);
    if (entry.bytes > job->limit && result_) {
        result_ = {PackageProblem::beyondLimits, "the size of one item"_text};
    }
    job->entry = entry;
    job->entry.packedBytes = packed.size();
    job->bytes = packed;
    job->done = true;
    return addJob(std::move(job));
}

PackageResult ZipWriter::checkName(const std::string& name) {
    if (names_.size() >= limits_.entries) {
        return {PackageProblem::beyondLimits, "the number of entries"_text};
    }
    if (!isSafeEntryName(name, limits_) || !names_.insert(name).second) {
        return PackageResult::named(PackageProblem::unsafeName, name);
    }
    return {};
}

PackageResult ZipWriter::addJob(std::unique_ptr<PackingJob> job) {
    if (result_) {
        result_ = checkName(job->entry.name);
    }
    if (!result_) {
        return result_;
    }
    job->held = job->content.size();
    waitingBytes_ += job->held;
    queue_.push(std::move(job));
    const auto isFull = [this] {
        return waitingBytes_ > waitingBytesOfAThread * queue_.threads() ||
               queue_.size() > waitingJobsOfAThread * queue_.threads();
    };
    while (result_ && !queue_.empty() && (isFull() || queue_.isFrontDone())) {
        result_ = writeOldest();
    }
    return result_;
}

PackageResult ZipWriter::writeWaiting() {
    while (result_ && !queue_.empty()) {
        result_ = writeOldest();
    }
    return result_;
}

PackageResult ZipWriter::finish() {
    if (writeWaiting()) {
        result_ = writeEnd();
    }
    return result_;
}

PackageResult ZipWriter::writeOldest() {
    const std::unique_ptr<PackingJob> job = queue_.pop();
    waitingBytes_ -= job->held;
    return job->result ? writeEntry(*job) : job->result;
}

PackageResult ZipWriter::writeEntry(PackingJob& job) {
    totalBytes_ += job.entry.bytes;
    if (totalBytes_ > limits_.totalBytes) {
        return {PackageProblem::beyondLimits, "the size of all items together"_text};
    }
    job.entry.offset = written_;
    std::string header;
    RecordWriter local(header);
    local.four(localSignature);
    describe(job.entry, local);
    local.text(job.entry.name);
    RecordWriter central(directory_);
    central.four(centralSignature).two(job.entry.madeBy);
    describe(job.entry, central);
    central.two(0).two(0).two(0).four(job.entry.attributes).four(job.entry.offset).text(job.entry.name);
    if (PackageResult result = emit(header); !result) {
        return result;
    }
    return emit(job.bytes);
}

PackageResult ZipWriter::writeEnd() {
    const std::uint64_t count = names_.size();
    const std::uint64_t bytes = directory_.size();
    const std::uint64_t offset = written_;
    RecordWriter record(directory_);
    if (count >= seeWide16) {
        record.four(wideEndSignature).eight(wideEndBytes - 12).two(madeOnUnix | versionWide).two(versionWide);
        record.four(0).four(0).eight(count).eight(count).eight(bytes).eight(offset);
        record.four(wideLocatorSignature).four(0).eight(offset + bytes).four(1);
    }
    const std::uint64_t shown = std::min<std::uint64_t>(count, seeWide16);
    record.four(endSignature).two(0).two(0).two(shown).two(shown).four(bytes).four(offset).two(0);
    return emit(directory_);
}

PackageResult ZipWriter::emit(std::string_view bytes) {
    written_ += bytes.size();
    if (written_ > limits_.fileBytes) {
        return {PackageProblem::beyondLimits, "the size of all items together"_text};
    }
    return bytes.empty() ? PackageResult() : sink_(bytes);
}

}  // namespace vexa::frontend
