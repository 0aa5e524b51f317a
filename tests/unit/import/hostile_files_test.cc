// Files that are made to take much time or memory: each of less than a megabyte, each within limits.

#include <gtest/gtest.h>

#include <ctime>
#include <fstream>
#include <functional>
#include <ostream>
#include <string>

#include "frontend/import/import_file.h"
#include "tests/unit/import/import_samples.h"

#if defined(__SANITIZE_ADDRESS__)
#define VEXA_MEMORY_IS_OURS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VEXA_MEMORY_IS_OURS 0
#endif
#endif
#if !defined(VEXA_MEMORY_IS_OURS) && defined(__linux__)
#define VEXA_MEMORY_IS_OURS 1
#endif

namespace vexa::frontend {
namespace {

constexpr std::size_t kBytes = 1'000'000;
constexpr std::size_t kMostMegabytes = 300;
constexpr double kMostSeconds = 10;  // of the processor; the slowest takes half a second

/// `before`, then `piece` with `between` as often as it fits, then `behind`.
std::string filled(const std::string& before, const std::string& piece, const std::string& behind,
                   const std::string& between = "") {
    std::string text = before;
    while (text.size() + piece.size() + between.size() + behind.size() < kBytes) text += piece + between;
    text.resize(text.size() - between.size());
    return text + behind;
}

std::string listed(const std::string& before, const std::string& piece, const std::string& behind) {
    return filled(before, piece, behind, ",");
}

/// Starts the measure of the most memory that this process has had; false where it cannot be measured.
bool forgetPeak() {
    std::ofstream file("/proc/self/clear_refs");
    file << "5" << std::flush;
    return static_cast<bool>(file);
}

std::size_t megabytes(const std::string& key) {
    std::ifstream file("/proc/self/status");
    for (std::string word; file >> word;) {
        std::size_t kilobytes = 0;
        if (word == key && file >> kilobytes) return kilobytes / 1024;
    }
    return 0;
}

struct Hostile {
    const char* name;
    ImportForm form;
    std::function<std::string()> make;
};

void PrintTo(const Hostile& hostile, std::ostream* out) { *out << hostile.name; }

class HostileFile : public testing::TestWithParam<Hostile> {};

TEST_P(HostileFile, TakesLittleTimeAndMemory) {
    ImportSurroundings surroundings;
    std::string bytes = GetParam().make();
    ASSERT_LE(bytes.size(), kBytes);
    [[maybe_unused]] const bool isMeasured = forgetPeak();
    [[maybe_unused]] const std::size_t before = megabytes("VmRSS:");
    const std::clock_t start = std::clock();
    {
        ImportOptions options;
        options.form = GetParam().form;
        Imported imported;
        ImportProblem problem;
        if (!importFile("a", options, surroundings.context, imported, problem, &bytes)) {
            EXPECT_NE(problem.message, "");
        }
    }
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, kMostSeconds);
#if VEXA_MEMORY_IS_OURS
    if (isMeasured) {
        EXPECT_LT(megabytes("VmHWM:") - std::min(before, megabytes("VmHWM:")), kMostMegabytes);
    }
#endif
}

/// A table of a million places that sets something of one of them.
std::string largeSparseTable() {
    const std::string dimension = "{\"categories\":[" + [] {
        std::string labels = "\"\"";
        for (int i = 1; i < 1000; ++i) labels += ",\"\"";
        return labels;
    }() + "]}";
    return R"({"type":"table","rows":[)" + dimension + R"(],"columns":[)" + dimension +
           R"(],"sparse":[{"at":[0,0],"bold":true,"value":1,"format":"F8.2"}]})";
}

/// An object with as many keys as fit.
std::string manyKeys(const std::string& before, const std::string& behind) {
    std::string text = before;
    for (int i = 0; text.size() + behind.size() + 16 < kBytes; ++i)
        text += "\"k" + std::to_string(i) + "\":0,";
    text.back() = ' ';
    return text + behind;
}

constexpr char kTable[] = R"({"items":[{"type":"table",)";

INSTANTIATE_TEST_SUITE_P(
    Json, HostileFile,
    testing::Values(
        Hostile{"cells", ImportForm::json,
                [] { return listed(std::string(kTable) + "\"cells\":[", "0", "]}]}"); }},
        Hostile{"styled cells", ImportForm::json,
                [] { return listed(std::string(kTable) + "\"cells\":[", "{\"bold\":true}", "]}]}"); }},
        Hostile{"tables", ImportForm::json,
                [] { return listed("{\"items\":[", "{\"type\":\"table\"}", "]}"); }},
        Hostile{"texts", ImportForm::json,
                [] { return listed("{\"items\":[", "{\"type\":\"text\"}", "]}"); }},
        Hostile{"unknown items", ImportForm::json,
                [] { return listed("{\"items\":[", "{\"type\":\"q\"}", "]}"); }},
        Hostile{"values of an unknown item", ImportForm::json,
                [] { return listed(R"({"items":[{"type":"q","a":[)", "{}", "]}]}"); }},
        Hostile{"categories", ImportForm::json,
                [] { return listed(std::string(kTable) + R"("rows":[{"categories":[)", "{}", "]}]}]}"); }},
        Hostile{"groups", ImportForm::json,
                [] {
                    return listed(std::string(kTable) + R"("rows":[{"categories":[)",
                                  R"({"group":"","categories":[""]})", "]}]}]}");
                }},
        Hostile{"large sparse tables", ImportForm::json,
                [] { return listed("{\"items\":[", largeSparseTable(), "]}"); }},
        Hostile{"keys", ImportForm::json, [] { return manyKeys(R"({"items":[{"type":"q",)", "}]}"); }},
        Hostile{"keys of the document", ImportForm::json, [] { return manyKeys("{", "}"); }},
        Hostile{"footnotes", ImportForm::json,
                [] { return listed(std::string(kTable) + "\"footnotes\":[", "\"\"", "]}]}"); }},
        Hostile{"open lists", ImportForm::json,
                [] { return filled(R"({"items":[{"type":"q","a":)", "[", ""); }},
        Hostile{"open items", ImportForm::json, [] { return filled("", R"({"items":[)", ""); }},
        Hostile{"a long number", ImportForm::json,
                [] { return filled(std::string(kTable) + "\"cells\":[", "9", "]}]}"); }},
        Hostile{"styles of a grid", ImportForm::json, [] {
                    std::string text = R"({"items":[{"type":"grid","rows":[)";
                    for (int i = 1; text.size() + 40 < kBytes; ++i)
                        text += "[{\"size\":" + std::to_string(i) + "}],";
                    text.back() = ']';
                    return text + "}]}";
                }}));

INSTANTIATE_TEST_SUITE_P(
    Others, HostileFile,
    testing::Values(
        Hostile{"commas", ImportForm::csv, [] { return filled("", ",", "\n"); }},
        Hostile{"lines", ImportForm::csv, [] { return filled("", "a,b\n", ""); }},
        Hostile{"an open quote", ImportForm::csv, [] { return filled("\"", "\"\"", ""); }},
        Hostile{"cells", ImportForm::html, [] { return filled("<table>", "<td>", "</table>"); }},
        Hostile{"tables", ImportForm::html,
                [] { return filled("", "<table><td>a<td>b<tr><td>c<td>d</table>", ""); }},
        Hostile{"tables in tables", ImportForm::html, [] { return filled("", "<table><tr><td>", ""); }},
        Hostile{"deep text", ImportForm::html, [] { return filled("<table><tr><td>", "<b>", ""); }},
        Hostile{"spans", ImportForm::html,
                [] { return filled("<table>", "<tr><td colspan=900 rowspan=900>a", ""); }},
        Hostile{"elements", ImportForm::svg, [] { return filled("<svg>", "<a>", ""); }},
        Hostile{"brackets", ImportForm::markdown, [] { return filled("", "[a](", ""); }},
        Hostile{"open brackets", ImportForm::markdown, [] { return filled("", "[a ", ""); }},
        Hostile{"marks", ImportForm::markdown, [] { return filled("", "*a ` __b", ""); }},
        Hostile{"paragraphs", ImportForm::markdown, [] { return filled("", "a\n\n", ""); }},
        Hostile{"small tables", ImportForm::markdown, [] { return filled("", "a|b\n-|-\nc|d\n\n", ""); }},
        Hostile{"columns", ImportForm::markdown, [] { return filled("a|b\n-|-\n", "|", ""); }}));

}  // namespace
}  // namespace vexa::frontend
