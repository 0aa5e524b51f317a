#include "frontend/package/zip_reader.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/unit/package/archives.h"
#include "tests/unit/package/zip_judge.h"

namespace vexa::frontend {
namespace {

TEST(ZipReader, ReadsWhatAnotherImplementationWrote) {
    const std::map<std::string, std::string> entries{
        {"a", ""}, {"b", "text"}, {"c/d", sampleText(1, 100'000)}, {"ä", "x"}};
    for (const bool deflated : {true, false}) {
        const std::string bytes = judgesArchive(entries, deflated);
        ZipReader reader;
        ASSERT_TRUE(reader.open(bytes));
        ASSERT_EQ(reader.count(), entries.size());
        for (const auto& [name, text] : entries) {
            const auto place = reader.find(name);
            ASSERT_TRUE(place) << name;
            std::string content = "from before";
            EXPECT_TRUE(reader.read(*place, content)) << name;
            EXPECT_EQ(content, text) << name;
        }
        EXPECT_FALSE(reader.find("none"));
    }
}

TEST(ZipReader, OneReaderForSeveralThreads) {
    std::map<std::string, std::string> entries;
    for (unsigned i = 0; i < 64; ++i) {
        entries["e" + std::to_string(i)] = sampleText(i, 5000);
    }
    const std::string bytes = archiveOf(entries);
    ZipReader reader;
    ASSERT_TRUE(reader.open(bytes));
    const auto readAll = [&] {
        std::string content;
        for (std::size_t place = 0; place < reader.count(); ++place) {
            ASSERT_TRUE(reader.read(place, content));
            ASSERT_EQ(content, entries.at(reader.entry(place).name));
        }
    };
    std::thread other(readAll);
    readAll();
    other.join();
}

TEST(ZipReader, KnowsTheLimits) {
    const std::string bytes = archiveOf({{"a", std::string(100, 'a')}, {"bb", std::string(50, 'b')}});
    EXPECT_EQ(outcomeOf(bytes, {1000, 2, 100, 150, 2}).problem, PackageProblem::none);
    EXPECT_EQ(outcomeOf(bytes, {1000, 1, 100, 150, 2}).problem, PackageProblem::tooLarge);
    EXPECT_EQ(outcomeOf(bytes, {1000, 2, 99, 150, 2}).problem, PackageProblem::tooLarge);
    EXPECT_EQ(outcomeOf(bytes, {1000, 2, 100, 149, 2}).problem, PackageProblem::tooLarge);
    EXPECT_EQ(outcomeOf(bytes, {1000, 2, 100, 150, 1}).problem, PackageProblem::unsafeName);
    ZipReader reader;
    ASSERT_TRUE(reader.open(bytes));
    std::string content;
    EXPECT_TRUE(reader.read(0, content, 100));
    EXPECT_EQ(reader.read(0, content, 99).problem, PackageProblem::tooLarge);
    EXPECT_EQ(content, "");
}

TEST(ZipReader, TakesFoldersWhereTheyAreExpected) {
    const std::string bytes = judgesArchive({{"folder/", ""}, {"folder/file", "text"}}, false);
    EXPECT_EQ(outcomeOf(bytes).problem, PackageProblem::unsafeName);
    ZipLimits limits;
    limits.folders = true;
    EXPECT_EQ(outcomeOf(bytes, limits).problem, PackageProblem::none);
    EXPECT_FALSE(isSafeEntryName("/", limits));
    EXPECT_FALSE(isSafeEntryName("../", limits));
    EXPECT_FALSE(isSafeEntryName("a//", limits));
}

TEST(ZipReader, TellsWhatIsNoArchive) {
    for (const std::string& bytes :
         {std::string(), std::string("PK"), std::string(1000, 'x'), std::string("<html>")}) {
        EXPECT_EQ(outcomeOf(bytes).problem, PackageProblem::notAnArchive);
    }
    EXPECT_EQ(outcomeOf("PK\x03\x04 and then something else").problem, PackageProblem::damaged);
}

}  // namespace
}  // namespace vexa::frontend
