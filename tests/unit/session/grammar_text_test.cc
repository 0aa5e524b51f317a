#include "backend/syntax/grammar_text.h"

#include <gtest/gtest.h>

namespace vexa {
namespace {

using UP = UPSpecTypes;
using Spec = UPSpecTypes::ParamSpec;

CommandDescriptor example() {
    return CommandDescriptor("OUTPUT TRY")
        .addSubComDesc(
            SubComDescriptor("", UP::SubComSpec::keywordParameters, true, false)
                .addParamDesc(ParamDescriptor("OUTFILE", Spec::tokens, true, true).setValueLabel("file"))
                .addParamDesc(ParamDescriptor("NAME", Spec::tokens, false, true).setValueLabel("name"))
                .addParamDesc(ParamDescriptor("TYPE", Spec::word, false, true)
                                  .addStringValue("VXV")
                                  .addStringValue("VXW"))
                .addParamDesc(ParamDescriptor("QUIET", Spec::keyword, false, false)))
        .addSubComDesc(
            SubComDescriptor("SIZES", UP::SubComSpec::keywordParameters, false, true)
                .addParamDesc(ParamDescriptor("WIDTH", Spec::number, false, true)
                                  .setLowerBoundary(0, UP::BoundaryOption::exclusive)
                                  .setUpperBoundary(100, UP::BoundaryOption::inclusive))
                .addParamDesc(ParamDescriptor("SORT", Spec::qualifierList, false, true)
                                  .addQualifDesc(ParamDescriptor("COLPOSITION", Spec::integer, false, true)))
                .addParamDesc(
                    ParamDescriptor("LABELS", Spec::qualifiedLists, false, true, UP::BracketOptions::required)
                        .addQualifDesc(ParamDescriptor("BEGINS", Spec::literals, false, true))));
}

TEST(GrammarText, ShowsAWholeCommand) {
    EXPECT_EQ(grammarText(example()),
              "OUTPUT TRY\n"
              "  OUTFILE='file'\n"
              "  [NAME=name]\n"
              "  [TYPE={VXV|VXW}]\n"
              "  [QUIET]\n"
              "  [/SIZES\n"
              "     [WIDTH=number]   (above 0, at most 100)\n"
              "     [SORT([COLPOSITION=integer])]\n"
              "     [LABELS=\"[\"[BEGINS('text' ...)]\"]\"]] ...\n");
}

TEST(GrammarText, ShowsFreeTokensByWhatTheyAreCalled) {
    const auto free = [](std::string_view name, Spec form, std::string_view label) {
        return SubComDescriptor(name, UP::SubComSpec::freeTokens, true, false)
            .addParamDesc(ParamDescriptor("", form, false, true).setValueLabel(label));
    };
    EXPECT_EQ(grammarText(CommandDescriptor("FILE HANDLE")
                              .addSubComDesc(free("", Spec::word, "name"))
                              .addSubComDesc(free("NAME", Spec::literalOrWord, "folder"))),
              "FILE HANDLE\n  name\n  /NAME='folder'\n");
    EXPECT_EQ(grammarText(CommandDescriptor("OUTPUT CLOSE")
                              .addSubComDesc(SubComDescriptor("", UP::SubComSpec::freeTokens, true, false))),
              "OUTPUT CLOSE\n  value ...\n");
}

TEST(GrammarText, ShowsOnePart) {
    EXPECT_EQ(grammarText(example(), "type"), "OUTPUT TRY\n  [TYPE={VXV|VXW}]\n");
    EXPECT_EQ(grammarText(example(), "WIDTH"),
              "OUTPUT TRY\n  /SIZES [WIDTH=number]   (above 0, at most 100)\n");
    EXPECT_FALSE(grammarText(example(), "NOTHING"));
}

TEST(GrammarText, ShowsGroups) {
    CommandDescriptor command("OUTPUT TRY");
    command.addGroupComDesc(
        GroupComDescriptor(UP::GroupSpec::selection, true, "")
            .addSubComDesc(SubComDescriptor("SELECT", UP::SubComSpec::keywordList, true, false)
                               .addParamDesc(ParamDescriptor("TABLES", Spec::keyword, false, false)),
                           true));
    EXPECT_EQ(grammarText(command), "OUTPUT TRY\n  one or more groups of:\n    /SELECT\n       [TABLES]\n");
}

}  // namespace
}  // namespace vexa
