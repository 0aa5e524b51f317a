#include "frontend/package/deflate.h"

#include <libdeflate.h>

#include <new>

namespace vexa::frontend {

Deflater::Deflater(int level) : compressor_(libdeflate_alloc_compressor(level), libdeflate_free_compressor) {}

bool Deflater::pack(std::string_view text, std::string& packed) {
    if (compressor_ == nullptr || text.size() < 2) {
        return false;
    }
    if (scratchBytes_ < text.size()) {
        scratch_.reset(new (std::nothrow) char[text.size()]);
        scratchBytes_ = scratch_ == nullptr ? 0 : text.size();
        if (scratch_ == nullptr) {
            return false;
        }
    }
    // Less room than the text takes: where that does not suffice, the text is better stored as it is.
    const std::size_t length = libdeflate_deflate_compress(compressor_.get(), text.data(), text.size(),
                                                           scratch_.get(), text.size() - 1);
    if (length == 0) {
        return false;
    }
    packed.assign(scratch_.get(), length);
    return true;
}

Inflater::Inflater() : decompressor_(libdeflate_alloc_decompressor(), libdeflate_free_decompressor) {}

bool Inflater::unpack(std::string_view packed, std::size_t bytes, std::string& text) {
    if (decompressor_ == nullptr) {
        return false;
    }
    // One byte more than declared, so that an entry that holds more is found out.
    text.resize(bytes + 1);
    std::size_t taken = 0;
    std::size_t made = 0;
    const libdeflate_result result = libdeflate_deflate_decompress_ex(
        decompressor_.get(), packed.data(), packed.size(), text.data(), text.size(), &taken, &made);
    text.resize(bytes);
    return result == LIBDEFLATE_SUCCESS && taken == packed.size() && made == bytes;
}

std::uint64_t mostUnpacked(std::uint64_t packedBytes) {
    // A match of 258 bytes takes two bits at least.
    constexpr std::uint64_t mostOfAByte = 1032;
    return packedBytes * mostOfAByte;
}

std::uint32_t crcOf(std::string_view text, std::uint32_t before) {
    return text.empty() ? before : libdeflate_crc32(before, text.data(), text.size());
}

std::uint32_t adlerOf(std::string_view text) { return libdeflate_adler32(1, text.data(), text.size()); }

}  // namespace vexa::frontend
