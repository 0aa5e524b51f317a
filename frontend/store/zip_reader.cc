#include "frontend/store/zip_reader.h"

#include <zip.h>

#include <algorithm>
#include <string>

#include "frontend/store/limits.h"

namespace vexa::frontend {
namespace {

constexpr std::string_view localSignature = "PK\x03\x04";
constexpr std::string_view centralSignature = "PK\x01\x02";

// libzip makes a record for every entry before it can be asked how many there are.
bool hasTooManyEntries(std::string_view bytes) {
    std::size_t count = 0;
    for (std::size_t at = bytes.find(centralSignature); at != std::string_view::npos;
         at = bytes.find(centralSignature, at + centralSignature.size())) {
        ++count;
    }
    return count > limits::entries;
}

// The library reads more methods on some systems than on others; documents mean the same everywhere.
bool isReadMethod(const zip_stat_t& stat) {
    return (stat.valid & ZIP_STAT_COMP_METHOD) != 0 &&
           (stat.comp_method == ZIP_CM_STORE || stat.comp_method == ZIP_CM_DEFLATE);
}

bool isSafePart(std::string_view part) { return !part.empty() && part != "." && part != ".."; }

}  // namespace

bool isSafeEntryName(std::string_view name) {
    constexpr std::string_view forbidden("\\:\0", 3);
    if (name.size() > limits::entryNameBytes || name.find_first_of(forbidden) != std::string_view::npos) {
        return false;
    }
    for (std::size_t slash = name.find('/'); slash != std::string_view::npos; slash = name.find('/')) {
        if (!isSafePart(name.substr(0, slash))) {
            return false;
        }
        name.remove_prefix(slash + 1);
    }
    return isSafePart(name);
}

ZipReader::ZipReader() : archive_(nullptr, [](zip* archive) { zip_discard(archive); }) {}
ZipReader::~ZipReader() = default;

StoreResult ZipReader::open(std::string_view bytes) {
    if (hasTooManyEntries(bytes)) {
        return {StoreProblem::tooLarge, "the number of entries"_text};
    }
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    if (source == nullptr) {
        return StoreProblem::noMemory;
    }
    archive_.reset(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error));
    if (archive_ == nullptr) {
        zip_source_free(source);
        const bool wasArchive =
            zip_error_code_zip(&error) != ZIP_ER_NOZIP || bytes.substr(0, 4) == localSignature;
        return wasArchive ? StoreResult(StoreProblem::damaged, "the archive"_text)
                          : StoreProblem::notADocument;
    }
    return checkEntries();
}

StoreResult ZipReader::checkEntries() {
    std::uint64_t total = 0;
    const auto count = static_cast<std::uint64_t>(zip_get_num_entries(archive_.get(), 0));
    for (std::uint64_t place = 0; place < count; ++place) {
        zip_stat_t stat;
        if (zip_stat_index(archive_.get(), place, 0, &stat) != 0 || (stat.valid & ZIP_STAT_SIZE) == 0) {
            return {StoreProblem::damaged, "the archive"_text};
        }
        const std::string name = stat.name;
        if (!isSafeEntryName(name) || !entries_.emplace(name, place).second) {
            return {StoreProblem::unsafeName, name};
        }
        if (stat.size > limits::totalBytes || total + stat.size > limits::totalBytes) {
            return {StoreProblem::tooLarge, "what it unpacks to"_text};
        }
        total += stat.size;
    }
    return {};
}

std::optional<std::uint64_t> ZipReader::find(const std::string& name) const {
    const auto found = entries_.find(name);
    return found == entries_.end() ? std::nullopt : std::optional(found->second);
}

StoreResult ZipReader::read(std::uint64_t place, std::uint64_t limit, std::string& content) const {
    zip_stat_t stat;
    zip_file_t* file = nullptr;
    if (zip_stat_index(archive_.get(), place, 0, &stat) == 0) {
        if (stat.size > limit) {
            return {StoreProblem::tooLarge, "what it unpacks to"_text};
        }
        if (!isReadMethod(stat)) {
            return {StoreProblem::otherCompression,
                    composed("method ^1"_text, {std::to_string(stat.comp_method)})};
        }
        file = zip_fopen_index(archive_.get(), place, 0);
    }
    if (file == nullptr) {
        return {StoreProblem::damaged, "an entry of the archive"_text};
    }
    // One byte more than declared is asked for, so that an entry that holds more is found out.
    content.assign(static_cast<std::size_t>(stat.size) + 1, '\0');
    std::size_t length = 0;
    zip_int64_t count = 1;
    while (count > 0 && length < content.size()) {
        count = zip_fread(file, content.data() + length, content.size() - length);
        length += count > 0 ? static_cast<std::size_t>(count) : 0U;
    }
    const bool whole = zip_fclose(file) == 0 && count == 0 && length == stat.size;
    content.resize(whole ? length : 0);
    return whole ? StoreResult()
                 : StoreResult(StoreProblem::damaged, composed("the entry ^1"_text, {stat.name}));
}

}  // namespace vexa::frontend
