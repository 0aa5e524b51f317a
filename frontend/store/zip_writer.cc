#include "frontend/store/zip_writer.h"

#include <zip.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>

#include "frontend/store/limits.h"

namespace vexa::frontend {
namespace {

// Most of the time of a save goes into compressing; the levels above gain little on text like this.
constexpr zip_uint32_t compressionLevel = 3;
constexpr zip_uint16_t fixedTime = 0;
constexpr zip_uint16_t fixedDate = (1U << 5U) | 1U;  // 1 January 1980
constexpr zip_uint32_t fixedRights = 0100644U << 16U;
constexpr std::size_t blockBytes = 1U << 20U;

struct ZipDeleter {
    void operator()(zip_t* archive) const { zip_discard(archive); }
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Archive = std::unique_ptr<zip_t, ZipDeleter>;
using Source = std::unique_ptr<zip_source_t, ZipDeleter>;

/// What all entries of one archive share while it is written.
struct Writing {
    const ZipPlan& plan;
    StoreResult result;
    std::uint64_t totalBytes = 0;
};

/// One entry, asked for its bytes by libzip: made when it is first needed, dropped when it is closed.
class Entry {
  public:
    Entry(Writing& writing, std::size_t index) : writing_(writing), index_(index) { zip_error_init(&error_); }

    static zip_int64_t callback(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
        return static_cast<Entry*>(state)->answer(data, length, command);
    }

  private:
    zip_int64_t answer(void* data, zip_uint64_t length, zip_source_cmd_t command) {
        switch (command) {
            case ZIP_SOURCE_OPEN:
                offset_ = 0;
                return make() ? 0 : -1;
            case ZIP_SOURCE_READ:
                return read(data, length);
            case ZIP_SOURCE_CLOSE:
                drop();
                return 0;
            case ZIP_SOURCE_STAT:
                return make() ? stat(static_cast<zip_stat_t*>(data)) : -1;
            case ZIP_SOURCE_ERROR:
                return zip_error_to_data(&error_, data, length);
            case ZIP_SOURCE_FREE:
                delete this;
                return 0;
            case ZIP_SOURCE_SUPPORTS:
                return ZIP_SOURCE_SUPPORTS_READABLE;
            default:
                zip_error_set(&error_, ZIP_ER_OPNOTSUPP, 0);
                return -1;
        }
    }

    bool make() {
        if (made_) {
            return true;
        }
        // libzip is C: nothing may be thrown through it.
        try {
            writing_.result = writing_.plan.content(index_, content_);
        } catch (const std::exception&) {
            writing_.result = StoreProblem::noMemory;
        }
        writing_.totalBytes += content_.size();
        if (writing_.result && writing_.totalBytes > limits::totalBytes) {
            writing_.result = {StoreProblem::beyondLimits, "the size of all items together"_text};
        }
        made_ = static_cast<bool>(writing_.result);
        if (!made_) {
            zip_error_set(&error_, ZIP_ER_INTERNAL, 0);
        }
        return made_;
    }

    void drop() {
        content_ = std::string();
        made_ = false;
    }

    zip_int64_t read(void* data, zip_uint64_t length) {
        const std::size_t count = std::min<std::size_t>(content_.size() - offset_, length);
        std::memcpy(data, content_.data() + offset_, count);
        offset_ += count;
        return static_cast<zip_int64_t>(count);
    }

    [[nodiscard]] zip_int64_t stat(zip_stat_t* stat) const {
        zip_stat_init(stat);
        stat->size = content_.size();
        stat->valid |= ZIP_STAT_SIZE;
        return sizeof(zip_stat_t);
    }

    Writing& writing_;
    std::size_t index_;
    std::string content_;
    std::size_t offset_ = 0;
    bool made_ = false;
    zip_error_t error_{};
};

bool addEntry(zip_t* archive, Writing& writing, std::size_t index) {
    auto entry = std::make_unique<Entry>(writing, index);
    Source source(zip_source_function(archive, &Entry::callback, entry.get()));
    if (!source) {
        return false;
    }
    static_cast<void>(entry.release());  // the source frees it
    const zip_int64_t added =
        zip_file_add(archive, writing.plan.names[index].c_str(), source.get(), ZIP_FL_ENC_UTF_8);
    if (added < 0) {
        return false;
    }
    static_cast<void>(source.release());  // the archive frees it
    const auto place = static_cast<zip_uint64_t>(added);
    const zip_int32_t method = writing.plan.compressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
    return zip_set_file_compression(archive, place, method, compressionLevel) == 0 &&
           zip_file_set_dostime(archive, place, fixedTime, fixedDate, 0) == 0 &&
           zip_file_set_external_attributes(archive, place, 0, ZIP_OPSYS_UNIX, fixedRights) == 0;
}

StoreResult pass(zip_source_t* source, const ByteSink& sink) {
    if (zip_source_open(source) != 0) {
        return StoreProblem::noMemory;
    }
    std::string block(blockBytes, '\0');
    StoreResult result;
    while (result) {
        const zip_int64_t count = zip_source_read(source, block.data(), block.size());
        if (count <= 0) {
            result = count < 0 ? StoreResult(StoreProblem::noMemory) : StoreResult();
            break;
        }
        result = sink(std::string_view(block).substr(0, static_cast<std::size_t>(count)));
    }
    zip_source_close(source);
    return result;
}

}  // namespace

StoreResult writeZip(const ZipPlan& plan, const ByteSink& sink) {
    Writing writing{plan, {}, 0};
    zip_error_t error;
    zip_error_init(&error);
    Source buffer(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (!buffer) {
        return StoreProblem::noMemory;
    }
    Archive archive(zip_open_from_source(buffer.get(), ZIP_CREATE | ZIP_TRUNCATE, &error));
    if (!archive) {
        return StoreProblem::noMemory;
    }
    zip_source_keep(buffer.get());  // the archive frees the source, and so do we
    for (std::size_t index = 0; index < plan.names.size(); ++index) {
        if (!addEntry(archive.get(), writing, index)) {
            return StoreProblem::noMemory;
        }
    }
    if (zip_close(archive.get()) != 0) {
        return writing.result ? StoreResult(StoreProblem::noMemory) : writing.result;
    }
    static_cast<void>(archive.release());
    return pass(buffer.get(), sink);
}

}  // namespace vexa::frontend
