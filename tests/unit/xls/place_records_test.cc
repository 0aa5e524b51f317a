#include "frontend/export/xls/place_records.h"

#include <gtest/gtest.h>

#include "frontend/export/xls/records.h"
#include "tests/unit/xls/xls_samples.h"

namespace vexa::frontend {
namespace {

using biff::Records;
using biff::RecordView;

void range(Records& records, std::uint32_t firstRow, std::uint32_t lastRow, std::uint32_t first,
           std::uint32_t last) {
    records.two(firstRow).two(lastRow).two(first).two(last);
}

std::string link(std::uint16_t id, const std::string& before, std::uint32_t firstRow, std::uint32_t lastRow) {
    std::string bytes;
    Records records(bytes);
    records.begin(id).bytes(before);
    range(records, firstRow, lastRow, 0, 0);
    records.bytes("address").end();
    return bytes;
}

/// Conditions of one rule for rows of column A, numbered.
std::string conditions(std::uint32_t ruleNumber, std::uint32_t firstRow, std::uint32_t lastRow) {
    std::string bytes;
    Records records(bytes);
    records.begin(biff::id::conditions).two(1).two(ruleNumber << 1U);
    range(records, firstRow, lastRow, 0, 0);
    records.two(1);
    range(records, firstRow, lastRow, 0, 0);
    records.end();
    return bytes;
}

std::string plain(std::uint16_t id, const std::string& content) {
    std::string bytes;
    Records(bytes).begin(id).bytes(content).end();
    return bytes;
}

std::string validation(std::uint32_t firstRow, std::uint32_t lastRow) {
    std::string bytes;
    Records records(bytes);
    records.begin(biff::id::validation).four(3);
    for (int i = 0; i < 4; ++i)
        records.two(1).one(i == 2 ? 1 : 0).bytes(i == 2 ? std::string("a\0", 2) : "a");
    records.two(3).two(0).bytes("xyz").two(0).two(0).two(1);
    range(records, firstRow, lastRow, 0, 0);
    records.end();
    return bytes;
}

std::string validations(std::uint32_t count) {
    std::string bytes;
    Records(bytes).begin(biff::id::validations).two(4).four(0).four(0).four(0xFFFFFFFF).four(count).end();
    return bytes;
}

/// What is left of the records when cells are put into these rows of column A.
std::string left(const std::vector<std::string>& all, const std::vector<std::string>& cells) {
    std::vector<RecordView> records;
    for (const std::string& each : all) records.push_back({biff::twoAt(each, 0), each});
    const SheetContent content = contentWith(cells);
    std::deque<std::string> pieces;
    biff::leaveOutPlaces(records, SheetFootprint(content, {0, 0}), pieces);
    std::string joined;
    for (const RecordView& record : records) joined += record.raw;
    return joined;
}

TEST(PlaceRecords, StayWhereNothingIsPut) {
    const std::vector<std::string> all{validations(1), validation(4, 5), link(biff::id::hyperlink, "", 7, 9),
                                       conditions(1, 10, 11), plain(biff::id::conditionRule, "rule")};
    EXPECT_EQ(left(all, {"A1=1", "A7=2"}), all[0] + all[1] + all[2] + all[3] + all[4]);
}

TEST(PlaceRecords, LinksLoseTheirPlaces) {
    const std::string tip = std::string("\x00\x08", 2);
    EXPECT_EQ(left({link(biff::id::hyperlink, "", 0, 2), link(biff::id::linkTip, tip, 0, 2)}, {"A2=1"}),
              link(biff::id::hyperlink, "", 0, 0) + link(biff::id::hyperlink, "", 2, 2) +
                  link(biff::id::linkTip, tip, 0, 0) + link(biff::id::linkTip, tip, 2, 2));
    EXPECT_EQ(left({link(biff::id::hyperlink, "", 1, 1)}, {"A2=1"}), "");
}

TEST(PlaceRecords, ConditionsGoWithTheirRules) {
    const std::string rule = plain(biff::id::conditionRule, "rule");
    EXPECT_EQ(left({conditions(1, 0, 4), rule}, {"A1=1"}), conditions(1, 1, 4) + rule);
    std::string later(12, '\0');
    later += std::string("\0\0\0\0\1\0", 6);
    EXPECT_EQ(left({conditions(1, 0, 0), rule, conditions(2, 3, 3), rule, plain(biff::id::laterRule, later)},
                   {"A1=1"}),
              conditions(2, 3, 3) + rule);
}

TEST(PlaceRecords, ValidationsAreCounted) {
    EXPECT_EQ(left({validations(2), validation(0, 0), validation(0, 3)}, {"A1=1"}),
              validations(1) + validation(1, 3));
}

TEST(PlaceRecords, WhatIsCutOffStays) {
    for (const std::string& whole :
         {link(biff::id::hyperlink, "", 0, 0), conditions(1, 0, 0), validation(0, 0)}) {
        for (std::size_t length = 0; length + biff::headerBytes < whole.size(); ++length) {
            const std::string cut = plain(biff::twoAt(whole, 0), whole.substr(biff::headerBytes, length));
            // Nothing but that it is read without harm, and that nothing is made up.
            EXPECT_LE(left({cut}, {"A1=1"}).size(), 2 * cut.size());
        }
    }
}

}  // namespace
}  // namespace vexa::frontend
