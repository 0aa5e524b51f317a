#include "backend/pivot/bp_procedure.h"

#include <gtest/gtest.h>

#include "backend/strings/dictionary.h"
#include "tests/unit/pivot/collected_log.h"

namespace vexa {
namespace {

TEST(BpProcedure, OpensAndClosesItsBlock) {
    const CollectedLog log;
    {
        BpProcedure procedure("Output Export", 2);
        procedure.AddNotes(2, BpString("Viewer", 1), BpString("a", 0));
        procedure.AddNotes(2, BpString("Image File Count", 1), BpNumber(3, BpProcedure::Count));
    }
    ASSERT_EQ(log.events.size(), 4U);
    const auto& began = std::get<ProcedureBegan>(log.events[0]);
    EXPECT_EQ(began.title, "Output Export");
    EXPECT_EQ(began.value, 2);
    const auto& notes = std::get<NotesAdded>(log.events[2]);
    EXPECT_EQ(notes.level, 2);
    EXPECT_EQ(notes.label, "Image File Count");
    EXPECT_EQ(notes.value, "3");
    EXPECT_EQ(std::get<ProcedureEnded>(log.events[3]).title, "Output Export");
}

TEST(BpProcedure, SelectsTheTextsOfItsTitleWhileItLives) {
    StringDictionary::current().setProcedure("Outer");
    {
        const BpProcedure procedure("Output New", 2);
        EXPECT_EQ(StringDictionary::current().procedure(), "Output New");
    }
    EXPECT_EQ(StringDictionary::current().procedure(), "Outer");
    StringDictionary::current().setProcedure("");
}

}  // namespace
}  // namespace vexa
