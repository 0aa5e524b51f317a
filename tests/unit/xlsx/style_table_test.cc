#include "frontend/export/xlsx/style_table.h"

#include <gtest/gtest.h>

#include "frontend/export/xlsx/shared_strings.h"
#include "frontend/export/xlsx/sheet_rows.h"
#include "frontend/package/zip_reader.h"
#include "frontend/package/zip_writer.h"
#include "tests/unit/xlsx/workbook_samples.h"

namespace vexa::frontend {
namespace {

const std::string foreign =
    "<x:styleSheet xmlns:x=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><x:numFmts "
    "count=\"1\"><x:numFmt numFmtId=\"180\" formatCode=\"0.0&quot;x&quot;\"/></x:numFmts><x:fonts "
    "count=\"1\"><x:font/></x:fonts><x:fills count=\"1\"><x:fill/></x:fills><x:borders "
    "count=\"1\"><x:border/>"
    "</x:borders><x:cellXfs count=\"2\"><x:xf/><x:xf/></x:cellXfs><x:dxfs count=\"0\"/></x:styleSheet>";

TEST(StyleTable, AddsBehindWhatIsThere) {
    SheetStyle style;
    style.bold = true;
    style.numberFormat = "0.0\"x\"";
    style.background = tables::Color{0x00FF00};
    style.borders[2] = {tables::LineStyle::medium, tables::Color{0x123456}};
    SheetStyle other;
    other.numberFormat = "0.000";
    StyleTable table;
    ASSERT_TRUE(table.parse(foreign));
    std::vector<std::size_t> numbers;
    ASSERT_TRUE(table.add({style, other}, numbers));
    EXPECT_EQ(numbers, (std::vector<std::size_t>{2, 3}));
    const std::string text = table.text();
    EXPECT_NE(text.find("<x:cellXfs count=\"4\"><x:xf/><x:xf/><x:xf numFmtId=\"180\" fontId=\"1\""),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("<x:numFmt numFmtId=\"181\" formatCode=\"0.000\"/>"), std::string::npos);
    EXPECT_NE(text.find("<x:bottom style=\"medium\"><x:color rgb=\"FF123456\"/></x:bottom>"),
              std::string::npos);
    EXPECT_NE(text.find("<x:name val=\"Arial\"/>"), std::string::npos);
}

TEST(StyleTable, AddsNothingTwice) {
    SheetStyle style;
    style.italic = true;
    StyleTable first;
    ASSERT_TRUE(first.parse(std::string(plainStyles())));
    std::vector<std::size_t> numbers;
    ASSERT_TRUE(first.add({style}, numbers));
    StyleTable again;
    ASSERT_TRUE(again.parse(first.text()));
    std::vector<std::size_t> same;
    ASSERT_TRUE(again.add({style}, same));
    EXPECT_EQ(same, numbers);
    EXPECT_EQ(again.text(), first.text());
}

TEST(StyleTable, RefusesMoreStylesThanAWorkbookHas) {
    std::string xml = foreign;
    std::string many;
    for (int i = 0; i < 64'000; ++i) many += "<x:xf/>";
    xml.insert(xml.find("</x:cellXfs>"), many);
    StyleTable table;
    ASSERT_TRUE(table.parse(xml));
    std::vector<std::size_t> numbers;
    EXPECT_FALSE(table.add({SheetStyle{}}, numbers));
}

TEST(CellText, KeepsWhatXmlCannotHold) {
    std::string out;
    appendEscapedText(out, "a<b&c\n\x01_x0041_ _x00_ _X0041_\xFF");
    EXPECT_EQ(out, "a&lt;b&amp;c\n_x0001__x005F_x0041_ _x00_ _X0041_\xEF\xBF\xBD");
}

TEST(CellNumber, IsShortAndExact) {
    const auto text = [](double number) {
        std::string out;
        appendCellNumber(out, number);
        return out;
    };
    EXPECT_EQ(text(100'000), "100000");
    EXPECT_EQ(text(-0.0), "0");
    EXPECT_EQ(text(0.1), "0.1");
    EXPECT_EQ(text(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(text(1e300), "1e+300");
}

/// The part that comes out of texts added to `before`.
std::string stringsBehind(const std::string& before, const SheetContent& content, std::size_t& offset) {
    SharedStrings strings;
    for (const SheetCell& cell : content.cells) static_cast<void>(strings.add(content, cell));
    DeflateStream out(1U << 20U, 1);
    EXPECT_TRUE(strings.write(textSource(before), out, offset));
    ZipEntry entry;
    entry.name = "a";
    std::string packed;
    std::string archive;
    EXPECT_TRUE(out.finish(entry, packed));
    ZipWriter zip(gatherInto(archive), ZipLimits{}, 1);
    EXPECT_TRUE(zip.addPacked(entry, packed));
    EXPECT_TRUE(zip.finish());
    ZipReader reader;
    std::string text;
    EXPECT_TRUE(reader.open(archive));
    EXPECT_TRUE(reader.read(0, text));
    return text;
}

TEST(SharedStrings, AreAppended) {
    ContentMaker maker;
    maker.text(0, 0, "new").text(1, 0, "new").text(2, 0, " mark[a]", 3);
    std::size_t before = 0;
    const std::string text = stringsBehind(
        "<x:sst xmlns:x=\"u\" count=\"9\" "
        "uniqueCount=\"2\"><x:si><x:t>a</x:t></x:si><x:si/><x:extLst/></x:sst>",
        maker.content, before);
    EXPECT_EQ(before, 2U);
    EXPECT_TRUE(
        text.starts_with("<x:sst xmlns:x=\"u\" count=\"12\" uniqueCount=\"4\"><x:si><x:t>a</x:t></x:si>"
                         "<x:si/><x:si><x:t>new</x:t></x:si><x:si><x:r>"))
        << text;
    EXPECT_NE(text.find("<x:vertAlign val=\"superscript\"/>"), std::string::npos);
    EXPECT_TRUE(text.ends_with("<x:t>[a]</x:t></x:r></x:si><x:extLst/></x:sst>")) << text;
}

}  // namespace
}  // namespace vexa::frontend
