// What holds of every modification of every document.

#include <gtest/gtest.h>

#include <set>

#include "frontend/document/walk.h"
#include "tests/unit/import/import_samples.h"
#include "tests/unit/import/random_documents.h"
#include "tests/unit/modify/modify_samples.h"
#include "tests/unit/modify/random_requests.h"

namespace vexa::frontend {
namespace {

constexpr std::uint32_t kDocuments = 60;
constexpr std::size_t kItems = 25;

std::vector<ItemId> idsOf(const Outline& outline) {
    class Listing : public OutlineVisitor {
      public:
        bool enter(const WalkPlace& place) override {
            ids.push_back(place.node.id);
            return true;
        }
        std::vector<ItemId> ids;
    } listing;
    walk(outline, listing);
    return listing.ids;
}

std::string whole(const std::string& change) {
    return "<modifyEvent tables=\"true\">" + change + "</modifyEvent>";
}

/// Calls `check(outline, requests)` for documents by chance.
template <typename Check>
void forDocuments(const Check& check) {
    for (std::uint32_t seed = 1; seed <= kDocuments; ++seed) {
        SCOPED_TRACE(seed);
        const Outline outline = RandomDocuments(seed).document(kItems, seed % 2 == 0);
        RandomRequests requests(seed, outline);
        check(outline, requests);
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(ModificationInvariants, NothingSelectedNothingChanged) {
    forDocuments([](const Outline& outline, RandomRequests& requests) {
        const std::string all = "<modifyEvent all=\"true\"><subtype subtype=\"nobody has it\"/>" +
                                requests.tableChange() + requests.cellsChange(true) + "</modifyEvent>";
        const Modification modification = modified(outline, all);
        EXPECT_EQ(modification.selected + modification.modified + modification.deleted, 0U);
        EXPECT_TRUE(modification.outline == outline);
        EXPECT_TRUE(modification.items.empty());
    });
}

TEST(ModificationInvariants, TransposedTwiceIsAsBefore) {
    forDocuments([](const Outline& outline, RandomRequests&) {
        const std::string transpose = whole("<modifyTable transpose=\"true\"/>");
        const Modification twice = modified(outline, transpose + transpose);
        EXPECT_EQ(twice.modified, 0U);
        EXPECT_TRUE(twice.outline == outline);
    });
}

TEST(ModificationInvariants, SortedOnceIsSorted) {
    forDocuments([](const Outline& outline, RandomRequests&) {
        const std::string sort = whole("<modifyTable sortPosition=\"1\" ascending=\"false\"/>");
        const Modification once = modified(outline, sort);
        EXPECT_EQ(modified(once.outline, sort).modified, 0U);
    });
}

TEST(ModificationInvariants, RevertingTakesEveryStyleAway) {
    forDocuments([](const Outline& outline, RandomRequests& requests) {
        const std::string revert = whole(
            "<tableCells body=\"true\" headers=\"true\" footnotes=\"true\" title=\"true\" caption=\"true\" "
            "selectColumns=\"both\" revertToDefault=\"true\"/>");
        std::string restyle;
        for (int i = 0; i < 3; ++i) {
            std::string cells = requests.cellsChange(false);
            if (cells.find("format=") == std::string::npos) restyle += cells;
        }
        const Modification plain = modified(outline, revert);
        const Modification restyled = modified(outline, whole(restyle) + revert);
        EXPECT_TRUE(plain.outline == restyled.outline) << restyle;
    });
}

TEST(ModificationInvariants, ThePlanSaysWhatHappensItemByItem) {
    std::size_t all = 0;
    forDocuments([&all](const Outline& outline, RandomRequests& requests) {
        const std::string group = requests.group(true, true);
        SCOPED_TRACE(group);
        const Modification modification = modified(outline, group);
        const std::vector<ItemId> ids = idsOf(outline);
        std::set<ItemId> planned;
        std::size_t changed = 0;
        for (const PlannedItem& each : modification.items) {
            const ItemId id = ids.at(each.number - 1);
            planned.insert(id);
            const OutlineNode& before = *outline.find(id);
            const OutlineNode* const after = modification.outline.find(id);
            EXPECT_EQ(each.label, shownLabel(before.item));
            const bool isDeleted =
                !each.plan.changes.empty() && each.plan.changes.front() == ChangeKind::deletion;
            EXPECT_EQ(after == nullptr, isDeleted);
            if (after == nullptr) continue;
            EXPECT_EQ(each.plan.changes.empty(), before.item == after->item) << each.number;
            changed += each.plan.changes.empty() ? 0U : 1U;
        }
        EXPECT_EQ(modification.selected, modification.items.size());
        EXPECT_EQ(modification.modified, changed);
        all += changed;
        for (const ItemId id : ids) {
            const OutlineNode* const after = modification.outline.find(id);
            const bool isModel = outline.find(id)->item.type() == ItemType::model;
            if (planned.contains(id) || after == nullptr || isModel) continue;
            EXPECT_TRUE(after->item == outline.find(id)->item);
        }
    });
    EXPECT_GT(all, kDocuments);  // the requests do change something
}

TEST(ModificationInvariants, PlanningChangesNothing) {
    forDocuments([](const Outline& outline, RandomRequests& requests) {
        const std::string before = printed(outline);
        static_cast<void>(modified(outline, requests.group(true, true) + requests.group(true, true)));
        EXPECT_EQ(printed(outline), before);
    });
}

bool hasTextsOfItsOwn(const tables::TableData& data) {
    bool has = false;
    data.forEachCell([&](tables::Place, const tables::TableCell& cell) {
        has = has || (cell.extras != 0 && data.extras(cell).shown.has_value());
    });
    return has;
}

TEST(ModificationInvariants, DataAreSharedUnlessTheirValuesChange) {
    std::size_t shared = 0;
    forDocuments([&](const Outline& outline, RandomRequests& requests) {
        const std::string groups = requests.group(false, false) + whole(requests.cellsChange(false));
        const Modification modification = modified(outline, groups);
        for (const ItemId id : idsOf(outline)) {
            const auto* const before = std::get_if<TableContent>(&outline.find(id)->item.content);
            if (before == nullptr || hasTextsOfItsOwn(*before->table.data)) continue;
            const auto& after = std::get<TableContent>(modification.outline.find(id)->item.content);
            EXPECT_EQ(after.table.data.get(), before->table.data.get()) << groups;
            ++shared;
        }
    });
    EXPECT_GT(shared, 0U);
}

TEST(ModificationInvariants, WhatIsNotDeletedKeepsItsPlace) {
    forDocuments([](const Outline& outline, RandomRequests& requests) {
        const Modification modification =
            modified(outline, requests.group(false, true) + requests.group(false, true));
        EXPECT_EQ(idsOf(modification.outline), idsOf(outline));
    });
}

TEST(ModificationInvariants, WhatIsSharedIsWhatIsTheSame) {
    forDocuments([](const Outline& outline, RandomRequests& requests) {
        const Modification modification = modified(outline, requests.group(false, true));
        for (const PlannedItem& each : modification.items) {
            if (!each.plan.changes.empty()) continue;
            const ItemId id = idsOf(outline).at(each.number - 1);
            EXPECT_EQ(modification.outline.find(id), outline.find(id));
        }
    });
}

}  // namespace
}  // namespace vexa::frontend
