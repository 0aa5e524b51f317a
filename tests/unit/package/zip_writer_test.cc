#include "frontend/package/zip_writer.h"

#include <gtest/gtest.h>

#include "tests/unit/package/archives.h"
#include "tests/unit/package/zip_judge.h"

namespace vexa::frontend {
namespace {

std::map<std::string, std::string> manyEntries() {
    std::map<std::string, std::string> entries{
        {"empty", ""}, {"one", "x"}, {"ümläut/文書.xml", "<x/>"}, {"large", sampleText(1, 9U << 20U)}};
    for (unsigned i = 0; i < 700; ++i) {
        entries["items/" + std::to_string(i)] = sampleText(i, i * 37);
    }
    return entries;
}

TEST(ZipWriter, AnotherImplementationReadsWhatIsWritten) {
    const auto entries = manyEntries();
    EXPECT_EQ(judgedContent(archiveOf(entries)), entries);
    EXPECT_TRUE(judgedContent(archiveOf({})).empty());
}

TEST(ZipWriter, TheBytesDoNotDependOnTheNumberOfThreads) {
    const auto entries = manyEntries();
    const std::string alone = archiveOf(entries, 1);
    EXPECT_EQ(archiveOf(entries, 2), alone);
    EXPECT_EQ(archiveOf(entries, 5), alone);
}

TEST(ZipWriter, EntriesStandInTheOrderInWhichTheyCame) {
    std::string bytes;
    ZipWriter writer(gatherInto(bytes), {}, 3);
    EXPECT_TRUE(writer.addStored("mimetype", "application/x"));
    EXPECT_TRUE(writer.addMade("z", [](std::string& content) {
        content = sampleText(3, 100'000);
        return PackageResult();
    }));
    EXPECT_TRUE(writer.add("a", "text"));
    ASSERT_TRUE(writer.finish());
    ZipReader reader;
    ASSERT_TRUE(reader.open(bytes));
    ASSERT_EQ(reader.count(), 3U);
    EXPECT_EQ(reader.entry(0).name, "mimetype");
    EXPECT_EQ(reader.entry(0).method, zipStored);
    EXPECT_EQ(reader.entry(1).name, "z");
    EXPECT_EQ(reader.entry(1).method, zipDeflated);
    EXPECT_EQ(reader.entry(2).name, "a");
    EXPECT_EQ(bytes.substr(30, 21), "mimetypeapplication/x") << "readable by looking at fixed places";
}

TEST(ZipWriter, WhatDoesNotShrinkIsStored) {
    std::mt19937 random(5);
    std::string noise(10'000, '\0');
    for (char& byte : noise) {
        byte = static_cast<char>(random());
    }
    const std::string bytes = archiveOf({{"noise", noise}, {"text", sampleText(1, 1000)}});
    ZipReader reader;
    ASSERT_TRUE(reader.open(bytes));
    EXPECT_EQ(reader.entry(0).method, zipStored);
    EXPECT_EQ(reader.entry(1).method, zipDeflated);
}

TEST(ZipWriter, CopiesEntriesOfAnotherArchiveByteForByte) {
    const auto entries = manyEntries();
    const std::string original = judgesArchive(entries);
    ZipReader reader;
    ASSERT_TRUE(reader.open(original));
    std::string copy;
    ZipWriter writer(gatherInto(copy));
    for (std::size_t place = 0; place < reader.count(); ++place) {
        ASSERT_TRUE(writer.addPacked(reader.entry(place), reader.packed(place)));
    }
    ASSERT_TRUE(writer.finish());
    EXPECT_EQ(judgedContent(copy), entries);
    ZipReader again;
    ASSERT_TRUE(again.open(copy));
    ASSERT_EQ(again.count(), reader.count());
    for (std::size_t place = 0; place < reader.count(); ++place) {
        const ZipEntry& before = reader.entry(place);
        const ZipEntry& after = again.entry(place);
        EXPECT_EQ(again.packed(place), reader.packed(place));
        EXPECT_EQ(after.name, before.name);
        EXPECT_EQ(
            std::tie(after.method, after.crc, after.bytes, after.time, after.date, after.attributes),
            std::tie(before.method, before.crc, before.bytes, before.time, before.date, before.attributes));
    }
}

TEST(ZipWriter, MoreEntriesThanTheEndRecordCounts) {
    constexpr std::size_t count = 65'535;
    std::string bytes;
    ZipWriter writer(gatherInto(bytes));
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_TRUE(writer.addStored(std::to_string(i), "x"));
    }
    ASSERT_TRUE(writer.finish());
    ZipReader reader;
    ASSERT_TRUE(reader.open(bytes));
    EXPECT_EQ(reader.count(), count);
    EXPECT_EQ(judgedContent(bytes).size(), count);
}

TEST(ZipWriter, RefusesNamesThatLeaveTheFolderOrAreTaken) {
    for (const char* name : {"../x", "/x", "a//b", "a\\b", "c:", "", "a/"}) {
        std::string bytes;
        ZipWriter writer(gatherInto(bytes));
        const PackageResult result = writer.add(name, "x");
        EXPECT_EQ(result.problem, PackageProblem::unsafeName) << name;
        EXPECT_EQ(result.shownDetail(), name);
        EXPECT_EQ(writer.finish().problem, PackageProblem::unsafeName) << "the first failure stays";
    }
    std::string bytes;
    ZipWriter writer(gatherInto(bytes));
    EXPECT_TRUE(writer.add("a", "x"));
    EXPECT_EQ(writer.add("a", "x").problem, PackageProblem::unsafeName);
}

PackageProblem writtenWith(const ZipLimits& limits) {
    std::string bytes;
    ZipWriter writer(gatherInto(bytes), limits);
    for (const char* name : {"a", "b", "c"}) {
        static_cast<void>(writer.add(name, std::string(100, name[0])));
    }
    return writer.finish().problem;
}

TEST(ZipWriter, RefusesWhatItsReaderWouldRefuse) {
    EXPECT_EQ(writtenWith({1000, 3, 100, 300, 1}), PackageProblem::none);
    EXPECT_EQ(writtenWith({100, 3, 100, 300, 1}), PackageProblem::beyondLimits) << "bytes of the file";
    EXPECT_EQ(writtenWith({1000, 2, 100, 300, 1}), PackageProblem::beyondLimits) << "entries";
    EXPECT_EQ(writtenWith({1000, 3, 99, 300, 1}), PackageProblem::beyondLimits) << "bytes of an entry";
    EXPECT_EQ(writtenWith({1000, 3, 100, 299, 1}), PackageProblem::beyondLimits) << "bytes in all";
    EXPECT_EQ(writtenWith({1000, 3, 100, 300, 0}), PackageProblem::unsafeName) << "bytes of a name";
}

TEST(ZipWriter, TheFirstFailureOfTheSinkOrOfAMakerStays) {
    for (unsigned failing = 1; failing < 8; ++failing) {
        unsigned calls = 0;
        ZipWriter writer([&](std::string_view) {
            return ++calls == failing ? PackageResult::named(PackageProblem::cannotWrite, "disk full")
                                      : PackageResult();
        });
        for (const char* name : {"a", "b", "c"}) {
            static_cast<void>(writer.add(name, sampleText(1, 100)));
        }
        const PackageResult result = writer.finish();
        EXPECT_EQ(result.problem, PackageProblem::cannotWrite) << failing;
        EXPECT_EQ(result.shownDetail(), "disk full");
        EXPECT_EQ(calls, failing) << "nothing is written after a failure";
    }
    std::string bytes;
    ZipWriter writer(gatherInto(bytes), {}, 2);
    static_cast<void>(writer.addMade("a", [](std::string&) -> PackageResult { throw std::bad_alloc(); }));
    EXPECT_EQ(writer.finish().problem, PackageProblem::noMemory);
}

TEST(ZipWriter, AnArchiveThatIsGivenUpLeavesNoThreadBehind) {
    for (int round = 0; round < 20; ++round) {
        std::string bytes;
        ZipWriter writer(gatherInto(bytes), {}, 4);
        for (unsigned i = 0; i < 50; ++i) {
            ASSERT_TRUE(writer.add(std::to_string(i), sampleText(i, 20'000)));
        }
    }
}

}  // namespace
}  // namespace vexa::frontend
