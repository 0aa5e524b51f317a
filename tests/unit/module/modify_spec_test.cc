// The selection group as a whole: empty slots, the order of the request, nothing kept between runs.
#include "module/modify/modify_spec.h"

#include <gtest/gtest.h>

#include <functional>

#include "backend/syntax/universal_parser.h"
#include "backend/tokens/token_sequence.h"
#include "module/modify/commands.h"
#include "module/modify/modify_request_builder.h"
#include "tests/unit/module/command_fixture.h"

namespace vexa {
namespace {

using ModifyGroups = CommandFixture;

struct Slot {
    std::string_view subcommand;  ///< the shortest that writes something
    std::string_view element;     ///< what it writes
    void (*empty)(ModifySpec&);
};

const Slot kSlots[] = {
    {"IF VISIBLEONLY=YES SUBTYPES=['s']", " visibleOnly=\"true\"><subtype subtype=\"s\"/>",
     [](ModifySpec& spec) { spec.selection.reset(); }},
    {"INDEXING", "<indexObject type=\"number\" indexStart=\"1\"/>",
     [](ModifySpec& spec) { spec.indexing.reset(); }},
    {"DELETEOBJECT", "<deleteObject/>", [](ModifySpec& spec) { spec.deleteObject.reset(); }},
    {"GRAPHS VIZSTYLESHEET='v'", "<modifyGraph styleSheet=\"v\"/>",
     [](ModifySpec& spec) { spec.graphs.reset(); }},
    {"OBJECTPROPERTIES VISIBLE=NO", "<objectProperties visible=\"no\"/>",
     [](ModifySpec& spec) { spec.objectProperties.reset(); }},
    {"TABLE TRANSPOSE=YES", "<modifyTable transpose=\"true\"/>",
     [](ModifySpec& spec) { spec.table.reset(); }},
    {"TABLECELLS SELECT=[BODY]", "<tableCells body=\"true\" selectColumns=\"both\"/>",
     [](ModifySpec& spec) { spec.tableCells.reset(); }},
    {"TEXTS FONT='f'", "<modifyText fontFamily=\"f\"/>", [](ModifySpec& spec) { spec.texts.reset(); }}};

/// A command with one group, its request built with the slots of `spec`; nothing when a part was refused.
std::optional<std::string> build(const ModifySpec& spec, const std::string& command) {
    const CommandText text{command, 0, "test.vxs", 1};
    const CurrentCommandScope scope(text);
    CommandDescriptor descriptor("OUTPUT MODIFY");
    descriptor.addGroupComDesc(describeSelectionGroup(spec));
    const VEXA_TokenSequence tokens(true);
    CommandSpec parsed;
    if (UniversalParser(tokens, parsed, descriptor).getCommandSpecifications() != 0) {
        return std::nullopt;
    }
    ParserMessage messages;
    std::string request;
    const bool valid = ModifyRequestBuilder(request, {}, spec, parsed, messages).close();
    return valid ? std::optional(request) : std::nullopt;
}

/// The request with the slots `mask` empty, as it must be.
std::string expectedWithout(std::size_t mask) {
    std::string request = "<modifyOutputObject documentName=\"*\"><modifyEvent all=\"true\"";
    request += (mask & 1U) != 0 ? ">" : "";
    for (std::size_t i = 0; i < std::size(kSlots); ++i) {
        request += (mask >> i & 1U) != 0 ? std::string_view() : kSlots[i].element;
    }
    return request + "</modifyEvent></modifyOutputObject>";
}

TEST_F(ModifyGroups, EmptySlotsAreSkippedInEveryCombination) {
    for (std::size_t mask = 0; mask < 1U << std::size(kSlots); ++mask) {
        ModifySpec spec = makeModifySpec();
        std::string command = "/SELECT ALL";
        for (std::size_t i = 0; i < std::size(kSlots); ++i) {
            if ((mask >> i & 1U) != 0) {
                kSlots[i].empty(spec);
            } else {
                command.append(" /").append(kSlots[i].subcommand);
            }
        }
        ASSERT_EQ(build(spec, command), expectedWithout(mask)) << command;
    }
    EXPECT_TRUE(events.empty());
}

TEST_F(ModifyGroups, ASubcommandOfAnEmptySlotIsUnknown) {
    for (const Slot& slot : kSlots) {
        ModifySpec spec = makeModifySpec();
        slot.empty(spec);
        events.clear();
        EXPECT_EQ(build(spec, "/SELECT ALL /" + std::string(slot.subcommand)), std::nullopt);
        EXPECT_EQ(all<SyntaxErrorReported>().size(), 1U) << slot.subcommand;
    }
}

/// A handler that remembers how it was asked.
class WatchedHandler : public ModifyHandler {
  public:
    WatchedHandler(std::string name, std::vector<std::string>& calls, bool valid, bool present)
        : name_(std::move(name)), calls_(calls), valid_(valid), present_(present) {}

    void describe(GroupComDescriptor& /*group*/) const override { calls_.push_back("describe " + name_); }
    bool read(const GroupComObj& /*group*/, ParserMessage& /*messages*/) override {
        calls_.push_back("read " + name_);
        return valid_;
    }
    [[nodiscard]] bool isPresent() const override { return present_; }
    void write(std::string& request) const override {
        calls_.push_back("write " + name_);
        request += '<' + name_ + "/>";
    }

  private:
    std::string name_;
    std::vector<std::string>& calls_;
    bool valid_, present_;
};

TEST_F(ModifyGroups, HandlersAreDescribedInOneOrderAndReadInAnother) {
    std::vector<std::string> calls;
    ModifySpec spec;
    const auto watch = [&calls](const char* name, bool valid = true, bool present = true) {
        return std::make_unique<WatchedHandler>(name, calls, valid, present);
    };
    spec.indexing = watch("indexing");
    spec.deleteObject = watch("delete", true, false);
    spec.graphs = watch("graphs");
    spec.objectProperties = watch("properties");
    spec.table = watch("table", false);
    spec.tableCells = watch("cells");
    spec.texts = watch("texts");
    EXPECT_EQ(build(spec, "/SELECT ALL /SELECT LOGS"), std::nullopt);
    EXPECT_EQ(calls, (std::vector<std::string>{"describe indexing", "describe delete", "describe graphs",
                                               "describe texts", "describe properties", "describe table",
                                               "describe cells", "read indexing", "write indexing",
                                               "read delete", "read graphs", "write graphs",
                                               "read properties", "write properties", "read table"}));
}

TEST_F(ModifyGroups, AllSlotsAreFilledAndMadeAnewEachTime) {
    const ModifySpec one = makeModifySpec();
    const ModifySpec other = makeModifySpec();
    EXPECT_TRUE(one.selection && one.indexing && one.deleteObject && one.graphs && one.objectProperties &&
                one.table && one.tableCells && one.texts);
    EXPECT_NE(one.table, other.table);
    EXPECT_NE(one.tableCells, other.tableCells);
}

constexpr const char* kEverything =
    "NAME='d' DEBUG=no /SELECT ALL EXCEPT=[LOGS] /IF COMMANDS=['Means(1,3)' LAST] SUBTYPES=['s'] "
    "LABELS=[EXACT('e') BEGINS('b') ENDS('n') CONTAINS('c')] INSTANCES=[1 LAST] VISIBLEONLY=YES "
    "/INDEXING INDEXTYPE=ROMANCAP INDEXSTART='XIV' /DELETEOBJECT /GRAPHS VIZSTYLESHEET='v' "
    "/OBJECTPROPERTIES VISIBLE=YES OUTLINELABEL='o' SIZE=INCHES(2 3) /TABLE TABLETITLE='t' TABLESUMMARY='u' "
    "TRANSPOSE=YES SORT=(COLLABEL='l') SORTDIRECTION=DESCENDING FORMAT='f' TLOOK=NONE "
    "SELECTEDLAYER=['a' 'b' 1 2] /TABLECELLS SELECT=[BODY 'x' POSITION(1 2)] SELECTCONDITION=TOP(3) "
    "STYLE=BOLD TEXTCOLOR=RED REPLACE='r' /TABLECELLS SELECT=[MEAN] /TEXTS TEXT='w' STYLE=ITALIC";

class RepeatedModification : public CommandFixture {
  protected:
    std::string requestOf(const std::string& command) {
        adapter.modifications.clear();
        testing::internal::CaptureStdout();
        run(outputModify, command);
        printed = testing::internal::GetCapturedStdout();
        return adapter.modifications.empty() ? std::string() : adapter.modifications.back();
    }

    std::string printed;
};

TEST_F(RepeatedModification, TheSecondRunKnowsNothingOfTheFirst) {
    const std::string bare = requestOf("/SELECT TABLES");
    EXPECT_EQ(bare,
              "<modifyOutputObject documentName=\"*\"><modifyEvent tables=\"true\"></modifyEvent>"
              "</modifyOutputObject>");
    const std::string everything = requestOf(kEverything);
    EXPECT_GT(everything.size(), 1000U);
    const std::string firstPrinted = printed;
    EXPECT_EQ(requestOf(kEverything), everything);
    EXPECT_EQ(printed, firstPrinted);
    EXPECT_EQ(requestOf("/SELECT TABLES"), bare);
    EXPECT_EQ(printed, "");
    EXPECT_EQ(requestOf("/SELECT LOGS EXCEPT=[TABLES]"), "") << "refused";
    EXPECT_EQ(requestOf("/SELECT TABLES /TABLE SORT=(COLLABEL=5)"), "") << "refused";
    EXPECT_EQ(requestOf("/SELECT TABLES /QUITE"), "") << "a syntax error";
    EXPECT_EQ(requestOf(kEverything), everything);
}

TEST_F(RepeatedModification, ReportsAreThoseOfTheOwnReply) {
    adapter.reply = "Invalid format (A1) (3,2,1)";
    run(outputModify, "/REPORT PRINTREPORT=YES /SELECT TABLES");
    EXPECT_EQ(all<ErrorReported>().size(), 1U);
    EXPECT_EQ(all<TableFinished>().size(), 1U);
    events.clear();
    adapter.reply = "";
    run(outputModify, "/REPORT PRINTREPORT=YES /SELECT TABLES");
    EXPECT_TRUE(all<ErrorReported>().empty());
    EXPECT_TRUE(all<TableFinished>().empty());
    EXPECT_EQ(all<ProcedureBegan>().size(), 1U);
    EXPECT_EQ(all<ProcedureEnded>().size(), 1U);
}

}  // namespace
}  // namespace vexa
