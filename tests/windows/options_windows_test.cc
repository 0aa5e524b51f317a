#include <gtest/gtest.h>

#include <vector>

#include "apps/vexa/options.h"

namespace vexa::program {
namespace {

std::string helpOf(std::vector<const char*> words) {
    words.insert(words.begin(), "vexa");
    words.push_back("--help");
    ::testing::internal::CaptureStdout();
    int status = -1;
    EXPECT_FALSE(readOptions(static_cast<int>(words.size()), words.data(), status));
    EXPECT_EQ(status, 0);
    return ::testing::internal::GetCapturedStdout();
}

TEST(HelpOfWindows, PromisesNoFrontEnd) {
    for (const std::string& help : {helpOf({}), helpOf({"run"})}) {
        EXPECT_EQ(help.find("embedded"), std::string::npos) << help;
        EXPECT_EQ(help.find("password"), std::string::npos) << help;
        EXPECT_NE(help.find("has no front end of its own"), std::string::npos) << help;
    }
}

/// Every example names what answers requests, but for the two commands that send none.
TEST(HelpOfWindows, HasExamplesThatRun) {
    for (const std::string& help : {helpOf({}), helpOf({"run"})}) {
        std::size_t count = 0;
        for (std::size_t at = help.find("\n  vexa"); at != std::string::npos;
             at = help.find("\n  vexa", at + 1)) {
            const std::string line = help.substr(at + 3, help.find('\n', at + 1) - at - 3);
            const bool sends = !line.starts_with("vexa check") && !line.starts_with("vexa help");
            EXPECT_EQ(line.find("--adapter") != std::string::npos, sends) << line;
            ++count;
        }
        EXPECT_GE(count, 2U) << help;
    }
}

}  // namespace
}  // namespace vexa::program
