// What is wrong with a JSON text is said with its line, column and path, with what was found and what would
// fit.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/import/import_samples.h"

namespace vexa::frontend {
namespace {

/// A text, and what it is refused with behind "a.json:".
struct Refused {
    const char* json;
    const char* complaint;
};

class ResultsRefusal : public testing::TestWithParam<Refused> {};

TEST_P(ResultsRefusal, SaysWhatAndWhere) {
    EXPECT_EQ(refusalOf(GetParam().json), std::string("a.json:") + GetParam().complaint);
}

INSTANTIATE_TEST_SUITE_P(
    OfTheText, ResultsRefusal,
    testing::Values(
        Refused{"", "1:1: Found: the end of the text. Expected: a value."},
        Refused{R"({"items":[{"type":"text",}]})", "1:26: Found: \"}\". Expected: a key in double quotes."},
        Refused{R"({"items":[{"type":"text"}})", "1:26: Found: \"}\". Expected: a comma or ]."},
        Refused{R"({"items":[{"type":"text"])", "1:25: Found: \"]\". Expected: a comma or }."},
        Refused{R"({"items" [])", "1:10: Found: \"[\". Expected: a colon."},
        Refused{R"({"items":[]} x)", "1:14: Found: \"x\". Expected: the end of the text."},
        Refused{R"({"name":"a\x"})", "1:11: Found: \"\\\\\". Expected: an escape such as \\n or \\u00e4."},
        Refused{R"({"name":"\ud800a"})",
                "1:10: Found: \"\\\\\". Expected: an escape such as \\n or \\u00e4."},
        Refused{"{\"name\":\"a\nb\"}", "1:11: Found: \"\\n\". Expected: an escape such as \\n or \\u00e4."},
        Refused{R"({"name":"a)", "1:11: Found: the end of the text. Expected: a closing double quote."},
        Refused{R"({"vexaResults":01})", "1:16: Found: \"0\". Expected: a number without leading zeros."},
        Refused{R"({"vexaResults":1.})", "1:18: Found: \"}\". Expected: a digit."},
        Refused{R"({"vexaResults":tru})", "1:16: Found: \"t\". Expected: a value."},
        Refused{"{\"items\":[\n 1 2]}", "2:2: items[0]: Found: 1. Expected: an object."},
        Refused{"[]", "1:1: Found: [...]. Expected: an object."},
        Refused{"{\n}", "1:1: These are not results: neither 'vexaResults' nor 'items' is there."},
        Refused{R"({"vexaResults":2})", "1:16: vexaResults: Found: 2. Expected: a whole number from 1 to 1."},
        Refused{R"({"name":3,"items":[]})", "1:9: name: Found: 3. Expected: a text."},
        Refused{R"({"items":[],"nmae":""})", "1:1: There is no key 'nmae' here. Did you mean 'name'?"},
        Refused{R"({"items":{}})", "1:10: items: Found: {...}. Expected: a list."},
        Refused{R"({"items":7})", "1:10: items: Found: 7. Expected: a list."},
        Refused{R"({"items":[],"items":[]})", "1:13: items: The key 'items' stands here twice."},
        Refused{R"({"items":[[]]})", "1:11: items[0]: Found: [...]. Expected: an object."},
        Refused{"{\"items\":[{\"type\":\"text\",\"text\":\"\xC3\xA4\xFF\"}]}",
                "1:35: The text is not UTF-8 here."},
        Refused{R"({"items":[{"type":"table","cells":[1e999]}]})", "1:36: The number is too large."}));

INSTANTIATE_TEST_SUITE_P(
    OfItems, ResultsRefusal,
    testing::Values(
        Refused{R"({"items":[{"label":"a"}]})",
                "1:11: items[0]: The item has no 'type', such as table, chart, text or header."},
        Refused{R"({"items":[{"type":true}]})", "1:19: items[0].type: Found: true. Expected: a text."},
        Refused{R"({"items":[{"type":"text","lable":"a"}]})",
                "1:11: items[0]: There is no key 'lable' here. Did you mean 'label'?"},
        Refused{R"({"items":[{"type":"log","colour":"a"}]})",
                "1:11: items[0]: There is no key 'colour' here. These are known: type, label, command, "
                "subtype, visible, "
                "width, height, pageBreakBefore, text."},
        Refused{R"({"items":[{"type":"text","visible":"no"}]})",
                "1:36: items[0].visible: Found: \"no\". Expected: true or false."},
        Refused{R"({"items":[{"type":"text","width":0}]})",
                "1:34: items[0].width: Found: 0. Expected: a number above 0, at most a million."},
        Refused{R"({"items":[{"type":"text","items":[]}]})",
                "1:11: items[0]: An item of the type 'text' has no key 'items'."},
        Refused{R"({"items":[{"type":"header","items":[{"type":"text","style":{"color":"red"}}]}]})",
                "1:69: items[0].items[0].style.color: Found: \"red\". Expected: a color such as #ff8800."},
        Refused{R"({"items":[{"type":"model","views":[{"type":"text"}],"shown":2}]})",
                "1:61: items[0].shown: Found: 2. Expected: a whole number from 1 to 1."},
        Refused{R"({"items":[{"type":"warning","level":1}]})",
                "1:37: items[0].level: Found: 1. Expected: a whole number from 2 to 2147483647."},
        Refused{R"({"items":[{"type":"grid","rows":[["a"],["b","c"]]}]})",
                "1:40: items[0].rows[1]: Texts in this row: 2. Texts in the first row: 1."},
        Refused{R"({"items":[{"type":"grid","rows":[[]]}]})",
                "1:34: items[0].rows[0]: Found: []. Expected: at least one text."},
        Refused{R"({"items":[{"type":"grid","rows":[["a"]],"headerRows":2}]})",
                "1:54: items[0].headerRows: Found: 2. Expected: a whole number from 0 to 1."},
        Refused{R"({"items":[{"type":"chart"}]})",
                "1:11: items[0]: Found: 0 of the keys file, svg and png. Expected: one of them."},
        Refused{R"({"items":[{"type":"chart","svg":"<g/>"}]})",
                "1:33: items[0].svg: This is not an SVG: its root is 'g'."},
        Refused{R"({"items":[{"type":"chart","png":"a*"}]})", "1:33: items[0].png: This is not base64 text."},
        Refused{R"({"items":[{"type":"chart","file":"none.svg"}]})",
                "1:34: items[0].file: The file none.svg cannot be read: No such file or directory."}));

INSTANTIATE_TEST_SUITE_P(
    OfTables, ResultsRefusal,
    testing::Values(
        Refused{R"({"items":[{"type":"table","rows":[{"categories":["a"]}],"cells":[1,2]}]})",
                "1:65: items[0].cells: Cells found: 2. The categories of layers, rows and columns make: 1."},
        Refused{R"({"items":[{"type":"table","cells":[true]}]})",
                "1:36: items[0].cells[0]: Found: true. Expected: a number, a text, null or an object."},
        Refused{R"({"items":[{"type":"table","cells":[{"value":[]}]}]})",
                "1:45: items[0].cells[0].value: Found: [...]. Expected: a number, a text or null."},
        Refused{R"({"items":[{"type":"table","cells":[{"valeu":1}]}]})",
                "1:36: items[0].cells[0]: There is no key 'valeu' here. Did you mean 'value'?"},
        Refused{R"({"items":[{"type":"table","cells":[{"format":"F99","value":1}]}]})",
                "1:46: items[0].cells[0].format: Found: \"F99\". Expected: a format such as F8.2, PCT5.1 or "
                "DATE."},
        Refused{R"({"items":[{"type":"table","cells":[{"footnotes":[1]}]}]})",
                "1:36: items[0].cells[0]: There is no footnote 1; the table has 0."},
        Refused{R"({"items":[{"type":"table","cells":[1],"sparse":[]}]})",
                "1:39: items[0].sparse: A table has either cells or sparse, not both."},
        Refused{R"({"items":[{"type":"table","sparse":[1]}]})",
                "1:37: items[0].sparse[0]: Found: 1. Expected: an object."},
        Refused{
            R"({"items":[{"type":"table","rows":[{"categories":["a"]}],"sparse":[{"at":[1],"value":1}]}]})",
            "1:74: items[0].sparse[0].at[0]: There is no category 1; the dimension has 1, counted from 0."},
        Refused{
            R"({"items":[{"type":"table","rows":[{"categories":["a"]}],"sparse":[{"at":[0,0],"value":1}]}]})",
            "1:66: items[0].sparse: Numbers in each list: 2. Dimensions of the table: 1."},
        Refused{
            R"({"items":[{"type":"table","rows":[{"categories":["a"]}],"sparse":[{"at":[0]},{"at":[0]}]}]})",
            "1:78: items[0].sparse[1]: This place has a cell already."},
        Refused{R"({"items":[{"type":"table","rows":[{"label":"a"}]}]})",
                "1:35: items[0].rows[0]: The key 'categories' is missing. Expected: a list."},
        Refused{R"({"items":[{"type":"table","rows":[{"categories":["a",1]}]}]})",
                "1:54: items[0].rows[0].categories[1]: Found: 1. Expected: a text or an object."},
        Refused{R"({"items":[{"type":"table","rows":[{"categories":[{"label":"a","role":"avg"}]}]}]})",
                "1:70: items[0].rows[0].categories[0].role: Found: \"avg\". Expected one of: mean, count, "
                "percent, "
                "significance, residual, correlation, median, total, none."},
        Refused{R"({"items":[{"type":"table","rows":[{"categories":["a"],"shown":1}]}]})",
                "1:35: items[0].rows[0]: There is no key 'shown' here. These are known: label, labelHidden, "
                "categories."},
        Refused{R"({"items":[{"type":"table","layers":[{"categories":["a"],"shown":2}]}]})",
                "1:65: items[0].layers[0].shown: Found: 2. Expected: a whole number from 1 to 1."},
        Refused{R"({"items":[{"type":"table","look":"other"}]})",
                "1:34: items[0].look: There is no look other."},
        Refused{R"({"items":[{"type":"table","footnotes":[1]}]})",
                "1:40: items[0].footnotes[0]: Found: 1. Expected: a text."}));

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

TEST(ResultsRefusals, BoundTheDepthOfEverything) {
    EXPECT_THAT(refusalOf(R"({"items":[)" + repeated(R"({"type":"header","items":[)", 1000)),
                testing::HasSubstr("Items nest more than 64 deep here."));
    EXPECT_THAT(refusalOf(R"({"items":[{"type":"table","rows":[{"categories":[)" +
                          repeated(R"({"group":"g","categories":[)", 100) + repeated("]}", 100) + "]}]}]}"),
                testing::HasSubstr("Groups nest more than 64 deep here."));
    EXPECT_THAT(refusalOf(R"({"items":[{"type":"map","a":)" + repeated("[", 100'000)),
                testing::HasSubstr("Values nest more than 512 deep here."));
}

TEST(ResultsRefusals, RefuseMorePlacesThanATableHas) {
    std::string categories = "\"a\"" + repeated(",\"a\"", 999);
    const std::string dimension = "{\"categories\":[" + categories + "]}";
    EXPECT_THAT(refusalOf(R"({"items":[{"type":"table","rows":[)" + dimension + repeated("," + dimension, 9) +
                          "]}]}"),
                testing::HasSubstr("more places than a table can have"));
}

}  // namespace
}  // namespace vexa::frontend
