#include "frontend/package/deflate_stream.h"

#include <gtest/gtest.h>

#include <random>

#include "frontend/package/zip_entry_stream.h"
#include "frontend/package/zip_reader.h"
#include "frontend/package/zip_writer.h"

namespace vexa::frontend {
namespace {

/// Numbers as a sheet has them, or bytes that cannot be compressed.
std::string sample(std::size_t bytes, bool isRandom) {
    std::mt19937 random(7);
    std::string text;
    while (text.size() < bytes) {
        text += isRandom ? std::string(1, static_cast<char>(random() & 0xFFU))
                         : "<c><v>" + std::to_string(random()) + "</v></c>";
    }
    text.resize(bytes);
    return text;
}

std::string packed(const std::string& text, unsigned threads, std::size_t pieces, ZipEntry& entry) {
    DeflateStream out(1U << 30U, threads);
    for (std::size_t at = 0; at < text.size(); at += pieces) {
        EXPECT_TRUE(out.write(std::string_view(text).substr(at, pieces)));
    }
    std::string bytes;
    EXPECT_TRUE(out.finish(entry, bytes));
    return bytes;
}

TEST(DeflateStream, IsReadByEveryReader) {
    constexpr std::size_t piece = DeflateStream::pieceBytes;
    for (const bool isRandom : {false, true}) {
        for (const std::size_t bytes : {std::size_t{0}, std::size_t{1}, std::size_t{1000}, piece - 1, piece,
                                        piece + 1, 3 * piece + 12'345}) {
            const std::string text = sample(bytes, isRandom);
            ZipEntry entry;
            entry.name = "a";
            const std::string content = packed(text, 1, 77'777, entry);
            std::string archive;
            ZipWriter zip(gatherInto(archive), ZipLimits{}, 1);
            ASSERT_TRUE(zip.addPacked(entry, content));
            ASSERT_TRUE(zip.finish());
            ZipReader reader;
            ASSERT_TRUE(reader.open(archive));
            std::string whole;
            ASSERT_TRUE(reader.read(0, whole)) << bytes;
            EXPECT_TRUE(whole == text) << bytes;
            std::string streamed;
            std::string_view part;
            const ByteSource source = entrySource(reader, 0);
            for (PackageResult result = source(part); !part.empty(); result = source(part)) {
                ASSERT_TRUE(result);
                streamed += part;
            }
            EXPECT_TRUE(streamed == text) << bytes;
        }
    }
}

TEST(DeflateStream, HasTheSameBytesOnAnyNumberOfCores) {
    const std::string text = sample(15U << 20U, false);
    ZipEntry entry;
    EXPECT_TRUE(packed(text, 1, 1'000'000, entry) == packed(text, 4, 33'333, entry));
}

TEST(DeflateStream, KnowsItsLimit) {
    DeflateStream out(DeflateStream::pieceBytes + 5, 1);
    const std::string text(2 * DeflateStream::pieceBytes, 'a');
    EXPECT_EQ(out.write(text).problem, PackageProblem::beyondLimits);
}

TEST(EntrySource, FindsOutWhatWasChanged) {
    const std::string text = sample(400'000, false);
    std::string archive;
    ZipWriter zip(gatherInto(archive), ZipLimits{}, 1);
    ASSERT_TRUE(zip.add("a", text));
    ASSERT_TRUE(zip.addStored("b", text));
    ASSERT_TRUE(zip.finish());
    for (const std::size_t at : {std::size_t{2'000}, archive.size() - 2'000}) {
        std::string broken = archive;
        broken[at] = static_cast<char>(broken[at] ^ 0x55);
        ZipReader reader;
        ASSERT_TRUE(reader.open(broken));
        bool failed = false;
        for (std::size_t place = 0; place < 2; ++place) {
            std::string_view part;
            const ByteSource source = entrySource(reader, place);
            PackageResult result = source(part);
            while (result && !part.empty()) {
                result = source(part);
            }
            failed |= !result;
        }
        EXPECT_TRUE(failed) << at;
    }
}

}  // namespace
}  // namespace vexa::frontend
