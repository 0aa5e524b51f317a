#include "module/modify/looks.h"

#include <gtest/gtest.h>

#include "backend/paths/file_specification.h"
#include "backend/paths/path_factory.h"
#include "tests/unit/module/command_fixture.h"
#include "tests/unit/module/temporary_folder.h"

namespace vexa {
namespace {

/// An installation in `inst` and the back end's folder `work`, both in one new folder.
class Looks : public CommandFixture {
  protected:
    Looks() {
        static_cast<void>(folder_.write("work/empty.tlk", ""));
        installPaths((folder_.path() / "inst").string(), "en");
        EXPECT_TRUE(FileLocations::current().changeFolder((folder_.path() / "work").string()));
    }
    ~Looks() override {
        FileLocations::current().reset();
        installPaths("", "");
    }

    /// What `name` becomes, or nothing when it is not found.
    static std::optional<std::string> found(std::string name, std::string_view extension = ".tlk") {
        const std::string before = name;
        if (FindTableLook(name, extension)) {
            return name;
        }
        EXPECT_EQ(name, before) << "a name that is not found stays";
        return std::nullopt;
    }

    /// The path in the installation as the module writes it.
    [[nodiscard]] std::string installed(const std::string& below) const {
        std::string path = PathFactory::getPathInstance(PathFactory::kInstallation)->getPath();
        return path + below;
    }

    TemporaryFolder folder_;
};

TEST_F(Looks, AFileOfThatNameIsTakenAsItIs) {
    const std::string whole = folder_.write("work/own.tlk", "<a/>");
    EXPECT_EQ(found("own.tlk"), "own.tlk");
    EXPECT_EQ(found(whole), whole);
    EXPECT_EQ(found("own"), std::nullopt) << "the extension belongs to the folders Looks";
}

TEST_F(Looks, ThenTheLanguageThenTheInstallation) {
    static_cast<void>(folder_.write("inst/Looks/both.tlk", "<installation/>"));
    EXPECT_EQ(found("both"), installed("Looks\\both.tlk"));
    static_cast<void>(folder_.write("inst/lang/en/Looks/both.tlk", "<language/>"));
    EXPECT_EQ(found("both"), installed("lang\\en\\Looks\\both.tlk"));
    static_cast<void>(folder_.write("work/both", "<own/>"));
    EXPECT_EQ(found("both"), "both");
}

TEST_F(Looks, OnlyTheLanguageOfTheUserCounts) {
    static_cast<void>(folder_.write("inst/lang/de/Looks/a.tlk", "x"));
    EXPECT_EQ(found("a"), std::nullopt);
    installPaths((folder_.path() / "inst").string(), "de");
    EXPECT_EQ(found("a"), installed("lang\\de\\Looks\\a.tlk"));
}

TEST_F(Looks, TheExtensionIsAddedInTheFoldersWhateverTheNameHas) {
    static_cast<void>(folder_.write("inst/Looks/a.tlk", "x"));
    static_cast<void>(folder_.write("inst/Looks/b.cgt", "x"));
    EXPECT_EQ(found("a.tlk"), std::nullopt);
    EXPECT_EQ(found("a", ".cgt"), std::nullopt);
    EXPECT_EQ(found("b", ".cgt"), installed("Looks\\b.cgt"));
}

TEST_F(Looks, EmptyFilesAndFoldersAreNotFound) {
    static_cast<void>(folder_.write("inst/lang/en/Looks/a.tlk", ""));
    static_cast<void>(folder_.write("inst/Looks/a.tlk", "x"));
    static_cast<void>(folder_.write("inst/Looks/folder.tlk/x", "x"));
    EXPECT_EQ(found("empty.tlk"), std::nullopt);
    EXPECT_EQ(found("a"), installed("Looks\\a.tlk")) << "the empty one is passed over";
    EXPECT_EQ(found("folder"), std::nullopt);
    EXPECT_EQ(found(folder_.path().string()), std::nullopt);
}

TEST_F(Looks, WithoutAnExtensionEveryNameIsFound) {
    EXPECT_EQ(found("nowhere", ""), "nowhere");
    EXPECT_EQ(found("", ""), "");
}

TEST_F(Looks, NamesThatAreNone) {
    static_cast<void>(folder_.write("inst/Looks/.tlk", "x"));
    EXPECT_EQ(found("nowhere"), std::nullopt);
    EXPECT_EQ(found(std::string(100000, 'a')), std::nullopt);
    EXPECT_EQ(found("\xFF\xFE"), std::nullopt);
    EXPECT_EQ(found("sub\\nowhere"), std::nullopt);
    installPaths("", "");
    EXPECT_EQ(found("a"), std::nullopt) << "without an installation";
    EXPECT_TRUE(events.empty()) << "nothing is reported";
}

TEST_F(Looks, ContentBeginsAtTheRoot) {
    const struct {
        const char* content;
        const char* expected;
    } cases[] = {{"<?xml version=\"1.0\"?>\n<root a=\"1\"/>", "<root a=\"1\"/>"},
                 {"<root/><root/>", "<root/><root/>"},
                 {"\xEF\xBB\xBF<root>", "<root>"},
                 {"<other/>", "<other/>"},
                 {"<ROOT/>", "<ROOT/>"},
                 {"", ""},
                 {"<rootless", "<rootless"}};
    for (const auto& each : cases) {
        const std::string name = folder_.write("work/content", each.content);
        EXPECT_EQ(fetchFromRoot(name, "<root"), each.expected) << each.content;
    }
    EXPECT_EQ(fetchFromRoot("nowhere", "<root"), "");
}

}  // namespace
}  // namespace vexa
