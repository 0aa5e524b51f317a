#include "tests/unit/modify/case_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace vexa::frontend {

namespace {

constexpr char kDocument[] = "-- document --";
constexpr char kCase[] = "-- case: ";
constexpr char kChanges[] = "-- changes ";
constexpr char kEnd[] = " --";

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace

CaseFile readCaseFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    CaseFile file;
    std::string* target = &file.comment;
    for (std::string line; std::getline(stream, line);) {
        if (line == kDocument) {
            target = &file.document;
        } else if (line.starts_with(kCase)) {
            const std::size_t begin = sizeof kCase - 1;
            file.cases.push_back({line.substr(begin, line.size() - begin - (sizeof kEnd - 1)), {}, {}});
            target = &file.cases.back().request;
        } else if (line.starts_with(kChanges) && !file.cases.empty()) {
            target = &file.cases.back().changes;
            *target += line + '\n';
        } else {
            *target += line + '\n';
        }
    }
    EXPECT_FALSE(file.cases.empty()) << path;
    return file;
}

void writeCaseFile(const std::string& path, const CaseFile& file) {
    std::ofstream stream(path, std::ios::binary);
    stream << file.comment << kDocument << '\n' << file.document;
    for (const ModificationCase& each : file.cases) {
        stream << kCase << each.name << kEnd << '\n' << each.request << each.changes;
    }
    EXPECT_TRUE(stream.flush()) << path;
}

std::string lineChanges(const std::string& before, const std::string& after) {
    const std::vector<std::string> left = linesOf(before);
    const std::vector<std::string> right = linesOf(after);
    // common[i][j]: how many lines the rests from i and j have in common.
    std::vector<std::vector<std::size_t>> common(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = left.size(); i-- > 0;) {
        for (std::size_t j = right.size(); j-- > 0;) {
            common[i][j] =
                left[i] == right[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::string changes;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < left.size() || j < right.size()) {
        if (i < left.size() && j < right.size() && left[i] == right[j]) {
            ++i;
            ++j;
        } else if (i < left.size() && (j == right.size() || common[i + 1][j] >= common[i][j + 1])) {
            changes += "- " + left[i++] + '\n';
        } else {
            changes += "+ " + right[j++] + '\n';
        }
    }
    return changes;
}

}  // namespace vexa::frontend
