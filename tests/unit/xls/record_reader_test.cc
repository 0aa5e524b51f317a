#include "frontend/export/xls/record_reader.h"

#include <gtest/gtest.h>

namespace vexa::frontend {
namespace {

using biff::appendContinued;
using biff::joinedContent;
using biff::Records;
using biff::RecordView;
using biff::splitRecords;

std::string record(std::uint16_t id, std::string_view content = {}) {
    std::string bytes;
    Records(bytes).begin(id).bytes(content).end();
    return bytes;
}

const std::string begin = record(biff::id::bof, std::string(16, 'b'));
const std::string end = record(biff::id::eof);

/// Numbers and lengths of what a stream is cut into.
std::string cut(const std::string& stream) {
    std::vector<RecordView> records;
    if (!splitRecords(stream, records)) return "broken";
    std::string shown;
    for (const RecordView& each : records) {
        shown += std::to_string(each.id) + "/" + std::to_string(each.raw.size()) + " ";
    }
    EXPECT_LE(biff::substreamBytes(stream), stream.size());
    return shown;
}

TEST(RecordReader, CutsUpToTheEnd) {
    EXPECT_EQ(cut(begin + record(1, "ab") + end + "behind"), "2057/20 1/6 10/4 ");
    EXPECT_EQ(biff::substreamBytes(begin + end + "behind"), begin.size() + end.size());
}

TEST(RecordReader, PutsWhatContinuesARecordWithIt) {
    const std::string stream = begin + record(1, "ab") + record(biff::id::continued, "cde") + end;
    EXPECT_EQ(cut(stream), "2057/20 1/13 10/4 ");
    std::vector<RecordView> records;
    ASSERT_TRUE(splitRecords(stream, records));
    EXPECT_EQ(records[1].content(), "ab");
    EXPECT_EQ(joinedContent(records[1].raw), "abcde");
}

TEST(RecordReader, TakesAChartWithinASheetForOneRecord) {
    const std::string chart = begin + record(2, "x") + begin + end + record(biff::id::continued, "y") + end;
    EXPECT_EQ(cut(begin + record(1) + chart + record(3) + end),
              "2057/20 1/4 2057/" + std::to_string(chart.size()) + " 3/4 10/4 ");
}

TEST(RecordReader, RefusesWhatHasNoEnd) {
    for (const std::string& stream : {std::string(), begin, record(1) + end, begin + record(1, "abc"),
                                      begin + begin + end, begin + end.substr(0, 3)}) {
        EXPECT_EQ(cut(stream), "broken");
        EXPECT_EQ(biff::substreamBytes(stream), 0U);
    }
    EXPECT_EQ(cut(begin + record(1, "abc").substr(0, 6)), "broken");
}

TEST(RecordReader, ContinuesWhatIsTooLong) {
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{1}, biff::mostBytes, biff::mostBytes + 1, 3 * biff::mostBytes}) {
        std::string bytes;
        appendContinued(bytes, 7, std::string(length, 'a'));
        EXPECT_EQ(joinedContent(bytes), std::string(length, 'a'));
        const std::size_t records = length == 0 ? 1 : (length + biff::mostBytes - 1) / biff::mostBytes;
        EXPECT_EQ(bytes.size(), length + 4 * records);
        EXPECT_EQ(cut(begin + bytes + end), "2057/20 7/" + std::to_string(bytes.size()) + " 10/4 ");
    }
}

}  // namespace
}  // namespace vexa::frontend
