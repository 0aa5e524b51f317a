#include "frontend/export/xls/book_styles.h"

#include <gtest/gtest.h>

#include "frontend/export/workbook/day_numbers.h"
#include "frontend/export/xls/new_book.h"
#include "tests/unit/xls/xls_samples.h"

namespace vexa::frontend {
namespace {

using biff::BookPalette;
using biff::BookStyles;
using biff::CellFormat;

std::vector<biff::RecordView> plainGlobals() {
    static const std::string stream = biff::newGlobals("Sheet");
    std::vector<biff::RecordView> records;
    EXPECT_TRUE(biff::splitRecords(stream, records));
    return records;
}

/// A cell of each style.
SheetContent contentOf(std::vector<SheetStyle> styles) {
    SheetContent content;
    content.styles = std::move(styles);
    for (std::uint32_t id = 0; id < content.styles.size(); ++id) {
        SheetCell cell;
        cell.row = id;
        cell.style = id;
        content.cells.push_back(cell);
    }
    return content;
}

std::size_t countOf(const std::string& records) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < records.size(); at += 4U + biff::twoAt(records, at + 2)) ++count;
    return count;
}

TEST(BookPalette, PutsColorsInThePlaceOfThoseThatNobodyUses) {
    BookPalette palette;
    EXPECT_FALSE(palette.changed());
    EXPECT_TRUE(palette.holds({0x993366}));
    EXPECT_FALSE(palette.holds({0x123456}));
    palette.take({{0x123456, 3}, {0xFF0000, 1}, {0x333333, 1}});
    EXPECT_TRUE(palette.changed());
    for (const std::uint32_t rgb : {0x123456U, 0xFF0000U, 0x333333U})
        EXPECT_TRUE(palette.holds({rgb})) << rgb;
    BookPalette again;
    std::string record;
    palette.append(record);
    again.read(std::string_view(record).substr(4));
    EXPECT_EQ(again.nearest({0x123456}), palette.nearest({0x123456}));
    EXPECT_TRUE(again.holds({0x123456}));
}

TEST(BookPalette, KeepsTheColorsUsedMost) {
    std::map<std::uint32_t, std::size_t> uses;
    for (std::uint32_t i = 0; i < 100; ++i) uses[0x010101 * i + 0x100] = 1000 - i;
    BookPalette palette;
    palette.take(uses);
    std::size_t held = 0;
    for (std::uint32_t i = 0; i < 100; ++i) held += palette.holds({0x010101 * i + 0x100}) ? 1U : 0U;
    EXPECT_EQ(held, BookPalette::size);
    EXPECT_TRUE(palette.holds({0x100}));
    EXPECT_FALSE(palette.holds({0x010101 * 99 + 0x100}));
    // What is left out is not far off.
    const std::uint32_t near = palette.color(palette.nearest({0x010101 * 60 + 0x100})).rgb;
    EXPECT_LT((near >> 16U), 62U);
    EXPECT_GT((near >> 16U), 40U);
}

TEST(BookStyles, AddsEachStyleOnce) {
    SheetStyle bold;
    bold.bold = true;
    SheetStyle number;
    number.numberFormat = "0.0\"x\"";
    SheetStyle fixed;
    fixed.numberFormat = "0.00";
    const SheetContent content = contentOf({SheetStyle{}, bold, number, fixed});
    BookStyles styles(plainGlobals(), true);
    ExportReport report;
    const std::vector<CellFormat> formats = styles.add(content, report);
    EXPECT_EQ(countOf(styles.formats()), 4U);
    EXPECT_EQ(countOf(styles.fonts()), 2U);
    EXPECT_EQ(countOf(styles.numberFormats()), 1U);
    EXPECT_NE(formats[0].format, formats[1].format);
    EXPECT_TRUE(report.logTexts().empty());
    // The same styles in a workbook that has them need no more records.
    std::vector<biff::RecordView> globals = plainGlobals();
    const std::string records = styles.fonts() + styles.numberFormats() + styles.formats();
    for (std::size_t at = 0; at < records.size(); at += 4U + biff::twoAt(records, at + 2)) {
        globals.push_back({biff::twoAt(records, at),
                           std::string_view(records).substr(at, 4U + biff::twoAt(records, at + 2))});
    }
    BookStyles again(globals, false);
    const std::vector<CellFormat> known = again.add(content, report);
    EXPECT_TRUE(again.formats().empty() && again.fonts().empty() && again.numberFormats().empty());
    for (std::size_t i = 0; i < known.size(); ++i) EXPECT_EQ(known[i].format, formats[i].format);
}

TEST(BookStyles, FontNumbersLeaveFourOut) {
    SheetStyle serif;
    serif.font = "serif";
    BookStyles styles(plainGlobals(), true);
    ExportReport report;
    EXPECT_FALSE(styles.add(contentOf({serif}), report).empty());
    EXPECT_EQ(biff::twoAt(styles.formats(), 4), 5);
}

TEST(BookStyles, KeepsNumbersFormattedWhenThereIsNoRoom) {
    std::vector<SheetStyle> all;
    for (int i = 0; i < 5000; ++i) {
        SheetStyle style;
        style.size = 5 + i % 100;
        style.bold = i % 2 == 0;
        style.background = tables::Color{static_cast<std::uint32_t>(i / 100) * 0x050505};
        style.borders[0].style = i % 3 == 0 ? tables::LineStyle::thin : tables::LineStyle::none;
        style.numberFormat = i >= 4990 ? "0.000" : i % 7 == 0 ? "0.0" : "";
        all.push_back(style);
    }
    const SheetContent content = contentOf(all);
    BookStyles styles(plainGlobals(), true);
    ExportReport report;
    const std::vector<CellFormat> formats = styles.add(content, report);
    EXPECT_EQ(countOf(styles.formats()) + 16, biff::mostFormats);
    ASSERT_FALSE(report.logTexts().empty());
    EXPECT_EQ(report.logTexts().front(),
              "A workbook of the format XLS has at most 4000 styles and 500 fonts. Some cells have a style "
              "that is only like their own.");
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::size_t at = (formats[i].format - 16U) * 24U;
        const std::uint16_t code = biff::twoAt(styles.formats(), at + 6);
        EXPECT_EQ(code != 0, !all[i].numberFormat.empty()) << i;
    }
}

TEST(BookStyles, ColorsOfAWorkbookThatIsThereStay) {
    SheetStyle odd;
    odd.color = {0x123456};
    BookStyles styles(plainGlobals(), false);
    ExportReport report;
    EXPECT_FALSE(styles.add(contentOf({odd}), report).empty());
    EXPECT_FALSE(styles.palette().changed());
    ASSERT_EQ(report.logTexts().size(), 1U);
    EXPECT_EQ(report.logTexts().front(),
              "The palette of the workbook has no room for 1 of the colors of the export. Others that are "
              "most like them take their places.");
}

TEST(BookStyles, KnowsDates) {
    for (const char* const code : {"dd\\-mmm\\-yyyy", "[$-409]yyyy", "D", "0;yy"}) {
        EXPECT_TRUE(showsDate(code)) << code;
    }
    for (const char* const code :
         {"", "0.00", "[hh]:mm:ss", "0\"day\"", "0\\d", "[Red]0", "_d0", "\"d", "0*y"}) {
        EXPECT_FALSE(showsDate(code)) << code;
    }
}

}  // namespace
}  // namespace vexa::frontend
