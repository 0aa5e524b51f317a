// Requests beyond what transcripts show, and refusals.

#include "frontend/requests/modify_request_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#include "backend/text/character_set.h"
#include "tests/unit/requests/request_text.h"

namespace vexa::frontend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string kBegin = "<modifyOutputObject documentName=\"*\">";
const std::string kEnd = "</modifyOutputObject>";

std::string inRequest(const std::string& groups) { return kBegin + groups + kEnd; }
std::string inGroup(const std::string& children) {
    return inRequest("<modifyEvent tables=\"true\">" + children + "</modifyEvent>");
}

/// The only group of what was read, or a group without anything and a failure of the test.
ModifyGroup groupOf(const std::string& text) {
    const auto read = readModifyRequest(text);
    const auto* const refusal = std::get_if<RequestRefusal>(&read);
    EXPECT_EQ(refusal, nullptr) << text << "\n" << (refusal != nullptr ? refusal->message : "");
    if (refusal != nullptr) return {};
    EXPECT_EQ(std::get<ModifyRequest>(read).groups.size(), 1U) << text;
    return std::get<ModifyRequest>(read).groups.front();
}

std::vector<std::string> labelsOf(const std::string& children) {
    std::vector<std::string> labels;
    for (const LabelCriterion& each : groupOf(inGroup(children)).labels) labels.push_back(each.text);
    return labels;
}

TEST(ReadModifyRequest, TakesTextsThatAreNotEscaped) {
    const std::vector<std::string> texts = {"a \"b\"",
                                            "\"",
                                            "\"\"",
                                            "a & b",
                                            "&lt;",
                                            "<",
                                            "a < b > c",
                                            "/>",
                                            "\"/>",
                                            "\" exact=",
                                            "\" exact=\"true\"",
                                            "\" exact=\"true\"/>",
                                            "\" exact=\"true\"/> <label ",
                                            "\nline\tof\x01",
                                            "</modifyEvent>",
                                            "<label expression=\"x",
                                            "\"/",
                                            "\" begins=\"yes\"",
                                            "= \" = \"",
                                            "\xC3\xA9\"",
                                            ""};
    for (const std::string& text : texts) {
        EXPECT_THAT(labelsOf("<label expression=\"" + text + "\" exact=\"true\"/>"), ElementsAre(text))
            << text;
        EXPECT_THAT(labelsOf("<label expression=\"" + text + "\" exact=\"true\"/><label expression=\"" +
                             text + "\" exact=\"true\"/><label expression=\"x\" contains=\"true\"/>"),
                    ElementsAre(text, text, "x"))
            << text;
    }
}

TEST(ReadModifyRequest, TakesEveryKindOfTextThatIsNotEscaped) {
    const std::string text = "a \"b\" <c & d/> =\"";
    const ModifyGroup group = groupOf(inGroup(
        "<command commandName=\"" + text + "\" last=\"true\"/><command commandName=\"" + text +
        "\" instance=\"2\"/><command commandName=\"" + text + "\"/><subtype subtype=\"" + text +
        "\"/><modifyGraph styleSheet=\"" + text + "\"/><modifyTable title=\"a&amp;b\" format=\"" + text +
        "\" defaultTableLook=\"true\"/><tableCells selectColumns=\"both\" format=\"" + text + "\" font=\"" +
        text + "\" replace=\"" + text + "\"/><tableCells selectColumns=\"true\" font=\"" + text +
        "\" replaceValue=\"1.5\"/><modifyText fontFamily=\"" + text +
        "\" fontSize=\"9\" fontBold=\"false\"/>"));
    ASSERT_EQ(group.commands.size(), 3U);
    EXPECT_EQ(group.commands[0], (CommandCriterion{text, std::nullopt, true}));
    EXPECT_EQ(group.commands[1], (CommandCriterion{text, 2, false}));
    EXPECT_EQ(group.commands[2], (CommandCriterion{text, std::nullopt, false}));
    EXPECT_THAT(group.subtypes, ElementsAre(text));
    EXPECT_EQ(group.graph->styleSheet, text);
    EXPECT_EQ(group.table->title, "a&b");
    EXPECT_EQ(group.table->format, text);
    EXPECT_TRUE(group.table->defaultLook);
    EXPECT_EQ(group.cells[0].format, text);
    EXPECT_EQ(group.cells[0].font, text);
    EXPECT_EQ(group.cells[0].replacement->text, text);
    EXPECT_EQ(group.cells[1].font, text);
    EXPECT_EQ(group.cells[1].replacement->number, 1.5);
    EXPECT_EQ(group.text->font, text);
    EXPECT_EQ(group.text->fontSize, 9.0);
    EXPECT_EQ(group.text->bold, false);
}

TEST(ReadModifyRequest, TakesWhatTheFormWouldWriteOtherwiseForAPartOfTheText) {
    const ModifyGroup group = groupOf(inGroup("<command commandName=\"a\" last=\"true\"  instance=\"1\"/>"));
    EXPECT_EQ(group.commands.front().name, "a\" last=\"true\"  instance=\"1");
}

TEST(ReadModifyRequest, TakesAnOpenGraphForNothing) {
    EXPECT_FALSE(groupOf(inGroup("<modifyGraph")).graph);
    const ModifyGroup group =
        groupOf(inGroup("<deleteObject/><modifyGraph<objectProperties/><modifyTable/>"));
    EXPECT_FALSE(group.graph);
    EXPECT_TRUE(group.deletes && group.object && group.table);
}

TEST(ReadModifyRequest, CountsADoubledTypeOnce) {
    const ModifyGroup group = groupOf(inRequest(
        "<modifyEvent all=\"true\" tables=\"false\" charts=\"false\" tables=\"false\" visibleOnly=\"true\">"
        "</modifyEvent>"));
    EXPECT_TRUE(group.types.all && group.visibleOnly);
    EXPECT_EQ(group.types.excepted.count(), 2U);
    EXPECT_FALSE(group.types.includes(SelectedType::tables));
    EXPECT_FALSE(group.types.includes(SelectedType::charts));
    EXPECT_TRUE(group.types.includes(SelectedType::pageTitles));
}

TEST(ReadModifyRequest, TakesFilesThatAreNoXml) {
    const std::vector<std::string> files = {
        "<tableProperties><a></tableProperties>",
        "<tableProperties",
        "<tableProperties><",
        "no XML \" & <",
        "<tableProperties/>\n",
        "<tableProperties></tableLook></tableProperties>",
        "\xFF\xFE",
        std::string("a\0b", 3),
        "<tableProperties><!-- </tableLook></modifyTable> --></tableProperties>\n"};
    for (const std::string& file : files) {
        EXPECT_EQ(
            groupOf(inGroup("<modifyTable><tableLook>" + file + "</tableLook></modifyTable>")).table->look,
            file);
    }
    const ModifyGroup group =
        groupOf(inGroup("<modifyGraph><chartTemplate></chartTemplate><chartTemplate>"
                        "<template>\xFF</template></chartTemplate></modifyGraph>"));
    EXPECT_THAT(group.graph->templates, ElementsAre("", "<template>\xEF\xBF\xBD</template>"));
}

TEST(ReadModifyRequest, ReadsANameInTheCharacterSetOfTheBackEnd) {
    installCharacterSet(CharacterSet::find("windows-1252"));
    const ModifyGroup group =
        groupOf(inGroup("<modifyTable><layer layer=\"\xC3\xA9\" category=\"\xC3\xA9\"/>"
                        "<layer layerInt=\"1\" category=\"\xE9 &amp; \xE8\"/>"
                        "</modifyTable>"));
    installCharacterSet(nullptr);
    ASSERT_EQ(group.table->layers.size(), 2U);
    EXPECT_EQ(group.table->layers[0].category.label, "\xC3\xA9");
    EXPECT_EQ(group.table->layers[1].category.label, "\xC3\xA9 & \xC3\xA8");
    EXPECT_EQ(group.table->layers[1].layer, (LayerDesignator{std::nullopt, 1}));
    EXPECT_EQ(groupOf(inGroup("<modifyText expression=\"\xE9\"/>")).text->text, "\xEF\xBF\xBD");
}

TEST(ReadModifyRequest, ReadsConditions) {
    using Kind = CellCondition::Kind;
    const auto conditionOf = [](const std::string& text) {
        return groupOf(inGroup("<tableCells selectColumns=\"false\" selectCondition=\"" + text + "\"/>"))
            .cells.front()
            .condition;
    };
    EXPECT_EQ(conditionOf("all").kind, Kind::all);
    EXPECT_EQ(conditionOf("missing").kind, Kind::missing);
    EXPECT_EQ(conditionOf("top(3)"), (CellCondition{Kind::top, 3}));
    EXPECT_EQ(conditionOf("bottom(12)"), (CellCondition{Kind::bottom, 12}));
    EXPECT_EQ(conditionOf("&gt;=10"), (CellCondition{Kind::comparison, 0, Comparison::greaterOrEqual, 10.0}));
    EXPECT_EQ(conditionOf("&gt;-.5"), (CellCondition{Kind::comparison, 0, Comparison::greater, -0.5}));
    EXPECT_EQ(conditionOf("&lt;=1e3"), (CellCondition{Kind::comparison, 0, Comparison::lessOrEqual, 1000.0}));
    EXPECT_EQ(conditionOf("&lt; +2"), (CellCondition{Kind::comparison, 0, Comparison::less, 2.0}));
    EXPECT_EQ(conditionOf("=0"), (CellCondition{Kind::comparison, 0, Comparison::equal, 0.0}));
    EXPECT_EQ(conditionOf("&lt;&gt;7"), (CellCondition{Kind::comparison, 0, Comparison::notEqual, 7.0}));
}

struct Refused {
    std::string text;
    std::string element;
    std::string attribute;
    std::string place;    ///< what the refused place begins with
    std::string message;  ///< a part of it
};

class RefusedRequests : public testing::TestWithParam<Refused> {};

TEST_P(RefusedRequests, NameTheirPlace) {
    const Refused& each = GetParam();
    const auto read = readModifyRequest(each.text);
    const auto* const refusal = std::get_if<RequestRefusal>(&read);
    ASSERT_NE(refusal, nullptr) << each.text;
    EXPECT_EQ(refusal->element, each.element) << refusal->message;
    EXPECT_EQ(refusal->attribute, each.attribute) << refusal->message;
    ASSERT_LE(refusal->offset, each.text.size());
    EXPECT_THAT(each.text.substr(refusal->offset), testing::StartsWith(each.place)) << refusal->message;
    EXPECT_THAT(refusal->message, HasSubstr(each.message));
    EXPECT_THAT(refusal->message, HasSubstr("byte " + std::to_string(refusal->offset)));
}

INSTANTIATE_TEST_SUITE_P(
    Envelope, RefusedRequests,
    testing::Values(
        Refused{"", "", "", "", "Found: the end of the request. What would fit: \"<modifyOutputObject\"."},
        Refused{"<modify>", "", "", "<modify>", "\"<modifyOutputObject\""},
        Refused{"<modifyOutputObject>", "modifyOutputObject", "", "", "What would fit: \"documentName\"."},
        Refused{kBegin, "modifyOutputObject", "", "", "\"</modifyOutputObject>\""},
        Refused{kBegin + kEnd + "\n", "", "", "\n", "What would fit: the end of the request."},
        Refused{kBegin + "<modifyEvent></modifyEvent>text" + kEnd, "modifyOutputObject", "", "text",
                "\"<modifyEvent\""},
        Refused{"<modifyOutputObject documentName=\"a&b\"></modifyOutputObject>", "modifyOutputObject",
                "documentName", "a&b", "\"&amp;\""},
        Refused{"<modifyOutputObject documentName=\"*\" debug=\"false\"></modifyOutputObject>",
                "modifyOutputObject", "debug", "false", "What would fit: \"true\"."},
        Refused{"<modifyOutputObject debug=\"true\" documentName=\"*\"></modifyOutputObject>",
                "modifyOutputObject", "", "documentName", "\">\""},
        Refused{"<modifyOutputObject documentName=\"a<b\"></modifyOutputObject>", "modifyOutputObject",
                "documentName", "a<b", "a quotation mark"},
        Refused{inRequest("<modifyEvent tables=\"false\"></modifyEvent>"), "modifyEvent", "tables", "false",
                "\"true\""},
        Refused{inRequest("<modifyEvent all=\"true\" tables=\"true\"></modifyEvent>"), "modifyEvent",
                "tables", "true", "\"false\""},
        Refused{inRequest("<modifyEvent all=\"true\" texts=\"false\" texts=\"true\"></modifyEvent>"),
                "modifyEvent", "texts", "true", "\"false\""}));

INSTANTIATE_TEST_SUITE_P(
    Groups, RefusedRequests,
    testing::Values(
        Refused{inGroup("<deleteObject/><indexObject type=\"number\" indexStart=\"1\"/>"), "modifyEvent", "",
                "<indexObject", "\"modifyGraph\""},
        Refused{inGroup("<deleteObject/><deleteObject/>"), "modifyEvent", "", "<deleteObject/></",
                "\"modifyGraph\""},
        Refused{inGroup("<unknown/>"), "modifyEvent", "", "<unknown", "\"command\", \"subtype\""},
        Refused{inGroup("<command instance=\"0\"/>"), "command", "instance", "0\"",
                "a whole number from 1 to 2147483647"},
        Refused{inGroup("<command commandName=\"a\" last=\"true\" instance=\"1\"/>"), "command", "instance",
                "1", "\"last\""},
        Refused{inGroup("<instance/>"), "instance", "", "</modifyEvent>", "\"instance\", \"last\""},
        Refused{inGroup("<instance instance=\"2147483648\"/>"), "instance", "instance", "2147483648",
                "2147483647"},
        Refused{inGroup("<label expression=\"a\" ends=\"true\"/><label expression=\"b\" begins=\"true\"/>"),
                "label", "begins", "true", "\"ends\", \"contains\""},
        Refused{inGroup("<label expression=\"a\"/>"), "label", "", "</modifyEvent>", "\"exact\""},
        Refused{inGroup("<label exact=\"true\"/>"), "label", "", "</modifyEvent>", "\"expression\""},
        Refused{inGroup("<label expression=\"a\" exact=\"true\"/>b"), "label", "expression", "a\" exact",
                "a quotation mark"},
        Refused{inGroup("<indexObject type=\"letterCap\" indexStart=\"1\"/>"), "indexObject", "type",
                "letterCap", "\"letterCAP\", \"roman\""},
        Refused{inGroup("<indexObject type=\"roman\" indexStart=\"1.5\"/>"), "indexObject", "indexStart",
                "1.5", "-2147483648"},
        Refused{inGroup("<objectProperties sizeWidth=\"0\"/>"), "objectProperties", "sizeWidth", "0",
                "a number above 0"},
        Refused{inGroup("<objectProperties sizeWidth=\"inf\"/>"), "objectProperties", "sizeWidth", "inf",
                "a number above 0"},
        Refused{inGroup("<objectProperties sizeWidth=\"1\" sizeWidthPCT=\"1\"/>"), "objectProperties",
                "sizeWidthPCT", "1", "\"sizeWidth\""},
        Refused{inGroup("<objectProperties visible=\"YES\"/>"), "objectProperties", "visible", "YES",
                "\"yes\""}));

INSTANTIATE_TEST_SUITE_P(
    Tables, RefusedRequests,
    testing::Values(
        Refused{inGroup("<modifyTable sortLabel=\"a\"/>"), "modifyTable", "", "</modifyEvent>",
                "\"ascending\""},
        Refused{inGroup("<modifyTable ascending=\"true\"/>"), "modifyTable", "", "</modifyEvent>",
                "\"sortLabel\""},
        Refused{inGroup("<modifyTable><layer layer=\"a\"/></modifyTable>"), "layer", "", "</modifyTable>",
                "\"category\", \"categoryInt\""},
        Refused{inGroup("<modifyTable><layer layerInt=\"1\" categoryInt=\"-2\"/></modifyTable>"), "layer",
                "categoryInt", "-2", "from -1"},
        Refused{
            inGroup(
                "<modifyTable><layer layerInt=\"1\" categoryInt=\"2\"/><layer layer=\"a\" category=\"b\"/>"
                "</modifyTable>"),
            "layer", "", "</modifyTable>", "\"<tableLook>\""},
        Refused{inGroup("<modifyTable><tableLook><tableProperties></tableLook>"), "tableLook", "",
                "<tableProperties", "\"</tableLook></modifyTable>\""},
        Refused{inGroup("<tableCells/>"), "tableCells", "", "</modifyEvent>", "\"selectColumns\""},
        Refused{inGroup("<tableCells selectPosition=\"1;0\" selectColumns=\"both\"/>"), "tableCells",
                "selectPosition", "1;0", "from 1"},
        Refused{inGroup("<tableCells selectColumns=\"both\" selectCondition=\"GT 5\"/>"), "tableCells",
                "selectCondition", "GT 5", "\">= 1\""},
        Refused{inGroup("<tableCells selectColumns=\"both\" selectCondition=\"top(0)\"/>"), "tableCells",
                "selectCondition", "top(0)", "from 1"},
        Refused{inGroup("<tableCells selectColumns=\"both\" textRed=\"1\" textGreen=\"2\"/>"), "tableCells",
                "", "</modifyEvent>", "\"textBlue\""},
        Refused{
            inGroup("<tableCells selectColumns=\"both\" textRed=\"256\" textGreen=\"2\" textBlue=\"2\"/>"),
            "tableCells", "textRed", "256", "from 0 to 255"},
        Refused{inGroup("<tableCells selectColumns=\"both\" applyTo=\"column\"/>"), "tableCells", "applyTo",
                "column", "\"COLUMN\""},
        Refused{inGroup("<tableCells selectColumns=\"both\" replaceValue=\"1\" replace=\"b\"/>"),
                "tableCells", "replace", "b", "\"replaceValue\""},
        Refused{inGroup("<modifyText fontSize=\"\"/>"), "modifyText", "fontSize", "\"/>",
                "a number above 0"}));

/// Texts that hold what the form has behind them: nobody can tell them from the form.
INSTANTIATE_TEST_SUITE_P(
    Doubt, RefusedRequests,
    testing::Values(
        Refused{inGroup("<label expression=\"a\" begins=\"true\"/><label expression=\"b\" exact=\"true\"/>"),
                "label", "exact", "true", "\"begins\""},
        Refused{inGroup("<subtype subtype=\"a\"/><command />\"/>"), "modifyEvent", "", "<command />",
                "\"subtype\""},
        Refused{inGroup("<command commandName=\"a\" last=\"true\" last=\"true\"/>"), "command", "last",
                "true\"/>", "\"/>\""},
        Refused{inGroup("<tableCells selectColumns=\"both\" format=\"F\" bold=\"true\"/>"), "tableCells", "",
                "bold", "\"font\""},
        Refused{inGroup("<tableCells selectColumns=\"both\" format=\"A\" font=\"B\" format=\"C\"/>"),
                "tableCells", "", "format=\"C", "\"replace\""},
        Refused{inGroup("<modifyGraph><chartTemplate><template></chartTemplate><chartTemplate><template/>"
                        "</chartTemplate></modifyGraph>"),
                "chartTemplate", "", "<template></", "more than one place"},
        Refused{inGroup("<modifyTable><tableLook><tableProperties></tableLook></modifyTable></modifyEvent>"
                        "<modifyEvent><modifyTable><tableLook><tableProperties/></tableLook></modifyTable>"),
                "tableLook", "", "<tableProperties><", "more than one place"}));

TEST(ReadModifyRequest, TakesTimeInProportionToTheText) {
    const std::clock_t start = std::clock();
    for (const std::string& piece :
         {std::string("\""), std::string("\" last=\"true"), std::string("\"/><"), std::string("\" x=\"")}) {
        std::string text = kBegin + "<modifyEvent><command commandName=\"";
        while (text.size() < 4'000'000) text += piece;
        EXPECT_TRUE(std::holds_alternative<RequestRefusal>(readModifyRequest(text)));
    }
    for (const std::string& piece : {std::string("<tableLook>"), std::string("</tableLook></modifyTable>"),
                                     std::string("</tableLook>"), std::string("<tableProperties")}) {
        std::string text = kBegin + "<modifyEvent><modifyTable><tableLook>";
        while (text.size() < 4'000'000) text += piece;
        EXPECT_TRUE(std::holds_alternative<RequestRefusal>(readModifyRequest(text)));
    }
    std::string groups;
    while (groups.size() < 4'000'000)
        groups += "<modifyEvent><subtype subtype=\"a\"/><modifyGraph</modifyEvent>";
    EXPECT_TRUE(std::holds_alternative<ModifyRequest>(readModifyRequest(inRequest(groups))));
    EXPECT_LT(std::clock() - start, 60 * CLOCKS_PER_SEC) << "of the processor, whatever else goes on";
}

}  // namespace
}  // namespace vexa::frontend
