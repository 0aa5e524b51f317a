#include "frontend/export/xls/binary_book.h"

#include <gtest/gtest.h>

#include "tests/unit/xls/xls_samples.h"

namespace vexa::frontend {
namespace {

using biff::BinaryBook;

/// Why a workbook is refused; empty where it is not.
std::string refusal(const std::string& file) {
    BinaryBook book;
    return book.read(file).shownDetail();
}

std::string number(std::uint32_t value, std::size_t bytes) {
    std::string text(bytes, '\0');
    biff::setNumber(text, 0, value, bytes);
    return text;
}

std::string sample() { return bookWith("Data", {"A1=text", "B2=2.5", "C3:D4", "C3=x", "D3=", "C4=", "D4="}); }

/// The sample with one more record among those of the workbook.
std::string withGlobal(std::uint16_t id, const std::string& content) {
    return withStream(sample(), withRecord(streamOf(sample()), biff::id::codePage, id, content));
}

/// The sample with one more record among those of the sheet.
std::string withOfSheet(std::uint16_t id, const std::string& content) {
    return withStream(sample(), withRecord(streamOf(sample()), biff::id::wsBool, id, content));
}

/// The sheet with this content placed there, or why it is not.
std::string placed(const std::string& file, const std::string& sheet, const std::vector<std::string>& cells,
                   std::uint32_t row = 0, std::uint32_t column = 0) {
    BinaryBook book;
    PackageResult result = book.read(file);
    if (!result) return result.shownDetail();
    const SheetContent content = contentWith(cells);
    ExportReport report;
    const std::vector<biff::CellFormat> formats = book.styles().add(content, report);
    const std::size_t place = book.findSheet(sheet) ? *book.findSheet(sheet) : book.addSheet(sheet);
    biff::SheetStream stream(book.styles().digitWidth());
    result = book.openSheet(place, stream);
    if (result) {
        result = stream.place({content, row, column, formats, book.strings()}, book.drawings());
    }
    if (!result) return result.shownDetail();
    book.closeSheet(place, stream);
    EXPECT_TRUE(book.finish());
    std::string bytes;
    EXPECT_TRUE(book.write(gatherInto(bytes)));
    return bytes;
}

TEST(BinaryBook, HoldsWhatWasPlaced) {
    EXPECT_EQ(cellsIn(sample(), "Data"), "A1=text B2=2.5 C3=x D3= C4= D4= C3:D4 ");
    EXPECT_EQ(cellsIn(placed(sample(), "data", {"A1=new", "C1=7"}, 1, 1), "Data"),
              "A1=text B2=new D2=7 C3=x D3= C4= D4= C3:D4 ");
}

TEST(BinaryBook, SplitsRecordsOfSeveralCells) {
    const std::string wide = bookWith("Data", {"A1=", "B1=", "C1=", "D1=", "E1="});
    EXPECT_EQ(cellsIn(placed(wide, "Data", {"A1=1", "C1=2"}, 0, 1), "Data"), "A1= B1=1 C1= D1=2 E1= ");
}

TEST(BinaryBook, TakesMergedCellsApartWhereACellIsPut) {
    EXPECT_EQ(cellsIn(placed(sample(), "Data", {"A1=y", "B1=", "A1:B1"}, 3, 3), "Data"),
              "A1=text B2=2.5 C3=x D3= C4= D4=y E4= D4:E4 ");
}

TEST(BinaryBook, AddsSheetsBehindTheOthers) {
    const std::string file = placed(sample(), "Second", {"B1=there"});
    EXPECT_EQ(cellsIn(file, "Data"), cellsIn(sample(), "Data"));
    EXPECT_EQ(cellsIn(file, "Second"), "B1=there ");
    BinaryBook book;
    ASSERT_TRUE(book.read(file));
    EXPECT_EQ(book.findSheet("SECOND"), 1U);
    EXPECT_FALSE(book.findSheet("Third"));
}

TEST(BinaryBook, KeepsItsOtherStreams) {
    CompoundFile compound;
    ASSERT_TRUE(compound.read(sample()));
    const std::size_t macros = compound.addStorage(0, "_VBA_PROJECT_CUR");
    compound.addStream(compound.addStorage(macros, "VBA"), "Module1", "Sub A()");
    compound.entry(macros).classId[2] = 9;
    std::string file;
    ASSERT_TRUE(compound.write(gatherInto(file)));
    const std::string changed = placed(file, "Data", {"A1=1"});
    EXPECT_EQ(streamOf(changed, "_VBA_PROJECT_CUR/VBA/Module1"), "Sub A()");
    EXPECT_EQ(streamOf(changed, "\x05SummaryInformation"), streamOf(file, "\x05SummaryInformation"));
    ASSERT_TRUE(compound.read(changed));
    EXPECT_EQ(compound.entry(*compound.find("_VBA_PROJECT_CUR")).classId[2], 9);
}

TEST(BinaryBook, MendsWhatCountsSheets) {
    const std::string self = number(1, 2) + number(0x0401, 2);
    const std::string recalculated = number(0x01C1, 4) + number(123'456, 4);
    std::string stream = withRecord(streamOf(sample()), biff::id::sst, biff::id::supBook, self);
    stream = withRecord(stream, biff::id::sst, biff::id::recalcId, recalculated);
    const std::string file = withStream(sample(), stream);
    const auto recordOf = [](const std::string& bytes, std::uint16_t id) {
        const std::string of = streamOf(bytes);
        std::vector<biff::RecordView> records;
        EXPECT_TRUE(biff::splitRecords(of, records));
        for (const biff::RecordView& record : records) {
            if (record.id == id) return std::string(record.content());
        }
        return std::string("(none)");
    };
    const std::string grown = placed(file, "Second", {"A1=1"});
    EXPECT_EQ(recordOf(grown, biff::id::supBook), number(2, 2) + number(0x0401, 2));
    EXPECT_EQ(recordOf(grown, biff::id::tabId), number(1, 2) + number(2, 2));
    EXPECT_EQ(recordOf(grown, biff::id::recalcId), recalculated);
    // Formulas elsewhere may have taken what is overwritten.
    const std::string overwritten = placed(file, "Data", {"A1=1"});
    EXPECT_EQ(recordOf(overwritten, biff::id::recalcId), number(0x01C1, 4) + number(0, 4));
    EXPECT_EQ(recordOf(overwritten, biff::id::tabId), number(1, 2));
}

TEST(BinaryBook, RefusesWhatItCannotKeep) {
    EXPECT_EQ(refusal(sample()), "");
    EXPECT_EQ(refusal("PK"), "it is no workbook");
    EXPECT_EQ(refusal("PK\x03\x04"), "it is a workbook of the newer kind, XLSX, or none at all");
    EXPECT_EQ(refusal(withGlobal(biff::id::filePass, number(1, 6))), "it is protected by a password");
    // What programs keep people from changing stays so, and grows.
    EXPECT_EQ(refusal(withGlobal(biff::id::protect, number(1, 2))), "");
    EXPECT_EQ(refusal(withGlobal(biff::id::fileSharing, number(1, 2) + number(7, 2))), "");
    std::string older = streamOf(sample());
    biff::setNumber(older, 4, 0x0500, 2);
    EXPECT_EQ(refusal(withStream(sample(), older)),
              "it is of an earlier format than BIFF8; save it in the present format XLS");
}

TEST(BinaryBook, RefusesFilesOfOtherStreams) {
    const auto with = [](const std::string& name) {
        CompoundFile compound;
        EXPECT_TRUE(compound.read(sample()));
        compound.addStream(0, name, "x");
        std::string bytes;
        EXPECT_TRUE(compound.write(gatherInto(bytes)));
        return refusal(bytes);
    };
    EXPECT_EQ(with("Book"),
              "it holds the workbook twice, once for earlier programs; save it in the present format XLS");
    EXPECT_EQ(with("Revision Log"), "it is shared, and its changes are recorded; take the sharing away");
    EXPECT_EQ(with("EncryptedPackage"), "it is protected by a password");
    EXPECT_EQ(with("Other"), "");
    CompoundFile compound;
    compound.addStream(0, "Book", "x");
    std::string bytes;
    ASSERT_TRUE(compound.write(gatherInto(bytes)));
    EXPECT_EQ(refusal(bytes), "it is of an earlier format than BIFF8; save it in the present format XLS");
}

TEST(BinaryBook, RefusesSheetsThatItCannotKeep) {
    EXPECT_EQ(cellsIn(placed(withOfSheet(biff::id::protect, number(1, 2)), "Data", {"A1=1"}, 9, 9), "Data"),
              "A1=text B2=2.5 C3=x D3= C4= D4= J10=1 C3:D4 ");
    std::string chart = streamOf(sample());
    const std::size_t entry = chart.find(number(biff::id::boundSheet, 2));
    chart[entry + 9] = 2;
    EXPECT_EQ(placed(withStream(sample(), chart), "Data", {"A1=1"}), "the sheet is none of rows and columns");
    const std::string pivot = number(1, 2) + number(5, 2) + number(2, 2) + number(4, 2) + number(0, 36);
    const std::string withPivot = withOfSheet(biff::id::pivotView, pivot);
    EXPECT_EQ(placed(withPivot, "Data", {"A1=1"}, 3, 3),
              "the export would stand on a part of a pivot table; choose another place");
    EXPECT_EQ(cellsIn(placed(withPivot, "Data", {"A1=1"}, 9, 9), "Data"),
              "A1=text B2=2.5 C3=x D3= C4= D4= J10=1 C3:D4 ");
}

TEST(BinaryBook, RefusesWhatIsBroken) {
    const std::string stream = streamOf(sample());
    for (std::size_t length = 0; length < stream.size(); length += 13) {
        EXPECT_NE(refusal(withStream(sample(), stream.substr(0, length))), "") << length;
    }
    for (std::size_t at = 0; at < stream.size(); at += 3) {
        std::string changed = stream;
        changed[at] = static_cast<char>(changed[at] ^ 0x41);
        // Read or refused, and what is read can be written and read again.
        const std::string result = placed(withStream(sample(), changed), "Data", {"A1=1"}, 5, 0);
        EXPECT_TRUE(!CompoundFile::isOne(result) || refusal(result).empty()) << at;
    }
}

TEST(BinaryBook, CountsDaysAsTheWorkbookDoes) {
    const std::string days = withGlobal(biff::id::dateMode, number(1, 2));
    // The sample has a record that says otherwise, which counts if it is the last.
    BinaryBook book;
    ASSERT_TRUE(book.read(days));
    EXPECT_FALSE(book.countsFrom1904());
    std::string stream = streamOf(sample());
    biff::setNumber(stream, stream.find(number(biff::id::dateMode, 2) + number(2, 2)) + 4, 1, 2);
    BinaryBook other;
    ASSERT_TRUE(other.read(withStream(sample(), stream)));
    EXPECT_TRUE(other.countsFrom1904());
}

}  // namespace
}  // namespace vexa::frontend
