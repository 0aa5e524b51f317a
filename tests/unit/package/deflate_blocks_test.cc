#include "frontend/package/deflate_blocks.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

#include "frontend/package/deflate.h"

namespace vexa::frontend {
namespace {

/// Bytes that repeat, numbers, and what cannot be compressed, one behind the other.
std::string sample(std::size_t bytes) {
    std::mt19937 random(11);
    std::string text;
    while (text.size() < bytes) {
        const auto kind = random() % 3;
        for (int i = 0; i < 2'000; ++i) {
            text += kind == 0   ? "abc" + std::to_string(i % 7)
                    : kind == 1 ? std::to_string(random())
                                : std::string(1, static_cast<char>(random() & 0xFFU));
        }
    }
    text.resize(bytes);
    return text;
}

std::string deflatedBy(int level, int strategy, const std::string& text) {
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, level, Z_DEFLATED, -MAX_WBITS, 8, strategy), Z_OK);
    std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())) + 100, '\0');
    std::string given = text;
    stream.next_in = reinterpret_cast<Bytef*>(given.data());
    stream.avail_in = static_cast<uInt>(given.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);
    return packed;
}

/// The same by the library that unpacks it.
DeflateBlock lastBlockByLibrary(std::string packed) {
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, -MAX_WBITS), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    std::string scratch(1U << 16U, '\0');
    DeflateBlock found;
    for (int result = Z_OK; result == Z_OK;) {
        stream.next_out = reinterpret_cast<Bytef*>(scratch.data());
        stream.avail_out = static_cast<uInt>(scratch.size());
        result = inflate(&stream, Z_BLOCK);
        if ((stream.data_type & 128) != 0) {
            const std::uint64_t bits =
                (packed.size() - stream.avail_in) * 8 - static_cast<unsigned>(stream.data_type & 7);
            ((stream.data_type & 64) != 0 ? found.end : found.begin) = bits;
        }
    }
    inflateEnd(&stream);
    return found;
}

void expectFound(const std::string& packed) {
    const auto found = lastDeflateBlock(packed);
    ASSERT_TRUE(found.has_value());
    const DeflateBlock expected = lastBlockByLibrary(packed);
    EXPECT_EQ(found->begin, expected.begin);
    EXPECT_EQ(found->end, expected.end);
    EXPECT_EQ((found->end + 7) / 8, packed.size());
}

TEST(DeflateBlocks, LastOneIsFoundInWhatEveryPackerMakes) {
    for (const std::size_t bytes : {0U, 1U, 100U, 5000U, 300000U, 1000000U}) {
        const std::string text = sample(bytes);
        for (const int level : {0, 1, 6, 9}) {
            for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FIXED, Z_HUFFMAN_ONLY, Z_RLE}) {
                SCOPED_TRACE(std::to_string(bytes) + " " + std::to_string(level) + " " +
                             std::to_string(strategy));
                expectFound(deflatedBy(level, strategy, text));
            }
        }
        for (int level = 1; level <= 9; ++level) {
            std::string packed;
            if (Deflater(level).pack(text, packed)) expectFound(packed);
        }
    }
}

TEST(DeflateBlocks, CutOffBytesHaveNone) {
    const std::string packed = deflatedBy(6, Z_DEFAULT_STRATEGY, sample(20'000));
    EXPECT_FALSE(lastDeflateBlock("").has_value());
    for (std::size_t length = 1; length + 1 < packed.size(); length += 7) {
        EXPECT_FALSE(lastDeflateBlock(std::string_view(packed).substr(0, length)).has_value()) << length;
    }
}

TEST(DeflateBlocks, AnyBytesAreTaken) {
    std::mt19937 random(5);
    std::size_t none = 0;
    for (int i = 0; i < 3'000; ++i) {
        std::string bytes(random() % 300, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random() & 0xFFU);
        none += lastDeflateBlock(bytes).has_value() ? 0U : 1U;
    }
    EXPECT_GT(none, 2'000U);
}

TEST(DeflateBlocks, EmptyOneEndsWithAByte) {
    for (unsigned freeBits = 0; freeBits < 8; ++freeBits) {
        std::string packed(freeBits > 0 ? 1 : 0, '\0');
        appendEmptyBlock(packed, freeBits);
        const std::string expected("\x00\x00\xFF\xFF", 4);
        EXPECT_TRUE(packed.ends_with(expected));
        EXPECT_EQ(packed.size(), (freeBits > 0 ? 1U : 0U) + 4 + (freeBits < 3 ? 1U : 0U));
    }
}

}  // namespace
}  // namespace vexa::frontend
