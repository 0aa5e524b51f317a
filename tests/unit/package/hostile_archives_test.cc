// Archives that are cut, changed, or made to do harm: each is refused with its reason, at once.

#include <gtest/gtest.h>

#include "frontend/package/zip_format.h"
#include "tests/unit/package/archives.h"
#include "tests/unit/processor_time.h"

namespace vexa::frontend {
namespace {

using zipformat::RecordWriter;

const std::map<std::string, std::string> twoTexts{{"first", sampleText(1, 300)},
                                                  {"second", sampleText(2, 200)}};

/// The record that begins at the `count`-th signature, counted from 0.
std::size_t placeOf(const std::string& bytes, const char* signature, int count) {
    std::size_t at = bytes.find(signature);
    for (; count > 0; --count) {
        at = bytes.find(signature, at + 1);
    }
    return at;
}

std::size_t central(const std::string& bytes, int count) { return placeOf(bytes, "PK\x01\x02", count); }
std::size_t local(const std::string& bytes, int count) { return placeOf(bytes, "PK\x03\x04", count); }
std::size_t endOf(const std::string& bytes) { return bytes.rfind("PK\x05\x06"); }

std::string with(std::string bytes, std::size_t at, std::uint64_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFFU);
    }
    return bytes;
}

TEST(HostileArchives, CutAtEveryLength) {
    const std::string bytes = archiveOf(twoTexts);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const PackageProblem expected = length < 4 ? PackageProblem::notAnArchive : PackageProblem::damaged;
        EXPECT_EQ(outcomeOf(std::string_view(bytes).substr(0, length)).problem, expected) << length;
    }
}

TEST(HostileArchives, ChangedInEveryByteGiveTheSameContentOrNone) {
    const std::string bytes = archiveOf(twoTexts);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (const unsigned change : {0x01U, 0x80U, 0xFFU}) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(static_cast<unsigned char>(changed[at]) ^ change);
            ZipReader reader;
            if (!reader.open(changed)) {
                continue;
            }
            for (std::size_t place = 0; place < reader.count(); ++place) {
                std::string content;
                const bool read = static_cast<bool>(reader.read(place, content));
                const auto same = twoTexts.find(reader.entry(place).name);
                EXPECT_TRUE(!read || (same != twoTexts.end() && same->second == content)) << at;
            }
        }
    }
}

TEST(HostileArchives, WithSomethingBeforeBetweenOrBehind) {
    const std::string bytes = archiveOf(twoTexts);
    EXPECT_EQ(outcomeOf("x" + bytes).problem, PackageProblem::damaged);
    EXPECT_EQ(outcomeOf(bytes + "x").problem, PackageProblem::damaged);
    // A comment that is one.
    EXPECT_TRUE(outcomeOf(with(bytes, endOf(bytes) + 20, 3, 2) + "abc"));
    EXPECT_EQ(outcomeOf(with(bytes, endOf(bytes) + 20, 3, 2) + "ab").problem, PackageProblem::damaged);
    std::string between = bytes;
    between.insert(local(bytes, 1), "hidden");
    between = with(between, central(between, 1) + 42, local(between, 1), 4);
    between = with(between, endOf(between) + 16, central(between, 0), 4);
    EXPECT_EQ(outcomeOf(between).problem, PackageProblem::damaged);
}

TEST(HostileArchives, WithEntriesThatOverlap) {
    const std::string bytes = archiveOf(twoTexts);
    // Both entries of the directory name the first one's bytes; names and sizes agree with its header.
    std::string bomb = bytes;
    const std::size_t first = central(bytes, 0);
    const std::size_t second = central(bytes, 1);
    bomb.replace(second, bomb.size() - second,
                 bytes.substr(first, second - first) + bytes.substr(endOf(bytes)));
    bomb = with(bomb, endOf(bomb) + 12, 2 * (second - first), 4);
    EXPECT_EQ(outcomeOf(bomb).problem, PackageProblem::damaged) << "the name is there twice";
    bomb[second + 46] = 'F';
    EXPECT_EQ(outcomeOf(bomb).problem, PackageProblem::damaged);
}

TEST(HostileArchives, WithNamesThatAreThereTwice) {
    std::string bytes = archiveOf({{"aaa", "x"}, {"aab", "y"}});
    for (std::size_t at = bytes.find("aab"); at != std::string::npos; at = bytes.find("aab")) {
        bytes[at + 2] = 'a';
    }
    const PackageResult result = outcomeOf(bytes);
    EXPECT_EQ(result.problem, PackageProblem::damaged);
    EXPECT_EQ(result.shownDetail(), "the archive");
}

TEST(HostileArchives, WithOtherNamesInHeadersThanInTheDirectory) {
    const std::string bytes = archiveOf(twoTexts);
    EXPECT_EQ(outcomeOf(with(bytes, local(bytes, 0) + 30, 'x', 1)).problem, PackageProblem::damaged);
}

TEST(HostileArchives, WithABadChecksum) {
    const std::string bytes = archiveOf(twoTexts);
    const std::string both = with(with(bytes, central(bytes, 1) + 16, 1, 4), local(bytes, 1) + 14, 1, 4);
    const PackageResult result = outcomeOf(both);
    EXPECT_EQ(result.problem, PackageProblem::damaged);
    EXPECT_EQ(result.shownDetail(), "the entry second");
    const std::string one = with(bytes, central(bytes, 1) + 16, 1, 4);
    EXPECT_EQ(outcomeOf(one).shownDetail(), "the archive") << "header and directory differ";
}

std::string declaring(const std::string& bytes, std::uint32_t size) {
    return with(with(bytes, central(bytes, 1) + 24, size, 4), local(bytes, 1) + 22, size, 4);
}

TEST(HostileArchives, WithOtherSizesThanTheyHold) {
    const std::string bytes = archiveOf(twoTexts);
    EXPECT_TRUE(outcomeOf(declaring(bytes, 200)));
    for (const std::uint32_t size : {0U, 1U, 199U, 201U, 100'000U, 500U << 20U}) {
        EXPECT_EQ(outcomeOf(declaring(bytes, size)).problem, PackageProblem::damaged) << size;
    }
    for (const std::uint32_t size : {513U << 20U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(outcomeOf(declaring(bytes, size)).problem, PackageProblem::tooLarge) << size;
    }
}

TEST(HostileArchives, ThatDeclareMoreThanTheyCanHoldTakeNoMemory) {
    const std::string bytes = declaring(archiveOf(twoTexts), 400U << 20U);
    ZipReader reader;
    ASSERT_TRUE(reader.open(bytes));
    std::string content;
    EXPECT_EQ(reader.read(1, content).problem, PackageProblem::damaged);
    EXPECT_LT(content.capacity(), 1U << 20U);
}

TEST(HostileArchives, ThatUnpackToMoreThanIsAllowed) {
    const std::string bytes = archiveOf({{"zeros", std::string(20U << 20U, '\0')}});
    EXPECT_LT(bytes.size(), 30'000U);
    EXPECT_EQ(outcomeOf(bytes, {1U << 20U, 10, 1U << 20U, 1U << 20U}).problem, PackageProblem::tooLarge);
}

TEST(HostileArchives, WithOtherMethodsOrEncryption) {
    const std::string bytes = archiveOf(twoTexts);
    for (const unsigned method : {1U, 9U, 12U, 14U, 93U, 99U}) {
        const PackageResult result =
            outcomeOf(with(with(bytes, central(bytes, 0) + 10, method, 2), local(bytes, 0) + 8, method, 2));
        EXPECT_EQ(result.problem, PackageProblem::otherCompression) << method;
        EXPECT_EQ(result.shownDetail(), "method " + std::to_string(method));
    }
    const std::string encrypted = with(with(bytes, central(bytes, 0) + 8, 1, 2), local(bytes, 0) + 6, 1, 2);
    EXPECT_EQ(outcomeOf(encrypted).problem, PackageProblem::damaged);
}

TEST(HostileArchives, WithCountsThatAreNotTrue) {
    const std::string bytes = archiveOf(twoTexts);
    for (const unsigned count : {0U, 1U, 3U, 1000U, 0xFFFFU}) {
        const std::string changed =
            with(with(bytes, endOf(bytes) + 8, count, 2), endOf(bytes) + 10, count, 2);
        EXPECT_EQ(outcomeOf(changed).problem, PackageProblem::damaged) << count;
    }
    EXPECT_EQ(outcomeOf(with(bytes, endOf(bytes) + 4, 1, 2)).problem, PackageProblem::damaged) << "disks";
    EXPECT_EQ(outcomeOf(with(bytes, endOf(bytes) + 16, 0xFFFFFFFF, 4)).problem, PackageProblem::damaged);
    EXPECT_EQ(outcomeOf(with(bytes, endOf(bytes) + 12, 0xFFFFFFFF, 4)).problem, PackageProblem::damaged);
}

TEST(HostileArchives, ThatCountBillionsInAWideRecord) {
    std::string bytes;
    RecordWriter record(bytes);
    record.four(zipformat::wideEndSignature).eight(44).two(45).two(45).four(0).four(0);
    record.eight(1ULL << 40U).eight(1ULL << 40U).eight(0).eight(0);
    record.four(zipformat::wideLocatorSignature).four(0).eight(0).four(1);
    record.four(zipformat::endSignature).two(0).two(0).two(0xFFFF).two(0xFFFF).four(0).four(0).two(0);
    EXPECT_EQ(outcomeOf(bytes).problem, PackageProblem::damaged);
    EXPECT_EQ(outcomeOf(archiveOf(twoTexts) + bytes).problem, PackageProblem::damaged);
}

TEST(HostileArchives, OfManyEndRecordsAreReadInNoTime) {
    std::string bytes;
    while (bytes.size() < 4U << 20U) {
        bytes += std::string("PK\x05\x06", 4) + std::string(4, '\xFF');
    }
    constexpr double kFarTooLong = 20;  // seconds; a cost that grows with the square takes minutes
    EXPECT_LT(processorSeconds([&] { EXPECT_EQ(outcomeOf(bytes).problem, PackageProblem::notAnArchive); }),
              kFarTooLong);
}

}  // namespace
}  // namespace vexa::frontend
