#include "frontend/looks/look_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace vexa::frontend {
namespace {

using testing::HasSubstr;

/// The looks that are shipped.
LookLibrary shippedLooks() { return LookLibrary({VEXA_LOOKS_FOLDER}); }

class TemporaryLooks : public testing::Test {
  protected:
    void SetUp() override {
        folder_ =
            std::filesystem::temp_directory_path() /
            ("vexa-looks-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    void write(const std::string& file, const std::string& content) const {
        std::ofstream(folder_ / file, std::ios::binary) << content;
    }
    [[nodiscard]] std::string folder() const { return folder_.string(); }

  private:
    std::filesystem::path folder_;
};

TEST_F(TemporaryLooks, HaveStyleSheetsOfChartsToo) {
    write("calm.css", ".axis { stroke: red }");
    const LookLibrary library({folder() + "/none", folder()});
    for (const char* const name : {"calm", "calm.css", "Calm", "CALM.CSS"}) {
        EXPECT_TRUE(library.hasStyleSheet(name)) << name;
    }
    for (const char* const name : {"", "loud", ".", "none/../calm"}) {
        EXPECT_FALSE(library.hasStyleSheet(name)) << name;
    }
}

TEST(ShippedLooks, CanAllBeRead) {
    std::size_t count = 0;
    for (const auto& file : std::filesystem::directory_iterator(VEXA_LOOKS_FOLDER)) {
        if (file.path().extension() != ".tlk") continue;
        ++count;
        LookLibrary library = shippedLooks();
        const ReadLook read = library.find(file.path().stem().string());
        ASSERT_NE(read.look, nullptr) << read.problem;
        EXPECT_TRUE(read.look->name == file.path().stem().string());
    }
    EXPECT_GE(count, 6U);
}

TEST(ShippedLooks, PlainIsTheLookOfTablesThatNameNone) {
    std::ifstream file(std::filesystem::path(VEXA_LOOKS_FOLDER) / "plain.tlk", std::ios::binary);
    const std::string xml((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const ReadLook read = readLook(xml);
    ASSERT_NE(read.look, nullptr) << read.problem;
    tables::TableLook plain = *read.look;
    plain.source.clear();
    EXPECT_EQ(plain, *tables::plainLook());
    EXPECT_EQ(shippedLooks().find("plain").look, tables::plainLook());
    EXPECT_EQ(shippedLooks().find("PLAIN").look, tables::plainLook());
}

TEST(ShippedLooks, ANameGivesTheSameLookEveryTime) {
    LookLibrary library = shippedLooks();
    EXPECT_EQ(library.find("banded").look, library.find("banded").look);
    EXPECT_EQ(library.find("Banded").look->name, "banded");
    EXPECT_EQ(library.find("banded").look->source, "");
}

TEST_F(TemporaryLooks, TheFirstFolderThatHasALookCounts) {
    write("mine.tlk", R"(<tableProperties name="other"><area name="data" size="20"/></tableProperties>)");
    LookLibrary library({"/nowhere", folder(), VEXA_LOOKS_FOLDER});
    const ReadLook read = library.find("mine");
    ASSERT_NE(read.look, nullptr) << read.problem;
    EXPECT_EQ(read.look->name, "mine");
    EXPECT_EQ(read.look->area(tables::Area::data).size, 20);
    EXPECT_NE(library.find("banded").look, nullptr);
}

TEST_F(TemporaryLooks, ABrokenLookNamesItsFile) {
    write("broken.tlk", "<tableProperties><area/></tableProperties>");
    LookLibrary library({folder()});
    const ReadLook read = library.find("broken");
    EXPECT_EQ(read.look, nullptr);
    EXPECT_THAT(read.problem, HasSubstr("broken.tlk: Table look, line 1, column 19"));
}

TEST_F(TemporaryLooks, ANameThatIsAPathIsNotFollowed) {
    write("secret.tlk", "<tableProperties/>");
    std::filesystem::create_directories(folder() + "/Looks");
    LookLibrary library({folder() + "/Looks"});
    EXPECT_THAT(library.find("../secret").problem, HasSubstr("There is no table look named ../secret"));
    EXPECT_THAT(library.find("").problem, HasSubstr("There is no table look named"));
}

}  // namespace
}  // namespace vexa::frontend
