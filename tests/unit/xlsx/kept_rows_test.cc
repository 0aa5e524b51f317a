// Rows of large sheets are copied as they are packed: the sheet must be the same as if they were not.
#include "frontend/export/xlsx/kept_rows.h"

#include <gtest/gtest.h>

#include <random>

#include "frontend/export/xlsx/sheet_change.h"
#include "frontend/package/zip_writer.h"
#include "tests/unit/xlsx/workbook_samples.h"

namespace vexa::frontend {
namespace {

constexpr std::uint32_t rowCount = 20'000;

/// Rows of numbers that cannot be guessed; every other row is left out where they are sparse.
const std::string& largeSheet(bool saysWhere) {
    static const auto make = [](bool withNumbers) {
        std::mt19937 random(3);
        std::string rows;
        for (std::uint32_t row = 1; row <= rowCount; ++row) {
            const std::string number = std::to_string(withNumbers ? 2 * row : row);
            rows += withNumbers ? "<row r=\"" + number + "\">" : "<row>";
            for (const char* const column : {"A", "B", "C", "D"}) {
                rows += withNumbers ? "<c r=\"" + (column + number) + "\"><v>" : "<c><v>";
                rows += std::to_string(random()) + "</v></c>";
            }
            rows += "</row>\n";
        }
        return "<dimension ref=\"A1:D5\"/><sheetData>" + rows + "</sheetData>";
    };
    static const std::string sparse = make(true);
    static const std::string dense = make(false);
    return saysWhere ? sparse : dense;
}

/// The sheet as it becomes when every row is looked at.
std::string changedSlowly(const std::string& sheet, const SheetContent& content, SheetSpot at) {
    SheetSurvey survey;
    EXPECT_TRUE(surveySheet(textSource(sheet), survey));
    EXPECT_TRUE(survey.marks.empty());
    const SheetFootprint footprint(content, at);
    CellNumbers numbers;
    numbers.styles.assign(content.styles.size(), 1);
    numbers.strings.assign(content.cells.size(), 0);
    DeflateStream out(1U << 30U, 1);
    SheetChanged changed;
    EXPECT_TRUE(changeSheet(textSource(sheet), {footprint, numbers, survey, {}, {}}, out, changed));
    ZipEntry entry;
    entry.name = "a";
    std::string packed;
    EXPECT_TRUE(out.finish(entry, packed));
    std::string archive;
    ZipWriter zip(gatherInto(archive), ZipLimits{}, 1);
    EXPECT_TRUE(zip.addPacked(entry, packed));
    EXPECT_TRUE(zip.finish());
    return partsOf(archive)["a"];
}

SheetContent numbers(std::uint32_t rows, std::uint16_t columns) {
    ContentMaker maker;
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint16_t column = 0; column < columns; ++column) maker.number(row, column, row + column);
    }
    return maker.content;
}

struct Placed {
    SheetLocation location;
    std::string place;
    SheetSpot at;
};

TEST(KeptRows, AreTheSameAsIfTheyHadBeenLookedAt) {
    const std::vector<Placed> cases{{SheetLocation::lastRow, "", {2 * rowCount + 1, 0}},
                                    {SheetLocation::lastColumn, "", {0, 5}},
                                    {SheetLocation::startCell, "A1", {0, 0}},
                                    {SheetLocation::startCell, "B20001", {20'000, 1}},
                                    {SheetLocation::startCell, "C39999", {39'998, 2}},
                                    {SheetLocation::startCell, "D4", {3, 3}}};
    const std::string& sheet = largeSheet(true);
    const std::string book = workbookWith(sheet);
    const Parts parts = partsOf(book);
    for (const Placed& each : cases) {
        for (const std::uint32_t rows : {1U, 2U, 9'000U}) {
            SCOPED_TRACE(each.place + " " + std::to_string(rows));
            const SheetContent content = numbers(rows, 2);
            const Inserted made = insertInto(book, content, modifying("Data", each.location, each.place));
            ASSERT_TRUE(made.done) << made.reason;
            const std::string slow = changedSlowly(parts.at("xl/worksheets/sheet1.xml"), content, each.at);
            EXPECT_TRUE(made.sheet() == slow);
        }
    }
}

/// The sheet with the number of each row that does not say it.
std::string numbered(const std::string& sheet) {
    std::string text;
    std::size_t row = 0;
    std::size_t done = 0;
    for (std::size_t at = sheet.find("<row"); at != std::string::npos; at = sheet.find("<row", at + 1)) {
        const bool saysWhere = sheet.compare(at, 8, "<row r=\"") == 0;
        row = saysWhere ? std::stoul(sheet.substr(at + 8, 7)) : row + 1;
        if (saysWhere) continue;
        text += sheet.substr(done, at + 4 - done) + " r=\"" + std::to_string(row) + "\"";
        done = at + 4;
    }
    return text + sheet.substr(done);
}

TEST(KeptRows, MayLeaveOutWhereTheyAre) {
    const std::string book = workbookWith(largeSheet(false));
    const Parts parts = partsOf(book);
    const SheetContent content = numbers(3, 1);
    for (const std::uint32_t row : {0U, 9'999U, rowCount - 1}) {
        const std::string place = "B" + std::to_string(row + 1);
        const Inserted made = insertInto(book, content, modifying("Data", SheetLocation::startCell, place));
        ASSERT_TRUE(made.done) << made.reason;
        const std::string slow = changedSlowly(parts.at("xl/worksheets/sheet1.xml"), content, {row, 1});
        EXPECT_TRUE(numbered(made.sheet()) == numbered(slow));
    }
}

TEST(KeptRows, AreMostOfALargeSheet) {
    const std::string book = workbookWith(largeSheet(true));
    ZipReader reader;
    ASSERT_TRUE(reader.open(book));
    const std::size_t place = *reader.find("xl/worksheets/sheet1.xml");
    PackedMarks marks;
    SheetSurvey survey;
    ASSERT_TRUE(surveySheet(markedSource(reader, place, marks), survey, marks, officeSheetLimits.rows));
    const std::vector<KeptRows> kept = keptRows(survey, reader.packed(place), 50'000, 50'001);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_GT(kept.front().blocks.bytes() * 10, reader.entry(place).bytes * 7);
    EXPECT_TRUE(keptRows(SheetSurvey(), {}, 0, 1).empty());
}

TEST(KeptRows, MarksThatNobodyTakesDoNotGather) {
    PackedMarks marks;
    for (std::uint64_t i = 0; i < 200; ++i) {
        std::vector<PackedMark> some(1);
        some.front().bytes = i;
        marks.add(some);
    }
    const std::vector<PackedMark> taken = marks.take();
    ASSERT_EQ(taken.size(), PackedMarks::mostWaiting);
    EXPECT_EQ(taken.back().bytes, PackedMarks::mostWaiting - 1);
    EXPECT_TRUE(marks.take().empty());
}

TEST(KeptRows, AreNoneWhereASharedFormulaLosesItsCell) {
    const std::string shared =
        "<sheetData><row r=\"1\"><c r=\"A1\"><f t=\"shared\" ref=\"A1:A2\" "
        "si=\"0\">B1+1</f><v>1</v></c></row>";
    std::string sheet = largeSheet(true);
    sheet.replace(sheet.find("<sheetData>"), 11, shared);
    const std::string last = std::to_string(2 * rowCount + 1);
    sheet.insert(sheet.find("</sheetData>"), "<row r=\"" + last + "\"><c r=\"A" + last +
                                                 "\"><f t=\"shared\" si=\"0\"/><v>1</v></c></row>");
    const Inserted made =
        insertInto(workbookWith(sheet), numbers(1, 1), modifying("Data", SheetLocation::startCell, "A1"));
    ASSERT_TRUE(made.done) << made.reason;
    EXPECT_NE(made.sheet().find("<f>B" + last + "+1</f>"), std::string::npos);
}

}  // namespace
}  // namespace vexa::frontend
