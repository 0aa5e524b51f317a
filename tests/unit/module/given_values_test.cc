#include "module/frame/given_values.h"

#include <gtest/gtest.h>

#include "backend/paths/file_specification.h"
#include "backend/tokens/token_sequence.h"
#include "tests/unit/module/command_fixture.h"

namespace vexa {
namespace {

class FileSpecification : public CommandFixture {
  protected:
    FileSpecification() { FileLocations::current().setHandle("data", "C:\\studies"); }
    ~FileSpecification() override { FileLocations::current().reset(); }

    std::string read(const std::string& tokens) {
        const CommandText text{tokens, 0, "", 1};
        const CommandTokens sequence(text);
        ParserMessage messages;
        return readFileSpecification(ParamObj({}, nullptr, sequence.tokens()), "FILE", messages);
    }
};

TEST_F(FileSpecification, LocalModeExpandsNothing) {
    EXPECT_EQ(read("'a/b.vxv'"), "a\\b.vxv");
    EXPECT_EQ(read("plain.vxv"), "plain.vxv");
}

TEST_F(FileSpecification, RelativeNamesAreExpandedWhenTheFrontEndSeesOtherFiles) {
    adapter.localMode = false;
    EXPECT_EQ(read("'a/b.vxv'"), FileLocations::current().folder() + "\\a\\b.vxv");
}

TEST_F(FileSpecification, WholeNamesStay) {
    adapter.localMode = false;
    EXPECT_EQ(read("'/a/b.vxv'"), "\\a\\b.vxv");
    EXPECT_EQ(read("'\\a/b.vxv'"), "\\a\\b.vxv");
    EXPECT_EQ(read("'C:a/b.vxv'"), "C:a\\b.vxv");
}

TEST_F(FileSpecification, WithoutAnAdapterNothingIsExpanded) {
    installAdapter(nullptr);
    EXPECT_EQ(normaliseFileSpec("a/b.vxv"), "a\\b.vxv");
}

TEST_F(FileSpecification, HandlesAreResolvedFirst) {
    EXPECT_EQ(read("'data/x.vxv'"), "C:\\studies\\x.vxv");
    EXPECT_EQ(read("DATA"), "C:\\studies");
}

TEST_F(FileSpecification, AnythingButOneTextIsReported) {
    for (const auto& [tokens, given] :
         {std::pair{"a b", "a b"}, {"'a' 12", "a 12"}, {"''", ""}, {"", ""}, {"5", "5"}}) {
        events.clear();
        EXPECT_EQ(read(tokens), "") << tokens;
        const auto reports = all<ParserMessageReported>();
        ASSERT_EQ(reports.size(), 1U) << tokens;
        EXPECT_EQ(reports[0].method, "WrongValueType");
        EXPECT_EQ(std::get<std::string>(reports[0].arguments[0]), "FILE");
        EXPECT_EQ(std::get<std::string>(reports[0].arguments[1]), given);
    }
}

}  // namespace
}  // namespace vexa
