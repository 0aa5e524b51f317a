#include "backend/platform/system_reason.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <system_error>

#include "tests/unit/strings/installed_texts.h"

namespace vexa {
namespace {

// Whoever knows the words of a terminal meets the same ones here.
TEST(SystemReason, SaysWhatTheSystemSays) {
    constexpr int kLargestNumber = 200;
    for (int number = 1; number <= kLargestNumber; ++number) {
        EXPECT_EQ(systemReason(number), std::generic_category().message(number)) << number;
    }
}

TEST(SystemReason, IsATextOfTheStringTables) {
    const InstalledTexts texts{{"platform.xlf", "Permission denied", "Kein Zugriff"}};
    EXPECT_EQ(translated(systemReason(EACCES)), "Kein Zugriff");
}

}  // namespace
}  // namespace vexa
