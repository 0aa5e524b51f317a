// Documents, modifications, and what is to come of them: tests/unit/modify/cases.
// With VEXA_BLESS_CASES set, the files get what happens now; then read the difference.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "tests/unit/import/import_samples.h"
#include "tests/unit/modify/case_file.h"
#include "tests/unit/modify/modify_samples.h"

namespace vexa::frontend {
namespace {

std::string withoutLineEnds(std::string text) {
    std::erase(text, '\n');
    return text;
}

class ModificationCases : public testing::TestWithParam<std::string> {};

TEST_P(ModificationCases, ChangeWhatTheySay) {
    const std::string path = std::string(VEXA_CASES) + '/' + GetParam() + ".case";
    CaseFile file = readCaseFile(path);
    const Outline outline = resultsOf(file.document);
    const bool blesses = std::getenv("VEXA_BLESS_CASES") != nullptr;
    for (ModificationCase& each : file.cases) {
        SCOPED_TRACE(each.name);
        const std::string found = described(outline, withoutLineEnds(each.request));
        if (blesses) {
            each.changes = found;
        } else {
            EXPECT_EQ(found, each.changes);
        }
    }
    if (blesses) writeCaseFile(path, file);
}

std::vector<std::string> caseFiles() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(VEXA_CASES)) {
        if (entry.path().extension() == ".case") names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Files, ModificationCases, testing::ValuesIn(caseFiles()),
                         [](const auto& file) { return file.param; });

}  // namespace
}  // namespace vexa::frontend
