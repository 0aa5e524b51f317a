// Whatever the order in which the subcommands of a group are written, the request is the same; and the
// request of several groups is made of what each of them gives alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "backend/paths/file_specification.h"
#include "backend/platform/clock.h"
#include "module/modify/commands.h"
#include "tests/unit/module/command_fixture.h"
#include "tests/unit/module/temporary_folder.h"

namespace vexa {
namespace {

/// Writes parts of commands at random: the same ones in every run.
class CommandMaker {
  public:
    explicit CommandMaker(std::uint32_t seed) : engine_(seed) {}

    /// One selection group: SELECT, then its subcommands.
    struct Group {
        std::string select;
        std::vector<std::string> subcommands;
    };

    Group group() {
        Group group{select(), {}};
        for (const auto make :
             {&CommandMaker::criteria, &CommandMaker::indexing, &CommandMaker::deletion,
              &CommandMaker::graphs, &CommandMaker::properties, &CommandMaker::table, &CommandMaker::texts}) {
            if (chance(60)) {
                group.subcommands.push_back((this->*make)());
            }
        }
        return group;
    }

    /// TABLECELLS, the one subcommand whose occurrences keep their order.
    std::vector<std::string> cellsOfOneGroup() {
        std::vector<std::string> all(number(0, 3));
        std::generate(all.begin(), all.end(), [this] { return cells(); });
        return all;
    }

    template <typename Values>
    void shuffle(Values& values) {
        // std::shuffle differs from library to library.
        for (std::size_t i = values.size(); i > 1; --i) {
            std::swap(values[i - 1], values[number(0, i - 1)]);
        }
    }

    std::size_t number(std::size_t least, std::size_t greatest) {
        return least + engine_() % (greatest - least + 1);
    }

  private:
    using Words = std::initializer_list<std::string_view>;

    bool chance(std::size_t percent) { return number(1, 100) <= percent; }

    std::string oneOf(Words words) { return std::string(words.begin()[number(0, words.size() - 1)]); }

    std::string integer() { return std::to_string(number(1, 25)); }

    std::string quoted() {
        return oneOf({"'Means'", "'a<b'", "'it''s'", "\"x & y\"", "'gr\u00fc\u00df \u3042'", "'>'",
                      "'made )DATE at )ETIME'", "'one ' + 'two'", "'()=/[]'", "'ALL'", "'  '"});
    }

    std::string word() { return oneOf({"word", "Sans", "F8", "ALL", "x1", "\u00e4"}); }

    std::string text() { return chance(70) ? quoted() : word(); }

    std::string list(std::string (CommandMaker::*item)(), std::size_t most) {
        std::string all;
        for (std::size_t count = number(1, most); count > 0; --count) {
            all += (all.empty() ? "" : " ") + (this->*item)();
        }
        return all;
    }

    /// Some of the parameters, in any order, behind the name.
    std::string subcommand(std::string text, std::vector<std::string> parameters, bool mayBeEmpty = false) {
        shuffle(parameters);
        const std::size_t count = number(mayBeEmpty ? 0 : 1, parameters.size());
        for (std::size_t i = 0; i < count; ++i) {
            text += ' ' + parameters[i];
        }
        return text;
    }

    std::string itemType() {
        return oneOf({"CHARTS", "HEADINGS", "LOGS", "MODELS", "TABLES", "TEXTS", "TREES", "WARNINGS",
                      "OUTLINEHEADERS", "NOTES", "UNKNOWN", "OTHER", "PAGETITLES"});
    }

    std::string select() {
        if (chance(30)) {
            return "SELECT ALL" + (chance(50) ? " EXCEPT=[" + list(&CommandMaker::itemType, 4) + ']' : "");
        }
        std::vector<std::string> types = {"CHARTS", "logs", "TABLES", "Notes", "OTHER", "MODELS"};
        return subcommand("SELECT", types);
    }

    std::string commandName() {
        return oneOf({"'Means'", "'Means(2)'", "'Averages(1,3,5)'", "'Counts(last)'", "LAST", "'a\"b'"});
    }

    std::string instance() { return chance(70) ? std::to_string(number(0, 9)) : "LAST"; }

    std::string labels() {
        std::vector<std::string> modes = {"EXACT", "BEGINS", "contains", "ENDS"};
        for (std::string& mode : modes) {
            mode += '(' + list(&CommandMaker::quoted, 2) + ')';
        }
        return subcommand("LABELS=[", modes) + ']';
    }

    std::string criteria() {
        return subcommand("IF", {"COMMANDS=[" + list(&CommandMaker::commandName, 3) + ']',
                                 "SUBTYPES=[" + list(&CommandMaker::quoted, 3) + ']', labels(),
                                 "INSTANCES=[" + list(&CommandMaker::instance, 3) + ']',
                                 "VISIBLEONLY=" + oneOf({"NO", "YES"})});
    }

    std::string indexing() {
        return "INDEXING" +
               oneOf({"", " INDEXTYPE=NUMBER", " INDEXSTART=-5", " INDEXSTART=7 INDEXTYPE=NUMBER",
                      " INDEXTYPE=LETTERLOW INDEXSTART='ab'", " INDEXSTART=AZ INDEXTYPE=LETTERCAP",
                      " INDEXTYPE=ROMANLOW INDEXSTART=xiv", " INDEXTYPE=ROMANCAP"});
    }

    std::string deletion() { return "DELETEOBJECT" + oneOf({"", " DELETE=YES", " DELETE=NO"}); }

    std::string graphs() {
        return subcommand("GRAPHS",
                          {"VIZSTYLESHEET=" + text(),
                           "CTEMPLATE=[" + oneOf({"'a.cgt'", "'b.cgt' 'a.cgt'", "'a.cgt' 'a.cgt'"}) + ']'},
                          true);
    }

    std::string side() { return chance(30) ? "PROPORTIONAL" : integer(); }

    std::string properties() {
        return subcommand("OBJECTPROPERTIES",
                          {"VISIBLE=" + oneOf({"ASIS", "YES", "no"}), "OUTLINELABEL=" + text(),
                           "SIZE=" + oneOf({"PERCENT", "CENTIMETERS", "INCHES", "points"}) + '(' + side() +
                               ' ' + side() + ')'});
    }

    std::string layer() {
        return oneOf({"'Region'", "ALL", "1", "2", "''", "'a<b'"}) + ' ' +
               oneOf({"'Total'", "LAST", "1", "7", "''", "'\u3042'"});
    }

    std::string sort() {
        return chance(50) ? "SORT=(COLLABEL=" + quoted() + ')' : "SORT=(COLPOSITION=" + integer() + ')';
    }

    std::string table() {
        return subcommand(
            "TABLE", {"TABLETITLE=" + text(), "TABLESUMMARY=" + text(), "TRANSPOSE=" + oneOf({"YES", "NO"}),
                      "FORMAT=" + text(), "TLOOK=" + oneOf({"NONE", "none", "'look.tlk'"}),
                      "SELECTEDLAYER=[" + list(&CommandMaker::layer, 3) + ']', sort(),
                      "SORTDIRECTION=" + oneOf({"ASCENDING", "descending"})});
    }

    std::string cell() {
        return oneOf({"CORRELATION", "COUNT", "MEAN", "MEDIAN", "PERCENT", "residuals", "SIGNIFICANCE",
                      "BODY", "HEADERS", "FOOTNOTES", "TITLE", "CAPTION", "'Total'", "POSITION(1 2)",
                      "'<&>'"});
    }

    std::string color() {
        return oneOf({"RED", "Black", "ORANGE", "lightgray", "RGB(1 2 3)", "RGB(0 0 255)"});
    }

    std::string styles() {
        return "STYLE=" + oneOf({"BOLD", "ITALIC UNDERLINE", "REGULAR", "BOLD REGULAR", "REGULAR BOLD"});
    }

    std::string cells() {
        return subcommand(
            "TABLECELLS SELECT=[" + list(&CommandMaker::cell, 3) + ']',
            {"SELECTDIMENSION=" + oneOf({"COLUMNS", "ROWS", "BOTH"}),
             "SELECTCONDITION=" +
                 oneOf({"ALL", "SYSMIS", "TOP(3)", "BOTTOM(4)", "[>= 10]", "[<-1.5]", "'x'"}),
             "COLUMNWIDTH=" + oneOf({"INCHES(2)", "POINTS 12.5", "CENTIMETERS(1)"}),
             "APPLYTO=" + oneOf({"CELL", "row", "COLUMNDATA"}), "REVERTTODEFAULT=" + oneOf({"NO", "YES"}),
             "FORMAT=" + text(), "FONT=" + text(), "FONTSIZE=" + integer(), styles(), "TEXTCOLOR=" + color(),
             "BACKGROUNDCOLOR=" + color(), "REPLACE=" + oneOf({"'n'", "''", "-2.5", "1e10", "'<x>'"})},
            true);
    }

    std::string texts() {
        return subcommand("TEXTS", {"TEXT=" + text(), "FONT=" + text(), "FONTSIZE=" + integer(), styles(),
                                    "TEXTCOLOR=" + color()});
    }

    std::mt19937 engine_;
};

using Group = CommandMaker::Group;

/// Puts the occurrences of TABLECELLS among the other subcommands, each list in its own order.
std::string mixed(CommandMaker& maker, Group group, const std::vector<std::string>& cells) {
    maker.shuffle(group.subcommands);
    std::size_t place = 0;
    for (const std::string& each : cells) {
        place = maker.number(place, group.subcommands.size());
        group.subcommands.insert(group.subcommands.begin() + static_cast<std::ptrdiff_t>(place), each);
        ++place;
    }
    std::string text = " /" + group.select;
    for (const std::string& each : group.subcommands) {
        text += (maker.number(0, 3) == 0 ? "\n/" : " /") + each;
    }
    return text;
}

/// The back end's folder holds two chart templates and a table look; the clock stands.
class OrderOfSubcommands : public CommandFixture {
  protected:
    OrderOfSubcommands() {
        static_cast<void>(folder_.write("a.cgt", "<?xml version=\"1.0\"?><template a=\"1\"/>"));
        static_cast<void>(folder_.write("b.cgt", "plain"));
        static_cast<void>(folder_.write("look.tlk", "<!-- --><tableProperties/>"));
        EXPECT_TRUE(FileLocations::current().changeFolder(folder_.path().string()));
        installLocalTime(LocalTime{2026, 3, 5, 10, 7, 9});
    }
    ~OrderOfSubcommands() override {
        installLocalTime(std::nullopt);
        FileLocations::current().reset();
    }

    /// What the command sends; it must send one request.
    std::string requestOf(const std::string& command) {
        adapter.modifications.clear();
        events.clear();
        run(outputModify, command);
        EXPECT_EQ(adapter.modifications.size(), 1U) << command;
        EXPECT_EQ(events.size(), 3U) << "only the block of the command and the flush: " << command;
        return adapter.modifications.empty() ? std::string() : adapter.modifications.front();
    }

    /// What stands between the tags of the envelope.
    static std::string eventsOf(const std::string& request) {
        const std::string_view begin = "<modifyOutputObject documentName=\"*\">";
        const std::string_view end = "</modifyOutputObject>";
        EXPECT_TRUE(request.starts_with(begin) && request.ends_with(end)) << request;
        return request.substr(begin.size(), request.size() - begin.size() - end.size());
    }

    TemporaryFolder folder_;
};

TEST_F(OrderOfSubcommands, DoesNotMatter) {
    CommandMaker maker(20260305);
    std::size_t longest = 0;
    for (int i = 0; i < 400; ++i) {
        std::string one;
        std::string other;
        for (std::size_t count = maker.number(1, 3); count > 0; --count) {
            const Group group = maker.group();
            const std::vector<std::string> cells = maker.cellsOfOneGroup();
            one += mixed(maker, group, cells);
            other += mixed(maker, group, cells);
        }
        const std::string request = requestOf(one);
        ASSERT_EQ(requestOf(other), request) << one << "\n" << other;
        longest = std::max(longest, request.size());
    }
    EXPECT_GT(longest, 1500U) << "the commands have become too simple";
}

TEST_F(OrderOfSubcommands, GroupsGiveTogetherWhatEachGivesAlone) {
    CommandMaker maker(4711);
    for (int i = 0; i < 150; ++i) {
        std::string command;
        std::string expected;
        for (std::size_t count = maker.number(1, 6); count > 0; --count) {
            const Group group = maker.group();
            const std::string text = mixed(maker, group, maker.cellsOfOneGroup());
            expected += eventsOf(requestOf(text));
            command += text;
        }
        ASSERT_EQ(eventsOf(requestOf(command)), expected) << command;
    }
}

TEST_F(OrderOfSubcommands, OfTheLeadingPartsDoesNotMatterEither) {
    CommandMaker maker(99);
    adapter.reply = "";
    for (int i = 0; i < 20; ++i) {
        const std::string group = mixed(maker, maker.group(), maker.cellsOfOneGroup());
        const std::string request = requestOf("NAME='a<b' /REPORT PRINTREPORT=YES" + group);
        EXPECT_EQ(requestOf("NAME='a<b'" + group + " /REPORT PRINTREPORT=YES"), request) << group;
        EXPECT_TRUE(request.starts_with("<modifyOutputObject documentName=\"a&lt;b\"><modifyEvent"));
    }
}

}  // namespace
}  // namespace vexa
