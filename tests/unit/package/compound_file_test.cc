#include "frontend/package/compound_file.h"

#include <gtest/gtest.h>

#include "tests/unit/package/archives.h"

namespace vexa::frontend {
namespace {

std::string written(const CompoundFile& file) {
    std::string bytes;
    EXPECT_TRUE(file.write(gatherInto(bytes)));
    return bytes;
}

CompoundFile readAgain(const std::string& bytes) {
    CompoundFile file;
    EXPECT_TRUE(file.read(bytes));
    return file;
}

std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number |= std::uint32_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
    }
    return number;
}

void setNumber(std::string& bytes, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(number >> (8 * i) & 0xFFU);
}

/// Where the record of an entry begins in what was written of it.
std::size_t recordAt(const std::string& bytes, std::size_t place) {
    return (std::size_t{numberAt(bytes, 48)} + 1) * 512 + place * 128;
}

CompoundFile sample() {
    CompoundFile file;
    file.addStream(0, "Workbook", sampleText(1, 5000));
    const std::size_t macros = file.addStorage(0, "_VBA_PROJECT_CUR");
    const std::size_t deeper = file.addStorage(macros, "VBA");
    file.addStream(deeper, "dir", sampleText(2, 100));
    file.addStream(deeper, "empty", "");
    file.addStream(0, "\x05SummaryInformation", sampleText(3, 4095));
    return file;
}

TEST(CompoundFile, KeepsStreamsOfEverySize) {
    CompoundFile file;
    const std::vector<std::size_t> sizes{0, 1, 63, 64, 65, 511, 512, 513, 4095, 4096, 4097, 70'000};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        file.addStream(0, "s" + std::to_string(i), sampleText(static_cast<unsigned>(i), sizes[i]));
    }
    const CompoundFile again = readAgain(written(file));
    ASSERT_EQ(again.count(), sizes.size() + 1);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const auto place = again.find("s" + std::to_string(i));
        ASSERT_TRUE(place) << i;
        EXPECT_EQ(again.entry(*place).content, sampleText(static_cast<unsigned>(i), sizes[i])) << i;
    }
}

TEST(CompoundFile, KeepsStoragesAndWhatIsSaidOfThem) {
    CompoundFile file = sample();
    CompoundEntry& storage = file.entry(*file.find("_VBA_PROJECT_CUR"));
    storage.classId[3] = 'c';
    storage.state = 7;
    storage.created = 0x0123456789ABCDEFULL;
    storage.modified = 42;
    file.entry(0).classId[0] = 'r';
    const CompoundFile again = readAgain(written(file));
    const auto place = again.find("_vba_project_cur");
    ASSERT_TRUE(place);
    EXPECT_TRUE(again.entry(*place).isStorage);
    EXPECT_EQ(again.entry(*place).classId[3], 'c');
    EXPECT_EQ(again.entry(*place).state, 7U);
    EXPECT_EQ(again.entry(*place).created, 0x0123456789ABCDEFULL);
    EXPECT_EQ(again.entry(*place).modified, 42U);
    EXPECT_EQ(again.entry(0).classId[0], 'r');
    EXPECT_TRUE(again.find("_VBA_PROJECT_CUR/VBA/dir"));
    EXPECT_FALSE(again.find("VBA"));
    EXPECT_FALSE(again.find("_VBA_PROJECT_CUR/dir"));
    EXPECT_EQ(again.find(""), 0U);
}

TEST(CompoundFile, SameEntriesSameBytes) {
    const std::string once = written(sample());
    EXPECT_EQ(once, written(sample()));
    const std::string twice = written(readAgain(once));
    EXPECT_EQ(written(readAgain(twice)), twice);
}

TEST(CompoundFile, TableOfSectorsBeyondTheHeader) {
    // More than 109 sectors of the table, and a list of them in two sectors of its own.
    CompoundFile file;
    file.addStream(0, "big", sampleText(1, 20U << 20U));
    file.addStream(0, "small", "x");
    const std::string bytes = written(file);
    EXPECT_GT(numberAt(bytes, 44), 109U + 127U);
    EXPECT_EQ(numberAt(bytes, 72), 2U);
    const CompoundFile again = readAgain(bytes);
    EXPECT_EQ(again.entry(*again.find("big")).content, sampleText(1, 20U << 20U));
    EXPECT_EQ(again.entry(*again.find("small")).content, "x");
}

/// Black entries from here to every end of the tree; 0 where two red ones meet or the sides differ.
int blackHeight(const std::string& bytes, std::uint32_t place, bool parentIsRed, std::vector<int>& seen) {
    if (place == 0xFFFFFFFF) return 1;
    const std::size_t at = recordAt(bytes, place);
    const bool isRed = bytes[at + 67] == 0;
    const int left = blackHeight(bytes, numberAt(bytes, at + 68), isRed, seen);
    seen.push_back(static_cast<int>(place));
    const int right = blackHeight(bytes, numberAt(bytes, at + 72), isRed, seen);
    if (left == 0 || left != right || (isRed && parentIsRed)) return 0;
    return left + (isRed ? 0 : 1);
}

TEST(CompoundFile, NamesAreARedBlackTreeInTheirOrder) {
    for (std::size_t names = 1; names <= 70; ++names) {
        CompoundFile file;
        for (std::size_t i = 0; i < names; ++i) {
            file.addStream(0, "n" + std::to_string(i * 7919 % 1000), std::to_string(i));
        }
        const std::string bytes = written(file);
        std::vector<int> seen;
        EXPECT_GT(blackHeight(bytes, numberAt(bytes, recordAt(bytes, 0) + 76), true, seen), 0) << names;
        ASSERT_EQ(seen.size(), names);
        for (std::size_t i = 1; i < names; ++i) {
            EXPECT_TRUE(compoundNameLess(file.entry(static_cast<std::size_t>(seen[i - 1])).name,
                                         file.entry(static_cast<std::size_t>(seen[i])).name));
        }
    }
}

TEST(CompoundFile, OrderOfNames) {
    EXPECT_TRUE(compoundNameLess(u"Z", u"AA"));
    EXPECT_TRUE(compoundNameLess(u"ab", u"AC"));
    EXPECT_FALSE(compoundNameLess(u"ab", u"AB"));
    EXPECT_FALSE(compoundNameLess(u"\u00C4", u"\u00E4"));
    EXPECT_FALSE(compoundNameLess(u"\u00E4", u"\u00C4"));
}

TEST(CompoundFile, LastSectorMayBeCut) {
    // Some writers end the file with the last stream's last byte.
    CompoundFile file;
    file.addStream(0, "a", sampleText(1, 5000));
    std::string bytes = written(file);
    while (bytes.ends_with('\xFF')) bytes.pop_back();
    const CompoundFile again = readAgain(bytes);
    EXPECT_EQ(again.entry(1).content, sampleText(1, 5000));
}

TEST(CompoundFile, RefusesWhatIsNone) {
    CompoundFile file = sample();
    for (const std::string& bytes : {std::string(), std::string("PK\3\4"), std::string(4096, '\0')}) {
        EXPECT_FALSE(CompoundFile::isOne(bytes));
        EXPECT_EQ(file.read(bytes).problem, PackageProblem::notAnArchive);
        EXPECT_EQ(file.count(), 1U);
    }
    EXPECT_EQ(file.read(written(sample()).substr(0, 100)).problem, PackageProblem::damaged);
}

TEST(CompoundFile, KnowsTheLimits) {
    const std::string bytes = written(sample());
    CompoundFile file;
    EXPECT_TRUE(file.read(bytes, {bytes.size(), 8}));
    EXPECT_EQ(file.read(bytes, {bytes.size() - 1, 8}).problem, PackageProblem::tooLarge);
    EXPECT_EQ(file.read(bytes, {bytes.size(), 4}).problem, PackageProblem::tooLarge);
    std::string out;
    EXPECT_TRUE(sample().write(gatherInto(out), {bytes.size(), 7}));
    EXPECT_EQ(sample().write(gatherInto(out), {bytes.size() - 1, 7}).problem, PackageProblem::beyondLimits);
    EXPECT_EQ(sample().write(gatherInto(out), {bytes.size(), 6}).problem, PackageProblem::beyondLimits);
}

TEST(CompoundFile, RefusesEveryCut) {
    const std::string bytes = written(sample());
    CompoundFile file;
    for (std::size_t length = 8; length + 512 <= bytes.size(); length += 37) {
        EXPECT_EQ(file.read(std::string_view(bytes).substr(0, length)).problem, PackageProblem::damaged)
            << length;
    }
}

/// The sample with one number changed, as it is read.
PackageProblem problemWith(std::size_t at, std::uint32_t number) {
    std::string bytes = written(sample());
    setNumber(bytes, at, number);
    CompoundFile file;
    return file.read(bytes).problem;
}

TEST(CompoundFile, RefusesChainsAndTreesThatMeet) {
    const std::string bytes = written(sample());
    const std::size_t fat = (std::size_t{numberAt(bytes, 76)} + 1) * 512;
    const std::uint32_t first = numberAt(bytes, recordAt(bytes, 1) + 116);
    ASSERT_EQ(first, 0U);
    EXPECT_EQ(problemWith(fat, 0), PackageProblem::damaged);           // a circle of one
    EXPECT_EQ(problemWith(fat + 8, 1), PackageProblem::damaged);       // back
    EXPECT_EQ(problemWith(fat, 0x7FFFFFFF), PackageProblem::damaged);  // nowhere
    EXPECT_EQ(problemWith(44, 0xFFFFFFFF), PackageProblem::damaged);   // sectors of the table
    EXPECT_EQ(problemWith(48, 0), PackageProblem::damaged);            // a stream as directory
    EXPECT_EQ(problemWith(60, 0), PackageProblem::damaged);            // a stream as table
    EXPECT_EQ(problemWith(recordAt(bytes, 1) + 120, 0x7FFFFFFF), PackageProblem::damaged);  // its size
    EXPECT_EQ(problemWith(recordAt(bytes, 0) + 120, 64), PackageProblem::damaged);          // mini stream
    EXPECT_EQ(problemWith(recordAt(bytes, 3) + 76, 2), PackageProblem::damaged);  // a storage in its own
    EXPECT_EQ(problemWith(recordAt(bytes, 1) + 68, 1), PackageProblem::damaged);  // beside itself
    EXPECT_EQ(problemWith(recordAt(bytes, 1) + 68, 99), PackageProblem::damaged);
}

TEST(CompoundFile, RefusesTwoOfOneName) {
    CompoundFile file;
    file.addStream(0, "name", "a");
    file.addStream(0, "NAME", "b");
    CompoundFile again;
    EXPECT_EQ(again.read(written(file)).problem, PackageProblem::damaged);
    file = CompoundFile();
    file.addStream(file.addStorage(0, "s"), "name", "a");
    file.addStream(0, "NAME", "b");
    EXPECT_TRUE(again.read(written(file)));
}

TEST(CompoundFile, ReadsOrRefusesWhateverByteIsChanged) {
    const std::string bytes = written(sample());
    for (std::size_t at = 0; at < bytes.size(); at += at < 1024 || at + 2048 > bytes.size() ? 1U : 61U) {
        for (const char change : {'\x01', '\x40', '\x7F'}) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ change);
            CompoundFile file;
            const PackageResult result = file.read(changed);
            std::size_t total = 0;
            for (std::size_t i = 0; i < file.count(); ++i) total += file.entry(i).content.size();
            EXPECT_LE(total, bytes.size());
            if (!result) continue;
            // A tree in another order than that of the names is put right.
            const std::string copy = written(readAgain(written(file)));
            EXPECT_EQ(written(readAgain(copy)), copy) << at;
        }
    }
}

}  // namespace
}  // namespace vexa::frontend
